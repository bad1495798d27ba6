// The tool bar as the mouse works it, and which buttons are alive.
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"
#include "ui/ToolItems.h"

namespace
{

using kmtest::FrameTest;
using kmtest::WindowText;

using ToolBar = FrameTest;

LPARAM Centre(unsigned id)
{
    const RECT& rc = theApp.toolBar.FindId(id)->m_rc;
    return MAKELPARAM((rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2);
}

// After a press on New, each row's mouse messages and the windows there are.
TEST_F(ToolBar, ReleaseOverThePressedButtonPostsItsCommand)
{
    ASSERT_TRUE(Start("-s"));
    HWND bar = theApp.toolBar.GetHwnd();
    const LPARAM on = Centre(ID_FILE_NEW), other = Centre(ID_FILE_OPEN);
    const std::string idle = WindowText(theApp.statusBar.GetHwnd());
    ::SendMessageA(bar, WM_LBUTTONDOWN, MK_LBUTTON, Centre(ID_PROJECT_BUILD)); // etched: nothing
    EXPECT_EQ(idle, WindowText(theApp.statusBar.GetHwnd()));
    struct Row {
        std::vector<std::pair<UINT, LPARAM>> mouse;
        size_t children;
    } rows[] = {
        {{{WM_MOUSEMOVE, other}, {WM_MOUSEMOVE, on}, {WM_LBUTTONUP, on}}, 1},
        {{{WM_MOUSEMOVE, other}, {WM_LBUTTONUP, other}}, 1},
        {{{WM_LBUTTONUP, on}}, 2},
    };
    for (const Row& row : rows) {
        ::SendMessageA(bar, WM_LBUTTONDOWN, MK_LBUTTON, on);
        EXPECT_EQ("Creates a new untitled file", WindowText(theApp.statusBar.GetHwnd()));
        for (const auto& message : row.mouse)
            ::SendMessageA(bar, message.first, 0, message.second);
        kmtest::PumpUntilIdle();
        EXPECT_EQ(row.children, Children().size());
        EXPECT_FALSE(theApp.toolBar.FindId(ID_FILE_NEW)->m_bPressed);
        EXPECT_EQ("", WindowText(theApp.statusBar.GetHwnd())); // the help goes either way
    }
}

// Etched without a file, and the project's without a project; Help closes
// up behind the project buttons when they go; blue turns into the face.
TEST_F(ToolBar, ButtonsFollowTheFileAndTheProject)
{
    ASSERT_TRUE(Start("-s"));
    auto alive = [] {
        std::string states;
        for (unsigned id :
             {ID_FILE_NEW, ID_FILE_SAVE, ID_SEARCH_REPLACE, ID_PROJECT_BUILD, ID_PROJECT_COMPILE})
            states += theApp.toolBar.FindId(id)->m_bEnabled ? '1' : '0';
        return states;
    };
    EXPECT_EQ("10000", alive());
    Command(ID_FILE_NEW);
    EXPECT_EQ("11100", alive());
    m_frame->SetProjectButtons(true);
    EXPECT_EQ("11111", alive());
    const LONG help = theApp.toolBar.FindId(ID_HELP_CONTEXT)->m_rc.left;
    m_frame->RemoveProjectButtons();
    EXPECT_EQ(help - 6 * 24 - 8, theApp.toolBar.FindId(ID_HELP_CONTEXT)->m_rc.left);
    EXPECT_EQ(::GetSysColor(COLOR_BTNFACE), ::GetPixel(theApp.toolBar.Pictures(true), 31, 31));
}

} // namespace
