// The one main window: menus, layout of the bars and the client, the active
// child, and the services every window uses (wait state, alert, opening).
// Its work is spread over three files: KmFrame.cpp (the window, its layout
// and its own commands), FrameIntake.cpp (keys, open requests, DDE and
// dropped files, and how a path becomes a window) and FrameMenus.cpp (the
// menu bar, popup states, menu help and the recent files).
#pragma once
#include "app/KmCommands.h"
#include "framework/FrameWnd.h"
#include "framework/GdiObjects.h"
#include "resources/KmIds.h"

#include <memory>
#include <vector>

class CKmChild;
class CKeyTable;
class CWinSelector;

class CKmFrame : public CMDIFrameWnd
{
    DECLARE_DYNAMIC(CKmFrame)
  public:
    CKmFrame();
    ~CKmFrame() override;
    bool Create(const char* title, DWORD style, const RECT& rect);

    CKmChild* OpenFile(const char* path, bool readOnly, bool hex);
    CKmChild* OpenFileFlags(const char* path, unsigned long flags);
    CKmChild* FindChildByPath(const char* path) const;
    bool SaveAllFiles(unsigned promptId);
    bool QueryCloseAll();
    // Closes every child without asking.
    void CloseAllChildren();
    void BeginBusy(bool hideClient);
    void EndBusy();
    void Alert(UINT type);
    void GetWorkArea(RECT& rect) const;
    void ShowContextMenu(int x, int y);
    // Puts the open files into the store's Session section (Session.cpp).
    void SaveSession();
    // The flag word for a new editor window, from the settings.
    static unsigned long NewWindowFlags();

    bool PreTranslateMessage(MSG* msg) override;

    // FrameKeys.cpp: the accelerators of resource 2 with the settings'
    // Key Bindings over them; reloadMenus after a change of project.
    bool ApplyKeyBindings(bool reloadMenus);
    // The key text behind the tab of the command's items in both menus.
    void SetMenuKey(UINT cmd, const char* text);
    // The keys of a table edited in the Key Bindings dialog become the
    // frame's; its changes reach the menus and the settings. False when the
    // new accelerators can't be made, and the old ones stay.
    bool ApplyKeyTable(CKeyTable& table);
    HACCEL GetAccelerators() const { return m_hAccel; }

    // FrameToolBar.cpp: the tool bar put up and taken down, with the frame
    // laid out afresh; a bar that can't be built leaves KF_NOTOOLBAR set.
    bool CreateToolBar();
    void DestroyToolBar();
    // The project buttons in front of Help, alive while a project is open;
    // false, after the out-of-memory notice, when they can't be added.
    bool AddProjectButtons();
    void RemoveProjectButtons();
    // The bar and its project buttons brought in line with KF_NOTOOLBAR and
    // KF_NOPROJECT after a change from the flags old; a bar taken down
    // removes the buttons it had.
    void ApplyToolBarFlags(unsigned long old);
    // The buttons that need a file are etched under the menu without one.
    void SetFileButtons(int menu);
    // Off while a project command runs.
    void SetProjectButtons(bool on);
    // The tool bar at the top, the status bar at the foot, the client
    // between.
    void LayOut();
    // The status bar shown or taken down when KF_NOSTATUSBAR changed from
    // the flags old, and the frame laid out afresh.
    void ApplyStatusBarFlag(unsigned long old);

    int m_nMenu = IDR_MENU_NOFILE; // the menu on show
    CKmChild* m_pActiveChild = nullptr;
    void* m_pFileManager = nullptr;
    CWinSelector* m_pSelector = nullptr;
    CMenu m_menuNoFile;
    CMenu m_menuFile;
    CMenu m_menuPopup;
    HCURSOR m_hSavedCursor = nullptr;

  protected:
    // KmFrame.cpp
    LRESULT OnClose(WPARAM, LPARAM);
    LRESULT OnQueryEndSession(WPARAM, LPARAM);
    LRESULT OnSize(WPARAM, LPARAM);
    LRESULT OnCreate(WPARAM, LPARAM);
    LRESULT OnDestroy(WPARAM, LPARAM);
    LRESULT OnActivateApp(WPARAM, LPARAM);
    LRESULT OnSysColorChange(WPARAM, LPARAM);
    LRESULT OnTimeChange(WPARAM, LPARAM);
    LRESULT OnShowPos(WPARAM, LPARAM);
    LRESULT OnWindowList(WPARAM, LPARAM);
    LRESULT OnFileManagerClosed(WPARAM, LPARAM);
    LRESULT OnProjectChanged(WPARAM, LPARAM);
    void OnFileNew();
    void OnFileOpen();
    void OnFileSaveAll();
    void OnFileExit();
    void OnFileClose();
    void OnWindowTileVert();
    void OnWindowTileHorz();
    void OnWindowCascade();
    void OnWindowArrange();
    void OnWindowCloseAll();
    // Asks every child in window order; false at the first refusal.
    bool QueryChildren();
    void CloseDialogs();
    bool OtherChildThan(HWND child) const;

    // FrameIntake.cpp
    LRESULT OnDropFiles(WPARAM, LPARAM);
    LRESULT OnDdeInitiate(WPARAM, LPARAM);
    LRESULT OnDdeExecute(WPARAM, LPARAM);
    LRESULT OnDdeTerminate(WPARAM, LPARAM);
    LRESULT OnOpenFileRequest(WPARAM, LPARAM);

    // FrameMenus.cpp
    LRESULT OnInitMenuPopup(WPARAM, LPARAM);
    LRESULT OnMenuSelect(WPARAM, LPARAM);
    LRESULT OnSetMenu(WPARAM, LPARAM);
    void OnRecentFile(UINT id);
    void RebuildRecentFiles(HMENU popup);

    HACCEL m_hAccel = nullptr;
    std::vector<std::unique_ptr<CKmCommands>> m_commands;
    DECLARE_MESSAGE_MAP()
};
