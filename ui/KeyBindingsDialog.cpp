#include "ui/KeyBindingsDialog.h"

#include "app/BindingNames.h"
#include "app/KmApp.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"

namespace
{

const DWORD kHelpKeyBindings = 50;
const int kShiftBoxes[] = {IDC_KEY_CONTROL, IDC_KEY_SHIFT, IDC_KEY_ALT};
const unsigned kShiftFlags[] = {KEY_CONTROL, KEY_SHIFT, KEY_ALT};

} // namespace

IMPLEMENT_DYNAMIC(CKeyBindingsDialog, CModalDialog)

// clang-format off
BEGIN_MESSAGE_MAP(CKeyBindingsDialog, CModalDialog)
    ON_CONTROL(LBN_SELCHANGE, IDC_KEY_COMMAND, OnCommandChange)
    ON_CONTROL(CBN_SELCHANGE, IDC_KEY_VIRTKEY, OnKeyChange)
    ON_COMMAND(IDC_KEY_CONTROL, OnShiftClicked)
    ON_COMMAND(IDC_KEY_SHIFT, OnShiftClicked)
    ON_COMMAND(IDC_KEY_ALT, OnShiftClicked)
    ON_COMMAND(IDC_KEY_SET, OnSet)
    ON_COMMAND(IDHELP, OnHelp)
END_MESSAGE_MAP()
// clang-format on

CKeyBindingsDialog::CKeyBindingsDialog(HWND parent, CKeyTable& table, HACCEL current)
    : CModalDialog(IDD_KEYBINDINGS, parent), m_table(table), m_current(current)
{
}

bool CKeyBindingsDialog::OnInitDialog()
{
    HWND commands = GetDlgItem(IDC_KEY_COMMAND), keys = GetDlgItem(IDC_KEY_VIRTKEY);
    bool filled = m_table.Load(m_current);
    for (int i = 0; filled && i < g_bindingNameCount; ++i)
        filled = ::SendMessageA(commands, LB_ADDSTRING, 0,
                                reinterpret_cast<LPARAM>(g_bindingNames[i].name)) >= 0;
    for (int i = 0; filled && i < g_virtualKeyCount; ++i)
        filled = ::SendMessageA(keys, CB_ADDSTRING, 0,
                                reinterpret_cast<LPARAM>(g_virtualKeys[i].name)) >= 0;
    if (!filled) {
        OutOfMemoryNotice();
        EndDialog(IDCANCEL);
        return true;
    }
    ::SendMessageA(commands, LB_SETCURSEL, 0, 0);
    ShowBinding();
    CentreOver(m_parent);
    return true;
}

void CKeyBindingsDialog::ShowBinding()
{
    const int row =
        static_cast<int>(::SendMessageA(GetDlgItem(IDC_KEY_COMMAND), LB_GETCURSEL, 0, 0));
    KeyRecord record = {};
    if (row < 0 || !m_table.FindBinding(g_bindingNames[row].id, record))
        record = {};
    const int keyRow = record.key ? VirtualKeyRow(record.key) : 0;
    ::SendMessageA(GetDlgItem(IDC_KEY_VIRTKEY), CB_SETCURSEL, static_cast<WPARAM>(keyRow), 0);
    for (int i = 0; i < 3; ++i)
        CheckDlgButton(kShiftBoxes[i], (record.fVirt & kShiftFlags[i]) != 0);
    EnableShifts(keyRow > 0);
    ::EnableWindow(GetDlgItem(IDC_KEY_SET), FALSE);
}

void CKeyBindingsDialog::EnableShifts(bool on)
{
    for (int box : kShiftBoxes)
        ::EnableWindow(GetDlgItem(box), on);
}

int CKeyBindingsDialog::SelectedKey() const
{
    return static_cast<int>(::SendMessageA(GetDlgItem(IDC_KEY_VIRTKEY), CB_GETCURSEL, 0, 0));
}

void CKeyBindingsDialog::OnCommandChange()
{
    ShowBinding();
}

void CKeyBindingsDialog::OnKeyChange()
{
    ::EnableWindow(GetDlgItem(IDC_KEY_SET), TRUE);
    EnableShifts(SelectedKey() > 0);
}

void CKeyBindingsDialog::OnShiftClicked()
{
    if (SelectedKey() > 0)
        ::EnableWindow(GetDlgItem(IDC_KEY_SET), TRUE);
}

// "Unassigned" for a command without a key answers with the out-of-memory
// notice, like every other refusal of the table. Intended.
void CKeyBindingsDialog::OnSet()
{
    const int row =
        static_cast<int>(::SendMessageA(GetDlgItem(IDC_KEY_COMMAND), LB_GETCURSEL, 0, 0));
    const int keyRow = SelectedKey();
    if (row < 0 || keyRow < 0)
        return;
    unsigned fVirt = 0;
    if (keyRow > 0) {
        fVirt = KEY_VIRTKEY;
        for (int i = 0; i < 3; ++i)
            if (IsDlgButtonChecked(kShiftBoxes[i]))
                fVirt |= kShiftFlags[i];
    }
    if (!m_table.SetBinding(fVirt, g_virtualKeys[keyRow].code, g_bindingNames[row].id))
        OutOfMemoryNotice();
    ::EnableWindow(GetDlgItem(IDC_KEY_SET), FALSE);
}

void CKeyBindingsDialog::OnHelp()
{
    ::WinHelpA(KmGetMainWindow(), theApp.helpPath, HELP_CONTEXT, kHelpKeyBindings);
}
