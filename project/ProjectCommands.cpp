#include "project/ProjectCommands.h"

#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "app/MenuRules.h"
#include "edit/FileUtil.h"
#include "edit/Messages.h"
#include "project/BuildTargetDialog.h"
#include "project/ConfigureDialog.h"
#include "project/ProjectLines.h"
#include "project/SelectProjectDialog.h"
#include "resources/KmIds.h"
#include "tools/RunCommand.h"

IMPLEMENT_DYNAMIC(CProjectCommands, CKmCommands)

// clang-format off
BEGIN_MESSAGE_MAP(CProjectCommands, CKmCommands)
    ON_MESSAGE(WM_KM_PROCESSDONE, OnProcessDone)
    ON_COMMAND(ID_PROJECT_COMPILE, OnCompile)
    ON_COMMAND(ID_PROJECT_LINK, OnLink)
    ON_COMMAND(ID_PROJECT_BUILD, OnBuild)
    ON_COMMAND(ID_PROJECT_TEST, OnTest)
    ON_COMMAND(ID_PROJECT_DEBUG, OnDebug)
    ON_COMMAND(ID_PROJECT_VIEWLOG, OnViewLog)
    ON_COMMAND(ID_PROJECT_SELECT, OnSelect)
    ON_COMMAND(ID_PROJECT_CONFIGURE, OnConfigure)
    ON_COMMAND(ID_PROJECT_BUILDTARGET, OnBuildTarget)
END_MESSAGE_MAP()
// clang-format on

namespace
{

const int kPathNotFound = 3;

std::string Env(unsigned id)
{
    CString value;
    theApp.GetEnvironmentSetting(id, value);
    return value.str();
}

// The full name of the chosen directory, which is made when it is not
// there and the user agrees; false, after any message, to give up.
bool ProjectDirFor(const CString& text, CString& dir)
{
    FileStatus status;
    bool ready = false;
    if (GetFullPath(text, dir)) {
        if (dir.GetLength() > 3 && dir[dir.GetLength() - 1] == '\\')
            dir = dir.Left(dir.GetLength() - 1);
        if (GetFileStatus(dir, status))
            ready = (status.attribute & FILE_ATTRIBUTE_DIRECTORY) != 0;
        else if (KmMessageBox(nullptr, MB_OKCANCEL | MB_ICONQUESTION, IDS_CREATENEW, dir.c_str()) !=
                 IDOK)
            return false;
        else
            ready = MakeDir(dir);
    }
    if (!ready)
        ReportFileCause(dir.IsEmpty() ? text : dir, kPathNotFound, MB_ICONHAND);
    return ready;
}

CString Target()
{
    CString target;
    theApp.GetProjectSetting(IDS_KEY_TARGET, target);
    return target;
}

} // namespace

// The tool commands need a project and an idle runner; the log needs a
// result file.
void CProjectCommands::UpdatePopup(HMENU popup, int position, CKmChild*)
{
    if (position != POPUP_PROJECT)
        return;
    const bool usable = !theApp.m_strProjectDir.IsEmpty() && !m_bProjectRunning;
    for (UINT id : {ID_PROJECT_COMPILE, ID_PROJECT_LINK, ID_PROJECT_BUILD, ID_PROJECT_BUILDTARGET,
                    ID_PROJECT_TEST, ID_PROJECT_DEBUG, ID_PROJECT_CONFIGURE})
        EnableItem(popup, id, usable);
    EnableItem(popup, ID_PROJECT_SELECT, !m_bProjectRunning);
    EnableItem(popup, ID_PROJECT_VIEWLOG, usable && !m_strOutputFile.IsEmpty());
}

bool CProjectCommands::Idle()
{
    if (m_bProjectRunning)
        m_frame.Alert(MB_ICONEXCLAMATION);
    return !m_bProjectRunning;
}

