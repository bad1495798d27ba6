#include "ui/GlobalSettingsDialog.h"

#include "app/IniStore.h"
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "edit/KmFileDialog.h"
#include "edit/Messages.h"
#include "print/KmPrinter.h"
#include "print/PageSetupDialog.h"
#include "resources/KmIds.h"
#include "tools/ToolsDialog.h"
#include "ui/KeyBindingsDialog.h"

#include <algorithm>
#include <new>

namespace
{

// The switches of the flag word, in the dialog's order; some show the bit,
// the others its absence.
const struct {
    int id;
    unsigned long bit;
    bool shownSet;
} kSwitches[] = {
    {IDC_GS_STATUSBAR, KF_NOSTATUSBAR, false},
    {IDC_GS_TOOLBAR, KF_NOTOOLBAR, false},
    {IDC_GS_CLOCK, KF_NOCLOCK, false},
    {IDC_GS_HSCROLL, KF_NOHSCROLL, false},
    {IDC_GS_VSCROLL, KF_NOVSCROLL, false},
    {IDC_GS_ALERTS, KF_ALERTS, true},
    {IDC_GS_PROJECT, KF_NOPROJECT, false},
    {IDC_GS_BACKUP, KF_BACKUP, true},
    {IDC_GS_CONFIRM, KF_AUTOSAVE, false},
    {IDC_GS_SPACEDELIM, KF_SPACEDELIM, true},
    {IDC_GS_ALIGN, KF_ALIGN, true},
    {IDC_GS_INDENT, KF_INDENT, true},
};

const int kSizeDigits = 2;
const int kPointsPerInch = 72;
const int kSmallestSize = 2;
const DWORD kHelpGlobalSettings = 10;

// The face, the height as the font has it (it is negated as it is read),
// the weight and the italic byte.
void WriteFont(const char* key, const LOGFONTA& font)
{
    CString text;
    text.Format("%s,%d,%d,%d", font.lfFaceName, static_cast<int>(font.lfHeight),
                static_cast<int>(font.lfWeight), font.lfItalic);
    theApp.SetSetting(SECTION_SETTINGS, key, text);
}

void WritePage(const CGlobalSettingsDialog& dialog)
{
    CString margins;
    const int* m = dialog.m_pageMargins;
    margins.Format("%d,%d,%d,%d", m[0], m[1], m[2], m[3]);
    theApp.SetSetting(SECTION_SETTINGS, "PageMargins", margins);
    theApp.SetSetting(SECTION_SETTINGS, "PageHeader", dialog.m_pageHeader);
    theApp.SetSetting(SECTION_SETTINGS, "PageFooter", dialog.m_pageFooter);
}

} // namespace

CGlobalSettingsDialog::CGlobalSettingsDialog(HWND parent)
    : CModalDialog(IDD_GLOBALSETTINGS, parent), m_editTab(kSizeDigits), m_editIndent(kSizeDigits)
{
}

bool CGlobalSettingsDialog::OnInitDialog()
{
    CheckDlgButton(IDC_GS_SAVESETTINGS, theApp.saveSettings != 0);
    CheckDlgButton(IDC_GS_SAVEWINDOWS, theApp.saveWindows != 0);
    for (const auto& box : kSwitches)
        CheckDlgButton(box.id, ((theApp.flags & box.bit) != 0) == box.shownSet);
    const DWORD style = WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL;
    m_editTab.m_nValue = theApp.tabSize;
    m_editIndent.m_nValue = theApp.shiftWidth;
    m_editTab.ReplaceControl(style, IDC_GS_TABSIZE, m_hWnd, IDC_GS_TABSIZE);
    m_editIndent.ReplaceControl(style, IDC_GS_SHIFTWIDTH, m_hWnd, IDC_GS_SHIFTWIDTH);
    CentreOver(m_parent);
    return true;
}

bool CGlobalSettingsDialog::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const int id = LOWORD(wParam);
    if (HIWORD(wParam) != BN_CLICKED)
        return CModalDialog::OnCommand(wParam, lParam);
    switch (id) {
    case IDC_GS_ALIGN: // block indent needs Maintain Indentation
        if (!IsDlgButtonChecked(IDC_GS_ALIGN))
            CheckDlgButton(IDC_GS_INDENT, false);
        return true;
    case IDC_GS_INDENT:
        if (IsDlgButtonChecked(IDC_GS_INDENT))
            CheckDlgButton(IDC_GS_ALIGN, true);
        return true;
    case IDC_GS_SCREENFONT:
        OnScreenFont();
        return true;
    case IDC_GS_PRINTERFONT:
        OnPrinterFont();
        return true;
    case IDC_GS_PAGESETUP:
        OnPageSetup();
        return true;
    case IDC_GS_TOOLS:
        OnTools();
        return true;
    case IDC_GS_KEYS:
        OnKeyBindings();
        return true;
    case IDHELP:
        ::WinHelpA(KmGetMainWindow(), theApp.helpPath, HELP_CONTEXT, kHelpGlobalSettings);
        return true;
    }
    return CModalDialog::OnCommand(wParam, lParam);
}

void CGlobalSettingsDialog::OnScreenFont()
{
    LOGFONTA start = m_bScreenFontChanged ? m_screenFont : LOGFONTA{};
    if (!m_bScreenFontChanged)
        theApp.screenFont.GetLogFont(&start);
    CKmFontDialog dialog(
        start, CF_SCREENFONTS | CF_NOSIMULATIONS | CF_FIXEDPITCHONLY | CF_FORCEFONTEXIST, m_hWnd);
    if (dialog.DoModal() != IDOK)
        return;
    m_screenFont = dialog.m_lf;
    m_bScreenFontChanged = 1;
}

