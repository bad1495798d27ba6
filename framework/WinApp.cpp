#include "framework/WinApp.h"

#include "framework/Exception.h"
#include "framework/Wnd.h"

IMPLEMENT_DYNAMIC(CWinApp, CObject)

namespace
{
CWinApp* g_app = nullptr;
}

CWinApp::CWinApp(const char* appName) : m_pszAppName(appName)
{
    g_app = this;
    m_hInstance = ::GetModuleHandleA(nullptr);
    std::set_new_handler(&ThrowMemoryException);
}

CWinApp::~CWinApp()
{
    if (g_app == this)
        g_app = nullptr;
}

CWinApp* KmGetApp()
{
    return g_app;
}

HINSTANCE KmGetInstanceHandle()
{
    return g_app && g_app->m_hInstance ? g_app->m_hInstance : ::GetModuleHandleA(nullptr);
}

HINSTANCE KmGetResourceHandle()
{
    return KmGetInstanceHandle();
}

HWND KmGetMainWindow()
{
    return g_app && g_app->m_pMainWnd ? g_app->m_pMainWnd->m_hWnd : nullptr;
}

void CWinApp::SetInstance(HINSTANCE instance, HINSTANCE prev, const char* cmdLine, int cmdShow)
{
    m_hInstance = instance;
    m_hPrevInstance = prev;
    m_lpCmdLine = cmdLine ? cmdLine : "";
    m_nCmdShow = cmdShow;
}

bool CWinApp::PreTranslateMessage(MSG* msg)
{
    // From the window under the message up to the top, each known window
    // may take the message.
    for (HWND hwnd = msg->hwnd; hwnd; hwnd = ::GetParent(hwnd)) {
        CWnd* wnd = CWnd::FromHandle(hwnd);
        if (wnd && wnd->PreTranslateMessage(msg))
            return true;
    }
    return false;
}

bool CWinApp::PumpMessage()
{
    MSG msg;
    if (::GetMessageA(&msg, nullptr, 0, 0) <= 0) {
        m_nExitCode = static_cast<int>(msg.wParam);
        return false;
    }
    if (!PreTranslateMessage(&msg)) {
        ::TranslateMessage(&msg);
        ::DispatchMessageA(&msg);
    }
    return true;
}

int CWinApp::Run()
{
    for (;;) {
        try {
            if (!PumpMessage())
                return m_nExitCode;
        } catch (...) { // the loop's last catch: the program goes on
            KmReportStrayException(0);
        }
    }
}

void CWinApp::ProcessWndProcException(const CException*, UINT)
{
    ::MessageBeep(MB_ICONHAND);
}

int KmWinMain(CWinApp& app, HINSTANCE instance, HINSTANCE prev, LPSTR cmdLine, int cmdShow)
{
    app.SetInstance(instance, prev, cmdLine, cmdShow);
    if (!app.InitInstance())
        return 0;
    int code = app.Run();
    int exitCode = app.ExitInstance();
    return exitCode ? exitCode : code;
}
