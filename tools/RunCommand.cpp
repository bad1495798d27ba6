#include "tools/RunCommand.h"

#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "edit/FileUtil.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"
#include "tools/MacroText.h"

#include <cstdint>
#include <new>
#include <shellapi.h>

namespace
{

// The shell's results below this are failures.
const INT_PTR kShellSuccess = 32;

MacroFacts GatherFacts(CKmFrame* frame)
{
    MacroFacts facts;
    CKmChild* child = frame ? frame->m_pActiveChild : nullptr;
    if (child && (child->m_flags & CF_FILE)) {
        CString file;
        child->GetTitle(file);
        uint32_t place[2] = {0, 0}; // line, then column, 1-based
        child->SendMessage(WM_KM_GETPOS, 0, reinterpret_cast<LPARAM>(place));
        facts.hasFile = true;
        facts.file = file.str();
        facts.line = static_cast<long>(place[0]);
        facts.column = static_cast<long>(place[1]);
    }
    CString target, dir;
    theApp.GetProjectSetting(IDS_KEY_TARGET, target);
    GetCurrentDir(dir);
    facts.projectDir = theApp.m_strProjectDir.str();
    facts.target = target.str();
    facts.currentDir = dir.str();
    return facts;
}

bool IsLetter(unsigned char c)
{
    return ::IsCharAlphaA(static_cast<CHAR>(c)) != FALSE;
}

} // namespace

int LookupMacro(CKmFrame* frame, const char* name, CString& value)
{
    std::string text;
    if (!LookupMacroIn(GatherFacts(frame), name, text))
        return 0;
    value = text;
    return 1;
}

void ExpandMacros(CKmFrame* frame, const char* text, CString& result)
{
    const MacroFacts facts = GatherFacts(frame);
    result = ExpandMacroText(
        text,
        [&facts](const std::string& name, std::string& value) {
            return LookupMacroIn(facts, name.c_str(), value);
        },
        IsLetter);
}

int RunCommand(CKmFrame* frame, const char* program, const char* arguments, const char* directory,
               bool minimized)
{
    CString expandedArguments, expandedDirectory;
    try {
        ExpandMacros(frame, arguments, expandedArguments);
        ExpandMacros(frame, directory, expandedDirectory);
    } catch (const std::bad_alloc&) {
        ::MessageBeep(MB_OK);
        return 0;
    }
    const INT_PTR result = reinterpret_cast<INT_PTR>(
        ::ShellExecuteA(frame ? frame->m_hWnd : nullptr, nullptr, program, expandedArguments,
                        expandedDirectory, minimized ? SW_SHOWMINIMIZED : SW_SHOWNORMAL));
    if (result >= kShellSuccess)
        return 1;
    if (result == SE_ERR_FNF)
        KmMessageBox(nullptr, MB_ICONEXCLAMATION, IDS_CANNOTOPEN, program);
    else if (result == SE_ERR_PNF || result == ERROR_BAD_FORMAT)
        KmMessageBox(nullptr, MB_ICONEXCLAMATION, IDS_INVALIDEXE, program);
    else
        KmMessageBox(nullptr, MB_ICONEXCLAMATION, IDS_CREATEPROCESSERROR, static_cast<int>(result),
                     program);
    return 0;
}
