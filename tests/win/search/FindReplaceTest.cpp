// Find and replace in an editor window: Find Next and Previous with their
// restart questions, the steps over line ends, the selection as the seed,
// Replace All, and the modeless dialog driven through its own buttons.
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "edit/KmFileEdit.h"
#include "resources/KmIds.h"
#include "search/FindDialog.h"
#include "search/SearchRequest.h"
#include "support/EditWindow.h"

#include <dlgs.h>

using namespace kmtest;

namespace
{

class FindReplaceTest : public EditWindowTest
{
  protected:
    void SetPattern(const char* find, const char* replace = "")
    {
        g_searchRequest.m_strFind = find;
        g_searchRequest.m_strReplace = replace;
        g_searchRequest.m_bRecompile = 1;
    }
    void FindNext(long start, long end)
    {
        Select(start, end);
        Command(ID_SEARCH_FINDNEXT);
    }
    // Presses a button of the open find dialog after filling its fields.
    void Press(int button, const char* find, const char* replace = nullptr)
    {
        ASSERT_NE(nullptr, g_findDialog);
        HWND dialog = g_findDialog->m_hWnd;
        // Only a changed text counts as a new pattern.
        if (WindowText(::GetDlgItem(dialog, edt1)) != find)
            ::SetDlgItemTextA(dialog, edt1, find);
        if (replace)
            ::SetDlgItemTextA(dialog, edt2, replace);
        ::SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                       reinterpret_cast<LPARAM>(::GetDlgItem(dialog, button)));
        PumpUntilIdle();
    }
};

// Find Previous from the start offers to go on from the end.
TEST_F(FindReplaceTest, FindNextAndPreviousAskToRestartOnlyWhenTheStartWasNotTheEnd)
{
    SetText("ab x ab");
    SetPattern("ab");
    FindNext(0, 0);
    EXPECT_EQ(std::make_pair(0L, 2L), Selection());
    Command(ID_SEARCH_FINDNEXT);
    EXPECT_EQ(std::make_pair(5L, 7L), Selection());

    m_boxes.Queue({IDOK});
    Command(ID_SEARCH_FINDNEXT);
    EXPECT_EQ(std::make_pair(0L, 2L), Selection()) << "restarted from the start";
    m_boxes.Queue({IDCANCEL});
    FindNext(5, 7);
    EXPECT_EQ(std::make_pair(5L, 7L), Selection()) << "Cancel ends it silently";
    EXPECT_EQ((std::vector<std::string>{"Cannot find 'ab'\nRestart from start?",
                                        "Cannot find 'ab'\nRestart from start?"}),
              m_boxes.Texts());

    m_boxes.Clear();
    SetPattern("zz");
    m_boxes.Queue({IDOK});
    FindNext(0, 0);
    EXPECT_EQ(std::vector<std::string>{"Cannot find 'zz'"}, m_boxes.Texts())
        << "from the very start one pass, no question";

    m_boxes.Clear();
    SetPattern("ab");
    Select(0, 0);
    m_boxes.Queue({IDOK});
    Command(ID_SEARCH_FINDPREV);
    EXPECT_EQ(std::vector<std::string>{"Cannot find 'ab'\nRestart from end?"}, m_boxes.Texts());
    EXPECT_EQ(std::make_pair(5L, 7L), Selection());
    Command(ID_SEARCH_FINDPREV);
    EXPECT_EQ(std::make_pair(0L, 2L), Selection());
}

TEST_F(FindReplaceTest, FindNextTakesTheMatchedTextAsTheNextPattern)
{
    SetText("x1 x2 x1");
    SetPattern("x.");
    FindNext(0, 0);
    EXPECT_EQ(std::make_pair(0L, 2L), Selection());
    Command(ID_SEARCH_FINDNEXT);
    EXPECT_EQ("x1", std::string(g_searchRequest.m_strFind));
    EXPECT_EQ(std::make_pair(6L, 8L), Selection());
}

TEST_F(FindReplaceTest, LineAnchorsStepOverWhatTheyFound)
{
    SetText("a\r\nb\r\nc");
    SetPattern("$");
    Select(0, 0);
    for (long end : {1L, 4L, 7L}) {
        Command(ID_SEARCH_FINDNEXT);
        EXPECT_EQ(std::make_pair(end, end), Selection());
    }
    SetText("x\r\nx\r\ny");
    SetPattern("^x");
    FindNext(0, 1);
    EXPECT_EQ(std::make_pair(3L, 4L), Selection()) << "not the same line start again";
}

