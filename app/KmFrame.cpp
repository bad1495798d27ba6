#include "app/KmFrame.h"

#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/Settings.h"
#include "edit/FileUtil.h"
#include "edit/KmFileDialog.h"
#include "edit/KmFileEdit.h"
#include "edit/Messages.h"
#include "ui/WinSelector.h"

#include <cstring>
#include <dde.h>

IMPLEMENT_DYNAMIC(CKmFrame, CMDIFrameWnd)

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
    ON_MESSAGE(WM_KM_WINDOWLIST, OnWindowList)
    ON_MESSAGE(WM_KM_FILEMANAGERCLOSED, OnFileManagerClosed)
    ON_MESSAGE(WM_KM_PROJECTCHANGED, OnProjectChanged)
    ON_COMMAND(ID_FILE_NEW, OnFileNew)
    ON_COMMAND(ID_FILE_OPEN, OnFileOpen)
    ON_COMMAND(ID_FILE_SAVEALL, OnFileSaveAll)
    ON_COMMAND(ID_FILE_EXIT, OnFileExit)
    ON_COMMAND_RANGE(ID_FILE_MRU_FIRST, ID_FILE_MRU_LAST, OnRecentFile)
    ON_COMMAND(ID_FILE_CLOSE, OnFileClose)
    ON_COMMAND(ID_WINDOW_TILEVERT, OnWindowTileVert)
    ON_COMMAND(ID_WINDOW_TILEHORZ, OnWindowTileHorz)
    ON_COMMAND(ID_WINDOW_CASCADE, OnWindowCascade)
    ON_COMMAND(ID_WINDOW_ARRANGE, OnWindowArrange)
    ON_COMMAND(ID_WINDOW_CLOSEALL, OnWindowCloseAll)
END_MESSAGE_MAP()
// clang-format on

namespace
{

// Icon titles are owned windows of the client; the children have no owner.
bool IsMdiChild(HWND hwnd)
{
    return ::GetWindow(hwnd, GW_OWNER) == nullptr;
}

} // namespace

// The subsystems' command targets come after the frame's own map.
CKmFrame::CKmFrame() : m_commands(CreateSubsystemCommands(*this))
{
    for (const auto& commands : m_commands)
        AddCommandTarget(commands.get());
}

CKmFrame::~CKmFrame() = default;

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

CKmChild* CKmFrame::FindChildByPath(const char* path) const
{
    if (!m_hWndMDIClient)
        return nullptr;
    char title[MAX_PATH + 1];
    for (HWND hwnd = ::GetWindow(m_hWndMDIClient, GW_CHILD); hwnd;
         hwnd = ::GetWindow(hwnd, GW_HWNDNEXT)) {
        CKmChild* child = IsMdiChild(hwnd) ? KmChildOf(hwnd) : nullptr;
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
        CKmChild* child = IsMdiChild(hwnd) ? KmChildOf(hwnd) : nullptr;
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

bool CKmFrame::QueryCloseAll()
{
    return QueryChildren();
}

void CKmFrame::BeginBusy(bool hideClient)
{
    m_hSavedCursor = ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT));
    if (m_pSelector)
        m_pSelector->SetRedraw(false);
    if (hideClient && m_hWndMDIClient)
        ::ShowWindow(m_hWndMDIClient, SW_HIDE);
}

