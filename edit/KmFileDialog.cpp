#include "edit/KmFileDialog.h"

#include "app/KmApp.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"

#include <dlgs.h>

IMPLEMENT_DYNAMIC(CKmFileDialog, CFileDialog)

namespace
{

UINT g_fileOkMessage = ::RegisterWindowMessageA(FILEOKSTRINGA);
// The list of file types that the last dialog ended on, for the next one.
DWORD g_lastFilter = 1;
const DWORD kFileBlockSize = 2048;
const int kFormatButtons[] = {IDC_FORMAT_DOS, IDC_FORMAT_UNIX, IDC_FORMAT_MAC};

} // namespace

// clang-format off
BEGIN_MESSAGE_MAP(CKmFileDialog, CFileDialog)
    ON_REGISTERED_MESSAGE(&g_fileOkMessage, OnFileOk)
    ON_CONTROL(BN_CLICKED, chx1, OnReadOnly)
    ON_CONTROL(BN_CLICKED, IDC_VIEWHEX, OnViewHex)
END_MESSAGE_MAP()
// clang-format on

CKmFileDialog::CKmFileDialog(bool open, const char* defaultExtension, const char* fileName,
                             DWORD style)
    : CFileDialog(open, defaultExtension, fileName, style & ~KFD_OWNBITS), m_open(open),
      m_options(style)
{
    if (open || (style & KFD_SHOWHEX))
        m_options |= KFD_NOFORMAT;
    try {
        CString filter;
        theApp.GetEnvironmentSetting(IDS_ENV_FILEFILTER, filter);
        if (filter.IsEmpty())
            filter.LoadString(IDS_FILTER_SOURCE);
        const DWORD count = SetFilter(filter);
        // The count is twice the number of types, so this bound is rough: an
        // index past the last type can pass, and the platform shows the first.
        if (g_lastFilter >= count)
            g_lastFilter = 0;
        m_ofn.nFilterIndex = g_lastFilter;
    } catch (const std::bad_alloc&) {
        m_ofn.lpstrFilter = nullptr;
        OutOfMemoryNotice();
    }
    m_ofn.Flags |= OFN_ENABLETEMPLATE;
    m_ofn.lpTemplateName = MAKEINTRESOURCEA(FILEOPENORD);
    if (!(style & OFN_ALLOWMULTISELECT))
        return;
    m_ofn.lpTemplateName = MAKEINTRESOURCEA(MULTIFILEOPENORD);
    // Without the block the names must fit the plain buffer.
    m_fileBlock = ::GlobalAlloc(GMEM_MOVEABLE, kFileBlockSize);
    if (char* names = m_fileBlock ? static_cast<char*>(::GlobalLock(m_fileBlock)) : nullptr) {
        lstrcpynA(names, fileName ? fileName : "", kFileBlockSize);
        m_ofn.lpstrFile = names;
        m_ofn.nMaxFile = kFileBlockSize;
    }
}

CKmFileDialog::~CKmFileDialog()
{
    if (m_fileBlock) {
        ::GlobalUnlock(m_fileBlock);
        ::GlobalFree(m_fileBlock);
    }
}

INT_PTR CKmFileDialog::DoModal()
{
    const INT_PTR result = CFileDialog::DoModal();
    if (result == IDOK)
        g_lastFilter = m_ofn.nFilterIndex;
    else
        theApp.recentFilesDirty = 1; // the dialog may have changed directory
    return result;
}

bool CKmFileDialog::OnInitDialog()
{
    CString title;
    if (title.LoadString(m_open ? IDS_DLGTITLE_OPEN : IDS_DLGTITLE_SAVEAS))
        SetWindowText(title);
    if (!(m_options & KFD_SHOWHEX))
        ::ShowWindow(GetDlgItem(IDC_VIEWHEX), SW_HIDE);
    if (!(m_options & KFD_NOFORMAT)) {
        if (m_format >= FF_DOS && m_format <= FF_MAC)
            CheckDlgButton(kFormatButtons[m_format], true);
    } else if (m_ofn.lpTemplateName == MAKEINTRESOURCEA(FILEOPENORD)) {
        ::ShowWindow(GetDlgItem(IDC_FORMATGROUP), SW_HIDE);
        for (int id : kFormatButtons)
            ::ShowWindow(GetDlgItem(id), SW_HIDE);
    }
    return true;
}

// The platform has accepted the name: the dialog is about to end with OK.
LRESULT CKmFileDialog::OnFileOk(WPARAM, LPARAM)
{
    m_readOnly = IsDlgButtonChecked(chx1);
    m_hex = IsDlgButtonChecked(IDC_VIEWHEX);
    if (!m_open) {
        m_format = FF_MIXED;
        for (int i = FF_DOS; i <= FF_MAC && m_format == FF_MIXED; ++i)
            if (IsDlgButtonChecked(kFormatButtons[i]))
                m_format = static_cast<FileFormat>(i);
    }
    // The hook's own result is the answer here, and zero accepts the name.
    return Default();
}

// A hex window is always read-only.
void CKmFileDialog::OnReadOnly()
{
    if (!IsDlgButtonChecked(chx1))
        CheckDlgButton(IDC_VIEWHEX, false);
    Default();
}

void CKmFileDialog::OnViewHex()
{
    if (IsDlgButtonChecked(IDC_VIEWHEX))
        CheckDlgButton(chx1, true);
    Default();
}

CKmFontDialog::CKmFontDialog(const LOGFONTA& logFont, DWORD flags, HWND owner)
    : CFontDialog(logFont, flags & ~CF_SHOWHELP, owner)
{
}
