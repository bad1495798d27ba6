#include "app/KmFrame.h"

#include "app/FileReference.h"
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/OpenRequest.h"
#include "app/Settings.h"
#include "edit/FileUtil.h"
#include "edit/KmFileEdit.h"
#include "framework/File.h"
#include "resources/KmIds.h"

#include <commdlg.h>
#include <cstring>
#include <dde.h>
#include <shellapi.h>
#include <vector>

IMPLEMENT_DYNAMIC(CKmFrame, CMDIFrameWnd)

namespace {
const UINT g_findReplaceMessage = ::RegisterWindowMessageA(FINDMSGSTRINGA);
}

// clang-format off
BEGIN_MESSAGE_MAP(CKmFrame, CMDIFrameWnd)
    ON_MESSAGE(WM_CLOSE, OnClose)
    ON_MESSAGE(WM_QUERYENDSESSION, OnQueryEndSession)
    ON_MESSAGE(WM_SIZE, OnSize)
    ON_MESSAGE(WM_CREATE, OnCreate)
    ON_MESSAGE(WM_DESTROY, OnDestroy)
    ON_MESSAGE(WM_ACTIVATEAPP, OnActivateApp)
    ON_MESSAGE(WM_SYSCOLORCHANGE, OnSysColorChange)
    ON_MESSAGE(WM_TIMECHANGE, OnTimeChange)
    ON_MESSAGE(WM_INITMENUPOPUP, OnInitMenuPopup)
    ON_MESSAGE(WM_MENUSELECT, OnMenuSelect)
    ON_MESSAGE(WM_DROPFILES, OnDropFiles)
    ON_MESSAGE(WM_DDE_INITIATE, OnDdeInitiate)
    ON_MESSAGE(WM_DDE_EXECUTE, OnDdeExecute)
    ON_MESSAGE(WM_DDE_TERMINATE, OnDdeTerminate)
    ON_MESSAGE(WM_KM_SHOWPOS, OnShowPos)
    ON_MESSAGE(WM_KM_OPENFILE, OnOpenFileRequest)
    ON_MESSAGE(WM_KM_SETMENU, OnSetMenu)
    ON_MESSAGE(WM_KM_PROJECTCHANGED, OnNotYet)
    ON_MESSAGE(WM_KM_WINDOWLIST, OnWindowList)
    ON_MESSAGE(WM_KM_FILEMANAGERCLOSED, OnFileManagerClosed)
    ON_MESSAGE(WM_KM_GREP, OnNotYet)
    ON_MESSAGE(WM_KM_PROCESSDONE, OnNotYet)
    ON_REGISTERED_MESSAGE(&g_findReplaceMessage, OnNotYet)
    ON_COMMAND(ID_FILE_NEW, OnFileNew)
    ON_COMMAND(ID_FILE_OPEN, OnFileOpen)
    ON_COMMAND_RANGE(ID_FILE_MANAGE, ID_FILE_MANAGE, OnNotYetCommand)
    ON_COMMAND(ID_FILE_SAVEALL, OnFileSaveAll)
    ON_COMMAND_RANGE(ID_FILE_PRINTSETUP, ID_FILE_PRINTSETUP, OnNotYetCommand)
    ON_COMMAND(ID_FILE_EXIT, OnFileExit)
    ON_COMMAND_RANGE(ID_FILE_MRU_FIRST, ID_FILE_MRU_LAST, OnRecentFile)
    ON_COMMAND(ID_FILE_CLOSE, OnFileClose)
    ON_COMMAND_RANGE(ID_SEARCH_FIND, ID_SEARCH_REPLACENEXT, OnNotYetCommand)
    ON_COMMAND_RANGE(ID_SEARCH_GREP, ID_SEARCH_GREP, OnNotYetCommand)
    ON_COMMAND_RANGE(ID_SET_GLOBAL, ID_SET_GLOBAL, OnNotYetCommand)
    ON_COMMAND_RANGE(ID_PROJECT_SELECT, ID_PROJECT_VIEWLOG, OnNotYetCommand)
    ON_COMMAND_RANGE(ID_TOOL_COMPARE, ID_TOOL_LAST, OnNotYetCommand)
    ON_COMMAND(ID_WINDOW_TILEVERT, OnWindowTileVert)
    ON_COMMAND(ID_WINDOW_TILEHORZ, OnWindowTileHorz)
    ON_COMMAND(ID_WINDOW_CASCADE, OnWindowCascade)
    ON_COMMAND(ID_WINDOW_ARRANGE, OnWindowArrange)
    ON_COMMAND(ID_WINDOW_CLOSEALL, OnWindowCloseAll)
    ON_COMMAND_RANGE(ID_WINDOW_SELECTOR, ID_WINDOW_SELECTOR, OnNotYetCommand)
    ON_COMMAND(ID_HELP_CONTENTS, OnHelpContents)
    ON_COMMAND(ID_HELP_SEARCH, OnHelpSearch)
    ON_COMMAND_RANGE(ID_HELP_ABOUT, ID_HELP_ABOUT, OnNotYetCommand)
    ON_COMMAND(ID_HELP_CONTEXT, OnHelpContext)
