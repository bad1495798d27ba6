// The Tools menu and the file manager as the frame reaches them. Those not
// built yet answer with the alert.
#pragma once
#include "app/KmCommands.h"

class CToolCommands : public CKmCommands
{
    DECLARE_DYNAMIC(CToolCommands)
  public:
    using CKmCommands::CKmCommands;

  protected:
    void OnCompare();
    void OnExtractStrings();

    DECLARE_MESSAGE_MAP()
};
