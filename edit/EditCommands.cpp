// The editor window's own edit commands: the clipboard's append forms, case
// changes, line shifts, transpose, word motions, Goto Line, Match Brace,
// the window's switches and the help keys.
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "edit/EditText.h"
#include "edit/GotoLineDialog.h"
#include "edit/KmFileEdit.h"
#include "edit/Messages.h"
#include "help/HelpLookup.h"
#include "help/HelpText.h"
#include "resources/KmIds.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string>

namespace
{

struct WordMotion {
    UINT id;
    int direction; // as NextWordPos takes it
    bool extend;
};

const WordMotion kWordMotions[] = {
    {ID_EDIT_MOVEBACKEND, -2, false},   {ID_EDIT_SELBACKEND, -2, true},
    {ID_EDIT_MOVEBACKSTART, -1, false}, {ID_EDIT_SELBACKSTART, -1, true},
    {ID_EDIT_MOVEFWDEND, 2, false},     {ID_EDIT_SELFWDEND, 2, true},
    {ID_EDIT_MOVEFWDSTART, 1, false},   {ID_EDIT_SELFWDSTART, 1, true},
};

const int kQuietShift = 2; // more lines than this are shifted without redrawing

// The clipboard's text, CF_TEXT before CF_OEMTEXT; null if none.
HANDLE ClipboardText()
{
    if (::IsClipboardFormatAvailable(CF_TEXT))
        return ::GetClipboardData(CF_TEXT);
    if (::IsClipboardFormatAvailable(CF_OEMTEXT))
        return ::GetClipboardData(CF_OEMTEXT);
    return nullptr;
}

} // namespace

// Puts what the clipboard holds and the selection after it on the
// clipboard as one text.
bool CKmFileEdit::AppendSelection()
{
    DWORD start, end;
    m_edit.GetSel(start, end);
    if (start == end) {
        ::MessageBeep(0xFFFFFFFF);
        return false;
    }
    if (!::OpenClipboard(m_edit.m_hWnd))
        return false;
    HANDLE old = ClipboardText();
    const SIZE_T oldSize = old ? ::GlobalSize(old) : 0;
    const SIZE_T length = end - start;
    HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, length + oldSize + 1);
    if (!block) {
        OutOfMemoryNotice();
        ::CloseClipboard();
        return false;
    }
    char* out = static_cast<char*>(::GlobalLock(block));
    size_t used = 0;
    if (const char* oldText = old ? static_cast<const char*>(::GlobalLock(old)) : nullptr) {
        used = strnlen(oldText, oldSize);
        memcpy(out, oldText, used);
        ::GlobalUnlock(old);
    }
    CEditText text(m_edit);
    memcpy(out + used, text.text + start, length);
    out[used + length] = 0;
    text.Unlock();
    ::GlobalUnlock(block);
    ::EmptyClipboard();
    ::SetClipboardData(CF_TEXT, block);
    ::CloseClipboard();
    return true;
}

// Without a selection the character at the caret changes, and the caret
// moves on, so that repeated use walks along the word.
void CKmFileEdit::ChangeCase(int mode)
{
    DWORD start, end;
    m_edit.GetSel(start, end);
    const bool empty = start == end;
    const long length = empty ? 1 : static_cast<long>(end - start);
    std::string bytes;
    try {
        CEditText text(m_edit);
        bytes.assign(text.text + start, static_cast<size_t>(length));
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
        return;
    }
    ChangeCaseBytes(&bytes[0], length, mode, EditCaseMap);
    if (empty)
        m_edit.SetSelection(start, start + 1);
    m_edit.SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(bytes.c_str()));
    if (empty)
        m_edit.SetSelection(start + 1, start + 1);
    else
        m_edit.SetSelection(start, end);
}

