// The Key Bindings dialog: a working copy of the frame's keys, a command
// at a time. What Set stores stays in the table as a change for the menus
// and the settings; the frame applies it after the dialog.
#pragma once
#include "framework/Dialog.h"
#include "ui/KeyTable.h"

class CKeyBindingsDialog : public CModalDialog
{
    DECLARE_DYNAMIC(CKeyBindingsDialog)
  public:
    // table is loaded from the frame's keys when the dialog opens.
    CKeyBindingsDialog(HWND parent, CKeyTable& table, HACCEL current);

  protected:
    bool OnInitDialog() override;
    void OnCommandChange();
    void OnKeyChange();
    void OnShiftClicked();
    void OnSet();
    void OnHelp();

    // The binding of the selected command, or "Unassigned".
    void ShowBinding();
    // The shift boxes take part only for a real key.
    void EnableShifts(bool on);
    int SelectedKey() const;

    CKeyTable& m_table;
    HACCEL m_current;
    DECLARE_MESSAGE_MAP()
};
