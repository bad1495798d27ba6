#include "edit/KmFileEdit.h"

#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "app/Settings.h"
#include "edit/FileUtil.h"
#include "edit/KmFileDialog.h"
#include "edit/Messages.h"
#include "edit/TextFile.h"
#include "print/KmPrinter.h"
#include "resources/KmIds.h"
#include "views/TextFileView.h"

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
    ON_MESSAGE(WM_LBUTTONDOWN, OnMarginButtonDown)
    ON_MESSAGE(WM_LBUTTONDBLCLK, OnMarginDblClk)
    ON_MESSAGE(WM_RBUTTONDOWN, OnMarginRButtonDown)
    ON_CONTROL(EN_CHANGE, IDC_EDIT, OnEditChange)
    ON_CONTROL(EN_ERRSPACE, IDC_EDIT, OnEditErrSpace)
    ON_CONTROL(EN_HSCROLL, IDC_EDIT, OnEditHScroll)
    ON_CONTROL(EN_KM_CARETMOVED, IDC_EDIT, OnCaretMoved)
    ON_COMMAND(ID_FILE_SAVE, OnFileSave)
    ON_COMMAND(ID_FILE_SAVEAS, OnFileSaveAs)
    ON_COMMAND(ID_FILE_PRINT, OnFilePrint)
    ON_COMMAND(ID_EDIT_PASTEFILE, OnEditPasteFile)
    ON_COMMAND(ID_EDIT_UNDO, OnEditUndo)
    ON_COMMAND(ID_EDIT_REDO, OnEditRedo)
    ON_COMMAND(ID_EDIT_CUT, OnEditCut)
    ON_COMMAND(ID_EDIT_COPY, OnEditCopy)
    ON_COMMAND(ID_EDIT_PASTE, OnEditPaste)
    ON_COMMAND(ID_EDIT_CUTAPPEND, OnEditCutAppend)
    ON_COMMAND(ID_EDIT_COPYAPPEND, OnEditCopyAppend)
    ON_COMMAND_RANGE(ID_EDIT_UPPERCASE, ID_EDIT_CAPITALIZE, OnChangeCase)
    ON_COMMAND(ID_EDIT_SHIFTLEFT, OnShiftLeft)
    // Shift Right and Transpose share their numbers with the two back-end
    // word motions and stand first, so they win.
    ON_COMMAND(ID_EDIT_SHIFTRIGHT, OnShiftRight)
    ON_COMMAND(ID_EDIT_TRANSPOSE, OnTranspose)
    ON_COMMAND_RANGE(ID_EDIT_MOVEBACKEND, ID_EDIT_SELFWDSTART, OnWordMotion)
    ON_COMMAND_RANGE(ID_SEARCH_MARK, ID_SEARCH_GOTOMARK, OnBookmark)
    ON_COMMAND(ID_SEARCH_GOTOLINE, OnGotoLine)
    ON_COMMAND(ID_SEARCH_MATCHBRACE, OnMatchBrace)
    ON_COMMAND(ID_SET_INSERT, OnSetInsert)
    ON_COMMAND(ID_SET_ALIGN, OnSetAlign)
    ON_COMMAND(ID_SET_INDENT, OnSetIndent)
    ON_COMMAND(ID_SET_READONLY, OnSetReadOnly)
    ON_COMMAND(ID_SET_CLEAN, OnSetClean)
    ON_COMMAND(ID_HELP_FILESTATS, OnFileStats)
    ON_COMMAND(ID_HELP_CONTEXT_CHILD, OnHelpContext)
    ON_COMMAND_RANGE(ID_HELP_SDK, ID_HELP_ENVIRONMENT, OnWordHelp)
END_MESSAGE_MAP()
// clang-format on

