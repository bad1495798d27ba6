#include "views/FileView.h"

#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "app/Settings.h"
#include "edit/FileUtil.h"
#include "edit/Messages.h"
#include "search/SearchRequest.h"

#include <algorithm>
#include <cstdio>

IMPLEMENT_DYNAMIC(CFileView, CKmChild)

// clang-format off
BEGIN_MESSAGE_MAP(CFileView, CKmChild)
    ON_MESSAGE(WM_CREATE, OnCreate)
    ON_MESSAGE(WM_PAINT, OnPaint)
    ON_MESSAGE(WM_CLOSE, OnClose)
    ON_MESSAGE(WM_SIZE, OnSize)
    ON_MESSAGE(WM_SETFOCUS, OnSetFocus)
    ON_MESSAGE(WM_KILLFOCUS, OnKillFocus)
    ON_MESSAGE(WM_VSCROLL, OnVScroll)
    ON_MESSAGE(WM_HSCROLL, OnHScroll)
    ON_MESSAGE(WM_KEYDOWN, OnKeyDown)
    ON_MESSAGE(WM_LBUTTONDOWN, OnLButtonDown)
    ON_MESSAGE(WM_LBUTTONUP, OnLButtonUp)
    ON_MESSAGE(WM_MOUSEMOVE, OnMouseMove)
    ON_MESSAGE(WM_TIMER, OnTimer)
    ON_MESSAGE(WM_KM_FONTCHANGED, OnFontChanged)
    ON_MESSAGE(WM_KM_TABSCHANGED, OnTabsChanged)
    ON_MESSAGE(FVM_TOP, OnTop)
    ON_MESSAGE(FVM_BOTTOM, OnBottom)
    ON_MESSAGE(FVM_LINEHOME, OnLineHome)
    ON_MESSAGE(FVM_LINEEND, OnLineEnd)
    ON_MESSAGE(FVM_PAGEUP, OnPageUp)
    ON_MESSAGE(FVM_PAGEDOWN, OnPageDown)
    ON_MESSAGE(FVM_PAGELEFT, OnPageLeft)
    ON_MESSAGE(FVM_PAGERIGHT, OnPageRight)
    ON_MESSAGE(FVM_SCROLLDOWN, OnScrollDown)
    ON_MESSAGE(FVM_SCROLLUP, OnScrollUp)
    ON_MESSAGE(FVM_LINEUP, OnLineUp)
    ON_MESSAGE(FVM_LINEDOWN, OnLineDown)
    ON_MESSAGE(FVM_CHARLEFT, OnCharLeft)
    ON_MESSAGE(FVM_CHARRIGHT, OnCharRight)
    ON_MESSAGE(FVM_SHOWPOS, OnShowPos)
    ON_COMMAND(ID_FILE_PRINT, OnFilePrint)
END_MESSAGE_MAP()
// clang-format on

namespace
{

const int kColumnStep = 15;          // Ctrl+Page Up and Down, and the bar's page
const int kBarRange = 1000;          // the row bar, whatever the number of records
const int32_t kProductLimit = 40000; // more records take the quotient rule
const UINT_PTR kAutoScrollTimer = 1;
const UINT kSlowScroll = 300, kFastScroll = 100; // ms, near the edge and further out
const COLORREF kDarkBlue = 0x2800000;            // palette-relative dark blue
const int kInfoSeconds = 5;                      // the statistics stay so long

// The key that each cursor key, plain and with Ctrl, stands for.
struct KeyMove {
    UINT key, plain, control;
};
const KeyMove kKeyMoves[] = {
    {VK_HOME, FVM_LINEHOME, FVM_TOP},      {VK_END, FVM_LINEEND, FVM_BOTTOM},
    {VK_PRIOR, FVM_PAGEUP, FVM_PAGELEFT},  {VK_NEXT, FVM_PAGEDOWN, FVM_PAGERIGHT},
    {VK_UP, FVM_LINEUP, FVM_SCROLLUP},     {VK_DOWN, FVM_LINEDOWN, FVM_SCROLLDOWN},
    {VK_LEFT, FVM_CHARLEFT, FVM_CHARLEFT}, {VK_RIGHT, FVM_CHARRIGHT, FVM_CHARRIGHT},
};

bool KeyHeld(int key)
{
    return (::GetKeyState(key) & 0x8000) != 0;
}

POINT PointOf(LPARAM lParam)
{
    return {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
}

} // namespace

CFileView::CFileView(unsigned long flags) : CKmChild(flags | CF_READONLY | CF_FILE)
{
    m_flags &= ~CF_UNTITLED;
}

CFileView::~CFileView() = default;

HGDIOBJ CFileView::Font() const
{
    return m_font.m_hFont ? static_cast<HGDIOBJ>(m_font.m_hFont)
                          : ::GetStockObject(SYSTEM_FIXED_FONT);
}

bool CFileView::Start(const char* path, UINT icon)
{
    CKmFrame* frame = theApp.Frame();
    SplitDir(path, m_workDir);
    const char* className =
        KmRegisterWndClass(CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW),
                           reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1),
                           ::LoadIconA(KmGetResourceHandle(), MAKEINTRESOURCEA(icon)));
    DWORD style = WS_VISIBLE | WS_HSCROLL | WS_VSCROLL;
    if (theApp.arrange == ARRANGE_MAXIMISED)
        style |= WS_MAXIMIZE;
    // The window is made while the file is read: a large file is scanned
    // on other threads meanwhile.
    auto makeWindow = [&] {
        return frame && className && Create(className, path, style, kRectDefault, frame);
    };
    if (!OpenFile(path, makeWindow)) {
        if (m_hWnd)
            MDIDestroy(); // the window deletes its object
        else
            delete this;
        return false;
    }
    return true;
}