END_MESSAGE_MAP()
// clang-format on

namespace {

const char kDdeService[] = "Kelmar";
const char kDdeTopic[] = "system";

// Positions of menu 3's popups in the language of menu 4's.
const int kNoFileToFile[] = {0, 2, 4, 5, 7};

bool IsMdiChild(HWND hwnd) { return ::GetWindow(hwnd, GW_OWNER) == nullptr; }

CKmChild* ChildOf(HWND hwnd)
{
    CWnd* wnd = CWnd::FromHandle(hwnd);
    return wnd && wnd->IsKindOf(RUNTIME_CLASS(CKmChild)) ? static_cast<CKmChild*>(wnd) : nullptr;
}

} // namespace

CKmFrame::CKmFrame() = default;

bool CKmFrame::Create(const char* title, DWORD style, const RECT& rect)
{
    const char* className =
        KmRegisterWndClass(CS_DBLCLKS | CS_BYTEALIGNCLIENT, ::LoadCursorA(nullptr, IDC_ARROW),
                           nullptr, ::LoadIconA(KmGetResourceHandle(), "AppIcon"));
    HMENU menu = ::LoadMenuA(KmGetResourceHandle(), MAKEINTRESOURCEA(IDR_MENU_NOFILE));
    if (!className || !menu)
        return false;
    m_hAccel = ::LoadAcceleratorsA(KmGetResourceHandle(), MAKEINTRESOURCEA(IDR_ACCELERATORS));
    return CFrameWnd::Create(className, title, style | WS_OVERLAPPEDWINDOW, rect, nullptr, menu);
}

unsigned long CKmFrame::NewWindowFlags()
{
    unsigned long flags = 0;
    if (!(theApp.flags & KF_NOHSCROLL))
        flags |= CF_HSCROLL;
    if (!(theApp.flags & KF_NOVSCROLL))
        flags |= CF_VSCROLL;
    if (theApp.flags & KF_ALIGN)
        flags |= CF_ALIGN;
    if (theApp.flags & KF_INDENT)
        flags |= CF_BLOCKINDENT;
    return flags;
}

CKmChild* CKmFrame::OpenFile(const char* path, bool readOnly, bool hex)
{
    unsigned long flags = NewWindowFlags();
    if (readOnly)
        flags |= CF_READONLY;
    if (hex)
        flags |= CF_HEXVIEW;
    return OpenFileFlags(path, flags);
}

