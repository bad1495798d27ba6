// The frame's keys: the accelerator table with the user's bindings, and the
// key texts that the menus show behind a tab.
#include "app/IniStore.h"
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "edit/Messages.h"
#include "ui/KeyTable.h"

#include <string>

bool CKmFrame::ApplyKeyBindings(bool reloadMenus)
{
    if (reloadMenus) {
        // Menu 3 is on show: the caller has closed every window.
        HMENU shown = ::GetMenu(m_hWnd);
        m_menuNoFile.Detach();
        m_menuFile.DestroyMenu();
        if (!m_menuNoFile.LoadMenu(IDR_MENU_NOFILE) || !m_menuFile.LoadMenu(IDR_MENU_FILE))
            return false;
        m_nMenu = 0; // so that the message puts the new menu on show
        SendMessage(WM_KM_SETMENU, IDR_MENU_NOFILE);
        ::DestroyMenu(shown);
    }
    if (m_hAccel)
        ::DestroyAcceleratorTable(m_hAccel);
    m_hAccel = ::LoadAcceleratorsA(KmGetResourceHandle(), MAKEINTRESOURCEA(IDR_ACCELERATORS));
    if (!m_hAccel || !theApp.store)
        return false;
    CKeyTable table;
    if (!table.Load(m_hAccel))
        return false;
    bool changed = false;
    CString name, value;
    theApp.store->BeginEnum(SECTION_KEYBINDINGS);
    while (theApp.store->NextInSection(name, value)) {
        unsigned key = 0, fVirt = 0;
        ParseBindingValue(value, key, fVirt);
        const unsigned cmd = CommandByName(name);
        std::string text;
        if (cmd == 0 || !KeyText(key, fVirt, text))
            continue; // a name or a value of no use: skipped without a word
        table.SetBinding(fVirt, key, cmd);
        SetMenuKey(cmd, text.c_str());
        changed = true;
    }
    if (changed)
        if (HACCEL built = table.Build(m_hAccel))
            m_hAccel = built;
    theApp.store->RemoveSection(SECTION_KEYBINDINGS);
    return true;
}

void CKmFrame::SetMenuKey(UINT cmd, const char* text)
{
    if (cmd >= ID_TOOL_FIRST && cmd <= ID_TOOL_LAST) {
        const int tool = static_cast<int>(cmd - ID_TOOL_FIRST);
        if (tool < theApp.tools.GetCount())
            theApp.tools.SetKeyText(tool, text);
        theApp.toolsDirty = 1;
        return;
    }
    for (HMENU menu : {m_menuNoFile.m_hMenu, m_menuFile.m_hMenu}) {
        char item[80];
        if (!::GetMenuStringA(menu, cmd, item, sizeof item, MF_BYCOMMAND))
            continue;
        std::string shown = item;
        shown = shown.substr(0, shown.find('\t')) + text;
        ::ModifyMenuA(menu, cmd, MF_BYCOMMAND | MF_STRING, cmd, shown.c_str());
    }
}

// A failed table leaves the frame's keys as they were, but the changes still
// reach the menus and the file.
bool CKmFrame::ApplyKeyTable(CKeyTable& table)
{
    HACCEL built = table.Build(m_hAccel);
    if (built)
        m_hAccel = built;
    KeyRecord change;
    while (table.NextChange(change)) {
        const char* name = CommandName(change.cmd);
        std::string text;
        if (!name || !KeyText(change.key, change.fVirt, text))
            continue;
        SetMenuKey(change.cmd, text.c_str());
        CString value;
        value.Format("%d,%d", change.key, change.fVirt);
        theApp.SetSetting(SECTION_KEYBINDINGS, name, value);
    }
    return built != nullptr;
}
