// The macros over a real frame, its active window and the project, and
// programs started through the shell.
#include "tools/RunCommand.h"
#include "app/KmApp.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

using namespace kmtest;

namespace
{

using RunCommandTest = FrameTest;

std::string Expanded(CKmFrame* frame, const char* text)
{
    CString result;
    ExpandMacros(frame, text, result);
    return result.str();
}

TEST_F(RunCommandTest, MacrosTellTheActiveFileAndTheProjectAndProgramsStartWithThem)
{
    Write("a.c", "one\r\ntwo\r\n");
    ASSERT_TRUE(Start("-s"));
    EXPECT_EQ(" ", Expanded(m_frame, " $File"));
    CloseFrame();
    ASSERT_TRUE(Start("-s a.c(2,3)"));
    EXPECT_EQ("a.c 2:3 " + FullLower("a.c"), Expanded(m_frame, "$FILENAME $Line:$col $file"));
    EXPECT_EQ(Lower(m_dir) + "|" + Lower(m_dir), Expanded(m_frame, "$FileDir|$Dir"));
    theApp.m_strProjectDir = "d";
    theApp.SetProjectSetting(IDS_KEY_TARGET, "x.exe");
    EXPECT_EQ("d\\x.exe x.res", Expanded(m_frame, "$Target $ProjName.res"));
    CString value = "old";
    EXPECT_EQ(0, LookupMacro(m_frame, "$Targets", value));
    EXPECT_EQ(1, LookupMacro(m_frame, "$ProjDir", value));
    EXPECT_STREQ("d", value);

    ::CreateDirectoryA(Path("out").c_str(), nullptr);
    EXPECT_NE(0, RunCommand(m_frame, "cmd.exe", "/c echo $FileName> $FileName.txt", "$FileDir\\out",
                            true));
    EXPECT_TRUE(PumpUntil([&] { return Read("out\\a.c.txt") != "<missing>"; }, 10000));
    Write("junk.exe", "not a program");
    const std::string junk = Path("junk.exe");
    m_boxes.Queue({IDOK, IDOK});
    EXPECT_EQ(0, RunCommand(m_frame, "nosuch.exe", "", "", false));
    EXPECT_EQ(0, RunCommand(m_frame, junk.c_str(), "", "", false));
    EXPECT_EQ(m_boxes.Texts(),
              (std::vector<std::string>{"Cannot open\n'nosuch.exe'",
                                        "Invalid executable image in file '" + junk + "'"}));
}

} // namespace
