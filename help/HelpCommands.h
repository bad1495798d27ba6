// Help contents, search and context help, looked up in the help file.
#pragma once
#include "app/KmCommands.h"

class CHelpCommands : public CKmCommands
{
    DECLARE_DYNAMIC(CHelpCommands)
  public:
    using CKmCommands::CKmCommands;

  protected:
    void OnHelpContents();
    void OnHelpSearch();
    void OnHelpContext();

    DECLARE_MESSAGE_MAP()
};
