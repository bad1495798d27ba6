#include "edit/KmFileEdit.h"

#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "app/Settings.h"
#include "edit/FileUtil.h"
#include "framework/File.h"
#include "resources/KmIds.h"

#include <commdlg.h>
#include <cstring>
#include <new>

IMPLEMENT_DYNAMIC(CKmFileEdit, CKmChild)

// clang-format off
BEGIN_MESSAGE_MAP(CKmFileEdit, CKmChild)
    ON_MESSAGE(WM_CREATE, OnCreate)
    ON_MESSAGE(WM_CLOSE, OnClose)
    ON_MESSAGE(WM_QUERYENDSESSION, OnQueryEndSession)
    ON_MESSAGE(WM_SIZE, OnSize)
    ON_MESSAGE(WM_SETFOCUS, OnSetFocus)
    ON_MESSAGE(WM_KM_GOTOPOS, OnGotoPos)
    ON_MESSAGE(WM_KM_GETPOS, OnGetPos)
    ON_MESSAGE(WM_KM_FONTCHANGED, OnFontChanged)
    ON_MESSAGE(WM_KM_TABSCHANGED, OnTabsChanged)
    ON_CONTROL(EN_CHANGE, IDC_EDIT, OnEditChange)
    ON_CONTROL(EN_ERRSPACE, IDC_EDIT, OnEditErrSpace)
    ON_CONTROL(EN_KM_CARETMOVED, IDC_EDIT, OnCaretMoved)
    ON_COMMAND(ID_FILE_SAVE, OnFileSave)
    ON_COMMAND(ID_FILE_SAVEAS, OnFileSaveAs)
    ON_COMMAND(ID_FILE_PRINT, OnFilePrint)
    ON_COMMAND(ID_EDIT_PASTEFILE, OnEditPasteFile)
    ON_COMMAND(ID_EDIT_UNDO, OnEditUndo)
    ON_COMMAND(ID_EDIT_CUT, OnEditCut)
    ON_COMMAND(ID_EDIT_COPY, OnEditCopy)
    ON_COMMAND(ID_EDIT_PASTE, OnEditPaste)
    ON_COMMAND(ID_HELP_FILESTATS, OnFileStats)
    ON_COMMAND_RANGE(ID_EDIT_REDO, ID_EDIT_SELFWDSTART, OnNotYetCommand)
    ON_COMMAND_RANGE(ID_SEARCH_MARK, ID_SEARCH_MATCHBRACE, OnNotYetCommand)
    ON_COMMAND_RANGE(ID_SET_INSERT, ID_SET_CLEAN, OnNotYetCommand)
    ON_COMMAND_RANGE(ID_HELP_CONTEXT_CHILD, ID_HELP_CONTEXT_CHILD, OnNotYetCommand)
    ON_COMMAND_RANGE(ID_HELP_SDK, ID_HELP_ENVIRONMENT, OnNotYetCommand)
END_MESSAGE_MAP()
// clang-format on

namespace {

const int kMarginWidth = 8; // selection strip at the child's left edge
int g_untitledCount = 0;    // File1, File2, ...: never goes back

// Moves the icon-title blank: for an iconic window the last backslash of the
// path becomes a blank so the title can wrap, and back when restored.
void SwapLastSeparator(CString& title, char from, char to)
{
    int at = title.ReverseFind(from);
    if (at > 0 && title[at - 1] != ':')
        title.SetAt(at, to);
}

CKmFrame* Frame() { return theApp.Frame(); }

} // namespace

CKmFileEdit::CKmFileEdit(const char* path, unsigned long flags) : CKmChild(flags)
{
    m_flags |= CF_FILE;
    if (path)
        m_flags &= ~CF_UNTITLED;
}

