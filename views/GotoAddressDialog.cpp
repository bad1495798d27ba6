#include "views/GotoAddressDialog.h"

#include "resources/KmIds.h"

#include <cstdio>

namespace
{
const int kMaxDigits = 8;
}

CGotoAddressDialog::CGotoAddressDialog(HWND parent, uint32_t address)
    : CModalDialog(IDD_GOTOADDRESS, parent), m_address(address)
{
}

bool CGotoAddressDialog::OnInitDialog()
{
    char text[kMaxDigits + 1];
    snprintf(text, sizeof text, "%lX", static_cast<unsigned long>(m_address));
    ::SendMessageA(GetDlgItem(IDC_ADDRESS), EM_LIMITTEXT, kMaxDigits, 0);
    SetDlgItemText(IDC_ADDRESS, text);
    return true;
}

// OK only while the field holds something.
bool CGotoAddressDialog::OnCommand(WPARAM wParam, LPARAM lParam)
{
    if (LOWORD(wParam) == IDC_ADDRESS && HIWORD(wParam) == EN_CHANGE) {
        ::EnableWindow(GetDlgItem(IDOK), ::GetWindowTextLengthA(GetDlgItem(IDC_ADDRESS)) > 0);
        return true;
    }
    return CModalDialog::OnCommand(wParam, lParam);
}

void CGotoAddressDialog::OnOK()
{
    CString text;
    GetDlgItemText(IDC_ADDRESS, text);
    uint32_t address = 0;
    for (int i = 0; i < text.GetLength(); ++i) {
        const char c = text[i];
        const int digit = c >= '0' && c <= '9'   ? c - '0'
                          : c >= 'a' && c <= 'f' ? c - 'a' + 10
                          : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                 : -1;
        if (digit < 0) {
            HWND field = GetDlgItem(IDC_ADDRESS);
            ::SetFocus(field);
            ::SendMessageA(field, EM_SETSEL, i, i + 1);
            ::MessageBeep(MB_ICONEXCLAMATION);
            return;
        }
        address = address * 16 + static_cast<uint32_t>(digit);
    }
    m_address = address;
    EndDialog(IDOK);
}