CKmChild* CKmFrame::OpenFileFlags(const char* path, unsigned long flags)
{
    const bool readOnly = (flags & CF_READONLY) != 0;
    const bool hex = (flags & CF_HEXVIEW) != 0;
    try {
        FileStatus status;
        CString fullName;
        if (GetFileStatus(path, status)) {
            fullName = status.fullName;
            fullName.MakeLower();
            if (CKmChild* child = FindChildByPath(fullName)) {
                ::BringWindowToTop(child->m_hWnd);
                bool childHex = (child->m_flags & CF_HEXVIEW) != 0;
                if (childHex == hex && (readOnly || !(child->m_flags & CF_READONLY)))
                    return child;
                if (!child->SendMessage(WM_QUERYENDSESSION))
                    return nullptr;
                child->MDIDestroy();
            }
        } else if (readOnly) {
            ReportFileCause(path, CFileException::fileNotFound, 48);
            return nullptr;
        } else {
            if (KmMessageBox(nullptr, 36, IDS_CREATENEW, path) != IDYES)
                return nullptr;
            CFile file;
            CFileException error;
            if (!file.Open(path, CFile::modeCreate | CFile::modeWrite, &error)) {
                ReportFileError(path, error, 48);
                return nullptr;
            }
            file.Abort();
            if (!GetFileStatus(path, status))
                return nullptr;
            fullName = status.fullName;
            fullName.MakeLower();
        }
        if (!readOnly)
            return CKmFileEdit::Open(fullName, flags);
        // The read-only text and hex views answer here once they exist.
        Alert(MB_ICONEXCLAMATION);
        return nullptr;
    } catch (const CMemoryException&) {
        OutOfMemoryNotice();
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
    }
    return nullptr;
}

CKmChild* CKmFrame::FindChildByPath(const char* path) const
{
    if (!m_hWndMDIClient)
        return nullptr;
    char title[MAX_PATH + 1];
    for (HWND hwnd = ::GetWindow(m_hWndMDIClient, GW_CHILD); hwnd;
         hwnd = ::GetWindow(hwnd, GW_HWNDNEXT)) {
        if (!IsMdiChild(hwnd))
            continue;
        CKmChild* child = ChildOf(hwnd);
        if (!child)
            continue;
        CString text;
        child->GetTitle(text);
        lstrcpynA(title, text, sizeof title);
        if (strcmp(title, path) == 0)
            return child;
    }
    return nullptr;
}

bool CKmFrame::SaveAllFiles(unsigned promptId)
{
    for (HWND hwnd = ::GetWindow(m_hWndMDIClient, GW_CHILD); hwnd;
         hwnd = ::GetWindow(hwnd, GW_HWNDNEXT)) {
        CKmChild* child = IsMdiChild(hwnd) ? ChildOf(hwnd) : nullptr;
        if (child && !child->QuerySave(promptId))
            return false;
    }
    return true;
}

bool CKmFrame::QueryChildren()
{
    for (HWND hwnd = ::GetWindow(m_hWndMDIClient, GW_CHILD); hwnd;
         hwnd = ::GetWindow(hwnd, GW_HWNDNEXT)) {
        if (IsMdiChild(hwnd) && !::SendMessageA(hwnd, WM_QUERYENDSESSION, 0, 0))
            return false;
    }
    return true;
}

bool CKmFrame::QueryCloseAll() { return QueryChildren(); }

void CKmFrame::BeginBusy(bool hideClient)
{
    m_hSavedCursor = ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT));
    if (hideClient && m_hWndMDIClient)
        ::ShowWindow(m_hWndMDIClient, SW_HIDE);
}

void CKmFrame::EndBusy()
{
    ::SetCursor(m_hSavedCursor);
    m_hSavedCursor = nullptr;
    if (m_hWndMDIClient) {
        ::ShowWindow(m_hWndMDIClient, SW_SHOW);
        ::UpdateWindow(m_hWndMDIClient);
    }
}

void CKmFrame::Alert(UINT type)
{
    ::MessageBeep(type);
    if (theApp.flags & KF_ALERTS) {
        ::FlashWindow(m_hWnd, TRUE);
        ::FlashWindow(m_hWnd, TRUE);
    }
}

void CKmFrame::GetWorkArea(RECT& rect) const { ::GetClientRect(m_hWnd, &rect); }

void CKmFrame::ShowContextMenu(int x, int y)
{
    if (!m_menuPopup.m_hMenu && !m_menuPopup.LoadMenu(IDR_MENU_POPUP))
        return;
    ::TrackPopupMenu(m_menuPopup.GetSubMenu(0), TPM_CENTERALIGN | TPM_RIGHTBUTTON, x, y, 0, m_hWnd,
                     nullptr);
}

