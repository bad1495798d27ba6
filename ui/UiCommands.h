// The settings dialog, the window selector, the system metrics and the
// about box as the frame reaches them. Until they are built, their commands
// answer with the alert.
#pragma once
#include "app/KmCommands.h"

class CUiCommands : public CKmCommands
{
    DECLARE_DYNAMIC(CUiCommands)
  public:
    using CKmCommands::CKmCommands;

  protected:
    // Opens the window selector filled with the children, or brings it to
    // the top where it stands.
    void OnWindowSelector();

    DECLARE_MESSAGE_MAP()
};