CKmFileEdit* CKmFileEdit::Open(const char* path, unsigned long flags)
{
    CKmFileEdit* window = new CKmFileEdit(path, flags);
    CString title;
    if (path) {
        title = path;
        title.MakeLower();
        SplitDir(title, window->m_workDir);
    } else {
        CString file;
        file.LoadString(IDS_FILE);
        title.Format("%s%d", file.c_str(), ++g_untitledCount);
    }
    if (!window->CreateWindowFor(title)) {
        if (window->m_hWnd)
            window->MDIDestroy(); // the window deletes its object
        else
            delete window;
        return nullptr;
    }
    if (path) {
        if (!window->LoadIntoEdit(title, true)) {
            window->MDIDestroy();
            return nullptr;
        }
        window->ShowFileStats(title);
    }
    return window;
}

bool CKmFileEdit::CreateWindowFor(const char* title)
{
    CKmFrame* frame = Frame();
    if (!frame)
        return false;
    const char* className = KmRegisterWndClass(
        CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW),
        reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1),
        ::LoadIconA(KmGetResourceHandle(), MAKEINTRESOURCEA(IDI_EDITFILE)));
    DWORD style = WS_VISIBLE;
    if (theApp.arrange == 2)
        style |= WS_MAXIMIZE;
    return className && Create(className, title, style, kRectDefault, frame);
}

LRESULT CKmFileEdit::OnCreate(WPARAM wParam, LPARAM lParam)
{
    if (!m_edit.Create(m_hWnd, m_flags))
        return -1;
    m_edit.SendMessage(EM_LIMITTEXT, 0);
    m_edit.SendMessage(EM_SETREADONLY, (m_flags & CF_READONLY) != 0);
    SendMessage(WM_KM_FONTCHANGED, 0);
    return CKmChild::OnCreate(wParam, lParam);
}

bool CKmFileEdit::LoadIntoEdit(const char* path, bool remember)
{
    HLOCAL block = reinterpret_cast<HLOCAL>(m_edit.SendMessage(EM_GETHANDLE));
    HLOCAL loaded = LoadTextBlock(path, 0xFFFFFFFFu, block, m_format, m_flags);
    if (!loaded)
        return false;
    m_edit.SendMessage(EM_SETHANDLE, reinterpret_cast<WPARAM>(loaded));
    m_flags &= ~CF_MODIFIED;
    if (remember)
        theApp.RememberFile(path);
    return true;
}

namespace {

// The offer when the text does not fit: a read-only view of the file.
void OfferReadOnlyView(const char* path, unsigned long childFlags)
{
    if (KmMessageBox(nullptr, 33, IDS_NOMEMORY_VIEW, path) == IDOK)
        if (CKmFrame* frame = Frame())
            frame->OpenFileFlags(path, childFlags | CF_READONLY);
}

// Grows block (or allocates one) to size bytes of movable local memory.
HLOCAL GrowBlock(HLOCAL block, SIZE_T size)
{
    if (block)
        return ::LocalReAlloc(block, size, LMEM_MOVEABLE);
    return ::LocalAlloc(LMEM_MOVEABLE, size);
}

// The questions about a text that was read: control bytes, then terminators.
bool AcceptText(const char* text, size_t length, const char* path, FileFormat& state,
                size_t& count)
{
    int bad = FindNonAnsiByte(text, length);
    if (bad >= 0 &&
        KmMessageBox(nullptr, 36, IDS_NONANSI, static_cast<unsigned char>(text[bad]), path) !=
            IDYES)
        return false;
    state = DetectFormat(text, length, count);
    if (state == FF_NONE || state == FF_MIXED) {
        if (KmMessageBox(nullptr, 36, IDS_BADTERMINATORS, path) != IDYES)
            return false;
        state = FF_DOS;
    }
    return true;
}

} // namespace

