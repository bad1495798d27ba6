// The settings dialog, the window selector, the system metrics and the
// about box as the frame reaches them. The selector, not built yet, answers
// with the alert.
#pragma once
#include "app/KmCommands.h"

class CUiCommands : public CKmCommands
{
    DECLARE_DYNAMIC(CUiCommands)
  public:
    using CKmCommands::CKmCommands;

  protected:
    void OnGlobalSettings();
    void OnSystemMetrics();
    void OnAbout();

    DECLARE_MESSAGE_MAP()
};
