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
    MacroFacts project;
    project.hasFile = true;
    project.file = "c:\\src\\main.c";
    project.line = 12;
    project.column = 5;
    project.projectDir = "d";
    project.target = "x.exe";
    project.currentDir = "c:\\work";
    MacroFacts bare; // no window, no project
    bare.file = "c:\\stale.c";
    bare.currentDir = "c:\\";
    MacroFacts root = project;
    root.file = "c:\\main.c";
    root.target = "bin\\app";
    root.projectDir = "";

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
