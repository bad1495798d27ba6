// The editor's control under its subclass: typing in overtype and with the
// indentation switches, the smart Home, double clicks, the margin's clicks,
// word motions and Goto Line, driven by real messages and read back.
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/Settings.h"
#include "edit/KmFileEdit.h"
#include "resources/KmIds.h"
#include "support/EditWindow.h"

using namespace kmtest;

namespace
{

using EditControlTest = EditWindowTest;

struct TypingCase {
    const char* what;
    unsigned long flags;
    const char* text;
    long caret;
    const char* typed;
    const char* expected;
    long expectedCaret;
};

TEST_F(EditControlTest, TypingFollowsTheWindowsSwitches)
{
    const TypingCase cases[] = {
        {"overtype replaces", CF_OVERTYPE, "ab\r\ncd", 0, "X", "Xb\r\ncd", 1},
        {"overtype at a line end inserts", CF_OVERTYPE, "ab\r\ncd", 2, "X", "abX\r\ncd", 3},
        {"overtype at the end appends", CF_OVERTYPE, "ab", 2, "X", "abX", 3},
        {"a tab in overtype is inserted", CF_OVERTYPE, "ab", 0, "\t", "\tab", 1},
        {"enter without align", 0, "    x", 5, "\r", "    x\r\n", 7},
        {"enter keeps the indent", CF_ALIGN, "    x", 5, "\r", "    x\r\n    ", 11},
        {"inside the indent", CF_ALIGN, "          x", 2, "\r", "  \r\n\t  x", 7},
        {"after an open brace", CF_ALIGN | CF_BLOCKINDENT, "if (x) {", 8, "\r", "if (x) {\r\n    ",
         14},
    };
    for (const TypingCase& c : cases) {
        SCOPED_TRACE(c.what);
        m_editor->m_flags =
            (m_editor->m_flags & ~(CF_OVERTYPE | CF_ALIGN | CF_BLOCKINDENT)) | c.flags;
        SetText(c.text, c.caret);
        Type(c.typed);
        EXPECT_EQ(c.expected, Text());
        EXPECT_EQ(c.expectedCaret, Selection().second);
    }
}

TEST_F(EditControlTest, HomeAlternatesBetweenTextAndColumnZero)
{
    SetText("x\r\n   abc", 8);
    for (long expected : {6L, 3L, 6L}) {
        Key(VK_HOME);
        EXPECT_EQ(std::make_pair(expected, expected), Selection());
    }
    Select(1, 1);
    Key(VK_HOME);
    EXPECT_EQ(0, Selection().second) << "a line without indent stays at column 0";
    Key(VK_HOME);
    EXPECT_EQ(0, Selection().second);
}

TEST_F(EditControlTest, ControlHomeAndEndRememberWhereTheCaretWas)
{
    SetText("one\r\ntwo\r\nthree", 6);
    Key(VK_END, true);
    EXPECT_EQ(6u, m_editor->m_edit.m_lastPos);
    EXPECT_EQ(15, Selection().second);
    Key(VK_HOME, true);
    EXPECT_EQ(15u, m_editor->m_edit.m_lastPos);
    EXPECT_EQ(0, Selection().second);
}

TEST_F(EditControlTest, DoubleClickSelectsAWordByTheWordRule)
{
    struct {
        long offset, start, end;
    } const cases[] = {
        {1, 0, 4}, // inside "a_b1"
        {5, 5, 6}, // a brace is a word of one
        {8, 8, 8}, // a CR is none
    };
    SetText("a_b1 {cd\r\nx");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.offset);
        Select(c.offset, c.offset);
        ::SendMessageA(m_edit, WM_LBUTTONDBLCLK, MK_LBUTTON, 0);
        EXPECT_EQ(std::make_pair(c.start, c.end), Selection());
    }
}

TEST_F(EditControlTest, MarginClicksSelectLinesAndEverything)
{
    SetText("one\r\ntwo\r\nthree", 6);
    ::SendMessageA(m_editor->m_hWnd, WM_LBUTTONDBLCLK, 0, MAKELPARAM(2, 2));
    EXPECT_EQ(std::make_pair(5L, 10L), Selection());
    Select(12, 12);
    ::SendMessageA(m_editor->m_hWnd, WM_LBUTTONDBLCLK, 0, MAKELPARAM(2, 2));
    EXPECT_EQ(std::make_pair(10L, 15L), Selection()) << "the last line selects to the end";
    ::SendMessageA(m_editor->m_hWnd, WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL, MAKELPARAM(2, 2));
    EXPECT_EQ(std::make_pair(0L, 15L), Selection());
}

TEST_F(EditControlTest, WordMotionsMoveAndExtend)
{
    struct {
        UINT id;
        long start, end;
        long expectedStart, expectedEnd;
    } const cases[] = {
        {ID_EDIT_MOVEFWDSTART, 1, 1, 6, 6},   {ID_EDIT_SELFWDSTART, 1, 1, 1, 6},
        {ID_EDIT_MOVEFWDEND, 0, 0, 4, 4},     {ID_EDIT_SELFWDEND, 2, 2, 2, 4},
        {ID_EDIT_MOVEBACKSTART, 8, 8, 6, 6},  {ID_EDIT_SELBACKSTART, 8, 10, 6, 10},
        {ID_EDIT_MOVEFWDSTART, 9, 9, 14, 14}, // over the line end
    };
    SetText("word  next_1\r\nlast");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.id);
        Select(c.start, c.end);
        Command(c.id);
        EXPECT_EQ(std::make_pair(c.expectedStart, c.expectedEnd), Selection());
    }
}

TEST_F(EditControlTest, GotoLineClampsAndCentres)
{
    std::string text;
    for (int i = 1; i <= 200; ++i)
        text += "line " + std::to_string(i) + "\r\n";
    SetText(text, 30);
    struct {
        long line, column;
        long offset;
    } const cases[] = {
        {0, 1, 0},        // line 0 is the first
        {1, 0, 0},        // a column of 0 stands as it is
        {2, 3, 10},       // "line 2" starts at 8
        {500, 1, 1892},   // past the end: the last line, empty after the last CR LF
        {3, 20, 16 + 19}, // the column runs on into the next lines' offsets
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        ::SendMessageA(m_editor->m_hWnd, WM_KM_GOTOPOS, c.column, c.line);
        EXPECT_EQ(c.offset, Selection().second);
    }
    Select(30, 30);
    ::SendMessageA(m_editor->m_hWnd, WM_KM_GOTOPOS, 1, 100);
    EXPECT_EQ(30u, m_editor->m_edit.m_lastPos);
    const long first = static_cast<long>(::SendMessageA(m_edit, EM_GETFIRSTVISIBLELINE, 0, 0));
    RECT client;
    ::GetClientRect(m_edit, &client);
    const long visible = client.bottom / m_editor->m_edit.m_lineHeight;
    EXPECT_LT(first, 99);
    EXPECT_LT(99, first + visible - 1) << "line 100 is not left on the bottom row";
}

} // namespace
