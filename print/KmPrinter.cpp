#include "print/KmPrinter.h"

#include "app/IniStore.h"
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "edit/KmFileDialog.h"
#include "edit/KmFileEdit.h"
#include "edit/Messages.h"
#include "print/PageLayout.h"
#include "print/PrintAbortDialog.h"
#include "resources/KmIds.h"
#include "tools/FileDir.h"

#include <ctime>
#include <new>

namespace
{

const int kMaxPage = 32767;
const int kPointsPerInch = 72;

// A template of the settings: the default only when the key is missing.
CString GetTemplate(const char* key, UINT defaultId)
{
    CString text;
    if (!theApp.GetSetting(SECTION_SETTINGS, key, text))
        text.LoadString(defaultId);
    return text;
}

bool HasEscape(HDC dc, int escape)
{
    return ::Escape(dc, QUERYESCSUPPORT, sizeof escape, reinterpret_cast<LPCSTR>(&escape),
                    nullptr) > 0;
}

} // namespace

CKmPrinter::~CKmPrinter()
{
    delete m_printDialog;
}

void CKmPrinter::PrintEdit(CKmFileEdit& edit)
{
    edit.GetWindowText(m_path);
    const int slash = m_path.ReverseFind('\\');
    m_name = (edit.m_flags & CF_FILE) && slash >= 0 ? m_path.c_str() + slash + 1 : m_path.c_str();

    CWnd& control = edit.Edit();
    DWORD start = 0, end = 0;
    control.SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                        reinterpret_cast<LPARAM>(&end));
    const int firstLine = static_cast<int>(control.SendMessage(EM_LINEFROMCHAR, start));
    const int lastLine = static_cast<int>(control.SendMessage(EM_LINEFROMCHAR, end));
    try {
        if (!BeginPrint(lastLine > firstLine))
            return;
    } catch (const std::bad_alloc&) {
        DropJob();
        OutOfMemoryNotice();
        return;
    }
    int from = 0, to = static_cast<int>(control.SendMessage(EM_GETLINECOUNT)) - 1;
    if (m_selectionOnly)
        from = firstLine, to = lastLine;
    if (!StartPrintPage()) {
        m_failed = true;
        EndPrint();
        return;
    }
    HWND frame = KmGetMainWindow();
    ::DragAcceptFiles(frame, FALSE);
    try {
        CEditText text(control);
        // Pages past the last asked for need not be walked through.
        for (int line = from; line <= to && !m_aborted && m_page <= m_toPage; ++line) {
            const int offset = static_cast<int>(control.SendMessage(EM_LINEINDEX, line));
            const size_t length = static_cast<size_t>(control.SendMessage(EM_LINELENGTH, offset));
            BreakLine(text.text + offset, length, m_charsPerLine, theApp.tabSize,
                      [this](const char* printed, int count) { return PrintLine(printed, count); });
        }
    } catch (const std::bad_alloc&) {
        m_aborted = true;
        OutOfMemoryNotice();
    }
    EndPrintPage();
    EndPrint();
    ::DragAcceptFiles(frame, TRUE);
}

bool CKmPrinter::PrintLine(const char* text, int length)
{
    if (m_y + m_lineHeight > m_bottom) {
        if (!EndPrintPage() || m_aborted || !StartPrintPage())
            return false;
    }
    if (m_page >= m_fromPage && length > 0 && !::TextOutA(m_dc, m_left, m_y, text, length))
        m_aborted = true;
    m_y += m_lineHeight;
    return !m_aborted;
}

