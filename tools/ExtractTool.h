// The Extract Strings tool: its dialog, and the command that lists the
// stretches of binary files that match a filter into a new log.
#pragma once
#include "framework/Dialog.h"

class CExtractDialog : public CModalDialog
{
  public:
    explicit CExtractDialog(HWND parent);
    CString m_strFiles;
    CString m_strPattern;

  protected:
    bool OnInitDialog() override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;
};

void RunExtractTool();
