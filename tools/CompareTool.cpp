#include "tools/CompareTool.h"

#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "edit/FileUtil.h"
#include "edit/KmFileDialog.h"
#include "edit/KmLog.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"
#include "search/GlobalSearch.h"
#include "tools/CompareEngine.h"
#include "tools/YieldDialog.h"

#include <memory>

namespace
{

const int kNameLimit = 260;

// A file in text mode, in pieces as the runtime's fgets gives them; a read
// error ends it.
class ComparedFile : public CompareInput
{
  public:
    explicit ComparedFile(const char* path) : m_file(path, false) {}
    bool ReadPiece(char* buffer, int size) override
    {
        try {
            return m_file.Lines().ReadLine(buffer, size) > 0;
        } catch (const CFileException&) {
            return false;
        }
    }

  private:
    CGrepFile m_file;
};

// The listing goes to the log; each difference and every sixth line of it
// give the user a chance to cancel.
class LogListing : public CompareOutput
{
  public:
    LogListing(CKmLog& log, CYieldDialog& yield) : m_log(log), m_yield(yield) {}
    bool Poll() override { return m_yield.Yield() != 0; }
    void Write(const std::string& line) override { m_log.LogPrintf("%s", line.c_str()); }

  private:
    CKmLog& m_log;
    CYieldDialog& m_yield;
};

} // namespace

CCompareDialog::CCompareDialog(HWND parent)
    : CModalDialog(IDD_COMPARE, parent), m_lastField(IDC_COMPARE_FIRST)
{
}

bool CCompareDialog::OnInitDialog()
{
    CString dir;
    GetCurrentDir(dir);
    SetDlgItemText(IDC_COMPARE_DIR, dir);
    for (int id : {IDC_COMPARE_FIRST, IDC_COMPARE_SECOND})
        ::SendMessageA(GetDlgItem(id), EM_LIMITTEXT, kNameLimit, 0);
    ::EnableWindow(GetDlgItem(IDOK), FALSE);
    CentreOver(m_parent);
    return true;
}

bool CCompareDialog::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const int id = LOWORD(wParam);
    if ((id == IDC_COMPARE_FIRST || id == IDC_COMPARE_SECOND) && HIWORD(wParam) == EN_SETFOCUS)
        m_lastField = id;
    if (HIWORD(wParam) == EN_CHANGE)
        ::EnableWindow(GetDlgItem(IDOK),
                       ::GetWindowTextLengthA(GetDlgItem(IDC_COMPARE_FIRST)) > 0 &&
                           ::GetWindowTextLengthA(GetDlgItem(IDC_COMPARE_SECOND)) > 0);
    if (id == IDC_COMPARE_BROWSE) {
        CKmFileDialog dialog(true, nullptr, nullptr, OFN_FILEMUSTEXIST | OFN_HIDEREADONLY);
        dialog.m_ofn.hwndOwner = m_hWnd;
        if (dialog.DoModal() == IDOK)
            SetDlgItemText(m_lastField, dialog.GetPathName());
        else
            theApp.recentFilesDirty = 1; // the dialog may have moved the current directory
        ::SetFocus(GetDlgItem(m_lastField));
        return true;
    }
    return CModalDialog::OnCommand(wParam, lParam);
}

bool CCompareDialog::TakeFullName(int id, CString& name)
{
    GetDlgItemText(id, name);
    FileStatus status;
    if (!GetFileStatus(name, status)) {
        KmMessageBox(this, MB_ICONEXCLAMATION, IDS_CANNOTOPEN, name.c_str());
        ::SetFocus(GetDlgItem(id));
        return false;
    }
    name = status.fullName;
    return true;
}

void CCompareDialog::OnOK()
{
    if (!::IsWindowEnabled(GetDlgItem(IDOK)) || !TakeFullName(IDC_COMPARE_FIRST, m_first) ||
        !TakeFullName(IDC_COMPARE_SECOND, m_second))
        return;
    if (m_first == m_second) {
        KmMessageBox(this, MB_ICONEXCLAMATION, IDS_COMPARESELF);
        ::SetFocus(GetDlgItem(IDC_COMPARE_SECOND));
        return;
    }
    EndDialog(IDOK);
}

// Identical files give an empty log and no message.
void RunCompareTool()
{
    CKmFrame& frame = *theApp.Frame();
    CCompareDialog dialog(frame.m_hWnd);
    if (!frame.SaveAllFiles(IDS_SAVE_BEFORE_CONTINUING) || dialog.DoModal() != IDOK)
        return;
    const char* failed = dialog.m_first;
    try {
        std::unique_ptr<ComparedFile> first(new ComparedFile(dialog.m_first));
        failed = dialog.m_second;
        std::unique_ptr<ComparedFile> second(new ComparedFile(dialog.m_second));
        failed = dialog.m_first;
        frame.BeginBusy(true);
        CKmLog* log = CKmLog::Create(CKmLog::ToolLogFlags(), 0);
        if (log)
            log->SetTitleFmt(IDS_TITLE_COMPARE, dialog.m_first.c_str(), dialog.m_second.c_str());
        frame.EndBusy();
        if (!log)
            ThrowMemoryException();
        CYieldDialog yield(1);
        LogListing listing(*log, yield);
        try {
            yield.ShowProgress(IDS_COMPARINGFILES);
            CCompare(listing, CCompare::MODE_LISTING).Run(*first, *second);
        } catch (const CYieldException&) {
            ShowCancelled();
        }
        log->MarkClean();
    } catch (const CFileException& error) {
        ReportFileError(failed, error, MB_ICONEXCLAMATION);
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
    }
}