// Each row through one opaque call, or three when part of it is selected;
// a file failure closes the view.
LRESULT CFileView::OnPaint(WPARAM, LPARAM)
{
    PAINTSTRUCT paint;
    HDC dc = ::BeginPaint(m_hWnd, &paint);
    if (m_pFile) {
        FilePos start, end;
        const bool selected = GetOrderedSelection(start, end);
        HGDIOBJ oldFont = ::SelectObject(dc, Font());
        ::SetTextColor(dc, m_crText); // selected text too: only the ground changes
        try {
            const bool placed = m_pFile->SeekRecord(m_nTopLine) == m_nTopLine;
            int32_t line = m_nTopLine;
            for (int y = m_rcText.top; y <= m_rcText.bottom - m_nLineHeight;
                 y += m_nLineHeight, ++line) {
                char row[kRowSize];
                const int length = placed ? ReadRow(row) : 0;
                int from = -1, to = -1;
                if (selected && line >= start.line && line <= end.line) {
                    GetRowSpan(length, from, to);
                    if (line == start.line)
                        from = start.dispCol;
                    if (line == end.line)
                        to = end.dispCol;
                }
                DrawRow(dc, y, row, length, from, to);
            }
        } catch (const CFileException& error) {
            CString title;
            GetTitle(title);
            ReportFileError(title, error, MB_ICONEXCLAMATION);
            m_pFile.reset();
            PostMessage(WM_CLOSE);
        }
        ::SelectObject(dc, oldFont);
    }
    ::EndPaint(m_hWnd, &paint);
    return 0;
}

void CFileView::DrawRow(HDC dc, int y, const char* text, int length, int selFrom, int selTo)
{
    const int left = m_nLeftCol;
    if (selFrom < 0)
        selFrom = selTo = left;
    const int bounds[4] = {left, std::max(left, selFrom), std::max(left, selTo), INT32_MAX};
    int x = m_rcText.left;
    for (int run = 0; run < 3; ++run) {
        const int from = bounds[run], to = bounds[run + 1];
        if (from >= to)
            continue;
        const bool last = run == 2;
        const int width = last ? m_rcText.right - x : (to - from) * m_nCharWidth;
        const RECT box = {x, y, x + width, y + m_nLineHeight};
        const int count = std::max(0, std::min(length, last ? length : to) - from);
        ::SetBkColor(dc, ::GetSysColor(run == 1 ? COLOR_HIGHLIGHT : COLOR_WINDOW));
        ::ExtTextOutA(dc, x, y, ETO_OPAQUE | ETO_CLIPPED, &box, count ? text + from : "",
                      static_cast<UINT>(count), nullptr);
        x += width;
    }
}

void CFileView::ShowInfo(UINT stringId)
{
    if ((theApp.flags & KF_NOSTATUSBAR) || !theApp.statusBar.Exists() || !m_pFile)
        return;
    CString format, title;
    format.LoadString(stringId);
    GetTitle(title);
    char text[512];
    snprintf(text, sizeof text, format, title.c_str(), static_cast<long>(m_pFile->m_nFileLength),
             static_cast<long>(m_pFile->m_nRecordCount));
    theApp.statusBar.SetText(text, kInfoSeconds);
}

