// The compare and the extraction through their real dialogs, into logs;
// the Cancel of a long job, and Yield with nothing and with a quit queued.
#include "app/KmApp.h"
#include "app/MenuRules.h"
#include "edit/KmLog.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"
#include "tools/YieldDialog.h"

using namespace kmtest;

namespace
{

class CompareExtractTest : public FrameTest
{
  protected:
    void SetUp() override
    {
        FrameTest::SetUp();
        ASSERT_TRUE(Start());
    }
    // The two files for the compare's dialog, and OK.
    void QueueCompare(const char* a, const char* b)
    {
        m_boxes.Queue(IDOK, [=](HWND dialog) {
            ::SetDlgItemTextA(dialog, IDC_COMPARE_FIRST, a);
            ::SetDlgItemTextA(dialog, IDC_COMPARE_SECOND, b);
        });
    }
    // The text of the log with this caption, and whether it is clean.
    std::string LogText(const std::string& caption, bool* clean = nullptr)
    {
        HWND log = ChildByCaption(caption);
        if (clean && log)
            *clean = !(KmChildOf(log)->m_flags & CF_MODIFIED);
        return log ? EditBlock(::GetDlgItem(log, IDC_EDIT)) : "<none>";
    }
};

TEST_F(CompareExtractTest, CompareListsTheDifferencesIntoACleanLogThatLeadsNowhere)
{
    Write("a.c", "1\n2\n3\n4\n5\n6\n7\n8\n");
    Write("b.c", "1\n2\n3\n4\nX\n6\n7\n8\n");
    QueueCompare("a.c", "b.c");
    m_boxes.Queue({BoxAnswerer::kLeaveOpen}); // the progress dialog
    Command(ID_TOOL_COMPARE);
    bool clean = false;
    EXPECT_EQ("5c5\r\n< 5\r\n---\r\n> X\r\n",
              LogText("COMPARE " + FullLower("a.c") + " " + FullLower("b.c"), &clean));
    EXPECT_TRUE(clean);
    EXPECT_TRUE(Grayed(OpenPopup(POPUP_SEARCH), ID_SEARCH_GOTOLINE));
    EXPECT_TRUE(::IsWindowEnabled(m_frameWnd));
}

// The Cancel of the progress dialog reaches the job at its first yield:
// the log keeps what was written, and the status bar tells.
TEST_F(CompareExtractTest, CancelEndsTheCompareWithWhatWasWritten)
{
    std::string a, b;
    for (int i = 0; i < 5000; ++i)
        a += "a" + std::to_string(i) + "\n", b += "b" + std::to_string(i) + "\n";
    Write("a.c", a);
    Write("b.c", b);
    QueueCompare("a.c", "b.c");
    m_boxes.Queue({IDCANCEL}); // the progress dialog's
    Command(ID_TOOL_COMPARE);
    ASSERT_EQ(2u, m_boxes.Boxes().size());
    EXPECT_EQ("C", m_boxes.Boxes()[1].buttons); // the progress dialog
    EXPECT_EQ("", LogText("COMPARE " + FullLower("a.c") + " " + FullLower("b.c")));
    EXPECT_EQ("Operation cancelled!", WindowText(theApp.statusBar.GetHwnd()));
    EXPECT_TRUE(::IsWindowEnabled(m_frameWnd));
}

TEST_F(CompareExtractTest, ExtractListsEveryFileAndReportsAMissingOne)
{
    Write("one.bin", std::string("\x01\x02", 2) + "hello world" + std::string(1, '\0') + "abc");
    Write("two.bin", std::string(26, '\x7f') + "four");
    m_boxes.Queue(IDOK, [](HWND dialog) {
        ::SetDlgItemTextA(dialog, IDC_EXTRACT_FILES, "two.bin absent.bin one.bin");
    });
    // A name that matches nothing stays as typed, and sorts before the full paths.
    m_boxes.Queue({BoxAnswerer::kLeaveOpen, IDOK}); // the progress, the missing file's box
    Command(ID_TOOL_EXTRACTSTRINGS);
    ASSERT_EQ(3u, m_boxes.Boxes().size());
    EXPECT_NE(std::string::npos, m_boxes.Boxes()[2].text.find("absent.bin"));
    bool clean = false;
    EXPECT_EQ("one.bin(0x0002): hello world\r\ntwo.bin(0x001a): four\r\n",
              LogText("Extract Strings: [ -~][ -~][ -~][ -~]+", &clean));
    EXPECT_TRUE(clean);
}

TEST_F(CompareExtractTest, YieldServesTheQueueAndTakesAQuitAsCancel)
{
    CYieldDialog yield(0);
    m_boxes.Queue({BoxAnswerer::kLeaveOpen});
    ASSERT_TRUE(yield.ShowProgress(IDS_EXTRACTING, "x+"));
    EXPECT_FALSE(::IsWindowEnabled(m_frameWnd));
    EXPECT_EQ("Extracting Strings Matching\nx+", WindowText(::GetDlgItem(yield.m_hWnd, IDC_YIELD_TEXT)));
    EXPECT_EQ(1, yield.Yield()); // nothing queued: no wait
    ::PostQuitMessage(0);
    EXPECT_EQ(0, yield.Yield());
    MSG msg;
    EXPECT_FALSE(::PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE)); // swallowed
    yield.Close();
    EXPECT_TRUE(::IsWindowEnabled(m_frameWnd));

    CYieldDialog throwing(1);
    throwing.m_bCancelled = 1; // Cancel before the first yield: every yield throws
    EXPECT_THROW(throwing.Yield(), CYieldException);
    EXPECT_THROW(throwing.Yield(), CYieldException);
}

} // namespace