namespace {

bool KeyHeld(int key) { return (::GetKeyState(key) & 0x8000) != 0; }

// The command that a key message stands for in table, 0 for none.
WORD FindAccelerator(HACCEL table, const MSG& msg)
{
    const bool virtualKey = msg.message == WM_KEYDOWN || msg.message == WM_SYSKEYDOWN;
    if (!virtualKey && msg.message != WM_CHAR && msg.message != WM_SYSCHAR)
        return 0;
    const int count = ::CopyAcceleratorTableA(table, nullptr, 0);
    if (count <= 0)
        return 0;
    std::vector<ACCEL> entries(static_cast<size_t>(count));
    ::CopyAcceleratorTableA(table, entries.data(), count);
    const BYTE held = static_cast<BYTE>((KeyHeld(VK_SHIFT) ? FSHIFT : 0) |
                                        (KeyHeld(VK_CONTROL) ? FCONTROL : 0) |
                                        (KeyHeld(VK_MENU) ? FALT : 0));
    const bool altChar = (msg.lParam & 0x20000000) != 0;
    for (const ACCEL& entry : entries) {
        if (entry.key != msg.wParam || ((entry.fVirt & FVIRTKEY) != 0) != virtualKey)
            continue;
        if (virtualKey ? (entry.fVirt & (FSHIFT | FCONTROL | FALT)) != held
                       : ((entry.fVirt & FALT) != 0) != altChar)
            continue;
        return entry.cmd;
    }
    return 0;
}

} // namespace

// A key goes to the active child, then the accelerators, then the MDI keys.
// The table is read here rather than by TranslateAccelerator, which drops
// the key of a grayed menu item: handlers rely on getting their keys, and
// the states of the items are only set when a popup opens.
bool CKmFrame::PreTranslateMessage(MSG* msg)
{
    if (msg->message < WM_KEYFIRST || msg->message > WM_KEYLAST)
        return false;
    if (m_pActiveChild && m_pActiveChild->PreTranslateMessage(msg))
        return true;
    if (m_hAccel) {
        if (WORD command = FindAccelerator(m_hAccel, *msg)) {
            SendMessage(WM_COMMAND, MAKEWPARAM(command, 1));
            return true;
        }
    }
    return CMDIFrameWnd::PreTranslateMessage(msg);
}

// --- creation, layout and end

LRESULT CKmFrame::OnCreate(WPARAM, LPARAM lParam)
{
    if (Default() == -1)
        return -1;
    if (!m_menuFile.LoadMenu(IDR_MENU_FILE))
        return -1;
    m_menuNoFile.Attach(reinterpret_cast<const CREATESTRUCTA*>(lParam)->hMenu);
    if (!(theApp.flags & KF_NOSTATUSBAR))
        theApp.SetUpStatusBar(m_hWnd);
    SendMessage(WM_KM_SETMENU, 3);
    return 0;
}

LRESULT CKmFrame::OnSize(WPARAM wParam, LPARAM lParam)
{
    if (wParam == SIZE_MINIMIZED)
        return 0;
    int width = LOWORD(lParam), height = HIWORD(lParam);
    int statusHeight = 0;
    if (!(theApp.flags & KF_NOSTATUSBAR))
        statusHeight = theApp.statusBar.Resize(width, height);
    const int toolHeight = 0; // the tool bar comes later
    if (m_hWndMDIClient)
        ::MoveWindow(m_hWndMDIClient, 0, toolHeight, width, height - toolHeight - statusHeight,
                     TRUE);
    return 0;
}

// The menu on show belongs to the window, which destroys it; the other goes
// here, so each is destroyed exactly once.
LRESULT CKmFrame::OnDestroy(WPARAM, LPARAM)
{
    if (m_nMenu == 3) {
        m_menuNoFile.Detach();
        m_menuFile.DestroyMenu();
    } else {
        m_menuFile.Detach();
        m_menuNoFile.DestroyMenu();
    }
    m_menuPopup.DestroyMenu();
    return Default();
}

LRESULT CKmFrame::OnClose(WPARAM, LPARAM)
{
    if (!QueryChildren())
        return 0;
    m_pSelector = nullptr;
    if (!theApp.safeMode)
        theApp.SaveState();
    if (theApp.statusBar.Exists()) {
        theApp.flags |= KF_NOSTATUSBAR;
        theApp.statusBar.Destroy();
    }
    ::WinHelpA(m_hWnd, theApp.helpPath, HELP_QUIT, 0);
    if (m_hAccel) {
        ::DestroyAcceleratorTable(m_hAccel);
        m_hAccel = nullptr;
    }
    DestroyWindow();
    return 0;
}

