// The frame and its children under the program's own loop: keys to
// commands, the two menus, popup item states, routing between child, frame
// and subsystems, arranging and closing, and what the status bar shows.
#include "app/BindingNames.h"
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "app/Settings.h"
#include "edit/KmFileEdit.h"
#include "resources/KmIds.h"
#include "search/SearchRequest.h"
#include "support/WinTestSupport.h"
#include "ui/StatusPanes.h"

using namespace kmtest;

namespace
{

// A window that can't do much: the base class's rules as they stand.
class CPlainChild : public CKmChild
{
  public:
    CPlainChild() : CKmChild(CF_HSCROLL) {}
};

// Takes every command and keeps the ids in the order they came.
class CRecordingChild : public CKmChild
{
  public:
    CRecordingChild() : CKmChild(0) {}
    std::vector<UINT> ids;

  protected:
    void OnAnyCommand(UINT id) { ids.push_back(id); }
    DECLARE_MESSAGE_MAP()
};

// clang-format off
BEGIN_MESSAGE_MAP(CRecordingChild, CKmChild)
    ON_COMMAND_RANGE(1, 0xEFFF, OnAnyCommand)
END_MESSAGE_MAP()
// clang-format on

// Handles one command that the frame handles too; may refuse to close.
class CShadowChild : public CKmChild
{
  public:
    CShadowChild() : CKmChild(0) {}
    int cascades = 0, helpRequests = 0;
    bool refuse = false;

  protected:
    void OnCascade() { ++cascades; }
    void OnHelp() { ++helpRequests; }
    LRESULT OnQueryEndSession(WPARAM, LPARAM) { return refuse ? 0 : 1; }
    DECLARE_MESSAGE_MAP()
};

// clang-format off
BEGIN_MESSAGE_MAP(CShadowChild, CKmChild)
    ON_COMMAND(ID_WINDOW_CASCADE, OnCascade)
    ON_COMMAND(ID_HELP_CONTEXT_CHILD, OnHelp)
    ON_MESSAGE(WM_QUERYENDSESSION, OnQueryEndSession)
END_MESSAGE_MAP()
// clang-format on

std::string MenuText(HMENU menu, int position)
{
    char text[MAX_PATH * 2] = "";
    ::GetMenuStringA(menu, static_cast<UINT>(position), text, sizeof text, MF_BYPOSITION);
    return text;
}

class ShellTest : public FrameTest
{
  protected:
    void SetUp() override
    {
        FrameTest::SetUp();
        ASSERT_TRUE(Start());
    }

    static bool PositionGrayed(HMENU menu, int at)
    {
        return ::GetMenuState(menu, at, MF_BYPOSITION) & MF_GRAYED;
    }
    static std::string PaneText(int index) { return theApp.statusBar.GetPane(index)->Text(); }
    static std::string BarText()
    {
        return theApp.statusBar.m_bTextShown ? WindowText(theApp.statusBar.GetHwnd()) : "";
    }

    template <class T> T* MakeChild(const char* title, bool maximized = false)
    {
        T* child = new T; // the window deletes it at its end
        const char* cls =
            KmRegisterWndClass(CS_HREDRAW | CS_VREDRAW, ::LoadCursorA(nullptr, IDC_ARROW),
                               reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
        EXPECT_TRUE(child->Create(cls, title, WS_VISIBLE | (maximized ? WS_MAXIMIZE : 0),
                                  kRectDefault, m_frame))
            << title;
        PumpUntilIdle();
        return child;
    }

    // A key pressed and let go with the modifiers held, as the loop sees it,
    // posted to the window with the focus.
    void PressKey(BYTE key, bool control, bool shift)
    {
        BYTE state[256] = {};
        state[VK_CONTROL] = state[VK_LCONTROL] = control ? 0x80 : 0;
        state[VK_SHIFT] = state[VK_LSHIFT] = shift ? 0x80 : 0;
        state[key] = 0x80;
        ::SetKeyboardState(state);
        HWND target = ::GetFocus() ? ::GetFocus() : m_frameWnd;
        const UINT scan = ::MapVirtualKeyA(key, 0);
        ::PostMessageA(target, WM_KEYDOWN, key, 1 | (scan << 16));
        PumpUntilIdle();
        memset(state, 0, sizeof state);
        ::SetKeyboardState(state);
        ::PostMessageA(target, WM_KEYUP, key, 1 | (scan << 16) | 0xC0000000);
        PumpUntilIdle();
    }
};

// --- keys

std::vector<ACCEL> AcceleratorTable()
{
    HACCEL table =
        ::LoadAcceleratorsA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDR_ACCELERATORS));
    std::vector<ACCEL> keys(static_cast<size_t>(::CopyAcceleratorTableA(table, nullptr, 0)));
    ::CopyAcceleratorTableA(table, keys.data(), static_cast<int>(keys.size()));
    return keys;
}