bool CFileView::AskRestart(const SearchRequest& request)
{
    const UINT question = request.m_bForward ? IDS_RESTARTFROMSTART : IDS_RESTARTFROMEND;
    return KmMessageBox(SearchMessageOwner(this), MB_OKCANCEL | MB_ICONQUESTION, question,
                        request.m_strFind.c_str()) == IDOK;
}

bool CFileView::SearchText(SearchRequest& request, const char* text, int size, int start)
{
    if (!request.m_bForward && start == 0)
        return MatchPattern(&request.m_pattern, text, size, 0, size, &request.m_regs) >= 0;
    const int range = request.m_bForward ? size - start : -start;
    return SearchPattern(&request.m_pattern, text, size, start, range, &request.m_regs) >= 0;
}

void CFileView::ReportNotFound(const SearchRequest& request)
{
    KmMessageBox(SearchMessageOwner(this), MB_ICONEXCLAMATION, IDS_CANNOTFIND,
                 request.m_strFind.c_str());
}

// The font is measured once, here; a later font keeps these measures.
LRESULT CFileView::OnCreate(WPARAM wParam, LPARAM lParam)
{
    if (HDC dc = ::GetDC(m_hWnd)) {
        HGDIOBJ old = ::SelectObject(dc, Font());
        TEXTMETRICA metrics;
        if (::GetTextMetricsA(dc, &metrics)) {
            m_nCharWidth = std::max<int>(1, metrics.tmAveCharWidth);
            m_nLineHeight = std::max<int>(1, metrics.tmHeight + metrics.tmExternalLeading);
        }
        m_crText = ::GetSysColor(COLOR_WINDOWTEXT);
        const int colours = ::GetDeviceCaps(dc, NUMCOLORS);
        if (m_crText == RGB(0, 0, 0) && (colours < 0 || colours >= 3))
            m_crText = kDarkBlue;
        ::SelectObject(dc, old);
        ::ReleaseDC(m_hWnd, dc);
    }
    m_rcText.left = m_nCharWidth;
    m_rcText.top = 0;
    // The ranges wait for the file: setting them redraws the bars, which
    // costs more than the rest of the window on some platforms.
    ShowBars();
    SendMessage(WM_KM_FONTCHANGED, 0);
    return CKmChild::OnCreate(wParam, lParam);
}

LRESULT CFileView::OnClose(WPARAM, LPARAM)
{
    if (m_nTimer)
        ::KillTimer(m_hWnd, m_nTimer);
    m_nTimer = 0;
    m_pFile.reset();
    return Default();
}

// A partial bottom row is never painted: the text ends at whole rows.
LRESULT CFileView::OnSize(WPARAM wParam, LPARAM lParam)
{
    if (wParam == SIZE_MINIMIZED) {
        MakeIconTitle();
    } else if (wParam == SIZE_RESTORED || wParam == SIZE_MAXIMIZED) {
        RestoreIconTitle();
        const int width = LOWORD(lParam), height = HIWORD(lParam);
        m_nCols = std::max(1, (width - static_cast<int>(m_rcText.left)) / m_nCharWidth);
        m_nLines = std::max(1, (height - static_cast<int>(m_rcText.top)) / m_nLineHeight);
        m_rcText.right = width;
        m_rcText.bottom = m_rcText.top + m_nLines * m_nLineHeight;
    }
    return CKmChild::OnSize(wParam, lParam);
}

LRESULT CFileView::OnSetFocus(WPARAM wParam, LPARAM lParam)
{
    m_bHasFocus = true;
    ::CreateCaret(m_hWnd, reinterpret_cast<HBITMAP>(1), 2, m_nLineHeight); // a grey bar
    m_bCaretShown = false;
    PlaceCaret();
    return CKmChild::OnSetFocus(wParam, lParam);
}

LRESULT CFileView::OnKillFocus(WPARAM, LPARAM)
{
    m_bHasFocus = false;
    m_bCaretShown = false;
    ::DestroyCaret();
    return Default();
}

void CFileView::PlaceCaret()
{
    const bool inside = RowOnScreen(m_posCaret.line) && ColumnOnScreen(m_posCaret.dispCol);
    if (inside && m_bHasFocus) {
        ::SetCaretPos(m_rcText.left + (m_posCaret.dispCol - m_nLeftCol) * m_nCharWidth,
                      m_rcText.top + (m_posCaret.line - m_nTopLine) * m_nLineHeight);
        if (!m_bCaretShown)
            ::ShowCaret(m_hWnd);
        m_bCaretShown = true;
    } else if (m_bCaretShown) {
        ::HideCaret(m_hWnd);
        m_bCaretShown = false;
    }
    SendMessage(FVM_SHOWPOS, static_cast<WPARAM>(m_posCaret.col), m_posCaret.line);
}

