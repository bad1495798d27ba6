#include "help/HelpText.h"

#include <gtest/gtest.h>

namespace
{

using Paths = std::vector<std::string>;

TEST(HelpText, IncludeLinesAndNames)
{
    const struct {
        const char* line;
        long mark;
        const char* name; // null: no closing mark
    } rows[] = {
        {" \t#include <stdio.h> x", 11, "stdio.h"},
        {"!include \"c:\\\\inc\\\\a.h\"", 9, "c:\\inc\\a.h"},
        {"#include\t\"a.h\r\nb\"", 9, nullptr},
        {"#include <a.h", 9, nullptr},
        {"#include \"a>h\"", 9, "a>h"},
        {"#include MACRO", kIncludeWithoutName, nullptr},
        {"# include <a.h>", kNotInclude, nullptr},
        {"#Include <a.h>", kNotInclude, nullptr},
        {"x #include <a.h>", kNotInclude, nullptr},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.mark, IncludeMarkAt(row.line)) << row.line;
        std::string name;
        const bool closed = row.mark >= 0 && IncludeName(row.line + row.mark, name);
        EXPECT_EQ(row.name ? row.name : "", closed ? name : "") << row.line;
    }
}

TEST(HelpText, SearchOrder)
{
    const struct {
        const char* name;
        bool quoted;
        const char* project;
        const char* environment;
        Paths paths;
    } rows[] = {
        {"a.h", true, "p1;p2\\", "e1", {"a.h", "p1\\a.h", "p2\\a.h", "e1\\a.h"}},
        {"a.h", false, "p1;", ";;e1;e2", {"p1\\a.h", "e1\\a.h", "e2\\a.h"}},
        {"a.h", false, "", "", {}},
        {"sys\\a.h", false, "p", "", {"p\\sys\\a.h"}},
        {"\\inc\\a.h", false, "p", "e", {"\\inc\\a.h"}},
        {"c:\\a.h", true, "p", "e", {"c:\\a.h"}},
        {"c:a.h", false, "p", "", {"p\\c:a.h"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.paths, IncludeCandidates(row.name, row.quoted, row.project, row.environment))
            << row.name;
}

TEST(HelpText, SourceOfAWord)
{
    const struct {
        int mode;
        const char* word;
        int source;
    } rows[] = {
        {0, "#define", 2},          {0, "#undef", 2},   {0, "while", 2},    {0, "auto", 2},
        {0, "_set_new_handler", 2}, {0, "_setargv", 1}, {0, "_setenvp", 1}, {0, "define", 1},
        {0, "CreateWindow", 1},     {0, "While", 1},    {0, "", 1},         {1, "while", 1},
        {2, "CreateWindow", 2},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.source, HelpSource(row.mode, row.word)) << row.word;
}

TEST(HelpText, WordAndProgram)
{
    const char* text = "x #define y;CreateWindow";
    EXPECT_EQ("#define", HelpWordAt(text, 5, IsAsciiWordByte));
    EXPECT_EQ("CreateWindow", HelpWordAt(text, 24 - 3, IsAsciiWordByte));
    const std::string longWord(49, 'w');
    const struct {
        const char* value;
        std::string word;
        const char* program;
        std::string arguments;
    } rows[] = {
        {"viewer", "w", "viewer", ""},
        {"viewer -k %s -p 100%%", "w", "viewer", "-k w -p 100%"},
        {"viewer %s", longWord, "viewer %s", ""},
        {"viewer %s", longWord.substr(1), "viewer", longWord.substr(1)},
    };
    for (const auto& row : rows) {
        std::string program, arguments;
        SplitHelpProgram(row.value, row.word, program, arguments);
        EXPECT_EQ(row.program, program) << row.value;
        EXPECT_EQ(row.arguments, arguments) << row.value;
    }
}

} // namespace
