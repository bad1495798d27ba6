#include "ui/ToolItems.h"

#include "ui/ToolBar.h"

namespace
{

const int kPictureWidth = 20, kPictureHeight = 17, kCell = 32, kCellsInRow = 8;

void Line(HDC dc, int x0, int y0, int x1, int y1, HPEN pen)
{
    ::SelectObject(dc, pen);
    ::MoveToEx(dc, x0, y0, nullptr);
    ::LineTo(dc, x1, y1);
}

} // namespace

void CToolItem::Place(CKmToolBar* bar, const RECT& rect)
{
    m_pBar = bar;
    m_rc = rect;
    m_rcPaint = {rect.left, rect.top, rect.right + 1, rect.bottom + 1};
    Invalidate();
}

void CToolItem::SetPressed(bool on)
{
    if (m_bPressed == static_cast<int>(on))
        return;
    m_bPressed = on;
    Invalidate();
}

void CToolItem::Invalidate() const
{
    if (m_pBar && m_pBar->GetHwnd())
        ::InvalidateRect(m_pBar->GetHwnd(), &m_rcPaint, FALSE);
}

CToolButton::CToolButton(unsigned id, int image, ToolNotifyFn notify)
    : CToolItem(id, 24), m_nImage(image)
{
    m_pfnNotify = notify;
    m_nStates = 2;
}

void CToolButton::Place(CKmToolBar* bar, const RECT& rect)
{
    CToolItem::Place(bar, rect);
    OnPlaced();
}

bool CToolButton::HitTest(int x, int y) const
{
    return m_bEnabled && x >= m_rc.left && x <= m_rc.right && y >= m_rc.top && y <= m_rc.bottom;
}

// An outline with open corners; raised, or sunk while pressed; the picture,
// etched when disabled.
void CToolButton::Draw(HDC dc)
{
    const int state = m_bPressed ? 1 : m_nState;
    const int l = m_rc.left, t = m_rc.top, r = m_rc.right, b = m_rc.bottom;
    HGDIOBJ oldPen = ::SelectObject(dc, CKmToolBar::FramePen());
    Line(dc, l + 1, t, r, t, CKmToolBar::FramePen());
    Line(dc, l + 1, b, r, b, CKmToolBar::FramePen());
    Line(dc, l, t + 1, l, b, CKmToolBar::FramePen());
    Line(dc, r, t + 1, r, b, CKmToolBar::FramePen());
    if (CKmToolBar::HasColours() && state == 0) {
        Line(dc, l + 1, b - 1, l + 1, t + 1, CKmToolBar::HighlightPen());
        Line(dc, l + 1, t + 1, r, t + 1, CKmToolBar::HighlightPen());
        Line(dc, r - 1, t + 1, r - 1, b, CKmToolBar::ShadowPen());
        Line(dc, l + 1, b - 1, r, b - 1, CKmToolBar::ShadowPen());
        if (m_bEnabled) {
            Line(dc, r - 2, t + 2, r - 2, b - 1, CKmToolBar::ShadowPen());
            Line(dc, l + 2, b - 2, r - 1, b - 2, CKmToolBar::ShadowPen());
        }
    } else if (CKmToolBar::HasColours() && m_bEnabled) {
        Line(dc, l + 1, b, l + 1, t + 1, CKmToolBar::ShadowPen());
        Line(dc, l + 1, t + 1, r, t + 1, CKmToolBar::ShadowPen());
    }
    ::SelectObject(dc, oldPen);
    ::BitBlt(dc, l + 2, t + 2, kPictureWidth, kPictureHeight, m_pBar->Pictures(m_bEnabled != 0),
             (m_nImage % kCellsInRow) * kCell, (m_nImage / kCellsInRow) * kCell, SRCCOPY);
    if (m_nState == 1 && !m_bPressed) // a latching button: the frame's buttons never are
        ::PatBlt(dc, l + 2, t + 2, r - l - 3, b - t - 3, DSTINVERT);
    if (!CKmToolBar::HasColours() && state == 1) {
        RECT outline = m_rcPaint;
        ::InvertRect(dc, &outline);
    }
}