// Rewrites the indent of every line of the selection, tabs as far as they
// fit; left shifts leave lines without indent alone.
void CKmFileEdit::ShiftLines(int amount)
{
    DWORD selStart, selEnd;
    m_edit.GetSel(selStart, selEnd);
    long start = static_cast<long>(selStart), end = static_cast<long>(selEnd);
    const long first = static_cast<long>(m_edit.SendMessage(EM_LINEFROMCHAR, selStart));
    const long last = static_cast<long>(m_edit.SendMessage(EM_LINEFROMCHAR, selEnd));
    const bool quiet = last - first > kQuietShift;
    HCURSOR cursor = nullptr;
    if (quiet) {
        m_edit.SendMessage(WM_SETREDRAW, FALSE);
        cursor = ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT));
    }
    bool changed = false;
    try {
        for (long line = first; line <= last; ++line) {
            const long lineStart =
                static_cast<long>(m_edit.SendMessage(EM_LINEINDEX, static_cast<WPARAM>(line)));
            long textStart = lineStart;
            short column;
            {
                CEditText text(m_edit);
                column = static_cast<short>(
                    IndentColumn(text.text, lineStart, theApp.tabSize, &textStart));
            }
            if (column == 0 && amount < 1)
                continue;
            const std::string prefix = MakeIndent(std::max(0, column + amount), theApp.tabSize);
            m_edit.SetSelection(static_cast<DWORD>(lineStart), static_cast<DWORD>(textStart));
            m_edit.SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(prefix.c_str()));
            const long delta = static_cast<long>(prefix.size()) - (textStart - lineStart);
            end += delta;
            if (line == first)
                start += delta;
            changed = true;
        }
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
    }
    if (quiet) {
        m_edit.SendMessage(WM_SETREDRAW, TRUE);
        ::InvalidateRect(m_edit.m_hWnd, nullptr, TRUE);
        ::SetCursor(cursor);
    }
    if (!changed)
        return;
    const long firstStart =
        static_cast<long>(m_edit.SendMessage(EM_LINEINDEX, static_cast<WPARAM>(first)));
    const long lastStart =
        static_cast<long>(m_edit.SendMessage(EM_LINEINDEX, static_cast<WPARAM>(last)));
    m_edit.SetSelection(static_cast<DWORD>(std::max(start, firstStart)),
                        static_cast<DWORD>(std::max(end, lastStart)));
}

// Swaps the characters around the caret, or, at a line's start, the line
// with the one above; at a line's end the next line moves up.
void CKmFileEdit::Transpose()
{
    DWORD start, end;
    m_edit.GetSel(start, end);
    long caret = static_cast<long>(start);
    long lineStart = static_cast<long>(
        m_edit.SendMessage(EM_LINEINDEX, m_edit.SendMessage(EM_LINEFROMCHAR, start)));
    CEditText text(m_edit);
    if (start != end || caret == 0 || text.text[caret] == 0) {
        text.Unlock();
        Alert(MB_ICONHAND);
        return;
    }
    if (caret != lineStart && text.text[caret] != '\r') {
        const char swapped[] = {text.text[caret], text.text[caret - 1], 0};
        text.Unlock();
        m_edit.SetSelection(static_cast<DWORD>(caret - 1), static_cast<DWORD>(caret + 1));
        m_edit.SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(swapped));
        m_edit.SetSelection(start, start);
        return;
    }
    if (caret != lineStart) {
        const LRESULT line = m_edit.SendMessage(EM_LINEFROMCHAR, start);
        const LRESULT next = m_edit.SendMessage(EM_LINEINDEX, static_cast<WPARAM>(line + 1));
        if (next != -1 && text.text[next] != 0)
            caret = lineStart = static_cast<long>(next);
    }
    if (caret != lineStart) {
        text.Unlock();
        Alert(MB_ICONHAND);
        return;
    }
    try {
        const long length =
            static_cast<long>(m_edit.SendMessage(EM_LINELENGTH, static_cast<WPARAM>(lineStart)));
        const std::string copy =
            std::string(text.text + lineStart, static_cast<size_t>(length)) + "\r\n";
        text.Unlock();
        m_edit.SetSelection(static_cast<DWORD>(lineStart),
                            static_cast<DWORD>(lineStart + length + 2));
        m_edit.SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(""));
        const LRESULT above =
            m_edit.SendMessage(EM_LINEFROMCHAR, static_cast<WPARAM>(lineStart)) - 1;
        const DWORD to =
            static_cast<DWORD>(m_edit.SendMessage(EM_LINEINDEX, static_cast<WPARAM>(above)));
        m_edit.SetSelection(to, to);
        m_edit.SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(copy.c_str()));
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
    }
}

bool CKmFileEdit::MatchBrace()
{
    DWORD start, end;
    m_edit.GetSel(start, end);
    const long size = static_cast<long>(m_edit.SendMessage(WM_GETTEXTLENGTH));
    CEditText text(m_edit);
    const long partner = ::MatchBrace(text.text, size, static_cast<long>(start));
    text.Unlock();
    if (partner < 0)
        return false;
    m_edit.SetSelection(static_cast<DWORD>(partner), static_cast<DWORD>(partner + 1));
    return true;
}

// --- command handlers

void CKmFileEdit::OnEditRedo()
{
    Alert(MB_ICONEXCLAMATION); // there is no repeat
}

void CKmFileEdit::OnEditCutAppend()
{
    m_edit.SendMessage(EM_EMPTYUNDOBUFFER);
    if (AppendSelection())
        m_edit.SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(""));
}

void CKmFileEdit::OnEditCopyAppend()
{
    AppendSelection();
}

