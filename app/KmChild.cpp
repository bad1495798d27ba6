#include "app/KmChild.h"

#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "app/Settings.h"
#include "edit/FileUtil.h"
#include "edit/KmFileDialog.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"

#include <cstdarg>
#include <cstdio>

IMPLEMENT_DYNAMIC(CKmChild, CMDIChildWnd)

// clang-format off
BEGIN_MESSAGE_MAP(CKmChild, CMDIChildWnd)
    ON_MESSAGE(WM_CREATE, OnCreate)
    ON_MESSAGE(WM_DESTROY, OnDestroy)
    ON_MESSAGE(WM_MDIACTIVATE, OnMDIActivate)
    ON_MESSAGE(WM_QUERYENDSESSION, OnQueryEndSession)
    ON_MESSAGE(WM_SIZE, OnSize)
    ON_MESSAGE(WM_SETFOCUS, OnSetFocus)
    ON_MESSAGE(WM_CHILDACTIVATE, OnChildActivate)
    ON_MESSAGE(WM_MENUSELECT, OnMenuSelect)
    ON_MESSAGE(WM_SYSCOMMAND, OnSysCommand)
    ON_COMMAND(ID_SET_SHOWHSCROLL, OnShowHScroll)
    ON_COMMAND(ID_SET_SHOWVSCROLL, OnShowVScroll)
    ON_COMMAND(ID_SET_FONT, OnSetFont)
END_MESSAGE_MAP()
// clang-format on

CKmChild::CKmChild(unsigned long flags) : m_flags((flags & 0x3F) | CF_UNTITLED)
{
    LOGFONTA logFont;
    if (theApp.screenFont.GetLogFont(&logFont))
        m_font.CreateFontIndirect(&logFont);
    GetCurrentDir(m_workDir);
}

CKmChild* KmChildOf(HWND hwnd)
{
    CWnd* wnd = CWnd::FromHandle(hwnd);
    return wnd && wnd->IsKindOf(RUNTIME_CLASS(CKmChild)) ? static_cast<CKmChild*>(wnd) : nullptr;
}

bool CKmChild::QuerySave(unsigned)
{
    return true;
}

int CKmChild::GetFindSeed(CString&)
{
    return 0;
}

int CKmChild::FindText(SearchRequest*, bool, long, long)
{
    return 0;
}

void CKmChild::ReplaceSelection(SearchRequest*) {}

void CKmChild::ReplaceAll(SearchRequest*) {}

const char* CKmChild::ExpandReplacement(SearchRequest*)
{
    return nullptr;
}

int CKmChild::GetSelectionKind()
{
    return 0;
}

// The states for a window that can't do much; richer windows override.
void CKmChild::UpdatePopup(HMENU menu, int index)
{
    switch (index) {
    case POPUP_FILE:
        GrayItem(menu, ID_FILE_SAVE);
        GrayItem(menu, ID_FILE_SAVEAS);
        GrayItem(menu, ID_FILE_PRINT);
        break;
    case POPUP_EDIT:
        UpdateEditPopup(menu, EDITPOPUP_MENU);
        break;
    case POPUP_SEARCH:
        for (UINT id : {ID_SEARCH_REPLACE, ID_SEARCH_REPLACENEXT, ID_SEARCH_MARK,
                        ID_SEARCH_GOTOMARK, ID_SEARCH_GOTOLINE, ID_SEARCH_MATCHBRACE})
            GrayItem(menu, id);
        break;
    case POPUP_SETTINGS:
        for (UINT id : {ID_SET_INSERT, ID_SET_ALIGN, ID_SET_INDENT}) {
            CheckItem(menu, id, false);
            GrayItem(menu, id);
        }
        CheckItem(menu, ID_SET_READONLY, true);
        GrayItem(menu, ID_SET_READONLY);
        GrayItem(menu, ID_SET_CLEAN);
        CheckItem(menu, ID_SET_SHOWHSCROLL, (m_flags & CF_HSCROLL) != 0);
        CheckItem(menu, ID_SET_SHOWVSCROLL, (m_flags & CF_VSCROLL) != 0);
        break;
    case POPUP_PROJECT:
        GrayItem(menu, ID_PROJECT_COMPILE);
        break;
    case POPUP_HELP:
        GrayItem(menu, ID_HELP_FILESTATS);
        EnableItem(menu, ID_HELP_CONTEXT, true);
        EnableItem(menu, ID_HELP_SDK, true);
        EnableItem(menu, ID_HELP_ENVIRONMENT, true);
        break;
    default:
        break;
    }
}

