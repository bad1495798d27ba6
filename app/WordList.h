// The blank-separated words of one or more texts, each in a heap string of
// its own. No quoting and no wildcards: a word runs to the next blank.
#pragma once
#include <cstdarg>
#include <cstdint>

struct CWordList {
    CWordList() = default;
    // Splits the count texts that follow, as Split does.
    CWordList(int count, ...);
    ~CWordList() { Clear(); }
    CWordList(const CWordList&) = delete;
    CWordList& operator=(const CWordList&) = delete;

    // Replaces the content by the words of the count texts (const char*,
    // null ones skipped) that follow; the number of words.
    int Split(int count, ...);
    // The next word; null at the end, and then the walk starts again.
    const char* NextWord();
    void Clear();

    char** m_words = nullptr;
    uint32_t m_count = 0;
    uint32_t m_next = 0;

  private:
    int SplitTexts(int count, va_list texts);
};
