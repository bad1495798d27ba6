#include "search/GrepDialog.h"

#include "app/KmApp.h"
#include "edit/FileUtil.h"
#include "edit/KmFileDialog.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"

IMPLEMENT_DYNAMIC(CGrepDialog, CDialog)

// clang-format off
BEGIN_MESSAGE_MAP(CGrepDialog, CDialog)
    ON_MESSAGE(WM_CLOSE, OnClose)
    ON_COMMAND(IDOK, OnOK)
    ON_COMMAND(IDCANCEL, OnCancel)
    ON_COMMAND(IDC_GREP_DEFAULTS, OnDefaults)
    ON_COMMAND(IDC_GREP_BROWSE, OnBrowse)
    ON_COMMAND(IDHELP, OnHelp)
    ON_CONTROL(EN_CHANGE, IDC_GREP_SEARCH, OnFieldChange)
    ON_CONTROL(EN_CHANGE, IDC_GREP_FILES, OnFieldChange)
END_MESSAGE_MAP()
// clang-format on

CGrepDialog* g_grepDialog = nullptr;

namespace
{

const DWORD kHelpGrep = 3;

} // namespace

CGrepDialog::CGrepDialog(const char* directory) : m_pszDir(directory) {}

void CGrepDialog::Open()
{
    if (g_grepDialog) {
        ::BringWindowToTop(g_grepDialog->m_hWnd);
        return;
    }
    CGrepDialog* dialog = nullptr;
    try {
        CString dir;
        GetCurrentDir(dir);
        dialog = new CGrepDialog(dir);
        g_grepDialog = dialog;
        if (dialog->Create(IDD_GREP, nullptr))
            return;
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
    }
    delete dialog;
    g_grepDialog = nullptr;
}

bool CGrepDialog::OnInitDialog()
{
    if (!SetDefaults())
        return true;
    RECT own, over;
    ::GetWindowRect(m_hWnd, &own);
    ::GetWindowRect(KmGetMainWindow(), &over);
    ::SetWindowPos(m_hWnd, nullptr, (over.left + over.right - (own.right - own.left)) / 2,
                   (over.top + over.bottom - (own.bottom - own.top)) / 2, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER);
    return true;
}

bool CGrepDialog::SetDefaults()
{
    try {
        CString files;
        theApp.GetEnvironmentSetting(IDS_ENV_GREPFILES, files);
        SetDlgItemText(IDC_GREP_FILES, files);
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
        PostMessage(WM_CLOSE);
        return false;
    }
    SetDlgItemText(IDC_GREP_DIR, m_pszDir);
    CheckDlgButton(IDC_GREP_MATCHCASE, m_bMatchCase != 0);
    CheckDlgButton(IDC_GREP_WHOLEWORD, m_bWholeWord != 0);
    CheckDlgButton(IDC_GREP_LISTLINES, m_bListLines != 0);
    OnFieldChange();
    return true;
}

// OK needs both a pattern and a file list.
void CGrepDialog::OnFieldChange()
{
    const bool both = ::GetWindowTextLengthA(GetDlgItem(IDC_GREP_SEARCH)) > 0 &&
                      ::GetWindowTextLengthA(GetDlgItem(IDC_GREP_FILES)) > 0;
    ::EnableWindow(GetDlgItem(IDOK), both);
}

void CGrepDialog::OnOK()
{
    if (!::IsWindowEnabled(GetDlgItem(IDOK)))
        return; // the Return key reaches here too
    GetDlgItemText(IDC_GREP_SEARCH, m_pszSearch);
    GetDlgItemText(IDC_GREP_FILES, m_pszFiles);
    CString dir;
    GetDlgItemText(IDC_GREP_DIR, dir);
    if (!dir.IsEmpty())
        m_pszDir = dir;
    m_bMatchCase = IsDlgButtonChecked(IDC_GREP_MATCHCASE);
    m_bWholeWord = IsDlgButtonChecked(IDC_GREP_WHOLEWORD);
    m_bListLines = IsDlgButtonChecked(IDC_GREP_LISTLINES);
    TellFrame();
}

void CGrepDialog::OnCancel()
{
    SendMessage(WM_CLOSE);
}

LRESULT CGrepDialog::OnClose(WPARAM, LPARAM)
{
    m_bClosing = 1;
    TellFrame();
    DestroyWindow();
    return 0;
}

void CGrepDialog::TellFrame()
{
    ::SendMessageA(KmGetMainWindow(), WM_KM_GREP, 0, reinterpret_cast<LPARAM>(this));
}

void CGrepDialog::FocusOn(int id)
{
    ::SetFocus(id ? GetDlgItem(id) : m_hWnd);
}

void CGrepDialog::OnDefaults()
{
    if (SetDefaults())
        FocusOn(IDC_GREP_SEARCH);
}

// The picker gives a directory and names behind it, or one path; a root
// directory keeps its backslash.
void CGrepDialog::OnBrowse()
{
    CKmFileDialog dialog(true, nullptr, nullptr,
                         OFN_FILEMUSTEXIST | OFN_ALLOWMULTISELECT | OFN_HIDEREADONLY);
    dialog.m_ofn.hwndOwner = m_hWnd;
    if (dialog.DoModal() != IDOK)
        return;
    const CString chosen = dialog.GetPathName();
    int split = chosen.Find(' ');
    if (split < 0)
        split = chosen.ReverseFind('\\');
    SetDlgItemText(IDC_GREP_FILES, chosen.Mid(split + 1));
    SetDlgItemText(IDC_GREP_DIR, chosen.Left(split == 2 ? 3 : split));
    FocusOn(IDC_GREP_FILES);
}

void CGrepDialog::OnHelp()
{
    ::WinHelpA(KmGetMainWindow(), theApp.helpPath, HELP_CONTEXT, kHelpGrep);
    FocusOn(IDC_GREP_SEARCH);
}
