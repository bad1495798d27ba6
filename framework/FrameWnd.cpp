#include "framework/FrameWnd.h"

#include "framework/WinApp.h"

IMPLEMENT_DYNAMIC(CFrameWnd, CWnd)
IMPLEMENT_DYNAMIC(CMDIFrameWnd, CFrameWnd)
IMPLEMENT_DYNAMIC(CMDIChildWnd, CFrameWnd)

const RECT kRectDefault = {static_cast<LONG>(CW_USEDEFAULT), static_cast<LONG>(CW_USEDEFAULT), 0,
                           0};

namespace
{

bool IsDefault(const RECT& rect)
{
    return rect.left == kRectDefault.left && rect.top == kRectDefault.top;
}

int Width(const RECT& rect)
{
    return IsDefault(rect) ? CW_USEDEFAULT : rect.right - rect.left;
}

int Height(const RECT& rect)
{
    return IsDefault(rect) ? CW_USEDEFAULT : rect.bottom - rect.top;
}

} // namespace

// --- CFrameWnd

bool CFrameWnd::Create(const char* className, const char* title, DWORD style, const RECT& rect,
                       HWND parent, HMENU menu)
{
    return CreateEx(0, className, title, style, rect.left, rect.top, Width(rect), Height(rect),
                    parent, menu);
}

LRESULT CFrameWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = CWnd::WindowProc(message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        CWinApp* app = KmGetApp();
        if (app && app->m_pMainWnd == this) {
            app->m_pMainWnd = nullptr;
            ::PostQuitMessage(0);
        }
    }
    return result;
}

void CFrameWnd::PostNcDestroy()
{
    delete this;
}

// --- CMDIFrameWnd

CMDIChildWnd* CMDIFrameWnd::MDIGetActive(BOOL* maximized) const
{
    if (!m_hWndMDIClient)
        return nullptr;
    HWND child = reinterpret_cast<HWND>(
        ::SendMessageA(m_hWndMDIClient, WM_MDIGETACTIVE, 0, reinterpret_cast<LPARAM>(maximized)));
    CWnd* wnd = CWnd::FromHandle(child);
    return wnd && wnd->IsKindOf(RUNTIME_CLASS(CMDIChildWnd)) ? static_cast<CMDIChildWnd*>(wnd)
                                                             : nullptr;
}

void CMDIFrameWnd::MDIActivate(HWND child) const
{
    ::SendMessageA(m_hWndMDIClient, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(child), 0);
}

void CMDIFrameWnd::MDITile(UINT how) const
{
    ::SendMessageA(m_hWndMDIClient, WM_MDITILE, how, 0);
}

void CMDIFrameWnd::MDICascade() const
{
    ::SendMessageA(m_hWndMDIClient, WM_MDICASCADE, 0, 0);
}

void CMDIFrameWnd::MDIIconArrange() const
{
    ::SendMessageA(m_hWndMDIClient, WM_MDIICONARRANGE, 0, 0);
}

HMENU CMDIFrameWnd::MDISetMenu(HMENU frameMenu, HMENU windowMenu) const
{
    HMENU old = reinterpret_cast<HMENU>(::SendMessageA(m_hWndMDIClient, WM_MDISETMENU,
                                                       reinterpret_cast<WPARAM>(frameMenu),
                                                       reinterpret_cast<LPARAM>(windowMenu)));
    ::DrawMenuBar(m_hWnd);
    return old;
}

bool CMDIFrameWnd::CreateClient(const CREATESTRUCTA* cs, HMENU windowMenu)
{
    CLIENTCREATESTRUCT ccs;
    ccs.hWindowMenu = windowMenu;
    ccs.idFirstChild = KM_FIRST_MDICHILD;
    // No scroll bars: with a maximised child the client would still show them.
    m_hWndMDIClient = ::CreateWindowExA(
        WS_EX_CLIENTEDGE, "MDICLIENT", nullptr, WS_CHILD | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0,
        cs->cx, cs->cy, m_hWnd, reinterpret_cast<HMENU>(static_cast<INT_PTR>(KM_ID_MDICLIENT)),
        KmGetInstanceHandle(), &ccs);
    return m_hWndMDIClient != nullptr;
}

LRESULT CMDIFrameWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_CREATE) {
        if (!CreateClient(reinterpret_cast<const CREATESTRUCTA*>(lParam), nullptr))
            return -1;
    }
    if (message != WM_COMMAND && message != WM_NOTIFY && !FindEntry(message, 0, 0)) {
        LRESULT result = 0;
        for (CCmdTarget* target : m_commandTargets)
            if (target->OnWndMsg(message, wParam, lParam, result))
                return result;
    }
    return CFrameWnd::WindowProc(message, wParam, lParam);
}

bool CMDIFrameWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const UINT id = LOWORD(wParam);
    if ((id & KM_SYSTEM_IDS) == KM_SYSTEM_IDS)
        return false;
    if (lParam != 0) // a control's notification is the frame's own
        return CWnd::OnCommand(wParam, lParam);
    const UINT code = CommandCode(wParam, lParam);
    if (CMDIChildWnd* child = MDIGetActive())
        if (child->OnCmdMsg(id, code))
            return true;
    if (CWnd::OnCommand(wParam, lParam))
        return true;
    for (CCmdTarget* target : m_commandTargets)
        if (target->OnCmdMsg(id, code))
            return true;
    return false;
}

LRESULT CMDIFrameWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::DefFrameProcA(m_hWnd, m_hWndMDIClient, message, wParam, lParam);
}

bool CMDIFrameWnd::PreTranslateMessage(MSG* msg)
{
    return m_hWndMDIClient && ::TranslateMDISysAccel(m_hWndMDIClient, msg);
}

// --- CMDIChildWnd

bool CMDIChildWnd::Create(const char* className, const char* title, DWORD style, const RECT& rect,
                          CMDIFrameWnd* parent)
{
    m_pMDIFrame = parent;
    MDICREATESTRUCTA mcs;
    mcs.szClass = className;
    mcs.szTitle = title;
    mcs.hOwner = KmGetInstanceHandle();
    mcs.x = rect.left;
    mcs.y = rect.top;
    mcs.cx = Width(rect);
    mcs.cy = Height(rect);
    mcs.style = style;
    mcs.lParam = 0;

    KmSetWndInit(this);
    HWND hwnd = reinterpret_cast<HWND>(
        ::SendMessageA(parent->m_hWndMDIClient, WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&mcs)));
    KmSetWndInit(nullptr);
    return hwnd != nullptr && m_hWnd == hwnd;
}

void CMDIChildWnd::MDIDestroy()
{
    ::SendMessageA(m_pMDIFrame->m_hWndMDIClient, WM_MDIDESTROY, reinterpret_cast<WPARAM>(m_hWnd),
                   0);
}

LRESULT CMDIChildWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::DefMDIChildProcA(m_hWnd, message, wParam, lParam);
}

void CMDIChildWnd::PostNcDestroy()
{
    delete this;
}
