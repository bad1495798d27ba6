#include "tools/MacroText.h"

#include <cctype>
#include <gtest/gtest.h>

namespace
{

std::string Expand(const MacroFacts& facts, const char* text)
{
    return ExpandMacroText(
        text,
        [&](const std::string& name, std::string& value) {
            return LookupMacroIn(facts, name.c_str(), value);
        },
        [](unsigned char c) { return isalpha(c) != 0; });
}

TEST(MacroText, TableWithAndWithoutTargetAndFile)
{
    const MacroFacts project = {true, "c:\\src\\main.c", 12, 5, "d", "x.exe", "c:\\work"};
    const MacroFacts bare = {false, "c:\\stale.c", 1, 1, "", "", "c:\\"}; // no window, no project
    const MacroFacts root = {true, "c:\\main.c", 1, 1, "", "bin\\app", ""};
    const struct {
        const MacroFacts& facts;
        const char* text;
        const char* result;
    } rows[] = {
        {project, "$File $FileName $FileDir $Line:$Col", "c:\\src\\main.c main.c c:\\src 12:5"},
        {project, "$TARGET $ProjName $RC $ProjDir $Dir", "d\\x.exe x d\\x.rc d c:\\work"},
        {project, "$ProjName.res$File", "x.resc:\\src\\main.c"},
        {project, "$Files $ $$ a$ $1 ($Line)", "$Files $ $$ a$ $1 (12)"},
        {bare, "cc $File $Target$RC$ProjName$ProjDir|$Dir", "cc  |c:\\"},
        {root, "$FileDir $FileName $Target $RC $ProjName", "c:\\ main.c bin\\app bin\\app.rc app"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.result, Expand(row.facts, row.text)) << row.text;
}

} // namespace