// Whether keys hold key: the same key, modifiers and command.
bool Holds(const std::vector<ACCEL>& keys, const ACCEL& key)
{
    return std::any_of(keys.begin(), keys.end(), [&](const ACCEL& entry) {
        return entry.key == key.key && entry.cmd == key.cmd &&
               !((entry.fVirt ^ key.fVirt) & (FVIRTKEY | FCONTROL | FSHIFT | FALT));
    });
}

// The keys no menu item shows. Each is the first of its command in the
// table, the one the Key Bindings dialog shows and replaces: the word
// motions share the numbers of Shift Right and Transpose, so their keys
// come before Ctrl+Tab and Ctrl+T.
const BYTE kCtrl = FVIRTKEY | FCONTROL, kCtrlShift = kCtrl | FSHIFT;
const std::vector<ACCEL> kUnshownKeys = {
    {kCtrl, 'A', ID_EDIT_SHIFTRIGHT},    {kCtrlShift, 'A', ID_EDIT_TRANSPOSE},
    {kCtrl, 'B', ID_EDIT_MOVEBACKSTART}, {kCtrlShift, 'B', ID_EDIT_SELBACKSTART},
    {kCtrl, 'E', ID_EDIT_MOVEFWDEND},    {kCtrlShift, 'E', ID_EDIT_SELFWDEND},
    {kCtrl, 'F', ID_EDIT_MOVEFWDSTART},  {kCtrlShift, 'F', ID_EDIT_SELFWDSTART},
    {FVIRTKEY, VK_INSERT, ID_SET_INSERT}};

// Through the program's loop, also when the child's rules gray the item.
TEST_F(ShellTest, EveryKeyOfTheTableArrivesAsItsCommandInTheActiveChild)
{
    CRecordingChild* child = MakeChild<CRecordingChild>("keys");
    ::SetFocus(child->m_hWnd);
    ASSERT_TRUE(Grayed(OpenPopup(POPUP_EDIT), ID_EDIT_CUT));
    const std::vector<ACCEL> table = AcceleratorTable();
    ASSERT_FALSE(table.empty());
    for (const ACCEL& key : table) {
        SCOPED_TRACE(testing::Message() << "key " << key.key << " held " << int(key.fVirt));
        child->ids.clear();
        PressKey(static_cast<BYTE>(key.key), key.fVirt & FCONTROL, key.fVirt & FSHIFT);
        EXPECT_EQ(std::vector<UINT>{key.cmd}, child->ids);
    }
    child->ids.clear();
    PressKey('A', false, false); // a plain A is no command
    EXPECT_TRUE(child->ids.empty());
}

// The ids and texts of the items of a menu and its popups.
void MenuItems(HMENU menu, std::vector<std::pair<UINT, std::string>>& items)
{
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
        if (HMENU popup = ::GetSubMenu(menu, i))
            MenuItems(popup, items);
        else
            items.emplace_back(::GetMenuItemID(menu, i), MenuText(menu, i));
    }
}