void CKmFrame::EndBusy()
{
    ::SetCursor(m_hSavedCursor);
    m_hSavedCursor = nullptr;
    if (m_pSelector)
        m_pSelector->SetRedraw(true);
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

// Below the tool bar, when it is up.
void CKmFrame::GetWorkArea(RECT& rect) const
{
    ::GetClientRect(m_hWnd, &rect);
    if (!(theApp.flags & KF_NOTOOLBAR))
        rect.top += theApp.toolBar.GetHeight();
}

void CKmFrame::ShowContextMenu(int x, int y)
{
    if (!m_menuPopup.m_hMenu && !m_menuPopup.LoadMenu(IDR_MENU_POPUP))
        return;
    ::TrackPopupMenu(m_menuPopup.GetSubMenu(0), TPM_CENTERALIGN | TPM_RIGHTBUTTON, x, y, 0, m_hWnd,
                     nullptr);
}

// --- creation, layout and end

LRESULT CKmFrame::OnCreate(WPARAM, LPARAM lParam)
{
    if (Default() == -1)
        return -1;
    if (!m_menuFile.LoadMenu(IDR_MENU_FILE))
        return -1;
    m_menuNoFile.Attach(reinterpret_cast<const CREATESTRUCTA*>(lParam)->hMenu);
    if (!(theApp.flags & KF_NOTOOLBAR))
        CreateToolBar();
    if (!(theApp.flags & KF_NOSTATUSBAR))
        theApp.SetUpStatusBar(m_hWnd);
    SendMessage(WM_KM_SETMENU, IDR_MENU_NOFILE);
    return 0;
}

LRESULT CKmFrame::OnSize(WPARAM wParam, LPARAM)
{
    if (wParam != SIZE_MINIMIZED)
        LayOut();
    return 0;
}

void CKmFrame::LayOut()
{
    RECT client;
    ::GetClientRect(m_hWnd, &client);
    const int width = client.right, height = client.bottom;
    int statusHeight = 0, toolHeight = 0;
    if (!(theApp.flags & KF_NOSTATUSBAR))
        statusHeight = theApp.statusBar.Resize(width, height);
    if (!(theApp.flags & KF_NOTOOLBAR))
        toolHeight = theApp.toolBar.Resize(width, height);
    if (m_hWndMDIClient)
        ::MoveWindow(m_hWndMDIClient, 0, toolHeight, width, height - toolHeight - statusHeight,
                     TRUE);
}

// The focus goes back to the active child, which had it before the bar came
// or went.
void CKmFrame::ApplyStatusBarFlag(unsigned long old)
{
    if (!((theApp.flags ^ old) & KF_NOSTATUSBAR))
        return;
    if (theApp.flags & KF_NOSTATUSBAR)
        theApp.statusBar.Destroy();
    else
        theApp.SetUpStatusBar(m_hWnd);
    LayOut();
    if (m_pActiveChild)
        ::SetFocus(m_pActiveChild->m_hWnd);
}

// The menu on show belongs to the window, which destroys it; the other goes
// here, so each is destroyed exactly once.
LRESULT CKmFrame::OnDestroy(WPARAM, LPARAM)
{
    if (m_nMenu == IDR_MENU_NOFILE) {
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
    CloseDialogs();
    if (!theApp.safeMode)
        theApp.SaveState();
    if (theApp.statusBar.Exists()) {
        theApp.flags |= KF_NOSTATUSBAR;
        theApp.statusBar.Destroy();
    }
    DestroyToolBar();
    ::WinHelpA(m_hWnd, theApp.helpPath, HELP_QUIT, 0);
    if (m_hAccel) {
        ::DestroyAcceleratorTable(m_hAccel);
        m_hAccel = nullptr;
    }
    DestroyWindow();
    return 0;
}

LRESULT CKmFrame::OnQueryEndSession(WPARAM, LPARAM)
{
    return QueryChildren() ? 1 : 0;
}

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
    theApp.toolBar.RecreateColours();
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

// The window selector follows the children's life. A row removed takes the
// selection with it, so the active child is selected again; the selector's
// own end only clears the pointer.
LRESULT CKmFrame::OnWindowList(WPARAM wParam, LPARAM lParam)
{
    if (m_pSelector && reinterpret_cast<HWND>(lParam) == m_pSelector->m_hWnd) {
        m_pSelector = nullptr;
        return 0;
    }
    if (m_pSelector) {
        m_pSelector->SendMessage(WM_KM_WINDOWLIST, wParam, lParam);
        if (wParam == WL_DESTROYED && m_pActiveChild)
            m_pSelector->SendMessage(WM_KM_WINDOWLIST, WL_ACTIVATED,
                                     reinterpret_cast<LPARAM>(m_pActiveChild->m_hWnd));
    }
    if (wParam == WL_DESTROYED && !OtherChildThan(reinterpret_cast<HWND>(lParam)))
        CloseDialogs();
    return 0;
}

void CKmFrame::CloseDialogs()
{
    for (const auto& commands : m_commands)
        commands->CloseDialogs();
}

bool CKmFrame::OtherChildThan(HWND child) const
{
    for (HWND hwnd = ::GetWindow(m_hWndMDIClient, GW_CHILD); hwnd;
         hwnd = ::GetWindow(hwnd, GW_HWNDNEXT))
        if (hwnd != child && IsMdiChild(hwnd))
            return true;
    return false;
}

LRESULT CKmFrame::OnFileManagerClosed(WPARAM, LPARAM)
{
    m_pFileManager = nullptr;
    return 0;
}

// --- commands

void CKmFrame::OnFileNew()
{
    BeginBusy(true);
    try {
        CKmFileEdit::Open(nullptr, NewWindowFlags());
    } catch (const CMemoryException&) {
        OutOfMemoryNotice();
    }
    EndBusy();
}

void CKmFrame::OnFileOpen()
{
    CKmFileDialog dialog(true, nullptr, nullptr, OFN_ALLOWMULTISELECT | KFD_SHOWHEX);
    if (dialog.DoModal() != IDOK)
        return;
    BeginBusy(true);
    for (const CString& path : dialog.GetPathNames())
        OpenFile(path, dialog.m_readOnly != 0, dialog.m_hex != 0);
    EndBusy();
}

void CKmFrame::OnFileSaveAll()
{
    SaveAllFiles(0);
}

void CKmFrame::OnFileExit()
{
    SendMessage(WM_CLOSE);
}

void CKmFrame::OnFileClose()
{
    if (m_pActiveChild)
        m_pActiveChild->PostMessage(WM_CLOSE);
    else
        Alert(MB_ICONEXCLAMATION);
}

void CKmFrame::OnWindowTileVert()
{
    theApp.arrange = ARRANGE_TILEACROSS;
    MDITile(MDITILE_VERTICAL);
}

void CKmFrame::OnWindowTileHorz()
{
    theApp.arrange = ARRANGE_TILEDOWN;
    MDITile(MDITILE_HORIZONTAL);
}

void CKmFrame::OnWindowCascade()
{
    theApp.arrange = ARRANGE_CASCADE;
    MDICascade();
}

void CKmFrame::OnWindowArrange()
{
    MDIIconArrange();
}

void CKmFrame::OnWindowCloseAll()
{
    if (QueryCloseAll())
        CloseAllChildren();
}

void CKmFrame::CloseAllChildren()
{
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

// The settings of the new project, or the global ones, with their menus,
// keys, bars, font and windows.
LRESULT CKmFrame::OnProjectChanged(WPARAM, LPARAM)
{
    try {
        const unsigned long bars = theApp.flags & (KF_NOSTATUSBAR | KF_NOTOOLBAR | KF_NOPROJECT);
        const bool project = !theApp.m_strProjectDir.IsEmpty();
        CString dir;
        if (!project && SplitDir(theApp.iniPath, dir))
            ChangeDir(dir);
        theApp.LoadSettings(project);
        if (!theApp.m_strProjectDir.IsEmpty())
            theApp.flags &= ~KF_NOPROJECT;
        ApplyKeyBindings(true);
        ApplyStatusBarFlag(bars);
        ApplyToolBarFlags(bars);
        SetProjectButtons(!theApp.m_strProjectDir.IsEmpty());
        theApp.LoadScreenFont();
        theApp.RestoreSession();
    } catch (const CMemoryException&) {
        ::MessageBeep(0);
    }
    return 0;
}
