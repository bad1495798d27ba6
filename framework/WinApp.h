// The application object: entry, message loop and the last catch at the
// border of the loop.
#pragma once
#include "framework/Object.h"
#include "framework/String.h"

#include <windows.h>

class CWnd;
class CException;

class CWinApp : public CObject
{
    DECLARE_DYNAMIC(CWinApp)
  public:
    explicit CWinApp(const char* appName);
    ~CWinApp() override;

    virtual bool InitInstance() { return true; }
    virtual int ExitInstance() { return 0; }
    virtual int Run();
    // Gives the windows under the message a chance to translate it; true
    // when it was consumed.
    virtual bool PreTranslateMessage(MSG* msg);
    // Called at the border of a window procedure for an exception nobody
    // caught; the program goes on.
    virtual void ProcessWndProcException(const CException* exception, UINT message);

    // Fills the instance fields, as the entry does before InitInstance.
    void SetInstance(HINSTANCE instance, HINSTANCE prev, const char* cmdLine, int cmdShow);
    // Processes one message; false when the loop is to end.
    bool PumpMessage();

    const char* m_pszAppName;
    HINSTANCE m_hInstance = nullptr;
    HINSTANCE m_hPrevInstance = nullptr;
    const char* m_lpCmdLine = "";
    int m_nCmdShow = SW_SHOWNORMAL;
    CWnd* m_pMainWnd = nullptr;
    int m_nExitCode = 0;
};

CWinApp* KmGetApp();
HINSTANCE KmGetInstanceHandle();
HINSTANCE KmGetResourceHandle();
HWND KmGetMainWindow();

// The body of WinMain: InitInstance, the loop, and ExitInstance only after a
// true InitInstance.
int KmWinMain(CWinApp& app, HINSTANCE instance, HINSTANCE prev, LPSTR cmdLine, int cmdShow);