// The keys behind the tabs of the items and the keys no item shows make
// the table.
TEST_F(ShellTest, MenusKeysAndStringsAgreeWithTheBindingNames)
{
    std::vector<std::pair<UINT, std::string>> items;
    MenuItems(m_frame->m_menuNoFile.m_hMenu, items);
    MenuItems(m_frame->m_menuFile.m_hMenu, items);
    const std::vector<ACCEL> table = AcceleratorTable();
    std::vector<ACCEL> shown, firsts; // firsts: the first key of each command
    std::set<UINT> reached;
    for (const auto& [id, text] : items) {
        reached.insert(id);
        const size_t tab = text.find('\t');
        if (tab == std::string::npos)
            continue;
        const std::string keys = Lower(text.substr(tab + 1)),
                          name = keys.substr(keys.rfind('+') + 1);
        const int key = name == "tab"      ? VK_TAB
                        : name.size() == 1 ? toupper(name[0])
                                           : VK_F1 + std::stoi(name.substr(1)) - 1;
        shown.push_back(
            {static_cast<BYTE>(FVIRTKEY | (keys.find("ctrl+") != keys.npos ? FCONTROL : 0) |
                               (keys.find("shift+") != keys.npos ? FSHIFT : 0)),
             static_cast<WORD>(key), static_cast<WORD>(id)});
        EXPECT_TRUE(Holds(table, shown.back())) << text;
    }
    std::set<UINT> commands;
    for (const ACCEL& key : table) {
        EXPECT_TRUE(Holds(shown, key) || Holds(kUnshownKeys, key)) << key.key << " " << key.cmd;
        reached.insert(key.cmd);
        if (commands.insert(key.cmd).second)
            firsts.push_back(key);
    }
    for (const ACCEL& key : kUnshownKeys)
        EXPECT_TRUE(Holds(firsts, key)) << key.key << " " << key.cmd;
    const std::set<unsigned> silent = {
        ID_EDIT_MOVEBACKSTART, ID_EDIT_SELBACKSTART, ID_EDIT_MOVEFWDEND, ID_EDIT_SELFWDEND,
        ID_EDIT_MOVEFWDSTART,  ID_EDIT_SELFWDSTART,  ID_SET_INSERT};
    for (int i = 0; i < g_bindingNameCount; ++i) {
        const unsigned id = g_bindingNames[i].id;
        const bool laterTool = id > ID_TOOL_FIRST && id <= ID_TOOL_LAST;
        // Every command is reached from a menu or a key, except the bookmarks
        // and the user's tools, which get their items at run time.
        EXPECT_TRUE(id == ID_SEARCH_MARK || id == ID_SEARCH_GOTOMARK || laterTool ||
                    reached.count(id))
            << g_bindingNames[i].name;
        // Commands with help have their status bar text; all Tools entries
        // show the help of the first.
        char help[256];
        EXPECT_EQ(!silent.count(id) && !laterTool,
                  ::LoadStringA(::GetModuleHandleA(nullptr), id, help, sizeof help) > 0)
            << g_bindingNames[i].name;
    }
}

// --- the two menus

TEST_F(ShellTest, MenuWithoutFilesUntilTheFirstChildAndAfterTheLast)
{
    EXPECT_EQ("Kelmar Workbench", WindowText(m_frameWnd));
    EXPECT_EQ(m_frame->m_menuNoFile.m_hMenu, ::GetMenu(m_frameWnd));
    // Its popups take the rules of theirs in the other menu: no project, no build.
    EXPECT_TRUE(Grayed(OpenPopup(kNoFileProjectPopup), ID_PROJECT_BUILD));
    CPlainChild* first = MakeChild<CPlainChild>("first");
    EXPECT_EQ(m_frame->m_menuFile.m_hMenu, ::GetMenu(m_frameWnd));
    MakeChild<CPlainChild>("second")->MDIDestroy();
    PumpUntilIdle();
    EXPECT_EQ(IDR_MENU_FILE, m_frame->m_nMenu);
    EXPECT_EQ(first, m_frame->m_pActiveChild);
    theApp.recentFilesDirty = 0;
    first->MDIDestroy();
    PumpUntilIdle();
    EXPECT_EQ(m_frame->m_menuNoFile.m_hMenu, ::GetMenu(m_frameWnd));
    EXPECT_EQ(nullptr, m_frame->m_pActiveChild);
    EXPECT_TRUE(theApp.recentFilesDirty);
}

// --- states of popup items