bool CKmPrinter::BeginPrint(bool multiLine)
{
    m_aborted = false;
    m_failed = true;
    m_dc = nullptr;
    m_abortDialog = nullptr;
    m_selectionOnly = false;
    CString document;
    document.LoadString(IDS_PRINTDOCPREFIX);
    document += m_name;
    m_header = GetTemplate("PageHeader", IDS_DEFAULTHEADER);
    m_footer = GetTemplate("PageFooter", IDS_DEFAULTFOOTER);
    if (!m_header.IsEmpty() || !m_footer.IsEmpty()) {
        const time_t now = time(nullptr);
        if (const tm* local = localtime(&now)) {
            FormatShortDate(*local, m_date);
            FormatLongDate(*local, m_longDate);
            FormatTime(*local, m_time);
        }
    }

    HWND frame = KmGetMainWindow();
    bool isNew = false;
    if (!m_printDialog) {
        m_printDialog = new CKmPrintDialog(
            false, PD_RETURNDC | PD_USEDEVMODECOPIES | PD_HIDEPRINTTOFILE, frame);
        isNew = true;
    }
    PRINTDLGA& pd = m_printDialog->m_pd;
    pd.hwndOwner = frame;
    if (multiLine)
        pd.Flags &= ~PD_NOSELECTION;
    else
        pd.Flags |= PD_NOSELECTION;
    pd.nMinPage = 1, pd.nMaxPage = kMaxPage;
    pd.nFromPage = 1, pd.nToPage = 0xFFFF;
    pd.nCopies = 1;
    pd.Flags &= ~(PD_PAGENUMS | PD_NOPAGENUMS | PD_SELECTION);
    if (m_printDialog->DoModal() != IDOK) {
        if (isNew) {
            delete m_printDialog;
            m_printDialog = nullptr;
        }
        return false;
    }
    m_dc = m_printDialog->TakePrinterDC();
    m_device = m_printDialog->GetDeviceName();
    m_driver = m_printDialog->GetDriverName();
    m_port = m_printDialog->GetPortName();
    m_fromPage = 1, m_toPage = kMaxPage;
    if (pd.Flags & PD_PAGENUMS)
        m_fromPage = pd.nFromPage, m_toPage = pd.nToPage;
    else if (pd.Flags & PD_SELECTION)
        m_selectionOnly = true;
    if (!m_dc)
        return false;

    m_abortDialog = new CPrintAbortDialog(frame, m_aborted);
    m_abortDialog->Create(m_name, m_device, m_port);
    m_abortWnd = m_abortDialog->m_hWnd;
    DOCINFOA info = {sizeof info, document.c_str(), nullptr, nullptr, 0};
    if (::SetAbortProc(m_dc, AbortProc) < 0 || ::StartDocA(m_dc, &info) == SP_ERROR) {
        DropJob();
        return false;
    }
    RECT area;
    GetPrintRect(m_dc, area);
    m_left = area.left, m_top = area.top;
    m_width = area.right - area.left, m_bottom = area.bottom;
    if (!CreatePrintFont()) {
        ::AbortDoc(m_dc);
        DropJob();
        KmMessageBox(nullptr, MB_ICONSTOP, IDS_NOPRINTERFONT);
        return false;
    }
    m_oldFont = static_cast<HFONT>(::SelectObject(m_dc, m_font));
    SIZE size = {1, 1};
    ::GetTextExtentPoint32A(m_dc, "H", 1, &size);
    m_lineHeight = size.cy;
    m_page = 1;
    if (!m_footer.IsEmpty())
        m_bottom -= 2 * m_lineHeight;
    m_charsPerLine = size.cx > 0 ? m_width / size.cx : 0;
    if (m_charsPerLine < 1)
        m_charsPerLine = 1;
    return true;
}

void CKmPrinter::DropJob()
{
    ::DeleteDC(m_dc);
    m_dc = nullptr;
    delete m_abortDialog;
    m_abortDialog = nullptr;
    m_abortWnd = nullptr;
}

