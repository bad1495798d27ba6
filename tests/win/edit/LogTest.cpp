// The log window in the frame: references followed by the right button and
// Ctrl+G, lines without one, compare logs, appending, and no typing.
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "edit/KmLog.h"
#include "support/EditWindow.h"

using namespace kmtest;

namespace
{

class LogTest : public EditWindowTest
{
  protected:
    void MakeLog(int locate, const std::vector<const char*>& lines)
    {
        ASSERT_NE(nullptr, m_log = CKmLog::Create(CKmLog::ToolLogFlags(), locate));
        for (const char* line : lines)
            m_log->LogPrintf("%s\r\n", line);
        m_log->MarkClean();
        m_edit = m_log->m_edit.m_hWnd;
    }
    long At(long line) const
    {
        return static_cast<long>(::SendMessageA(m_edit, EM_LINEINDEX, line, 0));
    }
    // From the log in front: Ctrl+G at the line's start, or a right click
    // on it, wherever the caret was.
    void Jump(long line, bool byKey)
    {
        ::SendMessageA(MdiClient(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(m_log->m_hWnd), 0);
        if (byKey) {
            Select(At(line), At(line));
            return Key('G', true);
        }
        const LRESULT at = ::SendMessageA(m_edit, EM_POSFROMCHAR, At(line), 0);
        ::SendMessageA(m_edit, WM_RBUTTONDOWN, MK_RBUTTON,
                       MAKELPARAM(LOWORD(at) + 1, HIWORD(at) + 1));
        PumpUntilIdle();
    }

    CKmLog* m_log = nullptr;
};

// Each jump starts with the editor of sub in front, which made sub the
// current directory: a relative name is the log's directory's.
TEST_F(LogTest, EachFormOfReferenceOpensItsFileAtItsLineAndColumn)
{
    const struct {
        const char* line;
        const char* file;
        CaretPlace caret;
    } rows[] = {
        {"a.c(12): found", "a.c", {11, 0}},
        {"a.c (12): found", "a.c", {11, 0}},
        {"a.c(12,5): found", "a.c", {11, 4}},
        {"sub\\b.c(3): found", "sub\\b.c", {2, 0}},
        {"in my project path\\D.c(4): cut at the last space", "path\\d.c", {3, 0}},
    };
    std::string text;
    while (text.size() < 240)
        text += "0123456789\r\n";
    for (const char* dir : {"sub", "path"})
        ::CreateDirectoryA(Path(dir).c_str(), nullptr);
    for (const char* file : {"a.c", "sub\\b.c", "path\\d.c"})
        Write(file, text);
    MakeLog(1, {rows[0].line, rows[1].line, rows[2].line, rows[3].line, rows[4].line});
    CKmChild* other = m_frame->OpenFile(Path("sub\\b.c").c_str(), false, false);
    ASSERT_NE(nullptr, other);
    for (long line = 0; line < 5; ++line) {
        const auto& row = rows[line];
        SCOPED_TRACE(row.line);
        ::SendMessageA(MdiClient(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(other->m_hWnd), 0);
        char current[MAX_PATH];
        ::GetCurrentDirectoryA(MAX_PATH, current);
        ASSERT_EQ(FullLower("sub"), Lower(current));
        Jump(line, line % 2 != 0);
        HWND opened = ChildByCaption(FullLower(row.file));
        ASSERT_EQ(opened, m_frame->m_pActiveChild->m_hWnd);
        EXPECT_EQ(row.caret, CaretOf(opened));
        const long mark = static_cast<long>(std::string(row.line).find(')')) + 1;
        EXPECT_EQ(std::make_pair(At(line), At(line) + mark), Selection()) << "the jump's mark";
    }
}

// Goto Line asks for no number in a log.
TEST_F(LogTest, LinesWithoutAPlaceAndCompareLogsOpenNothing)
{
    Write("a.c", "one\r\ntwo\r\n");
    const struct {
        int locate;
        std::vector<const char*> lines;
    } rows[] = {
        {1, {"", "no reference", "word(x) then a.c(2)", "a.c(0): zero", "a.c(2"}},
        {0, {"d1", "a.c(2): found"}},
    };
    for (const auto& row : rows) {
        MakeLog(row.locate, row.lines);
        const size_t children = Children().size();
        for (long line = 0; line < static_cast<long>(row.lines.size()); ++line)
            for (bool byKey : {false, true})
                Jump(line, byKey);
        EXPECT_EQ(children, Children().size());
        EXPECT_EQ(row.locate == 0, Grayed(OpenPopup(POPUP_SEARCH), ID_SEARCH_GOTOLINE));
    }
}

TEST_F(LogTest, OnlyLogPrintfWritesUpTo511CharactersAndMarkCleanForgetsThem)
{
    MakeLog(1, {});
    EXPECT_EQ(12, m_log->LogPrintf("%s(%d): %s\r\n", "a.c", 12, "x"));
    EXPECT_EQ("", Text()); // gathered for a moment after the last
    m_log->Flush();
    Select(0, 5);
    Type("xy\r\t\b");
    for (UINT key : {VK_DELETE, VK_BACK, VK_RETURN})
        Key(key);
    for (UINT id :
         {ID_EDIT_UNDO, ID_EDIT_CUT, ID_EDIT_PASTE, ID_EDIT_SHIFTLEFT, ID_EDIT_SHIFTRIGHT})
        Command(id);
    m_log->Flush(); // the next line comes within the delay
    EXPECT_EQ(511, m_log->LogPrintf("%s", std::string(600, 'y').c_str()));
    EXPECT_EQ("a.c(12): x\r\n", Text());
    const std::string text = "a.c(12): x\r\n" + std::string(511, 'y');
    EXPECT_TRUE(PumpUntil([&] { return Text() == text; })); // by the timer
    EXPECT_EQ(std::make_pair(523L, 523L), Selection());
    EXPECT_TRUE(m_log->m_flags & CF_MODIFIED);
    m_log->MarkClean();
    EXPECT_FALSE(m_log->m_flags & CF_MODIFIED);
    m_log->m_outOfSpace = 1;
    EXPECT_EQ(-1, m_log->LogPrintf("more\r\n"));
    EXPECT_EQ(text, Text());
}

} // namespace
