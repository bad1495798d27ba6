// The About box: the program's name, release and notice between two of its
// icons, and the memory the system has.
#pragma once
#include "framework/Dialog.h"

class CAboutDialog : public CModalDialog
{
  public:
    explicit CAboutDialog(HWND parent);

  protected:
    bool OnInitDialog() override;
};
