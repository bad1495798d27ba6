// The application shell in the real frame under the program's own message
// loop: keys to commands, the two menus, the states of popup items, routing
// between child and frame, arranging and closing, and what the status bar
// shows for menus and positions.
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "app/Settings.h"
#include "edit/KmFileEdit.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"
#include "ui/StatusPanes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

using kmtest::Lower;

namespace
{

// Runs theApp's loop, PreTranslateMessage included, until nothing has come
// for a little while.
void PumpUntilIdle()
{
    int quiet = 0;
    while (quiet < 3) {
        MSG msg;
        bool any = false;
        while (::PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE)) {
            any = true;
            if (msg.message == WM_QUIT)
                ::PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE); // the frame's end
            else
                theApp.PumpMessage();
        }
        quiet = any ? 0 : quiet + 1;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
}

void PumpFor(DWORD milliseconds)
{
    const DWORD start = ::GetTickCount();
    while (::GetTickCount() - start < milliseconds)
        PumpUntilIdle();
}

// Answers every message box that comes up, No where it can, else Cancel,
// else OK, and counts them: the tests below expect none.
class BoxCounter
{
  public:
    BoxCounter()
    {
        s_counter = this;
        m_hook = ::SetWindowsHookExA(WH_CBT, Hook, nullptr, ::GetCurrentThreadId());
    }
    ~BoxCounter()
    {
        ::UnhookWindowsHookEx(m_hook);
        s_counter = nullptr;
    }
    BoxCounter(const BoxCounter&) = delete;
    BoxCounter& operator=(const BoxCounter&) = delete;

    int boxes = 0;

  private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam)
    {
        HWND wnd = reinterpret_cast<HWND>(wParam);
        char name[16] = "";
        if (code == HCBT_ACTIVATE && s_counter && wnd != s_counter->m_last &&
            ::GetClassNameA(wnd, name, sizeof name) && strcmp(name, "#32770") == 0) {
            s_counter->m_last = wnd;
            ++s_counter->boxes;
            for (int id : {IDNO, IDCANCEL, IDOK}) {
                if (HWND button = ::GetDlgItem(wnd, id)) {
                    ::PostMessageA(wnd, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                                   reinterpret_cast<LPARAM>(button));
                    break;
                }
            }
        }
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static BoxCounter* s_counter;
    HHOOK m_hook = nullptr;
    HWND m_last = nullptr;
};

BoxCounter* BoxCounter::s_counter = nullptr;

const char* ChildClass()
{
    return KmRegisterWndClass(CS_HREDRAW | CS_VREDRAW, ::LoadCursorA(nullptr, IDC_ARROW),
                              reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
}

// A window that can't do much: the base class's rules as they stand.
class CPlainChild : public CKmChild
{
  public:
    CPlainChild() : CKmChild(CF_HSCROLL) {}
};

// Takes every command and keeps the ids in the order they came.
// Also takes a registered message, and has an entry for one that was never
// registered.
const UINT g_testMessage = ::RegisterWindowMessageA("KmShellTestMessage");
const UINT g_neverRegistered = 0;

class CRecordingChild : public CKmChild
{
  public:
    CRecordingChild() : CKmChild(0) {}
    std::vector<UINT> ids;
    std::vector<LPARAM> registered;

  protected:
    void OnAnyCommand(UINT id) { ids.push_back(id); }
    LRESULT OnRegistered(WPARAM wParam, LPARAM lParam)
    {
        registered.push_back(static_cast<LPARAM>(wParam));
        registered.push_back(lParam);
        return 42;
    }
    LRESULT OnNeverRegistered(WPARAM, LPARAM)
    {
        registered.push_back(-1);
        return 0;
    }
    DECLARE_MESSAGE_MAP()
};

// clang-format off
BEGIN_MESSAGE_MAP(CRecordingChild, CKmChild)
    ON_REGISTERED_MESSAGE(&g_neverRegistered, OnNeverRegistered)
    ON_COMMAND_RANGE(1, 0xEFFF, OnAnyCommand)
    ON_REGISTERED_MESSAGE(&g_testMessage, OnRegistered)
END_MESSAGE_MAP()
// clang-format on

// Handles one command that the frame handles too; may refuse to close.
class CShadowChild : public CKmChild
{
  public:
    CShadowChild() : CKmChild(0) {}
    int cascades = 0;
    bool refuse = false;

  protected:
    void OnCascade() { ++cascades; }
    LRESULT OnQueryEndSession(WPARAM, LPARAM) { return refuse ? 0 : 1; }
    DECLARE_MESSAGE_MAP()
};

// clang-format off
BEGIN_MESSAGE_MAP(CShadowChild, CKmChild)
    ON_COMMAND(ID_WINDOW_CASCADE, OnCascade)
    ON_MESSAGE(WM_QUERYENDSESSION, OnQueryEndSession)
END_MESSAGE_MAP()
// clang-format on

std::string MenuText(HMENU menu, UINT item, UINT by)
{
    char text[MAX_PATH * 2] = "";
    ::GetMenuStringA(menu, item, text, sizeof text, by);
    return text;
}

bool Grayed(HMENU menu, UINT id)
{
    UINT state = ::GetMenuState(menu, id, MF_BYCOMMAND);
    EXPECT_NE(static_cast<UINT>(-1), state) << "no item " << id;
    return state != static_cast<UINT>(-1) && (state & MF_GRAYED) != 0;
}

bool Checked(HMENU menu, UINT id)
{
    UINT state = ::GetMenuState(menu, id, MF_BYCOMMAND);
    EXPECT_NE(static_cast<UINT>(-1), state) << "no item " << id;
    return state != static_cast<UINT>(-1) && (state & MF_CHECKED) != 0;
}

bool PositionGrayed(HMENU menu, int position)
{
    return (::GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION) & MF_GRAYED) != 0;
}

std::string WindowText(HWND wnd)
{
    char text[256] = "";
    ::GetWindowTextA(wnd, text, sizeof text);
    return text;
}

std::string Upper(std::string text)
{
    for (char& ch : text)
        if (ch >= 'a' && ch <= 'z')
            ch = static_cast<char>(ch - 'a' + 'A');
    return text;
}

// A fresh frame per test, made as the program makes it, and closed again
// at the end with every child gone.
class ShellTest : public ::testing::Test
{
  protected:
    void SetUp() override
    {
        char dir[MAX_PATH];
        ::GetCurrentDirectoryA(MAX_PATH, dir);
        m_savedDir = dir;
        theApp.SetInstance(::GetModuleHandleA(nullptr), nullptr, "", SW_SHOWNORMAL);
        theApp.SetInitialValues();
        theApp.flags |= m_extraFlags;
        theApp.searchPattern.Empty();
        theApp.m_strProjectDir.Empty();
        theApp.recentFilesDirty = 0;
        if (!theApp.screenFont.m_hFont) {
            LOGFONTA logFont;
            ASSERT_TRUE(
                ::GetObjectA(::GetStockObject(SYSTEM_FIXED_FONT), sizeof logFont, &logFont));
            theApp.screenFont.CreateFontIndirect(&logFont);
        }
        CString title;
        title.LoadString(IDS_TITLE);
        m_frame = NewFrame();
        ASSERT_TRUE(m_frame->Create(title, 0, kRectDefault));
        theApp.m_pMainWnd = m_frame;
        m_frameWnd = m_frame->m_hWnd;
        ::ShowWindow(m_frameWnd, SW_SHOWNORMAL);
        ::UpdateWindow(m_frameWnd);
        PumpUntilIdle();
    }

