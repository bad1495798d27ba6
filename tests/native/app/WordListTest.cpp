#include "app/WordList.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
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

TEST(WordList, SplitsAtBlanksAndKeepsEverythingElseInsideWords)
{
    const std::tuple<const char*, const char*, std::vector<std::string>> rows[] = {
        {"   a.c  b.c   -s  ", nullptr, {"a.c", "b.c", "-s"}},
        {"one two", " three", {"one", "two", "three"}},
        {"\"my file\" prog.c(12,5) *.c", nullptr, {"\"my", "file\"", "prog.c(12,5)", "*.c"}},
        {"", "    ", {}},
    };
    for (const auto& [first, second, words] : rows) {
        SCOPED_TRACE(first);
        CWordList list;
        EXPECT_EQ(static_cast<int>(words.size()), list.Split(2, first, second));
        EXPECT_EQ(words, Drain(list));
    }
    CWordList three(3, "one two", static_cast<const char*>(nullptr), " three");
    EXPECT_EQ((std::vector<std::string>{"one", "two", "three"}), Drain(three));
}

TEST(WordList, WalkEndsWithNullOnceThenStartsAgainAndKeepsCopies)
{
    char text[] = "x y";
    CWordList list(1, text);
    text[0] = 'X';
    EXPECT_STREQ("x", list.NextWord());
    EXPECT_STREQ("y", list.NextWord());
    EXPECT_EQ(nullptr, list.NextWord());
    EXPECT_STREQ("x", list.NextWord());
    // Split and Clear replace the earlier content and start the walk anew.
    EXPECT_EQ(1, list.Split(1, "d"));
    EXPECT_EQ((std::vector<std::string>{"d"}), Drain(list));
    list.NextWord();
    list.Clear();
    EXPECT_EQ(nullptr, list.NextWord());
}

} // namespace
