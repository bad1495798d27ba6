#include "framework/ThumbWheel.h"

IMPLEMENT_DYNAMIC(CThumbWheel, CWnd)

// clang-format off
BEGIN_MESSAGE_MAP(CThumbWheel, CWnd)
    ON_MESSAGE(WM_VSCROLL, OnVScroll)
END_MESSAGE_MAP()
// clang-format on

namespace
{
const WORD kWheelTurned = 1;
}

bool CThumbWheel::Create(bool onRight, POINT point, HWND parent, int id)
{
    const int width = ::GetSystemMetrics(SM_CXVSCROLL);
    const int height = 2 * ::GetSystemMetrics(SM_CYVSCROLL);
    m_nId = id;
    return CreateEx(0, KmRegisterWndClass(0, ::LoadCursorA(nullptr, IDC_ARROW)), "",
                    WS_CHILD | WS_VISIBLE | WS_VSCROLL, onRight ? point.x : point.x - width,
                    point.y - height / 2, width, height, parent,
                    reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)));
}

// A step beyond the range is dropped without a sound.
LRESULT CThumbWheel::OnVScroll(WPARAM wParam, LPARAM)
{
    int step;
    switch (LOWORD(wParam)) {
    case SB_LINEUP:
        step = 1;
        break;
    case SB_LINEDOWN:
        step = -1;
        break;
    default:
        return 0;
    }
    int low, high;
    GetRange(low, high);
    const int value = GetPos() + step;
    if (value < low || value > high)
        return 0;
    SetPos(value);
    ::PostMessageA(::GetParent(m_hWnd), WM_COMMAND, MAKEWPARAM(m_nId, kWheelTurned),
                   reinterpret_cast<LPARAM>(m_hWnd));
    return 0;
}
