// The settings dialog, the window selector, the system metrics and the
// about box as the frame reaches them.
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
    void OnGlobalSettings();
    void OnSystemMetrics();
    void OnAbout();

    DECLARE_MESSAGE_MAP()
};
