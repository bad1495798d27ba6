#include "project/ProjectCommands.h"

#include "app/KmApp.h"
#include "app/MenuRules.h"
#include "resources/KmIds.h"

IMPLEMENT_DYNAMIC(CProjectCommands, CKmCommands)

// clang-format off
BEGIN_MESSAGE_MAP(CProjectCommands, CKmCommands)
    ON_MESSAGE(WM_KM_PROJECTCHANGED, OnNotYetMessage)
    ON_MESSAGE(WM_KM_PROCESSDONE, OnNotYetMessage)
    ON_COMMAND_RANGE(ID_PROJECT_SELECT, ID_PROJECT_VIEWLOG, OnNotYet)
END_MESSAGE_MAP()
// clang-format on

// The tool commands need a project and an idle runner; the log needs a
// result file.
void CProjectCommands::UpdatePopup(HMENU popup, int position, CKmChild*)
{
    if (position != POPUP_PROJECT)
        return;
    const bool running = false; // no project process runs until the runner exists
    const bool results = false; // no result file before the first project command
    const bool usable = !theApp.m_strProjectDir.IsEmpty() && !running;
    for (UINT id : {ID_PROJECT_COMPILE, ID_PROJECT_LINK, ID_PROJECT_BUILD, ID_PROJECT_BUILDTARGET,
                    ID_PROJECT_TEST, ID_PROJECT_DEBUG, ID_PROJECT_CONFIGURE})
        EnableItem(popup, id, usable);
    EnableItem(popup, ID_PROJECT_SELECT, !running);
    EnableItem(popup, ID_PROJECT_VIEWLOG, !running && results);
}