LRESULT CKmFrame::OnQueryEndSession(WPARAM, LPARAM) { return QueryChildren() ? 1 : 0; }

LRESULT CKmFrame::OnActivateApp(WPARAM wParam, LPARAM)
{
    if (wParam && theApp.statusBar.Exists())
        theApp.statusBar.RefreshLocks();
    return Default();
}

LRESULT CKmFrame::OnSysColorChange(WPARAM, LPARAM)
{
    if (theApp.statusBar.Exists())
        theApp.statusBar.RecreateColours();
    return Default();
}

LRESULT CKmFrame::OnTimeChange(WPARAM, LPARAM)
{
    if (!(theApp.flags & (KF_NOSTATUSBAR | KF_NOCLOCK))) {
        theApp.statusBar.HideClock();
        theApp.statusBar.ShowClock();
    }
    return 0;
}

LRESULT CKmFrame::OnShowPos(WPARAM wParam, LPARAM lParam)
{
    if (!(theApp.flags & KF_NOSTATUSBAR))
        theApp.statusBar.SetPanePosition(theApp.paneLineCol, static_cast<long>(lParam),
                                         static_cast<unsigned long>(wParam));
    return 0;
}

// The window selector follows the children's life; without it there is
// nothing to keep up to date.
LRESULT CKmFrame::OnWindowList(WPARAM wParam, LPARAM lParam)
{
    if (m_pSelector)
        ::SendMessageA(m_pSelector->m_hWnd, WM_KM_WINDOWLIST, wParam, lParam);
    return 0;
}

LRESULT CKmFrame::OnFileManagerClosed(WPARAM, LPARAM)
{
    m_pFileManager = nullptr;
    return 0;
}

// Messages of features that are not there yet.
LRESULT CKmFrame::OnNotYet(WPARAM, LPARAM)
{
    Alert(MB_ICONEXCLAMATION);
    return 0;
}

void CKmFrame::OnNotYetCommand(UINT) { Alert(MB_ICONEXCLAMATION); }

// --- menus

LRESULT CKmFrame::OnSetMenu(WPARAM wParam, LPARAM)
{
    int which = static_cast<int>(wParam);
    HMENU menu = which == 4 ? m_menuFile.m_hMenu : m_menuNoFile.m_hMenu;
    if (which != m_nMenu) {
        HMENU windowPopup = ::GetSubMenu(menu, which == 4 ? 6 : 3);
        m_nMenu = which;
        MDISetMenu(menu, windowPopup);
    }
    BOOL maximized = FALSE;
    MDIGetActive(&maximized);
    UINT position = (which == 4 ? 4 : 2) + (maximized ? 1 : 0);
    ::EnableMenuItem(::GetMenu(m_hWnd), position,
                     MF_BYPOSITION | ((theApp.flags & KF_NOPROJECT) ? MF_GRAYED : MF_ENABLED));
    ::DrawMenuBar(m_hWnd);
    if (m_nMenu == 3 && !theApp.m_strProjectDir.IsEmpty())
        ChangeDir(theApp.m_strProjectDir);
    return 0;
}