// Positions on a bar of 0 to 1000 for any number of records: the product
// while it fits in 32 bits, the quotient beyond.
void CFileView::SetRowBar()
{
    const int32_t count = RecordCount();
    int64_t position = 0;
    if (count > kProductLimit)
        position = m_nTopLine / (count / kBarRange);
    else if (count > 0)
        position = int64_t(m_nTopLine) * kBarRange / count;
    ::SetScrollPos(m_hWnd, SB_VERT, static_cast<int>(std::min<int64_t>(position, kBarRange)), TRUE);
}

// A range given to a hidden bar would show it again: a hidden bar gets its
// range when it is shown.
void CFileView::RefreshBars()
{
    ShowBars();
    if (m_flags & CF_VSCROLL) {
        ::SetScrollRange(m_hWnd, SB_VERT, 0, kBarRange, FALSE);
        SetRowBar();
    }
    if (m_flags & CF_HSCROLL) {
        ::SetScrollRange(m_hWnd, SB_HORZ, 0, std::max(m_nMaxCols - 1, 1), FALSE);
        ::SetScrollPos(m_hWnd, SB_HORZ, m_nLeftCol, TRUE);
    }
}

void CFileView::ShowBars()
{
    ::ShowScrollBar(m_hWnd, SB_HORZ, (m_flags & CF_HSCROLL) != 0);
    ::ShowScrollBar(m_hWnd, SB_VERT, (m_flags & CF_VSCROLL) != 0);
}

// The bar covers the bottom row: a caret there moves up into view.
void CFileView::ShowBar(int bar, bool show)
{
    RefreshBars();
    if (bar == SB_HORZ && show && m_posCaret.line == m_nTopLine + m_nLines - 1)
        PostMessage(FVM_SCROLLDOWN);
}

void CFileView::ScrollRows(int code, int thumb)
{
    const int32_t count = RecordCount();
    int64_t top = m_nTopLine;
    switch (code) {
    case SB_LINEUP:
        --top;
        break;
    case SB_LINEDOWN:
        ++top;
        break;
    case SB_PAGEUP:
        top -= m_nLines - 1;
        break;
    case SB_PAGEDOWN:
        top += m_nLines - 1;
        break;
    case SB_TOP:
        top = 0;
        break;
    case SB_BOTTOM:
        top = int64_t(count) - m_nLines + 1;
        break;
    case SB_THUMBPOSITION:
        // In 64 bits, so that the thumb stays right past four million records.
        top = int64_t(thumb) * count / kBarRange;
        break;
    default:
        return;
    }
    top = std::max<int64_t>(0, std::min<int64_t>(top, int64_t(count) - 1));
    if (top == m_nTopLine)
        return;
    m_nTopLine = static_cast<int32_t>(top);
    SetRowBar();
    ::InvalidateRect(m_hWnd, nullptr, FALSE);
    PlaceCaret();
}

void CFileView::ScrollColumns(int code, int thumb)
{
    int64_t left = m_nLeftCol;
    switch (code) {
    case SB_LINEUP:
        --left;
        break;
    case SB_LINEDOWN:
        ++left;
        break;
    case SB_PAGEUP:
        left -= kColumnStep;
        break;
    case SB_PAGEDOWN:
        left += kColumnStep;
        break;
    case SB_TOP:
        left = 0;
        break;
    case SB_BOTTOM:
        left = int64_t(GetDisplayWidth(m_posCaret.line)) - m_nCols + 1;
        break;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
        left = thumb;
        break;
    default:
        return;
    }
    left = std::max<int64_t>(0, std::min<int64_t>(left, m_nMaxCols));
    if (left == m_nLeftCol && (m_flags & CF_HSCROLL))
        return;
    m_nLeftCol = static_cast<int32_t>(left);
    ::SetScrollPos(m_hWnd, SB_HORZ, m_nLeftCol, TRUE);
    PlaceCaret();
    ::InvalidateRect(m_hWnd, nullptr, FALSE);
}

LRESULT CFileView::OnVScroll(WPARAM wParam, LPARAM)
{
    if (!m_pFile)
        return 0;
    try {
        ScrollRows(LOWORD(wParam), HIWORD(wParam));
    } catch (const CFileException&) {
        m_nTopLine = m_nLeftCol = 0; // the view stays at its top
    }
    return 0;
}

LRESULT CFileView::OnHScroll(WPARAM wParam, LPARAM)
{
    if (m_pFile)
        ScrollColumns(LOWORD(wParam), HIWORD(wParam));
    return 0;
}

