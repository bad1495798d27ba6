#include "tools/FileManagerDialog.h"

#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "edit/FileUtil.h"
#include "edit/KmFileDialog.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"
#include "tools/CopyRenameDialog.h"
#include "tools/DeleteTouchDialog.h"
#include "tools/FileActions.h"
#include "tools/FileDir.h"

#include <cstring>
#include <new>

IMPLEMENT_DYNAMIC(CFileManagerDialog, CDialog)

// clang-format off
BEGIN_MESSAGE_MAP(CFileManagerDialog, CDialog)
    ON_MESSAGE(WM_ACTIVATE, OnActivate)
    ON_MESSAGE(WM_CLOSE, OnClose)
    ON_COMMAND(IDCANCEL, OnCancel)
    ON_COMMAND(IDC_FM_BROWSE, OnBrowse)
    ON_COMMAND_RANGE(IDC_FM_DELETE, IDC_FM_DELETE, OnDeleteTouch)
    ON_COMMAND_RANGE(IDC_FM_TOUCH, IDC_FM_TOUCH, OnDeleteTouch)
    ON_COMMAND_RANGE(IDC_FM_COPY, IDC_FM_COPY, OnCopyRename)
    ON_COMMAND_RANGE(IDC_FM_RENAME, IDC_FM_RENAME, OnCopyRename)
    ON_CONTROL(EN_CHANGE, IDC_FM_FILES, OnFilesChange)
END_MESSAGE_MAP()
// clang-format on

namespace
{
const int kActions[] = {IDC_FM_COPY, IDC_FM_DELETE, IDC_FM_RENAME, IDC_FM_TOUCH};
}

void CFileManagerDialog::Open(CKmFrame& frame)
{
    if (frame.m_pFileManager) {
        ::BringWindowToTop(static_cast<CFileManagerDialog*>(frame.m_pFileManager)->m_hWnd);
        return;
    }
    CFileManagerDialog* dialog = nullptr;
    try {
        dialog = new CFileManagerDialog;
        if (dialog->Create(IDD_FILEMANAGER, frame.m_hWnd)) {
            frame.m_pFileManager = dialog;
            return;
        }
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
    }
    delete dialog;
}

// With a tool bar above the client, the dialog starts at the client's top
// left, so that it hides none of the bar.
bool CFileManagerDialog::OnInitDialog()
{
    if (theApp.toolBar.Exists()) {
        if (CKmFrame* frame = theApp.Frame()) {
            RECT area;
            frame->GetWorkArea(area);
            ::MapWindowPoints(frame->m_hWnd, nullptr, reinterpret_cast<POINT*>(&area), 2);
            ::SetWindowPos(m_hWnd, nullptr, area.left, area.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        }
    }
    OnFilesChange();
    return true;
}

// The active window may have changed the current directory meanwhile.
LRESULT CFileManagerDialog::OnActivate(WPARAM wParam, LPARAM)
{
    if (LOWORD(wParam) == WA_INACTIVE)
        return 0;
    CString dir;
    GetCurrentDir(dir);
    lstrcpynA(m_szDir, dir, sizeof m_szDir);
    SetDlgItemText(IDC_FM_DIR, m_szDir);
    return 0;
}

void CFileManagerDialog::OnCancel()
{
    SendMessage(WM_CLOSE);
}

LRESULT CFileManagerDialog::OnClose(WPARAM, LPARAM)
{
    ::PostMessageA(KmGetMainWindow(), WM_KM_FILEMANAGERCLOSED, 0, 0);
    DestroyWindow();
    return 0;
}

void CFileManagerDialog::OnFilesChange()
{
    const bool any = ::GetWindowTextLengthA(GetDlgItem(IDC_FM_FILES)) > 0;
    for (int id : kActions)
        ::EnableWindow(GetDlgItem(id), any);
}

void CFileManagerDialog::FocusFiles()
{
    ::SetFocus(GetDlgItem(IDC_FM_FILES));
}

void CFileManagerDialog::OnBrowse()
{
    CKmFileDialog dialog(true, nullptr, nullptr,
                         OFN_FILEMUSTEXIST | OFN_ALLOWMULTISELECT | OFN_HIDEREADONLY);
    dialog.m_ofn.hwndOwner = m_hWnd;
    if (dialog.DoModal() == IDOK)
        SetDlgItemText(IDC_FM_FILES, dialog.GetPathName());
    FocusFiles();
}

int CFileManagerDialog::CollectNames(CString& names)
{
    try {
        names.Empty();
        CString text;
        GetDlgItemText(IDC_FM_FILES, text);
        CFileDir files;
        const int count = files.Read(text);
        while (const char* name = files.Next()) {
            if (!names.IsEmpty())
                names += ' ';
            names += PathRelativeTo(name, m_szDir);
        }
        return count;
    } catch (const std::bad_alloc&) {
        names.Empty();
        OutOfMemoryNotice();
        return 0;
    }
}

void CFileManagerDialog::OnDeleteTouch(UINT id)
{
    const bool remove = id == IDC_FM_DELETE;
    if (remove)
        ::MessageBeep(MB_ICONEXCLAMATION);
    CString names;
    if (CollectNames(names) == 0)
        return;
    CDeleteTouchDialog dialog(m_hWnd, remove ? IDS_ACTION_DELETE : IDS_ACTION_TOUCH, names);
    if (dialog.DoModal() == IDOK)
        ForEachFile(remove ? FileAction::Delete : FileAction::Touch, dialog.m_pszList, nullptr);
    FocusFiles();
}

// Several files go only to a directory, or to a name with wildcards.
void CFileManagerDialog::OnCopyRename(UINT id)
{
    const bool copy = id == IDC_FM_COPY;
    CString names;
    if (CollectNames(names) == 0)
        return;
    CCopyRenameDialog dialog(m_hWnd, copy ? IDS_ACTION_COPY : IDS_ACTION_RENAME, names);
    if (dialog.DoModal() == IDOK) {
        const char* to = dialog.m_szTo;
        FileStatus status;
        if (dialog.m_pszFrom.Find(' ') < 0)
            ForEachFile(copy ? FileAction::Copy : FileAction::Rename, dialog.m_pszFrom, to);
        else if (GetFileStatus(to, status) && !(status.attribute & FILE_ATTRIBUTE_DIRECTORY))
            KmMessageBox(this, MB_ICONHAND, IDS_MULTIPLETARGET, to);
        else if (!GetFileStatus(to, status) && !std::strpbrk(to, "?*"))
            ReportFileCause(to, CFileException::badPath, MB_ICONHAND);
        else
            ForEachFile(copy ? FileAction::Copy : FileAction::Rename, dialog.m_pszFrom, to);
    }
    FocusFiles();
}