TEST_F(ShellTest, EditorItemsFollowItsSelectionAndState)
{
    Command(ID_FILE_NEW);
    EXPECT_TRUE(::IsWindowVisible(MdiClient())); // hidden while the window opens
    CKmFileEdit* editor = static_cast<CKmFileEdit*>(m_frame->m_pActiveChild);
    ASSERT_TRUE(editor && editor->IsKindOf(RUNTIME_CLASS(CKmFileEdit)));
    const HWND edit = editor->Edit().m_hWnd;
    HMENU file = OpenPopup(POPUP_FILE);
    EXPECT_TRUE(Grayed(file, ID_FILE_SAVE)) << "an unmodified window has nothing to save";
    EXPECT_FALSE(Grayed(file, ID_FILE_PRINT));
    ::SendMessageA(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>("one two\r\nthree"));
    EXPECT_TRUE(Grayed(OpenPopup(POPUP_FILE), ID_FILE_SAVE)) << "untitled: saved through Save As";
    editor->m_flags &= ~CF_UNTITLED;
    EXPECT_FALSE(Grayed(OpenPopup(POPUP_FILE), ID_FILE_SAVE));

    // Find Next and Previous take a pattern or a selection within one line.
    const struct {
        int from, to;
        bool readOnly, cut, copy, transpose, findNext, replace, pattern;
    } rows[] = {
        {0, 0, false, true, true, false, true, false, false},
        {0, 3, false, false, false, true, false, false, false},
        {4, 12, false, false, false, true, true, false, false}, // across the line end
        {4, 12, false, false, false, true, false, false, true},
        {0, 3, true, true, false, true, false, true, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.from << "-" << row.to << " " << row.readOnly);
        g_searchRequest.m_strFind = row.pattern ? "needle" : "";
        ::SendMessageA(edit, EM_SETSEL, row.from, row.to);
        editor->m_flags =
            row.readOnly ? editor->m_flags | CF_READONLY : editor->m_flags & ~CF_READONLY;
        HMENU menu = OpenPopup(POPUP_EDIT);
        EXPECT_EQ(row.cut, Grayed(menu, ID_EDIT_CUT));
        EXPECT_EQ(row.copy, Grayed(menu, ID_EDIT_COPY));
        EXPECT_EQ(row.transpose, Grayed(menu, ID_EDIT_TRANSPOSE));
        EXPECT_FALSE(Grayed(menu, ID_EDIT_UNDO));
        menu = OpenPopup(POPUP_SEARCH);
        EXPECT_FALSE(Grayed(menu, ID_SEARCH_FIND));
        EXPECT_EQ(row.findNext, Grayed(menu, ID_SEARCH_FINDNEXT));
        EXPECT_EQ(row.findNext, Grayed(menu, ID_SEARCH_FINDPREV));
        EXPECT_EQ(!row.pattern, Grayed(menu, ID_SEARCH_REPLACENEXT));
        EXPECT_EQ(row.replace, Grayed(menu, ID_SEARCH_REPLACE));
    }
    editor->m_flags &= ~(CF_MODIFIED | CF_READONLY); // closes without a question
}

// Items of the File popup from the separator of the list to Exit.
std::vector<std::pair<UINT, std::string>> RecentItems(HMENU file)
{
    std::vector<std::pair<UINT, std::string>> items;
    for (int i = 0; i < ::GetMenuItemCount(file); ++i) {
        const UINT id = ::GetMenuItemID(file, i);
        if (id >= ID_FILE_MRU_SEP && id <= ID_FILE_MRU_LAST)
            items.emplace_back(id, MenuText(file, i));
    }
    return items;
}

