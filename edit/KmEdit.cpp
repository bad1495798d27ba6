#include "edit/KmEdit.h"

#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/Settings.h"
#include "edit/EditText.h"
#include "resources/KmIds.h"

#include <new>
#include <string>

IMPLEMENT_DYNAMIC(CKmEdit, CWnd)

// clang-format off
BEGIN_MESSAGE_MAP(CKmEdit, CWnd)
    ON_MESSAGE(WM_CHAR, OnChar)
    ON_MESSAGE(WM_KEYDOWN, OnKeyDown)
    ON_MESSAGE(WM_LBUTTONUP, OnLButtonUp)
    ON_MESSAGE(WM_LBUTTONDBLCLK, OnLButtonDblClk)
    ON_MESSAGE(WM_RBUTTONDOWN, OnRButtonDown)
    ON_MESSAGE(WM_CUT, OnDefaultThenSignal)
    ON_MESSAGE(WM_PASTE, OnDefaultThenSignal)
    ON_MESSAGE(EM_UNDO, OnUndo)
    ON_MESSAGE(WM_SETFONT, OnSetFont)
END_MESSAGE_MAP()
// clang-format on

namespace
{
const char kEnter = '\r';
const char kFirstPrintable = ' ';
} // namespace

bool IsEditWordByte(unsigned char byte)
{
    return byte == '_' || ::IsCharAlphaNumericA(static_cast<char>(byte));
}

namespace
{

unsigned char UpperByte(unsigned char byte)
{
    char text[1] = {static_cast<char>(byte)};
    ::CharUpperBuffA(text, 1);
    return static_cast<unsigned char>(text[0]);
}

unsigned char LowerByte(unsigned char byte)
{
    char text[1] = {static_cast<char>(byte)};
    ::CharLowerBuffA(text, 1);
    return static_cast<unsigned char>(text[0]);
}

bool IsUpperByte(unsigned char byte)
{
    return ::IsCharUpperA(static_cast<char>(byte)) != FALSE;
}

} // namespace

const CaseMap EditCaseMap = {UpperByte, LowerByte, IsUpperByte};

void CEditText::Lock()
{
    Unlock();
    m_block = reinterpret_cast<HLOCAL>(m_edit.SendMessage(EM_GETHANDLE));
    text = static_cast<const char*>(::LocalLock(m_block));
    if (!text) {
        m_block = nullptr;
        text = "";
    }
}

void CEditText::Unlock()
{
    if (m_block)
        ::LocalUnlock(m_block);
    m_block = nullptr;
}

bool CKmEdit::Create(HWND parent, unsigned long childFlags)
{
    DWORD style = WS_CHILD | WS_VISIBLE | WS_MAXIMIZE | ES_MULTILINE | ES_AUTOVSCROLL |
                  ES_AUTOHSCROLL | ES_NOHIDESEL;
    if (childFlags & CF_HSCROLL)
        style |= WS_HSCROLL;
    if (childFlags & CF_VSCROLL)
        style |= WS_VSCROLL;
    HWND hwnd = ::CreateWindowExA(0, "EDIT", "", style, 0, 0, 0, 0, parent,
                                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_EDIT)),
                                  ::GetModuleHandleA(nullptr), nullptr);
    return hwnd && SubclassWindow(hwnd);
}

CKmChild* CKmEdit::Parent() const
{
    return KmChildOf(::GetParent(m_hWnd));
}

void CKmEdit::PostCaretMoved() const
{
    ::PostMessageA(::GetParent(m_hWnd), WM_COMMAND, MAKEWPARAM(IDC_EDIT, EN_KM_CARETMOVED),
                   reinterpret_cast<LPARAM>(m_hWnd));
}

void CKmEdit::SetSelection(DWORD start, DWORD end)
{
    SendMessage(EM_SETSEL, start, end);
    SendMessage(EM_SCROLLCARET);
    PostCaretMoved();
}

void CKmEdit::GetSel(DWORD& start, DWORD& end) const
{
    start = end = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
}