void CKmFileEdit::OnChangeCase(UINT id)
{
    ChangeCase(static_cast<int>(id - ID_EDIT_UPPERCASE));
}

void CKmFileEdit::OnShiftLeft()
{
    ShiftLines(-theApp.shiftWidth);
}

void CKmFileEdit::OnShiftRight()
{
    ShiftLines(theApp.shiftWidth);
}

void CKmFileEdit::OnTranspose()
{
    Transpose();
}

// Extending forward keeps the selection's start, backward its end.
void CKmFileEdit::OnWordMotion(UINT id)
{
    for (const WordMotion& motion : kWordMotions) {
        if (motion.id != id)
            continue;
        DWORD start, end;
        m_edit.GetSel(start, end);
        const DWORD to = static_cast<DWORD>(m_edit.NextWordPos(motion.direction));
        if (!motion.extend)
            m_edit.SetSelection(to, to);
        else if (motion.direction > 0)
            m_edit.SetSelection(start, to);
        else
            m_edit.SetSelection(end, to);
        return;
    }
}

// Bookmarks do not exist; the commands stay for the key table.
void CKmFileEdit::OnBookmark(UINT)
{
    CString title;
    title.LoadString(IDS_TITLE);
    ::MessageBoxA(KmGetMainWindow(), "Unimplemented feature", title, MB_OK);
}

// Proposes the line the caret left at the last long jump.
void CKmFileEdit::OnGotoLine()
{
    const long line = static_cast<long>(m_edit.SendMessage(EM_LINEFROMCHAR, m_edit.m_lastPos)) + 1;
    CGotoLineDialog dialog(KmGetMainWindow(), line);
    if (dialog.DoModal() == IDOK)
        m_edit.GotoLine(dialog.m_line, 1);
}

void CKmFileEdit::OnMatchBrace()
{
    if (MatchBrace())
        return;
    Alert(MB_ICONASTERISK);
    if (theApp.statusBar.Exists())
        theApp.statusBar.SetTextId(IDS_NOMATCHINGBRACE, 5);
}

void CKmFileEdit::OnSetInsert()
{
    m_flags ^= CF_OVERTYPE;
    ShowFlagPanes();
}

// Block Indent cannot be on without Maintain Indentation.
void CKmFileEdit::OnSetAlign()
{
    m_flags ^= CF_ALIGN;
    if (!(m_flags & CF_ALIGN))
        m_flags &= ~CF_BLOCKINDENT;
    ShowFlagPanes();
}

void CKmFileEdit::OnSetIndent()
{
    m_flags ^= CF_BLOCKINDENT;
    if (m_flags & CF_BLOCKINDENT)
        m_flags |= CF_ALIGN;
    ShowFlagPanes();
}

void CKmFileEdit::OnSetReadOnly()
{
    m_flags ^= CF_READONLY;
    m_edit.SendMessage(EM_SETREADONLY, (m_flags & CF_READONLY) != 0);
    ShowFlagPanes();
}

void CKmFileEdit::OnSetClean()
{
    m_flags &= ~CF_MODIFIED;
    m_edit.SendMessage(EM_SETMODIFY, FALSE);
    ShowFlagPanes();
}

// F1 opens the header of an include line wherever the caret stands in it;
// an include line without a name in marks only beeps. Without project
// features there are no help sources, and the editor's own page is shown.
void CKmFileEdit::OnHelpContext()
{
    if (theApp.flags & KF_NOPROJECT) {
        ::WinHelpA(KmGetMainWindow(), theApp.helpPath, HELP_CONTEXT, kHelpEditorNoProject);
        return;
    }
    std::string line;
    {
        const long start = static_cast<long>(m_edit.SendMessage(EM_LINEINDEX, WPARAM(-1)));
        CEditText text(m_edit);
        const char* from = text.text + start;
        line.assign(from, std::strcspn(from, "\n"));
    }
    const long mark = IncludeMarkAt(line.c_str());
    if (mark == kNotInclude)
        WordHelp(0);
    else if (mark == kIncludeWithoutName || !OpenIncludeFile(line.c_str() + mark))
        Alert(MB_ICONEXCLAMATION);
}

void CKmFileEdit::OnWordHelp(UINT id)
{
    WordHelp(id == ID_HELP_SDK ? 1 : 2);
}

void CKmFileEdit::WordHelp(int mode)
{
    const size_t kLongestWord = 63;
    DWORD start = 0, end = 0;
    m_edit.GetSel(start, end);
    std::string word;
    {
        CEditText text(m_edit);
        word = HelpWordAt(text.text, static_cast<long>(start), IsEditWordByte);
    }
    if (word.size() > kLongestWord)
        word.resize(kLongestWord);
    LookupHelp(mode, word.c_str());
}