    void TearDown() override
    {
        for (HWND shadow : m_shadows)
            if (CWnd* wnd = CWnd::FromHandle(shadow))
                static_cast<CShadowChild*>(wnd)->refuse = false;
        if (::IsWindow(m_frameWnd)) {
            ::SendMessageA(m_frameWnd, WM_CLOSE, 0, 0);
            if (::IsWindow(m_frameWnd))
                ::DestroyWindow(m_frameWnd);
        }
        PumpUntilIdle();
        EXPECT_FALSE(::IsWindow(m_frameWnd));
        EXPECT_EQ(0, m_boxes.boxes);
        theApp.m_pMainWnd = nullptr;
        theApp.flags = KF_DEFAULT;
        theApp.statusBar.Destroy();
        for (CString& recent : theApp.recentFiles)
            recent.Empty();
        ::SetCurrentDirectoryA(m_savedDir.c_str());
    }

    virtual CKmFrame* NewFrame() { return new CKmFrame; }

    template <class T> T* MakeChild(const char* title, bool maximized = false)
    {
        T* child = new T;
        DWORD style = WS_VISIBLE | (maximized ? WS_MAXIMIZE : 0);
        if (!child->Create(ChildClass(), title, style, kRectDefault, m_frame)) {
            ADD_FAILURE() << "no child " << title;
            if (!child->m_hWnd)
                delete child;
            return nullptr;
        }
        PumpUntilIdle();
        return child;
    }

    CShadowChild* MakeShadow(const char* title)
    {
        CShadowChild* child = MakeChild<CShadowChild>(title);
        if (child)
            m_shadows.push_back(child->m_hWnd);
        return child;
    }

    std::vector<HWND> Children() const
    {
        std::vector<HWND> children;
        for (HWND wnd = ::GetWindow(m_frame->m_hWndMDIClient, GW_CHILD); wnd;
             wnd = ::GetWindow(wnd, GW_HWNDNEXT))
            if (!::GetWindow(wnd, GW_OWNER))
                children.push_back(wnd);
        return children;
    }

    void Command(UINT id)
    {
        ::SendMessageA(m_frameWnd, WM_COMMAND, id, 0);
        PumpUntilIdle();
    }

    HMENU ShownMenu() const { return ::GetMenu(m_frameWnd); }

    // The popup at a position of the menu on show, after the frame has set
    // its states as if it were opening. The position is that of the menu
    // without a maximised child's system menu in front.
    HMENU OpenPopup(int position)
    {
        BOOL maximized = FALSE;
        m_frame->MDIGetActive(&maximized);
        return OpenPopupAt(position + (maximized ? 1 : 0));
    }

    HMENU OpenPopupAt(int position)
    {
        HMENU popup = ::GetSubMenu(ShownMenu(), position);
        EXPECT_NE(nullptr, popup) << "no popup at " << position;
        ::SendMessageA(m_frameWnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup),
                       MAKELPARAM(position, 0));
        return popup;
    }

    std::string BarText() const
    {
        return theApp.statusBar.m_bTextShown ? WindowText(theApp.statusBar.GetHwnd()) : "";
    }

    std::string PaneText(int index) const
    {
        CStatusPane* pane = theApp.statusBar.GetPane(index);
        return pane ? pane->Text() : "<no pane>";
    }

    // A key pressed and let go, with the modifiers held as the message loop
    // sees them, posted to the window with the focus.
    void PressKey(BYTE key, bool control, bool shift)
    {
        BYTE state[256] = {};
        ::GetKeyboardState(state);
        state[VK_CONTROL] = control ? 0x80 : 0;
        state[VK_LCONTROL] = state[VK_CONTROL];
        state[VK_SHIFT] = shift ? 0x80 : 0;
        state[VK_LSHIFT] = state[VK_SHIFT];
        state[VK_MENU] = state[VK_LMENU] = 0;
        state[key] = 0x80;
        ::SetKeyboardState(state);
        HWND target = ::GetFocus();
        if (!target)
            target = m_frameWnd;
        UINT scan = ::MapVirtualKeyA(key, 0);
        ::PostMessageA(target, WM_KEYDOWN, key, 1 | (scan << 16));
        PumpUntilIdle();
        state[key] = 0;
        ::SetKeyboardState(state);
        ::PostMessageA(target, WM_KEYUP, key, 1 | (scan << 16) | 0xC0000000);
        PumpUntilIdle();
        state[VK_CONTROL] = state[VK_LCONTROL] = state[VK_SHIFT] = state[VK_LSHIFT] = 0;
        ::SetKeyboardState(state);
    }

    BoxCounter m_boxes;
    unsigned long m_extraFlags = 0;
    std::string m_savedDir;
    CKmFrame* m_frame = nullptr;
    HWND m_frameWnd = nullptr;
    std::vector<HWND> m_shadows; // may refuse to close until the end
};

// --- keys

struct Accel {
    BYTE key;
    bool control;
    bool shift;
    UINT id;
};

// The program's table of keys, entry by entry.
const Accel kAccels[] = {
    {'A', true, false, ID_EDIT_SHIFTRIGHT},
    {'A', true, true, ID_EDIT_TRANSPOSE},
    {'B', true, false, ID_EDIT_MOVEBACKSTART},
    {'B', true, true, ID_EDIT_SELBACKSTART},
    {'C', true, false, ID_EDIT_COPY},
    {'C', true, true, ID_EDIT_COPYAPPEND},
    {'E', true, false, ID_EDIT_MOVEFWDEND},
    {'E', true, true, ID_EDIT_SELFWDEND},
    {'F', true, false, ID_EDIT_MOVEFWDSTART},
    {'F', true, true, ID_EDIT_SELFWDSTART},
    {'G', true, false, ID_SEARCH_GOTOLINE},
    {'K', true, false, ID_EDIT_TOGGLECASE},
    {'L', true, false, ID_EDIT_LOWERCASE},
    {'N', true, false, ID_FILE_NEW},
    {'O', true, false, ID_FILE_OPEN},
    {'S', true, false, ID_FILE_SAVE},
    {'S', true, true, ID_FILE_SAVEALL},
    {'T', true, false, ID_EDIT_TRANSPOSE},
    {'U', true, false, ID_EDIT_UPPERCASE},
    {'U', true, true, ID_EDIT_CAPITALIZE},
    {'V', true, false, ID_EDIT_PASTE},
    {'X', true, false, ID_EDIT_CUT},
    {'X', true, true, ID_EDIT_CUTAPPEND},
    {'Z', true, false, ID_EDIT_UNDO},
    {VK_F1, false, false, ID_HELP_CONTEXT},
    {VK_F1, true, false, ID_HELP_ENVIRONMENT},
    {VK_F1, false, true, ID_HELP_SDK},
    {VK_F1, true, true, ID_HELP_FILESTATS},
    {VK_F2, false, false, ID_PROJECT_BUILD},
    {VK_F2, true, false, ID_PROJECT_BUILDTARGET},
    {VK_F4, false, false, ID_FILE_MANAGE},
    {VK_F5, false, false, ID_SEARCH_FIND},
    {VK_F5, true, false, ID_SEARCH_FINDNEXT},
    {VK_F5, true, true, ID_SEARCH_GREP},
    {VK_F5, false, true, ID_SEARCH_FINDPREV},
    {VK_F8, false, false, ID_SEARCH_REPLACE},
    {VK_F8, true, false, ID_SEARCH_REPLACENEXT},
    {VK_F9, false, false, ID_SEARCH_MATCHBRACE},
    {VK_F11, false, false, ID_WINDOW_SELECTOR},
    {VK_F12, false, false, ID_FILE_SAVEAS},
    {VK_F12, false, true, ID_FILE_PRINT},
    {VK_INSERT, false, false, ID_SET_INSERT},
    {VK_TAB, true, false, ID_EDIT_SHIFTRIGHT},
    {VK_TAB, false, true, ID_EDIT_SHIFTLEFT},
};

