// The question before a tool that prompts: its arguments, to confirm or
// to extend; the title is the tool's program.
#pragma once
#include "framework/Dialog.h"
#include "framework/String.h"

class CToolArgsDialog : public CModalDialog
{
    DECLARE_DYNAMIC(CToolArgsDialog)
  public:
    CToolArgsDialog(HWND parent, const char* command, const char* arguments);
    CString m_strArguments; // what the edit held on OK

  protected:
    bool OnInitDialog() override;
    void OnOK() override;
    void OnHelp();

    CString m_strCommand;
    DECLARE_MESSAGE_MAP()
};
