// The application object: paths, settings, the status bar and the recent
// lists. theApp is the one instance.
#pragma once
#include "app/Settings.h"
#include "framework/GdiObjects.h"
#include "framework/String.h"
#include "framework/WinApp.h"
#include "tools/ToolList.h"
#include "ui/StatusBar.h"
#include "ui/ToolBar.h"

class CKmFrame;
class CIniStore;
class CKmPrinter;

class CKmApp : public CWinApp
{
  public:
    CKmApp();

    bool InitInstance() override;
    int ExitInstance() override;
    void ProcessWndProcException(const CException* exception, UINT message) override;
    // Keys for the frame and its children go through the frame's routing.
    bool PreTranslateMessage(MSG* msg) override;

    // Settings (AppSettings.cpp): kelmar.ini, and a project's over it, into
    // the store at start; back to the files at exit. The forwarders do
    // nothing without a store.
    void LoadSettings(bool lookUpProject);
    void SaveSettings();
    void LoadScreenFont();
    bool GetSetting(int section, const char* key, CString& value) const;
    void SetSetting(int section, const char* key, const char* value);
    bool GetSettingInt(int section, const char* key, unsigned long& value, int radix) const;
    void SetSettingInt(int section, const char* key, long value, int radix);

    // The project (project/ProjectModel.cpp): its settings by string id,
    // those of the chosen environment with the templates behind them.
    bool GetProjectSetting(unsigned id, CString& value) const;
    void SetProjectSetting(unsigned id, const char* value);
    // From the map and, with a path, from that file too.
    void RemoveProjectString(unsigned id, const char* path);
    void GetEnvironmentSetting(unsigned id, CString& value) const;
    void SetEnvironmentSetting(const char* key, const char* value);

    // The session (Session.cpp).
    void RestoreSession();
    // Tiles or cascades the children as arrange says.
    void ApplyArrangement(bool maximise);
    void LoadWindowPlacement(RECT& rect, int& maximised) const;
    // Records a path in recentFiles, newest first.
    void RememberFile(const char* path);
    void AddRecentProject(const char* path);
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
    CKmToolBar toolBar;
    CKmPrinter* printer = nullptr;
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
    CToolList tools;
    unsigned long flags;
    int paneLineCol = -1;
    int paneInsert = -1;
    int paneAlign = -1;
    int paneEdit = -1;
    int paneClean = -1;
    int paneAutoSave = -1;

  private:
    void ReadRanged(const char* key, int& field, int low, int high) const;
    void WriteWindowPlacement();
    // The project's part of loading and saving (project/ProjectModel.cpp).
    void LoadProject(bool lookUp);
    void LoadProjectChoice();
    void SaveProject();
};

// A request to open the file that a word names, with the place that a
// reference in it gives; null when there is no memory.
HGLOBAL MakeOpenRequest(const char* word);

extern CKmApp theApp;
