#include "framework/String.h"

#include "framework/WinApp.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <windows.h>

CString& CString::operator=(const char* text)
{
    m_str = text ? text : "";
    return *this;
}

CString& CString::operator+=(const char* text)
{
    if (text)
        m_str += text;
    return *this;
}

CString& CString::operator+=(char ch)
{
    m_str += ch;
    return *this;
}

CString operator+(const CString& a, const char* b)
{
    CString result(a);
    result += b;
    return result;
}

bool operator==(const CString& a, const char* b)
{
    return a.m_str == (b ? b : "");
}

CString CString::Left(int count) const
{
    if (count < 0)
        count = 0;
    return CString(m_str.substr(0, static_cast<size_t>(count)));
}

CString CString::Mid(int first, int count) const
{
    if (first < 0)
        first = 0;
    if (first >= GetLength())
        return CString();
    return CString(m_str.substr(static_cast<size_t>(first),
                                count < 0 ? std::string::npos : static_cast<size_t>(count)));
}

CString CString::Right(int count) const
{
    if (count >= GetLength())
        return *this;
    if (count <= 0)
        return CString();
    return CString(m_str.substr(m_str.size() - static_cast<size_t>(count)));
}

int CString::Find(char ch, int start) const
{
    size_t at = m_str.find(ch, static_cast<size_t>(start < 0 ? 0 : start));
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

int CString::Find(const char* sub, int start) const
{
    size_t at = m_str.find(sub, static_cast<size_t>(start < 0 ? 0 : start));
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

int CString::ReverseFind(char ch) const
{
    size_t at = m_str.rfind(ch);
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

void CString::MakeLower()
{
    for (char& ch : m_str)
        if (ch >= 'A' && ch <= 'Z')
            ch = static_cast<char>(ch + ('a' - 'A'));
}

void CString::MakeUpper()
{
    for (char& ch : m_str)
        if (ch >= 'a' && ch <= 'z')
            ch = static_cast<char>(ch - ('a' - 'A'));
}

void CString::Format(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    int length = vsnprintf(nullptr, 0, format, args);
    va_end(args);
    if (length < 0) {
        va_end(again);
        m_str.clear();
        return;
    }
    std::string text(static_cast<size_t>(length) + 1, '\0');
    vsnprintf(&text[0], text.size(), format, again);
    va_end(again);
    text.resize(static_cast<size_t>(length));
    m_str.swap(text);
}

bool CString::LoadString(unsigned id)
{
    char buffer[1024];
    int length = ::LoadStringA(KmGetResourceHandle(), id, buffer, sizeof buffer);
    if (length <= 0)
        return false;
    m_str.assign(buffer, static_cast<size_t>(length));
    return true;
}

char* CString::GetBuffer(int minLength)
{
    if (minLength > GetLength())
        m_str.resize(static_cast<size_t>(minLength));
    return &m_str[0];
}

void CString::ReleaseBuffer(int newLength)
{
    if (newLength < 0)
        newLength = static_cast<int>(strnlen(m_str.c_str(), m_str.size()));
    m_str.resize(static_cast<size_t>(newLength));
}
