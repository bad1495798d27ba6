#include "ui/StatusPanes.h"

#include "ui/StatusBar.h"

#include <cstdio>
#include <cstring>

namespace
{

char* CopyText(const char* text)
{
    if (!text)
        text = "";
    const size_t size = strlen(text) + 1;
    char* copy = new char[size];
    memcpy(copy, text, size);
    return copy;
}

int TextWidth(HDC dc, const char* text, int length)
{
    SIZE size = {0, 0};
    ::GetTextExtentPoint32A(dc, text, length, &size);
    return size.cx;
}

int TextWidth(HDC dc, const char* text)
{
    return TextWidth(dc, text, static_cast<int>(strlen(text)));
}

} // namespace

CStatusPane::CStatusPane()
{
    ::SetRectEmpty(&m_rcPane);
    ::SetRectEmpty(&m_rcText);
}

void CStatusPane::Place(int left, int top, int right, int bottom)
{
    ::SetRect(&m_rcPane, left, top, right, bottom);
    ::SetRect(&m_rcText, left + 1, top + 1, right, bottom);
}

void CStatusPane::MoveTo(HWND wnd, int x)
{
    // The highlight edges lie on the right and bottom borders of m_rcPane.
    RECT old = m_rcPane;
    ::InflateRect(&old, 1, 1);
    ::InvalidateRect(wnd, &old, TRUE);
    Place(x, m_rcPane.top, x + m_rcPane.right - m_rcPane.left, m_rcPane.bottom);
    RECT now = m_rcPane;
    ::InflateRect(&now, 1, 1);
    ::InvalidateRect(wnd, &now, TRUE);
}

void CStatusPane::SetPosition(HWND, long, unsigned long) {}
void CStatusPane::SetChoice(HWND, int) {}
void CStatusPane::SetState(HWND, bool) {}
void CStatusPane::Toggle(HWND) {}

void CStatusPane::InvalidateText(HWND wnd) const
{
    ::InvalidateRect(wnd, &m_rcText, TRUE);
}

void CStatusPane::DrawBox(HDC dc, const char* text) const
{
    if (!::RectVisible(dc, &m_rcPane))
        return;
    if (CKmStatusBar::HasColours()) {
        HGDIOBJ old = ::SelectObject(dc, CKmStatusBar::ShadowPen());
        ::MoveToEx(dc, m_rcPane.left, m_rcPane.bottom, nullptr);
        ::LineTo(dc, m_rcPane.left, m_rcPane.top);
        ::LineTo(dc, m_rcPane.right, m_rcPane.top);
        ::SelectObject(dc, CKmStatusBar::HighlightPen());
        ::LineTo(dc, m_rcPane.right, m_rcPane.bottom);
        ::LineTo(dc, m_rcPane.left, m_rcPane.bottom);
        ::SelectObject(dc, old);
    }
    const int length = static_cast<int>(strlen(text));
    if (length == 0)
        return;
    const int width = TextWidth(dc, text, length);
    const int x = m_rcText.left + (m_rcText.right - m_rcText.left - width) / 2;
    ::ExtTextOutA(dc, x, m_rcText.top, ETO_OPAQUE, &m_rcText, text, length, nullptr);
}

// --- position ---

void CPositionPane::Draw(HDC dc)
{
    DrawBox(dc, Text().c_str());
}

void CPositionPane::SetPosition(HWND wnd, long line, unsigned long col)
{
    if (line == m_nLine && col == m_nCol)
        return;
    m_nLine = line;
    m_nCol = static_cast<unsigned>(col);
    InvalidateText(wnd);
}

std::string CPositionPane::Text() const
{
    char text[32];
    snprintf(text, sizeof text, "%ld : %u", m_nLine, m_nCol);
    return text;
}

int CPositionPane::Measure(HWND wnd)
{
    // Measured with the terminator, in the window's default font rather than
    // the bar's: the pane has always been this wide, and it is kept so.
    static const char sample[] = "1234567 : 1234";
    HDC dc = ::GetDC(wnd);
    const int width = TextWidth(dc, sample, static_cast<int>(sizeof sample));
    ::ReleaseDC(wnd, dc);
    return width;
}

// --- choice ---

CChoicePane::CChoicePane(const char* commaList)
{
    if (!commaList || !*commaList)
        return;
    int count = 1;
    for (const char* p = commaList; *p; ++p)
        count += *p == ',';
    m_pTexts = new std::string[count];
    m_nChoices = count;
    int i = 0;
    for (const char* p = commaList; *p; ++p) {
        if (*p == ',')
            ++i;
        else
            m_pTexts[i] += *p;
    }
}

