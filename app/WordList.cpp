#include "app/WordList.h"

#include <cstring>
#include <utility>
#include <vector>

namespace
{

using WordSpan = std::pair<const char*, size_t>;

// Appends the words of text to words, as places in text and lengths.
void CollectWords(const char* text, std::vector<WordSpan>& words)
{
    if (!text)
        return;
    for (;;) {
        while (*text == ' ')
            ++text;
        if (!*text)
            return;
        const char* end = strchr(text, ' ');
        if (!end)
            end = text + strlen(text);
        words.emplace_back(text, static_cast<size_t>(end - text));
        text = end;
    }
}

char* CopyWord(const WordSpan& word)
{
    char* copy = new char[word.second + 1];
    memcpy(copy, word.first, word.second);
    copy[word.second] = '\0';
    return copy;
}

} // namespace

CWordList::CWordList(int count, ...)
{
    va_list texts;
    va_start(texts, count);
    try {
        SplitTexts(count, texts);
    } catch (...) {
        va_end(texts);
        throw;
    }
    va_end(texts);
}

int CWordList::Split(int count, ...)
{
    va_list texts;
    va_start(texts, count);
    int words = 0;
    try {
        words = SplitTexts(count, texts);
    } catch (...) {
        va_end(texts);
        throw;
    }
    va_end(texts);
    return words;
}

int CWordList::SplitTexts(int count, va_list texts)
{
    Clear();
    std::vector<WordSpan> words;
    for (int i = 0; i < count; ++i)
        CollectWords(va_arg(texts, const char*), words);
    if (words.empty())
        return 0;
    m_words = new char*[words.size()]();
    try { // a half-made list is freed: the destructor may never run
        for (const WordSpan& word : words) {
            m_words[m_count] = CopyWord(word);
            ++m_count;
        }
    } catch (...) {
        Clear();
        throw;
    }
    return static_cast<int>(m_count);
}

const char* CWordList::NextWord()
{
    if (m_next >= m_count) {
        m_next = 0;
        return nullptr;
    }
    return m_words[m_next++];
}

void CWordList::Clear()
{
    for (uint32_t i = 0; i < m_count; ++i)
        delete[] m_words[i];
    delete[] m_words;
    m_words = nullptr;
    m_count = 0;
    m_next = 0;
}
