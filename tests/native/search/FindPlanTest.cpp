#include "search/FindPlan.h"
#include "PatternTestUtil.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

TEST(FindPlan, StartRangeAndPassesFromTheSelectionOrAsGiven)
{
    // interactive, forward, start, range, selection start and end; start, range, passes
    const int rows[][9] = {
        // clang-format off
        {1, 1, -1, 0, 3, 5, 5, 5, 2}, {1, 1, -1, 0, 0, 0, 0, 10, 1},
        {1, 1, -1, 0, 10, 10, 10, 0, 2}, {1, 0, -1, 0, 3, 5, 2, -2, 2},
        {1, 0, -1, 0, 0, 4, 0, 0, 2}, {1, 0, -1, 0, 10, 10, 9, -9, 1}, {1, 0, -1, 0, 1, 1, 0, 0, 2},
        {0, 1, -1, 0, 3, 5, 5, 5, 1}, {0, 1, 4, 3, 0, 9, 4, 3, 1}, {1, 1, 0, 7, 5, 5, 0, 7, 1},
        {1, 1, 2, 7, 5, 5, 2, 7, 2}, {1, 0, 9, -9, 0, 0, 9, -9, 1},
        // clang-format on
    };
    for (const auto& r : rows) {
        const FindPlan plan = PlanFind(r[0], r[1], r[2], r[3], r[4], r[5], 10);
        EXPECT_EQ((std::vector<int>{r[6], r[7], r[8]}),
                  (std::vector<int>{plan.start, plan.range, plan.passes}))
            << r[0] << r[1] << " from " << r[2] << " sel " << r[4];
    }
    FindPlan plan = {4, 3, 2};
    RestartPlan(true, 10, plan);
    EXPECT_EQ((std::vector<int>{0, 10, 2}),
              (std::vector<int>{plan.start, plan.range, plan.passes}));
    RestartPlan(false, 10, plan);
    EXPECT_EQ((std::vector<int>{10, -10}), (std::vector<int>{plan.start, plan.range}));
}

TEST(FindPlan, StepsOverALineStartForCaretPatternsElseOverCrThenLf)
{
    struct Row {
        const char* pattern;
        const char* text;
        int start, range, expectedStart, expectedRange;
    } const rows[] = {
        // clang-format off
        {"^x", "ab\r\nxy", 4, 2, 5, 1}, {"^x", "ab\r\nxy", 0, 6, 1, 5},
        {"^x", "ab\r\nxy", 2, 4, 4, 2}, {"^x", "ab\r\nxy", 1, 5, 1, 5},
        {"$", "ab\r\ncd", 2, 4, 4, 2}, {"$", "ab\r\ncd", 3, 3, 4, 2}, {"$", "ab\r\ncd", 6, 0, 6, 0},
        {"a", "\n\r", 0, 2, 1, 1}, {"a", "x\r\n", 1, 1, 3, 0}, {"^", "ab\n", 3, 0, 4, 0},
        {"a", "\r\r\n", 0, 3, 1, 2},
        // clang-format on
    };
    for (const Row& row : rows) {
        Compiled compiled(row.pattern);
        FindPlan plan = {row.start, row.range, 2};
        StepOverRepeat(compiled.pb, row.text, static_cast<int>(strlen(row.text)), plan);
        EXPECT_EQ((std::vector<int>{row.expectedStart, row.expectedRange}),
                  (std::vector<int>{plan.start, plan.range}))
            << row.pattern << " at " << row.start;
    }
}

} // namespace
