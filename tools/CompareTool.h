// The Compare Files tool: its dialog, and the command that lists the
// differences of two text files into a new log.
#pragma once
#include "framework/Dialog.h"

class CCompareDialog : public CModalDialog
{
  public:
    explicit CCompareDialog(HWND parent);
    CString m_first, m_second; // full names after OK

  protected:
    bool OnInitDialog() override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;

  private:
    // Replaces a field's name by its full one; false, with the box and the
    // focus on the field, when it cannot be opened.
    bool TakeFullName(int id, CString& name);
    int m_lastField; // the edit that Browse fills
};

void RunCompareTool();
