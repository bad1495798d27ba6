#include "app/CommandLine.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

TEST(CommandLine, Parse)
{
    const struct {
        const char* text;
        int printOnly, safeMode, editOnly, arrange; // arrange: ArrangeForSwitch, -1 for no switch
        const char *directory, *iniName, *files;    // files joined by '|'
        const char* note;
    } rows[] = {
        {"/P -S -e", 1, 1, 1, -1, "", "", "", "either introducer, either case"},
        {"-av", 0, 0, 0, 0, "", "", "", "arrange v"},
        {"-ah", 0, 0, 0, 3, "", "", "", "arrange h"},
        {"-AC", 0, 0, 0, 1, "", "", "", "arrange c"},
        {"/aM", 0, 0, 0, 2, "", "", "", "arrange m"},
        {"-ax", 0, 0, 0, -1, "", "", "", "unknown arrange letter"},
        {"-dc:\\proj   -i   c:\\cfg\\my.ini -s", 0, 1, 0, -1, "c:\\proj", "c:\\cfg\\my.ini", "",
         "word directly or after blanks"},
        {"-e a.c b.c -s", 0, 0, 1, -1, "", "", "a.c|b.c|-s", "a switch behind a file is a file"},
        {"-z -q prog.c(12,5)", 0, 0, 0, -1, "", "", "prog.c(12,5)", "unknown letters ignored"},
        {"/e x", 0, 0, 1, -1, "", "", "x", "slash introducer"},
        {"-", 0, 0, 0, -1, "", "", "", "dangling introducer"},
        {"", 0, 0, 0, -1, "", "", "", "empty"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.note);
        CCommandLine line;
        line.Parse(row.text);
        EXPECT_EQ(row.printOnly, line.printOnly);
        EXPECT_EQ(row.safeMode, line.safeMode);
        EXPECT_EQ(row.editOnly, line.editOnly);
        if (row.arrange < 0)
            EXPECT_EQ(0, line.arrange);
        else
            EXPECT_EQ(row.arrange, ArrangeForSwitch(line.arrange));
        EXPECT_EQ(row.directory, line.directory);
        EXPECT_EQ(row.iniName, line.iniName);
        std::string files;
        while (const char* word = line.files.NextWord())
            files += (files.empty() ? "" : "|") + std::string(word);
        EXPECT_EQ(row.files, files);
    }
}

TEST(ProgramDir, LowerCasedAndCutBehindTheLastBackslashAndATrailingNt)
{
    EXPECT_EQ(ProgramDirFromModule("C:\\Tools\\KELMAR.EXE"), "c:\\tools\\");
    EXPECT_EQ(ProgramDirFromModule("c:\\foo\\nt\\kelmar.exe"), "c:\\foo\\");
    EXPECT_EQ(ProgramDirFromModule("c:\\client\\kelmar.exe"), "c:\\clie");
}

} // namespace