void CKmChild::UpdateEditPopup(HMENU menu, int)
{
    EnableItem(menu, ID_EDIT_COPY, true);
    for (UINT id : {ID_EDIT_UNDO, ID_EDIT_PASTEFILE, ID_EDIT_CUT, ID_EDIT_CUTAPPEND,
                    ID_EDIT_SHIFTRIGHT, ID_EDIT_SHIFTLEFT, ID_EDIT_UPPERCASE, ID_EDIT_LOWERCASE,
                    ID_EDIT_TOGGLECASE, ID_EDIT_CAPITALIZE, ID_EDIT_PASTE, ID_EDIT_TRANSPOSE})
        GrayItem(menu, id);
}

namespace
{

// The icon title's blank goes where the last backslash is, unless that
// opens the path or follows a drive's colon; -1 for none.
int IconBlankIn(const CString& title)
{
    const int at = title.ReverseFind('\\');
    return at > 0 && title[at - 1] != ':' ? at : -1;
}

} // namespace

void CKmChild::GetTitle(CString& text) const
{
    GetWindowText(text);
    if (m_iconBlank >= 0 && m_iconBlank < text.GetLength() && IsIconic())
        text.SetAt(m_iconBlank, '\\');
}

void CKmChild::MakeIconTitle()
{
    if (!(m_flags & CF_FILE) || (m_flags & CF_UNTITLED) || m_iconBlank >= 0)
        return;
    CString title;
    GetWindowText(title);
    m_iconBlank = IconBlankIn(title);
    if (m_iconBlank >= 0) {
        title.SetAt(m_iconBlank, ' ');
        SetWindowText(title);
    }
}

void CKmChild::RestoreIconTitle()
{
    if (m_iconBlank < 0)
        return;
    CString title;
    GetWindowText(title);
    if (m_iconBlank < title.GetLength() && title[m_iconBlank] == ' ') {
        title.SetAt(m_iconBlank, '\\');
        SetWindowText(title);
    }
    m_iconBlank = -1;
}

void CKmChild::SetTitle(const char* text)
{
    m_iconBlank = -1;
    SetWindowText(text);
    TellFrame(WL_TITLE);
}

void CKmChild::SetTitleFmtUnchecked(unsigned stringId, ...)
{
    CString format;
    if (!format.LoadString(stringId))
        return;
    char text[256];
    va_list args;
    va_start(args, stringId);
    vsnprintf(text, sizeof text, format, args);
    va_end(args);
    SetTitle(text);
}

void CKmChild::SyncCurrentDir()
{
    CString current;
    GetCurrentDir(current);
    if (current != m_workDir.c_str() && ChangeDir(m_workDir))
        theApp.recentFilesDirty = 1;
}

void CKmChild::Alert(UINT type)
{
    ::MessageBeep(type);
    if (theApp.flags & KF_ALERTS) {
        HWND target = IsZoomed() && theApp.m_pMainWnd ? theApp.m_pMainWnd->m_hWnd : m_hWnd;
        ::FlashWindow(target, TRUE);
        ::FlashWindow(target, TRUE);
    }
}

void CKmChild::TellFrame(WPARAM code)
{
    if (HWND frame = KmGetMainWindow())
        ::SendMessageA(frame, WM_KM_WINDOWLIST, code, reinterpret_cast<LPARAM>(m_hWnd));
}

LRESULT CKmChild::OnCreate(WPARAM, LPARAM)
{
    TellFrame(WL_CREATED);
    ::SetFocus(m_hWnd);
    return Default();
}

LRESULT CKmChild::OnDestroy(WPARAM, LPARAM)
{
    TellFrame(WL_DESTROYED);
    return Default();
}