void CKmEdit::GetLineColumn(long& line, long& column) const
{
    line = column = 0;
    if (::IsIconic(::GetParent(m_hWnd)))
        return;
    DWORD start, end;
    GetSel(start, end);
    DWORD offset = start > end ? start : end;
    line = static_cast<long>(SendMessage(EM_LINEFROMCHAR, offset));
    column = static_cast<long>(offset - SendMessage(EM_LINEINDEX, static_cast<WPARAM>(line)));
}

void CKmEdit::GotoLine(long line, long column)
{
    long lastLine = static_cast<long>(SendMessage(EM_GETLINECOUNT)) - 1;
    if (line > lastLine)
        line = lastLine;
    else if (line > 0)
        line -= 1;

    DWORD start, end;
    GetSel(start, end);
    m_lastPos = end;

    long target = static_cast<long>(SendMessage(EM_LINEINDEX, static_cast<WPARAM>(line)));
    target += column > 0 ? column - 1 : column;
    SetSelection(static_cast<DWORD>(target), static_cast<DWORD>(target));
    CentreCaretLine();
}

long CKmEdit::VisibleLines() const
{
    RECT client;
    ::GetClientRect(m_hWnd, &client);
    return m_lineHeight > 0 ? (client.bottom - client.top) / m_lineHeight : 0;
}

bool CKmEdit::CaretOnBottomLine(long line) const
{
    const long visible = VisibleLines();
    const long first = static_cast<long>(SendMessage(EM_GETFIRSTVISIBLELINE));
    return visible > 0 && line == first + visible - 1;
}

void CKmEdit::CentreCaretLine()
{
    const long lastLine = static_cast<long>(SendMessage(EM_GETLINECOUNT)) - 1;
    const long line = static_cast<long>(SendMessage(EM_LINEFROMCHAR, static_cast<WPARAM>(-1)));
    if (CaretOnBottomLine(line) && line != lastLine) {
        long by = VisibleLines() / 2;
        if (lastLine - line < by)
            by = lastLine - line;
        m_hScrollByUser = false;
        SendMessage(EM_LINESCROLL, 0, by);
    }
}

long CKmEdit::NextWordPos(int direction) const
{
    DWORD start, end;
    GetSel(start, end);
    CEditText text(*this);
    return ::NextWordPos(text.text, static_cast<long>(start), static_cast<long>(end), direction,
                         IsEditWordByte);
}

// The horizontal bar takes a line's height away: a caret on the bottom
// line is scrolled into view first.
void CKmEdit::ShowBar(int bar, bool show)
{
    const long line = static_cast<long>(SendMessage(EM_LINEFROMCHAR, static_cast<WPARAM>(-1)));
    if (bar == SB_HORZ && show && CaretOnBottomLine(line))
        PostMessage(EM_LINESCROLL, 0, 1);
    ::ShowScrollBar(m_hWnd, bar, show);
}

LRESULT CKmEdit::OnChar(WPARAM wParam, LPARAM)
{
    CKmChild* parent = Parent();
    const unsigned long flags = parent ? parent->m_flags : 0;
    const char typed = static_cast<char>(wParam);
    const bool printable = static_cast<unsigned char>(typed) >= kFirstPrintable;
    if ((flags & CF_READONLY) && printable) {
        parent->Alert(MB_ICONEXCLAMATION);
        return 0;
    }
    if ((flags & CF_OVERTYPE) && printable) {
        DWORD start, end;
        GetSel(start, end);
        if (start == end) {
            CEditText text(*this);
            // Overtype never eats a line end: on the CR it inserts.
            const bool atLineEnd = text.text[end] && text.text[end + 1] == '\n';
            const bool atTextEnd = text.text[end] == 0;
            text.Unlock();
            if (!atLineEnd && !atTextEnd)
                SetSelection(end, end + 1);
        }
        return Default();
    }
    if (!(flags & CF_ALIGN) || typed != kEnter)
        return Default();
    TypeEnter((flags & CF_BLOCKINDENT) != 0);
    return 0;
}