CChoicePane::~CChoicePane()
{
    delete[] m_pTexts;
}

void CChoicePane::Draw(HDC dc)
{
    DrawBox(dc, Text().c_str());
}

void CChoicePane::SetChoice(HWND wnd, int index)
{
    if (index < 0 || index >= m_nChoices || index == m_nIndex)
        return;
    m_nIndex = index;
    InvalidateText(wnd);
}

std::string CChoicePane::Text() const
{
    return m_nIndex < m_nChoices ? m_pTexts[m_nIndex] : std::string();
}

int CChoicePane::Measure(HDC dc) const
{
    int widest = 0;
    for (int i = 0; i < m_nChoices; ++i) {
        const int width = TextWidth(dc, m_pTexts[i].c_str());
        if (width > widest)
            widest = width;
    }
    return widest;
}

// --- toggle ---

CTogglePane::CTogglePane(const char* off, const char* on)
{
    m_pTextOff = CopyText(off);
    try {
        m_pTextOn = CopyText(on);
    } catch (...) {
        delete[] m_pTextOff;
        throw;
    }
}

CTogglePane::~CTogglePane()
{
    delete[] m_pTextOff;
    delete[] m_pTextOn;
}

void CTogglePane::Draw(HDC dc)
{
    DrawBox(dc, m_bOn ? m_pTextOn : m_pTextOff);
}

void CTogglePane::SetState(HWND wnd, bool on)
{
    if (static_cast<int>(on) == m_bOn)
        return;
    m_bOn = on;
    InvalidateText(wnd);
}

void CTogglePane::Toggle(HWND wnd)
{
    m_bOn = !m_bOn;
    InvalidateText(wnd);
}

std::string CTogglePane::Text() const
{
    return m_bOn ? m_pTextOn : m_pTextOff;
}

int CTogglePane::Measure(HDC dc) const
{
    const int off = TextWidth(dc, m_pTextOff);
    const int on = TextWidth(dc, m_pTextOn);
    return off > on ? off : on;
}

// --- clock ---

CClockPane::CClockPane(const char* separator, int iTime, const char* am, const char* pm)
{
    m_b24Hour = iTime != 0;
    snprintf(m_szFormat, sizeof m_szFormat, "%%d%.1s%%02d%s", separator, m_b24Hour ? "" : " %s");
    snprintf(m_szAm, sizeof m_szAm, "%s", m_b24Hour ? "" : am);
    snprintf(m_szPm, sizeof m_szPm, "%s", m_b24Hour ? "" : pm);
}

CClockPane* CClockPane::FromIntl()
{
    char separator[2];
    ::GetProfileStringA("intl", "sTime", ":", separator, sizeof separator);
    const int iTime = static_cast<int>(::GetProfileIntA("intl", "iTime", 0));
    char am[5] = "";
    char pm[5] = "";
    if (iTime == 0) {
        ::GetProfileStringA("intl", "s1159", "am", am, sizeof am);
        ::GetProfileStringA("intl", "s2359", "pm", pm, sizeof pm);
    }
    return new CClockPane(separator, iTime, am, pm);
}

std::string CClockPane::FormatTime(int hour, int minute) const
{
    char text[32];
    if (m_b24Hour) {
        snprintf(text, sizeof text, m_szFormat, hour, minute);
    } else {
        const int shown = hour % 12 == 0 ? 12 : hour % 12;
        snprintf(text, sizeof text, m_szFormat, shown, minute, hour < 12 ? m_szAm : m_szPm);
    }
    return text;
}

std::string CClockPane::Text() const
{
    SYSTEMTIME now;
    ::GetLocalTime(&now);
    return FormatTime(now.wHour, now.wMinute);
}

void CClockPane::Draw(HDC dc)
{
    DrawBox(dc, Text().c_str());
}

void CClockPane::MoveTo(HWND wnd, int x)
{
    CStatusPane::MoveTo(wnd, x + m_rcPane.left - m_rcPane.right - 10);
}

int CClockPane::Measure(HDC dc) const
{
    // 23:59 is as wide as the clock gets, once with each suffix.
    char text[32];
    snprintf(text, sizeof text, m_szFormat, 23, 59, m_szAm);
    const int am = TextWidth(dc, text);
    snprintf(text, sizeof text, m_szFormat, 23, 59, m_szPm);
    const int pm = TextWidth(dc, text);
    return am > pm ? am : pm;
}
