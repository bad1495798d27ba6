// The platform's file dialog with the program's template: Read Only and View
// in Hex, the line ends of Save As, and a multiple selection's paths.
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "edit/KmFileDialog.h"
#include "support/WinTestSupport.h"

#include <dlgs.h>

using namespace kmtest;

namespace
{

// The next file dialog gets a name and clicks before the kit's answerer
// presses OK; seen is its title and each of the program's own buttons,
// View in Hex to Mac, as 0 hidden, 1 shown or 2 on.
struct Driven {
    const char* name;
    std::vector<int> clicks;
    std::string seen;
} g_next;
HHOOK g_hook;

LRESULT CALLBACK Drive(int code, WPARAM wParam, LPARAM lParam)
{
    HWND dialog = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && ::GetDlgItem(dialog, edt1) && g_next.seen.empty()) {
        g_next.seen = WindowText(dialog) + " ";
        for (int id = IDC_VIEWHEX; id <= IDC_FORMAT_MAC; ++id) {
            HWND item = ::GetDlgItem(dialog, id);
            const bool shown = item && (::GetWindowLongA(item, GWL_STYLE) & WS_VISIBLE);
            g_next.seen += !shown ? '0' : ::IsDlgButtonChecked(dialog, id) ? '2' : '1';
        }
        ::SetDlgItemTextA(dialog, edt1, g_next.name);
        for (int id : g_next.clicks)
            ::PostMessageA(::GetDlgItem(dialog, id), BM_CLICK, 0, 0);
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

class FileDialogTest : public FrameTest
{
  protected:
    void SetUp() override
    {
        FrameTest::SetUp();
        ASSERT_TRUE(Start());
        g_hook = ::SetWindowsHookExA(WH_CBT, Drive, nullptr, ::GetCurrentThreadId());
    }
    void TearDown() override
    {
        ::UnhookWindowsHookEx(g_hook);
        FrameTest::TearDown();
    }
    void DriveNext(const char* name, std::vector<int> clicks)
    {
        g_next = {name, clicks, ""};
        m_boxes.Queue({IDOK});
    }
};

TEST_F(FileDialogTest, ViewInHexComesWithReadOnlyAndGoesWithIt)
{
    Write("a.c", "x\r\n");
    const struct {
        std::vector<int> clicks;
        int readOnly, hex;
    } rows[] = {
        {{chx1}, 1, 0},
        {{IDC_VIEWHEX}, 1, 1},
        {{chx1, IDC_VIEWHEX, chx1}, 0, 0},
        {{IDC_VIEWHEX, IDC_VIEWHEX}, 1, 0},
    };
    for (const auto& row : rows) {
        CKmFileDialog dialog(true, nullptr, nullptr, OFN_ALLOWMULTISELECT | KFD_SHOWHEX);
        DriveNext("a.c", row.clicks);
        ASSERT_EQ(IDOK, dialog.DoModal());
        EXPECT_EQ("Open 10000", g_next.seen);
        EXPECT_EQ(row.readOnly, dialog.m_readOnly);
        EXPECT_EQ(row.hex, dialog.m_hex);
    }
}

TEST_F(FileDialogTest, SaveAsOfAUnixFileStartsOnUnixAndWritesTheLineEndsChosen)
{
    Write("unix.c", "one\ntwo\n");
    ASSERT_NE(nullptr, m_frame->OpenFile(Path("unix.c").c_str(), false, false));
    DriveNext("mac.c", {IDC_FORMAT_MAC});
    Command(ID_FILE_SAVEAS);
    EXPECT_EQ("Save As 01121", g_next.seen);
    EXPECT_EQ("one\rtwo\r", Read("mac.c"));
    EXPECT_EQ(FullLower("mac.c"), WindowText(m_frame->m_pActiveChild->m_hWnd));
}

TEST_F(FileDialogTest, ASelectionOfSeveralNamesGivesTheirPaths)
{
    const struct {
        const char* chosen;
        std::vector<std::string> paths;
    } rows[] = {
        {"c:\\src a.c b.c", {"c:\\src\\a.c", "c:\\src\\b.c"}},
        {"c:\\ a.c", {"c:\\a.c"}},
    };
    for (const auto& row : rows) {
        CKmFileDialog dialog(true, nullptr, row.chosen, OFN_ALLOWMULTISELECT);
        std::vector<std::string> paths;
        for (const CString& path : dialog.GetPathNames())
            paths.push_back(path.c_str());
        EXPECT_EQ(row.paths, paths);
    }
}

} // namespace
