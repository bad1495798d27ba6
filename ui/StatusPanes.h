// The panes of the status bar: a position, a choice among texts, a toggle
// between two texts, and the clock at the right edge.
#pragma once
#include <windows.h>

#include <string>

class CStatusPane
{
  public:
    CStatusPane();
    virtual ~CStatusPane() = default;
    CStatusPane(const CStatusPane&) = delete;
    CStatusPane& operator=(const CStatusPane&) = delete;

    virtual void Draw(HDC dc) = 0;
    // Puts the pane's left edge at x, keeping its width.
    virtual void MoveTo(HWND wnd, int x);
    virtual void SetPosition(HWND wnd, long line, unsigned long col);
    virtual void SetChoice(HWND wnd, int index);
    virtual void SetState(HWND wnd, bool on);
    virtual void Toggle(HWND wnd);
    // What the pane shows now.
    virtual std::string Text() const = 0;

    // Sets both rectangles from the outer one.
    void Place(int left, int top, int right, int bottom);

    RECT m_rcPane;
    RECT m_rcText;

  protected:
    // The sunken frame and the text centred in m_rcText.
    void DrawBox(HDC dc, const char* text) const;
    void InvalidateText(HWND wnd) const;
};

class CPositionPane : public CStatusPane
{
  public:
    void Draw(HDC dc) override;
    void SetPosition(HWND wnd, long line, unsigned long col) override;
    std::string Text() const override;
    // The width the pane takes in a bar whose window is wnd.
    static int Measure(HWND wnd);

    long m_nLine = 0;
    unsigned m_nCol = 0;
};

class CChoicePane : public CStatusPane
{
  public:
    // The texts are the comma-separated parts of commaList.
    explicit CChoicePane(const char* commaList);
    ~CChoicePane() override;
    void Draw(HDC dc) override;
    void SetChoice(HWND wnd, int index) override;
    std::string Text() const override;
    int Measure(HDC dc) const;

    int m_nIndex = 0;
    int m_nChoices = 0;
    std::string* m_pTexts = nullptr;
};

class CTogglePane : public CStatusPane
{
  public:
    CTogglePane(const char* off, const char* on);
    ~CTogglePane() override;
    void Draw(HDC dc) override;
    void SetState(HWND wnd, bool on) override;
    void Toggle(HWND wnd) override;
    std::string Text() const override;
    int Measure(HDC dc) const;

    int m_bOn = 0;
    char* m_pTextOff = nullptr;
    char* m_pTextOn = nullptr;
};

class CClockPane : public CStatusPane
{
  public:
    // separator: the first character is used; iTime 0 is the 12-hour form
    // with the suffixes am and pm (four characters at most).
    CClockPane(const char* separator, int iTime, const char* am, const char* pm);
    // The clock as the "intl" settings of the system ask for it.
    static CClockPane* FromIntl();

    void Draw(HDC dc) override;
    // x is the width of the bar: the pane keeps its right margin of 10.
    void MoveTo(HWND wnd, int x) override;
    std::string Text() const override;
    // The clock's text at the given time of day.
    std::string FormatTime(int hour, int minute) const;
    int Measure(HDC dc) const;

    int m_b24Hour;
    char m_szFormat[12];
    char m_szAm[5];
    char m_szPm[5];
};
