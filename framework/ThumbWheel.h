// A counter worked by the two arrows of a bare vertical scroll bar: the
// upper arrow counts up. Each step within the range is posted to the
// parent as WM_COMMAND with the control's id and notification 1.
#pragma once
#include "framework/Wnd.h"

class CThumbWheel : public CWnd
{
    DECLARE_DYNAMIC(CThumbWheel)
  public:
    // Two arrows high, centred vertically on point; with onRight the left
    // edge stands at point, otherwise the right edge. Shown at once.
    bool Create(bool onRight, POINT point, HWND parent, int id);
    int GetPos() const { return ::GetScrollPos(m_hWnd, SB_VERT); }
    void SetPos(int value) { ::SetScrollPos(m_hWnd, SB_VERT, value, FALSE); }
    void GetRange(int& low, int& high) const { ::GetScrollRange(m_hWnd, SB_VERT, &low, &high); }
    void SetRange(int low, int high) { ::SetScrollRange(m_hWnd, SB_VERT, low, high, FALSE); }

    int m_nId = 0;

  protected:
    LRESULT OnVScroll(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()
};
