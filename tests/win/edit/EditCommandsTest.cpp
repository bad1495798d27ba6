// The editor's own commands through the frame: transpose, line shifts, case
// changes, the clipboard's append forms, Match Brace, Goto Line and the
// window's switches, read back from the control, the clipboard and the
// status bar.
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "edit/KmFileEdit.h"
#include "resources/KmIds.h"
#include "support/EditWindow.h"
#include "ui/StatusBar.h"

using namespace kmtest;

namespace
{

struct CommandCase {
    const char* what;
    UINT id;
    const char* text;
    long start, end;
    const char* expected;
    long expectedStart, expectedEnd;
};

class EditCommandsTest : public EditWindowTest
{
  protected:
    void Run(const CommandCase& c)
    {
        SCOPED_TRACE(c.what);
        SetText(c.text);
        Select(c.start, c.end);
        Command(c.id);
        EXPECT_EQ(c.expected, Text());
        EXPECT_EQ(std::make_pair(c.expectedStart, c.expectedEnd), Selection());
    }
};

// Transpose swaps characters and lines, the shifts rewrite the indent of
// every line, the case commands keep the selection or walk on.
TEST_F(EditCommandsTest, TransposeShiftAndCaseCommands)
{
    const CommandCase cases[] = {
        {"two characters", ID_EDIT_TRANSPOSE, "abc", 1, 1, "bac", 1, 1},
        {"line 2 at column 0", ID_EDIT_TRANSPOSE, "one\r\ntwo", 5, 5, "two\r\none\r\n", 5, 5},
        {"at a line's end the next line moves up", ID_EDIT_TRANSPOSE, "one\r\ntwo\r\nthree", 3, 3,
         "two\r\none\r\nthree", 5, 5},
        {"the start of the text", ID_EDIT_TRANSPOSE, "abc", 0, 0, "abc", 0, 0},
        {"the end of the text", ID_EDIT_TRANSPOSE, "abc", 3, 3, "abc", 3, 3},
        {"a selection", ID_EDIT_TRANSPOSE, "abc", 1, 2, "abc", 1, 2},
        {"three spaces left", ID_EDIT_SHIFTLEFT, "   x", 3, 3, "x", 0, 0},
        {"a blank line right", ID_EDIT_SHIFTRIGHT, "", 0, 0, "    ", 4, 4},
        {"spaces become a tab", ID_EDIT_SHIFTRIGHT, "    x", 5, 5, "\tx", 2, 2},
        {"left leaves lines without indent", ID_EDIT_SHIFTLEFT, "x\r\n\ty", 0, 5, "x\r\n    y", 0,
         8},
        {"a selection ending at a line start takes it in", ID_EDIT_SHIFTRIGHT, "a\r\nb", 0, 3,
         "    a\r\n    b", 4, 11},
        {"nothing to shift", ID_EDIT_SHIFTLEFT, "x\r\ny", 1, 4, "x\r\ny", 1, 4},
        {"upper", ID_EDIT_UPPERCASE, "aBc d", 0, 3, "ABC d", 0, 3},
        {"lower", ID_EDIT_LOWERCASE, "aBc d", 0, 3, "abc d", 0, 3},
        {"toggle", ID_EDIT_TOGGLECASE, "aBc d", 0, 3, "AbC d", 0, 3},
        {"capitalise two words", ID_EDIT_CAPITALIZE, "hello WORLD", 0, 11, "Hello world", 0, 11},
        {"the caret's character, then on", ID_EDIT_UPPERCASE, "abc", 1, 1, "aBc", 2, 2},
        {"toggle at a line end", ID_EDIT_TOGGLECASE, "ab\r\ncd", 2, 2, "ab\r\ncd", 3, 3},
    };
    for (const CommandCase& c : cases)
        Run(c);
}

TEST_F(EditCommandsTest, AppendFormsConcatenateOnTheClipboard)
{
    SetText("alpha beta");
    SetClipboardText(nullptr);
    Select(0, 5);
    Command(ID_EDIT_CUTAPPEND);
    EXPECT_EQ("alpha", ClipboardText()) << "onto an empty clipboard";
    EXPECT_EQ(" beta", Text());
    Select(1, 5);
    Command(ID_EDIT_COPYAPPEND);
    EXPECT_EQ("alphabeta", ClipboardText());
    EXPECT_EQ(" beta", Text());
    Select(2, 2);
    Command(ID_EDIT_COPYAPPEND);
    EXPECT_EQ("alphabeta", ClipboardText()) << "nothing selected: a beep only";
}

TEST_F(EditCommandsTest, MatchBraceFindsThePartnerBothWays)
{
    SetText("a { b [ c ] } d");
    struct {
        long caret;
        long partner; // -1: not found
    } const cases[] = {{2, 12}, {13, 2}, {6, 10}, {0, -1}, {4, -1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.caret);
        Select(c.caret, c.caret);
        Command(ID_SEARCH_MATCHBRACE);
        if (c.partner < 0)
            EXPECT_EQ(std::make_pair(c.caret, c.caret), Selection());
        else
            EXPECT_EQ(std::make_pair(c.partner, c.partner + 1), Selection());
    }
}

TEST_F(EditCommandsTest, GotoLineProposesWhereTheLastJumpCameFrom)
{
    std::string text;
    for (int i = 0; i < 120; ++i)
        text += "text\r\n";
    SetText(text, 4 * 6);
    ::SendMessageA(m_editor->m_hWnd, WM_KM_GOTOPOS, 1, 100);
    m_boxes.Queue({IDOK});
    Command(ID_SEARCH_GOTOLINE);
    ASSERT_EQ(1u, m_boxes.Boxes().size());
    EXPECT_EQ("Goto Line", m_boxes.Boxes()[0].caption);
    EXPECT_EQ("5", m_boxes.Boxes()[0].field);
    EXPECT_EQ(4 * 6, Selection().second) << "Goto with the proposal went back";
    m_boxes.Queue({IDCANCEL});
    Select(0, 0);
    Command(ID_SEARCH_GOTOLINE);
    EXPECT_EQ(0, Selection().second);
}

TEST_F(EditCommandsTest, SwitchesFlipTheirFlagsInStep)
{
    struct {
        UINT id;
        unsigned long before, after;
    } const cases[] = {
        {ID_SET_ALIGN, 0, CF_ALIGN},
        {ID_SET_INDENT, CF_ALIGN, CF_ALIGN | CF_BLOCKINDENT},
        {ID_SET_ALIGN, CF_ALIGN | CF_BLOCKINDENT, 0}, // Block Indent goes with it
        {ID_SET_INDENT, 0, CF_ALIGN | CF_BLOCKINDENT},
        {ID_SET_INDENT, CF_ALIGN | CF_BLOCKINDENT, CF_ALIGN},
        {ID_SET_INSERT, 0, CF_OVERTYPE},
        {ID_SET_READONLY, 0, CF_READONLY},
        {ID_SET_CLEAN, CF_MODIFIED, 0},
    };
    const unsigned long mask = CF_ALIGN | CF_BLOCKINDENT | CF_OVERTYPE | CF_READONLY | CF_MODIFIED;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.id);
        m_editor->m_flags = (m_editor->m_flags & ~mask) | c.before;
        Command(c.id);
        EXPECT_EQ(c.after, m_editor->m_flags & mask);
    }
    EXPECT_NE(0, ::GetWindowLongA(m_edit, GWL_STYLE) & ES_READONLY);
}

} // namespace
