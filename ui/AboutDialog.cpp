#include "ui/AboutDialog.h"

#include "resources/KmIds.h"

CAboutDialog::CAboutDialog(HWND parent) : CModalDialog(IDD_ABOUT, parent) {}

bool CAboutDialog::OnInitDialog()
{
    const struct {
        int item;
        unsigned text;
    } lines[] = {{IDC_ABOUT_TITLE, IDS_TITLE},
                 {IDC_ABOUT_RELEASE, IDS_RELEASE},
                 {IDC_ABOUT_NOTICE, IDS_IDLE}};
    CString text;
    for (const auto& line : lines) {
        text.LoadString(line.text);
        SetDlgItemText(line.item, text);
    }
    MEMORYSTATUS memory = {};
    memory.dwLength = sizeof memory;
    ::GlobalMemoryStatus(&memory);
    const unsigned long kilo = 1024;
    text.Format("\tTotal Memory:\t\t%lu KB\n\tFree Memory:\t\t%lu KB\n\tMemory Load:\t\t%lu%%",
                static_cast<unsigned long>(memory.dwTotalPhys / kilo),
                static_cast<unsigned long>(memory.dwAvailPhys / kilo),
                static_cast<unsigned long>(memory.dwMemoryLoad));
    SetDlgItemText(IDC_ABOUT_MEMORY, text);
    CentreOver(m_parent);
    return true;
}
