// The Run dialog: one program started with its arguments, remembered for
// the session in the run state that it fills.
#pragma once
#include "framework/Dialog.h"
#include "resources/KmIds.h"
#include "tools/ToolList.h"

class CRunDialog : public CModalDialog
{
  public:
    CRunDialog(HWND parent, CToolEntry& run) : CModalDialog(IDD_RUN, parent), m_run(run) {}

  protected:
    bool OnInitDialog() override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;

    CToolEntry& m_run;
};
