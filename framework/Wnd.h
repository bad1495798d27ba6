// Window object over an HWND, with message maps searched from the most
// derived class to the base; the first entry that fits wins.
#pragma once
#include "framework/Object.h"
#include "framework/String.h"

#include <windows.h>

class CWnd;

enum KmSig {
    KmSig_end = 0,
    KmSig_lwl, // LRESULT (WPARAM, LPARAM): a window message
    KmSig_vv,  // void (): a command or a control notification
    KmSig_vu,  // void (UINT id): a command in a range
    KmSig_lnm, // LRESULT (NMHDR*): a WM_NOTIFY notification
};

// One handler per entry; nSig says which of the four members holds it.
struct KmMsgMapEntry {
    UINT nMessage; // window message, WM_COMMAND or WM_NOTIFY
    UINT nCode;    // notification code for WM_COMMAND and WM_NOTIFY
    UINT nID;      // first command or control id
    UINT nLastID;  // last id of a range
    int nSig;
    void (CWnd::*pfnVoid)();
    LRESULT (CWnd::*pfnMessage)(WPARAM, LPARAM);
    void (CWnd::*pfnRange)(UINT);
    LRESULT (CWnd::*pfnNotify)(NMHDR*);
    const UINT* pRegistered; // a registered message: its number, known at run time
};

struct KmMsgMap {
    const KmMsgMap* (*pfnGetBaseMap)();
    const KmMsgMapEntry* lpEntries;
};

#define DECLARE_MESSAGE_MAP()                                                                      \
public:                                                                                            \
    static const KmMsgMap* GetThisMessageMap();                                                    \
                                                                                                   \
protected:                                                                                         \
    const KmMsgMap* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                     \
    const KmMsgMap* theClass::GetMessageMap() const { return GetThisMessageMap(); }                \
    const KmMsgMap* theClass::GetThisMessageMap()                                                  \
    {                                                                                              \
        typedef theClass ThisClass;                                                                \
        typedef baseClass TheBaseClass;                                                            \
        static const KmMsgMapEntry entries[] = {

#define END_MESSAGE_MAP()                                                                          \
    {0, 0, 0, 0, KmSig_end, nullptr, nullptr, nullptr, nullptr, nullptr}                            \
    }                                                                                              \
    ;                                                                                              \
    static const KmMsgMap map = {&TheBaseClass::GetThisMessageMap, entries};                       \
    return &map;                                                                                   \
    }

#define KM_PMSG(type, fn) static_cast<type>(&ThisClass::fn)

// LRESULT OnXxx(WPARAM, LPARAM)
#define ON_MESSAGE(message, fn)                                                                    \
    {message, 0, 0, 0, KmSig_lwl, nullptr, KM_PMSG(LRESULT (CWnd::*)(WPARAM, LPARAM), fn),        \
     nullptr, nullptr, nullptr},
// LRESULT OnXxx(WPARAM, LPARAM) for a registered message: pMessage points to
// the UINT that holds what RegisterWindowMessage gave, read at each dispatch
#define ON_REGISTERED_MESSAGE(pMessage, fn)                                                        \
    {0, 0, 0, 0, KmSig_lwl, nullptr, KM_PMSG(LRESULT (CWnd::*)(WPARAM, LPARAM), fn), nullptr,      \
     nullptr, (pMessage)},
// void OnXxx()
#define ON_COMMAND(id, fn)                                                                         \
    {WM_COMMAND, 0, (id), (id), KmSig_vv, KM_PMSG(void (CWnd::*)(), fn), nullptr, nullptr,         \
     nullptr, nullptr},
// void OnXxx(UINT id)
#define ON_COMMAND_RANGE(first, last, fn)                                                          \
    {WM_COMMAND, 0, (first), (last), KmSig_vu, nullptr, nullptr,                                   \
     KM_PMSG(void (CWnd::*)(UINT), fn), nullptr, nullptr},
// void OnXxx(): a notification carried by WM_COMMAND, such as EN_CHANGE
#define ON_CONTROL(code, id, fn)                                                                   \
    {WM_COMMAND, (code), (id), (id), KmSig_vv, KM_PMSG(void (CWnd::*)(), fn), nullptr, nullptr,    \
     nullptr, nullptr},
// LRESULT OnXxx(NMHDR*)
#define ON_NOTIFY(code, id, fn)                                                                    \
    {WM_NOTIFY, (code), (id), (id), KmSig_lnm, nullptr, nullptr, nullptr,                          \
     KM_PMSG(LRESULT (CWnd::*)(NMHDR*), fn), nullptr},

class CWnd : public CObject {
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

    bool CreateEx(DWORD exStyle, const char* className, const char* windowName, DWORD style,
                  int x, int y, int width, int height, HWND parent, HMENU menuOrId,
                  void* param = nullptr);
    // Takes over an existing window, a control most often.
    bool SubclassWindow(HWND hwnd);
    HWND UnsubclassWindow();
    bool DestroyWindow();

    // Searches the maps for a command; true when a handler ran.
    virtual bool OnCmdMsg(UINT id, UINT code);
    // The code under which a WM_COMMAND is looked up: a menu item and an
    // accelerator (code 1) are the same command, found by ON_COMMAND.
    static UINT CommandCode(WPARAM wParam, LPARAM lParam)
    {
        return lParam == 0 && HIWORD(wParam) == 1 ? 0 : HIWORD(wParam);
    }
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

    static const KmMsgMap* GetThisMessageMap();

protected:
    virtual const KmMsgMap* GetMessageMap() const;
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual bool OnCommand(WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // Calls the default procedure with the message being handled.
    LRESULT Default();
    // After the last message of the window; windows that own their object
    // delete it here.
    virtual void PostNcDestroy() {}

    WNDPROC m_pfnSuper = nullptr; // old procedure of a subclassed window

private:
    bool DispatchEntry(const KmMsgMapEntry* entry, UINT id, WPARAM wParam, LPARAM lParam,
                       LRESULT& result);
    const KmMsgMapEntry* FindEntry(UINT message, UINT code, UINT id) const;
    LRESULT Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    void Attach(HWND hwnd);
    void Detach();

    MSG m_currentMsg = {};
};

// The next window that this thread creates belongs to wnd (null: none).
// For creations that go through another window, such as WM_MDICREATE.
void KmSetWndInit(CWnd* wnd);

// Registers (once) a window class with the library's procedure and returns
// its name, made from the attributes.
const char* KmRegisterWndClass(UINT style, HCURSOR cursor = nullptr, HBRUSH background = nullptr,
                               HICON icon = nullptr);
