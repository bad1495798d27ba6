#include "edit/GotoLineDialog.h"

#include "resources/KmIds.h"

namespace
{
const int kMaxDigits = 7;
}

CGotoLineDialog::CGotoLineDialog(HWND parent, long line)
    : CModalDialog(IDD_GOTOLINE, parent), m_line(line)
{
}

bool CGotoLineDialog::OnInitDialog()
{
    ::SendMessageA(GetDlgItem(IDC_LINENUMBER), EM_LIMITTEXT, kMaxDigits, 0);
    ::SetDlgItemInt(m_hWnd, IDC_LINENUMBER, static_cast<UINT>(m_line), FALSE);
    return true;
}

void CGotoLineDialog::OnOK()
{
    m_line = static_cast<long>(::GetDlgItemInt(m_hWnd, IDC_LINENUMBER, nullptr, FALSE));
    EndDialog(IDOK);
}
