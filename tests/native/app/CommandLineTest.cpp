#include "app/CommandLine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> Files(CCommandLine& line)
{
    std::vector<std::string> words;
    while (const char* word = line.files.NextWord())
        words.push_back(word);
    return words;
}

} // namespace

TEST(CommandLine, SwitchesTakeEitherIntroducerAndCase)
{
    CCommandLine line;
    line.Parse("/P -S -e");
    EXPECT_EQ(line.printOnly, 1);
    EXPECT_EQ(line.safeMode, 1);
    EXPECT_EQ(line.editOnly, 1);
    EXPECT_EQ(line.files.m_count, 0u);
}

TEST(CommandLine, ArrangeSwitchesMapToTheirValues)
{
    const struct {
        const char* text;
        int arrange;
    } cases[] = {{"-av", 0}, {"-ah", 3}, {"-AC", 1}, {"/aM", 2}};
    for (const auto& c : cases) {
        CCommandLine line;
        line.Parse(c.text);
        EXPECT_EQ(ArrangeForSwitch(line.arrange), c.arrange) << c.text;
    }
    CCommandLine unknown;
    unknown.Parse("-ax");
    EXPECT_EQ(unknown.arrange, 0);
}

TEST(CommandLine, DirectoryAndIniWordFollowDirectlyOrAfterBlanks)
{
    CCommandLine line;
    line.Parse("-dc:\\proj   -i   c:\\cfg\\my.ini -s");
    EXPECT_EQ(line.directory, "c:\\proj");
    EXPECT_EQ(line.iniName, "c:\\cfg\\my.ini");
    EXPECT_EQ(line.safeMode, 1);
}

TEST(CommandLine, FileListTakesTheRestOfTheLine)
{
    CCommandLine line;
    line.Parse("-e a.c b.c -s");
    EXPECT_EQ(line.editOnly, 1);
    EXPECT_EQ(line.safeMode, 0) << "a switch behind a file name is a file name";
    EXPECT_EQ(Files(line), (std::vector<std::string>{"a.c", "b.c", "-s"}));
}

TEST(CommandLine, UnknownLettersAreIgnored)
{
    CCommandLine line;
    line.Parse("-z -q prog.c(12,5)");
    EXPECT_EQ(Files(line), (std::vector<std::string>{"prog.c(12,5)"}));
}

TEST(CommandLine, DanglingIntroducerEndsTheSwitches)
{
    CCommandLine line;
    line.Parse("-");
    EXPECT_EQ(line.files.m_count, 0u);
    CCommandLine empty;
    empty.Parse("");
    EXPECT_EQ(empty.files.m_count, 0u);
}

TEST(ProgramDir, LowerCasedAndCutBehindTheLastBackslash)
{
    EXPECT_EQ(ProgramDirFromModule("C:\\Tools\\KELMAR.EXE"), "c:\\tools\\");
}

TEST(ProgramDir, TrailingNtIsCutEvenWithoutABackslashBeforeIt)
{
    EXPECT_EQ(ProgramDirFromModule("c:\\foo\\nt\\kelmar.exe"), "c:\\foo\\");
    EXPECT_EQ(ProgramDirFromModule("c:\\client\\kelmar.exe"), "c:\\clie");
}
