#include "framework/NumEdit.h"

#include <algorithm>
#include <cstdlib>

IMPLEMENT_DYNAMIC(CNumEdit, CWnd)

// clang-format off
BEGIN_MESSAGE_MAP(CNumEdit, CWnd)
    ON_MESSAGE(WM_CHAR, OnChar)
END_MESSAGE_MAP()
// clang-format on

bool CNumEdit::Create(DWORD style, const RECT& rect, HWND parent, int id)
{
    HWND hwnd = ::CreateWindowExA(WS_EX_CLIENTEDGE, "EDIT", "", style | WS_CHILD, rect.left,
                                  rect.top, rect.right - rect.left, rect.bottom - rect.top, parent,
                                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                  ::GetModuleHandleA(nullptr), nullptr);
    if (!hwnd || !SubclassWindow(hwnd))
        return false;
    SendMessage(EM_LIMITTEXT, static_cast<WPARAM>(m_nMaxDigits));
    SetValue(m_nValue);
    return true;
}

bool CNumEdit::ReplaceControl(DWORD style, int placeholderId, HWND dialog, int id)
{
    HWND placeholder = ::GetDlgItem(dialog, placeholderId);
    if (!placeholder)
        return false;
    RECT rect;
    ::GetWindowRect(placeholder, &rect);
    ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
    HWND before = ::GetWindow(placeholder, GW_HWNDPREV);
    const LRESULT font = ::SendMessageA(placeholder, WM_GETFONT, 0, 0);
    ::DestroyWindow(placeholder);
    if (!Create(style, rect, dialog, id))
        return false;
    SendMessage(WM_SETFONT, static_cast<WPARAM>(font));
    ::SetWindowPos(m_hWnd, before ? before : HWND_TOP, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return true;
}

int CNumEdit::GetValue() const
{
    char text[16] = "";
    ::GetWindowTextA(m_hWnd, text, std::min(m_nMaxDigits + 1, static_cast<int>(sizeof text)));
    return std::atoi(text);
}

void CNumEdit::SetValue(int value)
{
    m_nValue = value;
    char text[16] = "";
    if (value != -1)
        wsprintfA(text, "%d", value);
    SetWindowText(text);
}

LRESULT CNumEdit::OnChar(WPARAM wParam, LPARAM)
{
    if ((wParam >= '0' && wParam <= '9') || wParam == VK_BACK)
        return Default();
    ::MessageBeep(MB_ICONEXCLAMATION);
    return 0;
}
