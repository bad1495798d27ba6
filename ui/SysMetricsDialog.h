// The Window System Metrics dialog: the names of the platform's measures in
// a list, and for the one selected its explanation and current value.
#pragma once
#include "framework/Dialog.h"

class CSysMetricsDialog : public CModalDialog
{
  public:
    explicit CSysMetricsDialog(HWND parent);

  protected:
    bool OnInitDialog() override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;

  private:
    void ShowSelected();
};
