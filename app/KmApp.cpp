#include "app/KmApp.h"

#include "app/CommandLine.h"
#include "app/FileReference.h"
#include "app/IniStore.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "app/OpenRequest.h"
#include "app/Settings.h"
#include "edit/FileUtil.h"
#include "edit/Messages.h"
#include "framework/Exception.h"
#include "print/KmPrinter.h"
#include "resources/KmIds.h"

#include <cstring>
#include <shellapi.h>
#include <string>
#include <vector>

CKmApp theApp;

CKmApp::CKmApp() : CWinApp("Kelmar")
{
    SetInitialValues();
}

void CKmApp::SetInitialValues()
{
    saveSettings = 1;
    saveWindows = 1;
    m_bDebugBuild = 0;
    arrange = ARRANGE_MAXIMISED;
    tabSize = 8;
    shiftWidth = 4;
    m_nEnvironment = 5;
    flags = KF_DEFAULT;
    for (CString& recent : recentFiles)
        recent.Empty();
    for (CString& recent : recentProjects)
        recent.Empty();
}

CKmFrame* CKmApp::Frame() const
{
    CWnd* wnd = m_pMainWnd;
    return wnd && wnd->IsKindOf(RUNTIME_CLASS(CKmFrame)) ? static_cast<CKmFrame*>(wnd) : nullptr;
}

void CKmApp::ProcessWndProcException(const CException* exception, UINT)
{
    if (!exception || exception->IsKindOf(RUNTIME_CLASS(CMemoryException)))
        OutOfMemoryNotice();
    else
        ::MessageBeep(MB_ICONHAND);
}

// A window outside the frame is a modeless dialog, with keys of its own.
bool CKmApp::PreTranslateMessage(MSG* msg)
{
    CKmFrame* frame = Frame();
    if (!frame)
        return false;
    if (msg->hwnd != frame->m_hWnd && !::IsChild(frame->m_hWnd, msg->hwnd))
        return CWinApp::PreTranslateMessage(msg);
    return frame->PreTranslateMessage(msg);
}

void CKmApp::SetUpStatusBar(HWND frame)
{
    flags |= KF_NOSTATUSBAR; // stays set if the bar can't be built
    if (!statusBar.Create(frame)) {
        KmMessageBox(nullptr, MB_ICONEXCLAMATION, IDS_NOSTATUSBAR);
        return;
    }
    try {
        AddStatusPanes();
    } catch (const CMemoryException&) {
        statusBar.Destroy();
        return;
    }
    flags &= ~KF_NOSTATUSBAR;
}

void CKmApp::AddStatusPanes()
{
    CString off, on;
    auto toggle = [&](unsigned offId, unsigned onId) {
        off.LoadString(offId);
        on.LoadString(onId);
        return statusBar.AddTogglePane(off, on);
    };
    statusBar.SetTextId(IDS_IDLE, 0);
    paneLineCol = statusBar.AddPositionPane();
    statusBar.SetNextGap(2);
    paneInsert = toggle(IDS_PANE_INS, IDS_PANE_OVR);
    on.LoadString(IDS_PANE_CAPS);
    statusBar.AddCapsPane(on);
    on.LoadString(IDS_PANE_NUM);
    statusBar.AddNumPane(on);
    on.LoadString(IDS_PANE_ALIGN);
    paneAlign = statusBar.AddChoicePane(on);
    statusBar.SetNextGap(2);
    paneEdit = toggle(IDS_PANE_EDIT, IDS_PANE_READ);
    paneClean = toggle(IDS_PANE_CLEAN, IDS_PANE_MODIFIED);
    paneAutoSave = toggle(IDS_PANE_NOAUTOSAVE, IDS_AUTOSAVE);
    if (!(flags & KF_NOCLOCK))
        statusBar.ShowClock();
}

void CKmApp::SaveState()
{
    if (saveWindows) {
        if (CKmFrame* frame = Frame())
            frame->SaveSession();
    }
    SaveSettings();
}

HGLOBAL MakeOpenRequest(const char* word)
{
    HGLOBAL handle = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(OpenRequest));
    if (!handle)
        return nullptr;
    OpenRequest* request = static_cast<OpenRequest*>(::GlobalLock(handle));
    if (!ParseFileReference(word, static_cast<int>(strlen(word)), *request)) {
        lstrcpynA(request->name, word, sizeof request->name);
        request->address = 0;
        request->line = 1;
        request->column = 1;
    }
    ::GlobalUnlock(handle);
    return handle;
}