TEST_F(ShellTest, TheKeyTableHoldsTheseEntriesInThisOrder)
{
    HACCEL table =
        ::LoadAcceleratorsA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDR_ACCELERATORS));
    ASSERT_NE(nullptr, table);
    ACCEL entries[64];
    const int count = ::CopyAcceleratorTableA(table, entries, 64);
    ASSERT_EQ(44, count);
    ASSERT_EQ(sizeof kAccels / sizeof kAccels[0], static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) {
        SCOPED_TRACE(i);
        const Accel& accel = kAccels[i];
        EXPECT_EQ(accel.key, entries[i].key);
        BYTE modifiers = FVIRTKEY | (accel.control ? FCONTROL : 0) | (accel.shift ? FSHIFT : 0);
        EXPECT_EQ(modifiers, entries[i].fVirt & ~0x80);
        EXPECT_EQ(accel.id, entries[i].cmd);
    }
    ::DestroyAcceleratorTable(table);
}

TEST_F(ShellTest, EveryKeyOfTheTableArrivesAsItsCommandInTheActiveChild)
{
    CRecordingChild* child = MakeChild<CRecordingChild>("keys");
    ASSERT_NE(nullptr, child);
    ASSERT_EQ(child, m_frame->m_pActiveChild);
    ::SetFocus(child->m_hWnd);
    for (const Accel& accel : kAccels) {
        SCOPED_TRACE(testing::Message() << "key " << int(accel.key) << " ctrl " << accel.control
                                        << " shift " << accel.shift);
        child->ids.clear();
        PressKey(accel.key, accel.control, accel.shift);
        EXPECT_EQ(std::vector<UINT>{accel.id}, child->ids);
    }
}

TEST_F(ShellTest, ControlAShiftsRightAndControlShiftATransposes)
{
    CRecordingChild* child = MakeChild<CRecordingChild>("keys");
    ASSERT_NE(nullptr, child);
    ::SetFocus(child->m_hWnd);
    PressKey('A', true, false);
    PressKey('A', true, true);
    PressKey('A', false, false); // a plain A is no command
    EXPECT_EQ((std::vector<UINT>{ID_EDIT_SHIFTRIGHT, ID_EDIT_TRANSPOSE}), child->ids);
}

// The keys of commands whose items the child's rules gray still reach their
// handlers: here the frame's Ctrl+N behind a window that can't do much, and
// Ctrl+X, grayed for it, in a window that takes every command.
TEST_F(ShellTest, KeysReachTheFrameAndGrayedCommandsStillArrive)
{
    CPlainChild* plain = MakeChild<CPlainChild>("plain");
    ASSERT_NE(nullptr, plain);
    ::SetFocus(plain->m_hWnd);
    PressKey('N', true, false);
    ASSERT_EQ(2u, Children().size());
    CKmChild* created = m_frame->m_pActiveChild;
    ASSERT_NE(nullptr, created);
    EXPECT_TRUE(created->IsKindOf(RUNTIME_CLASS(CKmFileEdit)));

    CRecordingChild* recorder = MakeChild<CRecordingChild>("recorder");
    ASSERT_NE(nullptr, recorder);
    ::SetFocus(recorder->m_hWnd);
    HMENU edit = OpenPopup(1);
    ASSERT_TRUE(Grayed(edit, ID_EDIT_CUT));
    PressKey('X', true, false);
    EXPECT_EQ(std::vector<UINT>{ID_EDIT_CUT}, recorder->ids);
}

// --- the two menus

TEST_F(ShellTest, MenuThreeWithoutChildrenFourWithThemThreeAfterTheLast)
{
    EXPECT_EQ(3, m_frame->m_nMenu);
    EXPECT_EQ(m_frame->m_menuNoFile.m_hMenu, ShownMenu());
    EXPECT_EQ(5, ::GetMenuItemCount(ShownMenu()));
    EXPECT_EQ("&Global", MenuText(ShownMenu(), 1, MF_BYPOSITION));

    CPlainChild* first = MakeChild<CPlainChild>("first");
    ASSERT_NE(nullptr, first);
    EXPECT_EQ(4, m_frame->m_nMenu);
    EXPECT_EQ(m_frame->m_menuFile.m_hMenu, ShownMenu());
    EXPECT_EQ("&Window", MenuText(ShownMenu(), 6, MF_BYPOSITION));
    CPlainChild* second = MakeChild<CPlainChild>("second");
    ASSERT_NE(nullptr, second);
    EXPECT_EQ(4, m_frame->m_nMenu);
    EXPECT_EQ(second, m_frame->m_pActiveChild);

    second->MDIDestroy();
    PumpUntilIdle();
    EXPECT_EQ(4, m_frame->m_nMenu);
    EXPECT_EQ(first, m_frame->m_pActiveChild);
    first->MDIDestroy();
    PumpUntilIdle();
    EXPECT_EQ(3, m_frame->m_nMenu);
    EXPECT_EQ(m_frame->m_menuNoFile.m_hMenu, ShownMenu());
    EXPECT_EQ(nullptr, m_frame->m_pActiveChild);
    EXPECT_TRUE(theApp.recentFilesDirty);
}

class ShellNoProjectTest : public ShellTest
{
  protected:
    ShellNoProjectTest() { m_extraFlags = KF_NOPROJECT; }
};

TEST_F(ShellNoProjectTest, ProjectPopupIsGrayedAlsoBehindAMaximisedChild)
{
    EXPECT_EQ("&Project", MenuText(ShownMenu(), 2, MF_BYPOSITION));
    EXPECT_TRUE(PositionGrayed(ShownMenu(), 2));
    EXPECT_FALSE(PositionGrayed(ShownMenu(), 1));

    CPlainChild* child = MakeChild<CPlainChild>("maximised", true);
    ASSERT_NE(nullptr, child);
    ASSERT_TRUE(child->IsZoomed());
    ASSERT_EQ(4, m_frame->m_nMenu);
    HMENU menu = ShownMenu();
    EXPECT_EQ("&Project", MenuText(menu, 5, MF_BYPOSITION));
    EXPECT_TRUE(PositionGrayed(menu, 5));
    EXPECT_FALSE(PositionGrayed(menu, 4));
    EXPECT_FALSE(PositionGrayed(menu, 6));

    theApp.flags &= ~KF_NOPROJECT;
    ::SendMessageA(m_frameWnd, WM_KM_SETMENU, 4, 0);
    EXPECT_FALSE(PositionGrayed(ShownMenu(), 5));
}

TEST_F(ShellTest, ProjectPopupIsEnabledWithoutTheFlag)
{
    EXPECT_FALSE(PositionGrayed(ShownMenu(), 2));
    theApp.flags |= KF_NOPROJECT;
    ::SendMessageA(m_frameWnd, WM_KM_SETMENU, 3, 0);
    EXPECT_TRUE(PositionGrayed(ShownMenu(), 2));
    EXPECT_EQ(m_frame->m_menuNoFile.m_hMenu, ShownMenu());
}

// --- states of popup items

