// The global search over real files: a generated tree searched through the
// dialog and checked against a plain reading of the files; the dialog's
// fields, buttons and boxes.
#include "app/KmApp.h"
#include "resources/KmIds.h"
#include "search/GrepDialog.h"
#include "support/WinTestSupport.h"

#include <dlgs.h>
#include <map>
#include <random>
#include <sstream>

using namespace kmtest;

namespace
{

class GrepTest : public FrameTest
{
  protected:
    HWND Item(int id) const { return g_grepDialog ? ::GetDlgItem(*g_grepDialog, id) : nullptr; }
    std::string Field(int id) const { return WindowText(Item(id)); }
    void Press(int button)
    {
        ::SendMessageA(::GetParent(Item(button)), WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                       reinterpret_cast<LPARAM>(Item(button)));
        PumpUntilIdle();
    }
    void Search(const std::string& search, const std::string& files, const std::string& dir,
                bool listLines = true)
    {
        ::SetWindowTextA(Item(IDC_GREP_SEARCH), search.c_str());
        ::SetWindowTextA(Item(IDC_GREP_FILES), files.c_str());
        ::SetWindowTextA(Item(IDC_GREP_DIR), dir.c_str());
        ::SendMessageA(Item(IDC_GREP_LISTLINES), BM_SETCHECK, listLines, 0);
        Press(IDOK);
    }
    // The text of the search's log, which closes then; "<none>" without it.
    std::string TakeLog(const std::string& search)
    {
        HWND log = ChildByCaption("GREP " + search);
        const std::string text = log ? EditBlock(::GetDlgItem(log, IDC_EDIT)) : "<none>";
        ::SendMessageA(log, WM_CLOSE, 0, 0);
        PumpUntilIdle();
        return text;
    }
    int Focus() const { return ::GetDlgCtrlID(::GetFocus()); }
};

// What a plain reading finds: the lines before a Ctrl-Z, without the CR of
// a CR LF, that hold the word.
std::vector<std::pair<int, std::string>> Hits(const std::string& text, const char* word)
{
    std::vector<std::pair<int, std::string>> hits;
    std::istringstream in(text.substr(0, text.find('\x1A')));
    int number = 0;
    for (std::string line; word && std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        ++number;
        if (line.find(word) != std::string::npos)
            hits.emplace_back(number, line);
    }
    return hits;
}

TEST_F(GrepTest, TreeSearchedLineByLineAsAPlainReadingFindsIt)
{
    std::mt19937 random(7);
    const char* lines[] = {"needle", "hay", "stack", "", "needles", "x\tneedle y"};
    std::map<std::string, std::string> searched; // lower-case name to content
    for (int i = 0; i < 300; ++i) {
        const std::string name = (i % 7 ? "f" : "Up") + std::to_string(i) + (i % 3 ? ".c" : ".h");
        std::string text;
        for (int line = random() % 12; line > 0; --line)
            text += lines[random() % 6] + std::string(random() % 2 ? "\r\n" : "\n");
        if (i % 10 == 0)
            text += "last needle"; // no line end
        if (i % 25 == 0)
            text += "\032needle after the end\n";
        Write(name, text);
        searched[Lower(name)] = text;
    }
    Write("other.txt", "needle\n");
    ASSERT_TRUE(::CreateDirectoryA(Path("sub.c").c_str(), nullptr));
    ASSERT_TRUE(Start());

    const struct {
        const char* search;
        const char* word; // what a plain reading looks for; null: nothing
        bool listLines;
    } rows[] = {{"needle", "needle", true}, {"needle", "needle", false}, {"^$", nullptr, true}};
    for (const auto& row : rows) {
        std::string expected;
        for (const auto& file : searched) {
            const auto hits = Hits(file.second, row.word);
            for (const auto& hit : hits)
                if (row.listLines)
                    expected +=
                        file.first + "(" + std::to_string(hit.first) + "): " + hit.second + "\r\n";
            if (!row.listLines && !hits.empty())
                expected += FullLower(file.first) + ": " + std::to_string(hits.size()) + "\r\n";
        }
        std::vector<std::string> boxes = {"Error accessing '" + FullLower("missing.c") +
                                          "'\nAccess denied to this file"};
        if (expected.empty())
            boxes.push_back("Cannot find '^$'");
        m_boxes.Queue({IDOK, IDOK});
        Command(ID_SEARCH_GREP);
        Search(row.search, "*.c *.h *.c missing.c", m_dir, row.listLines);
        EXPECT_EQ(expected.empty() ? "<none>" : expected, TakeLog(row.search)) << row.search;
        EXPECT_EQ(boxes, m_boxes.Texts()) << row.search;
        m_boxes.Clear();
    }
}

// Names a file in the picker before the answerer's OK reaches it.
LRESULT CALLBACK ChooseAFile(int code, WPARAM wParam, LPARAM lParam)
{
    HWND wnd = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && WindowText(wnd) == "Open")
        ::SetDlgItemTextA(wnd, edt1, "a.c");
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(GrepTest, FieldsButtonsAndBoxesOfTheDialog)
{
    Write("a.c", "text\n");
    ASSERT_TRUE(Start());
    Command(ID_SEARCH_GREP);
    EXPECT_EQ(Lower(m_dir), Field(IDC_GREP_DIR));
    // OK waits for a pattern and a file list.
    const std::pair<const char*, const char*> fields[] = {{"x", ""}, {"", "*.c"}, {"x", "*.c"}};
    for (const auto& row : fields) {
        ::SetWindowTextA(Item(IDC_GREP_SEARCH), row.first);
        ::SetWindowTextA(Item(IDC_GREP_FILES), row.second);
        EXPECT_EQ(*row.first && *row.second, ::IsWindowEnabled(Item(IDOK)) != FALSE);
    }
    // The field at fault has the focus after its box, and the dialog stays.
    const struct {
        std::string search, dir, box;
        int focus;
    } rows[] = {
        {"\\(a", m_dir, "Unmatched '\\('", IDC_GREP_SEARCH},
        {"text", Path("none"), "All or part of the path is invalid", IDC_GREP_DIR},
        {"text", Path("a.c"), "All or part of the path is invalid", IDC_GREP_DIR},
    };
    for (const auto& row : rows) {
        m_boxes.Queue({IDOK});
        Search(row.search, "*.c", row.dir);
        EXPECT_EQ(std::vector<std::string>{row.box}, m_boxes.Texts()) << row.search;
        EXPECT_EQ(row.focus, Focus()) << row.search;
        EXPECT_EQ("<none>", TakeLog(row.search));
        m_boxes.Clear();
    }
    // Browse puts the chosen file's directory and name into the fields.
    ::SetWindowTextA(Item(IDC_GREP_DIR), "");
    HHOOK hook = ::SetWindowsHookExA(WH_CBT, ChooseAFile, nullptr, ::GetCurrentThreadId());
    m_boxes.Queue({IDOK});
    Press(IDC_GREP_BROWSE);
    ::UnhookWindowsHookEx(hook);
    EXPECT_EQ("a.c", Field(IDC_GREP_FILES));
    EXPECT_EQ(Lower(m_dir), Lower(Field(IDC_GREP_DIR)));
    EXPECT_EQ(IDC_GREP_FILES, Focus());
    // Defaults brings the project's list and keeps the pattern; Cancel ends.
    theApp.SetEnvironmentSetting("GrepFiles", "*.cpp *.rc");
    Press(IDC_GREP_DEFAULTS);
    EXPECT_EQ("*.cpp *.rc", Field(IDC_GREP_FILES));
    EXPECT_EQ("text", Field(IDC_GREP_SEARCH));
    EXPECT_EQ(IDC_GREP_SEARCH, Focus());
    Press(IDCANCEL);
    EXPECT_EQ(nullptr, g_grepDialog);
}

} // namespace
