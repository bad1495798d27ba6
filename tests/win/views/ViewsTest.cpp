// The text and hex views in the started frame: scrolling over many records,
// the keys, clicks and drags, copy, find across the hex view's blocks, and
// the paths that open a view.
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "edit/KmFileEdit.h"
#include "edit/KmLog.h"
#include "resources/KmIds.h"
#include "search/SearchRequest.h"
#include "support/WinTestSupport.h"
#include "views/HexFileView.h"
#include "views/TextFileView.h"

using namespace kmtest;

namespace
{

class ViewTest : public FrameTest
{
  protected:
    template <class View> View* Open(const std::string& bytes, bool hex, const char* name = "f")
    {
        Write(name, bytes);
        CKmChild* child = m_frame->OpenFile(Path(name).c_str(), true, hex);
        PumpUntilIdle();
        return dynamic_cast<View*>(child);
    }
    void Key(CFileView* view, UINT key, bool control = false, bool shift = false)
    {
        BYTE state[256];
        ::GetKeyboardState(state);
        state[VK_CONTROL] = control ? 0x80 : 0;
        state[VK_SHIFT] = shift ? 0x80 : 0;
        ::SetKeyboardState(state);
        view->PostMessage(WM_KEYDOWN, key, 1);
        PumpUntilIdle();
        state[VK_CONTROL] = state[VK_SHIFT] = 0;
        ::SetKeyboardState(state);
    }
    // A mouse message at a display column of a screen row of the view.
    void Mouse(CFileView* view, UINT message, int column, int row, WPARAM keys = MK_LBUTTON)
    {
        const int x = view->m_rcText.left + (column - view->m_nLeftCol) * view->m_nCharWidth;
        const int y = view->m_rcText.top + row * view->m_nLineHeight;
        view->SendMessage(message, keys, MAKELPARAM(x, y));
    }
    void Find(const char* pattern, UINT command = ID_SEARCH_FINDNEXT)
    {
        g_searchRequest.m_strFind = pattern;
        g_searchRequest.m_bRecompile = 1;
        Command(command);
    }
    static FilePos At(int32_t line, int32_t col)
    {
        FilePos pos;
        pos.line = line, pos.col = col;
        return pos;
    }
    static std::vector<int32_t> Place(const FilePos& pos)
    {
        return {pos.line, pos.col, pos.dispCol};
    }
    static uint32_t Offset(const FilePos& pos) { return uint32_t(pos.line) * 16 + pos.col; }
};

TEST_F(ViewTest, ThumbAndCtrlEndOverAHundredThousandRecords)
{
    ASSERT_TRUE(Start());
    std::string lines;
    for (int i = 0; i < 100000; ++i)
        lines += "r\n";
    CTextFileView* view = Open<CTextFileView>(lines, false);
    ASSERT_NE(nullptr, view);
    ASSERT_EQ(100000, view->m_pFile->m_nRecordCount);
    view->SendMessage(WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 700)); // only the released thumb
    view->SendMessage(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 500));
    EXPECT_EQ(50000, view->m_nTopLine);
    EXPECT_EQ(500, ::GetScrollPos(view->m_hWnd, SB_VERT));

    Key(view, VK_END, true);
    EXPECT_EQ((std::vector<int32_t>{100000, 0, 0}), Place(view->m_posCaret)); // the phantom row
    EXPECT_EQ(100000 - view->m_nLines + 1, view->m_nTopLine);
    Key(view, VK_DOWN);
    EXPECT_EQ(100000, view->m_posCaret.line);
    Key(view, VK_HOME, true);
    EXPECT_EQ((std::vector<int32_t>{0, 0, 0}), Place(view->m_posCaret));
    EXPECT_EQ(100000, view->m_posPrev.line);
    EXPECT_EQ(0, view->m_nTopLine);
    Key(view, VK_LEFT); // at the very start nothing moves
    EXPECT_EQ((std::vector<int32_t>{0, 0, 0}), Place(view->m_posCaret));

    // A drag below the text scrolls slowly within a row of the edge, fast beyond.
    Mouse(view, WM_LBUTTONDOWN, 0, 0);
    for (const auto& [below, period] : {std::pair<int, UINT>{0, 300}, {2, 100}}) {
        const int32_t top = view->m_nTopLine;
        Mouse(view, WM_MOUSEMOVE, 0, view->m_nLines + below);
        EXPECT_EQ(period, view->m_nTimerPeriod);
        EXPECT_EQ(top + 1, view->m_nTopLine);
        EXPECT_EQ(view->m_nTopLine + view->m_nLines - 1, view->m_posCaret.line);
    }
    Mouse(view, WM_LBUTTONUP, 0, 0, 0);
    EXPECT_EQ(0u, view->m_nTimer);

    // Past 40,000 records the bar takes the quotient: 20,000 / 40, not 499.98.
    view = Open<CTextFileView>(lines.substr(0, 80002), false, "g");
    ASSERT_NE(nullptr, view);
    view->SendMessage(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 500));
    EXPECT_EQ(20000, view->m_nTopLine);
    EXPECT_EQ(500, ::GetScrollPos(view->m_hWnd, SB_VERT));
}