TEST_F(ShellTest, RecentFilesAreRebuiltWhenDirtyAndCutByTheCurrentDirectory)
{
    // Newest first, six at most; one remembered again changes places with
    // the first rather than moving to the front, which is intended.
    for (const char* name : {"a", "b", "c", "d", "e", "f", "g", "d"})
        theApp.RememberFile(name);
    std::string order;
    for (CString& recent : theApp.recentFiles) {
        order += recent.c_str();
        recent.Empty();
    }
    EXPECT_EQ("dfegcb", order);

    HMENU file = ::GetSubMenu(::GetMenu(m_frameWnd), POPUP_FILE);
    const int count = ::GetMenuItemCount(file);
    theApp.recentFilesDirty = 1;
    OpenPopup(POPUP_FILE); // without recent files the popup keeps its items
    EXPECT_EQ(count, ::GetMenuItemCount(file));

    const std::string dir = Lower(m_dir);
    theApp.recentFiles[0] = (dir + "\\here.c").c_str();
    theApp.recentFiles[1] = (dir + "\\sub\\deeper.h").c_str();
    theApp.recentFiles[2] = (dir + "2\\far.c").c_str(); // a sibling: kept whole
    theApp.recentFilesDirty = 1;
    OpenPopup(POPUP_FILE);
    EXPECT_FALSE(theApp.recentFilesDirty);
    const std::vector<std::pair<UINT, std::string>> three = {
        {ID_FILE_MRU_FIRST, "&1 here.c"},
        {ID_FILE_MRU_FIRST + 1, "&2 sub\\deeper.h"},
        {ID_FILE_MRU_FIRST + 2, "&3 " + dir + "2\\far.c"},
        {ID_FILE_MRU_SEP, ""}};
    EXPECT_EQ(three, RecentItems(file));
    EXPECT_EQ(static_cast<UINT>(ID_FILE_EXIT), ::GetMenuItemID(file, count + 3));
    theApp.recentFiles[1].Empty(); // not dirty: left alone; then rebuilt, not added to
    OpenPopup(POPUP_FILE);
    EXPECT_EQ(three, RecentItems(file));
    theApp.recentFilesDirty = 1;
    OpenPopup(POPUP_FILE);
    const std::vector<std::pair<UINT, std::string>> one = {{ID_FILE_MRU_FIRST, "&1 here.c"},
                                                           {ID_FILE_MRU_SEP, ""}};
    EXPECT_EQ(one, RecentItems(file));

    // The menu with a file has them too, after the child's rules.
    MakeChild<CPlainChild>("plain");
    EXPECT_TRUE(theApp.recentFilesDirty);
    file = OpenPopup(POPUP_FILE);
    EXPECT_EQ(one, RecentItems(file));
    EXPECT_TRUE(Grayed(file, ID_FILE_SAVE));
}

TEST_F(ShellTest, APlainWindowGraysWhatItCantDoAndKeepsTheRest)
{
    MakeChild<CPlainChild>("plain");
    HMENU menu = ::GetMenu(m_frameWnd);
    HMENU edit = ::GetSubMenu(menu, POPUP_EDIT), help = ::GetSubMenu(menu, POPUP_HELP);
    ::EnableMenuItem(edit, ID_EDIT_COPY, MF_GRAYED);
    ::EnableMenuItem(edit, ID_EDIT_COPYAPPEND, MF_GRAYED);
    ::EnableMenuItem(help, ID_HELP_CONTEXT, MF_GRAYED);
    ::CheckMenuItem(::GetSubMenu(menu, POPUP_SETTINGS), ID_SET_ALIGN, MF_CHECKED);
    const struct {
        int popup;
        UINT id;
        const char* state; // G grayed, C checked
    } rows[] = {
        // clang-format off
        {POPUP_EDIT, ID_EDIT_COPY, ""}, {POPUP_EDIT, ID_EDIT_COPYAPPEND, "G"},
        {POPUP_SEARCH, ID_SEARCH_GOTOLINE, "G"}, {POPUP_SETTINGS, ID_SET_ALIGN, "G"},
        {POPUP_SETTINGS, ID_SET_READONLY, "GC"}, {POPUP_SETTINGS, ID_SET_SHOWHSCROLL, "C"},
        {POPUP_SETTINGS, ID_SET_SHOWVSCROLL, ""}, {POPUP_PROJECT, ID_PROJECT_BUILD, "G"},
        {POPUP_PROJECT, ID_PROJECT_SELECT, ""}, {POPUP_HELP, ID_HELP_FILESTATS, "G"},
        {POPUP_HELP, ID_HELP_CONTEXT, ""},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.id);
        HMENU popup = OpenPopup(row.popup);
        EXPECT_EQ(strchr(row.state, 'G') != nullptr, Grayed(popup, row.id));
        EXPECT_EQ(strchr(row.state, 'C') != nullptr, Checked(popup, row.id));
    }
    // The base class's Settings commands turn the scroll bar checks.
    Command(ID_SET_SHOWVSCROLL);
    Command(ID_SET_SHOWHSCROLL);
    HMENU settings = OpenPopup(POPUP_SETTINGS);
    EXPECT_FALSE(Checked(settings, ID_SET_SHOWHSCROLL));
    EXPECT_TRUE(Checked(settings, ID_SET_SHOWVSCROLL));
}