HLOCAL CKmFileEdit::LoadTextBlock(const char* path, DWORD maxSize, HLOCAL block,
                                  FileFormat& format, unsigned long childFlags)
{
    CFile file;
    CFileException error;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyWrite, &error)) {
        ReportFileError(path, error, 48);
        return nullptr;
    }
    uint64_t length64 = 0;
    try {
        length64 = file.GetLength();
    } catch (const CFileException& e) {
        ReportFileError(path, e, 48);
        file.Abort();
        return nullptr;
    }
    HLOCAL grown = nullptr;
    if (length64 <= maxSize && length64 < 0xFFFFFFFFu)
        grown = GrowBlock(block, static_cast<SIZE_T>(length64) + 1);
    if (!grown) {
        file.Abort();
        OfferReadOnlyView(path, childFlags);
        return nullptr;
    }
    block = grown;
    const size_t length = static_cast<size_t>(length64);

    bool good = true;
    char* text = static_cast<char*>(::LocalLock(block));
    try {
        size_t done = 0;
        while (done < length) {
            unsigned chunk = length - done > 0x40000000u ? 0x40000000u
                                                         : static_cast<unsigned>(length - done);
            unsigned got = file.Read(text + done, chunk);
            if (got == 0)
                break;
            done += got;
        }
        text[done] = '\0';
    } catch (const CFileException& e) {
        ReportFileError(path, e, 48);
        good = false;
    }
    file.Abort();

    FileFormat state = FF_DOS;
    size_t count = 0;
    if (good && length != 0)
        good = AcceptText(text, length, path, state, count);
    ::LocalUnlock(block);

    if (good && (state == FF_UNIX || state == FF_MAC)) {
        // Each lone terminator becomes CR LF, expanded within the same block.
        uint64_t newSize = static_cast<uint64_t>(length) + count;
        HLOCAL wider = newSize < maxSize && newSize < 0xFFFFFFFFu
                           ? ::LocalReAlloc(block, static_cast<SIZE_T>(newSize) + 1, LMEM_MOVEABLE)
                           : nullptr;
        if (!wider) {
            OfferReadOnlyView(path, childFlags);
            return nullptr;
        }
        block = wider;
        char* converted = static_cast<char*>(::LocalLock(block));
        ExpandTerminators(converted, length, count, state);
        ::LocalUnlock(block);
    }
    format = state;
    return good ? block : nullptr;
}

int CKmFileEdit::GetSelectionKind()
{
    DWORD start = 0, end = 0;
    m_edit.SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                       reinterpret_cast<LPARAM>(&end));
    if (start == end)
        return 0;
    HLOCAL block = reinterpret_cast<HLOCAL>(m_edit.SendMessage(EM_GETHANDLE));
    const char* text = static_cast<const char*>(::LocalLock(block));
    bool multiLine = text && memchr(text + start, '\n', end - start) != nullptr;
    ::LocalUnlock(block);
    return multiLine ? 2 : 1;
}

namespace {

void Enable(HMENU menu, UINT id, bool enabled)
{
    ::EnableMenuItem(menu, id, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
}

void Check(HMENU menu, UINT id, bool checked)
{
    ::CheckMenuItem(menu, id, MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED));
}

} // namespace

void CKmFileEdit::UpdatePopup(HMENU menu, int index)
{
    const bool readOnly = (m_flags & CF_READONLY) != 0;
    const bool modified = (m_flags & CF_MODIFIED) != 0;
    switch (index) {
    case 0:
        Enable(menu, ID_FILE_SAVE, modified && !(m_flags & CF_UNTITLED));
        Enable(menu, ID_FILE_SAVEAS, true);
        Enable(menu, ID_FILE_PRINT, true);
        break;
    case 1:
        UpdateEditPopup(menu, 0);
        break;
    case 2:
        if (readOnly) { // else as the frame set them for the pattern
            Enable(menu, ID_SEARCH_REPLACE, false);
            Enable(menu, ID_SEARCH_REPLACENEXT, false);
        }
        for (UINT id : {ID_SEARCH_MARK, ID_SEARCH_GOTOMARK, ID_SEARCH_GOTOLINE,
                        ID_SEARCH_MATCHBRACE})
            Enable(menu, id, true);
        break;
    case 3:
        Check(menu, ID_SET_INSERT, !(m_flags & CF_OVERTYPE));
        for (UINT id : {ID_SET_ALIGN, ID_SET_INDENT, ID_SET_READONLY, ID_SET_SHOWHSCROLL,
                        ID_SET_SHOWVSCROLL})
            Enable(menu, id, true);
        Check(menu, ID_SET_ALIGN, (m_flags & CF_ALIGN) != 0);
        Check(menu, ID_SET_INDENT, (m_flags & CF_BLOCKINDENT) != 0);
        Check(menu, ID_SET_READONLY, readOnly);
        Check(menu, ID_SET_SHOWHSCROLL, (m_flags & CF_HSCROLL) != 0);
        Check(menu, ID_SET_SHOWVSCROLL, (m_flags & CF_VSCROLL) != 0);
        Enable(menu, ID_SET_CLEAN, modified && !readOnly);
        break;
    case 7:
        Enable(menu, ID_HELP_FILESTATS, !(theApp.flags & KF_NOSTATUSBAR));
        for (UINT id : {ID_HELP_CONTEXT, ID_HELP_SDK, ID_HELP_ENVIRONMENT})
            Enable(menu, id, true);
        break;
    default:
        break;
    }
}

