// The Goto Line dialog: a line number of up to seven digits.
#pragma once
#include "framework/Dialog.h"

class CGotoLineDialog : public CModalDialog
{
  public:
    CGotoLineDialog(HWND parent, long line);
    long m_line;

  protected:
    bool OnInitDialog() override;
    void OnOK() override;
};
