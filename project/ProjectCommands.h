// The project's commands and messages as the frame reaches them, with the
// rules of the Project popup. Until the process runner and the project
// dialogs are built, they answer with the alert.
#pragma once
#include "app/KmCommands.h"

class CProjectCommands : public CKmCommands
{
    DECLARE_DYNAMIC(CProjectCommands)
  public:
    using CKmCommands::CKmCommands;
    void UpdatePopup(HMENU popup, int position, CKmChild* child) override;
    DECLARE_MESSAGE_MAP()
};
