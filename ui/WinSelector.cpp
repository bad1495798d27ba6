#include "ui/WinSelector.h"

#include "app/KmChild.h"
#include "resources/KmIds.h"

namespace
{

// A title longer than this is cut in its row.
const int kTitleRoom = 128;

} // namespace

IMPLEMENT_DYNAMIC(CWinSelector, CWnd)

// clang-format off
BEGIN_MESSAGE_MAP(CWinSelector, CWnd)
    ON_MESSAGE(WM_CREATE, OnCreate)
    ON_MESSAGE(WM_SIZE, OnSize)
    ON_MESSAGE(WM_SETFOCUS, OnSetFocus)
    ON_MESSAGE(WM_CLOSE, OnClose)
    ON_MESSAGE(WM_KM_WINDOWLIST, OnWindowList)
    ON_MESSAGE(WM_VKEYTOITEM, OnVKeyToItem)
    ON_CONTROL(LBN_SELCHANGE, kListId, OnSelChange)
    ON_CONTROL(LBN_DBLCLK, kListId, OnDoubleClick)
END_MESSAGE_MAP()
// clang-format on

bool CWinSelector::Create(const char* title, const RECT& rect, HWND parent)
{
    const char* className =
        KmRegisterWndClass(CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW),
                           reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
    return className &&
           CreateEx(0, className, title,
                    WS_POPUP | WS_VISIBLE | WS_CAPTION | WS_THICKFRAME | WS_CLIPCHILDREN, rect.left,
                    rect.top, rect.right - rect.left, rect.bottom - rect.top, parent, nullptr);
}

void CWinSelector::SetRedraw(bool on)
{
    List(WM_SETREDRAW, on);
    if (on)
        ::InvalidateRect(m_list, nullptr, TRUE);
}

LRESULT CWinSelector::OnCreate(WPARAM, LPARAM)
{
    m_list = ::CreateWindowExA(0, "LISTBOX", "",
                               WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_SORT | LBS_NOTIFY |
                                   LBS_WANTKEYBOARDINPUT | LBS_NOINTEGRALHEIGHT,
                               0, 0, 0, 0, m_hWnd, reinterpret_cast<HMENU>(kListId),
                               ::GetModuleHandleA(nullptr), nullptr);
    if (!m_list)
        return -1;
    ::SetWindowPos(m_hWnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    return 0;
}

LRESULT CWinSelector::OnSize(WPARAM wParam, LPARAM lParam)
{
    if (wParam == SIZE_RESTORED || wParam == SIZE_MAXIMIZED)
        ::MoveWindow(m_list, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
    return 0;
}

LRESULT CWinSelector::OnSetFocus(WPARAM, LPARAM)
{
    ::SetFocus(m_list);
    return 0;
}

// The frame learns of the end from the selector itself.
LRESULT CWinSelector::OnClose(WPARAM, LPARAM)
{
    ::DestroyWindow(m_list);
    m_list = nullptr;
    ::SendMessageA(::GetParent(m_hWnd), WM_KM_WINDOWLIST, WL_DESTROYED,
                   reinterpret_cast<LPARAM>(m_hWnd));
    DestroyWindow();
    return 0;
}

LRESULT CWinSelector::OnWindowList(WPARAM wParam, LPARAM lParam)
{
    HWND child = reinterpret_cast<HWND>(lParam);
    switch (wParam) {
    case WL_CREATED:
        AddRow(child);
        break;
    case WL_DESTROYED:
        List(LB_DELETESTRING, static_cast<WPARAM>(FindRow(child)));
        break;
    case WL_ACTIVATED:
        List(LB_SETCURSEL, static_cast<WPARAM>(FindRow(child)));
        break;
    case WL_TITLE:
        Retitle(child);
        break;
    default:
        break;
    }
    return 0;
}

// Two windows of one title each have a row.
void CWinSelector::AddRow(HWND child)
{
    char title[kTitleRoom];
    ::GetWindowTextA(child, title, sizeof title);
    const LRESULT row = List(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(title));
    if (row >= 0)
        List(LB_SETITEMDATA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(child));
}

int CWinSelector::FindRow(HWND child) const
{
    const int count = static_cast<int>(List(LB_GETCOUNT));
    for (int row = 0; row < count; ++row)
        if (reinterpret_cast<HWND>(List(LB_GETITEMDATA, static_cast<WPARAM>(row))) == child)
            return row;
    return -1;
}

HWND CWinSelector::SelectedChild() const
{
    const LRESULT row = List(LB_GETCURSEL);
    return row < 0 ? nullptr
                   : reinterpret_cast<HWND>(List(LB_GETITEMDATA, static_cast<WPARAM>(row)));
}

// The row takes its sorted place under the new title; the selection stays
// with the window it was on.
void CWinSelector::Retitle(HWND child)
{
    HWND selected = SelectedChild();
    const int row = FindRow(child);
    if (row < 0)
        return;
    List(LB_DELETESTRING, static_cast<WPARAM>(row));
    AddRow(child);
    if (selected)
        List(LB_SETCURSEL, static_cast<WPARAM>(FindRow(selected)));
}

// The focus stays here while each window comes to the top.
void CWinSelector::OnSelChange()
{
    if (HWND child = SelectedChild())
        ::BringWindowToTop(child);
}

void CWinSelector::OnDoubleClick()
{
    ::SetFocus(::GetParent(m_hWnd));
}

LRESULT CWinSelector::OnVKeyToItem(WPARAM wParam, LPARAM)
{
    switch (LOWORD(wParam)) {
    case VK_RETURN:
        ::SetFocus(::GetParent(m_hWnd));
        return -2;
    case VK_DELETE:
        if (HWND child = SelectedChild()) {
            ::PostMessageA(child, WM_CLOSE, 0, 0);
            return -2;
        }
        return -1;
    default:
        return -1;
    }
}
