// The window selector follows the window list: sorted rows, the selection on
// the active window, a new title, and Delete asking about a modified file.
#include "ui/WinSelector.h"
#include "app/KmFrame.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

#include <dlgs.h>

namespace
{

using kmtest::FrameTest;

// The rows' names as "a.txt", the selected one marked with a star.
std::vector<std::string> Rows(HWND list)
{
    std::vector<std::string> rows;
    const int selected = static_cast<int>(::SendMessageA(list, LB_GETCURSEL, 0, 0));
    for (int row = 0; row < ::SendMessageA(list, LB_GETCOUNT, 0, 0); ++row) {
        char text[300] = "";
        ::SendMessageA(list, LB_GETTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text));
        const std::string path = text;
        rows.push_back(path.substr(path.rfind('\\') + 1) + (row == selected ? "*" : ""));
    }
    return rows;
}

using WinSelector = FrameTest;

TEST_F(WinSelector, RowsFollowTheWindowList)
{
    ASSERT_TRUE(Start("-s"));
    for (const char* name : {"c.txt", "b.txt", "d.txt"}) {
        Write(name, "text\r\n");
        m_frame->OpenFile(Path(name).c_str(), false, false);
    }
    Command(ID_WINDOW_SELECTOR);
    ASSERT_NE(nullptr, m_frame->m_pSelector);
    HWND list = ::GetDlgItem(m_frame->m_pSelector->m_hWnd, CWinSelector::kListId);
    auto deleteRow = [&](const char* name, int answer) {
        const std::string row = kmtest::Lower(Path(name));
        ::SendMessageA(list, LB_SELECTSTRING, static_cast<WPARAM>(-1),
                       reinterpret_cast<LPARAM>(row.c_str()));
        m_boxes.Queue({answer});
        ::SendMessageA(list, WM_KEYDOWN, VK_DELETE, 0);
        kmtest::PumpUntilIdle();
    };
    struct Step {
        std::function<void()> action;
        std::vector<std::string> rows;
    } steps[] = {
        {[] {}, {"b.txt", "c.txt", "d.txt*"}},
        {[&] {
             m_boxes.Queue(IDOK, [](HWND box) { ::SetDlgItemTextA(box, edt1, "a.txt"); });
             Command(ID_FILE_SAVEAS);
         },
         {"a.txt*", "b.txt", "c.txt"}},
        {[&] {
             ::SendMessageA(::GetDlgItem(ChildByCaption(FullLower("b.txt")), IDC_EDIT),
                            EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>("x"));
             deleteRow("b.txt", IDCANCEL);
         },
         {"a.txt", "b.txt*", "c.txt"}},
        {[&] { deleteRow("b.txt", IDNO); }, {"a.txt*", "c.txt"}},
        {[&] { ::PostMessageA(m_frameWnd, WM_KEYDOWN, VK_F11, 0); }, {"a.txt*", "c.txt"}},
    };
    for (const Step& step : steps) {
        step.action();
        kmtest::PumpUntilIdle();
        EXPECT_EQ(step.rows, Rows(list));
    }
    EXPECT_EQ(3u, m_boxes.Boxes().size()); // Save As, and the question twice
    EXPECT_EQ(list,
              ::GetDlgItem(m_frame->m_pSelector->m_hWnd, CWinSelector::kListId)); // F11: the same
    ::SendMessageA(m_frame->m_pSelector->m_hWnd, WM_CLOSE, 0, 0);
    EXPECT_EQ(nullptr, m_frame->m_pSelector);
}

} // namespace
