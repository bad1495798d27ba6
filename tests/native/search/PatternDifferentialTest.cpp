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

TEST(PatternDifferential, AgreesWithEcmaScriptOnPositionAndLength)
{
    std::mt19937 rng(20240611);
    auto below = [&rng](int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); };
    // A line feed in our sets is the byte itself.
    const char* const members[] = {"a", "b", "c", "ab", "a-c", "b-d", "\n"};
    int matched = 0;
    for (int round = 0; round < 4000; ++round) {
        std::string pattern;
        for (int i = below(6) + 1; i > 0; --i) {
            const int kind = below(6);
            if (kind == 0) {
                pattern += '.';
            } else if (kind == 1) {
                pattern += below(3) == 0 ? "[^" : "[";
                for (int m = below(2) + 1; m > 0; --m)
                    pattern += members[below(7)];
                pattern += ']';
            } else {
                pattern += "abcd"[below(4)];
            }
            if (below(3) == 0)
                pattern += '*';
        }
        Compiled ours(pattern);
        ASSERT_EQ(PATTERN_OK, ours.result) << pattern;
        std::regex theirs(pattern, std::regex::ECMAScript);
        for (int t = 0; t < 5; ++t) {
            std::string text;
            for (int i = below(24) + 1; i > 0; --i)
                text += "abcd\n"[below(5)];
            SCOPED_TRACE("pattern '" + pattern + "' text '" + text + "'");
            MatchRegisters regs;
            const int pos = ours.Find(text, &regs);
            std::smatch m;
            const bool found = std::regex_search(text, m, theirs);
            ASSERT_EQ(found, pos >= 0);
            if (found) {
                matched++;
                ASSERT_EQ(m.position(0), pos);
                ASSERT_EQ(m.length(0), regs.end[0] - regs.start[0]);
            }
        }
    }
    EXPECT_GT(matched, 2000); // the generator produces both outcomes
}

} // namespace