namespace
{

// Where kelmar.ini is: the -i name (a file or a directory that holds it),
// else one in the current directory, else the program's own.
CString FindIniPath(const std::string& iniName, const CString& programDir)
{
    FileStatus status;
    CString path;
    if (!iniName.empty()) {
        CString dir;
        if (GetFileStatus(iniName.c_str(), status)) {
            path = status.fullName;
            if (status.attribute & FILE_ATTRIBUTE_DIRECTORY)
                path += "\\kelmar.ini";
        } else if (SplitDir(iniName.c_str(), dir) && GetFileStatus(dir, status)) {
            path = status.fullName; // the file name is dropped: kept as it is
        }
    }
    if (path.IsEmpty()) {
        // Only the archive bit may be set on one in the current directory.
        if (GetFileStatus("kelmar.ini", status) && !(status.attribute & ~FILE_ATTRIBUTE_ARCHIVE))
            path = status.fullName;
        else
            path = programDir + "kelmar.ini";
    }
    return path;
}

// The word with its file name made a full path against the current
// directory; a reference behind the name, as in prog.c(12,5), stays.
std::string ResolveFileWord(const char* word)
{
    OpenRequest request;
    const size_t nameLength = ParseFileReference(word, static_cast<int>(strlen(word)), request)
                                  ? strcspn(word, "(")
                                  : strlen(word);
    const std::string name(word, nameLength);
    if (name.find_first_of("\"<>|") != std::string::npos)
        return word; // no path: it stays as typed, for the open to report
    char full[MAX_PATH];
    const DWORD length = ::GetFullPathNameA(name.c_str(), MAX_PATH, full, nullptr);
    if (length == 0 || length >= MAX_PATH)
        return word;
    return full + std::string(word + nameLength);
}

} // namespace

bool CKmApp::InitInstance()
{
    CCommandLine commandLine;
    commandLine.Parse(m_lpCmdLine);

    char module[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, module, MAX_PATH);
    programDir = ProgramDirFromModule(module).c_str();

    delete printer; // of an earlier start in the same process
    printer = new CKmPrinter;
    SetInitialValues();
    iniPath = FindIniPath(commandLine.iniName, programDir);
    m_strProjectDir = commandLine.directory.c_str();
    safeMode = commandLine.safeMode;
    const bool printMode = commandLine.printOnly != 0;

    // Each window makes its own directory the current one as it gets the
    // focus, and a project its own as it loads, so the names are resolved
    // before either.
    std::vector<std::string> files;
    while (const char* word = commandLine.files.NextWord())
        files.push_back(ResolveFileWord(word));

    LoadSettings(!safeMode);
    if (commandLine.editOnly)
        flags |= KF_NOPROJECT;
    if (commandLine.arrange)
        arrange = ArrangeForSwitch(commandLine.arrange);
    LoadScreenFont();
    RECT rect;
    int maximised = 0;
    LoadWindowPlacement(rect, maximised);

    CString title;
    title.LoadString(IDS_TITLE);
    CKmFrame* frame = new CKmFrame;
    m_pMainWnd = frame;
    if (!frame->Create(title, maximised ? WS_MAXIMIZE : 0, rect)) {
        m_pMainWnd = nullptr;
        if (!frame->m_hWnd)
            delete frame;
        return false;
    }
    frame->ApplyKeyBindings(false);
    const bool showMaximised = maximised && m_nCmdShow != SW_SHOWMINNOACTIVE;
    ::ShowWindow(frame->m_hWnd, showMaximised ? SW_SHOWMAXIMIZED : m_nCmdShow);
    ::UpdateWindow(frame->m_hWnd);
    helpPath = programDir + "kelmar.hlp";

    int count = 0;
    for (const std::string& file : files) {
        const char* word = file.c_str();
        ++count;
        if (printMode) {
            if (CKmChild* child = frame->OpenFile(word, false, false)) {
                child->SendMessage(WM_COMMAND, ID_FILE_PRINT);
                child->MDIDestroy();
            }
            continue;
        }
        HGLOBAL request = MakeOpenRequest(word);
        if (!request) {
            OutOfMemoryNotice();
            break;
        }
        frame->SendMessage(WM_KM_OPENFILE, 1, reinterpret_cast<LPARAM>(request));
    }
    if (!printMode && !safeMode) {
        if (count > 0)
            ApplyArrangement(false);
        else
            RestoreSession();
    }
    if (!printMode)
        ::DragAcceptFiles(frame->m_hWnd, TRUE);
    return !printMode;
}

int CKmApp::ExitInstance()
{
    delete store;
    store = nullptr;
    delete printer;
    printer = nullptr;
    return CWinApp::ExitInstance();
}