namespace
{

const int kMarginWidth = 8; // selection strip at the child's left edge
int g_untitledCount = 0;    // File1, File2, ...: never goes back

CKmFrame* Frame()
{
    return theApp.Frame();
}

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

bool CKmFileEdit::CreateWindowFor(const char* title, const char* icon)
{
    CKmFrame* frame = Frame();
    if (!frame)
        return false;
    const char* className = KmRegisterWndClass(
        CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW),
        reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1), ::LoadIconA(KmGetResourceHandle(), icon));
    DWORD style = WS_VISIBLE;
    if (theApp.arrange == ARRANGE_MAXIMISED)
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

namespace
{

// The offer when the text does not fit: a read-only view of the file. It
// is made here, not through the frame, which would find the editor being
// made under the same caption and take it for the view.
void OfferReadOnlyView(const char* path, unsigned long childFlags)
{
    if (KmMessageBox(nullptr, MB_OKCANCEL | MB_ICONQUESTION, IDS_NOMEMORY_VIEW, path) == IDOK)
        CTextFileView::Open(path, childFlags | CF_READONLY);
}

} // namespace

HLOCAL CKmFileEdit::LoadTextBlock(const char* path, DWORD maxSize, HLOCAL block, FileFormat& format,
                                  unsigned long childFlags)
{
    TextReadQuestions questions;
    questions.acceptControlByte = [path](unsigned value) {
        return KmMessageBox(nullptr, MB_YESNO | MB_ICONQUESTION, IDS_NONANSI, value, path) == IDYES;
    };
    questions.acceptTerminators = [path] {
        return KmMessageBox(nullptr, MB_YESNO | MB_ICONQUESTION, IDS_BADTERMINATORS, path) == IDYES;
    };
    switch (ReadTextBlock(path, maxSize, block, format, questions)) {
    case TR_OK:
        return block;
    case TR_TOOLARGE:
        OfferReadOnlyView(path, childFlags);
        return nullptr;
    default:
        return nullptr;
    }
}

int CKmFileEdit::GetSelectionKind()
{
    DWORD start = 0, end = 0;
    m_edit.SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    if (start == end)
        return 0;
    HLOCAL block = reinterpret_cast<HLOCAL>(m_edit.SendMessage(EM_GETHANDLE));
    const char* text = static_cast<const char*>(::LocalLock(block));
    bool multiLine = text && memchr(text + start, '\n', end - start) != nullptr;
    ::LocalUnlock(block);
    return multiLine ? 2 : 1;
}

void CKmFileEdit::UpdatePopup(HMENU menu, int index)
{
    const bool readOnly = (m_flags & CF_READONLY) != 0;
    const bool modified = (m_flags & CF_MODIFIED) != 0;
    switch (index) {
    case POPUP_FILE:
        EnableItem(menu, ID_FILE_SAVE, modified && !(m_flags & CF_UNTITLED));
        EnableItem(menu, ID_FILE_SAVEAS, true);
        EnableItem(menu, ID_FILE_PRINT, true);
        break;
    case POPUP_EDIT:
        UpdateEditPopup(menu, EDITPOPUP_MENU);
        break;
    case POPUP_SEARCH:
        if (readOnly) { // else as the frame set them for the pattern
            EnableItem(menu, ID_SEARCH_REPLACE, false);
            EnableItem(menu, ID_SEARCH_REPLACENEXT, false);
        }
        for (UINT id :
             {ID_SEARCH_MARK, ID_SEARCH_GOTOMARK, ID_SEARCH_GOTOLINE, ID_SEARCH_MATCHBRACE})
            EnableItem(menu, id, true);
        break;
    case POPUP_SETTINGS:
        CheckItem(menu, ID_SET_INSERT, !(m_flags & CF_OVERTYPE));
        for (UINT id :
             {ID_SET_ALIGN, ID_SET_INDENT, ID_SET_READONLY, ID_SET_SHOWHSCROLL, ID_SET_SHOWVSCROLL})
            EnableItem(menu, id, true);
        CheckItem(menu, ID_SET_ALIGN, (m_flags & CF_ALIGN) != 0);
        CheckItem(menu, ID_SET_INDENT, (m_flags & CF_BLOCKINDENT) != 0);
        CheckItem(menu, ID_SET_READONLY, readOnly);
        CheckItem(menu, ID_SET_SHOWHSCROLL, (m_flags & CF_HSCROLL) != 0);
        CheckItem(menu, ID_SET_SHOWVSCROLL, (m_flags & CF_VSCROLL) != 0);
        EnableItem(menu, ID_SET_CLEAN, modified && !readOnly);
        break;
    case POPUP_HELP:
        EnableItem(menu, ID_HELP_FILESTATS, !(theApp.flags & KF_NOSTATUSBAR));
        for (UINT id : {ID_HELP_CONTEXT, ID_HELP_SDK, ID_HELP_ENVIRONMENT})
            EnableItem(menu, id, true);
        break;
    default:
        break;
    }
}

