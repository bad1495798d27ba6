// The program's file dialog, the platform's own with the program's
// template: the Read Only and View in Hex interlock, and the line ends of
// Save As, from the file's to the chosen ones.
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "edit/KmFileDialog.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

#include <dlgs.h>
#include <map>

using namespace kmtest;

namespace
{

// While it lives, the file dialog that becomes active gets a name and the
// clicks, before the kit's answerer presses the queued button. It notes
// the title and how the program's own buttons stood: 0 hidden, 1 shown,
// 2 shown and on.
class DialogDriver
{
  public:
    DialogDriver(const char* name, std::vector<int> clicks) : m_name(name), m_clicks(clicks)
    {
        g_driver = this;
        m_hook = ::SetWindowsHookExA(WH_CBT, Hook, nullptr, ::GetCurrentThreadId());
    }
    ~DialogDriver() { ::UnhookWindowsHookEx(m_hook); }

    std::string m_title;
    std::map<int, int> m_states;

  private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam)
    {
        HWND dialog = reinterpret_cast<HWND>(wParam);
        if (code == HCBT_ACTIVATE && ::GetDlgItem(dialog, edt1) && g_driver->m_title.empty())
            g_driver->Drive(dialog);
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }
    void Drive(HWND dialog)
    {
        m_title = WindowText(dialog);
        for (int id :
             {IDC_VIEWHEX, IDC_FORMATGROUP, IDC_FORMAT_DOS, IDC_FORMAT_UNIX, IDC_FORMAT_MAC}) {
            HWND item = ::GetDlgItem(dialog, id);
            const bool shown = item && (::GetWindowLongA(item, GWL_STYLE) & WS_VISIBLE);
            m_states[id] = shown ? 1 + (::IsDlgButtonChecked(dialog, id) == BST_CHECKED) : 0;
        }
        ::SetDlgItemTextA(dialog, edt1, m_name);
        for (int id : m_clicks)
            ::PostMessageA(::GetDlgItem(dialog, id), BM_CLICK, 0, 0);
    }

    static DialogDriver* g_driver;
    HHOOK m_hook;
    const char* m_name;
    std::vector<int> m_clicks;
};
DialogDriver* DialogDriver::g_driver = nullptr;

class FileDialogTest : public FrameTest
{
  protected:
    void SetUp() override
    {
        FrameTest::SetUp();
        ASSERT_TRUE(Start());
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
        DialogDriver driver("a.c", row.clicks);
        m_boxes.Queue({IDOK});
        ASSERT_EQ(IDOK, dialog.DoModal());
        EXPECT_EQ("Open", driver.m_title);
        EXPECT_EQ((std::map<int, int>{{IDC_VIEWHEX, 1},
                                      {IDC_FORMATGROUP, 0},
                                      {IDC_FORMAT_DOS, 0},
                                      {IDC_FORMAT_UNIX, 0},
                                      {IDC_FORMAT_MAC, 0}}),
                  driver.m_states);
        EXPECT_EQ(row.readOnly, dialog.m_readOnly);
        EXPECT_EQ(row.hex, dialog.m_hex);
        ASSERT_EQ(1u, dialog.GetPathNames().size());
        EXPECT_EQ(FullLower("a.c"), Lower(dialog.GetPathNames()[0].c_str()));
    }
}

TEST_F(FileDialogTest, SaveAsOfAUnixFileStartsOnUnixAndWritesTheLineEndsChosen)
{
    Write("unix.c", "one\ntwo\n");
    ASSERT_NE(nullptr, m_frame->OpenFile(Path("unix.c").c_str(), false, false));
    DialogDriver driver("mac.c", {IDC_FORMAT_MAC});
    m_boxes.Queue({IDOK});
    Command(ID_FILE_SAVEAS);
    EXPECT_EQ("Save As", driver.m_title);
    EXPECT_EQ((std::map<int, int>{{IDC_VIEWHEX, 0},
                                  {IDC_FORMATGROUP, 1},
                                  {IDC_FORMAT_DOS, 1},
                                  {IDC_FORMAT_UNIX, 2},
                                  {IDC_FORMAT_MAC, 1}}),
              driver.m_states);
    EXPECT_EQ("one\rtwo\r", Read("mac.c"));
    EXPECT_EQ(FullLower("mac.c"), WindowText(m_frame->m_pActiveChild->m_hWnd));
}

// A multiple selection comes as a directory and names, or as one path.
TEST_F(FileDialogTest, ASelectionOfSeveralNamesGivesTheirPaths)
{
    const struct {
        const char* chosen;
        std::vector<std::string> paths;
    } rows[] = {
        {"c:\\src\\a.c", {"c:\\src\\a.c"}},
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
