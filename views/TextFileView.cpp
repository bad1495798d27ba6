#include "views/TextFileView.h"

#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "edit/GotoLineDialog.h"
#include "edit/KmEdit.h"
#include "edit/Messages.h"
#include "help/HelpLookup.h"
#include "help/HelpText.h"
#include "search/SearchRequest.h"
#include "views/FileSource.h"
#include "views/LineFile.h"
#include "views/ViewLayout.h"

#include <algorithm>
#include <cstring>

IMPLEMENT_DYNAMIC(CTextFileView, CFileView)

// clang-format off
BEGIN_MESSAGE_MAP(CTextFileView, CFileView)
    ON_MESSAGE(WM_LBUTTONDBLCLK, OnLButtonDblClk)
    ON_MESSAGE(FVM_LINEHOME, OnLineHome)
    ON_MESSAGE(FVM_POINTTOPOS, OnPointToPos)
    ON_MESSAGE(FVM_NORMALIZEPOS, OnNormalizePos)
    ON_MESSAGE(FVM_SHOWPOS, OnShowPos)
    ON_MESSAGE(WM_KM_GETPOS, OnGetPos)
    ON_MESSAGE(WM_KM_GOTOPOS, OnGotoPos)
    ON_COMMAND(ID_EDIT_COPY, OnEditCopy)
    ON_COMMAND(ID_EDIT_COPYAPPEND, OnEditCopyAppend)
    ON_COMMAND(ID_SEARCH_GOTOLINE, OnGotoLine)
    ON_COMMAND(ID_HELP_CONTEXT_CHILD, OnHelpContext)
    ON_COMMAND_RANGE(ID_HELP_SDK, ID_HELP_ENVIRONMENT, OnWordHelp)
    ON_COMMAND(ID_HELP_FILESTATS, OnFileStats)
END_MESSAGE_MAP()
// clang-format on

namespace
{

bool IsWordByte(char byte)
{
    return byte == '_' || ::IsCharAlphaNumericA(byte);
}

FilePos At(int32_t line, int32_t col)
{
    FilePos pos;
    pos.line = line;
    pos.col = col;
    return pos;
}

} // namespace

CTextFileView* CTextFileView::Open(const char* path, unsigned long flags)
{
    CTextFileView* view = new CTextFileView(flags);
    if (!view->Start(path, IDI_EDITFILE))
        return nullptr;
    theApp.RememberFile(path);
    return view;
}

bool CTextFileView::OpenFile(const char* path, const std::function<bool()>& makeWindow)
{
    auto file = std::make_unique<CLineFile>(theApp.tabSize);
    file->SetQuestion([path](unsigned value) {
        return KmMessageBox(nullptr, MB_YESNO | MB_ICONQUESTION, IDS_NONANSI, value, path) == IDYES;
    });
    file->m_whileOpening = makeWindow;
    if (!OpenRecordFile(*file, path))
        return false;
    try {
        m_pLine.assign(static_cast<size_t>(file->m_nRecordSize) + 2, '\0');
    } catch (const std::bad_alloc&) {
        KmMessageBox(nullptr, MB_ICONEXCLAMATION, IDS_OUTOFMEMORY);
        return false;
    }
    m_nMaxCols = file->m_nRecordSize + 1;
    m_nLineInBuffer = -1;
    m_pFile = std::move(file);
    RefreshBars();
    ::InvalidateRect(m_hWnd, nullptr, TRUE);
    ShowFileInfo();
    PlaceCaret();
    return true;
}

bool CTextFileView::LoadLine(int32_t line)
{
    if (line == m_nLineInBuffer)
        return true;
    if (!m_pFile)
        return false;
    try {
        if (m_pFile->SeekRecord(line) != line)
            return false;
        m_nLineLength = std::max(0, m_pFile->ReadRecord(m_pLine.data(), m_nMaxCols));
    } catch (const CFileException&) {
        m_nLineInBuffer = -1;
        return false;
    }
    m_pLine[static_cast<size_t>(m_nLineLength)] = '\0';
    m_nLineInBuffer = line;
    return true;
}