// The first child to come and the last to go switch the frame's menu.
LRESULT CKmChild::OnMDIActivate(WPARAM wParam, LPARAM lParam)
{
    HWND previous = reinterpret_cast<HWND>(wParam);
    HWND next = reinterpret_cast<HWND>(lParam);
    bool activated = next == m_hWnd;
    CKmFrame* frame = theApp.Frame();
    if (frame) {
        if (activated) {
            frame->m_pActiveChild = this;
            TellFrame(WL_ACTIVATED);
        } else if (frame->m_pActiveChild == this && previous == m_hWnd) {
            frame->m_pActiveChild = nullptr;
        }
        if (!activated && !next) {
            if (theApp.statusBar.Exists())
                theApp.statusBar.SetTextId(IDS_IDLE, 0);
            theApp.recentFilesDirty = 1;
            frame->PostMessage(WM_KM_SETMENU, IDR_MENU_NOFILE);
        }
        if (activated && !previous) {
            if (theApp.statusBar.Exists())
                theApp.statusBar.ClearText();
            theApp.recentFilesDirty = 1;
            frame->PostMessage(WM_KM_SETMENU, IDR_MENU_FILE);
        }
    }
    return Default();
}

LRESULT CKmChild::OnQueryEndSession(WPARAM, LPARAM)
{
    return 1;
}

LRESULT CKmChild::OnSize(WPARAM wParam, LPARAM)
{
    if (wParam == SIZE_MINIMIZED && theApp.statusBar.Exists())
        theApp.statusBar.SetPanePosition(theApp.paneLineCol, -1, 0);
    return Default();
}

LRESULT CKmChild::OnSetFocus(WPARAM, LPARAM)
{
    LRESULT result = Default();
    SyncCurrentDir();
    return result;
}

LRESULT CKmChild::OnChildActivate(WPARAM, LPARAM)
{
    if (!(theApp.flags & KF_NOSTATUSBAR) && theApp.statusBar.Exists())
        theApp.statusBar.ClearText();
    ShowFlagPanes();
    return Default();
}

void CKmChild::ShowFlagPanes()
{
    if (!(theApp.flags & KF_NOSTATUSBAR) && theApp.statusBar.Exists()) {
        CKmStatusBar& bar = theApp.statusBar;
        bar.SetPaneState(theApp.paneInsert, (m_flags & CF_OVERTYPE) != 0);
        bar.SetPaneChoice(theApp.paneAlign, (m_flags & CF_BLOCKINDENT) ? 2
                                            : (m_flags & CF_ALIGN)     ? 1
                                                                       : 0);
        bar.SetPaneState(theApp.paneEdit, (m_flags & CF_READONLY) != 0);
        bar.SetPaneState(theApp.paneClean, (m_flags & CF_MODIFIED) != 0);
    }
}

LRESULT CKmChild::OnMenuSelect(WPARAM wParam, LPARAM lParam)
{
    if (HWND frame = KmGetMainWindow())
        ::SendMessageA(frame, WM_MENUSELECT, wParam, lParam);
    return Default();
}

LRESULT CKmChild::OnSysCommand(WPARAM wParam, LPARAM)
{
    UINT command = static_cast<UINT>(wParam & 0xFFF0);
    if (command == SC_MAXIMIZE)
        theApp.arrange = ARRANGE_MAXIMISED;
    else if (command == SC_RESTORE && IsZoomed())
        theApp.arrange = ARRANGE_CASCADE;
    return Default();
}

void CKmChild::ShowBar(int bar, bool show)
{
    ::ShowScrollBar(m_hWnd, bar, show);
}

void CKmChild::OnShowHScroll()
{
    m_flags ^= CF_HSCROLL;
    ShowBar(SB_HORZ, (m_flags & CF_HSCROLL) != 0);
}

void CKmChild::OnShowVScroll()
{
    m_flags ^= CF_VSCROLL;
    ShowBar(SB_VERT, (m_flags & CF_VSCROLL) != 0);
}

void CKmChild::OnSetFont()
{
    LOGFONTA logFont = {};
    m_font.GetLogFont(&logFont);
    CKmFontDialog dialog(
        logFont, CF_SCREENFONTS | CF_FIXEDPITCHONLY | CF_NOSIMULATIONS | CF_FORCEFONTEXIST, m_hWnd);
    if (dialog.DoModal() != IDOK)
        return;
    if (m_font.CreateFontIndirect(&dialog.m_lf))
        SendMessage(WM_KM_FONTCHANGED, 0);
}