// Chosen against the printer: without one nothing happens. The height goes
// in as pixels of the printer and comes back in points, negated.
void CGlobalSettingsDialog::OnPrinterFont()
{
    HDC printer = nullptr;
    if (!theApp.printer || !theApp.printer->CreatePrinterIC(printer))
        return;
    LOGFONTA start = m_printerFont;
    if (!m_bPrinterFontChanged)
        CKmPrinter::GetPrinterFont(start);
    if (start.lfHeight < 0)
        start.lfHeight = start.lfHeight * ::GetDeviceCaps(printer, LOGPIXELSY) / -kPointsPerInch;
    CKmFontDialog dialog(start, CF_BOTH | CF_FIXEDPITCHONLY | CF_FORCEFONTEXIST, m_hWnd);
    dialog.m_cf.hDC = printer;
    if (dialog.DoModal() == IDOK) {
        m_printerFont = dialog.m_lf;
        m_printerFont.lfHeight = dialog.m_cf.iPointSize / -10;
        m_bPrinterFontChanged = 1;
    }
    ::DeleteDC(printer);
}

void CGlobalSettingsDialog::OnPageSetup()
{
    CPageSetupDialog dialog(m_hWnd);
    if (dialog.DoModal() != IDOK)
        return;
    m_pageHeader = dialog.m_header;
    m_pageFooter = dialog.m_footer;
    std::copy(dialog.m_margins, dialog.m_margins + 4, m_pageMargins);
    m_bPageChanged = 1;
}

// The Tools dialog edits a copy of its own, which becomes the dialog's on OK.
void CGlobalSettingsDialog::OnTools()
{
    try {
        CToolList copy = m_bToolsChanged ? m_tools : theApp.tools;
        CToolsDialog dialog(m_hWnd, &copy);
        if (dialog.DoModal() != IDOK)
            return;
        m_tools = copy;
        m_bToolsChanged = 1;
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
    }
}

void CGlobalSettingsDialog::OnKeyBindings()
{
    CKmFrame* frame = theApp.Frame();
    CKeyBindingsDialog dialog(m_hWnd, m_keys, frame ? frame->GetAccelerators() : nullptr);
    if (dialog.DoModal() == IDOK)
        m_bKeysChanged = 1;
}

bool CGlobalSettingsDialog::CheckSize(CNumEdit& field, unsigned messageId)
{
    if (field.GetValue() >= kSmallestSize)
        return true;
    KmMessageBox(this, MB_ICONEXCLAMATION, messageId);
    SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(field.m_hWnd), TRUE);
    return false;
}

void CGlobalSettingsDialog::OnOK()
{
    if (!CheckSize(m_editTab, IDS_TABTOOSMALL) || !CheckSize(m_editIndent, IDS_INDENTTOOSMALL))
        return;
    theApp.tabSize = m_editTab.GetValue();
    theApp.shiftWidth = m_editIndent.GetValue();
    theApp.saveSettings = IsDlgButtonChecked(IDC_GS_SAVESETTINGS);
    theApp.saveWindows = IsDlgButtonChecked(IDC_GS_SAVEWINDOWS);
    for (const auto& box : kSwitches) {
        if (IsDlgButtonChecked(box.id) == box.shownSet)
            theApp.flags |= box.bit;
        else
            theApp.flags &= ~box.bit;
    }
    EndDialog(IDOK);
}

void ApplyGlobalSettings(CGlobalSettingsDialog& dialog, unsigned long oldFlags, int oldTabSize)
{
    CKmFrame* frame = theApp.Frame();
    if (!frame)
        return;
    const unsigned long changed = theApp.flags ^ oldFlags;
    frame->ApplyToolBarFlags(oldFlags);
    frame->ApplyStatusBarFlag(oldFlags);
    if (theApp.statusBar.Exists() && (changed & KF_NOCLOCK)) {
        if (theApp.flags & KF_NOCLOCK)
            theApp.statusBar.HideClock();
        else
            theApp.statusBar.ShowClock();
    }
    if (changed & KF_NOPROJECT)
        frame->SendMessage(WM_KM_SETMENU, static_cast<WPARAM>(frame->m_nMenu));
    if (theApp.statusBar.Exists())
        theApp.statusBar.SetPaneState(theApp.paneAutoSave, (theApp.flags & KF_AUTOSAVE) != 0);
    if (dialog.m_bPageChanged)
        WritePage(dialog);
    if (dialog.m_bScreenFontChanged) {
        theApp.screenFont.DeleteObject();
        theApp.screenFont.CreateFontIndirect(&dialog.m_screenFont);
        WriteFont("ScreenFont", dialog.m_screenFont);
    }
    if (dialog.m_bPrinterFontChanged)
        WriteFont("PrinterFont", dialog.m_printerFont);
    if (dialog.m_bScreenFontChanged || theApp.tabSize != oldTabSize) {
        frame->BeginBusy(false);
        for (HWND child = ::GetWindow(frame->m_hWndMDIClient, GW_CHILD); child;
             child = ::GetWindow(child, GW_HWNDNEXT))
            if (!::GetWindow(child, GW_OWNER))
                ::SendMessageA(child,
                               dialog.m_bScreenFontChanged ? WM_KM_FONTCHANGED : WM_KM_TABSCHANGED,
                               1, 0);
        frame->EndBusy();
    }
    if (dialog.m_bToolsChanged) {
        try {
            theApp.tools = dialog.m_tools;
            theApp.toolsDirty = 1;
        } catch (const std::bad_alloc&) {
            OutOfMemoryNotice();
        }
    }
    if (dialog.m_bKeysChanged)
        frame->ApplyKeyTable(dialog.m_keys);
}
