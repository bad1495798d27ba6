#include "ui/UiCommands.h"

#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"
#include "ui/AboutDialog.h"
#include "ui/GlobalSettingsDialog.h"
#include "ui/SysMetricsDialog.h"
#include "ui/WinSelector.h"

#include <new>

IMPLEMENT_DYNAMIC(CUiCommands, CKmCommands)

// clang-format off
BEGIN_MESSAGE_MAP(CUiCommands, CKmCommands)
    ON_COMMAND(ID_SET_GLOBAL, OnGlobalSettings)
    ON_COMMAND(ID_TOOL_SYSMETRICS, OnSystemMetrics)
    ON_COMMAND(ID_WINDOW_SELECTOR, OnWindowSelector)
    ON_COMMAND(ID_HELP_ABOUT, OnAbout)
END_MESSAGE_MAP()
// clang-format on

void CUiCommands::OnGlobalSettings()
{
    const unsigned long oldFlags = theApp.flags;
    const int oldTabSize = theApp.tabSize;
    CGlobalSettingsDialog dialog(m_frame.m_hWnd);
    if (dialog.DoModal() == IDOK)
        ApplyGlobalSettings(dialog, oldFlags, oldTabSize);
}

void CUiCommands::OnSystemMetrics()
{
    CSysMetricsDialog(m_frame.m_hWnd).DoModal();
}

void CUiCommands::OnAbout()
{
    CAboutDialog(m_frame.m_hWnd).DoModal();
}

// 200 pixels wide at the screen's right edge, 150 high about its middle.
void CUiCommands::OnWindowSelector()
{
    if (m_frame.m_pSelector) {
        ::SetWindowPos(m_frame.m_pSelector->m_hWnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        return;
    }
    CString title;
    title.LoadString(IDS_SELECTORTITLE);
    auto* selector = new (std::nothrow) CWinSelector;
    if (!selector)
        return OutOfMemoryNotice();
    const int right = ::GetSystemMetrics(SM_CXFULLSCREEN) - 1;
    const int middle = ::GetSystemMetrics(SM_CYFULLSCREEN) / 2;
    const RECT rect = {right - 199, middle - 75, right, middle + 75};
    if (!selector->Create(title, rect, m_frame.m_hWnd)) {
        delete selector;
        return;
    }
    m_frame.m_pSelector = selector;
    for (HWND hwnd = ::GetWindow(m_frame.m_hWndMDIClient, GW_CHILD); hwnd;
         hwnd = ::GetWindow(hwnd, GW_HWNDNEXT))
        if (!::GetWindow(hwnd, GW_OWNER))
            selector->SendMessage(WM_KM_WINDOWLIST, WL_CREATED, reinterpret_cast<LPARAM>(hwnd));
    if (m_frame.m_pActiveChild)
        selector->SendMessage(WM_KM_WINDOWLIST, WL_ACTIVATED,
                              reinterpret_cast<LPARAM>(m_frame.m_pActiveChild->m_hWnd));
}