void CTextFileView::ShowFileInfo()
{
    ShowInfo(IDS_FILESTATS);
}

void CTextFileView::OnFileStats()
{
    ShowFileInfo();
}

int CTextFileView::ReadRow(char* row)
{
    return std::max(0, m_pFile->ReadExpandedRecord(row, kRowSize));
}

// The selection never reaches into the blank behind a line's end.
void CTextFileView::GetRowSpan(int length, int& first, int& last)
{
    first = 0;
    last = length;
}

LRESULT CTextFileView::OnNormalizePos(WPARAM, LPARAM lParam)
{
    FilePos& pos = *reinterpret_cast<FilePos*>(lParam);
    const int length = LoadLine(pos.line) ? RecordLength(pos.line) : 0;
    pos.col = std::max(0, std::min(pos.col, length));
    pos.dispCol =
        pos.col ? TextColumnOf(m_pLine.data(), m_nLineLength, pos.col, theApp.tabSize) : 0;
    return 0;
}

// A click on a tab's blank area snaps forward to the tab stop.
LRESULT CTextFileView::OnPointToPos(WPARAM, LPARAM lParam)
{
    FilePos& pos = *reinterpret_cast<FilePos*>(lParam);
    if (pos.dispCol <= 0 || !LoadLine(pos.line)) {
        pos.col = pos.dispCol = 0;
        return 0;
    }
    pos.col = TextByteAt(m_pLine.data(), m_nLineLength, pos.dispCol, theApp.tabSize);
    return 0;
}

LRESULT CTextFileView::OnShowPos(WPARAM wParam, LPARAM lParam)
{
    return CFileView::OnShowPos(wParam + 1, lParam + 1);
}

LRESULT CTextFileView::OnGetPos(WPARAM, LPARAM lParam)
{
    uint32_t* out = reinterpret_cast<uint32_t*>(lParam);
    out[0] = static_cast<uint32_t>(m_posCaret.line + 1);
    out[1] = static_cast<uint32_t>(m_posCaret.col + 1);
    return 0;
}

LRESULT CTextFileView::OnGotoPos(WPARAM wParam, LPARAM lParam)
{
    GotoPosition(static_cast<long>(lParam) - 1, static_cast<long>(wParam) - 1);
    return 0;
}

void CTextFileView::GotoPosition(long line, long col)
{
    line = std::max(0L, std::min(line, static_cast<long>(RecordCount())));
    col = std::max(0L, std::min(col, static_cast<long>(GetDisplayWidth(line))));
    CFileView::GotoPosition(line, col);
}

void CTextFileView::OnGotoLine()
{
    CGotoLineDialog dialog(KmGetMainWindow(), m_posPrev.line + 1);
    if (dialog.DoModal() == IDOK)
        GotoPosition(dialog.m_line - 1, 0);
}

// Home goes to the first byte that is no blank or tab, and from there, or
// on a line without indentation, to column 0.
LRESULT CTextFileView::OnLineHome(WPARAM, LPARAM)
{
    if (!LoadLine(m_posCaret.line))
        return 0;
    const char* line = m_pLine.data();
    const int32_t first = static_cast<int32_t>(strspn(line, " \t"));
    if (first == 0 || m_posCaret.col == first) {
        m_posCaret.col = m_posCaret.dispCol = 0;
    } else {
        m_posCaret.col = first;
        Normalize(m_posCaret);
    }
    if (m_nLeftCol >= 1)
        ScrollColumns(SB_TOP);
    PlaceCaret();
    return 0;
}