TEST_F(ShellTest, SearchItemsFollowThePattern)
{
    // Without a child the Global popup runs the Search rules and nothing
    // breaks, since none of their items is there.
    HMENU global = OpenPopup(1);
    EXPECT_EQ(static_cast<UINT>(-1), ::GetMenuState(global, ID_SEARCH_FINDNEXT, MF_BYCOMMAND));
    EXPECT_FALSE(Grayed(global, ID_SEARCH_GREP));

    CPlainChild* child = MakeChild<CPlainChild>("plain");
    ASSERT_NE(nullptr, child);
    HMENU search = OpenPopup(2);
    EXPECT_FALSE(Grayed(search, ID_SEARCH_FIND));
    EXPECT_TRUE(Grayed(search, ID_SEARCH_FINDNEXT));
    EXPECT_TRUE(Grayed(search, ID_SEARCH_FINDPREV));
    EXPECT_TRUE(Grayed(search, ID_SEARCH_REPLACENEXT));

    theApp.searchPattern = "needle";
    search = OpenPopup(2);
    EXPECT_FALSE(Grayed(search, ID_SEARCH_FIND));
    EXPECT_FALSE(Grayed(search, ID_SEARCH_FINDNEXT));
    EXPECT_FALSE(Grayed(search, ID_SEARCH_FINDPREV));
    // the plain window's own rules come last and gray what it can't do
    EXPECT_TRUE(Grayed(search, ID_SEARCH_REPLACE));
    EXPECT_TRUE(Grayed(search, ID_SEARCH_REPLACENEXT));
    EXPECT_TRUE(Grayed(search, ID_SEARCH_GOTOLINE));
}

TEST_F(ShellTest, SearchItemsFollowAOneLineSelectionInAnEditor)
{
    m_frame->SendMessage(WM_COMMAND, ID_FILE_NEW);
    PumpUntilIdle();
    CKmChild* active = m_frame->m_pActiveChild;
    ASSERT_NE(nullptr, active);
    ASSERT_TRUE(active->IsKindOf(RUNTIME_CLASS(CKmFileEdit)));
    HWND edit = static_cast<CKmFileEdit*>(active)->Edit().m_hWnd;
    ::SendMessageA(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>("one two\r\nthree"));

    ::SendMessageA(edit, EM_SETSEL, 0, 3);
    HMENU search = OpenPopup(2);
    EXPECT_FALSE(Grayed(search, ID_SEARCH_FINDNEXT));
    EXPECT_FALSE(Grayed(search, ID_SEARCH_FINDPREV));
    EXPECT_TRUE(Grayed(search, ID_SEARCH_REPLACENEXT));

    ::SendMessageA(edit, EM_SETSEL, 4, 12); // across the line end
    search = OpenPopup(2);
    EXPECT_TRUE(Grayed(search, ID_SEARCH_FINDNEXT));
    EXPECT_TRUE(Grayed(search, ID_SEARCH_FINDPREV));

    ::SendMessageA(edit, EM_SETSEL, 2, 2);
    search = OpenPopup(2);
    EXPECT_TRUE(Grayed(search, ID_SEARCH_FINDNEXT));
    active->m_flags &= ~CF_MODIFIED; // closes without a question
}

TEST_F(ShellTest, EditorFileAndEditItemsFollowItsState)
{
    m_frame->SendMessage(WM_COMMAND, ID_FILE_NEW);
    PumpUntilIdle();
    CKmChild* active = m_frame->m_pActiveChild;
    ASSERT_NE(nullptr, active);
    HWND edit = static_cast<CKmFileEdit*>(active)->Edit().m_hWnd;

    HMENU file = OpenPopup(0);
    EXPECT_TRUE(Grayed(file, ID_FILE_SAVE)) << "an unmodified window has nothing to save";
    EXPECT_FALSE(Grayed(file, ID_FILE_SAVEAS));
    EXPECT_FALSE(Grayed(file, ID_FILE_PRINT));

    ::SendMessageA(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>("abc"));
    file = OpenPopup(0);
    EXPECT_TRUE(Grayed(file, ID_FILE_SAVE)) << "an untitled window saves through Save As";

    active->m_flags &= ~CF_UNTITLED;
    file = OpenPopup(0);
    EXPECT_FALSE(Grayed(file, ID_FILE_SAVE));

    ::SendMessageA(edit, EM_SETSEL, 0, 0);
    HMENU editMenu = OpenPopup(1);
    EXPECT_TRUE(Grayed(editMenu, ID_EDIT_CUT));
    EXPECT_TRUE(Grayed(editMenu, ID_EDIT_COPY));
    EXPECT_FALSE(Grayed(editMenu, ID_EDIT_TRANSPOSE));
    EXPECT_FALSE(Grayed(editMenu, ID_EDIT_UNDO));

    ::SendMessageA(edit, EM_SETSEL, 0, 2);
    editMenu = OpenPopup(1);
    EXPECT_FALSE(Grayed(editMenu, ID_EDIT_CUT));
    EXPECT_FALSE(Grayed(editMenu, ID_EDIT_COPY));
    EXPECT_TRUE(Grayed(editMenu, ID_EDIT_TRANSPOSE));

    active->m_flags |= CF_READONLY;
    editMenu = OpenPopup(1);
    EXPECT_TRUE(Grayed(editMenu, ID_EDIT_CUT));
    EXPECT_FALSE(Grayed(editMenu, ID_EDIT_COPY));
    HMENU search = OpenPopup(2);
    EXPECT_TRUE(Grayed(search, ID_SEARCH_REPLACE));
    active->m_flags &= ~(CF_MODIFIED | CF_READONLY); // closes without a question
}

// Items of the File popup from the first separator after Manage Files to
// Exit, as id and text.
std::vector<std::pair<UINT, std::string>> RecentItems(HMENU file)
{
    std::vector<std::pair<UINT, std::string>> items;
    const int count = ::GetMenuItemCount(file);
    for (int i = 0; i < count; ++i) {
        UINT id = ::GetMenuItemID(file, i);
        if (id >= ID_FILE_MRU_SEP && id <= ID_FILE_MRU_LAST)
            items.emplace_back(id, MenuText(file, static_cast<UINT>(i), MF_BYPOSITION));
    }
    return items;
}

class ShellRecentTest : public ShellTest
{
  protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        char buffer[MAX_PATH];
        ASSERT_NE(0u, ::GetTempPathA(MAX_PATH, buffer));
        m_dir = std::string(buffer) + "KmShell" + std::to_string(::GetCurrentProcessId());
        ::CreateDirectoryA(m_dir.c_str(), nullptr);
        ASSERT_TRUE(::SetCurrentDirectoryA(m_dir.c_str()));
        ::GetCurrentDirectoryA(MAX_PATH, buffer);
        m_dir = Lower(buffer);
    }

    void TearDown() override
    {
        ShellTest::TearDown();
        ::RemoveDirectoryA(m_dir.c_str());
    }

    std::string m_dir;
};

