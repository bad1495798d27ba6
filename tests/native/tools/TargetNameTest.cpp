#include "tools/TargetName.h"

#include <gtest/gtest.h>

namespace
{

TEST(TargetName, WildcardsTakeTheSourcesCharacters)
{
    const struct {
        const char* source;
        const char* target;
        const char* result;
    } rows[] = {
        {"a.c", "*.bak", "a.bak"},
        {"c:\\src\\xyz.h", "a?c.*", "ayc.h"},
        {"d:long.name.txt", "old\\*.*", "old\\long.name"},
        {"ab", "??x?.?", "abx."},
        {"main.c", "new.cpp", "new.cpp"},
        {"main.c", "c:\\bak\\*", "c:\\bak\\main"},
        {"a.b.c", "*.*.*", "a.b.c"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.result, ExpandTargetName(row.source, row.target)) << row.target;
}

} // namespace
