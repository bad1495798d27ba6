// Window object over an HWND, its messages dispatched through the maps of
// its class.
#pragma once
#include "framework/CmdTarget.h"
#include "framework/String.h"

#include <windows.h>

class CWnd : public CCmdTarget
{
    DECLARE_DYNAMIC(CWnd)
  public:
    CWnd() = default;
    ~CWnd() override;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    HWND m_hWnd = nullptr;
    operator HWND() const { return m_hWnd; }

    // The object of a window created or subclassed through this library,
    // or null.
    static CWnd* FromHandle(HWND hwnd);
    // The window procedure of every class registered through the library.
    static LRESULT CALLBACK StdWndProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

    bool CreateEx(DWORD exStyle, const char* className, const char* windowName, DWORD style, int x,
                  int y, int width, int height, HWND parent, HMENU menuOrId, void* param = nullptr);
    // Takes over an existing window, a control most often.
    bool SubclassWindow(HWND hwnd);
    HWND UnsubclassWindow();
    bool DestroyWindow();

    virtual bool PreTranslateMessage(MSG*) { return false; }

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::SendMessageA(m_hWnd, message, wParam, lParam);
    }
    bool PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::PostMessageA(m_hWnd, message, wParam, lParam) != FALSE;
    }
    void GetWindowText(CString& text) const;
    void SetWindowText(const char* text) { ::SetWindowTextA(m_hWnd, text); }
    bool ShowWindow(int cmdShow) { return ::ShowWindow(m_hWnd, cmdShow) != FALSE; }
    bool IsIconic() const { return ::IsIconic(m_hWnd) != FALSE; }
    bool IsZoomed() const { return ::IsZoomed(m_hWnd) != FALSE; }

  protected:
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual bool OnCommand(WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // Calls the default procedure with the message being handled.
    LRESULT Default();
    // After the last message of the window; windows that own their object
    // delete it here.
    virtual void PostNcDestroy() {}

    WNDPROC m_pfnSuper = nullptr; // old procedure of a subclassed window

    // Runs the message through WindowProc, and ends the object's tie to the
    // window after WM_NCDESTROY.
    LRESULT Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    void Attach(HWND hwnd);
    void Detach();

  private:

    MSG m_currentMsg = {};
};

// The next window that this thread creates belongs to wnd (null: none).
// For creations that go through another window, such as WM_MDICREATE.
void KmSetWndInit(CWnd* wnd);

// Registers (once) a window class with the library's procedure and returns
// its name, made from the attributes.
const char* KmRegisterWndClass(UINT style, HCURSOR cursor = nullptr, HBRUSH background = nullptr,
                               HICON icon = nullptr);