TEST_F(ShellRecentTest, RecentFilesAreRebuiltAndCutByTheCurrentDirectory)
{
    theApp.recentFiles[0] = (m_dir + "\\here.c").c_str();
    theApp.recentFiles[1] = (m_dir + "\\sub\\deeper.h").c_str();
    theApp.recentFiles[2] = (Upper(m_dir) + "\\CASE.C").c_str();
    theApp.recentFiles[3] = "c:\\elsewhere\\far.c";
    theApp.recentFilesDirty = 1;

    HMENU file = OpenPopup(0);
    EXPECT_FALSE(theApp.recentFilesDirty);
    const std::vector<std::pair<UINT, std::string>> expected = {
        {ID_FILE_MRU_FIRST, "&1 here.c"},
        {ID_FILE_MRU_FIRST + 1, "&2 sub\\deeper.h"},
        {ID_FILE_MRU_FIRST + 2, "&3 " + Upper(m_dir) + "\\CASE.C"},
        {ID_FILE_MRU_FIRST + 3, "&4 c:\\elsewhere\\far.c"},
        {ID_FILE_MRU_SEP, ""},
    };
    EXPECT_EQ(expected, RecentItems(file));
    // Exit stays last, right behind the separator of the list.
    const int count = ::GetMenuItemCount(file);
    EXPECT_EQ(static_cast<UINT>(ID_FILE_EXIT), ::GetMenuItemID(file, count - 1));
    EXPECT_EQ(static_cast<UINT>(ID_FILE_MRU_SEP), ::GetMenuItemID(file, count - 2));

    // Not dirty: left alone even though the list changed.
    theApp.recentFiles[4] = "c:\\x.c";
    OpenPopup(0);
    EXPECT_EQ(expected, RecentItems(file));

    // Rebuilt, not added to; a shorter list leaves no stale items.
    theApp.recentFiles[1].Empty();
    theApp.recentFilesDirty = 1;
    OpenPopup(0);
    const std::vector<std::pair<UINT, std::string>> one = {{ID_FILE_MRU_FIRST, "&1 here.c"},
                                                           {ID_FILE_MRU_SEP, ""}};
    EXPECT_EQ(one, RecentItems(file));
    EXPECT_EQ(count - 3, ::GetMenuItemCount(file));
}

TEST_F(ShellRecentTest, RecentFilesFollowTheMenuOfAChildAndItsRules)
{
    theApp.recentFiles[0] = (m_dir + "\\here.c").c_str();
    CPlainChild* child = MakeChild<CPlainChild>("plain");
    ASSERT_NE(nullptr, child);
    EXPECT_TRUE(theApp.recentFilesDirty); // the first child came
    HMENU file = OpenPopup(0);
    const std::vector<std::pair<UINT, std::string>> expected = {{ID_FILE_MRU_FIRST, "&1 here.c"},
                                                                {ID_FILE_MRU_SEP, ""}};
    EXPECT_EQ(expected, RecentItems(file));
    EXPECT_TRUE(Grayed(file, ID_FILE_SAVE));
    EXPECT_FALSE(Grayed(file, ID_FILE_NEW));
}

TEST_F(ShellTest, WithoutRecentFilesTheFilePopupKeepsItsItems)
{
    HMENU file = ::GetSubMenu(ShownMenu(), 0);
    const int count = ::GetMenuItemCount(file);
    theApp.recentFilesDirty = 1;
    OpenPopup(0);
    OpenPopup(0);
    EXPECT_EQ(count, ::GetMenuItemCount(file));
    EXPECT_FALSE(theApp.recentFilesDirty);
}

TEST_F(ShellTest, TheBaseRulesForAWindowThatCantDoMuch)
{
    CPlainChild* child = MakeChild<CPlainChild>("plain");
    ASSERT_NE(nullptr, child);
    HMENU menu = ShownMenu();

    HMENU file = OpenPopup(0);
    for (UINT id : {ID_FILE_SAVE, ID_FILE_SAVEAS, ID_FILE_PRINT})
        EXPECT_TRUE(Grayed(file, id)) << id;
    EXPECT_FALSE(Grayed(file, ID_FILE_SAVEALL));

    HMENU edit = ::GetSubMenu(menu, 1);
    ::EnableMenuItem(edit, ID_EDIT_COPY, MF_BYCOMMAND | MF_GRAYED);
    ::EnableMenuItem(edit, ID_EDIT_COPYAPPEND, MF_BYCOMMAND | MF_GRAYED);
    OpenPopup(1);
    EXPECT_FALSE(Grayed(edit, ID_EDIT_COPY));
    EXPECT_TRUE(Grayed(edit, ID_EDIT_COPYAPPEND)); // keeps its state
    for (UINT id : {ID_EDIT_UNDO, ID_EDIT_PASTEFILE, ID_EDIT_CUT, ID_EDIT_CUTAPPEND,
                    ID_EDIT_SHIFTRIGHT, ID_EDIT_SHIFTLEFT, ID_EDIT_UPPERCASE, ID_EDIT_LOWERCASE,
                    ID_EDIT_TOGGLECASE, ID_EDIT_CAPITALIZE, ID_EDIT_PASTE, ID_EDIT_TRANSPOSE})
        EXPECT_TRUE(Grayed(edit, id)) << id;
    ::EnableMenuItem(edit, ID_EDIT_COPYAPPEND, MF_BYCOMMAND | MF_ENABLED);
    OpenPopup(1);
    EXPECT_FALSE(Grayed(edit, ID_EDIT_COPYAPPEND));

    HMENU search = OpenPopup(2);
    for (UINT id :
         {ID_SEARCH_REPLACE, ID_SEARCH_REPLACENEXT, ID_SEARCH_GOTOLINE, ID_SEARCH_MATCHBRACE})
        EXPECT_TRUE(Grayed(search, id)) << id;
    EXPECT_FALSE(Grayed(search, ID_SEARCH_FIND));
    EXPECT_FALSE(Grayed(search, ID_SEARCH_GREP));

    HMENU settings = ::GetSubMenu(menu, 3);
    ::CheckMenuItem(settings, ID_SET_ALIGN, MF_BYCOMMAND | MF_CHECKED);
    OpenPopup(3);
    for (UINT id : {ID_SET_ALIGN, ID_SET_INDENT}) {
        EXPECT_FALSE(Checked(settings, id)) << id;
        EXPECT_TRUE(Grayed(settings, id)) << id;
    }
    EXPECT_TRUE(Checked(settings, ID_SET_READONLY));
    EXPECT_TRUE(Grayed(settings, ID_SET_READONLY));
    EXPECT_TRUE(Grayed(settings, ID_SET_CLEAN));
    EXPECT_TRUE(Checked(settings, ID_SET_SHOWHSCROLL));
    EXPECT_FALSE(Checked(settings, ID_SET_SHOWVSCROLL));
    EXPECT_FALSE(Grayed(settings, ID_SET_SHOWVSCROLL));
    EXPECT_FALSE(Grayed(settings, ID_SET_GLOBAL));

    // the Settings commands of the base class turn the checks
    Command(ID_SET_SHOWVSCROLL);
    Command(ID_SET_SHOWHSCROLL);
    OpenPopup(3);
    EXPECT_FALSE(Checked(settings, ID_SET_SHOWHSCROLL));
    EXPECT_TRUE(Checked(settings, ID_SET_SHOWVSCROLL));

    HMENU project = OpenPopup(4);
    EXPECT_TRUE(Grayed(project, ID_PROJECT_COMPILE));
    EXPECT_TRUE(Grayed(project, ID_PROJECT_BUILD)); // no project
    EXPECT_FALSE(Grayed(project, ID_PROJECT_SELECT));

    HMENU help = ::GetSubMenu(menu, 7);
    for (UINT id : {ID_HELP_CONTEXT, ID_HELP_SDK, ID_HELP_ENVIRONMENT})
        ::EnableMenuItem(help, id, MF_BYCOMMAND | MF_GRAYED);
    OpenPopup(7);
    EXPECT_TRUE(Grayed(help, ID_HELP_FILESTATS));
    for (UINT id : {ID_HELP_CONTEXT, ID_HELP_SDK, ID_HELP_ENVIRONMENT})
        EXPECT_FALSE(Grayed(help, id)) << id;
}

