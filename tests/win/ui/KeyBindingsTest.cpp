// The user's key bindings from the settings at start: the accelerators and
// the menu texts follow them, and the file keeps them.
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"
#include "ui/KeyBindingsDialog.h"

namespace
{

using kmtest::FrameTest;

std::string MenuText(HMENU menu, UINT id)
{
    char text[80] = "<none>";
    ::GetMenuStringA(menu, id, text, sizeof text, MF_BYCOMMAND);
    return text;
}

using KeyBindings = FrameTest;

TEST_F(KeyBindings, SettingsAtStartRebindKeysAndMenuTexts)
{
    const std::string bindings = "[Key Bindings]\nfile:NEW=123,1\nFile:Open=78\n"
                                 "Window:CloseAll=87,25\nNo:Such=65,9\nFile:Exit=500,9\n";
    Write("kelmar.ini", bindings);
    ASSERT_TRUE(Start("-s"));
    struct Row {
        bool fileMenu;
        UINT id;
        const char* text;
    } rows[] = {
        {false, ID_FILE_NEW, "&New\tF12"},         // names without case, the old key replaced
        {true, ID_FILE_NEW, "&New\tF12"},          // in both menus
        {false, ID_FILE_OPEN, "&Open...\tCtrl+O"}, // "78" alone: skipped
        {true, ID_WINDOW_CLOSEALL, "C&lose All\tCtrl+Alt+W"}, // a tab added
        {false, ID_FILE_EXIT, "E&xit"},                       // no such key
    };
    for (const Row& row : rows) {
        HMENU menu = row.fileMenu ? m_frame->m_menuFile.m_hMenu : m_frame->m_menuNoFile.m_hMenu;
        EXPECT_EQ(row.text, MenuText(menu, row.id)) << row.id;
    }
    ::PostMessageA(m_frameWnd, WM_KEYDOWN, VK_F12, 0);
    kmtest::PumpUntilIdle();
    EXPECT_EQ(1u, Children().size()); // F12 made a new window
    ASSERT_TRUE(CloseFrame());
    EXPECT_NE(std::string::npos, Read("kelmar.ini").find("file:NEW=123,1"));
}

// Rows chosen as a user would: the list's notification follows each choice.
void Choose(HWND dialog, int id, UINT find, UINT select, UINT code, const char* text)
{
    HWND control = ::GetDlgItem(dialog, id);
    const LRESULT row =
        ::SendMessageA(control, find, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text));
    ::SendMessageA(control, select, static_cast<WPARAM>(row), 0);
    ::SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(control));
}

void Bind(HWND dialog, const char* command, const char* key, bool control)
{
    Choose(dialog, IDC_KEY_COMMAND, LB_FINDSTRINGEXACT, LB_SETCURSEL, LBN_SELCHANGE, command);
    Choose(dialog, IDC_KEY_VIRTKEY, CB_FINDSTRINGEXACT, CB_SETCURSEL, CBN_SELCHANGE, key);
    ::CheckDlgButton(dialog, IDC_KEY_CONTROL, control ? BST_CHECKED : BST_UNCHECKED);
    ::SendMessageA(dialog, WM_COMMAND, IDC_KEY_SET, 0);
}

// F7 set for File:New in the dialog works at once, shows in the menu, and
// comes back from the file at the next start. What an earlier opening set
// still reaches the menu.
TEST_F(KeyBindings, DialogBindingWorksAndSurvivesARestart)
{
    ASSERT_TRUE(Start(""));
    CKeyTable table;
    std::string shown;
    m_boxes.Queue(IDOK, [](HWND dialog) { Bind(dialog, "Window:CloseAll", "F3", false); });
    m_boxes.Queue(IDOK, [&](HWND dialog) {
        Bind(dialog, "File:Exit", "Unassigned", false); // no key to remove: refused
        Bind(dialog, "Edit:MoveBackEnd", "F6", true);
        Bind(dialog, "File:New", "F7", false);
        Choose(dialog, IDC_KEY_COMMAND, LB_FINDSTRINGEXACT, LB_SETCURSEL, LBN_SELCHANGE,
               "Edit:ShiftRight"); // one record for both names
        shown = kmtest::WindowText(::GetDlgItem(dialog, IDC_KEY_VIRTKEY)) +
                (::IsDlgButtonChecked(dialog, IDC_KEY_CONTROL) ? "+Ctrl" : "");
    });
    for (int opened = 0; opened < 2; ++opened) { // the second starts from the frame's keys
        CKeyBindingsDialog dialog(m_frameWnd, table, m_frame->GetAccelerators());
        ASSERT_EQ(IDOK, dialog.DoModal());
    }
    EXPECT_EQ("F6+Ctrl", shown);
    m_frame->ApplyKeyTable(table);
    EXPECT_EQ("&New\tF7", MenuText(m_frame->m_menuNoFile.m_hMenu, ID_FILE_NEW));
    EXPECT_EQ("C&lose All\tF3", MenuText(m_frame->m_menuFile.m_hMenu, ID_WINDOW_CLOSEALL));
    EXPECT_EQ("Out of memory on local heap", kmtest::WindowText(theApp.statusBar.GetHwnd()));
    for (bool restarted : {false, true}) {
        ::PostMessageA(m_frameWnd, WM_KEYDOWN, VK_F7, 0);
        kmtest::PumpUntilIdle();
        EXPECT_EQ(1u, Children().size()) << restarted;
        ASSERT_TRUE(CloseFrame());
        EXPECT_NE(std::string::npos, Read("kelmar.ini").find("File:New=118,1"));
        ASSERT_TRUE(Start(""));
    }
}

} // namespace
