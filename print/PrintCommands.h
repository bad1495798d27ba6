// Printing as the frame reaches it: the printer set-up.
#pragma once
#include "app/KmCommands.h"

class CPrintCommands : public CKmCommands
{
    DECLARE_DYNAMIC(CPrintCommands)
  public:
    using CKmCommands::CKmCommands;

  protected:
    void OnPrintSetup();
    DECLARE_MESSAGE_MAP()
};