TEST_F(ViewTest, TabsLongLinesSmartHomeAndWords)
{
    ASSERT_TRUE(Start());
    CTextFileView* view =
        Open<CTextFileView>("\tab\n" + std::string(1000, 'x') + "\n  if (word_2 + 1)\n", false);
    ASSERT_NE(nullptr, view);
    Key(view, VK_RIGHT);
    EXPECT_EQ((std::vector<int32_t>{0, 1, 8}), Place(view->m_posCaret));
    Key(view, VK_HOME);
    Mouse(view, WM_LBUTTONDOWN, 3, 0); // on the tab's blank area
    Mouse(view, WM_LBUTTONUP, 3, 0, 0);
    EXPECT_EQ((std::vector<int32_t>{0, 1, 8}), Place(view->m_posCaret));

    Key(view, VK_DOWN);
    Key(view, VK_END);
    EXPECT_EQ((std::vector<int32_t>{1, 1000, 1000}), Place(view->m_posCaret));
    EXPECT_LE(view->m_nLeftCol, 1000);
    EXPECT_GT(view->m_nLeftCol + view->m_nCols, 1000);

    Key(view, VK_DOWN);
    std::vector<int32_t> homes;
    for (int i = 0; i < 3; ++i) {
        Key(view, VK_HOME);
        homes.push_back(view->m_posCaret.col);
    }
    EXPECT_EQ((std::vector<int32_t>{2, 0, 2}), homes);
    for (const auto& [col, from, to] : {std::tuple<int, int, int>{7, 6, 12}, {12, 12, 13}}) {
        view->SelectRange(At(2, col), At(2, col));
        view->SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(view->m_rcText.left + 1, 1));
        FilePos start, end;
        ASSERT_TRUE(view->GetOrderedSelection(start, end));
        EXPECT_EQ(std::make_pair(from, to), std::make_pair(start.col, end.col)) << col;
    }

    // The bar that is off stays off while the other one comes and goes;
    // turned on it reaches the longest line.
    ASSERT_EQ(0u, view->m_flags & CF_HSCROLL);
    Command(ID_SET_SHOWVSCROLL);
    Command(ID_SET_SHOWVSCROLL);
    EXPECT_EQ(0, ::GetWindowLongA(view->m_hWnd, GWL_STYLE) & WS_HSCROLL);
    Command(ID_SET_SHOWHSCROLL);
    int low = -1, high = -1;
    ::GetScrollRange(view->m_hWnd, SB_HORZ, &low, &high);
    EXPECT_EQ(std::make_pair(0, 1000), std::make_pair(low, high));
}

TEST_F(ViewTest, CopyJoinsLinesWithCrLfWhateverTheFileUses)
{
    ASSERT_TRUE(Start());
    CTextFileView* view = Open<CTextFileView>("one\ntwo\tx\nthree\nfour", false);
    ASSERT_NE(nullptr, view);
    EXPECT_TRUE(Grayed(OpenPopup(1), ID_EDIT_COPY));
    const struct {
        FilePos anchor, caret;
        UINT command;
        const char* expected;
    } rows[] = {
        {At(3, 2), At(1, 1), ID_EDIT_COPY, "wo\tx\r\nthree\r\nfo"},
        {At(0, 0), At(0, 2), ID_EDIT_COPYAPPEND, "wo\tx\r\nthree\r\nfoon"},
        {At(3, 0), At(4, 0), ID_EDIT_COPY, "four\r\n"},
    };
    for (const auto& row : rows) {
        view->SelectRange(row.anchor, row.caret);
        Command(row.command);
        EXPECT_EQ(row.expected, ClipboardText());
    }
    // The margin's double click takes the whole row, its line end too.
    view->SelectRange(At(1, 0), At(1, 0));
    view->SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(1, 1));
    SetClipboardText(nullptr); // append to nothing copies
    Command(ID_EDIT_COPYAPPEND);
    EXPECT_EQ("two\tx\r\n", ClipboardText());
}

