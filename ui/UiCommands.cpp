#include "ui/UiCommands.h"

#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "resources/KmIds.h"
#include "ui/AboutDialog.h"
#include "ui/GlobalSettingsDialog.h"
#include "ui/SysMetricsDialog.h"

IMPLEMENT_DYNAMIC(CUiCommands, CKmCommands)

// clang-format off
BEGIN_MESSAGE_MAP(CUiCommands, CKmCommands)
    ON_COMMAND(ID_SET_GLOBAL, OnGlobalSettings)
    ON_COMMAND(ID_TOOL_SYSMETRICS, OnSystemMetrics)
    ON_COMMAND_RANGE(ID_WINDOW_SELECTOR, ID_WINDOW_SELECTOR, OnNotYet)
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