// The tools are console programs: the file's name goes to them in the OEM
// character set.
void CProjectCommands::OnCompile()
{
    CKmChild* child = m_frame.m_pActiveChild;
    if (!child || !(child->m_flags & CF_FILE) || m_bProjectRunning) {
        ::MessageBeep(MB_ICONEXCLAMATION);
        return;
    }
    if (!m_frame.SaveAllFiles(IDS_SAVE_BEFORE_CONTINUING))
        return;
    try {
        CString title;
        child->GetTitle(title);
        std::string file(title.str());
        ::CharToOemA(file.c_str(), &file[0]);
        CompileParts parts;
        if (!ComposeCompile(file, theApp.m_bDebugBuild, Env, parts)) {
            ::MessageBeep(MB_ICONHAND);
            return;
        }
        CString response;
        if (CompileNeedsResponse(parts, file)) {
            if (!MakeTempName(nullptr, response) ||
                !WriteStringFile(response, (parts.arguments + "\r\n").c_str()))
                return;
            m_strResponseFile = response;
        }
        RunProjectCommand(CompileLine(parts, file, response.str()).c_str());
    } catch (const CMemoryException&) {
        ::MessageBeep(0);
    }
}

// Link leaves the windows alone: it asks nothing.
void CProjectCommands::OnLink()
{
    if (!Idle())
        return;
    try {
        RunProjectCommand(LinkLine(theApp.m_bDebugBuild, Target().str(), Env).c_str());
    } catch (const CMemoryException&) {
        ::MessageBeep(0);
    }
}

void CProjectCommands::OnBuild()
{
    if (!Idle() || !m_frame.SaveAllFiles(IDS_SAVE_BEFORE_CONTINUING))
        return;
    try {
        RunProjectCommand(BuildLine(theApp.m_bDebugBuild, Env).c_str());
    } catch (const CMemoryException&) {
        ::MessageBeep(0);
    }
}

// The last target given stays for the next time, in this session.
void CProjectCommands::OnBuildTarget()
{
    if (!Idle() || !m_frame.SaveAllFiles(IDS_SAVE_BEFORE_CONTINUING))
        return;
    CBuildTargetDialog dialog(m_frame.m_hWnd, m_strBuildTarget);
    if (dialog.DoModal() != IDOK)
        return;
    try {
        m_strBuildTarget = dialog.m_strTarget;
        RunProjectCommand(
            (BuildLine(theApp.m_bDebugBuild, Env) + " " + m_strBuildTarget.str()).c_str());
    } catch (const CMemoryException&) {
        ::MessageBeep(0);
    }
}

// Test and Debug are not watched: they run beside anything else.
void CProjectCommands::OnTest()
{
    if (!Idle())
        return;
    CString arguments;
    theApp.GetProjectSetting(IDS_KEY_TESTARGS, arguments);
    RunCommand(&m_frame, Target(), arguments, theApp.m_strProjectDir, false);
}

void CProjectCommands::OnDebug()
{
    if (!Idle())
        return;
    RunCommand(&m_frame, Env(IDS_ENV_DEBUGGER).c_str(), Target(), theApp.m_strProjectDir, false);
}

// Another project, or none: the windows are asked and closed, the settings
// saved, and the frame loads those of the new project when the message
// comes.
void CProjectCommands::OnSelect()
{
    CSelectProjectDialog dialog(m_frame.m_hWnd);
    if (dialog.DoModal() != IDOK)
        return;
    try {
        CString dir;
        if (!dialog.m_strPath.IsEmpty() && !ProjectDirFor(dialog.m_strPath, dir))
            return;
        if (!m_frame.QueryCloseAll())
            return;
        if (theApp.saveWindows)
            m_frame.SaveSession();
        if (!dir.IsEmpty())
            theApp.AddRecentProject(dir);
        theApp.SaveSettings();
        m_frame.CloseAllChildren();
        theApp.m_strProjectDir = dir;
        m_frame.PostMessage(WM_KM_PROJECTCHANGED);
    } catch (const CMemoryException&) {
        OutOfMemoryNotice();
    }
}

void CProjectCommands::OnConfigure()
{
    CConfigureDialog dialog(m_frame.m_hWnd);
    dialog.DoModal();
}

void CProjectCommands::OnViewLog()
{
    if (Idle())
        ViewResults();
}
