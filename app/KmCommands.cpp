#include "app/KmCommands.h"

#include "app/KmFrame.h"
#include "help/HelpCommands.h"
#include "print/PrintCommands.h"
#include "project/ProjectCommands.h"
#include "search/SearchCommands.h"
#include "tools/ToolCommands.h"
#include "ui/UiCommands.h"

IMPLEMENT_DYNAMIC(CKmCommands, CCmdTarget)

void CKmCommands::UpdatePopup(HMENU, int, CKmChild*) {}

void CKmCommands::OnNotYet(UINT)
{
    m_frame.Alert(MB_ICONEXCLAMATION);
}

LRESULT CKmCommands::OnNotYetMessage(WPARAM, LPARAM)
{
    m_frame.Alert(MB_ICONEXCLAMATION);
    return 0;
}

std::vector<std::unique_ptr<CKmCommands>> CreateSubsystemCommands(CKmFrame& frame)
{
    std::vector<std::unique_ptr<CKmCommands>> commands;
    commands.emplace_back(new CSearchCommands(frame));
    commands.emplace_back(new CProjectCommands(frame));
    commands.emplace_back(new CToolCommands(frame));
    commands.emplace_back(new CUiCommands(frame));
    commands.emplace_back(new CPrintCommands(frame));
    commands.emplace_back(new CHelpCommands(frame));
    return commands;
}
