// The Goto Line dialog: a line number of up to seven digits, typed or
// counted with the wheel beside it. Typing does not move the wheel.
#pragma once
#include "framework/Dialog.h"
#include "framework/NumEdit.h"
#include "framework/ThumbWheel.h"

class CGotoLineDialog : public CModalDialog
{
  public:
    CGotoLineDialog(HWND parent, long line);
    long m_line;

  protected:
    bool OnInitDialog() override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;

    CNumEdit m_edit;
    CThumbWheel m_wheel;
};
