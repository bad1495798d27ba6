// The Goto Address dialog of the hex view: up to eight hexadecimal digits.
#pragma once
#include "framework/Dialog.h"

#include <cstdint>

class CGotoAddressDialog : public CModalDialog
{
  public:
    CGotoAddressDialog(HWND parent, uint32_t address);
    uint32_t m_address;

  protected:
    bool OnInitDialog() override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    // Any character but a hexadecimal digit is selected, with a beep, and
    // the dialog stays.
    void OnOK() override;
};
