// The application object: paths, settings, the status bar and the recent
// lists. theApp is the one instance.
#pragma once
#include "app/Settings.h"
#include "framework/GdiObjects.h"
#include "framework/String.h"
#include "framework/WinApp.h"
#include "ui/StatusBar.h"

class CKmFrame;
class CIniStore;

class CKmApp : public CWinApp
{
  public:
    CKmApp();

    bool InitInstance() override;
    int ExitInstance() override;
    void ProcessWndProcException(const CException* exception, UINT message) override;
    // Keys for the frame and its children go through the frame's routing.
    bool PreTranslateMessage(MSG* msg) override;

    // Records a path in recentFiles, newest first.
    void RememberFile(const char* path);
    // Sets the fields of the table to their initial values.
    void SetInitialValues();

    CKmFrame* Frame() const;
    // The frame's status bar with its panes; on failure the bar stays off.
    void SetUpStatusBar(HWND frame);
    void AddStatusPanes();
    // What is kept at exit: session and settings, unless in safe mode.
    void SaveState();

    CString programDir;
    CString iniPath;
    CString m_strProjectDir;
    CString m_strProjectIni;
    CString helpPath;
    CIniStore* store = nullptr;
    CKmStatusBar statusBar;
    void* toolBar = nullptr; // the tool bar comes later
    void* printer = nullptr; // the print engine comes later
    int saveSettings = 1;
    int saveWindows = 1;
    int m_bDebugBuild = 0;
    int safeMode = 0;
    int arrange = ARRANGE_MAXIMISED;
    int tabSize = 8;
    int shiftWidth = 4;
    CFont screenFont;
    int recentFilesDirty = 0;
    CString recentFiles[6];
    CString recentProjects[6];
    int m_nEnvironment = 5;
    CString m_strEnvironment[5];
    int toolsDirty = 0;
    unsigned long flags;
    int paneLineCol = -1;
    int paneInsert = -1;
    int paneAlign = -1;
    int paneEdit = -1;
    int paneClean = -1;
    int paneAutoSave = -1;
};

// A request to open the file that a word names, with the place that a
// reference in it gives; null when there is no memory.
HGLOBAL MakeOpenRequest(const char* word);

extern CKmApp theApp;