TEST_F(ViewTest, TextFindGoesLineByLineAndOffersToRestart)
{
    ASSERT_TRUE(Start());
    CTextFileView* view = Open<CTextFileView>("beta\nalpha\r\nx beta beta\n", false);
    ASSERT_NE(nullptr, view);
    view->SelectRange(At(0, 1), At(0, 1));
    m_boxes.Queue({IDOK});
    std::vector<std::vector<int32_t>> found;
    // A match within one line seeds the next find, as the keyboard's Find Next does.
    for (const char* pattern : {"beta$", "beta", "beta"}) {
        Find(pattern); // the CR behind each line lets $ match
        found.push_back({view->m_posAnchor.line, view->m_posAnchor.col, view->m_posCaret.col});
    }
    Find("beta", ID_SEARCH_FINDPREV);
    found.push_back({view->m_posAnchor.line, view->m_posAnchor.col, view->m_posCaret.col});
    EXPECT_EQ((std::vector<std::vector<int32_t>>{{2, 7, 11}, {0, 0, 4}, {2, 2, 6}, {0, 0, 4}}),
              found);
    EXPECT_EQ(1u, m_boxes.Boxes().size()); // the restart, asked once
    view->SelectRange(At(0, 1), At(0, 1));
    m_boxes.Queue({IDOK, IDOK});
    Find("gamma");
    const std::vector<std::string> texts = m_boxes.Texts();
    EXPECT_EQ((std::vector<std::string>{"Cannot find 'gamma'\nRestart from start?",
                                        "Cannot find 'gamma'"}),
              std::vector<std::string>(texts.begin() + 1, texts.end()));

    // A line that holds the text a match starts with, but no match: the
    // line right behind it is searched too.
    view = Open<CTextFileView>("beta\nbeta beta\nz\n", false, "g");
    ASSERT_NE(nullptr, view);
    Find("beta.*beta");
    EXPECT_EQ((std::vector<int32_t>{1, 0, 9}),
              (std::vector<int32_t>{view->m_posAnchor.line, view->m_posAnchor.col,
                                    view->m_posCaret.col}));
}

TEST_F(ViewTest, HexRowsOfOneAndTwoBytesSixteenAndTheTopBitOfAnAddress)
{
    ASSERT_TRUE(Start());
    CHexFileView* view = Open<CHexFileView>("A", true);
    ASSERT_NE(nullptr, view);
    view->SendMessage(WM_KM_GOTOPOS, 0, static_cast<LPARAM>(0x80000010u));
    EXPECT_EQ((std::vector<int32_t>{0, 1, 12}), Place(view->m_posAnchor));
    EXPECT_EQ((std::vector<int32_t>{0, 0, 10}), Place(view->m_posCaret));
    Key(view, VK_RIGHT);
    Key(view, VK_RIGHT);
    EXPECT_EQ((std::vector<int32_t>{0, 1, 12}), Place(view->m_posCaret));

    view = Open<CHexFileView>(std::string(32, 'b'), true, "g");
    ASSERT_NE(nullptr, view);
    view->SendMessage(WM_KM_GOTOPOS, 0, static_cast<LPARAM>(0x80000010u));
    EXPECT_EQ((std::vector<int32_t>{1, 0, 10}), Place(view->m_posCaret));
    Key(view, VK_END, true);
    EXPECT_EQ((std::vector<int32_t>{2, 0, 10}), Place(view->m_posCaret));
    for (const auto& [column, col, dispCol] :
         {std::tuple<int, int, int>{46, 16, 45}, {19, 4, 19}, {43, 15, 43}, {3, 0, 10}}) {
        Mouse(view, WM_LBUTTONDOWN, column, 0);
        Mouse(view, WM_LBUTTONUP, column, 0, 0);
        EXPECT_EQ((std::vector<int32_t>{0, col, dispCol}), Place(view->m_posCaret)) << column;
    }
    EXPECT_TRUE(Grayed(OpenPopup(1), ID_EDIT_COPY));
}

