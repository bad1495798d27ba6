#include "tools/DeleteTouchDialog.h"

#include "edit/FileUtil.h"
#include "tools/FileActions.h"

// A list edited down to nothing (blanks are nothing) is refused.
void CDeleteTouchDialog::OnOK()
{
    GetDlgItemText(IDC_DT_LIST, m_pszList);
    DropTrailingBlanks(m_pszList);
    if (m_pszList.IsEmpty()) {
        ::MessageBeep(MB_ICONHAND);
        ::SetFocus(GetDlgItem(IDC_DT_LIST));
        return;
    }
    EndDialog(IDOK);
}

bool CDeleteTouchDialog::OnInitDialog()
{
    CString title, dir;
    title.LoadString(m_titleId);
    GetCurrentDir(dir);
    ::SetWindowTextA(m_hWnd, title);
    SetDlgItemText(IDC_DT_LABEL, title);
    SetDlgItemText(IDC_DT_DIR, dir);
    SetDlgItemText(IDC_DT_LIST, m_pszList);
    CentreOver(m_parent);
    return true;
}
