// The print engine: the one job object, which prints an editor window's
// text line by line with headers, footers, margins and the printer font,
// and keeps the print dialog, and with it the user's printer, from one job
// to the next.
#pragma once
#include "framework/GdiObjects.h"
#include "framework/String.h"

#include <windows.h>

class CKmFileEdit;
class CKmPrintDialog;
class CPrintAbortDialog;

class CKmPrinter
{
  public:
    CKmPrinter() = default;
    ~CKmPrinter();
    CKmPrinter(const CKmPrinter&) = delete;
    CKmPrinter& operator=(const CKmPrinter&) = delete;

    // Asks for the printer and the pages, and prints the window's text, or
    // with Selection the lines that its selection touches.
    void PrintEdit(CKmFileEdit& edit);
    // The printer set-up form of the print dialog.
    void PrintSetup();
    // An information context for the current printer, for choosing a
    // printer font; false, after a message, if there is none.
    bool CreatePrinterIC(HDC& dc);
    // The area inside the margins, in the device's pixels.
    void GetPrintRect(HDC dc, RECT& rect);
    // Left, top, right, bottom in tenths of a millimetre.
    static void GetPageMargins(int margins[4]);
    static void GetPrinterFont(LOGFONTA& logFont);

    // The abort procedure's view of a running job.
    static BOOL CALLBACK AbortProc(HDC dc, int code);

  private:
    bool BeginPrint(bool multiLine);
    void EndPrint();
    bool StartPrintPage();
    bool EndPrintPage();
    void PrintHeaderLine(const CString& text);
    // One printed line of a text line, wrapped or whole; false to stop.
    bool PrintLine(const char* text, int length);
    bool CreatePrintFont();
    // Deletes the context and the dialog of a job that failed to start.
    void DropJob();

    CPrintAbortDialog* m_abortDialog = nullptr;
    CKmPrintDialog* m_printDialog = nullptr;
    HWND m_abortWnd = nullptr;
    HDC m_dc = nullptr;
    CFont m_font;
    HFONT m_oldFont = nullptr;
    CString m_device, m_driver, m_port;
    CString m_header, m_footer;
    CString m_date, m_longDate, m_time;
    CString m_path;
    const char* m_name = "";
    int m_charsPerLine = 0;
    int m_width = 0, m_bottom = 0, m_left = 0, m_top = 0;
    int m_lineHeight = 0;
    int m_y = 0;
    int m_page = 1;
    int m_fromPage = 1, m_toPage = 1;
    bool m_selectionOnly = false;
    bool m_failed = false;
    bool m_aborted = false;
};
