#include "edit/GotoLineDialog.h"

#include "resources/KmIds.h"

namespace
{
const int kMaxDigits = 7;
const int kWheelLow = 1, kWheelHigh = 32767;
} // namespace

CGotoLineDialog::CGotoLineDialog(HWND parent, long line)
    : CModalDialog(IDD_GOTOLINE, parent), m_line(line), m_edit(kMaxDigits)
{
}

bool CGotoLineDialog::OnInitDialog()
{
    CentreOver(m_parent);
    m_edit.m_nValue = static_cast<int>(m_line);
    if (!m_edit.ReplaceControl(WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL, IDC_LINENUMBER, m_hWnd,
                               IDC_LINENUMBER))
        return true;
    RECT field;
    ::GetWindowRect(m_edit.m_hWnd, &field);
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(&field), 2);
    const POINT edge = {field.right, (field.top + field.bottom) / 2};
    if (m_wheel.Create(true, edge, m_hWnd, IDC_LINEWHEEL)) {
        m_wheel.SetRange(kWheelLow, kWheelHigh);
        m_wheel.SetPos(static_cast<int>(m_line));
    }
    ::SetFocus(m_edit.m_hWnd);
    return false;
}

bool CGotoLineDialog::OnCommand(WPARAM wParam, LPARAM lParam)
{
    if (LOWORD(wParam) != IDC_LINEWHEEL)
        return CModalDialog::OnCommand(wParam, lParam);
    m_edit.SetValue(m_wheel.GetPos());
    return true;
}

void CGotoLineDialog::OnOK()
{
    m_line = m_edit.GetValue();
    EndDialog(IDOK);
}
