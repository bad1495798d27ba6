#include "project/BuildTargetDialog.h"

#include "edit/FileUtil.h"
#include "resources/KmIds.h"

namespace
{
const int kMaxTarget = 80;
}

CBuildTargetDialog::CBuildTargetDialog(HWND parent, const CString& target)
    : CModalDialog(IDD_BUILDTARGET, parent), m_strTarget(target)
{
}

bool CBuildTargetDialog::OnInitDialog()
{
    CString dir;
    GetCurrentDir(dir);
    ::SetDlgItemTextA(m_hWnd, IDC_BUILD_DIR, dir);
    ::SendMessageA(GetDlgItem(IDC_BUILD_TARGET), EM_LIMITTEXT, kMaxTarget, 0);
    ::SetDlgItemTextA(m_hWnd, IDC_BUILD_TARGET, m_strTarget);
    return true;
}

void CBuildTargetDialog::OnOK()
{
    char text[kMaxTarget + 1];
    ::GetDlgItemTextA(m_hWnd, IDC_BUILD_TARGET, text, sizeof text);
    m_strTarget = text;
    EndDialog(IDOK);
}