void CKmEdit::TypeEnter(bool blockIndent)
{
    DWORD start, end;
    GetSel(start, end);
    const long lineStart = static_cast<long>(SendMessage(EM_LINEINDEX, static_cast<WPARAM>(-1)));
    EnterIndent indent;
    {
        CEditText text(*this);
        indent = ComputeEnterIndent(text.text, lineStart, static_cast<long>(end), blockIndent,
                                    theApp.tabSize, theApp.shiftWidth);
    }
    // The blanks after the caret go away with the Enter.
    if (indent.blanksEnd != static_cast<long>(end))
        SetSelection(start, static_cast<DWORD>(indent.blanksEnd));
    std::string prefix;
    try {
        prefix = MakeIndent(indent.column, theApp.tabSize);
    } catch (const std::bad_alloc&) {
        prefix.clear();
    }
    Default();
    if (!prefix.empty())
        SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(prefix.c_str()));
}

LRESULT CKmEdit::OnKeyDown(WPARAM wParam, LPARAM)
{
    const bool shift = ::GetKeyState(VK_SHIFT) < 0;
    const bool control = ::GetKeyState(VK_CONTROL) < 0;
    LRESULT result = 0;
    if (wParam == VK_HOME && !control && !shift) {
        SmartHome();
    } else {
        if ((wParam == VK_END || wParam == VK_HOME) && control) {
            DWORD start;
            GetSel(start, m_lastPos);
        }
        result = Default();
    }
    if (wParam != VK_SHIFT && wParam != VK_CONTROL)
        PostCaretMoved();
    return result;
}

// Home alternates between the first text of the line and its column 0.
void CKmEdit::SmartHome()
{
    DWORD start, end;
    GetSel(start, end);
    const long lineStart = static_cast<long>(SendMessage(EM_LINEINDEX, static_cast<WPARAM>(-1)));
    long firstText = lineStart;
    {
        CEditText text(*this);
        IndentColumn(text.text, lineStart, theApp.tabSize, &firstText);
    }
    const DWORD to = firstText != static_cast<long>(end) ? static_cast<DWORD>(firstText)
                                                         : static_cast<DWORD>(lineStart);
    SetSelection(to, to);
}

LRESULT CKmEdit::OnLButtonUp(WPARAM, LPARAM)
{
    LRESULT result = Default();
    PostCaretMoved();
    return result;
}

LRESULT CKmEdit::OnLButtonDblClk(WPARAM, LPARAM)
{
    if (theApp.flags & KF_SPACEDELIM)
        return OnLButtonUp(0, 0);
    DWORD start, end;
    GetSel(start, end);
    long from, to;
    {
        CEditText text(*this);
        from = WordStart(text.text, static_cast<long>(start), IsEditWordByte);
        to = WordEnd(text.text, static_cast<long>(start), IsEditWordByte);
    }
    SetSelection(static_cast<DWORD>(from), static_cast<DWORD>(to));
    return 0;
}

// The parent shows the context menu.
LRESULT CKmEdit::OnRButtonDown(WPARAM wParam, LPARAM lParam)
{
    POINT point = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    HWND parent = ::GetParent(m_hWnd);
    ::MapWindowPoints(m_hWnd, parent, &point, 1);
    return ::SendMessageA(parent, WM_RBUTTONDOWN, wParam, MAKELPARAM(point.x, point.y));
}

LRESULT CKmEdit::OnDefaultThenSignal(WPARAM, LPARAM)
{
    LRESULT result = Default();
    PostCaretMoved();
    return result;
}

LRESULT CKmEdit::OnUndo(WPARAM, LPARAM)
{
    LRESULT result = Default();
    if (result)
        PostCaretMoved();
    return result;
}

LRESULT CKmEdit::OnSetFont(WPARAM wParam, LPARAM)
{
    HDC dc = ::GetDC(m_hWnd);
    HGDIOBJ old = ::SelectObject(dc, reinterpret_cast<HFONT>(wParam));
    TEXTMETRICA metrics;
    if (::GetTextMetricsA(dc, &metrics))
        m_lineHeight = metrics.tmHeight + metrics.tmExternalLeading;
    ::SelectObject(dc, old);
    ::ReleaseDC(m_hWnd, dc);
    return Default();
}