// In the margin the whole row, up to the next row's start; elsewhere the
// word under the caret, or the one character that is no word.
LRESULT CTextFileView::OnLButtonDblClk(WPARAM, LPARAM lParam)
{
    if (!m_pFile)
        return 0;
    const int32_t line = m_posCaret.line;
    if (static_cast<short>(LOWORD(lParam)) < m_rcText.left) {
        if (line < RecordCount())
            SelectRange(At(line, 0), At(line + 1, 0));
        return 0;
    }
    if (!LoadLine(line))
        return 0;
    const char* text = m_pLine.data();
    int32_t from = std::min<int32_t>(m_posCaret.col, m_nLineLength);
    while (from > 0 && IsWordByte(text[from]) && IsWordByte(text[from - 1]))
        --from;
    int32_t to = from;
    while (to < m_nLineLength && IsWordByte(text[to]))
        ++to;
    if (to == from && text[to] != '\0')
        ++to;
    SelectRange(At(line, from), At(line, to));
    return 0;
}

void CTextFileView::OnEditCopy()
{
    Copy(false);
}

void CTextFileView::OnEditCopyAppend()
{
    Copy(true);
}

// The selected lines with CR LF between them, whatever the file's own
// terminators; tabs stay tabs. Appending keeps the clipboard's text in
// front.
void CTextFileView::Copy(bool append)
{
    FilePos start, end;
    if (!m_pFile || !GetOrderedSelection(start, end) || !::OpenClipboard(m_hWnd)) {
        ::MessageBeep(0);
        return;
    }
    const int32_t last = std::min(end.line, RecordCount() - 1);
    size_t size = 0;
    for (int32_t line = start.line; line <= last; ++line)
        size += static_cast<size_t>(RecordLength(line)) + 2;
    HANDLE old = nullptr;
    const char* oldText = nullptr;
    size_t oldLength = 0;
    if (append) {
        old = ::GetClipboardData(CF_TEXT);
        if (!old)
            old = ::GetClipboardData(CF_OEMTEXT);
        oldText = old ? static_cast<const char*>(::GlobalLock(old)) : nullptr;
        oldLength = oldText ? strlen(oldText) : 0;
    }
    HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, oldLength + size + 1);
    char* out = block ? static_cast<char*>(::GlobalLock(block)) : nullptr;
    if (!out) {
        if (oldText)
            ::GlobalUnlock(old);
        if (block)
            ::GlobalFree(block);
        ::CloseClipboard();
        ::MessageBeep(0);
        return;
    }
    memcpy(out, oldText ? oldText : "", oldLength);
    if (oldText)
        ::GlobalUnlock(old);
    ::EmptyClipboard();
    char* p = out + oldLength;
    try {
        m_pFile->SeekRecord(start.line);
        for (int32_t line = start.line; line <= last; ++line) {
            int length = std::max(0, m_pFile->ReadRecord(p, RecordLength(line) + 2));
            const int from = line == start.line ? std::min(start.col, length) : 0;
            memmove(p, p + from, static_cast<size_t>(length - from));
            length -= from;
            if (line == end.line)
                length = std::max(0, std::min(length, end.col - from));
            p += length;
            if (line != end.line) {
                *p++ = '\r';
                *p++ = '\n';
            }
        }
    } catch (const CFileException&) {
        ::MessageBeep(0); // what was copied so far stands
    }
    *p = '\0';
    ::GlobalUnlock(block);
    ::SetClipboardData(CF_TEXT, block);
    ::CloseClipboard();
}

// Only a selection within one line seeds the pattern.
int CTextFileView::GetFindSeed(CString& text)
{
    FilePos start, end;
    if (!GetOrderedSelection(start, end) || start.line != end.line || !LoadLine(start.line))
        return 0;
    const int32_t from = std::min<int32_t>(start.col, m_nLineLength);
    const CString selected(m_pLine.data() + from, std::min<int32_t>(end.col, m_nLineLength) - from);
    if (text == selected.c_str())
        return 0;
    text = selected;
    return 1;
}

