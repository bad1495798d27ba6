// The frame's menus: which of the two is on show, the states of a popup's
// items when it opens, the status-bar help of the item under the mouse,
// and the recent files of the File popup.
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "app/Settings.h"
#include "edit/FileUtil.h"

#include <cstring>

namespace
{

const int kRecentFiles = ID_FILE_MRU_LAST - ID_FILE_MRU_FIRST + 1;

} // namespace

// Swaps the menu bar between the menu without a file and the one with, and
// grays the Project popup as the settings say; a maximised child's system
// menu takes the first position of the bar.
LRESULT CKmFrame::OnSetMenu(WPARAM wParam, LPARAM)
{
    const int which = static_cast<int>(wParam);
    const bool withFile = which == IDR_MENU_FILE;
    HMENU menu = withFile ? m_menuFile.m_hMenu : m_menuNoFile.m_hMenu;
    if (which != m_nMenu) {
        HMENU windowPopup = ::GetSubMenu(menu, withFile ? POPUP_WINDOW : kNoFileWindowPopup);
        m_nMenu = which;
        MDISetMenu(menu, windowPopup);
    }
    BOOL maximized = FALSE;
    MDIGetActive(&maximized);
    const UINT position = (withFile ? POPUP_PROJECT : kNoFileProjectPopup) + (maximized ? 1 : 0);
    ::EnableMenuItem(::GetMenu(m_hWnd), position,
                     MF_BYPOSITION | ((theApp.flags & KF_NOPROJECT) ? MF_GRAYED : MF_ENABLED));
    ::DrawMenuBar(m_hWnd);
    if (m_nMenu == IDR_MENU_NOFILE && !theApp.m_strProjectDir.IsEmpty())
        ChangeDir(theApp.m_strProjectDir);
    SetFileButtons(m_nMenu);
    return 0;
}

// The recent files stand before Exit, numbered, shortened by the current
// directory, and behind a separator of their own.
void CKmFrame::RebuildRecentFiles(HMENU popup)
{
    if (!theApp.recentFiles[0].IsEmpty())
        for (UINT id = ID_FILE_MRU_SEP; id <= ID_FILE_MRU_LAST; ++id)
            if (!::DeleteMenu(popup, id, MF_BYCOMMAND))
                break;
    CString current;
    GetCurrentDir(current);
    if (current.IsEmpty() || current[current.GetLength() - 1] != '\\')
        current += '\\';
    int count = 0;
    for (; count < kRecentFiles && !theApp.recentFiles[count].IsEmpty(); ++count) {
        const CString& path = theApp.recentFiles[count];
        const char* shown = path;
        if (strncmp(path, current, static_cast<size_t>(current.GetLength())) == 0)
            shown += current.GetLength();
        CString text;
        text.Format("&%d %s", count + 1, shown);
        ::InsertMenuA(popup, ID_FILE_EXIT, MF_BYCOMMAND | MF_STRING,
                      static_cast<UINT_PTR>(ID_FILE_MRU_FIRST + count), text);
    }
    if (count > 0)
        ::InsertMenuA(popup, ID_FILE_EXIT, MF_BYCOMMAND | MF_SEPARATOR, ID_FILE_MRU_SEP, nullptr);
    theApp.recentFilesDirty = 0;
}

// The popup's position is turned into that of the menu with a file; then
// the frame, the subsystems and the active child set their items, in that
// order.
LRESULT CKmFrame::OnInitMenuPopup(WPARAM wParam, LPARAM lParam)
{
    HMENU popup = reinterpret_cast<HMENU>(wParam);
    int position = LOWORD(lParam);
    BOOL maximized = FALSE;
    CMDIChildWnd* active = MDIGetActive(&maximized);
    CKmChild* child = active ? KmChildOf(active->m_hWnd) : nullptr;
    if (HIWORD(lParam) || IsIconic())
        return 0;
    if (position == 0 && m_menuPopup.m_hMenu && popup == m_menuPopup.GetSubMenu(0)) {
        if (child)
            child->UpdateEditPopup(popup, EDITPOPUP_CONTEXT);
        return 0;
    }
    if (maximized) {
        if (position == 0)
            return 0; // the child's system menu
        --position;
    }
    if (!child) {
        if (position < 0 ||
            position >= static_cast<int>(sizeof kNoFilePopups / sizeof *kNoFilePopups))
            return 0;
        position = kNoFilePopups[position];
    }
    if (position == POPUP_FILE && theApp.recentFilesDirty)
        RebuildRecentFiles(popup);
    for (const auto& commands : m_commands)
        commands->UpdatePopup(popup, position, child);
    if (child)
        child->UpdatePopup(popup, position);
    return 0;
}

LRESULT CKmFrame::OnMenuSelect(WPARAM wParam, LPARAM lParam)
{
    if ((theApp.flags & KF_NOSTATUSBAR) || !theApp.statusBar.Exists())
        return 0;
    const UINT item = LOWORD(wParam);
    const UINT flags = HIWORD(wParam);
    UINT id;
    if (flags == 0xFFFF && lParam == 0) // the menu has closed
        id = 0;
    else if (flags & MF_POPUP)
        id = (flags & MF_SYSMENU) ? IDS_HELP_SYSMENU : 0;
    else if (flags & MF_SEPARATOR)
        id = 0;
    else if (item >= KM_FIRST_MDICHILD)
        id = IDS_HELP_WINDOWLIST;
    else if (item >= ID_FILE_MRU_FIRST && item <= ID_FILE_MRU_LAST)
        id = IDS_HELP_RECENTFILE;
    else if (item >= ID_TOOL_FIRST && item <= ID_TOOL_LAST)
        id = ID_TOOL_FIRST;
    else
        id = item;
    if (id)
        theApp.statusBar.SetTextId(id, 0);
    else
        theApp.statusBar.ClearText();
    return 0;
}

void CKmFrame::OnRecentFile(UINT id)
{
    BeginBusy(true);
    OpenFile(theApp.recentFiles[id - ID_FILE_MRU_FIRST], false, false);
    EndBusy();
}