namespace {

void RebuildRecentFiles(HMENU popup)
{
    if (!theApp.recentFiles[0].IsEmpty())
        for (UINT id = ID_FILE_MRU_SEP; id <= ID_FILE_MRU_LAST; ++id)
            if (!::DeleteMenu(popup, id, MF_BYCOMMAND))
                break;
    CString current;
    GetCurrentDir(current);
    if (current.IsEmpty() || current[current.GetLength() - 1] != '\\')
        current += '\\';
    int count = 0;
    for (; count < 6 && !theApp.recentFiles[count].IsEmpty(); ++count) {
        const CString& path = theApp.recentFiles[count];
        const char* shown = path;
        if (strncmp(path, current, static_cast<size_t>(current.GetLength())) == 0)
            shown += current.GetLength();
        CString text;
        text.Format("&%d %s", count + 1, shown);
        ::InsertMenuA(popup, ID_FILE_EXIT, MF_BYCOMMAND | MF_STRING,
                      static_cast<UINT_PTR>(ID_FILE_MRU_FIRST + count), text);
    }
    if (count > 0)
        ::InsertMenuA(popup, ID_FILE_EXIT, MF_BYCOMMAND | MF_SEPARATOR, ID_FILE_MRU_SEP, nullptr);
    theApp.recentFilesDirty = 0;
}

void UpdateSearchPopup(HMENU popup, CKmChild* child)
{
    ::EnableMenuItem(popup, ID_SEARCH_FIND, MF_BYCOMMAND | MF_ENABLED);
    ::EnableMenuItem(popup, ID_SEARCH_REPLACE, MF_BYCOMMAND | MF_ENABLED);
    bool noPattern = theApp.searchPattern.IsEmpty();
    ::EnableMenuItem(popup, ID_SEARCH_REPLACENEXT,
                     MF_BYCOMMAND | (noPattern ? MF_GRAYED : MF_ENABLED));
    bool seeded = child && child->GetSelectionKind() == 1;
    UINT state = MF_BYCOMMAND | (noPattern && !seeded ? MF_GRAYED : MF_ENABLED);
    ::EnableMenuItem(popup, ID_SEARCH_FINDNEXT, state);
    ::EnableMenuItem(popup, ID_SEARCH_FINDPREV, state);
}

void UpdateProjectPopup(HMENU popup)
{
    bool running = false; // no project process runs until the runner exists
    bool idle = theApp.m_strProjectDir.IsEmpty() || running;
    for (UINT id : {ID_PROJECT_COMPILE, ID_PROJECT_LINK, ID_PROJECT_BUILD, ID_PROJECT_BUILDTARGET,
                    ID_PROJECT_TEST, ID_PROJECT_DEBUG, ID_PROJECT_CONFIGURE})
        ::EnableMenuItem(popup, id, MF_BYCOMMAND | (idle ? MF_GRAYED : MF_ENABLED));
    ::EnableMenuItem(popup, ID_PROJECT_SELECT, MF_BYCOMMAND | (running ? MF_GRAYED : MF_ENABLED));
    bool results = false; // no result file before the first project command
    ::EnableMenuItem(popup, ID_PROJECT_VIEWLOG,
                     MF_BYCOMMAND | (running || !results ? MF_GRAYED : MF_ENABLED));
}

} // namespace

LRESULT CKmFrame::OnInitMenuPopup(WPARAM wParam, LPARAM lParam)
{
    HMENU popup = reinterpret_cast<HMENU>(wParam);
    int position = LOWORD(lParam);
    BOOL maximized = FALSE;
    CMDIChildWnd* active = MDIGetActive(&maximized);
    CKmChild* child = active ? ChildOf(active->m_hWnd) : nullptr;
    if (HIWORD(lParam) || IsIconic())
        return 0;
    if (position == 0 && m_menuPopup.m_hMenu && popup == m_menuPopup.GetSubMenu(0)) {
        if (child)
            child->UpdateEditPopup(popup, 1);
        return 0;
    }
    if (maximized) {
        if (position == 0)
            return 0;
        --position;
    }
    if (!child) {
        if (position < 0 || position > 4)
            return 0;
        position = kNoFileToFile[position];
    }
    switch (position) {
    case 0:
        if (theApp.recentFilesDirty)
            RebuildRecentFiles(popup);
        break;
    case 2:
        UpdateSearchPopup(popup, child);
        break;
    case 4:
        UpdateProjectPopup(popup);
        break;
    default:
        break;
    }
    if (child)
        child->UpdatePopup(popup, position);
    return 0;
}

