#include "tools/ExtractTool.h"

#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "edit/FileUtil.h"
#include "edit/KmLog.h"
#include "edit/Messages.h"
#include "framework/File.h"
#include "framework/FileDialog.h"
#include "resources/KmIds.h"
#include "search/SearchRequest.h"
#include "tools/ExtractScan.h"
#include "tools/FileDir.h"
#include "tools/YieldDialog.h"

#include <cstdlib>

namespace
{

const char kDefaultFilter[] = "[ -~][ -~][ -~][ -~]+"; // four or more printable bytes
const DWORD kHelpExtract = 4;

class FileBytes : public ExtractInput
{
  public:
    explicit FileBytes(CFile& file) : m_file(file) {}
    int Read(char* buffer, int size) override
    {
        return static_cast<int>(m_file.Read(buffer, static_cast<unsigned>(size)));
    }

  private:
    CFile& m_file;
};

class LogLines : public ExtractOutput
{
  public:
    LogLines(CKmLog& log, CYieldDialog& yield) : m_log(log), m_yield(yield) {}
    void Poll() override { m_yield.Yield(); }
    void Write(const std::string& line) override { m_log.LogPrintf("%s", line.c_str()); }

  private:
    CKmLog& m_log;
    CYieldDialog& m_yield;
};

// The filter, compiled case-sensitively, freed at the end.
struct ExtractPattern : PatternBuffer {
    ExtractPattern() = default;
    ~ExtractPattern() { free(buffer); }
    ExtractPattern(const ExtractPattern&) = delete;
    ExtractPattern& operator=(const ExtractPattern&) = delete;
};

// Every file of the list into the log; a file that cannot be opened is
// reported and the next taken, a read error or a cancel ends the run.
void ExtractFiles(CExtractDialog& dialog, PatternBuffer* pattern, CKmLog& log)
{
    CYieldDialog yield(1);
    LogLines lines(log, yield);
    CFileDir files;
    try {
        files.Read(dialog.m_strFiles);
        yield.ShowProgress(IDS_EXTRACTING, dialog.m_strPattern);
        while (const char* path = files.Next()) {
            CFile file;
            CFileException error;
            if (!file.Open(path, CFile::modeRead | CFile::shareDenyWrite, &error)) {
                ReportFileError(path, error, MB_ICONEXCLAMATION);
                continue;
            }
            try {
                FileBytes bytes(file);
                if (!ExtractFromFile(PathRelativeTo(path, log.m_workDir), bytes, pattern, lines)) {
                    OutOfMemoryNotice();
                    break;
                }
            } catch (const CFileException& failure) {
                ReportFileError(path, failure, MB_ICONEXCLAMATION);
                break;
            } catch (const CYieldException&) {
                ShowCancelled();
                break;
            }
        }
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
    }
}

} // namespace

CExtractDialog::CExtractDialog(HWND parent)
    : CModalDialog(IDD_EXTRACT, parent), m_strPattern(kDefaultFilter)
{
}

bool CExtractDialog::OnInitDialog()
{
    CString dir;
    GetCurrentDir(dir);
    SetDlgItemText(IDC_EXTRACT_DIR, dir);
    SetDlgItemText(IDC_EXTRACT_FILES, m_strFiles);
    SetDlgItemText(IDC_EXTRACT_PATTERN, m_strPattern);
    CentreOver(m_parent);
    ::SetFocus(GetDlgItem(m_strFiles.IsEmpty() ? IDC_EXTRACT_FILES : IDC_EXTRACT_PATTERN));
    return false;
}

bool CExtractDialog::OnCommand(WPARAM wParam, LPARAM lParam)
{
    switch (LOWORD(wParam)) {
    case IDC_EXTRACT_FILES:
    case IDC_EXTRACT_PATTERN:
        if (HIWORD(wParam) == EN_CHANGE)
            ::EnableWindow(GetDlgItem(IDOK),
                           ::GetWindowTextLengthA(GetDlgItem(IDC_EXTRACT_FILES)) > 0 &&
                               ::GetWindowTextLengthA(GetDlgItem(IDC_EXTRACT_PATTERN)) > 0);
        return true;
    case IDC_EXTRACT_BROWSE: {
        CString filter;
        filter.LoadString(IDS_FILTER_BINARIES);
        CFileDialog picker(true, nullptr, nullptr,
                           OFN_FILEMUSTEXIST | OFN_ALLOWMULTISELECT | OFN_HIDEREADONLY);
        picker.SetFilter(filter);
        picker.m_ofn.hwndOwner = m_hWnd;
        if (picker.DoModal() == IDOK)
            SetDlgItemText(IDC_EXTRACT_FILES, picker.GetPathName());
        else
            theApp.recentFilesDirty = 1; // the dialog may have moved the current directory
        return true;
    }
    case IDHELP:
        ::WinHelpA(KmGetMainWindow(), theApp.helpPath, HELP_CONTEXT, kHelpExtract);
        return true;
    }
    return CModalDialog::OnCommand(wParam, lParam);
}

void CExtractDialog::OnOK()
{
    if (!::IsWindowEnabled(GetDlgItem(IDOK)))
        return;
    GetDlgItemText(IDC_EXTRACT_FILES, m_strFiles);
    GetDlgItemText(IDC_EXTRACT_PATTERN, m_strPattern);
    EndDialog(IDOK);
}

// A bad filter brings the dialog back with what was typed. The log stays,
// empty or not.
void RunExtractTool()
{
    CKmFrame& frame = *theApp.Frame();
    ExtractPattern pattern;
    if (!AllocatePattern(pattern)) {
        OutOfMemoryNotice();
        return;
    }
    CExtractDialog dialog(frame.m_hWnd);
    for (;;) {
        if (dialog.DoModal() != IDOK)
            return;
        const int result = CompilePattern(dialog.m_strPattern, dialog.m_strPattern.GetLength(),
                                          &pattern);
        if (result == PATTERN_OK)
            break;
        KmMessageBox(&frame, MB_ICONEXCLAMATION, PatternMessage(result));
    }
    BuildFirstCharMap(&pattern);
    frame.BeginBusy(true);
    CKmLog* log = CKmLog::Create(CKmLog::ToolLogFlags(), 1);
    if (log)
        log->SetTitleFmt(IDS_TITLE_EXTRACT, dialog.m_strPattern.c_str());
    frame.EndBusy();
    if (!log) {
        OutOfMemoryNotice();
        return;
    }
    frame.BeginBusy(false);
    ExtractFiles(dialog, &pattern, *log);
    log->MarkClean();
    frame.EndBusy();
}
