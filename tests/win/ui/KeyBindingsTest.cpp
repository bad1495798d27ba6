// The user's key bindings from the settings at start: the accelerators and
// the menu texts follow them, and the file keeps them.
#include "app/KmFrame.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

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

} // namespace