void CKmFileEdit::UpdateEditPopup(HMENU menu, int)
{
    const bool readOnly = (m_flags & CF_READONLY) != 0;
    DWORD start = 0, end = 0;
    m_edit.SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                       reinterpret_cast<LPARAM>(&end));
    const bool selection = start != end;
    const bool empty = m_edit.SendMessage(WM_GETTEXTLENGTH) == 0;
    Enable(menu, ID_EDIT_UNDO, m_edit.SendMessage(EM_CANUNDO) != 0);
    Enable(menu, ID_EDIT_PASTEFILE, !readOnly);
    Enable(menu, ID_EDIT_COPY, selection);
    Enable(menu, ID_EDIT_COPYAPPEND, selection);
    for (UINT id : {ID_EDIT_CUT, ID_EDIT_CUTAPPEND, ID_EDIT_CAPITALIZE})
        Enable(menu, id, !readOnly && selection);
    Enable(menu, ID_EDIT_TRANSPOSE, !readOnly && !selection);
    Enable(menu, ID_EDIT_SHIFTRIGHT, !readOnly);
    for (UINT id : {ID_EDIT_SHIFTLEFT, ID_EDIT_UPPERCASE, ID_EDIT_LOWERCASE, ID_EDIT_TOGGLECASE})
        Enable(menu, id, !readOnly && !empty);
    Enable(menu, ID_EDIT_PASTE, !readOnly && ::IsClipboardFormatAvailable(CF_TEXT));
}

