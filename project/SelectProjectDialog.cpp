#include "project/SelectProjectDialog.h"

#include "app/KmApp.h"
#include "resources/KmIds.h"

namespace
{
const DWORD kHelpSelectProject = 39;
const int kRecentShown = 6;
} // namespace

IMPLEMENT_DYNAMIC(CSelectProjectDialog, CModalDialog)

// clang-format off
BEGIN_MESSAGE_MAP(CSelectProjectDialog, CModalDialog)
    ON_COMMAND(IDC_SELECT_EXIT, OnExitProject)
    ON_COMMAND(IDHELP, OnHelp)
    ON_CONTROL(CBN_EDITCHANGE, IDC_SELECT_PATH, OnTextChange)
    ON_CONTROL(CBN_SELCHANGE, IDC_SELECT_PATH, OnEntryChange)
END_MESSAGE_MAP()
// clang-format on

CSelectProjectDialog::CSelectProjectDialog(HWND parent) : CModalDialog(IDD_SELECTPROJECT, parent) {}

bool CSelectProjectDialog::OnInitDialog()
{
    HWND path = GetDlgItem(IDC_SELECT_PATH);
    ::SendMessageA(path, CB_LIMITTEXT, MAX_PATH, 0);
    for (int i = 0; i < kRecentShown && !theApp.recentProjects[i].IsEmpty(); ++i)
        ::SendMessageA(path, CB_ADDSTRING, 0,
                       reinterpret_cast<LPARAM>(theApp.recentProjects[i].c_str()));
    ::SetWindowTextA(path, theApp.m_strProjectDir);
    ::EnableWindow(GetDlgItem(IDOK), FALSE);
    ::EnableWindow(GetDlgItem(IDC_SELECT_EXIT), !theApp.m_strProjectDir.IsEmpty());
    CentreOver(m_parent);
    return true;
}

void CSelectProjectDialog::EnableButtons(bool empty, bool same)
{
    ::EnableWindow(GetDlgItem(IDOK), !empty && !same);
    ::EnableWindow(GetDlgItem(IDC_SELECT_EXIT), !empty && same);
}

// A typed text is the project's whatever its case.
void CSelectProjectDialog::OnTextChange()
{
    CString text;
    GetDlgItemText(IDC_SELECT_PATH, text);
    EnableButtons(text.IsEmpty(), lstrcmpiA(text, theApp.m_strProjectDir) == 0);
}

// An entry of the list is the project's only as it stands.
void CSelectProjectDialog::OnEntryChange()
{
    HWND path = GetDlgItem(IDC_SELECT_PATH);
    const LRESULT index = ::SendMessageA(path, CB_GETCURSEL, 0, 0);
    if (index == CB_ERR)
        return;
    char entry[MAX_PATH + 1] = "";
    if (::SendMessageA(path, CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0) <= MAX_PATH)
        ::SendMessageA(path, CB_GETLBTEXT, static_cast<WPARAM>(index),
                       reinterpret_cast<LPARAM>(entry));
    EnableButtons(false, theApp.m_strProjectDir == entry);
}

// The text is compared once lower-cased: the project itself in another
// case changes nothing and ends as Cancel.
void CSelectProjectDialog::OnOK()
{
    if (!::IsWindowEnabled(GetDlgItem(IDOK)))
        return;
    GetDlgItemText(IDC_SELECT_PATH, m_strPath);
    m_strPath.MakeLower();
    EndDialog(m_strPath == theApp.m_strProjectDir ? IDCANCEL : IDOK);
}

void CSelectProjectDialog::OnExitProject()
{
    m_strPath.Empty();
    EndDialog(IDOK);
}

void CSelectProjectDialog::OnHelp()
{
    ::WinHelpA(KmGetMainWindow(), theApp.helpPath, HELP_CONTEXT, kHelpSelectProject);
}