void CKmFileEdit::UpdateEditPopup(HMENU menu, int)
{
    const bool readOnly = (m_flags & CF_READONLY) != 0;
    DWORD start = 0, end = 0;
    m_edit.SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    const bool selection = start != end;
    const bool empty = m_edit.SendMessage(WM_GETTEXTLENGTH) == 0;
    EnableItem(menu, ID_EDIT_UNDO, m_edit.SendMessage(EM_CANUNDO) != 0);
    EnableItem(menu, ID_EDIT_PASTEFILE, !readOnly);
    EnableItem(menu, ID_EDIT_COPY, selection);
    EnableItem(menu, ID_EDIT_COPYAPPEND, selection);
    for (UINT id : {ID_EDIT_CUT, ID_EDIT_CUTAPPEND, ID_EDIT_CAPITALIZE})
        EnableItem(menu, id, !readOnly && selection);
    EnableItem(menu, ID_EDIT_TRANSPOSE, !readOnly && !selection);
    EnableItem(menu, ID_EDIT_SHIFTRIGHT, !readOnly);
    for (UINT id : {ID_EDIT_SHIFTLEFT, ID_EDIT_UPPERCASE, ID_EDIT_LOWERCASE, ID_EDIT_TOGGLECASE})
        EnableItem(menu, id, !readOnly && !empty);
    EnableItem(menu, ID_EDIT_PASTE, !readOnly && ::IsClipboardFormatAvailable(CF_TEXT));
}

