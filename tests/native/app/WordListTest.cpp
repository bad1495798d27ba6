#include "app/WordList.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

std::vector<std::string> Drain(CWordList& list)
{
    std::vector<std::string> words;
    while (const char* word = list.NextWord())
        words.emplace_back(word);
    return words;
}

TEST(WordList, SplitsAtRunsOfBlanksAndSkipsLeadingOnes)
{
    CWordList list;
    EXPECT_EQ(3, list.Split(1, "   a.c  b.c   -s  "));
    EXPECT_EQ(3u, list.m_count);
    EXPECT_EQ((std::vector<std::string>{"a.c", "b.c", "-s"}), Drain(list));
}

TEST(WordList, TakesTheWordsOfAllTexts)
{
    CWordList list(3, "one two", static_cast<const char*>(nullptr), " three");
    EXPECT_EQ(3u, list.m_count);
    EXPECT_EQ((std::vector<std::string>{"one", "two", "three"}), Drain(list));
}

TEST(WordList, KeepsQuotesParenthesesAndWildcardsInsideWords)
{
    CWordList list(1, "\"my file\" prog.c(12,5) *.c");
    EXPECT_EQ((std::vector<std::string>{"\"my", "file\"", "prog.c(12,5)", "*.c"}), Drain(list));
}

TEST(WordList, WithoutWordsHasNoArray)
{
    CWordList list;
    EXPECT_EQ(0, list.Split(2, "", "    "));
    EXPECT_EQ(nullptr, list.m_words);
    EXPECT_EQ(0u, list.m_count);
    EXPECT_EQ(nullptr, list.NextWord());
}

TEST(WordList, EndOfWalkReturnsNullOnceAndStartsAgain)
{
    CWordList list(1, "x y");
    EXPECT_STREQ("x", list.NextWord());
    EXPECT_STREQ("y", list.NextWord());
    EXPECT_EQ(2u, list.m_next);
    EXPECT_EQ(nullptr, list.NextWord());
    EXPECT_EQ(0u, list.m_next);
    EXPECT_STREQ("x", list.NextWord());
}

TEST(WordList, SplitReplacesEarlierContent)
{
    CWordList list(1, "a b c");
    list.NextWord();
    EXPECT_EQ(1, list.Split(1, "d"));
    EXPECT_EQ(0u, list.m_next);
    EXPECT_EQ((std::vector<std::string>{"d"}), Drain(list));
}

TEST(WordList, ClearEmptiesTheList)
{
    CWordList list(1, "a b");
    list.NextWord();
    list.Clear();
    EXPECT_EQ(nullptr, list.m_words);
    EXPECT_EQ(0u, list.m_count);
    EXPECT_EQ(0u, list.m_next);
    EXPECT_EQ(nullptr, list.NextWord());
}

TEST(WordList, WordsAreCopies)
{
    char text[] = "abc def";
    CWordList list(1, text);
    text[0] = 'X';
    EXPECT_STREQ("abc", list.NextWord());
}

} // namespace
