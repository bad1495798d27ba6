#include "tools/ToolCommands.h"

#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "resources/KmIds.h"
#include "tools/CompareTool.h"
#include "tools/ExtractTool.h"
#include "tools/FileManagerDialog.h"
#include "tools/RunCommand.h"
#include "tools/RunDialog.h"
#include "tools/ToolArgsDialog.h"

IMPLEMENT_DYNAMIC(CToolCommands, CKmCommands)

// clang-format off
BEGIN_MESSAGE_MAP(CToolCommands, CKmCommands)
    ON_COMMAND(ID_FILE_MANAGE, OnManageFiles)
    ON_COMMAND(ID_TOOL_COMPARE, OnCompare)
    ON_COMMAND(ID_TOOL_EXTRACTSTRINGS, OnExtractStrings)
    ON_COMMAND(ID_TOOL_RUN, OnRun)
    ON_COMMAND_RANGE(ID_TOOL_FIRST, ID_TOOL_LAST, OnTool)
END_MESSAGE_MAP()
// clang-format on

void CToolCommands::OnManageFiles()
{
    CFileManagerDialog::Open(m_frame);
}

void CToolCommands::OnCompare()
{
    RunCompareTool();
}

void CToolCommands::OnExtractStrings()
{
    RunExtractTool();
}

void CToolCommands::UpdatePopup(HMENU popup, int position, CKmChild*)
{
    if (position != POPUP_TOOLS || !theApp.toolsDirty)
        return;
    for (UINT id = ID_TOOL_FIRST; id <= ID_TOOL_LAST; ++id)
        if (!::DeleteMenu(popup, id, MF_BYCOMMAND))
            break;
    for (int i = 0; i < theApp.tools.GetCount(); ++i) {
        CString text = theApp.tools.GetAt(i).m_strMenuText;
        text += theApp.tools.GetKeyText(i);
        ::AppendMenuA(popup, MF_STRING, static_cast<UINT_PTR>(ID_TOOL_FIRST + i), text);
    }
    theApp.toolsDirty = 0;
}

void CToolCommands::OnTool(UINT id)
{
    const int index = static_cast<int>(id - ID_TOOL_FIRST);
    if (index >= theApp.tools.GetCount())
        return;
    const CToolEntry& tool = theApp.tools.GetAt(index);
    CString arguments = tool.m_strArguments;
    if (tool.m_bPrompt) {
        // What the user confirms comes behind the fixed arguments, with no
        // blank: a prompting tool is meant to have none. Intended.
        CToolArgsDialog dialog(m_frame.m_hWnd, tool.m_strCommand, tool.m_strArguments);
        if (dialog.DoModal() != IDOK)
            return;
        arguments += dialog.m_strArguments;
    }
    RunCommand(&m_frame, tool.m_strCommand, arguments, tool.m_strInitDir, tool.m_bMinimized != 0);
}

void CToolCommands::OnRun()
{
    do {
        CRunDialog dialog(m_frame.m_hWnd, m_run);
        if (dialog.DoModal() != IDOK)
            return;
    } while (!RunCommand(&m_frame, m_run.m_strCommand, m_run.m_strArguments, m_run.m_strInitDir,
                         m_run.m_bMinimized != 0));
}