void CKmPrinter::EndPrint()
{
    if (m_dc) {
        ::SelectObject(m_dc, m_oldFont);
        m_font.DeleteObject();
        if (!m_aborted && ::EndDoc(m_dc) > 0)
            m_failed = false;
        if (m_aborted || m_failed)
            ::AbortDoc(m_dc);
    }
    const std::string name = m_name; // the message below outlives the strings
    const bool report = m_failed && !m_aborted;
    DropJob();
    for (CString* text : {&m_device, &m_driver, &m_port, &m_header, &m_footer, &m_date, &m_longDate,
                          &m_time, &m_path})
        text->Empty();
    m_name = "";
    if (report)
        KmMessageBox(nullptr, MB_ICONEXCLAMATION, IDS_CANNOTPRINT, name.c_str());
}

bool CKmPrinter::StartPrintPage()
{
    if (m_page > m_toPage)
        return false;
    m_y = m_top;
    if (m_page >= m_fromPage && ::StartPage(m_dc) < 1) {
        KmMessageBox(nullptr, MB_ICONEXCLAMATION, IDS_CANNOTPRINT, m_name);
        return false;
    }
    ::SelectObject(m_dc, m_font); // a new page starts with the device's font
    if (!m_header.IsEmpty()) {
        PrintHeaderLine(m_header);
        m_y += 2 * m_lineHeight;
    }
    return true;
}

bool CKmPrinter::EndPrintPage()
{
    if (m_page > m_toPage)
        return false;
    if (!m_footer.IsEmpty()) {
        m_y = m_bottom + m_lineHeight;
        PrintHeaderLine(m_footer);
    }
    ::SelectObject(m_dc, m_oldFont);
    if (m_page++ < m_fromPage)
        return true;
    if (::EndPage(m_dc) < 0) {
        KmMessageBox(nullptr, MB_ICONEXCLAMATION, IDS_CANNOTPRINT, m_name);
        return false;
    }
    return true;
}

void CKmPrinter::PrintHeaderLine(const CString& text)
{
    if (m_page < m_fromPage)
        return;
    HeaderFields fields;
    fields.name = m_name, fields.path = m_path.c_str(), fields.page = m_page;
    fields.date = m_date.c_str(), fields.longDate = m_longDate.c_str();
    fields.time = m_time.c_str();
    for (const HeaderPart& part : ExpandHeader(text, fields)) {
        const int x = part.align == HA_LEFT    ? m_left
                      : part.align == HA_RIGHT ? m_left + m_width
                                               : m_left + m_width / 2;
        ::SetTextAlign(m_dc, part.align == HA_LEFT    ? TA_LEFT
                             : part.align == HA_RIGHT ? TA_RIGHT
                                                      : TA_CENTER);
        ::TextOutA(m_dc, x, m_y, part.text.c_str(), static_cast<int>(part.text.size()));
    }
    ::SetTextAlign(m_dc, TA_LEFT);
}

void CKmPrinter::GetPrintRect(HDC dc, RECT& rect)
{
    PageMetrics page{::GetDeviceCaps(dc, HORZSIZE), ::GetDeviceCaps(dc, VERTSIZE),
                     ::GetDeviceCaps(dc, HORZRES), ::GetDeviceCaps(dc, VERTRES)};
    POINT point = {0, 0};
    if (HasEscape(dc, GETPRINTINGOFFSET) && ::Escape(dc, GETPRINTINGOFFSET, 0, nullptr, &point) > 0)
        page.offsetX = point.x, page.offsetY = point.y;
    if (HasEscape(dc, GETPHYSPAGESIZE) && ::Escape(dc, GETPHYSPAGESIZE, 0, nullptr, &point) > 0) {
        page.physical = true;
        page.physWidth = point.x, page.physHeight = point.y;
    }
    int margins[MARGIN_COUNT];
    GetPageMargins(margins);
    const PrintArea area = ComputePrintArea(page, margins);
    rect = {area.left, area.top, area.right, area.bottom};
}

void CKmPrinter::GetPageMargins(int margins[4])
{
    CString text;
    if (!theApp.GetSetting(SECTION_SETTINGS, "PageMargins", text) || text.IsEmpty())
        text.LoadString(IDS_DEFAULTMARGINS);
    ParseMargins(text, margins);
}