bool CKmFileEdit::WriteTextTo(const char* name)
{
    const LRESULT textLength = m_edit.SendMessage(WM_GETTEXTLENGTH);
    HLOCAL block = reinterpret_cast<HLOCAL>(m_edit.SendMessage(EM_GETHANDLE));
    const char* text = static_cast<const char*>(::LocalLock(block));
    // A NUL that the user accepted at loading ends the text.
    const size_t length =
        text && textLength > 0 ? strnlen(text, static_cast<size_t>(textLength)) : 0;
    const bool written =
        WriteTextFile(name, text ? text : "", length, m_format, (theApp.flags & KF_BACKUP) != 0);
    ::LocalUnlock(block);
    return written;
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

    CString extension;
    extension.LoadString(IDS_DEFAULTEXT);
    if (extension == " ")
        extension.Empty();
    CKmFileDialog dialog(false, extension, title, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT);
    dialog.SetFormat(m_format);
    if (dialog.DoModal() != IDOK)
        return false;
    CString chosen = dialog.GetPathName();
    chosen.MakeLower();
    CString old;
    GetTitle(old);
    if (chosen != old.c_str() && Frame() && Frame()->FindChildByPath(chosen)) {
        KmMessageBox(nullptr, MB_ICONEXCLAMATION, IDS_OPENELSEWHERE, chosen.c_str());
        return false;
    }
    if (dialog.m_format != FF_MIXED) // else no button was on: the file keeps its own
        m_format = dialog.m_format;
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
        answer = KmMessageBox(nullptr, MB_YESNOCANCEL | MB_ICONQUESTION, promptId, title.c_str());
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
    if (wParam == SIZE_MINIMIZED)
        MakeIconTitle();
    else if (wParam == SIZE_RESTORED || wParam == SIZE_MAXIMIZED)
        RestoreIconTitle();
    if ((wParam == SIZE_RESTORED || wParam == SIZE_MAXIMIZED) && m_edit.m_hWnd)
        ::MoveWindow(m_edit.m_hWnd, kMarginWidth, 0, LOWORD(lParam) - kMarginWidth, HIWORD(lParam),
                     TRUE);
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
    HFONT font =
        m_font.m_hFont ? m_font.m_hFont : static_cast<HFONT>(::GetStockObject(SYSTEM_FIXED_FONT));
    m_edit.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
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

void CKmFileEdit::OnEditErrSpace()
{
    Alert(MB_ICONHAND);
    if (theApp.statusBar.Exists())
        theApp.statusBar.SetTextId(IDS_OUTOFMEMORY, 5);
    m_outOfSpace = 1;
}

// The horizontal bar appears by itself the first time the text scrolls
// sideways; the one notification of the program's own scroll passes.
void CKmFileEdit::OnEditHScroll()
{
    if ((m_flags & CF_HSCROLL) || !::GetSystemMetrics(SM_MOUSEPRESENT))
        return;
    if (m_edit.m_hScrollByUser) {
        m_edit.ShowBar(SB_HORZ, true);
        m_flags |= CF_HSCROLL;
    }
    m_edit.m_hScrollByUser = true;
}

// A click in the margin places the caret at the start of the line and a
// drag from there selects whole lines; with Ctrl it selects everything.
LRESULT CKmFileEdit::OnMarginButtonDown(WPARAM wParam, LPARAM lParam)
{
    if (wParam & MK_CONTROL) {
        m_edit.SetSelection(0, static_cast<DWORD>(-1));
        return 0;
    }
    POINT point = {kMarginWidth, static_cast<short>(HIWORD(lParam))};
    ::MapWindowPoints(m_hWnd, m_edit.m_hWnd, &point, 1);
    return m_edit.SendMessage(WM_LBUTTONDOWN, wParam, MAKELPARAM(point.x, point.y));
}

LRESULT CKmFileEdit::OnMarginDblClk(WPARAM, LPARAM)
{
    const LRESULT start = m_edit.SendMessage(EM_LINEINDEX, static_cast<WPARAM>(-1));
    const LRESULT line = m_edit.SendMessage(EM_LINEFROMCHAR, static_cast<WPARAM>(-1));
    const LRESULT next = m_edit.SendMessage(EM_LINEINDEX, static_cast<WPARAM>(line + 1));
    m_edit.SetSelection(static_cast<DWORD>(start), static_cast<DWORD>(next));
    return 0;
}

LRESULT CKmFileEdit::OnMarginRButtonDown(WPARAM, LPARAM lParam)
{
    POINT point = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    ::ClientToScreen(m_hWnd, &point);
    if (CKmFrame* frame = Frame()) {
        ::SendMessageA(frame->m_hWndMDIClient, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(m_hWnd), 0);
        frame->ShowContextMenu(point.x, point.y);
    }
    return 0;
}

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

void CKmFileEdit::OnFileSaveAs()
{
    SaveFile(true);
}

void CKmFileEdit::OnFilePrint()
{
    theApp.printer->PrintEdit(*this);
}

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

void CKmFileEdit::OnEditCopy()
{
    m_edit.SendMessage(WM_COPY);
}

void CKmFileEdit::OnEditPaste()
{
    m_edit.SendMessage(EM_EMPTYUNDOBUFFER);
    m_edit.SendMessage(WM_PASTE);
}

void CKmFileEdit::OnFileStats()
{
    ShowFileStats(nullptr);
}

void CKmFileEdit::OnEditPasteFile()
{
    CKmFileDialog dialog(true, nullptr, nullptr, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST);
    if (dialog.DoModal() != IDOK)
        return;
    const CString path = dialog.GetPathName();
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
