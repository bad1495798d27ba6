#include "framework/Wnd.h"

#include "framework/Exception.h"
#include "framework/WinApp.h"

#include <cstdio>
#include <cstring>
#include <unordered_map>

IMPLEMENT_DYNAMIC(CWnd, CCmdTarget)

namespace
{

// One user-interface thread: the map and the creation slot need no lock.
std::unordered_map<HWND, CWnd*>& HandleMap()
{
    static std::unordered_map<HWND, CWnd*> map;
    return map;
}

CWnd* g_wndInit = nullptr; // the window being created

} // namespace

void KmSetWndInit(CWnd* wnd)
{
    g_wndInit = wnd;
}

CWnd::~CWnd()
{
    // An object going away before its window: the window lives on
    // without it.
    if (m_hWnd)
        UnsubclassWindow();
}

CWnd* CWnd::FromHandle(HWND hwnd)
{
    auto it = HandleMap().find(hwnd);
    return it == HandleMap().end() ? nullptr : it->second;
}

void CWnd::Attach(HWND hwnd)
{
    m_hWnd = hwnd;
    HandleMap()[hwnd] = this;
}

void CWnd::Detach()
{
    if (m_hWnd)
        HandleMap().erase(m_hWnd);
    m_hWnd = nullptr;
}

LRESULT CALLBACK CWnd::StdWndProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    CWnd* wnd = FromHandle(hwnd);
    if (!wnd && g_wndInit) {
        wnd = g_wndInit;
        g_wndInit = nullptr;
        wnd->Attach(hwnd);
    }
    if (!wnd)
        return ::DefWindowProcA(hwnd, message, wParam, lParam);

    // Nothing may unwind through the window procedure.
    try {
        return wnd->Dispatch(message, wParam, lParam);
    } catch (...) {
        KmReportStrayException(message);
    }
    return 0;
}

LRESULT CWnd::Dispatch(UINT message, WPARAM wParam, LPARAM lParam)
{
    MSG saved = m_currentMsg;
    m_currentMsg.hwnd = m_hWnd;
    m_currentMsg.message = message;
    m_currentMsg.wParam = wParam;
    m_currentMsg.lParam = lParam;
    LRESULT result = WindowProc(message, wParam, lParam);
    m_currentMsg = saved;

    if (message == WM_NCDESTROY) {
        HWND hwnd = m_hWnd;
        if (m_pfnSuper) {
            ::SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
            m_pfnSuper = nullptr;
        }
        Detach();
        PostNcDestroy();
    }
    return result;
}

bool CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    return OnCmdMsg(LOWORD(wParam), CommandCode(wParam, lParam));
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND) {
        if (OnCommand(wParam, lParam))
            return 0;
        return DefWindowProc(message, wParam, lParam);
    }
    LRESULT result = 0;
    if (message == WM_NOTIFY) {
        const NMHDR* header = reinterpret_cast<const NMHDR*>(lParam);
        const KmMsgMapEntry* entry =
            FindEntry(WM_NOTIFY, header->code, static_cast<UINT>(header->idFrom));
        if (entry &&
            DispatchEntry(entry, static_cast<UINT>(header->idFrom), wParam, lParam, result))
            return result;
        return DefWindowProc(message, wParam, lParam);
    }
    if (OnWndMsg(message, wParam, lParam, result))
        return result;
    return DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_pfnSuper)
        return ::CallWindowProcA(m_pfnSuper, m_hWnd, message, wParam, lParam);
    return ::DefWindowProcA(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default()
{
    return DefWindowProc(m_currentMsg.message, m_currentMsg.wParam, m_currentMsg.lParam);
}

bool CWnd::CreateEx(DWORD exStyle, const char* className, const char* windowName, DWORD style,
                    int x, int y, int width, int height, HWND parent, HMENU menuOrId, void* param)
{
    g_wndInit = this;
    HWND hwnd = ::CreateWindowExA(exStyle, className, windowName, style, x, y, width, height,
                                  parent, menuOrId, KmGetInstanceHandle(), param);
    g_wndInit = nullptr;
    if (!hwnd) {
        Detach();
        return false;
    }
    if (!m_hWnd)
        Attach(hwnd);
    return true;
}

bool CWnd::SubclassWindow(HWND hwnd)
{
    Attach(hwnd);
    m_pfnSuper = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CWnd::StdWndProc)));
    return m_pfnSuper != nullptr;
}

HWND CWnd::UnsubclassWindow()
{
    HWND hwnd = m_hWnd;
    if (m_pfnSuper)
        ::SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
    m_pfnSuper = nullptr;
    Detach();
    return hwnd;
}

bool CWnd::DestroyWindow()
{
    return m_hWnd && ::DestroyWindow(m_hWnd);
}

void CWnd::GetWindowText(CString& text) const
{
    int length = ::GetWindowTextLengthA(m_hWnd);
    char* buffer = text.GetBuffer(length + 1);
    ::GetWindowTextA(m_hWnd, buffer, length + 1);
    text.ReleaseBuffer();
}

const char* KmRegisterWndClass(UINT style, HCURSOR cursor, HBRUSH background, HICON icon)
{
    static char names[32][64];
    static int used = 0;
    char name[64];
    snprintf(name, sizeof name, "Km:%x:%p:%p:%p", style, static_cast<void*>(cursor),
             static_cast<void*>(background), static_cast<void*>(icon));
    for (int i = 0; i < used; ++i)
        if (strcmp(names[i], name) == 0)
            return names[i];
    if (used == 32)
        return nullptr;

    WNDCLASSA wc = {};
    wc.style = style;
    wc.lpfnWndProc = &CWnd::StdWndProc;
    wc.hInstance = KmGetInstanceHandle();
    wc.hCursor = cursor;
    wc.hbrBackground = background;
    wc.hIcon = icon;
    wc.lpszClassName = name;
    if (!::RegisterClassA(&wc))
        return nullptr;
    strcpy(names[used], name);
    return names[used++];
}
