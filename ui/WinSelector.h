// The window selector: a small floating window with the open children's
// titles, sorted, that follows every change of the window list. Moving
// through it brings each window to the top; Return goes back to work,
// Delete closes the chosen window.
#pragma once
#include "framework/Wnd.h"

class CWinSelector : public CWnd
{
    DECLARE_DYNAMIC(CWinSelector)
  public:
    enum { kListId = 1 };

    bool Create(const char* title, const RECT& rect, HWND parent);
    // Switches the list's drawing off while many windows come at once.
    void SetRedraw(bool on);

  protected:
    LRESULT OnCreate(WPARAM, LPARAM);
    LRESULT OnSize(WPARAM, LPARAM);
    LRESULT OnSetFocus(WPARAM, LPARAM);
    LRESULT OnClose(WPARAM, LPARAM);
    LRESULT OnWindowList(WPARAM, LPARAM);
    LRESULT OnVKeyToItem(WPARAM, LPARAM);
    void OnSelChange();
    void OnDoubleClick();
    void PostNcDestroy() override { delete this; }

    // The row whose item data is the child, or -1.
    int FindRow(HWND child) const;
    void AddRow(HWND child);
    void Retitle(HWND child);
    HWND SelectedChild() const;
    LRESULT List(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::SendMessageA(m_list, message, wParam, lParam);
    }

    HWND m_list = nullptr;
    DECLARE_MESSAGE_MAP()
};
