// The tool bar's window: it paints the bar and follows the mouse from a
// press on a button to the release, which counts only over that button.
#pragma once
#include "framework/Wnd.h"

class CKmToolBar;
class CToolItem;

class CToolBarWnd : public CWnd
{
    DECLARE_DYNAMIC(CToolBarWnd)
  public:
    CToolItem* m_pCaptured = nullptr; // the item under the press
    int m_bInside = 0;
    CKmToolBar* m_pBar = nullptr;

  protected:
    LRESULT OnPaint(WPARAM, LPARAM);
    LRESULT OnLButtonDown(WPARAM, LPARAM);
    LRESULT OnMouseMove(WPARAM, LPARAM);
    LRESULT OnLButtonUp(WPARAM, LPARAM);

    DECLARE_MESSAGE_MAP()
};