// Behind a maximised child's system menu the popups stand one place
// further, the grayed Project popup of a start with -e too; system menus and
// the popups of an iconic frame are left alone.
TEST_F(ShellTest, PositionsAreCorrectedForAMaximisedChildAndTheContextMenu)
{
    theApp.flags |= KF_NOPROJECT;
    ASSERT_TRUE(MakeChild<CPlainChild>("maximised", true)->IsZoomed());
    HMENU menu = ::GetMenu(m_frameWnd), file = ::GetSubMenu(menu, 1);
    ASSERT_EQ("&File", MenuText(menu, 1));
    EXPECT_TRUE(PositionGrayed(menu, POPUP_PROJECT + 1));
    EXPECT_FALSE(PositionGrayed(menu, POPUP_PROJECT));
    theApp.flags &= ~KF_NOPROJECT;
    ::SendMessageA(m_frameWnd, WM_KM_SETMENU, IDR_MENU_FILE, 0);
    EXPECT_FALSE(PositionGrayed(menu, POPUP_PROJECT + 1));

    ::SendMessageA(m_frameWnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(file), MAKELPARAM(1, 1));
    EXPECT_FALSE(Grayed(file, ID_FILE_SAVE));
    ::ShowWindow(m_frameWnd, SW_MINIMIZE);
    PumpUntilIdle();
    OpenPopupAt(1);
    EXPECT_FALSE(Grayed(file, ID_FILE_SAVE));
    ::ShowWindow(m_frameWnd, SW_RESTORE);
    PumpUntilIdle();
    EXPECT_TRUE(Grayed(OpenPopupAt(1), ID_FILE_SAVE));
    EXPECT_TRUE(Grayed(OpenPopupAt(5), ID_PROJECT_COMPILE));

    ASSERT_TRUE(m_frame->m_menuPopup.LoadMenu(IDR_MENU_POPUP));
    HMENU popup = m_frame->m_menuPopup.GetSubMenu(0);
    ::EnableMenuItem(popup, ID_EDIT_COPY, MF_GRAYED);
    ::SendMessageA(m_frameWnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), 0);
    EXPECT_FALSE(Grayed(popup, ID_EDIT_COPY));
    EXPECT_TRUE(Grayed(popup, ID_EDIT_CUT));
}

// --- routing

// A command goes to the active child, then the frame, then the subsystems;
// one that nobody handles does nothing.
TEST_F(ShellTest, AHandlerInTheChildShadowsTheFramesAndACommandNobodyHandlesDoesNothing)
{
    CPlainChild* first = MakeChild<CPlainChild>("first");
    CShadowChild* child = MakeChild<CShadowChild>("shadow");
    theApp.arrange = ARRANGE_MAXIMISED;
    Command(ID_WINDOW_CASCADE);
    EXPECT_EQ(1, child->cascades);
    for (UINT id : {UINT{ID_EDIT_REDO}, 0x1234u}) {
        SCOPED_TRACE(id);
        EXPECT_EQ(0, ::SendMessageA(m_frameWnd, WM_COMMAND, id, 0));
        PumpUntilIdle();
        EXPECT_EQ(2u, Children().size());
        EXPECT_EQ(child, m_frame->m_pActiveChild);
        EXPECT_EQ(IDR_MENU_FILE, m_frame->m_nMenu);
    }
    EXPECT_EQ(ARRANGE_MAXIMISED, theApp.arrange); // the frame's Cascade didn't run
    Command(ID_WINDOW_TILEHORZ);
    EXPECT_EQ(ARRANGE_TILEDOWN, theApp.arrange);
    Command(ID_HELP_CONTEXT); // help asks the child back
    EXPECT_EQ(1, child->helpRequests);
    Command(KM_FIRST_MDICHILD); // the window list is the system's
    EXPECT_EQ(first, m_frame->m_pActiveChild);
}

