#include "edit/KmEdit.h"

#include "app/KmChild.h"
#include "resources/KmIds.h"

IMPLEMENT_DYNAMIC(CKmEdit, CWnd)

bool CKmEdit::Create(HWND parent, unsigned long childFlags)
{
    DWORD style = WS_CHILD | WS_VISIBLE | WS_MAXIMIZE | ES_MULTILINE | ES_AUTOVSCROLL |
                  ES_AUTOHSCROLL | ES_NOHIDESEL;
    if (childFlags & CF_HSCROLL)
        style |= WS_HSCROLL;
    if (childFlags & CF_VSCROLL)
        style |= WS_VSCROLL;
    HWND hwnd = ::CreateWindowExA(0, "EDIT", "", style, 0, 0, 0, 0, parent,
                                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_EDIT)),
                                  ::GetModuleHandleA(nullptr), nullptr);
    return hwnd && SubclassWindow(hwnd);
}

void CKmEdit::SetSelection(DWORD start, DWORD end)
{
    SendMessage(EM_SETSEL, start, end);
    SendMessage(EM_SCROLLCARET);
    ::PostMessageA(::GetParent(m_hWnd), WM_COMMAND, MAKEWPARAM(IDC_EDIT, EN_KM_CARETMOVED),
                   reinterpret_cast<LPARAM>(m_hWnd));
}

void CKmEdit::GetLineColumn(long& line, long& column) const
{
    line = column = 0;
    if (::IsIconic(::GetParent(m_hWnd)))
        return;
    DWORD start = 0, end = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    DWORD offset = start > end ? start : end;
    line = static_cast<long>(SendMessage(EM_LINEFROMCHAR, offset));
    column = static_cast<long>(offset - SendMessage(EM_LINEINDEX, static_cast<WPARAM>(line)));
}

void CKmEdit::GotoLine(long line, long column)
{
    long lastLine = static_cast<long>(SendMessage(EM_GETLINECOUNT)) - 1;
    if (line > lastLine)
        line = lastLine;
    else if (line > 0)
        line -= 1;

    DWORD start = 0, end = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    m_lastPos = end;

    long target = static_cast<long>(SendMessage(EM_LINEINDEX, static_cast<WPARAM>(line)));
    target += column > 0 ? column - 1 : column;
    SetSelection(static_cast<DWORD>(target), static_cast<DWORD>(target));

    // A jump that lands on the bottom line of the window, where the control's
    // own scroll leaves it, is brought to the middle.
    RECT client;
    ::GetClientRect(m_hWnd, &client);
    long visible = m_lineHeight > 0 ? (client.bottom - client.top) / m_lineHeight : 0;
    long first = static_cast<long>(SendMessage(EM_GETFIRSTVISIBLELINE));
    if (visible > 0 && line == first + visible - 1 && line != lastLine) {
        long by = visible / 2;
        if (lastLine - line < by)
            by = lastLine - line;
        m_hScrollByUser = false;
        SendMessage(EM_LINESCROLL, 0, by);
    }
}