bool CFileView::EnsureCaretRow(bool centre)
{
    const int32_t row = m_posCaret.line;
    int32_t top = m_nTopLine;
    if (!RowOnScreen(row)) {
        if (centre)
            top = row - m_nLines / 2;
        else
            top = row < m_nTopLine ? row : row - m_nLines + 1;
    }
    top = std::max(top, 0);
    if (top == m_nTopLine)
        return false;
    m_nTopLine = top;
    SetRowBar();
    ::InvalidateRect(m_hWnd, nullptr, FALSE);
    return true;
}

// Both ends of a short selection on one row fit; otherwise the caret does.
void CFileView::MakeColumnsFit()
{
    int32_t left = m_posCaret.dispCol, right = m_posCaret.dispCol;
    if (m_posAnchor.line == m_posCaret.line &&
        std::abs(m_posAnchor.dispCol - m_posCaret.dispCol) < m_nCols) {
        left = std::min(m_posAnchor.dispCol, m_posCaret.dispCol);
        right = std::max(m_posAnchor.dispCol, m_posCaret.dispCol);
    }
    int32_t leftCol = m_nLeftCol;
    if (left < m_nLeftCol)
        leftCol = left;
    else if (right >= m_nLeftCol + m_nCols)
        leftCol = right - m_nCols + 1;
    if (leftCol == m_nLeftCol)
        return;
    m_nLeftCol = leftCol;
    ::SetScrollPos(m_hWnd, SB_HORZ, m_nLeftCol, TRUE);
    ::InvalidateRect(m_hWnd, nullptr, FALSE);
}

void CFileView::InvalidateRows(int32_t from, int32_t to)
{
    if (from > to)
        std::swap(from, to);
    from = std::max(from, m_nTopLine);
    to = std::min(to, m_nTopLine + m_nLines);
    if (from > to)
        return;
    RECT rows = {0, m_rcText.top + (from - m_nTopLine) * m_nLineHeight, m_rcText.right,
                 m_rcText.top + (to - m_nTopLine + 1) * m_nLineHeight};
    ::InvalidateRect(m_hWnd, &rows, FALSE);
}

void CFileView::InvalidateSelection()
{
    if (!m_posAnchor.SamePlace(m_posCaret))
        InvalidateRows(m_posAnchor.line, m_posCaret.line);
}

bool CFileView::GetOrderedSelection(FilePos& start, FilePos& end) const
{
    const bool caretFirst =
        m_posCaret.line < m_posAnchor.line ||
        (m_posCaret.line == m_posAnchor.line && m_posCaret.col < m_posAnchor.col);
    start = caretFirst ? m_posCaret : m_posAnchor;
    end = caretFirst ? m_posAnchor : m_posCaret;
    return !m_posAnchor.SamePlace(m_posCaret);
}

int CFileView::GetSelectionKind()
{
    if (m_posAnchor.SamePlace(m_posCaret))
        return 0;
    return m_posAnchor.line == m_posCaret.line ? 1 : 2;
}

void CFileView::SelectRange(const FilePos& anchor, const FilePos& caret)
{
    InvalidateSelection();
    m_posAnchor = anchor;
    m_posCaret = caret;
    Normalize(m_posAnchor);
    Normalize(m_posCaret);
    InvalidateSelection();
    EnsureCaretRow(true);
    MakeColumnsFit();
    PlaceCaret();
}

int32_t CFileView::GetDisplayWidth(int32_t line)
{
    FilePos end;
    end.line = line;
    end.col = m_nMaxCols;
    Normalize(end);
    return end.dispCol;
}

void CFileView::GotoPosition(long line, long col)
{
    m_posPrev = m_posCaret;
    m_posCaret.line = static_cast<int32_t>(line);
    m_posCaret.col = static_cast<int32_t>(col);
    Normalize(m_posCaret);
    EnsureCaretRow(true);
    MakeColumnsFit();
    m_posAnchor = m_posCaret;
    ::InvalidateRect(m_hWnd, nullptr, FALSE);
    PlaceCaret();
}

// The movements. Each ends with the caret placed, on screen or hidden.

LRESULT CFileView::OnTop(WPARAM, LPARAM)
{
    m_posPrev = m_posCaret;
    m_posCaret = FilePos();
    Normalize(m_posCaret);
    ScrollColumns(SB_TOP);
    ScrollRows(SB_TOP);
    PlaceCaret();
    return 0;
}