TEST_F(FindReplaceTest, OnlyASelectionWithinOneLineSeedsThePattern)
{
    SetText("alpha beta\r\nalpha");
    SetPattern("");
    FindNext(0, 5);
    EXPECT_EQ("alpha", std::string(g_searchRequest.m_strFind));
    EXPECT_EQ(std::make_pair(12L, 17L), Selection());

    SetPattern("");
    Select(6, 14);
    HMENU search = OpenPopup(2);
    EXPECT_TRUE(Grayed(search, ID_SEARCH_FINDNEXT)) << "a selection over a line end";
    m_boxes.Queue({IDCANCEL});
    Command(ID_SEARCH_FINDNEXT); // no pattern: the dialog instead
    EXPECT_EQ("", std::string(g_searchRequest.m_strFind));
    ASSERT_NE(nullptr, g_findDialog);
    EXPECT_EQ("Find", WindowText(g_findDialog->m_hWnd));
}

TEST_F(FindReplaceTest, ReplaceAllIsOneEditThatNeverRescansItsInsertions)
{
    struct {
        const char* text;
        const char* find;
        const char* replace;
        bool wholeWord;
        const char* expected;
    } const cases[] = {
        {"one\r\ntwo", "^", "> ", false, "> one\r\n> two"},
        {"aXa", "a", "aa", false, "aaXaa"},
        {"ab cd", "ab", "\\U&\\E!", false, "AB! cd"},
        {"ab cd", "\\(.\\)\\(.\\) ", "\\2\\1\\n", false, "ba\r\ncd"},
        {"a aa ba a_", "a+", "X", true, "X X ba a_"},
        {"line\r\nline", "$", ";", false, "line;\r\nline;"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.find);
        SetText(c.text);
        SetPattern(c.find, c.replace);
        g_searchRequest.m_bWholeWord = c.wholeWord;
        m_editor->ReplaceAll(&g_searchRequest);
        EXPECT_EQ(c.expected, Text());
        Command(ID_EDIT_UNDO);
        EXPECT_EQ(c.text, Text()) << "one Undo takes it all back";
    }
    EXPECT_TRUE(m_boxes.Boxes().empty());

    SetText("a a a");
    Select(2, 3);
    SetPattern("a", "X");
    g_searchRequest.m_bSelectionOnly = 1;
    m_editor->ReplaceAll(&g_searchRequest);
    EXPECT_EQ("a X a", Text());

    SetPattern("zz", "X");
    g_searchRequest.m_bSelectionOnly = 0;
    m_boxes.Queue({IDOK});
    m_editor->ReplaceAll(&g_searchRequest);
    EXPECT_EQ(std::vector<std::string>{"Cannot find 'zz'"}, m_boxes.Texts());
}

TEST_F(FindReplaceTest, BadPatternIsReportedAtEachTry)
{
    SetText("abc");
    SetPattern("\\(b");
    m_boxes.Queue({IDOK, IDOK});
    FindNext(0, 0);
    FindNext(0, 0);
    EXPECT_EQ((std::vector<std::string>{"Unmatched '\\('", "Unmatched '\\('"}), m_boxes.Texts());
    EXPECT_EQ(1, g_searchRequest.m_bRecompile);
}

TEST_F(FindReplaceTest, DialogButtonsFindAndReplaceInTheActiveWindow)
{
    SetText("one two one two");
    Command(ID_SEARCH_REPLACE);
    ASSERT_NE(nullptr, g_findDialog);
    EXPECT_EQ("Replace", WindowText(g_findDialog->m_hWnd));
    Press(IDOK, "two", "2");
    EXPECT_EQ(std::make_pair(4L, 7L), Selection());
    Press(psh1, "two", "2");
    EXPECT_EQ("one 2 one two", Text()) << "the present match, without moving on";
    EXPECT_EQ(std::make_pair(4L, 5L), Selection());
    Press(psh2, "one", "1");
    EXPECT_EQ("1 2 1 two", Text());

    Command(ID_SEARCH_FIND);
    EXPECT_EQ("Replace", WindowText(g_findDialog->m_hWnd)) << "the open dialog comes to the top";
    HWND dialog = g_findDialog->m_hWnd;
    RECT rect;
    ::GetWindowRect(dialog, &rect);
    ::SendMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    PumpUntilIdle();
    EXPECT_EQ(nullptr, g_findDialog);
    EXPECT_EQ(rect.right, g_searchRequest.m_ptDialog.x);
    EXPECT_EQ(rect.top, g_searchRequest.m_ptDialog.y);
}

TEST_F(FindReplaceTest, ReplaceNeedsAWritableWindowAndTheDialogGoesWithTheLastWindow)
{
    Command(ID_SET_READONLY);
    Command(ID_SEARCH_REPLACE);
    EXPECT_EQ(nullptr, g_findDialog);
    Command(ID_SEARCH_FIND);
    ASSERT_NE(nullptr, g_findDialog);
    HWND dialog = g_findDialog->m_hWnd;
    Command(ID_FILE_CLOSE);
    PumpUntilIdle();
    EXPECT_EQ(nullptr, g_findDialog);
    EXPECT_FALSE(::IsWindow(dialog));
    Command(ID_SEARCH_FIND);
    EXPECT_EQ(nullptr, g_findDialog) << "no window: only the alert";
}

} // namespace