TEST_F(ShellTest, PositionsAreCorrectedForAMaximisedChild)
{
    CPlainChild* child = MakeChild<CPlainChild>("maximised", true);
    ASSERT_NE(nullptr, child);
    ASSERT_TRUE(child->IsZoomed());
    HMENU menu = ShownMenu();
    ASSERT_EQ("&File", MenuText(menu, 1, MF_BYPOSITION));

    // Position 0 is the child's system menu: left alone.
    OpenPopupAt(0);
    HMENU file = OpenPopupAt(1);
    EXPECT_TRUE(Grayed(file, ID_FILE_SAVE));
    HMENU edit = OpenPopupAt(2);
    EXPECT_TRUE(Grayed(edit, ID_EDIT_CUT));
    EXPECT_FALSE(Grayed(edit, ID_EDIT_COPY));
    HMENU project = OpenPopupAt(5);
    EXPECT_TRUE(Grayed(project, ID_PROJECT_COMPILE));
}

TEST_F(ShellTest, TheContextMenuGetsTheEditRules)
{
    CPlainChild* child = MakeChild<CPlainChild>("plain");
    ASSERT_NE(nullptr, child);
    ASSERT_TRUE(m_frame->m_menuPopup.LoadMenu(IDR_MENU_POPUP));
    HMENU popup = m_frame->m_menuPopup.GetSubMenu(0);
    ::EnableMenuItem(popup, ID_EDIT_COPY, MF_BYCOMMAND | MF_GRAYED);
    ::SendMessageA(m_frameWnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), 0);
    EXPECT_FALSE(Grayed(popup, ID_EDIT_COPY));
    EXPECT_TRUE(Grayed(popup, ID_EDIT_CUT));
    EXPECT_TRUE(Grayed(popup, ID_EDIT_PASTE));
}

TEST_F(ShellTest, SystemMenusAndAnIconicFrameAreLeftAlone)
{
    CPlainChild* child = MakeChild<CPlainChild>("plain");
    ASSERT_NE(nullptr, child);
    HMENU file = ::GetSubMenu(ShownMenu(), 0);
    ::SendMessageA(m_frameWnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(file), MAKELPARAM(0, 1));
    EXPECT_FALSE(Grayed(file, ID_FILE_SAVE));
    ::ShowWindow(m_frameWnd, SW_MINIMIZE);
    PumpUntilIdle();
    OpenPopup(0);
    EXPECT_FALSE(Grayed(file, ID_FILE_SAVE));
    ::ShowWindow(m_frameWnd, SW_RESTORE);
    PumpUntilIdle();
    OpenPopup(0);
    EXPECT_TRUE(Grayed(file, ID_FILE_SAVE));
}

// --- routing

TEST_F(ShellTest, AHandlerInTheChildShadowsTheFrames)
{
    CShadowChild* child = MakeShadow("shadow");
    ASSERT_NE(nullptr, child);
    theApp.arrange = 2;
    Command(ID_WINDOW_CASCADE);
    EXPECT_EQ(1, child->cascades);
    EXPECT_EQ(2, theApp.arrange); // the frame's handler didn't run
    Command(ID_WINDOW_TILEHORZ);
    EXPECT_EQ(3, theApp.arrange); // what the child lacks goes on to the frame

    child->MDIDestroy();
    PumpUntilIdle();
    Command(ID_WINDOW_CASCADE);
    EXPECT_EQ(1, theApp.arrange);
}

TEST_F(ShellTest, ACommandNobodyHandlesDoesNothing)
{
    CPlainChild* first = MakeChild<CPlainChild>("first");
    CPlainChild* second = MakeChild<CPlainChild>("second");
    ASSERT_NE(nullptr, second);
    theApp.arrange = 2;
    for (UINT id : {static_cast<UINT>(ID_EDIT_REDO), static_cast<UINT>(ID_EDIT_CUT), 999u, 0x1234u,
                    static_cast<UINT>(ID_HELP_CONTEXT_CHILD)}) {
        SCOPED_TRACE(id);
        EXPECT_EQ(0, ::SendMessageA(m_frameWnd, WM_COMMAND, id, 0));
        PumpUntilIdle();
        EXPECT_EQ(2u, Children().size());
        EXPECT_EQ(second, m_frame->m_pActiveChild);
        EXPECT_EQ(2, theApp.arrange);
        EXPECT_EQ(4, m_frame->m_nMenu);
    }
    // The window list is the system's: its ids go to the default procedure.
    Command(0xFF00);
    EXPECT_EQ(first, m_frame->m_pActiveChild);
}

TEST_F(ShellTest, RegisteredMessagesFindTheirHandlers)
{
    CRecordingChild* child = MakeChild<CRecordingChild>("registered");
    ASSERT_NE(nullptr, child);
    ASSERT_NE(0u, g_testMessage);
    EXPECT_EQ(42, ::SendMessageA(child->m_hWnd, g_testMessage, 7, -9));
    EXPECT_EQ((std::vector<LPARAM>{7, -9}), child->registered);

    // An entry whose message was never registered takes nothing, not even
    // message 0; nor does the entry catch another registered message.
    const UINT other = ::RegisterWindowMessageA("KmShellTestOther");
    ASSERT_NE(g_testMessage, other);
    ::SendMessageA(child->m_hWnd, WM_NULL, 0, 0);
    ::SendMessageA(child->m_hWnd, other, 1, 2);
    EXPECT_EQ((std::vector<LPARAM>{7, -9}), child->registered);
    EXPECT_TRUE(child->ids.empty());
}

TEST_F(ShellTest, FileCloseClosesTheActiveChildLaterOrAlerts)
{
    Command(ID_FILE_CLOSE); // no child: an alert, nothing else
    EXPECT_TRUE(::IsWindow(m_frameWnd));
    CPlainChild* first = MakeChild<CPlainChild>("first");
    CPlainChild* second = MakeChild<CPlainChild>("second");
    ASSERT_NE(nullptr, second);
    HWND secondWnd = second->m_hWnd;
    ::SendMessageA(m_frameWnd, WM_COMMAND, ID_FILE_CLOSE, 0);
    EXPECT_TRUE(::IsWindow(secondWnd)); // posted, not sent
    PumpUntilIdle();
    EXPECT_FALSE(::IsWindow(secondWnd));
    EXPECT_EQ(first, m_frame->m_pActiveChild);
    Command(ID_FILE_CLOSE);
    EXPECT_TRUE(Children().empty());
    EXPECT_EQ(3, m_frame->m_nMenu);
}

// --- arranging and closing all