// Onto the phantom row behind the last record.
LRESULT CFileView::OnBottom(WPARAM, LPARAM)
{
    m_posPrev = m_posCaret;
    m_posCaret = FilePos();
    m_posCaret.line = RecordCount();
    Normalize(m_posCaret);
    ScrollColumns(SB_TOP);
    ScrollRows(SB_BOTTOM);
    PlaceCaret();
    return 0;
}

LRESULT CFileView::OnLineHome(WPARAM, LPARAM)
{
    m_posCaret.col = m_posCaret.dispCol = 0;
    if (m_nLeftCol > 0)
        ScrollColumns(SB_TOP);
    PlaceCaret();
    return 0;
}

LRESULT CFileView::OnLineEnd(WPARAM, LPARAM)
{
    m_posCaret.col = RecordLength(m_posCaret.line);
    Normalize(m_posCaret);
    if (!ColumnOnScreen(m_posCaret.dispCol))
        ScrollColumns(SB_BOTTOM);
    PlaceCaret();
    return 0;
}

LRESULT CFileView::OnPageUp(WPARAM, LPARAM)
{
    if (!RowOnScreen(m_posCaret.line))
        m_posCaret.line = m_nTopLine;
    m_posCaret.line = std::max(0, m_posCaret.line - (m_nLines - 1));
    Normalize(m_posCaret);
    ScrollRows(SB_PAGEUP);
    PlaceCaret();
    return 0;
}

LRESULT CFileView::OnPageDown(WPARAM, LPARAM)
{
    if (!RowOnScreen(m_posCaret.line))
        m_posCaret.line = m_nTopLine;
    m_posCaret.line = std::min(RecordCount(), m_posCaret.line + (m_nLines - 1));
    Normalize(m_posCaret);
    ScrollRows(SB_PAGEDOWN);
    PlaceCaret();
    return 0;
}

LRESULT CFileView::OnPageLeft(WPARAM, LPARAM)
{
    m_posCaret.col -= kColumnStep;
    if (m_posCaret.col < 0)
        m_posCaret.col = m_posCaret.dispCol = 0;
    else
        Normalize(m_posCaret);
    ScrollColumns(SB_PAGEUP);
    PlaceCaret();
    return 0;
}

LRESULT CFileView::OnPageRight(WPARAM, LPARAM)
{
    m_posCaret.col += kColumnStep;
    Normalize(m_posCaret);
    ScrollColumns(SB_PAGEDOWN);
    PlaceCaret();
    return 0;
}

LRESULT CFileView::OnScrollDown(WPARAM, LPARAM)
{
    EnsureCaretRow(false);
    ScrollRows(SB_LINEDOWN);
    if (m_posCaret.line < m_nTopLine) {
        m_posCaret.line = m_nTopLine;
        Normalize(m_posCaret);
    }
    MakeColumnsFit();
    PlaceCaret();
    return 0;
}

LRESULT CFileView::OnScrollUp(WPARAM, LPARAM)
{
    EnsureCaretRow(false);
    ScrollRows(SB_LINEUP);
    const int32_t bottom = m_nTopLine + m_nLines - 1;
    if (m_posCaret.line > bottom) {
        m_posCaret.line = std::min(bottom, RecordCount());
        Normalize(m_posCaret);
    }
    MakeColumnsFit();
    PlaceCaret();
    return 0;
}

LRESULT CFileView::OnLineUp(WPARAM, LPARAM)
{
    EnsureCaretRow(false);
    m_posCaret.line = std::max(0, m_posCaret.line - 1);
    Normalize(m_posCaret);
    if (m_posCaret.line < m_nTopLine)
        ScrollRows(SB_LINEUP);
    MakeColumnsFit();
    PlaceCaret();
    return 0;
}

LRESULT CFileView::OnLineDown(WPARAM, LPARAM)
{
    EnsureCaretRow(false);
    m_posCaret.line = std::min(RecordCount(), m_posCaret.line + 1);
    Normalize(m_posCaret);
    if (m_posCaret.line > m_nTopLine + m_nLines - 1)
        ScrollRows(SB_LINEDOWN);
    MakeColumnsFit();
    PlaceCaret();
    return 0;
}

LRESULT CFileView::OnCharLeft(WPARAM, LPARAM)
{
    EnsureCaretRow(false);
    if (--m_posCaret.col < 0) {
        m_posCaret.col = m_posCaret.line > 0 ? RecordLength(m_posCaret.line - 1) : 0;
        return SendMessage(FVM_LINEUP);
    }
    Normalize(m_posCaret);
    if (!ColumnOnScreen(m_posCaret.dispCol))
        ScrollColumns(m_posCaret.dispCol < m_nLeftCol ? SB_PAGEUP : SB_PAGEDOWN);
    PlaceCaret();
    return 0;
}