void CKmPrinter::GetPrinterFont(LOGFONTA& logFont)
{
    CString text;
    if (!theApp.GetSetting(SECTION_SETTINGS, "PrinterFont", text) || text.IsEmpty()) {
        ::GetObjectA(::GetStockObject(ANSI_FIXED_FONT), sizeof logFont, &logFont);
        return;
    }
    const PrinterFontSpec spec = ParsePrinterFont(text);
    logFont = LOGFONTA();
    logFont.lfPitchAndFamily = FIXED_PITCH;
    lstrcpynA(logFont.lfFaceName, spec.face.c_str(), LF_FACESIZE);
    logFont.lfHeight = spec.height;
    logFont.lfWeight = spec.weight;
    logFont.lfItalic = static_cast<BYTE>(spec.italic);
}

bool CKmPrinter::CreatePrintFont()
{
    LOGFONTA logFont;
    GetPrinterFont(logFont);
    logFont.lfHeight = ::GetDeviceCaps(m_dc, LOGPIXELSY) * logFont.lfHeight / kPointsPerInch;
    m_font.DeleteObject();
    return m_font.CreateFontIndirect(&logFont);
}

BOOL CALLBACK CKmPrinter::AbortProc(HDC, int code)
{
    CKmPrinter& printer = *theApp.printer;
    // A full spool disk makes the job wait for room.
    if (code != 0 && code != SP_OUTOFDISK)
        printer.m_aborted = true;
    MSG msg;
    while (!printer.m_aborted && ::PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (printer.m_abortWnd && ::IsDialogMessageA(printer.m_abortWnd, &msg))
            continue;
        ::TranslateMessage(&msg);
        ::DispatchMessageA(&msg);
    }
    return !printer.m_aborted;
}

void CKmPrinter::PrintSetup()
{
    bool isNew = false;
    try {
        if (m_printDialog) {
            m_printDialog->m_pd.Flags = (m_printDialog->m_pd.Flags & ~PD_RETURNDC) | PD_PRINTSETUP;
        } else {
            m_printDialog = new CKmPrintDialog(
                true, PD_USEDEVMODECOPIES | PD_HIDEPRINTTOFILE | PD_NOSELECTION | PD_NOPAGENUMS,
                KmGetMainWindow());
            isNew = true;
        }
    } catch (const std::bad_alloc&) {
        OutOfMemoryNotice();
        return;
    }
    m_printDialog->m_pd.hwndOwner = KmGetMainWindow();
    const INT_PTR answer = m_printDialog->DoModal();
    m_printDialog->m_pd.Flags = (m_printDialog->m_pd.Flags & ~PD_PRINTSETUP) | PD_RETURNDC;
    if (isNew && answer != IDOK) {
        delete m_printDialog;
        m_printDialog = nullptr;
    }
}

bool CKmPrinter::CreatePrinterIC(HDC& dc)
{
    CString device, driver, port;
    if (m_printDialog) {
        device = m_printDialog->GetDeviceName();
        driver = m_printDialog->GetDriverName();
        port = m_printDialog->GetPortName();
    } else {
        char profile[256];
        ::GetProfileStringA("windows", "device", ",,,", profile, sizeof profile);
        const CString text(profile);
        const int first = text.Find(','), second = first < 0 ? -1 : text.Find(',', first + 1);
        if (first > 0 && second > first + 1 && second + 1 < text.GetLength()) {
            device = text.Left(first);
            driver = text.Mid(first + 1, second - first - 1);
            port = text.Mid(second + 1);
        } else {
            KmMessageBox(nullptr, MB_ICONSTOP, IDS_NOPRINTER, "Default", "?", "?");
            return false;
        }
    }
    dc = ::CreateICA(driver, device, port, nullptr);
    if (!dc)
        KmMessageBox(nullptr, MB_ICONSTOP, IDS_NOPRINTER, device.c_str(), driver.c_str(),
                     port.c_str());
    return dc != nullptr;
}