TEST_F(ShellTest, ArrangeCommandsSetTheArrangementAndPlaceTheWindows)
{
    CPlainChild* first = MakeChild<CPlainChild>("first");
    CPlainChild* second = MakeChild<CPlainChild>("second");
    ASSERT_NE(nullptr, second);
    auto place = [](CWnd* wnd) {
        RECT rect;
        ::GetWindowRect(wnd->m_hWnd, &rect);
        return rect;
    };

    Command(ID_WINDOW_TILEVERT); // "Tile Across": side by side
    EXPECT_EQ(0, theApp.arrange);
    RECT a = place(first), b = place(second);
    EXPECT_EQ(a.top, b.top);
    EXPECT_NE(a.left, b.left);

    Command(ID_WINDOW_TILEHORZ); // "Tile Down": one above the other
    EXPECT_EQ(3, theApp.arrange);
    a = place(first), b = place(second);
    EXPECT_EQ(a.left, b.left);
    EXPECT_NE(a.top, b.top);

    Command(ID_WINDOW_CASCADE);
    EXPECT_EQ(1, theApp.arrange);
    a = place(first), b = place(second);
    EXPECT_NE(a.left, b.left);
    EXPECT_NE(a.top, b.top);

    Command(ID_WINDOW_ARRANGE);
    EXPECT_EQ(1, theApp.arrange);

    ::SendMessageA(second->m_hWnd, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    PumpUntilIdle();
    EXPECT_TRUE(second->IsZoomed());
    EXPECT_EQ(2, theApp.arrange);
    ::SendMessageA(second->m_hWnd, WM_SYSCOMMAND, SC_RESTORE, 0);
    PumpUntilIdle();
    EXPECT_FALSE(second->IsZoomed());
    EXPECT_EQ(1, theApp.arrange);
    theApp.arrange = 0;
    ::SendMessageA(second->m_hWnd, WM_SYSCOMMAND, SC_RESTORE, 0); // not maximised
    EXPECT_EQ(0, theApp.arrange);
}

TEST_F(ShellTest, CloseAllWithOneRefusalClosesNone)
{
    CShadowChild* first = MakeShadow("first");
    ASSERT_NE(nullptr, first);
    ASSERT_NE(nullptr, MakeChild<CPlainChild>("second"));
    ASSERT_NE(nullptr, MakeChild<CPlainChild>("third"));
    first->refuse = true; // asked last in window order: the others agreed before
    Command(ID_WINDOW_CLOSEALL);
    EXPECT_EQ(3u, Children().size());
    EXPECT_FALSE(m_frame->QueryCloseAll());
    EXPECT_EQ(4, m_frame->m_nMenu);
    EXPECT_TRUE(::IsWindowVisible(m_frame->m_hWndMDIClient));

    first->refuse = false;
    EXPECT_TRUE(m_frame->QueryCloseAll());
    Command(ID_WINDOW_CLOSEALL);
    EXPECT_TRUE(Children().empty());
    EXPECT_EQ(3, m_frame->m_nMenu);
    EXPECT_EQ(nullptr, m_frame->m_pActiveChild);
    EXPECT_TRUE(::IsWindowVisible(m_frame->m_hWndMDIClient));
}

// --- status bar

TEST_F(ShellTest, MenuSelectShowsTheHelpOfTheItem)
{
    ASSERT_TRUE(theApp.statusBar.Exists());
    HMENU menu = ShownMenu();
    auto select = [&](UINT item, UINT flags, HMENU from) {
        ::SendMessageA(m_frameWnd, WM_MENUSELECT, MAKEWPARAM(item, flags),
                       reinterpret_cast<LPARAM>(from));
        return BarText();
    };
    EXPECT_EQ("Creates a new untitled file", select(ID_FILE_NEW, MF_STRING, menu));
    EXPECT_EQ("Opens this file", select(ID_FILE_MRU_FIRST + 2, MF_STRING, menu));
    EXPECT_EQ("Opens this file", select(ID_FILE_MRU_LAST, MF_STRING, menu));
    EXPECT_EQ("Starts this application", select(ID_TOOL_FIRST, MF_STRING, menu));
    EXPECT_EQ("Starts this application", select(ID_TOOL_LAST, MF_STRING, menu));
    EXPECT_EQ("Runs an application specified via a dialog", select(ID_TOOL_RUN, MF_STRING, menu));
    EXPECT_EQ("Activates this window", select(0xFF03, MF_STRING, menu));
    EXPECT_EQ("No resource string 2016", select(ID_EDIT_MOVEBACKSTART, MF_STRING, menu));
    EXPECT_EQ("Move, size or close window", select(0, MF_POPUP | MF_SYSMENU, menu));
    EXPECT_EQ("Closes the active window", select(SC_CLOSE, MF_SYSMENU, menu));
    EXPECT_EQ("", select(1, MF_POPUP, menu));
    select(ID_FILE_NEW, MF_STRING, menu);
    EXPECT_EQ("", select(0, MF_SEPARATOR, menu));
    select(ID_FILE_NEW, MF_STRING, menu);
    EXPECT_EQ("", select(0, 0xFFFF, nullptr)); // the menu closed

    // A child passes its own on, so its system menu gets help too.
    CPlainChild* child = MakeChild<CPlainChild>("plain");
    ASSERT_NE(nullptr, child);
    ::SendMessageA(child->m_hWnd, WM_MENUSELECT, MAKEWPARAM(SC_MAXIMIZE, MF_SYSMENU),
                   reinterpret_cast<LPARAM>(::GetSystemMenu(child->m_hWnd, FALSE)));
    EXPECT_EQ("Maximizes the window to the size of the screen", BarText());
}

TEST_F(ShellTest, ATimedTextGoesAway)
{
    theApp.statusBar.SetText("for a second", 1);
    EXPECT_EQ("for a second", BarText());
    PumpFor(1500);
    EXPECT_EQ("", BarText());
    theApp.statusBar.SetTextId(ID_FILE_OPEN, 0);
    PumpFor(1200);
    EXPECT_EQ("Opens an existing file, or creates a new one", BarText());
}

TEST_F(ShellTest, PositionPaneFollowsShowPosAndAMinimisedChild)
{
    ASSERT_GE(theApp.paneLineCol, 0);
    ::PostMessageA(m_frameWnd, WM_KM_SHOWPOS, 7, 12);
    PumpUntilIdle();
    EXPECT_EQ("12 : 7", PaneText(theApp.paneLineCol));

    CPlainChild* child = MakeChild<CPlainChild>("plain");
    ASSERT_NE(nullptr, child);
    ::ShowWindow(child->m_hWnd, SW_MINIMIZE);
    PumpUntilIdle();
    EXPECT_EQ("-1 : 0", PaneText(theApp.paneLineCol));
    ::PostMessageA(m_frameWnd, WM_KM_SHOWPOS, 1, 3);
    PumpUntilIdle();
    EXPECT_EQ("3 : 1", PaneText(theApp.paneLineCol));
}

TEST_F(ShellTest, ActivatingAChildSetsThePanesFromItsFlags)
{
    CPlainChild* first = MakeChild<CPlainChild>("first");
    ASSERT_NE(nullptr, first);
    first->m_flags |= CF_READONLY | CF_MODIFIED | CF_BLOCKINDENT | CF_OVERTYPE;
    CPlainChild* second = MakeChild<CPlainChild>("second");
    ASSERT_NE(nullptr, second);
    EXPECT_EQ("Ins", PaneText(theApp.paneInsert));
    EXPECT_EQ("Edit", PaneText(theApp.paneEdit));
    EXPECT_EQ("Clean", PaneText(theApp.paneClean));
    m_frame->MDIActivate(first->m_hWnd);
    PumpUntilIdle();
    EXPECT_EQ("Ovr", PaneText(theApp.paneInsert));
    EXPECT_EQ("Indent", PaneText(theApp.paneAlign));
    EXPECT_EQ("Read", PaneText(theApp.paneEdit));
    EXPECT_EQ("Modified", PaneText(theApp.paneClean));
}

class ShellNoBarTest : public ShellTest
{
  protected:
    ShellNoBarTest() { m_extraFlags = KF_NOSTATUSBAR; }
};

TEST_F(ShellNoBarTest, WithoutTheBarMenusAndPositionsChangeNothing)
{
    EXPECT_FALSE(theApp.statusBar.Exists());
    ::SendMessageA(m_frameWnd, WM_MENUSELECT, MAKEWPARAM(ID_FILE_NEW, MF_STRING),
                   reinterpret_cast<LPARAM>(ShownMenu()));
    ::SendMessageA(m_frameWnd, WM_KM_SHOWPOS, 3, 4);
    ::SendMessageA(m_frameWnd, WM_TIMECHANGE, 0, 0);
    EXPECT_FALSE(theApp.statusBar.Exists());
    RECT client, area;
    ::GetClientRect(m_frameWnd, &client);
    ::GetWindowRect(m_frame->m_hWndMDIClient, &area);
    EXPECT_EQ(client.bottom, area.bottom - area.top); // the client fills the frame
}

// --- the frame's small services

TEST_F(ShellTest, TimeChangeWithTheClockHiddenDoesNothing)
{
    ASSERT_NE(nullptr, theApp.statusBar.m_pClock);
    ::SendMessageA(m_frameWnd, WM_TIMECHANGE, 0, 0);
    EXPECT_NE(nullptr, theApp.statusBar.m_pClock);
    EXPECT_EQ(1, CKmStatusBar::ClockCount());

    theApp.flags |= KF_NOCLOCK;
    theApp.statusBar.HideClock();
    ASSERT_EQ(nullptr, theApp.statusBar.m_pClock);
    ::SendMessageA(m_frameWnd, WM_TIMECHANGE, 0, 0);
    EXPECT_EQ(nullptr, theApp.statusBar.m_pClock);
    EXPECT_EQ(0, CKmStatusBar::ClockCount());
}

TEST_F(ShellTest, WorkAreaIsTheWholeClientWithoutAToolBar)
{
    theApp.flags |= KF_NOTOOLBAR;
    RECT area, client;
    m_frame->GetWorkArea(area);
    ::GetClientRect(m_frameWnd, &client);
    EXPECT_TRUE(::EqualRect(&area, &client));
}

RECT ClientPlace(const CKmFrame* frame)
{
    RECT rect;
    ::GetWindowRect(frame->m_hWndMDIClient, &rect);
    ::MapWindowPoints(nullptr, frame->m_hWnd, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

TEST_F(ShellTest, LayoutLeavesRoomForTheBarAndAMinimisedFrameKeepsIt)
{
    RECT client;
    ::GetClientRect(m_frameWnd, &client);
    RECT place = ClientPlace(m_frame);
    EXPECT_EQ(0, place.left);
    EXPECT_EQ(0, place.top);
    EXPECT_EQ(client.right, place.right);
    EXPECT_EQ(client.bottom - CKmStatusBar::Height(), place.bottom);

    ::SendMessageA(m_frameWnd, WM_SIZE, SIZE_MINIMIZED, MAKELPARAM(0, 0));
    RECT after = ClientPlace(m_frame);
    EXPECT_TRUE(::EqualRect(&place, &after));

    ::ShowWindow(m_frameWnd, SW_MINIMIZE);
    PumpUntilIdle();
    ASSERT_TRUE(m_frame->IsIconic());
    RECT size;
    ::GetWindowRect(m_frame->m_hWndMDIClient, &size);
    EXPECT_EQ(place.right - place.left, size.right - size.left);
    EXPECT_EQ(place.bottom - place.top, size.bottom - size.top);

    ::ShowWindow(m_frameWnd, SW_RESTORE);
    PumpUntilIdle();
    ::MoveWindow(m_frameWnd, 10, 10, 500, 400, TRUE);
    PumpUntilIdle();
    ::GetClientRect(m_frameWnd, &client);
    place = ClientPlace(m_frame);
    EXPECT_EQ(client.right, place.right);
    EXPECT_EQ(client.bottom - CKmStatusBar::Height(), place.bottom);
}

TEST_F(ShellTest, EndBusyShowsTheClientAlsoWithoutBeginBusy)
{
    HWND client = m_frame->m_hWndMDIClient;
    m_frame->BeginBusy(false);
    EXPECT_TRUE(::IsWindowVisible(client));
    m_frame->EndBusy();
    m_frame->BeginBusy(true);
    EXPECT_FALSE(::IsWindowVisible(client));
    m_frame->EndBusy();
    EXPECT_TRUE(::IsWindowVisible(client));
    EXPECT_EQ(nullptr, m_frame->m_hSavedCursor);

    ::ShowWindow(client, SW_HIDE);
    m_frame->EndBusy();
    EXPECT_TRUE(::IsWindowVisible(client));
}

// --- the end of the frame

// Checks, at its WM_DESTROY, that the frame has let go of both menus: the
// one on show stays with the window and the other is gone already.
class CCheckedFrame : public CKmFrame
{
  public:
    static HMENU s_shown;
    static HMENU s_kept[2];
    static bool s_otherGone;

  protected:
    LRESULT OnDestroyChecked(WPARAM wParam, LPARAM lParam)
    {
        s_shown = ::GetMenu(m_hWnd);
        HMENU other = s_shown == m_menuFile.m_hMenu ? m_menuNoFile.m_hMenu : m_menuFile.m_hMenu;
        LRESULT result = OnDestroy(wParam, lParam);
        s_otherGone = !::IsMenu(other);
        s_kept[0] = m_menuNoFile.m_hMenu;
        s_kept[1] = m_menuFile.m_hMenu;
        return result;
    }
    DECLARE_MESSAGE_MAP()
};

HMENU CCheckedFrame::s_shown = nullptr;
HMENU CCheckedFrame::s_kept[2] = {};
bool CCheckedFrame::s_otherGone = false;

// clang-format off
BEGIN_MESSAGE_MAP(CCheckedFrame, CKmFrame)
    ON_MESSAGE(WM_DESTROY, OnDestroyChecked)
END_MESSAGE_MAP()
// clang-format on

class ShellEndTest : public ShellTest
{
  protected:
    CKmFrame* NewFrame() override { return new CCheckedFrame; }

    void CloseAndCheck()
    {
        HMENU noFile = m_frame->m_menuNoFile.m_hMenu;
        HMENU file = m_frame->m_menuFile.m_hMenu;
        ASSERT_TRUE(::IsMenu(noFile));
        ASSERT_TRUE(::IsMenu(file));
        ::SendMessageA(m_frameWnd, WM_CLOSE, 0, 0);
        PumpUntilIdle();
        ASSERT_FALSE(::IsWindow(m_frameWnd));
        EXPECT_TRUE(CCheckedFrame::s_otherGone);
        EXPECT_EQ(nullptr, CCheckedFrame::s_kept[0]);
        EXPECT_EQ(nullptr, CCheckedFrame::s_kept[1]);
        EXPECT_FALSE(::IsMenu(noFile));
        EXPECT_FALSE(::IsMenu(file));
        EXPECT_EQ(nullptr, theApp.m_pMainWnd);
    }
};

TEST_F(ShellEndTest, BothMenusGoExactlyOnceWithMenuThree)
{
    CCheckedFrame::s_shown = nullptr;
    HMENU noFile = m_frame->m_menuNoFile.m_hMenu;
    CloseAndCheck();
    EXPECT_EQ(noFile, CCheckedFrame::s_shown);
}

TEST_F(ShellEndTest, BothMenusGoExactlyOnceWithMenuFourAndTheContextMenu)
{
    CCheckedFrame::s_shown = nullptr;
    ASSERT_NE(nullptr, MakeChild<CPlainChild>("plain"));
    HMENU file = m_frame->m_menuFile.m_hMenu;
    ASSERT_TRUE(m_frame->m_menuPopup.LoadMenu(IDR_MENU_POPUP));
    HMENU popup = m_frame->m_menuPopup.m_hMenu;
    CloseAndCheck();
    EXPECT_EQ(file, CCheckedFrame::s_shown);
    EXPECT_FALSE(::IsMenu(popup));
}

TEST_F(ShellEndTest, BothMenusGoExactlyOnceBehindAMaximisedChild)
{
    ASSERT_NE(nullptr, MakeChild<CPlainChild>("plain", true));
    CloseAndCheck();
}

} // namespace
