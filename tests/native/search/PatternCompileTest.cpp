// The compiler: the results it gives and the buffer it fills. What its code
// means is tested through the matcher.
#include "PatternTestUtil.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace
{

TEST(PatternCompile, Results)
{
    const std::string open = "\\(\\(\\(\\(\\(\\(\\(\\(\\(\\(";
    const std::tuple<std::string, int> rows[] = {
        // clang-format off
        {"a", PATTERN_OK}, {"[]]", PATTERN_OK}, {"[^]]", PATTERN_OK},
        {std::string(16375, '.'), PATTERN_OK}, // an element starts while ten bytes remain
        {std::string(16376, '.'), PATTERN_TOO_COMPLEX},
        {std::string(16360, '.') + "[a]", PATTERN_TOO_COMPLEX}, // a set needs 35
        {std::string(20000, '.'), PATTERN_TOO_COMPLEX}, {"\\(a", PATTERN_UNMATCHED_OPEN},
        {open + "a", PATTERN_UNMATCHED_OPEN}, {open + "\\(a", PATTERN_TOO_COMPLEX},
        {"a\\)", PATTERN_UNMATCHED_CLOSE}, {"\\)", PATTERN_UNMATCHED_CLOSE}, {"[", PATTERN_INVALID},
        {"[a", PATTERN_INVALID}, {"[a-", PATTERN_INVALID}, {"a\\", PATTERN_INVALID},
        {"[]", PATTERN_INVALID}, {"[^]", PATTERN_INVALID}, {"[a-z", PATTERN_INVALID},
        {"[\\", PATTERN_INVALID},
        // clang-format on
    };
    for (const auto& [pattern, result] : rows)
        EXPECT_EQ(result, Compiled(pattern).result) << pattern.substr(0, 30);

    Compiled fits(std::string(16375, '.'));
    EXPECT_EQ(16375u, fits.pb.used);
    EXPECT_EQ(16384u, fits.pb.allocated);
    g_reallocFailsAfter = 0; // the first allocation
    EXPECT_EQ(PATTERN_NO_MEMORY, Compiled("a").result);
    g_reallocFailsAfter = 1; // the first growth
    EXPECT_EQ(PATTERN_NO_MEMORY, Compiled(std::string(100, '.')).result);
    g_reallocFailsAfter = -1;
}

TEST(PatternCompile, BufferIsReusedAndAnchorsAreFlagged)
{
    PatternBuffer pb;
    pb.buffer = static_cast<unsigned char*>(malloc(40));
    pb.allocated = 40;
    ASSERT_EQ(PATTERN_OK, CompilePattern("abc", 3, &pb));
    unsigned char* first = pb.buffer;
    ASSERT_EQ(PATTERN_OK, CompilePattern("xy", 2, &pb));
    EXPECT_EQ(first, pb.buffer);
    EXPECT_EQ(4u, pb.used);
    EXPECT_EQ(PATTERN_INVALID, CompilePattern("[", 1, &pb));
    ASSERT_EQ(PATTERN_OK, CompilePattern("a", 1, &pb));
    EXPECT_EQ(0, pb.map_valid);
    free(pb.buffer);

    Compiled both("^a$"), neither("a^$b");
    EXPECT_EQ(1, both.pb.has_line_start);
    EXPECT_EQ(1, both.pb.has_line_end);
    EXPECT_EQ(0, neither.pb.has_line_start);
    EXPECT_EQ(0, neither.pb.has_line_end);
}

} // namespace