// --- arranging and closing all

TEST_F(ShellTest, ArrangeCommandsSetTheArrangementAndPlaceTheWindows)
{
    HWND first = MakeChild<CPlainChild>("first")->m_hWnd;
    CPlainChild* second = MakeChild<CPlainChild>("second");
    const struct {
        UINT id;
        int arrange;
        bool sameTop, sameLeft;
    } rows[] = {
        {ID_WINDOW_TILEVERT, ARRANGE_TILEACROSS, true, false}, // side by side
        {ID_WINDOW_TILEHORZ, ARRANGE_TILEDOWN, false, true},   // one above the other
        {ID_WINDOW_CASCADE, ARRANGE_CASCADE, false, false},
        {ID_WINDOW_ARRANGE, ARRANGE_CASCADE, false, false}, // icons only: the value stays
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.id);
        Command(row.id);
        EXPECT_EQ(row.arrange, theApp.arrange);
        const RECT a = Place(first, MdiClient()), b = Place(second->m_hWnd, MdiClient());
        EXPECT_EQ(row.sameTop, a.top == b.top);
        EXPECT_EQ(row.sameLeft, a.left == b.left);
    }
    ::SendMessageA(second->m_hWnd, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    PumpUntilIdle();
    EXPECT_EQ(ARRANGE_MAXIMISED, theApp.arrange);
    ::SendMessageA(second->m_hWnd, WM_SYSCOMMAND, SC_RESTORE, 0);
    PumpUntilIdle();
    EXPECT_FALSE(second->IsZoomed());
    EXPECT_EQ(ARRANGE_CASCADE, theApp.arrange);
    theApp.arrange = ARRANGE_TILEACROSS;
    ::SendMessageA(second->m_hWnd, WM_SYSCOMMAND, SC_RESTORE, 0); // not maximised
    EXPECT_EQ(ARRANGE_TILEACROSS, theApp.arrange);
}

TEST_F(ShellTest, FileCloseClosesTheActiveChildLaterAndCloseAllWithOneRefusalClosesNone)
{
    CShadowChild* first = MakeChild<CShadowChild>("first");
    MakeChild<CPlainChild>("second");
    CPlainChild* third = MakeChild<CPlainChild>("third");
    HWND fourth = MakeChild<CPlainChild>("fourth")->m_hWnd;
    ::SendMessageA(m_frameWnd, WM_COMMAND, ID_FILE_CLOSE, 0);
    EXPECT_TRUE(::IsWindow(fourth)); // posted, not sent
    PumpUntilIdle();
    EXPECT_FALSE(::IsWindow(fourth));
    EXPECT_EQ(third, m_frame->m_pActiveChild);
    first->refuse = true; // asked last in window order: the others agreed before
    Command(ID_WINDOW_CLOSEALL);
    EXPECT_EQ(3u, Children().size());
    EXPECT_EQ(IDR_MENU_FILE, m_frame->m_nMenu);
    first->refuse = false;
    Command(ID_WINDOW_CLOSEALL);
    EXPECT_TRUE(Children().empty());
    EXPECT_TRUE(::IsWindowVisible(MdiClient())); // hidden while they go
}

// --- the status bar of the frame

