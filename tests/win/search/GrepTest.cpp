// The global search over real files: a generated tree searched through the
// dialog, each log line checked against a count made by a plain reading of
// the files; the boxes of a fruitless search, a bad pattern and a bad
// directory; the dialog's buttons.
#include "app/KmApp.h"
#include "edit/KmLog.h"
#include "resources/KmIds.h"
#include "search/GrepDialog.h"
#include "support/WinTestSupport.h"

#include <dlgs.h>
#include <map>
#include <random>

using namespace kmtest;

namespace
{

class GrepTest : public FrameTest
{
  protected:
    HWND Dialog() const { return g_grepDialog ? g_grepDialog->m_hWnd : nullptr; }
    void Press(int button)
    {
        ::SendMessageA(Dialog(), WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                       reinterpret_cast<LPARAM>(::GetDlgItem(Dialog(), button)));
        PumpUntilIdle();
    }
    void Search(const std::string& search, const std::string& files, const std::string& dir,
                bool listLines = true)
    {
        ::SetDlgItemTextA(Dialog(), IDC_GREP_SEARCH, search.c_str());
        ::SetDlgItemTextA(Dialog(), IDC_GREP_FILES, files.c_str());
        ::SetDlgItemTextA(Dialog(), IDC_GREP_DIR, dir.c_str());
        ::CheckDlgButton(Dialog(), IDC_GREP_LISTLINES, listLines ? BST_CHECKED : BST_UNCHECKED);
        Press(IDOK);
    }
    // The text of the search's log, which closes then; "<none>" without it.
    std::string TakeLog(const std::string& search)
    {
        HWND log = ChildByCaption("GREP " + search);
        if (!log)
            return "<none>";
        const std::string text = EditBlock(::GetDlgItem(log, IDC_EDIT));
        ::SendMessageA(log, WM_CLOSE, 0, 0);
        PumpUntilIdle();
        return text;
    }
    int Focus() const { return ::GetDlgCtrlID(::GetFocus()); }
};

// What a plain reading finds: the text up to a Ctrl-Z, lines ended by LF
// with a CR before it dropped, and every line that holds the word.
std::vector<std::pair<int, std::string>> Hits(std::string text, const char* word)
{
    text = text.substr(0, text.find('\x1A'));
    std::vector<std::pair<int, std::string>> hits;
    int number = 0;
    for (size_t at = 0; word && at < text.size();) {
        size_t end = text.find('\n', at);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(at, end - at);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        ++number;
        if (line.find(word) != std::string::npos)
            hits.emplace_back(number, line);
        at = end + 1;
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
            text += "\x1A"
                    "needle after the end\n";
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

// The field at fault has the focus after the box; the dialog stays.
TEST_F(GrepTest, BadPatternAndBadDirectoryAreToldOverTheDialog)
{
    Write("a.c", "text\n");
    ASSERT_TRUE(Start());
    Command(ID_SEARCH_GREP);
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
}

// OK waits for a pattern and a file list; Defaults brings the project's
// list and keeps the pattern; Cancel ends the dialog.
TEST_F(GrepTest, ButtonsOfTheDialog)
{
    ASSERT_TRUE(Start());
    Command(ID_SEARCH_GREP);
    HWND ok = ::GetDlgItem(Dialog(), IDOK);
    EXPECT_EQ(Lower(m_dir), WindowText(::GetDlgItem(Dialog(), IDC_GREP_DIR)));
    const struct {
        const char *search, *files;
        bool enabled;
    } rows[] = {{"x", "", false}, {"", "*.c", false}, {"x", "*.c", true}};
    for (const auto& row : rows) {
        ::SetDlgItemTextA(Dialog(), IDC_GREP_SEARCH, row.search);
        ::SetDlgItemTextA(Dialog(), IDC_GREP_FILES, row.files);
        EXPECT_EQ(row.enabled, ::IsWindowEnabled(ok) != FALSE) << row.search << row.files;
    }
    theApp.SetEnvironmentSetting("GrepFiles", "*.cpp *.rc");
    Press(IDC_GREP_DEFAULTS);
    EXPECT_EQ("*.cpp *.rc", WindowText(::GetDlgItem(Dialog(), IDC_GREP_FILES)));
    EXPECT_EQ("x", WindowText(::GetDlgItem(Dialog(), IDC_GREP_SEARCH)));
    EXPECT_EQ(IDC_GREP_SEARCH, Focus());
    Press(IDCANCEL);
    EXPECT_EQ(nullptr, g_grepDialog);
}

// Names a file in the picker before the answerer's OK reaches it.
LRESULT CALLBACK ChooseAFile(int code, WPARAM wParam, LPARAM lParam)
{
    HWND wnd = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && WindowText(wnd) == "Open")
        ::SetDlgItemTextA(wnd, edt1, "a.c");
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(GrepTest, BrowseSplitsThePathIntoDirectoryAndFiles)
{
    Write("a.c", "");
    ASSERT_TRUE(Start());
    Command(ID_SEARCH_GREP);
    ::SetDlgItemTextA(Dialog(), IDC_GREP_DIR, "");
    HHOOK hook = ::SetWindowsHookExA(WH_CBT, ChooseAFile, nullptr, ::GetCurrentThreadId());
    m_boxes.Queue({IDOK});
    Press(IDC_GREP_BROWSE);
    ::UnhookWindowsHookEx(hook);
    EXPECT_EQ("a.c", WindowText(::GetDlgItem(Dialog(), IDC_GREP_FILES)));
    EXPECT_EQ(Lower(m_dir), Lower(WindowText(::GetDlgItem(Dialog(), IDC_GREP_DIR))));
    EXPECT_EQ(IDC_GREP_FILES, Focus());
}

} // namespace
