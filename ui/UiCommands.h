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

    DECLARE_MESSAGE_MAP()
};