// Writes the text beside the file and puts it in the file's place only when
// the whole write succeeded, so a failed save never destroys the file.
bool CKmFileEdit::WriteTextTo(const char* name)
{
    CString dir;
    if (!SplitDir(name, dir))
        GetCurrentDir(dir);
    char temp[MAX_PATH];
    if (!::GetTempFileNameA(dir, "KMT", 0, temp)) {
        ReportFileError(name, CFileException(CFileException::OsErrorToException(
                                                 static_cast<long>(::GetLastError()))),
                        48);
        return false;
    }

    int textLength = m_edit.SendMessage(WM_GETTEXTLENGTH) > 0
                         ? static_cast<int>(m_edit.SendMessage(WM_GETTEXTLENGTH))
                         : 0;
    HLOCAL block = reinterpret_cast<HLOCAL>(m_edit.SendMessage(EM_GETHANDLE));
    const char* text = static_cast<const char*>(::LocalLock(block));
    size_t length = text ? strnlen(text, static_cast<size_t>(textLength)) : 0;
    char* converted = nullptr;
    if (m_format != FF_DOS) {
        converted = static_cast<char*>(::GlobalAlloc(GMEM_FIXED, length + 1));
        if (converted)
            length = ContractTerminators(text, length, converted, m_format);
        else
            OutOfMemoryNotice(); // the text is written as it stands
    }

    bool written = false;
    CFile file;
    try {
        CFileException error;
        if (!file.Open(temp, CFile::modeWrite | CFile::modeCreate | CFile::shareExclusive, &error))
            throw error;
        const char* out = converted ? converted : text;
        size_t done = 0;
        while (done < length) {
            unsigned chunk = length - done > 0x40000000u ? 0x40000000u
                                                         : static_cast<unsigned>(length - done);
            file.Write(out + done, chunk);
            done += chunk;
        }
        file.Close();
        written = true;
    } catch (const CFileException& e) {
        file.Abort();
        ReportFileError(name, e, 48);
    }
    if (converted)
        ::GlobalFree(converted);
    ::LocalUnlock(block);

    if (written) {
        DWORD attributes = ::GetFileAttributesA(name);
        bool backedUp = false;
        if ((theApp.flags & KF_BACKUP) && attributes != INVALID_FILE_ATTRIBUTES)
            backedUp = MakeBackup(name); // a failed backup does not stop the save
        if (::MoveFileExA(temp, name, MOVEFILE_REPLACE_EXISTING)) {
            if (attributes != INVALID_FILE_ATTRIBUTES)
                ::SetFileAttributesA(name, attributes);
            return true;
        }
        DWORD os = ::GetLastError();
        if (backedUp) // the original goes back to its name
            ::MoveFileA(BackupName(name), name);
        ReportFileError(name, CFileException(CFileException::OsErrorToException(
                                                 static_cast<long>(os)),
                                             static_cast<long>(os)),
                        48);
    }
    ::DeleteFileA(temp);
    return false;
}

bool CKmFileEdit::WriteEditFile()
{
    if (!(m_flags & CF_MODIFIED))
        return true;
    CString name;
    GetTitle(name);
    int dot = name.ReverseFind('.');
    if (dot < 0 || dot < name.ReverseFind('\\')) {
        CString extension;
        if (extension.LoadString(IDS_DEFAULTEXT) && extension != " ")
            name += extension;
    }
    if (!WriteTextTo(name))
        return false;
    m_flags &= ~CF_MODIFIED;
    theApp.RememberFile(name);
    return true;
}

bool CKmFileEdit::AskSaveAsName()
{
    CString title;
    GetTitle(title);
    if (!(m_flags & CF_UNTITLED))
        title = title.Mid(title.ReverseFind('\\') + 1);

    char path[MAX_PATH];
    lstrcpynA(path, title, sizeof path);
    OPENFILENAMEA ofn = {};
    ofn.lStructSize = sizeof ofn;
    ofn.hwndOwner = KmGetMainWindow();
    ofn.lpstrFile = path;
    ofn.nMaxFile = sizeof path;
    ofn.Flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT;
    if (!::GetSaveFileNameA(&ofn)) {
        theApp.recentFilesDirty = 1;
        return false;
    }
    CString chosen(path);
    chosen.MakeLower();
    CString old;
    GetTitle(old);
    if (chosen != old.c_str() && Frame() && Frame()->FindChildByPath(chosen)) {
        KmMessageBox(nullptr, 48, IDS_OPENELSEWHERE, chosen.c_str());
        return false;
    }
    SetTitle(chosen);
    SplitDir(chosen, m_workDir);
    SyncCurrentDir();
    return true;
}

bool CKmFileEdit::SaveFile(bool saveAs)
{
    CString oldTitle;
    unsigned long oldModified = m_flags & CF_MODIFIED;
    if (saveAs) {
        GetTitle(oldTitle);
        if (!AskSaveAsName())
            return false;
        m_flags |= CF_MODIFIED; // Save As writes even an unmodified file
    }
    if (!WriteEditFile()) {
        if (saveAs) {
            SetTitle(oldTitle);
            m_flags = (m_flags & ~CF_MODIFIED) | oldModified;
        }
        return false;
    }
    if (saveAs) {
        CString title;
        GetTitle(title);
        theApp.RememberFile(title);
        m_flags &= ~CF_UNTITLED;
    }
    ShowFileStats(nullptr);
    if (theApp.statusBar.Exists())
        theApp.statusBar.SetPaneState(theApp.paneClean, (m_flags & CF_MODIFIED) != 0);
    return true;
}

