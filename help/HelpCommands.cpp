#include "help/HelpCommands.h"

#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "resources/KmIds.h"
#include "ui/WinSelector.h"

IMPLEMENT_DYNAMIC(CHelpCommands, CKmCommands)

// clang-format off
BEGIN_MESSAGE_MAP(CHelpCommands, CKmCommands)
    ON_COMMAND(ID_HELP_CONTENTS, OnHelpContents)
    ON_COMMAND(ID_HELP_SEARCH, OnHelpSearch)
    ON_COMMAND(ID_HELP_CONTEXT, OnHelpContext)
END_MESSAGE_MAP()
// clang-format on

void CHelpCommands::OnHelpContents()
{
    ::WinHelpA(m_frame.m_hWnd, theApp.helpPath, HELP_INDEX, 0);
}

void CHelpCommands::OnHelpSearch()
{
    ::WinHelpA(m_frame.m_hWnd, theApp.helpPath, HELP_PARTIALKEY, reinterpret_cast<ULONG_PTR>(""));
}

// The window selector has its own page; the active window answers context
// help itself; with none, the contents.
void CHelpCommands::OnHelpContext()
{
    const DWORD kHelpSelector = 60;
    const HWND focus = ::GetFocus();
    const HWND selector = m_frame.m_pSelector ? m_frame.m_pSelector->m_hWnd : nullptr;
    if (selector && focus && (focus == selector || ::IsChild(selector, focus)))
        ::WinHelpA(m_frame.m_hWnd, theApp.helpPath, HELP_CONTEXT, kHelpSelector);
    else if (m_frame.m_pActiveChild)
        m_frame.m_pActiveChild->PostMessage(WM_COMMAND, ID_HELP_CONTEXT_CHILD);
    else
        OnHelpContents();
}