// Line by line, each with a CR behind it so that line-end patterns match;
// at the end of the file the user may go on from the other end.
int CTextFileView::FindText(SearchRequest* request, bool interactive, long, long)
{
    if (!m_pFile || !CompileRequest(request))
        return 0;
    std::vector<char> text;
    try {
        text.resize(static_cast<size_t>(m_nMaxCols) + 1);
    } catch (const std::bad_alloc&) {
        ::MessageBeep(0);
        return 0;
    }
    CKmFrame* frame = theApp.Frame();
    if (frame)
        frame->BeginBusy(false);
    PatternBuffer& pattern = request->m_pattern;
    // A line without the needle holds no match and needs no search; going
    // forward, the lines before the next needle need not even be read.
    const PatternNeedle needle = FindPatternNeedle(&pattern);
    CLineFile* lines = needle.length ? dynamic_cast<CLineFile*>(m_pFile.get()) : nullptr;
    const bool forward = request->m_bForward != 0;
    const int32_t last = RecordCount() - 1;
    FilePos start, end;
    GetOrderedSelection(start, end);
    int32_t line;
    int col;
    if (forward) {
        line = end.line, col = end.col;
        if (interactive && pattern.has_line_start && col == 0)
            col = 1;
        if (col >= RecordLength(line) && line < last)
            ++line, col = 0;
    } else {
        line = start.line, col = start.col - 1;
        if (col < 0 && line > 0)
            --line, col = RecordLength(line);
        col = std::max(col, 0);
    }
    if (line > last)
        line = last, col = RecordLength(last);
    int passes = 1;
    if (interactive)
        passes = (forward ? line == 0 && col == 0 : line == last) ? 1 : 2;
    bool found = false;
    try {
        for (;;) {
            m_pFile->SeekRecord(line);
            const int length = std::max(0, m_pFile->ReadRecord(text.data(), m_nMaxCols));
            text[static_cast<size_t>(length)] = '\r';
            col = std::min(col, length);
            if ((!needle.length || FindNeedle(needle, text.data(), length + 1) >= 0) &&
                SearchText(*request, text.data(), length + 1, col)) {
                found = true;
                break;
            }
            if (forward && lines && line < last) {
                line = std::min(lines->NextLineHolding(needle, line + 1), last);
                col = 0;
                continue;
            }
            if (forward ? line < last : line > 0) {
                line += forward ? 1 : -1;
                col = forward ? 0 : RecordLength(line);
                continue;
            }
            if (--passes <= 0 || !AskRestart(*request))
                break;
            line = forward ? 0 : last;
            col = forward ? 0 : RecordLength(last);
        }
    } catch (const CFileException&) {
        ::MessageBeep(0);
        passes = -1; // the search ends with the beep
    }
    if (frame)
        frame->EndBusy();
    if (found) {
        m_posPrev = m_posCaret;
        SelectRange(At(line, request->m_regs.start[0]), At(line, request->m_regs.end[0]));
        return 1;
    }
    if (interactive && passes == 0)
        ReportNotFound(*request);
    return 0;
}

// F1: the header of an include line, else the word; a line that cannot be
// read counts as empty.
void CTextFileView::OnHelpContext()
{
    if (theApp.flags & KF_NOPROJECT) {
        ::WinHelpA(KmGetMainWindow(), theApp.helpPath, HELP_CONTEXT, kHelpEditorNoProject);
        return;
    }
    if (!LoadLine(m_posCaret.line)) {
        WordHelp(0);
        return;
    }
    const std::string line = m_pLine.data();
    const long mark = IncludeMarkAt(line.c_str());
    if (mark < 0)
        WordHelp(0);
    else if (!OpenIncludeFile(line.c_str() + mark))
        Alert(MB_ICONEXCLAMATION);
}

void CTextFileView::OnWordHelp(UINT id)
{
    WordHelp(id == ID_HELP_SDK ? 1 : 2);
}

void CTextFileView::WordHelp(int mode)
{
    const size_t kLongestWord = 63;
    std::string word;
    if (LoadLine(m_posCaret.line))
        word = HelpWordAt(m_pLine.data(), std::min<int32_t>(m_posCaret.col, m_nLineLength),
                          IsEditWordByte);
    if (word.empty() || word.size() > kLongestWord)
        Alert(MB_ICONEXCLAMATION);
    else
        LookupHelp(mode, word.c_str());
}
