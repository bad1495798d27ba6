// The project's commands and messages as the frame reaches them, with the
// rules of the Project popup: command lines composed from the environment's
// settings, run one at a time through the console helper with their output
// captured in a temporary file (ProcessRunner.cpp).
#pragma once
#include "app/KmCommands.h"
#include "framework/String.h"

class CProjectCommands : public CKmCommands
{
    DECLARE_DYNAMIC(CProjectCommands)
  public:
    using CKmCommands::CKmCommands;
    ~CProjectCommands() override;
    void UpdatePopup(HMENU popup, int position, CKmChild* child) override;

    // Starts the command; true when it runs. The end comes as
    // WM_KM_PROCESSDONE.
    bool RunProjectCommand(const char* command);
    // Opens the held output in a log view, which then owns it.
    void ViewResults();

    bool m_bProjectRunning = false;
    CString m_strOutputDir;
    CString m_strOutputFile;   // empty when no output is held
    CString m_strResponseFile; // empty when none
    HANDLE m_hProjectThread = nullptr;
    CString m_strCommandLine; // the worker reads it until the end message
    CString m_strBuildTarget; // the last one given

  protected:
    void OnCompile();
    void OnLink();
    void OnBuild();
    void OnBuildTarget();
    void OnTest();
    void OnDebug();
    void OnViewLog();
    void OnSelect();
    void OnConfigure();
    LRESULT OnProcessDone(WPARAM, LPARAM status);

  private:
    // False, after the alert, while a command runs.
    bool Idle();
    DECLARE_MESSAGE_MAP()
};
