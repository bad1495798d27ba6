// Random patterns from the part of the dialect where the engine and the
// standard library's ECMAScript engine must agree: single-byte elements,
// '.', sets, and '*' on single elements; texts without CR.
#include "PatternTestUtil.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <string>

namespace
{

class Generator
{
  public:
    explicit Generator(unsigned seed) : m_rng(seed) {}

    std::string Pattern()
    {
        std::string pattern;
        int elements = Below(6) + 1;
        for (int i = 0; i < elements; ++i) {
            pattern += Element();
            if (Below(3) == 0)
                pattern += '*';
        }
        return pattern;
    }

    std::string Text()
    {
        static const char kBytes[] = "abcd\n";
        std::string text;
        int length = Below(24) + 1;
        for (int i = 0; i < length; ++i)
            text += kBytes[Below(sizeof kBytes - 1)];
        return text;
    }

  private:
    int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_rng); }

    std::string Element()
    {
        static const char kLetters[] = "abcd";
        switch (Below(6)) {
        case 0:
            return ".";
        case 1:
            return Set();
        default:
            return std::string(1, kLetters[Below(4)]);
        }
    }

    std::string Set()
    {
        static const char* const kMembers[] = {"a", "b", "c", "ab", "a-c", "b-d", "\\n"};
        std::string set = Below(3) == 0 ? "[^" : "[";
        int members = Below(2) + 1;
        for (int i = 0; i < members; ++i) {
            std::string member = kMembers[Below(7)];
            // A line feed in our sets is the byte itself.
            set += member == "\\n" ? "\n" : member;
        }
        return set + "]";
    }

    std::mt19937 m_rng;
};

TEST(PatternDifferential, AgreesWithEcmaScriptOnPositionAndLength)
{
    Generator gen(20240611);
    int matched = 0;
    for (int round = 0; round < 4000; ++round) {
        std::string pattern = gen.Pattern();
        Compiled ours(pattern);
        ASSERT_EQ(PATTERN_OK, ours.result) << pattern;
        std::regex theirs(pattern, std::regex::ECMAScript);
        for (int t = 0; t < 5; ++t) {
            std::string text = gen.Text();
            MatchRegisters regs;
            int pos = ours.Find(text, &regs);
            std::smatch m;
            bool found = std::regex_search(text, m, theirs);
            ASSERT_EQ(found, pos >= 0) << "pattern '" << pattern << "' text '" << text << "'";
            if (!found)
                continue;
            matched++;
            ASSERT_EQ(m.position(0), pos) << "pattern '" << pattern << "' text '" << text << "'";
            ASSERT_EQ(m.length(0), regs.end[0] - regs.start[0])
                << "pattern '" << pattern << "' text '" << text << "'";
        }
    }
    EXPECT_GT(matched, 2000); // the generator produces both outcomes
}

} // namespace
