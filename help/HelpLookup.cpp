#include "help/HelpLookup.h"

#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "edit/FileUtil.h"
#include "edit/Messages.h"
#include "help/HelpText.h"
#include "resources/KmIds.h"

#include <new>
#include <shellapi.h>

namespace
{

// Show mode of a help program, and the results of starting one that have
// a message of their own.
const int kShowNormal = SW_SHOW;
const INT_PTR kFirstSuccess = 32;
const INT_PTR kFileNotFound = ERROR_FILE_NOT_FOUND;
const INT_PTR kBadFormat = ERROR_BAD_FORMAT;

// A header opens read-only, in the text view, or comes to the front.
void OpenHeader(const char* path)
{
    CKmFrame* frame = theApp.Frame();
    if (!frame)
        return;
    frame->BeginBusy(true);
    frame->OpenFile(path, true, false);
    frame->EndBusy();
}

} // namespace

bool OpenIncludeFile(const char* text)
{
    try {
        std::string name;
        if (!IncludeName(text, name))
            return false;
        CString projectList;
        theApp.GetProjectSetting(IDS_ENV_INCLUDE, projectList);
        char environmentList[MAX_PATH * 4] = "";
        if (::GetEnvironmentVariableA("INCLUDE", environmentList, sizeof environmentList) >=
            sizeof environmentList)
            environmentList[0] = '\0';
        FileStatus status;
        for (const std::string& path :
             IncludeCandidates(name, *text == '"', projectList.str(), environmentList)) {
            if (GetFileStatus(path.c_str(), status)) {
                OpenHeader(status.fullName);
                return true;
            }
        }
        ReportFileCause(name.c_str(), CFileException::fileNotFound, MB_ICONEXCLAMATION);
    } catch (const std::bad_alloc&) { // the platform's and the library's
        OutOfMemoryNotice();
    }
    return true;
}

void LookupHelp(int mode, const char* word)
{
    CKmFrame* frame = theApp.Frame();
    CString value;
    theApp.GetEnvironmentSetting(HelpSource(mode, word) == 2 ? IDS_ENV_HELPENV : IDS_ENV_HELPSDK,
                                 value);
    if (value.GetLength() > 0 && value[0] == '$') {
        ::WinHelpA(frame ? frame->m_hWnd : nullptr, value.c_str() + 1, HELP_PARTIALKEY,
                   reinterpret_cast<ULONG_PTR>(word));
        return;
    }
    std::string program, arguments;
    SplitHelpProgram(value.str(), word, program, arguments);
    const INT_PTR result = reinterpret_cast<INT_PTR>(::ShellExecuteA(
        nullptr, nullptr, program.c_str(), arguments.c_str(), nullptr, kShowNormal));
    if (result >= kFirstSuccess)
        return;
    if (result == kFileNotFound)
        KmMessageBox(frame, MB_ICONEXCLAMATION, IDS_CANNOTOPEN, program.c_str());
    else if (result == kBadFormat)
        KmMessageBox(frame, MB_ICONEXCLAMATION, IDS_INVALIDEXE, program.c_str());
    else
        KmMessageBox(frame, MB_ICONEXCLAMATION, IDS_CREATEPROCESSERROR, static_cast<int>(result),
                     program.c_str());
}
