#include "ui/ToolBarWnd.h"

#include "ui/ToolBar.h"
#include "ui/ToolItems.h"

#include <windowsx.h>

IMPLEMENT_DYNAMIC(CToolBarWnd, CWnd)

// clang-format off
BEGIN_MESSAGE_MAP(CToolBarWnd, CWnd)
    ON_MESSAGE(WM_PAINT, OnPaint)
    ON_MESSAGE(WM_LBUTTONDOWN, OnLButtonDown)
    ON_MESSAGE(WM_MOUSEMOVE, OnMouseMove)
    ON_MESSAGE(WM_LBUTTONUP, OnLButtonUp)
END_MESSAGE_MAP()
// clang-format on

LRESULT CToolBarWnd::OnPaint(WPARAM, LPARAM)
{
    PAINTSTRUCT paint;
    HDC dc = ::BeginPaint(m_hWnd, &paint);
    m_pBar->Paint(dc, paint.rcPaint);
    ::EndPaint(m_hWnd, &paint);
    return 0;
}

LRESULT CToolBarWnd::OnLButtonDown(WPARAM, LPARAM lParam)
{
    CToolItem* item = m_pBar->ItemAt(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
    if (!item)
        return 0;
    ::SetCapture(m_hWnd);
    m_pCaptured = item;
    m_bInside = 1;
    item->SetPressed(true);
    if (item->m_pfnNotify)
        item->m_pfnNotify(item, TOOL_PRESSED, item->m_nId);
    return 0;
}

// Off the button it rises, and back on it sinks again; nothing is told.
LRESULT CToolBarWnd::OnMouseMove(WPARAM, LPARAM lParam)
{
    if (!m_pCaptured)
        return 0;
    const bool over = m_pBar->ItemAt(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)) == m_pCaptured;
    if (over != (m_bInside != 0)) {
        m_bInside = over;
        m_pCaptured->SetPressed(over);
    }
    return 0;
}

LRESULT CToolBarWnd::OnLButtonUp(WPARAM, LPARAM lParam)
{
    CToolItem* item = m_pCaptured;
    if (!item)
        return 0;
    m_pCaptured = nullptr;
    ::ReleaseCapture();
    if (m_bInside)
        item->SetPressed(false);
    if (!item->m_pfnNotify)
        return 0;
    if (item->HitTest(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam))) {
        item->m_nState = item->m_pfnNotify(item, item->m_nState, item->m_nId);
        item->Invalidate();
    } else {
        item->m_pfnNotify(item, TOOL_RELEASEDOFF, item->m_nId);
    }
    return 0;
}
