#include "tools/CopyRenameDialog.h"

#include "edit/FileUtil.h"
#include "edit/KmFileDialog.h"
#include "edit/Messages.h"
#include "tools/FileActions.h"

namespace
{
const int kTargetLimit = 260;
}

CCopyRenameDialog::CCopyRenameDialog(HWND parent, UINT titleId, const char* from)
    : CModalDialog(IDD_COPYRENAME, parent), m_titleId(titleId), m_pszFrom(from)
{
    CString dir;
    GetCurrentDir(dir);
    lstrcpynA(m_szTo, dir, sizeof m_szTo);
}

bool CCopyRenameDialog::OnInitDialog()
{
    CString title;
    title.LoadString(m_titleId);
    ::SetWindowTextA(m_hWnd, title);
    SetDlgItemText(IDC_CR_DIR, m_szTo);
    SetDlgItemText(IDC_CR_FROM, m_pszFrom);
    ::SendMessageA(GetDlgItem(IDC_CR_TO), EM_LIMITTEXT, kTargetLimit, 0);
    SetDlgItemText(IDC_CR_TO, m_szTo);
    CentreOver(m_parent);
    FocusOn(IDC_CR_TO);
    return false;
}

// OK only while both fields hold something.
bool CCopyRenameDialog::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const int id = LOWORD(wParam);
    if ((id == IDC_CR_FROM || id == IDC_CR_TO) && HIWORD(wParam) == EN_CHANGE)
        ::EnableWindow(GetDlgItem(IDOK), ::GetWindowTextLengthA(GetDlgItem(IDC_CR_FROM)) > 0 &&
                                             ::GetWindowTextLengthA(GetDlgItem(IDC_CR_TO)) > 0);
    if (id != IDC_CR_BROWSE)
        return CModalDialog::OnCommand(wParam, lParam);
    OnBrowse();
    return true;
}

// The file dialog may leave another current directory behind.
void CCopyRenameDialog::OnBrowse()
{
    CString dir;
    GetDlgItemText(IDC_CR_DIR, dir);
    CKmFileDialog dialog(false, nullptr, nullptr, OFN_HIDEREADONLY | KFD_NOFORMAT);
    dialog.m_ofn.hwndOwner = m_hWnd;
    if (dialog.DoModal() == IDOK)
        SetDlgItemText(IDC_CR_TO, dialog.GetPathName());
    FocusOn(IDC_CR_TO);
    ChangeDir(dir);
}

// A target holding a blank could only be several names.
void CCopyRenameDialog::OnOK()
{
    if (!::IsWindowEnabled(GetDlgItem(IDOK)))
        return;
    CString to;
    GetDlgItemText(IDC_CR_TO, to);
    if (to.Find(' ') >= 0) {
        ReportFileCause(to, CFileException::badPath, MB_ICONHAND);
        CString dir;
        GetDlgItemText(IDC_CR_DIR, dir);
        SetDlgItemText(IDC_CR_TO, dir);
        FocusOn(IDC_CR_TO);
        return;
    }
    lstrcpynA(m_szTo, to, sizeof m_szTo);
    GetDlgItemText(IDC_CR_FROM, m_pszFrom);
    DropTrailingBlanks(m_pszFrom);
    if (m_pszFrom.IsEmpty()) {
        ::MessageBeep(MB_ICONHAND);
        FocusOn(IDC_CR_FROM);
        return;
    }
    EndDialog(IDOK);
}
