// 8-bit ANSI string. Converts to const char* so that it can be passed to
// the Win32 calls; never pass a CString itself through "...".
#pragma once
#include <string>
#include <windows.h>

// Lets the compiler check the arguments of a printf-style function; f is
// the format's position and a that of the first argument (this counts 1).
#ifdef __MINGW_PRINTF_FORMAT
#define KM_PRINTF(f, a) __attribute__((format(__MINGW_PRINTF_FORMAT, f, a)))
#else
#define KM_PRINTF(f, a) __attribute__((format(printf, f, a)))
#endif

class CString
{
  public:
    CString() = default;
    CString(const char* text) : m_str(text ? text : "") {}
    CString(const char* text, int length) : m_str(text, static_cast<size_t>(length)) {}
    CString(const std::string& text) : m_str(text) {}

    int GetLength() const { return static_cast<int>(m_str.size()); }
    bool IsEmpty() const { return m_str.empty(); }
    void Empty() { m_str.clear(); }
    operator const char*() const { return m_str.c_str(); }
    const char* c_str() const { return m_str.c_str(); }
    const std::string& str() const { return m_str; }
    char operator[](int index) const { return m_str[static_cast<size_t>(index)]; }
    char GetAt(int index) const { return m_str[static_cast<size_t>(index)]; }
    void SetAt(int index, char ch) { m_str[static_cast<size_t>(index)] = ch; }

    CString& operator=(const char* text);
    CString& operator+=(const char* text);
    CString& operator+=(char ch);
    friend CString operator+(const CString& a, const char* b);
    friend bool operator==(const CString& a, const char* b);
    friend bool operator!=(const CString& a, const char* b) { return !(a == b); }

    CString Left(int count) const;
    CString Mid(int first, int count = -1) const;
    CString Right(int count) const;
    int Find(char ch, int start = 0) const;
    int Find(const char* sub, int start = 0) const;
    int ReverseFind(char ch) const;

    // Lower-cases the bytes A to Z only; bytes above 127 stay.
    void MakeLower();
    void MakeUpper();

    // Formats in the manner of sprintf.
    void Format(const char* format, ...) KM_PRINTF(2, 3);
    // Loads a string of the string table; false if there is none.
    bool LoadString(unsigned id);

    // A writable buffer of at least minLength characters; ReleaseBuffer
    // takes the length up to the first NUL (or newLength when given).
    char* GetBuffer(int minLength);
    void ReleaseBuffer(int newLength = -1);

  private:
    std::string m_str;
};