LRESULT CFileView::OnCharRight(WPARAM, LPARAM)
{
    EnsureCaretRow(false);
    if (++m_posCaret.col > RecordLength(m_posCaret.line)) {
        m_posCaret.col = 0;
        return SendMessage(FVM_LINEDOWN);
    }
    Normalize(m_posCaret);
    if (!ColumnOnScreen(m_posCaret.dispCol))
        ScrollColumns(m_posCaret.dispCol < m_nLeftCol ? SB_PAGEUP : SB_PAGEDOWN);
    PlaceCaret();
    return 0;
}

LRESULT CFileView::OnShowPos(WPARAM wParam, LPARAM lParam)
{
    if (HWND frame = KmGetMainWindow())
        ::PostMessageA(frame, WM_KM_SHOWPOS, wParam, lParam);
    return 0;
}

// Shift, Ctrl, Alt, Caps Lock, Escape, Num Lock and Scroll Lock pass
// silently; a key that does not move is answered with a beep.
LRESULT CFileView::OnKeyDown(WPARAM wParam, LPARAM)
{
    switch (wParam) {
    case VK_SHIFT:
    case VK_CONTROL:
    case VK_MENU:
    case VK_CAPITAL:
    case VK_ESCAPE:
    case VK_NUMLOCK:
    case VK_SCROLL:
        return 0;
    default:
        break;
    }
    const KeyMove* move = std::find_if(std::begin(kKeyMoves), std::end(kKeyMoves),
                                       [wParam](const KeyMove& m) { return m.key == wParam; });
    if (move == std::end(kKeyMoves)) {
        Alert(0);
        return 0;
    }
    if (!m_pFile)
        return 0;
    const bool shift = KeyHeld(VK_SHIFT);
    if (shift)
        m_posDrag = m_posCaret;
    else
        InvalidateSelection();
    SendMessage(KeyHeld(VK_CONTROL) ? move->control : move->plain);
    if (!shift)
        m_posAnchor = m_posCaret;
    else if (!m_posCaret.SamePlace(m_posDrag))
        InvalidateRows(m_posDrag.line, m_posCaret.line);
    ::UpdateWindow(m_hWnd);
    return 0;
}

// A point in the left margin counts as in the first column; a column is the
// boundary between characters nearest to the point.
bool CFileView::PointToPos(POINT point, FilePos& pos)
{
    point.x = std::max<LONG>(point.x, m_rcText.left);
    if (!::PtInRect(&m_rcText, point))
        return false;
    const int y = static_cast<int>(point.y - m_rcText.top);
    const int x = static_cast<int>(point.x - m_rcText.left) + m_nCharWidth / 2;
    pos.line = std::min(RecordCount(), m_nTopLine + y / m_nLineHeight);
    pos.dispCol = m_nLeftCol + x / m_nCharWidth;
    SendMessage(FVM_POINTTOPOS, 0, reinterpret_cast<LPARAM>(&pos));
    return true;
}

void CFileView::FollowDrag()
{
    if (m_posCaret.SamePlace(m_posDrag))
        return;
    InvalidateRows(m_posDrag.line, m_posCaret.line);
    m_posDrag = m_posCaret;
    ::UpdateWindow(m_hWnd);
}

LRESULT CFileView::OnLButtonDown(WPARAM wParam, LPARAM lParam)
{
    if (!m_pFile)
        return 0;
    const bool shift = (wParam & MK_SHIFT) != 0;
    if (!shift) {
        InvalidateSelection();
        m_posAnchor = m_posCaret;
        ::UpdateWindow(m_hWnd);
    }
    ::SetCapture(m_hWnd);
    m_bCapture = true;
    POINT point = PointOf(lParam);
    point.y = std::min<LONG>(point.y, m_rcText.bottom - 1);
    FilePos pos = m_posCaret;
    if (PointToPos(point, pos))
        m_posCaret = pos;
    if (shift)
        InvalidateRows(m_posDrag.line, m_posCaret.line);
    else
        m_posAnchor = m_posCaret;
    m_posDrag = m_posCaret;
    m_nTimerPeriod = 0;
    PlaceCaret();
    ::UpdateWindow(m_hWnd);
    return 0;
}

LRESULT CFileView::OnLButtonUp(WPARAM, LPARAM)
{
    if (m_nTimer)
        ::KillTimer(m_hWnd, m_nTimer);
    m_nTimer = 0;
    if (m_bCapture)
        ::ReleaseCapture();
    m_bCapture = false;
    return 0;
}

