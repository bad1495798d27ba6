// Find, replace and the global search as the frame reaches them, with the
// rules of the Search popup. Until the find dialog and the global search
// are built, their commands and messages answer with the alert.
#pragma once
#include "app/KmCommands.h"

class CSearchCommands : public CKmCommands
{
    DECLARE_DYNAMIC(CSearchCommands)
  public:
    using CKmCommands::CKmCommands;
    void UpdatePopup(HMENU popup, int position, CKmChild* child) override;
    DECLARE_MESSAGE_MAP()
};