LRESULT CKmFrame::OnMenuSelect(WPARAM wParam, LPARAM lParam)
{
    if ((theApp.flags & KF_NOSTATUSBAR) || !theApp.statusBar.Exists())
        return 0;
    UINT item = LOWORD(wParam);
    UINT flags = HIWORD(wParam);
    UINT id;
    if (flags == 0xFFFF && lParam == 0)
        id = 0;
    else if (flags & MF_POPUP)
        id = (flags & MF_SYSMENU) ? IDS_HELP_SYSMENU : 0;
    else if (flags & MF_SEPARATOR)
        id = 0;
    else if (item >= 0xFF00)
        id = IDS_HELP_WINDOWLIST;
    else if (item >= ID_FILE_MRU_FIRST && item <= ID_FILE_MRU_LAST)
        id = IDS_HELP_RECENTFILE;
    else if (item >= ID_TOOL_FIRST && item <= ID_TOOL_LAST)
        id = ID_TOOL_FIRST;
    else
        id = item;
    if (id)
        theApp.statusBar.SetTextId(id, 0);
    else
        theApp.statusBar.ClearText();
    return 0;
}

// --- opening from the outside world

LRESULT CKmFrame::OnOpenFileRequest(WPARAM wParam, LPARAM lParam)
{
    HGLOBAL handle = reinterpret_cast<HGLOBAL>(lParam);
    OpenRequest* request = static_cast<OpenRequest*>(::GlobalLock(handle));
    if (request) {
        if (wParam)
            BeginBusy(true);
        CKmChild* child = OpenFile(request->name, request->address != 0, request->address != 0);
        if (wParam)
            EndBusy();
        if (child)
            child->SendMessage(WM_KM_GOTOPOS, request->column, static_cast<LPARAM>(request->line));
        ::GlobalUnlock(handle);
    }
    ::GlobalFree(handle);
    return 0;
}

LRESULT CKmFrame::OnDropFiles(WPARAM wParam, LPARAM)
{
    HDROP drop = reinterpret_cast<HDROP>(wParam);
    UINT count = ::DragQueryFileA(drop, 0xFFFFFFFF, nullptr, 0);
    if (count == 0)
        return 0;
    BeginBusy(true);
    for (UINT i = 0; i < count; ++i) {
        UINT length = ::DragQueryFileA(drop, i, nullptr, 0);
        CString name;
        ::DragQueryFileA(drop, i, name.GetBuffer(static_cast<int>(length) + 1), length + 1);
        name.ReleaseBuffer();
        OpenFile(name, false, false);
    }
    ::DragFinish(drop);
    EndBusy();
    if (IsIconic())
        ShowWindow(SW_SHOWNORMAL);
    return 0;
}

LRESULT CKmFrame::OnDdeInitiate(WPARAM wParam, LPARAM lParam)
{
    ATOM service = ::GlobalAddAtomA(kDdeService);
    ATOM topic = ::GlobalAddAtomA(kDdeTopic);
    if (LOWORD(lParam) == service && HIWORD(lParam) == topic)
        ::SendMessageA(reinterpret_cast<HWND>(wParam), WM_DDE_ACK,
                       reinterpret_cast<WPARAM>(m_hWnd), lParam);
    ::GlobalDeleteAtom(service);
    ::GlobalDeleteAtom(topic);
    return 0;
}

// One command per message: [open("name")]; whatever follows the closing
// quote is ignored. The answer goes out before the text is looked at.
LRESULT CKmFrame::OnDdeExecute(WPARAM wParam, LPARAM lParam)
{
    UINT_PTR unused = 0, commands = 0;
    ::UnpackDDElParam(WM_DDE_EXECUTE, lParam, &unused, &commands);
    char text[521] = "";
    HGLOBAL block = reinterpret_cast<HGLOBAL>(commands);
    if (const char* locked = static_cast<const char*>(::GlobalLock(block))) {
        lstrcpynA(text, locked, sizeof text);
        ::GlobalUnlock(block);
    }
    LPARAM ack = ::ReuseDDElParam(lParam, WM_DDE_EXECUTE, WM_DDE_ACK, 1, commands);
    ::PostMessageA(reinterpret_cast<HWND>(wParam), WM_DDE_ACK, reinterpret_cast<WPARAM>(m_hWnd),
                   ack);

    static const char prefix[] = "[open(\"";
    if (strncmp(text, prefix, sizeof prefix - 1) != 0)
        return 0;
    char* name = text + sizeof prefix - 1;
    char* quote = strchr(name, '"');
    if (!quote)
        return 0;
    *quote = '\0';
    HGLOBAL request = MakeOpenRequest(name);
    if (!request) {
        OutOfMemoryNotice();
        return 0;
    }
    SendMessage(WM_KM_OPENFILE, 1, reinterpret_cast<LPARAM>(request));
    return 0;
}

