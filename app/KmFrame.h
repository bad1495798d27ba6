// The one main window: menus, layout of the bars and the client, the active
// child, and the services every window uses (wait state, alert, opening).
#pragma once
#include "framework/FrameWnd.h"
#include "framework/GdiObjects.h"

class CKmChild;

class CKmFrame : public CMDIFrameWnd {
    DECLARE_DYNAMIC(CKmFrame)
public:
    CKmFrame();
    bool Create(const char* title, DWORD style, const RECT& rect);

    CKmChild* OpenFile(const char* path, bool readOnly, bool hex);
    CKmChild* OpenFileFlags(const char* path, unsigned long flags);
    CKmChild* FindChildByPath(const char* path) const;
    bool SaveAllFiles(unsigned promptId);
    bool QueryCloseAll();
    void BeginBusy(bool hideClient);
    void EndBusy();
    void Alert(UINT type);
    void GetWorkArea(RECT& rect) const;
    void ShowContextMenu(int x, int y);
    // The flag word for a new editor window, from the settings.
    static unsigned long NewWindowFlags();
    // Asks every child in window order; false at the first refusal.
    bool QueryChildren();

    int m_nMenu = 3;
    CKmChild* m_pActiveChild = nullptr;
    void* m_pFileManager = nullptr;
    CWnd* m_pSelector = nullptr;
    CMenu m_menuNoFile;
    CMenu m_menuFile;
    CMenu m_menuPopup;
    HCURSOR m_hSavedCursor = nullptr;

    bool PreTranslateMessage(MSG* msg) override;

protected:

    LRESULT OnClose(WPARAM, LPARAM);
    LRESULT OnQueryEndSession(WPARAM, LPARAM);
    LRESULT OnSize(WPARAM, LPARAM);
    LRESULT OnCreate(WPARAM, LPARAM);
    LRESULT OnDestroy(WPARAM, LPARAM);
    LRESULT OnActivateApp(WPARAM, LPARAM);
    LRESULT OnSysColorChange(WPARAM, LPARAM);
    LRESULT OnTimeChange(WPARAM, LPARAM);
    LRESULT OnInitMenuPopup(WPARAM, LPARAM);
    LRESULT OnMenuSelect(WPARAM, LPARAM);
    LRESULT OnDropFiles(WPARAM, LPARAM);
    LRESULT OnDdeInitiate(WPARAM, LPARAM);
    LRESULT OnDdeExecute(WPARAM, LPARAM);
    LRESULT OnDdeTerminate(WPARAM, LPARAM);
    LRESULT OnShowPos(WPARAM, LPARAM);
    LRESULT OnOpenFileRequest(WPARAM, LPARAM);
    LRESULT OnSetMenu(WPARAM, LPARAM);
    LRESULT OnWindowList(WPARAM, LPARAM);
    LRESULT OnFileManagerClosed(WPARAM, LPARAM);
    LRESULT OnNotYet(WPARAM, LPARAM);
    void OnFileNew();
    void OnFileOpen();
    void OnFileSaveAll();
    void OnFileExit();
    void OnFileClose();
    void OnRecentFile(UINT id);
    void OnWindowTileVert();
    void OnWindowTileHorz();
    void OnWindowCascade();
    void OnWindowArrange();
    void OnWindowCloseAll();
    void OnHelpContents();
    void OnHelpSearch();
    void OnHelpContext();
    void OnNotYetCommand(UINT id);

    HACCEL m_hAccel = nullptr;
    DECLARE_MESSAGE_MAP()
};
