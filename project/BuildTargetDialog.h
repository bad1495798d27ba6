// The Build dialog: the target to build in the current directory.
#pragma once
#include "framework/Dialog.h"
#include "framework/String.h"

class CBuildTargetDialog : public CModalDialog
{
  public:
    CBuildTargetDialog(HWND parent, const CString& target);
    CString m_strTarget;

  protected:
    bool OnInitDialog() override;
    void OnOK() override;
};
