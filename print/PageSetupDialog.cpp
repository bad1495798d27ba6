#include "print/PageSetupDialog.h"

#include "app/IniStore.h"
#include "app/KmApp.h"
#include "edit/Messages.h"
#include "print/KmPrinter.h"
#include "print/PageLayout.h"
#include "resources/KmIds.h"

namespace
{

const int kHelpPageSetup = 29;
const int kMarginChars = 10;
// The fields in the order of the stored margins.
const int kMarginFields[MARGIN_COUNT] = {IDC_PAGE_LEFT, IDC_PAGE_TOP, IDC_PAGE_RIGHT,
                                         IDC_PAGE_BOTTOM};

} // namespace

// clang-format off
BEGIN_MESSAGE_MAP(CPageSetupDialog, CModalDialog)
    ON_COMMAND(IDHELP, OnHelp)
END_MESSAGE_MAP()
// clang-format on

CPageSetupDialog::CPageSetupDialog(HWND parent) : CModalDialog(IDD_PAGESETUP, parent)
{
    char decimal[8];
    ::GetProfileStringA("intl", "sDecimal", ".", decimal, sizeof decimal);
    m_decimal = decimal;
    m_metric = ::GetProfileIntA("intl", "iMeasure", 1) == 0;
}

bool CPageSetupDialog::OnInitDialog()
{
    try {
        CString title;
        title.LoadString(m_metric ? IDS_MARGINS_CM : IDS_MARGINS_INCHES);
        SetDlgItemText(IDC_PAGE_MARGINS, title);
        if (!theApp.GetSetting(SECTION_SETTINGS, "PageHeader", m_header))
            m_header.LoadString(IDS_DEFAULTHEADER);
        if (!theApp.GetSetting(SECTION_SETTINGS, "PageFooter", m_footer))
            m_footer.LoadString(IDS_DEFAULTFOOTER);
        SetDlgItemText(IDC_PAGE_HEADER, m_header);
        SetDlgItemText(IDC_PAGE_FOOTER, m_footer);
        CKmPrinter::GetPageMargins(m_margins);
        for (int i = 0; i < MARGIN_COUNT; ++i) {
            ::SendMessageA(GetDlgItem(kMarginFields[i]), EM_LIMITTEXT, kMarginChars, 0);
            SetDlgItemText(kMarginFields[i],
                           FormatMargin(m_margins[i], m_metric, m_decimal).c_str());
        }
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
        EndDialog(IDCANCEL);
    }
    return true;
}

int CPageSetupDialog::ReadMargin(int id)
{
    CString text;
    GetDlgItemText(id, text);
    const int value = ParseMargin(text, m_metric, m_decimal);
    if (value < 0) {
        KmMessageBox(this, MB_ICONSTOP, IDS_BADMARGIN);
        SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(id)), TRUE);
    }
    return value;
}

void CPageSetupDialog::OnOK()
{
    try {
        GetDlgItemText(IDC_PAGE_HEADER, m_header);
        GetDlgItemText(IDC_PAGE_FOOTER, m_footer);
        // Read as the fields stand, left and right first.
        for (int index : {MARGIN_LEFT, MARGIN_RIGHT, MARGIN_TOP, MARGIN_BOTTOM})
            if ((m_margins[index] = ReadMargin(kMarginFields[index])) < 0)
                return;
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
        EndDialog(IDCANCEL);
        return;
    }
    EndDialog(IDOK);
}

void CPageSetupDialog::OnHelp()
{
    ::WinHelpA(m_hWnd, theApp.helpPath, HELP_CONTEXT, kHelpPageSetup);
}