// Out of the text while dragging: rows first, so a corner scrolls rows;
// slowly within a row or a column of the edge, fast further out.
LRESULT CFileView::OnMouseMove(WPARAM wParam, LPARAM lParam)
{
    if (!m_bCapture || !(wParam & MK_LBUTTON) || !m_pFile)
        return 0;
    const POINT point = PointOf(lParam);
    if (::PtInRect(&m_rcText, point)) {
        if (m_nTimer)
            ::KillTimer(m_hWnd, m_nTimer);
        m_nTimer = 0;
        FilePos pos = m_posCaret;
        if (PointToPos(point, pos))
            m_posCaret = pos;
        FollowDrag();
        PlaceCaret();
        return 0;
    }
    LONG distance, unit;
    if (point.y >= m_rcText.bottom) {
        m_bScrollVert = true, m_nScrollCode = SB_LINEDOWN;
        distance = point.y - m_rcText.bottom, unit = m_nLineHeight;
    } else if (point.y < m_rcText.top) {
        m_bScrollVert = true, m_nScrollCode = SB_LINEUP;
        distance = m_rcText.top - point.y, unit = m_nLineHeight;
    } else if (point.x >= m_rcText.right) {
        m_bScrollVert = false, m_nScrollCode = SB_LINEDOWN;
        distance = point.x - m_rcText.right, unit = m_nCharWidth;
    } else {
        m_bScrollVert = false, m_nScrollCode = SB_LINEUP;
        distance = m_rcText.left - point.x, unit = m_nCharWidth;
    }
    const UINT period = distance < unit ? kSlowScroll : kFastScroll;
    if (!m_nTimer || period != m_nTimerPeriod) {
        m_nTimer = ::SetTimer(m_hWnd, kAutoScrollTimer, period, nullptr);
        m_nTimerPeriod = period;
    }
    AutoScrollStep();
    return 0;
}

LRESULT CFileView::OnTimer(WPARAM wParam, LPARAM)
{
    if (wParam == kAutoScrollTimer && m_pFile)
        AutoScrollStep();
    return 0;
}

void CFileView::AutoScrollStep()
{
    if (!m_bScrollVert) {
        ScrollColumns(m_nScrollCode);
        return;
    }
    ScrollRows(m_nScrollCode);
    m_posCaret.line = m_nScrollCode == SB_LINEDOWN
                          ? std::min(m_nTopLine + m_nLines - 1, RecordCount())
                          : m_nTopLine;
    SendMessage(FVM_POINTTOPOS, 0, reinterpret_cast<LPARAM>(&m_posCaret));
    PlaceCaret();
    FollowDrag();
}

LRESULT CFileView::OnFontChanged(WPARAM wParam, LPARAM)
{
    if (wParam) {
        LOGFONTA logFont;
        if (theApp.screenFont.GetLogFont(&logFont))
            m_font.CreateFontIndirect(&logFont);
    }
    SendMessage(WM_KM_TABSCHANGED);
    return 0;
}

LRESULT CFileView::OnTabsChanged(WPARAM, LPARAM)
{
    if (m_pFile) {
        m_pFile->SetTabWidth(theApp.tabSize);
        ::InvalidateRect(m_hWnd, nullptr, TRUE);
    }
    return 0;
}

void CFileView::OnFilePrint()
{
    CString text, title;
    text.LoadString(IDS_UNIMPLEMENTED);
    title.LoadString(IDS_PRINTTITLE);
    ::MessageBoxA(m_hWnd, text, title, MB_OK);
}

// Compile stays as the project's rules left it, unless there is no name.
void CFileView::UpdatePopup(HMENU menu, int index)
{
    if (index == POPUP_PROJECT) {
        if (m_flags & CF_UNTITLED)
            GrayItem(menu, ID_PROJECT_COMPILE);
        return;
    }
    CKmChild::UpdatePopup(menu, index);
    switch (index) {
    case POPUP_SEARCH:
        EnableItem(menu, ID_SEARCH_GOTOLINE, true);
        break;
    case POPUP_HELP:
        EnableItem(menu, ID_HELP_FILESTATS, !(theApp.flags & KF_NOSTATUSBAR));
        break;
    default:
        break;
    }
}

void CFileView::UpdateEditPopup(HMENU menu, int index)
{
    CKmChild::UpdateEditPopup(menu, index);
    const bool selection = !m_posAnchor.SamePlace(m_posCaret);
    EnableItem(menu, ID_EDIT_COPY, selection);
    EnableItem(menu, ID_EDIT_COPYAPPEND, selection);
}