TEST_F(ShellTest, MenuSelectShowsTheHelpOfTheItem)
{
    HMENU menu = ::GetMenu(m_frameWnd);
    const struct {
        UINT item, flags;
        const char* shown;
    } rows[] = {
        {ID_FILE_NEW, MF_STRING, "Creates a new untitled file"},
        {ID_FILE_MRU_LAST, MF_STRING, "Opens this file"},
        {ID_TOOL_LAST, MF_STRING, "Starts this application"},
        {ID_TOOL_RUN, MF_STRING, "Runs an application specified via a dialog"}, // just below
        {KM_FIRST_MDICHILD + 3, MF_STRING, "Activates this window"},
        {0, MF_POPUP | MF_SYSMENU, "Move, size or close window"},
        {1, MF_POPUP, ""},
        {0, MF_SEPARATOR, ""},
        {0, 0xFFFF, ""}, // the menu closed
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.item);
        ::SendMessageA(m_frameWnd, WM_MENUSELECT, MAKEWPARAM(ID_FILE_NEW, MF_STRING),
                       reinterpret_cast<LPARAM>(menu));
        ::SendMessageA(m_frameWnd, WM_MENUSELECT, MAKEWPARAM(row.item, row.flags),
                       reinterpret_cast<LPARAM>(row.flags == 0xFFFF ? nullptr : menu));
        EXPECT_EQ(row.shown, BarText());
    }
    // A child passes its own on, so its system menu gets help too.
    CPlainChild* child = MakeChild<CPlainChild>("plain");
    ::SendMessageA(child->m_hWnd, WM_MENUSELECT, MAKEWPARAM(SC_MAXIMIZE, MF_SYSMENU),
                   reinterpret_cast<LPARAM>(::GetSystemMenu(child->m_hWnd, FALSE)));
    EXPECT_EQ("Maximizes the window to the size of the screen", BarText());
}

TEST_F(ShellTest, PanesFollowShowPosAndTheActiveChildsFlags)
{
    CPlainChild* first = MakeChild<CPlainChild>("first");
    first->m_flags |= CF_READONLY | CF_MODIFIED | CF_BLOCKINDENT | CF_OVERTYPE;
    CPlainChild* second = MakeChild<CPlainChild>("second");
    EXPECT_EQ("Ins", PaneText(theApp.paneInsert));
    EXPECT_EQ("Edit", PaneText(theApp.paneEdit));
    EXPECT_EQ("Clean", PaneText(theApp.paneClean));
    m_frame->MDIActivate(first->m_hWnd);
    PumpUntilIdle();
    EXPECT_EQ("Ovr", PaneText(theApp.paneInsert));
    EXPECT_EQ("Indent", PaneText(theApp.paneAlign));
    EXPECT_EQ("Read", PaneText(theApp.paneEdit));
    EXPECT_EQ("Modified", PaneText(theApp.paneClean));
    first->m_flags &= ~CF_MODIFIED;

    ::ShowWindow(second->m_hWnd, SW_MINIMIZE);
    PumpUntilIdle();
    EXPECT_EQ("-1 : 0", PaneText(theApp.paneLineCol));
    ::PostMessageA(m_frameWnd, WM_KM_SHOWPOS, 1, 3);
    PumpUntilIdle();
    EXPECT_EQ("3 : 1", PaneText(theApp.paneLineCol));
}

// The clock follows time changes unless hidden. A minimised frame keeps the
// layout; the bar takes its height from the client, and without it the
// client fills the frame.
TEST_F(ShellTest, TheClockAndTheLayoutFollowTheBarWhileThereIsOne)
{
    ::SendMessageA(m_frameWnd, WM_TIMECHANGE, 0, 0);
    EXPECT_EQ(1, CKmStatusBar::ClockCount());
    theApp.flags |= KF_NOCLOCK;
    theApp.statusBar.HideClock();
    ::SendMessageA(m_frameWnd, WM_TIMECHANGE, 0, 0);
    EXPECT_EQ(0, CKmStatusBar::ClockCount());
    for (const bool bar : {true, false}) {
        if (!bar) {
            theApp.statusBar.Destroy();
            theApp.flags |= KF_NOSTATUSBAR;
        }
        ::MoveWindow(m_frameWnd, 10, 10, bar ? 500 : 520, 400, TRUE);
        PumpUntilIdle();
        const RECT place = Place(MdiClient(), m_frameWnd);
        ::SendMessageA(m_frameWnd, WM_SIZE, SIZE_MINIMIZED, MAKELPARAM(0, 0));
        RECT client;
        ::GetClientRect(m_frameWnd, &client);
        const RECT expected = {0, theApp.toolBar.GetHeight(), client.right,
                               client.bottom - (bar ? CKmStatusBar::Height() : 0)},
                   now = Place(MdiClient(), m_frameWnd);
        EXPECT_TRUE(::EqualRect(&expected, &place)) << bar;
        EXPECT_TRUE(::EqualRect(&place, &now)) << bar;
    }
}

} // namespace