LRESULT CKmFrame::OnDdeTerminate(WPARAM wParam, LPARAM lParam)
{
    ::PostMessageA(reinterpret_cast<HWND>(wParam), WM_DDE_TERMINATE,
                   reinterpret_cast<WPARAM>(m_hWnd), lParam);
    return 0;
}

// --- commands

void CKmFrame::OnFileNew()
{
    BeginBusy(true);
    try {
        CKmFileEdit::Open(nullptr, NewWindowFlags());
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
    } catch (const CMemoryException&) {
        OutOfMemoryNotice();
    }
    EndBusy();
}

void CKmFrame::OnFileOpen()
{
    char names[4096] = "";
    OPENFILENAMEA ofn = {};
    ofn.lStructSize = sizeof ofn;
    ofn.hwndOwner = m_hWnd;
    ofn.lpstrFile = names;
    ofn.nMaxFile = sizeof names;
    ofn.Flags = OFN_ALLOWMULTISELECT | OFN_EXPLORER;
    if (!::GetOpenFileNameA(&ofn)) {
        theApp.recentFilesDirty = 1; // the dialog may have changed directory
        return;
    }
    bool readOnly = (ofn.Flags & OFN_READONLY) != 0;
    BeginBusy(true);
    // A single name, or a directory followed by names, each NUL-terminated.
    const char* first = names;
    const char* next = first + strlen(first) + 1;
    if (!*next) {
        OpenFile(first, readOnly, false);
    } else {
        for (; *next; next += strlen(next) + 1) {
            CString path(first);
            path += '\\';
            path += next;
            OpenFile(path, readOnly, false);
        }
    }
    EndBusy();
}

void CKmFrame::OnFileSaveAll() { SaveAllFiles(0); }

void CKmFrame::OnFileExit() { SendMessage(WM_CLOSE); }

void CKmFrame::OnFileClose()
{
    if (m_pActiveChild)
        m_pActiveChild->PostMessage(WM_CLOSE);
    else
        Alert(MB_ICONEXCLAMATION);
}

void CKmFrame::OnRecentFile(UINT id)
{
    BeginBusy(true);
    OpenFile(theApp.recentFiles[id - ID_FILE_MRU_FIRST], false, false);
    EndBusy();
}

void CKmFrame::OnWindowTileVert()
{
    theApp.arrange = 0;
    MDITile(MDITILE_VERTICAL);
}

void CKmFrame::OnWindowTileHorz()
{
    theApp.arrange = 3;
    MDITile(MDITILE_HORIZONTAL);
}

void CKmFrame::OnWindowCascade()
{
    theApp.arrange = 1;
    MDICascade();
}

void CKmFrame::OnWindowArrange() { MDIIconArrange(); }

void CKmFrame::OnWindowCloseAll()
{
    if (!QueryCloseAll())
        return;
    BeginBusy(true);
    for (;;) {
        HWND hwnd = ::GetWindow(m_hWndMDIClient, GW_CHILD);
        while (hwnd && !IsMdiChild(hwnd))
            hwnd = ::GetWindow(hwnd, GW_HWNDNEXT);
        if (!hwnd)
            break;
        ::SendMessageA(m_hWndMDIClient, WM_MDIDESTROY, reinterpret_cast<WPARAM>(hwnd), 0);
    }
    EndBusy();
}

void CKmFrame::OnHelpContents() { ::WinHelpA(m_hWnd, theApp.helpPath, HELP_CONTENTS, 0); }

void CKmFrame::OnHelpSearch()
{
    ::WinHelpA(m_hWnd, theApp.helpPath, HELP_PARTIALKEY, reinterpret_cast<ULONG_PTR>(""));
}

void CKmFrame::OnHelpContext()
{
    if (m_pActiveChild)
        m_pActiveChild->PostMessage(WM_COMMAND, ID_HELP_CONTEXT_CHILD);
    else
        OnHelpContents();
}
