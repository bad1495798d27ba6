// The states of menu items, set when their popup opens, and the names of
// the popups' positions.
#pragma once
#include <windows.h>

// Positions of the popups in the menu of a window with a file. The menu
// without a file has fewer; the frame maps its positions onto these.
enum MenuPopup {
    POPUP_FILE = 0,
    POPUP_EDIT = 1,
    POPUP_SEARCH = 2,
    POPUP_SETTINGS = 3,
    POPUP_PROJECT = 4,
    POPUP_TOOLS = 5,
    POPUP_WINDOW = 6,
    POPUP_HELP = 7,
};

// The menu without a file: File, Global, Project, Tools, Help. Global
// takes the rules of Search.
const MenuPopup kNoFilePopups[] = {POPUP_FILE, POPUP_SEARCH, POPUP_PROJECT, POPUP_TOOLS,
                                   POPUP_HELP};
const int kNoFileProjectPopup = 2;
const int kNoFileWindowPopup = 3;

// What UpdateEditPopup is told about the popup it fills.
enum EditPopupSource { EDITPOPUP_MENU = 0, EDITPOPUP_CONTEXT = 1 };

inline void EnableItem(HMENU menu, UINT id, bool enabled)
{
    ::EnableMenuItem(menu, id, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
}

inline void GrayItem(HMENU menu, UINT id)
{
    EnableItem(menu, id, false);
}

inline void CheckItem(HMENU menu, UINT id, bool checked)
{
    ::CheckMenuItem(menu, id, MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED));
}