bool CKmFileEdit::QuerySave(unsigned promptId)
{
    if (!(m_flags & CF_MODIFIED))
        return true;
    int answer = IDYES;
    if (!(theApp.flags & KF_AUTOSAVE) && promptId != 0) {
        CString title;
        GetTitle(title);
        answer = KmMessageBox(nullptr, 35, promptId, title.c_str());
    } else if ((theApp.flags & KF_AUTOSAVE) && theApp.statusBar.Exists()) {
        theApp.statusBar.SetTextId(IDS_AUTOSAVE, 5);
    }
    if (answer == IDYES)
        return SaveFile((m_flags & CF_UNTITLED) != 0);
    return answer == IDNO;
}

void CKmFileEdit::ShowFileStats(const char* path)
{
    CString title;
    if (!path) {
        GetTitle(title);
        path = title;
    }
    CString format, text;
    if (!format.LoadString(IDS_FILESTATS))
        return;
    text.Format(format, path, static_cast<long>(m_edit.SendMessage(WM_GETTEXTLENGTH)),
                static_cast<long>(m_edit.SendMessage(EM_GETLINECOUNT)));
    if (theApp.statusBar.Exists())
        theApp.statusBar.SetText(text, 5);
}

LRESULT CKmFileEdit::OnClose(WPARAM, LPARAM)
{
    if (!QuerySave(IDS_SAVE_BEFORE_CLOSING))
        return 0;
    m_edit.DestroyWindow();
    return Default();
}

LRESULT CKmFileEdit::OnQueryEndSession(WPARAM, LPARAM)
{
    return QuerySave(IDS_SAVE_BEFORE_CLOSING) ? 1 : 0;
}

LRESULT CKmFileEdit::OnSize(WPARAM wParam, LPARAM lParam)
{
    if ((m_flags & CF_FILE) && !(m_flags & CF_UNTITLED)) {
        CString title;
        GetWindowText(title);
        if (wParam == SIZE_MINIMIZED)
            SwapLastSeparator(title, '\\', ' ');
        else
            SwapLastSeparator(title, ' ', '\\');
        SetWindowText(title);
    }
    if ((wParam == SIZE_RESTORED || wParam == SIZE_MAXIMIZED) && m_edit.m_hWnd)
        ::MoveWindow(m_edit.m_hWnd, kMarginWidth, 0, LOWORD(lParam) - kMarginWidth,
                     HIWORD(lParam), TRUE);
    return CKmChild::OnSize(wParam, lParam);
}

LRESULT CKmFileEdit::OnSetFocus(WPARAM, LPARAM)
{
    SyncCurrentDir();
    if (m_edit.m_hWnd)
        ::SetFocus(m_edit.m_hWnd);
    OnCaretMoved();
    return 0;
}

LRESULT CKmFileEdit::OnGotoPos(WPARAM wParam, LPARAM lParam)
{
    m_edit.GotoLine(static_cast<long>(lParam), static_cast<long>(wParam));
    return 0;
}

LRESULT CKmFileEdit::OnGetPos(WPARAM, LPARAM lParam)
{
    long line, column;
    m_edit.GetLineColumn(line, column);
    uint32_t* out = reinterpret_cast<uint32_t*>(lParam);
    out[0] = static_cast<uint32_t>(line + 1);
    out[1] = static_cast<uint32_t>(column + 1);
    return 0;
}

