// The log window in the real frame: each form of reference followed to its
// file by the right button and by Ctrl+G, lines without one, a compare log,
// appending, and a log that takes no typing.
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "edit/KmLog.h"
#include "resources/KmIds.h"
#include "support/EditWindow.h"

using namespace kmtest;

namespace
{

class LogTest : public EditWindowTest
{
  protected:
    // A log of the lines in front of the editor of the kit, marked clean.
    void MakeLog(int locate, std::initializer_list<const char*> lines)
    {
        m_log = CKmLog::Create(CKmLog::ToolLogFlags(), locate);
        ASSERT_NE(nullptr, m_log);
        for (const char* line : lines)
            m_log->LogPrintf("%s\r\n", line);
        m_log->MarkClean();
        m_editor = m_log;
        m_edit = m_log->m_edit.m_hWnd;
        PumpUntilIdle();
    }
    long LineStart(long line) const
    {
        return static_cast<long>(::SendMessageA(m_edit, EM_LINEINDEX, line, 0));
    }
    // The user's right click on the first character of the line.
    void RightClick(long line)
    {
        const LRESULT at = ::SendMessageA(m_edit, EM_POSFROMCHAR, LineStart(line), 0);
        ::SendMessageA(m_edit, WM_RBUTTONDOWN, MK_RBUTTON,
                       MAKELPARAM(LOWORD(at) + 1, HIWORD(at) + 1));
        PumpUntilIdle();
    }

    CKmLog* m_log = nullptr;
};

// Every jump starts from another directory, made current by an editor in
// front: a relative name is the log's own directory's.
TEST_F(LogTest, EachFormOfReferenceOpensItsFileAtItsLineAndColumn)
{
    std::string lines;
    for (int i = 1; i <= 20; ++i)
        lines += "line " + std::to_string(i) + " of the file\r\n";
    for (const char* dir : {"sub", "path", "other"})
        ASSERT_TRUE(::CreateDirectoryA(Path(dir).c_str(), nullptr));
    for (const char* file : {"a.c", "sub\\b.c", "path\\d.c", "other\\c.c"})
        Write(file, lines);
    const struct {
        const char* line;
        const char* file;
        CaretPlace caret;
        bool byKey; // Ctrl+G, else the right button
    } rows[] = {
        {"a.c(12): found", "a.c", {11, 0}, false},
        {"a.c (12): found", "a.c", {11, 0}, true},
        {"a.c(12,5): found", "a.c", {11, 4}, false},
        {"sub\\b.c(3): found", "sub\\b.c", {2, 0}, true},
        {"in my project path\\D.c(4): cut at the last space", "path\\d.c", {3, 0}, false},
    };
    MakeLog(1, {rows[0].line, rows[1].line, rows[2].line, rows[3].line, rows[4].line});
    CKmChild* other = m_frame->OpenFile(Path("other\\c.c").c_str(), false, false);
    ASSERT_NE(nullptr, other);
    long line = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        ::SendMessageA(MdiClient(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(other->m_hWnd), 0);
        ::SendMessageA(MdiClient(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(m_log->m_hWnd), 0);
        if (row.byKey) {
            Select(LineStart(line), LineStart(line));
            Key('G', true);
        } else {
            RightClick(line);
        }
        HWND opened = ChildByCaption(FullLower(row.file));
        ASSERT_NE(nullptr, opened);
        EXPECT_EQ(opened, m_frame->m_pActiveChild->m_hWnd);
        EXPECT_EQ(row.caret, CaretOf(opened));
        const long mark = static_cast<long>(std::string(row.line).find(')')) + 1;
        EXPECT_EQ(std::make_pair(LineStart(line), LineStart(line) + mark), Selection());
        ++line;
    }
}

TEST_F(LogTest, LinesWithoutAPlaceOpenNothingAndLeaveTheCaretWhereTheClickPutIt)
{
    Write("a.c", "one\r\ntwo\r\nthree\r\n");
    MakeLog(1, {"", "no reference", "word(x) before a.c(3)", "a.c(0): zero", "a.c(3"});
    const size_t children = Children().size();
    for (long line = 0; line < 5; ++line) {
        RightClick(line);
        EXPECT_EQ(children, Children().size()) << line;
        EXPECT_EQ(std::make_pair(LineStart(line), LineStart(line)), Selection()) << line;
    }
}

TEST_F(LogTest, ACompareLogHasNoJumpsAndItsGotoLineIsGrey)
{
    Write("a.c", "one\r\ntwo\r\nthree\r\n");
    MakeLog(0, {"d1", "a.c(2): found"});
    const size_t children = Children().size();
    Select(5, 5);
    RightClick(1);
    Key('G', true); // neither a jump nor the Goto Line dialog
    EXPECT_EQ(children, Children().size());
    EXPECT_EQ(std::make_pair(5L, 5L), Selection());
    EXPECT_TRUE(Grayed(OpenPopup(POPUP_SEARCH), ID_SEARCH_GOTOLINE));
    m_log->m_bLocate = 1;
    EXPECT_FALSE(Grayed(OpenPopup(POPUP_SEARCH), ID_SEARCH_GOTOLINE));
    EXPECT_TRUE(Grayed(OpenPopup(POPUP_FILE), ID_FILE_SAVEAS));
    EXPECT_FALSE(Grayed(OpenPopup(POPUP_EDIT), ID_EDIT_COPY));
}

TEST_F(LogTest, LinesAppendAtTheEndCutAt511AndMarkCleanForgetsThem)
{
    MakeLog(1, {});
    m_log->SetTitleFmt(IDS_TITLE_GREP, "int x");
    EXPECT_EQ("GREP int x", WindowText(m_log->m_hWnd));
    EXPECT_EQ(12, m_log->LogPrintf("%s(%d): %s\r\n", "a.c", 12, "x"));
    Select(0, 3);
    EXPECT_EQ(511, m_log->LogPrintf("%s", std::string(600, 'y').c_str()));
    EXPECT_EQ(0, m_log->LogPrintf("%s", ""));
    const std::string text = "a.c(12): x\r\n" + std::string(511, 'y');
    EXPECT_EQ(text, Text());
    EXPECT_EQ(std::make_pair(523L, 523L), Selection());
    EXPECT_TRUE(m_log->m_flags & CF_MODIFIED);
    m_log->MarkClean();
    EXPECT_FALSE(m_log->m_flags & CF_MODIFIED);
    m_log->m_outOfSpace = 1;
    EXPECT_EQ(-1, m_log->LogPrintf("more\r\n"));
    EXPECT_EQ(text, Text());
}

TEST_F(LogTest, TypingAndEditCommandsLeaveTheTextAlone)
{
    MakeLog(1, {"a.c(12): found", "second"});
    const std::string text = Text();
    Select(0, 5);
    Type("xy\r\t\b");
    for (UINT key : {VK_DELETE, VK_BACK, VK_RETURN})
        Key(key);
    Key(VK_TAB, true);
    Key(VK_TAB, false, true);
    for (UINT id :
         {ID_EDIT_UNDO, ID_EDIT_CUT, ID_EDIT_PASTE, ID_EDIT_SHIFTLEFT, ID_EDIT_SHIFTRIGHT})
        Command(id);
    EXPECT_EQ(text, Text());
    EXPECT_FALSE(m_log->m_flags & CF_MODIFIED);
}

} // namespace