TEST_F(ViewTest, HexFindsMatchesAcrossTheBlockBorders)
{
    ASSERT_TRUE(Start());
    std::string bytes(40000, '.');
    bytes.replace(16380, 6, "NEEDLE"); // over the first block's end
    bytes.replace(32765, 6, "NEEDLE"); // over the end of the block begun behind the first
    CHexFileView* view = Open<CHexFileView>(bytes, true);
    ASSERT_NE(nullptr, view);
    m_boxes.Queue({IDOK});
    std::vector<uint32_t> found;
    for (int i = 0; i < 3; ++i) {
        Find("NEEDLE");
        found.push_back(Offset(view->m_posAnchor));
        EXPECT_EQ(found.back() + 6, Offset(view->m_posCaret));
    }
    EXPECT_EQ((std::vector<uint32_t>{16380, 32765, 16380}), found);
    view->SelectRange(At(2499, 0), At(2499, 0));
    Find("NEE", ID_SEARCH_FINDPREV);
    EXPECT_EQ(32765u, Offset(view->m_posAnchor));
    Find("NEE", ID_SEARCH_FINDPREV);
    EXPECT_EQ(16380u, Offset(view->m_posAnchor));
}

TEST_F(ViewTest, OpenPathsEndInAViewAndFilesPastFourGigabytesAreRefused)
{
    // A log line with a hexadecimal address opens a hex view there.
    Write("dump.bin", std::string(64, 'z'));
    ASSERT_TRUE(Start());
    CKmLog* log = CKmLog::Create(CKmLog::ToolLogFlags(), 1);
    ASSERT_NE(nullptr, log);
    log->LogPrintf("%s(0x%.4lx): %s\r\n", Path("dump.bin").c_str(), 0x21ul, "here");
    ::SendMessageA(log->m_edit.m_hWnd, EM_SETSEL, 0, 0);
    log->GotoSourceLine();
    PumpUntilIdle();
    auto* hex = dynamic_cast<CHexFileView*>(KmChildOf(ChildByCaption(FullLower("dump.bin"))));
    ASSERT_NE(nullptr, hex);
    EXPECT_EQ(0x21u, Offset(hex->m_posCaret));
    // Goto Address offers the place before the last jump: two hop between two places.
    m_boxes.Queue({IDOK, IDOK});
    Command(ID_SEARCH_GOTOLINE);
    EXPECT_EQ(0u, Offset(hex->m_posCaret));
    Command(ID_SEARCH_GOTOLINE);
    EXPECT_EQ(0x21u, Offset(hex->m_posCaret));
    ASSERT_EQ(2u, m_boxes.Boxes().size());
    EXPECT_EQ("0 21", m_boxes.Boxes()[0].field + " " + m_boxes.Boxes()[1].field);
    m_boxes.Clear();

    // View in Hex of a modified editor asks to save first.
    Write("m.c", "int x;\r\n");
    CKmFileEdit* editor = CKmFileEdit::Open(Path("m.c").c_str(), CKmFrame::NewWindowFlags());
    ASSERT_NE(nullptr, editor);
    ::SendMessageA(editor->m_edit.m_hWnd, WM_CHAR, 'y', 1);
    m_boxes.Queue({IDNO});
    CKmChild* view = m_frame->OpenFile(Path("m.c").c_str(), true, true);
    PumpUntilIdle();
    EXPECT_NE(nullptr, dynamic_cast<CHexFileView*>(view));
    ASSERT_EQ(1u, m_boxes.Boxes().size());
    EXPECT_NE(std::string::npos, m_boxes.Boxes()[0].text.find("before closing"));
    EXPECT_EQ(3u, Children().size());

    // Past 4 GB: the editor offers a view, which says why it cannot be.
    HANDLE file = ::CreateFileA(Path("big").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    LARGE_INTEGER size;
    size.QuadPart = 0x100000010ll;
    ASSERT_TRUE(::SetFilePointerEx(file, size, nullptr, FILE_BEGIN) && ::SetEndOfFile(file));
    ::CloseHandle(file);
    Write("empty", "");
    const struct {
        const char* name;
        bool readOnly, hex;
        size_t boxes;
        const char* last;
    } refusals[] = {{"big", false, false, 2, "is too large to view"},
                    {"big", true, true, 1, "is too large to view"},
                    {"empty", true, false, 1, "is an empty file"}};
    for (const auto& row : refusals) {
        m_boxes.Clear();
        m_boxes.Queue({IDOK, IDOK});
        EXPECT_EQ(nullptr, m_frame->OpenFile(Path(row.name).c_str(), row.readOnly, row.hex));
        const std::vector<std::string> texts = m_boxes.Texts();
        ASSERT_EQ(row.boxes, texts.size()) << row.name;
        EXPECT_NE(std::string::npos, texts.back().find(row.last));
    }
    EXPECT_EQ(3u, Children().size());
}

} // namespace