LRESULT CKmFileEdit::OnFontChanged(WPARAM wParam, LPARAM)
{
    if (wParam) {
        LOGFONTA logFont;
        if (theApp.screenFont.GetLogFont(&logFont))
            m_font.CreateFontIndirect(&logFont);
    }
    HFONT font = m_font.m_hFont ? m_font.m_hFont
                                : static_cast<HFONT>(::GetStockObject(SYSTEM_FIXED_FONT));
    m_edit.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    HDC dc = ::GetDC(m_edit.m_hWnd);
    HGDIOBJ old = ::SelectObject(dc, font);
    TEXTMETRICA metrics;
    if (::GetTextMetricsA(dc, &metrics))
        m_edit.m_lineHeight = metrics.tmHeight + metrics.tmExternalLeading;
    ::SelectObject(dc, old);
    ::ReleaseDC(m_edit.m_hWnd, dc);
    SendMessage(WM_KM_TABSCHANGED, 1);
    return 0;
}

LRESULT CKmFileEdit::OnTabsChanged(WPARAM, LPARAM)
{
    int stop = theApp.tabSize * 4;
    m_edit.SendMessage(EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&stop));
    ::InvalidateRect(m_edit.m_hWnd, nullptr, FALSE);
    return 0;
}

void CKmFileEdit::OnEditChange()
{
    bool wasClean = !(m_flags & CF_MODIFIED);
    m_flags |= CF_MODIFIED;
    if (wasClean && theApp.statusBar.Exists())
        theApp.statusBar.SetPaneState(theApp.paneClean, true);
}

void CKmFileEdit::OnEditErrSpace() { m_outOfSpace = 1; }

void CKmFileEdit::OnCaretMoved()
{
    long line, column;
    m_edit.GetLineColumn(line, column);
    if (HWND frame = KmGetMainWindow())
        ::PostMessageA(frame, WM_KM_SHOWPOS, static_cast<WPARAM>(column + 1), line + 1);
}

void CKmFileEdit::OnFileSave()
{
    if (!(m_flags & CF_MODIFIED)) {
        Alert(MB_ICONEXCLAMATION);
        return;
    }
    SaveFile((m_flags & CF_UNTITLED) != 0);
}

void CKmFileEdit::OnFileSaveAs() { SaveFile(true); }

// Printing answers this once the print engine is there.
void CKmFileEdit::OnFilePrint() { Alert(MB_ICONEXCLAMATION); }

// The control's single-level undo.
void CKmFileEdit::OnEditUndo()
{
    if (!m_edit.SendMessage(EM_CANUNDO))
        Alert(MB_ICONEXCLAMATION);
    else
        m_edit.SendMessage(EM_UNDO);
}

// Cut and paste are recorded by themselves, not merged with earlier typing.
void CKmFileEdit::OnEditCut()
{
    m_edit.SendMessage(EM_EMPTYUNDOBUFFER);
    m_edit.SendMessage(WM_CUT);
}

void CKmFileEdit::OnEditCopy() { m_edit.SendMessage(WM_COPY); }

void CKmFileEdit::OnEditPaste()
{
    m_edit.SendMessage(EM_EMPTYUNDOBUFFER);
    m_edit.SendMessage(WM_PASTE);
}

void CKmFileEdit::OnFileStats() { ShowFileStats(nullptr); }

// Edit commands that are not there yet.
void CKmFileEdit::OnNotYetCommand(UINT) { Alert(MB_ICONEXCLAMATION); }

void CKmFileEdit::OnEditPasteFile()
{
    char path[MAX_PATH] = "";
    OPENFILENAMEA ofn = {};
    ofn.lStructSize = sizeof ofn;
    ofn.hwndOwner = KmGetMainWindow();
    ofn.lpstrFile = path;
    ofn.nMaxFile = sizeof path;
    ofn.Flags = OFN_HIDEREADONLY | OFN_FILEMUSTEXIST;
    if (!::GetOpenFileNameA(&ofn))
        return;
    FileFormat ignored;
    DWORD current = static_cast<DWORD>(m_edit.SendMessage(WM_GETTEXTLENGTH));
    HLOCAL block = LoadTextBlock(path, ~current, nullptr, ignored, m_flags);
    if (!block)
        return;
    const char* text = static_cast<const char*>(::LocalLock(block));
    m_edit.SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
    ::LocalUnlock(block);
    ::LocalFree(block);
}
