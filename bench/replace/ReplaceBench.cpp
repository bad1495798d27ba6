// Replace All of a common word and Find Next over every hit of a rare one,
// in an editor window, on generated C sources of 1 and 5 MB. Next to them:
// the engine's own scan and one-pass replace in memory (the floor), and
// the replace loop of one EM_REPLACESEL per hit that Replace All used to
// be (capped in time, its total projected). run.sh adds sed on the same
// files as the peer.
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "edit/KmFileEdit.h"
#include "resources/KmIds.h"
#include "search/ReplaceAll.h"
#include "search/SearchRequest.h"
#include "support/BenchSupport.h"

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace bench;

namespace
{

const char kCommon[] = "total"; // about one hit a line
const char kReplacement[] = "sum";
const char kRare[] = "value_[0-9]*00(";
const double kLoopCapMs = 60000;

void SetRequest(const char* find, const char* replace)
{
    g_searchRequest.m_strFind = find;
    g_searchRequest.m_strReplace = replace;
    g_searchRequest.m_bForward = 1;
    g_searchRequest.m_bSelectionOnly = 0;
    g_searchRequest.m_bRecompile = 1;
    CompileRequest(&g_searchRequest);
}

void Line(const char* what, double ms, int hits)
{
    printf("  %-34s %9.3f s %8d hits %11.0f hits/s\n", what, ms / 1000, hits,
           ms > 0 ? hits * 1000.0 / ms : 0);
}

// The engine alone: every hit counted, and the one-pass replace in memory.
void Floor(const std::string& text)
{
    SetRequest(kCommon, kReplacement);
    const int size = static_cast<int>(text.size());
    double start = NowMs();
    int hits = 0;
    for (int at = 0; at < size;) {
        int found = SearchPattern(&g_searchRequest.m_pattern, text.data(), size, at, size - at,
                                  &g_searchRequest.m_regs);
        if (found < 0)
            break;
        ++hits;
        at = g_searchRequest.m_regs.end[0] > found ? g_searchRequest.m_regs.end[0] : found + 1;
    }
    Line("engine scan (floor)", NowMs() - start, hits);
    start = NowMs();
    ReplaceAllResult result;
    ReplaceAllInText(
        &g_searchRequest.m_pattern, text.data(), size, 0, size,
        [](const char*, const MatchRegisters&, std::string& out) { out += kReplacement; }, result);
    Line("engine one-pass replace (floor)", NowMs() - start, result.count);
}

int TextLength(CKmFileEdit* editor)
{
    return ::GetWindowTextLengthA(editor->m_edit.m_hWnd);
}

void ReplaceAllInEditor(CKmFileEdit* editor, int expectedLength)
{
    SetRequest(kCommon, kReplacement);
    const int before = TextLength(editor);
    const double start = NowMs();
    editor->ReplaceAll(&g_searchRequest);
    const double ms = NowMs() - start;
    const int hits = (before - TextLength(editor)) / 2; // each hit is two bytes shorter
    Line("editor Replace All", ms, hits);
    if (TextLength(editor) != expectedLength)
        printf("  the editor's text has %d bytes, not %d\n", TextLength(editor), expectedLength);
}

// What the control alone costs for taking the same new text in one edit.
void ControlTakesText(CKmFileEdit* editor, const std::string& newText)
{
    const double start = NowMs();
    editor->m_edit.SendMessage(EM_SETSEL, 0, -1);
    editor->m_edit.SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(newText.c_str()));
    Line("the control taking the new text", NowMs() - start, 0);
}

// One EM_REPLACESEL per hit, until the cap; the rest projected.
void ReplaceLoopInEditor(CKmFileEdit* editor, int expectedHits)
{
    SetRequest(kCommon, kReplacement);
    long position = 0, range = TextLength(editor);
    int hits = 0;
    const double start = NowMs();
    while (range > 0 && NowMs() - start < kLoopCapMs) {
        if (!editor->FindText(&g_searchRequest, false, position, range))
            break;
        const long matchStart = g_searchRequest.m_regs.start[0];
        const long matchLength = g_searchRequest.m_regs.end[0] - matchStart;
        editor->m_edit.SendMessage(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(kReplacement));
        ++hits;
        const long newLength = sizeof kReplacement - 1;
        range -= matchStart + newLength - position;
        range += newLength - matchLength;
        position = matchStart + newLength;
    }
    const double ms = NowMs() - start;
    Line("one EM_REPLACESEL per hit", ms, hits);
    if (hits < expectedHits && hits > 0)
        printf("  %-34s %9.1f s projected for %d hits\n", "", ms / 1000 * expectedHits / hits,
               expectedHits);
}

void FindNextWalk(CKmFileEdit* editor)
{
    SetRequest(kRare, "");
    editor->m_edit.SetSelection(0, 0);
    BoxWatch watch(IDCANCEL); // the restart question ends the walk
    int hits = 0;
    const double start = NowMs();
    while (editor->FindText(&g_searchRequest, true, -1, 0))
        ++hits;
    Line("editor Find Next, rare word", NowMs() - start, hits);
}

bool RunOne(const std::string& dir, size_t megabytes)
{
    const std::string text = MakeSource(megabytes * 1024 * 1024, "\r\n");
    const std::string path = dir + "\\replace" + std::to_string(megabytes) + ".c";
    if (!WriteAll(path, text)) {
        printf("cannot write %s\n", path.c_str());
        return false;
    }
    printf("%s: %zu MB\n", path.c_str(), megabytes);
    Floor(text);
    SetRequest(kCommon, kReplacement);
    ReplaceAllResult expected;
    ReplaceAllInText(
        &g_searchRequest.m_pattern, text.data(), static_cast<int>(text.size()), 0,
        static_cast<int>(text.size()),
        [](const char*, const MatchRegisters&, std::string& out) { out += kReplacement; },
        expected);
    const int expectedLength =
        static_cast<int>(text.size() - (expected.to - expected.from) + expected.text.size());

    auto* editor = static_cast<CKmFileEdit*>(theApp.Frame()->OpenFile(path.c_str(), false, false));
    if (!editor) {
        printf("  the editor did not open the file\n");
        return false;
    }
    FindNextWalk(editor);
    ReplaceAllInEditor(editor, expectedLength);
    editor->LoadIntoEdit(path.c_str(), false);
    ControlTakesText(editor, text.substr(0, static_cast<size_t>(expected.from)) + expected.text +
                                 text.substr(static_cast<size_t>(expected.to)));
    editor->LoadIntoEdit(path.c_str(), false);
    ReplaceLoopInEditor(editor, expected.count);
    editor->m_flags &= ~CF_MODIFIED;
    ::SendMessageA(editor->m_hWnd, WM_CLOSE, 0, 0);
    PumpUntilIdle();
    return true;
}

} // namespace

// The one argument is the directory for the generated files, which stay
// there for sed.
int main(int argc, char** argv)
{
    const std::string dir = argc > 1 ? argv[1] : ".";
    if (!StartApplication()) {
        printf("no frame\n");
        return 1;
    }
    bool ok = true;
    for (size_t megabytes : {1, 5})
        ok = RunOne(dir, megabytes) && ok;
    EndApplication();
    return ok ? 0 : 1;
}
