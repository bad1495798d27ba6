// The process runner: one waiting thread per project command, the console
// helper capturing the output, and the end on the user interface thread.
// The worker touches nothing but the command line, which stays untouched
// until its end message; no lock is needed.
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "edit/FileUtil.h"
#include "edit/Messages.h"
#include "project/ProjectCommands.h"
#include "resources/KmIds.h"
#include "views/LogFileView.h"

namespace
{

const int kStatusSeconds = 5;
const char kConsoleTitle[] = "Kelmar Project Command";

DWORD WINAPI Worker(void* parameter)
{
    char* commandLine = static_cast<char*>(parameter);
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    start.lpTitle = const_cast<char*>(kConsoleTitle);
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = SW_SHOWMINIMIZED;
    PROCESS_INFORMATION process;
    DWORD status = 1;
    if (!::CreateProcessA(nullptr, commandLine, nullptr, nullptr, FALSE,
                          CREATE_NEW_CONSOLE | NORMAL_PRIORITY_CLASS, nullptr, nullptr, &start,
                          &process)) {
        KmMessageBox(nullptr, MB_ICONEXCLAMATION, IDS_CREATEPROCESSERROR,
                     static_cast<int>(::GetLastError()), commandLine);
    } else {
        status = ::WaitForSingleObject(process.hProcess, INFINITE);
        if (status == WAIT_OBJECT_0)
            ::GetExitCodeProcess(process.hProcess, &status);
        else
            ::MessageBeep(MB_ICONEXCLAMATION);
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
    }
    ::PostMessageA(KmGetMainWindow(), WM_KM_PROCESSDONE, 0, static_cast<LPARAM>(status));
    return 0;
}

} // namespace

// The thread is waited for: its command line must outlive it.
CProjectCommands::~CProjectCommands()
{
    if (m_hProjectThread) {
        ::WaitForSingleObject(m_hProjectThread, INFINITE);
        ::CloseHandle(m_hProjectThread);
    }
}

// An earlier output that nobody looked at goes first.
bool CProjectCommands::RunProjectCommand(const char* command)
{
    try {
        if (!m_strOutputFile.IsEmpty())
            RemoveFile(m_strOutputFile);
        m_strOutputFile.Empty();
        if (!MakeTempName(nullptr, m_strOutputFile))
            return false;
        ::OemToCharA(m_strOutputFile, m_strOutputFile.GetBuffer(0));
        GetCurrentDir(m_strOutputDir);
        m_strCommandLine =
            theApp.programDir + "nt\\projexec.exe " + m_strOutputFile + " " + command;
    } catch (const CMemoryException&) {
        m_strOutputFile.Empty();
        m_strOutputDir.Empty();
        ::MessageBeep(0);
        return false;
    }
    m_frame.SetProjectButtons(false);
    m_bProjectRunning = true;
    DWORD id;
    m_hProjectThread = ::CreateThread(nullptr, 0, Worker, m_strCommandLine.GetBuffer(0), 0, &id);
    if (!m_hProjectThread) {
        m_bProjectRunning = false;
        ::MessageBeep(static_cast<UINT>(-1));
        m_strOutputFile.Empty();
        m_strOutputDir.Empty();
        m_frame.SetProjectButtons(true);
    }
    return m_bProjectRunning;
}

// A silent success leaves nothing behind; a failure shows its output at
// once.
LRESULT CProjectCommands::OnProcessDone(WPARAM, LPARAM status)
{
    if (m_hProjectThread)
        ::CloseHandle(m_hProjectThread);
    m_hProjectThread = nullptr;
    m_strCommandLine.Empty();
    m_bProjectRunning = false;
    if (!m_strResponseFile.IsEmpty()) {
        ::OemToCharA(m_strResponseFile, m_strResponseFile.GetBuffer(0));
        RemoveFile(m_strResponseFile);
        m_strResponseFile.Empty();
    }
    FileStatus file = {};
    GetFileStatus(m_strOutputFile, file);
    UINT message = IDS_TASKERRORS;
    if (status == 0) {
        message = IDS_TASKSUCCESS;
        if (file.size == 0) {
            RemoveFile(m_strOutputFile);
            m_strOutputFile.Empty();
            m_strOutputDir.Empty();
        }
        ::MessageBeep(0);
    } else {
        ViewResults();
        ::MessageBeep(MB_ICONHAND);
    }
    theApp.statusBar.SetTextId(message, kStatusSeconds);
    m_frame.SetProjectButtons(true);
    return 0;
}

// The view owns the file from here; when it can't be made the runner
// keeps it.
void CProjectCommands::ViewResults()
{
    ChangeDir(m_strOutputDir);
    m_frame.BeginBusy(false);
    unsigned long flags = CF_READONLY;
    if (!(theApp.flags & KF_NOHSCROLL))
        flags |= CF_HSCROLL;
    if (!(theApp.flags & KF_NOVSCROLL))
        flags |= CF_VSCROLL;
    CLogFileView* view = CLogFileView::Open(m_strOutputFile, flags);
    m_frame.EndBusy();
    if (!view)
        return;
    CString title;
    title.LoadString(IDS_TITLE_ERRORLOG);
    view->SetWindowText(title);
    m_strOutputFile.Empty();
    m_strOutputDir.Empty();
}
