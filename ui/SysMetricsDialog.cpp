#include "ui/SysMetricsDialog.h"

#include "resources/KmIds.h"

#include <iterator>

namespace
{

struct Metric {
    int id; // also the string id of its explanation
    const char* name;
};

// In the order shown; the list is not sorted.
const Metric kMetrics[] = {
    {SM_CXBORDER, "SM_CXBORDER"},
    {SM_CYBORDER, "SM_CYBORDER"},
    {SM_CYCAPTION, "SM_CYCAPTION"},
    {SM_CXCURSOR, "SM_CXCURSOR"},
    {SM_CYCURSOR, "SM_CYCURSOR"},
    {SM_CXDLGFRAME, "SM_CXDLGFRAME"},
    {SM_CYDLGFRAME, "SM_CYDLGFRAME"},
    {SM_CXDOUBLECLK, "SM_CXDOUBLECLK"},
    {SM_CYDOUBLECLK, "SM_CYDOUBLECLK"},
    {SM_CXFRAME, "SM_CXFRAME"},
    {SM_CYFRAME, "SM_CYFRAME"},
    {SM_CXFULLSCREEN, "SM_CXFULLSCREEN"},
    {SM_CYFULLSCREEN, "SM_CYFULLSCREEN"},
    {SM_CXHSCROLL, "SM_CXHSCROLL"},
    {SM_CYHSCROLL, "SM_CYHSCROLL"},
    {SM_CXHTHUMB, "SM_CXHTHUMB"},
    {SM_CXICON, "SM_CXICON"},
    {SM_CYICON, "SM_CYICON"},
    {SM_CXICONSPACING, "SM_CXICONSPACING"},
    {SM_CYICONSPACING, "SM_CYICONSPACING"},
    {SM_CYKANJIWINDOW, "SM_CYKANJIWINDOW"},
    {SM_CYMENU, "SM_CYMENU"},
    {SM_CXMIN, "SM_CXMIN"},
    {SM_CYMIN, "SM_CYMIN"},
    {SM_CXMINTRACK, "SM_CXMINTRACK"},
    {SM_CYMINTRACK, "SM_CYMINTRACK"},
    {SM_CXSCREEN, "SM_CXSCREEN"},
    {SM_CYSCREEN, "SM_CYSCREEN"},
    {SM_CXSIZE, "SM_CXSIZE"},
    {SM_CYSIZE, "SM_CYSIZE"},
    {SM_CXVSCROLL, "SM_CXVSCROLL"},
    {SM_CYVSCROLL, "SM_CYVSCROLL"},
    {SM_CYVTHUMB, "SM_CYVTHUMB"},
    {SM_DBCSENABLED, "SM_DBCSENABLED"},
    {SM_DEBUG, "SM_DEBUG"},
    {SM_MENUDROPALIGNMENT, "SM_MENUDROPALIGNMENT"},
    {SM_MOUSEPRESENT, "SM_MOUSEPRESENT"},
    {SM_PENWINDOWS, "SM_PENWINDOWS"},
    {SM_SWAPBUTTON, "SM_SWAPBUTTON"},
};

} // namespace

CSysMetricsDialog::CSysMetricsDialog(HWND parent) : CModalDialog(IDD_SYSMETRICS, parent) {}

bool CSysMetricsDialog::OnInitDialog()
{
    HWND list = GetDlgItem(IDC_SM_LIST);
    for (const Metric& metric : kMetrics)
        ::SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(metric.name));
    ::SendMessageA(list, LB_SETCURSEL, 0, 0);
    ShowSelected();
    CentreOver(m_parent);
    return true;
}

bool CSysMetricsDialog::OnCommand(WPARAM wParam, LPARAM lParam)
{
    if (LOWORD(wParam) == IDC_SM_LIST && HIWORD(wParam) == LBN_SELCHANGE) {
        ShowSelected();
        return true;
    }
    return CModalDialog::OnCommand(wParam, lParam);
}

void CSysMetricsDialog::ShowSelected()
{
    const LRESULT row = ::SendMessageA(GetDlgItem(IDC_SM_LIST), LB_GETCURSEL, 0, 0);
    if (row < 0 || row >= static_cast<LRESULT>(std::size(kMetrics)))
        return;
    const Metric& metric = kMetrics[row];
    CString text;
    text.LoadString(static_cast<unsigned>(metric.id));
    SetDlgItemText(IDC_SM_TEXT, text);
    char value[16];
    wsprintfA(value, "%d", ::GetSystemMetrics(metric.id));
    SetDlgItemText(IDC_SM_VALUE, value);
}
