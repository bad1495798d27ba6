// kelmar.ini and a project's file read at start and written at exit, with
// the session in them: real files in the test's directory.
#include "app/Settings.h"
#include "app/IniStore.h"
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

using namespace kmtest;

namespace
{

using SettingsTest = FrameTest;

std::string Key(const std::string& file, const char* section, const char* key)
{
    char value[1024];
    ::GetPrivateProfileStringA(section, key, "<none>", value, sizeof value, file.c_str());
    return value;
}

TEST_F(SettingsTest, LoadKeepsDefaultsWhereAValueIsUnusable)
{
    const std::string junk("\x01\xff[\0Settings]\0\x80=\x7f\n\r\xfe\0TabSize=\x01\x02", 31);
    const struct {
        std::string ini;
        unsigned long flags;
        int tab, shift, arrange, save;
    } rows[] = {
        {"", 0x408, 8, 4, 2, 1}, // first start
        {"[Settings]\nFlags=100000000000\nArrange=3\nSaveSettings=0\n", 0xC00, 8, 4, 3, 0},
        {"[Settings]\nTabSize=1\nShiftWidth=1\nArrange=7\n", 0x408, 8, 1, 2, 1},
        {"[Settings]\nTabSize=9\nShiftWidth=9\nSaveSettings=10\n", 0x408, 8, 4, 2, 0},
        {"[Settings]\nTabSize=3x\nShiftWidth=-2\nArrange=99999999999\n", 0x408, 3, 4, 2, 1},
        {"[Settings]\ntabsize=5\nFLAGS=0\n", 0x408, 8, 4, 2, 1}, // keys are case-sensitive
        {"[Settings]\nTabSize=4\n[Tools]\n[Settings]\nTabSize=6\nArrange=1\n", 0x408, 4, 4, 2, 1},
        {"[Settings]\nPageHeader=" + std::string(10000, 'x') + "\nTabSize=5\n", 0x408, 5, 4, 2, 1},
        {junk, 0x408, 8, 4, 2, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.ini.substr(0, 60));
        Write("kelmar.ini", row.ini);
        ASSERT_TRUE(Start(""));
        EXPECT_EQ(row.flags, theApp.flags);
        EXPECT_EQ(row.tab, theApp.tabSize);
        EXPECT_EQ(row.shift, theApp.shiftWidth);
        EXPECT_EQ(row.arrange, theApp.arrange);
        EXPECT_EQ(row.save, theApp.saveSettings);
        CString header;
        theApp.GetSetting(SECTION_SETTINGS, "PageHeader", header);
        EXPECT_LE(header.GetLength(), 259);
        EXPECT_TRUE(CloseFrame());
    }
}

std::string ToolList()
{
    std::string list;
    for (int i = 0; i < theApp.tools.GetCount(); ++i) {
        const CToolEntry& tool = theApp.tools.GetAt(i);
        list += (i ? "|" : "") + tool.m_strCommand.str() + ":" +
                std::to_string(tool.m_bPrompt * 10 + tool.m_bMinimized);
    }
    return list;
}

TEST_F(SettingsTest, ToolsReadWithTheirCountAndTheDefaults)
{
    std::string ten = "[Tools]\nToolCount=11\n";
    for (int i = 0; i < 10; ++i)
        ten += "ToolCommand" + std::to_string(i) + "=p" + std::to_string(i) + "\n";
    const struct {
        std::string ini, tools;
    } rows[] = {
        {"", "dlgedit.exe:0|imagedit.exe:0|calc.exe:0"},
        {"[Tools]\nToolCount=0\n", ""},
        {ten, "p0:0|p1:0|p2:0|p3:0|p4:0|p5:0|p6:0|p7:0|p8:0|p9:0"},
        {"[Tools]\nToolCount=5\nToolCommand0=x\nToolFlags0=11\nToolCommand1=y\nToolFlags1=10\n"
         "ToolCommand3=z\nToolFlags3=1\n",
         "x:11|y:10|calc.exe:0|z:1"},
        {"[Tools]\nToolCount=-1\n", "dlgedit.exe:0|imagedit.exe:0|calc.exe:0"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.ini);
        Write("kelmar.ini", row.ini);
        ASSERT_TRUE(Start("-s"));
        EXPECT_EQ(row.tools, ToolList());
        CloseFrame();
    }
    Write("kelmar.ini", "");
    ASSERT_TRUE(Start(""));
    EXPECT_TRUE(CloseFrame());
    const std::string ini = Path("kelmar.ini");
    EXPECT_EQ("3", Key(ini, "Tools", "ToolCount"));
    EXPECT_EQ("$ProjName.res", Key(ini, "Tools", "ToolArguments0"));
    EXPECT_EQ("&Calculator", Key(ini, "Tools", "ToolMenuText2"));
    EXPECT_EQ("", Key(ini, "Tools", "ToolInitDir2"));
    EXPECT_EQ("0", Key(ini, "Tools", "ToolFlags1"));
}

// Names of 22 characters take 23 bytes of the list: 11 fit in 256.
TEST_F(SettingsTest, KeysPastTheNameListAreNotSeenAndNotWrittenBack)
{
    std::string ini = "[Key Bindings]\n";
    for (int i = 10; i < 30; ++i)
        ini += "KeyName_____________" + std::to_string(i) + "=v" + std::to_string(i) + "\n";
    Write("kelmar.ini", ini);
    CIniStore store("Settings\0Tools\0Session\0Project\0Key Bindings\0");
    store.Load(Path("kelmar.ini").c_str());
    CString value;
    EXPECT_TRUE(store.GetString(SECTION_KEYBINDINGS, "KeyName_____________20", value));
    EXPECT_STREQ("v20", value);
    EXPECT_FALSE(store.GetString(SECTION_KEYBINDINGS, "KeyName_____________21", value));
    EXPECT_FALSE(store.GetString(SECTION_KEYBINDINGS, "keyname_____________20", value));
    store.Save(Path("kelmar.ini").c_str());
    EXPECT_EQ("v21", Key(Path("kelmar.ini"), "Key Bindings", "KeyName_____________21"));
    EXPECT_EQ("<none>", Key(Path("kelmar.ini"), "Key Bindings", "K")); // the name cut short
}

TEST_F(SettingsTest, WithoutSaveSettingsOnlyRecentFilesAndTheSessionAreWritten)
{
    Write("a.c", "a\r\n");
    Write("kelmar.ini", "[Settings]\nSaveSettings=0\nWindow=1,2,3,4,0\nFlags=0\n"
                        "[Project]\nProject=gone\\away\nProject1=c:\\old\n");
    ASSERT_TRUE(Start("a.c"));
    EXPECT_TRUE(theApp.m_strProjectDir.IsEmpty()); // the directory has vanished
    EXPECT_TRUE(CloseFrame());
    const std::string ini = Path("kelmar.ini");
    EXPECT_EQ("1,2,3,4,0", Key(ini, "Settings", "Window"));
    EXPECT_EQ("0", Key(ini, "Settings", "Flags"));
    EXPECT_EQ(FullLower("a.c"), Key(ini, "Session", "File1"));
    EXPECT_EQ(FullLower("a.c") + ",12", Key(ini, "Session", "Edit01"));
    EXPECT_EQ("<none>", Key(ini, "Project", "Project"));
    EXPECT_EQ("c:\\old", Key(ini, "Project", "Project1"));
}

TEST_F(SettingsTest, AProjectKeepsItsOwnSettingsAndTheGlobalFileOnlyTheProject)
{
    ::CreateDirectoryA(Path("proj").c_str(), nullptr);
    const std::string project = FullLower("proj"), projectIni = project + "\\kelmar.ini";
    Write("kelmar.ini", "[Settings]\nTabSize=5\n[Session]\nEditCount=1\nEdit01=x.c,0\n"
                        "[Project]\nProject=" +
                            project + "\n");
    Write("proj\\kelmar.ini", "[Settings]\nTabSize=3\n[Project]\nEnvironment=zortech c\n"
                              "DebugBuild=1\nTarget=x.exe\n[Zortech C]\nLinker=my.exe\n");
    ASSERT_TRUE(Start(""));
    EXPECT_STREQ(project.c_str(), theApp.m_strProjectDir);
    EXPECT_EQ(3, theApp.tabSize);
    EXPECT_EQ(SECTION_ENVIRONMENT + 2, theApp.m_nEnvironment);
    EXPECT_EQ(1, theApp.m_bDebugBuild);
    EXPECT_TRUE(Children().empty()); // the global file's session does not count
    CString value;
    const struct {
        unsigned id;
        const char* value;
    } settings[] = {{IDS_ENV_LINKER, "my.exe"},
                    {IDS_ENV_COMPILER, "ztc.com"},
                    {IDS_ENV_LINKLISTFILE, "NUL.MAP"},
                    {IDS_ENV_LINKRELEASE, ""},
                    {IDS_ENV_HELPENV, "upshot"}};
    for (const auto& setting : settings) {
        theApp.GetEnvironmentSetting(setting.id, value);
        EXPECT_STREQ(setting.value, value) << setting.id;
    }
    theApp.SetEnvironmentSetting("LinkRelease", " ");
    theApp.GetEnvironmentSetting(IDS_ENV_LINKRELEASE, value);
    EXPECT_STREQ(" ", value); // a stored blank stays
    theApp.m_nEnvironment = SECTION_OTHER;
    theApp.GetEnvironmentSetting(IDS_ENV_COMPILER, value);
    EXPECT_STREQ("", value);
    theApp.m_nEnvironment = SECTION_ENVIRONMENT + 1;
    theApp.GetEnvironmentSetting(IDS_ENV_LINKLIBSDEBUG, value);
    EXPECT_STREQ("nafxcwd.lib", value);
    theApp.m_bDebugBuild = 0;
    EXPECT_TRUE(CloseFrame());

    const std::string ini = Path("kelmar.ini");
    EXPECT_EQ(project, Key(ini, "Project", "Project"));
    EXPECT_EQ("5", Key(ini, "Settings", "TabSize")); // the global file's own, unchanged
    EXPECT_EQ("<none>", Key(projectIni, "Session", "EditCount"));
    EXPECT_EQ("3", Key(projectIni, "Settings", "TabSize"));
    EXPECT_EQ("Microsoft C++", Key(projectIni, "Project", "Environment"));
    EXPECT_EQ("0", Key(projectIni, "Project", "DebugBuild"));
    EXPECT_EQ("<none>", Key(projectIni, "Project", "Project"));
    EXPECT_EQ("x.exe", Key(projectIni, "Project", "Target"));
    EXPECT_EQ("3", Key(ini, "Tools", "ToolCount")); // the tools stay global
    EXPECT_EQ("<none>", Key(projectIni, "Tools", "ToolCount"));
}

TEST_F(SettingsTest, EnvironmentAndDebugBuildFallBack)
{
    for (const char* environment : {"Pascal", "Other", "Zortech C++"}) {
        SCOPED_TRACE(environment);
        Write("kelmar.ini",
              std::string("[Project]\nEnvironment=") + environment + "\nDebugBuild=yes\n");
        ASSERT_TRUE(Start("-s"));
        const int expected = environment[0] == 'P' ? 5 : environment[0] == 'O' ? 9 : 8;
        EXPECT_EQ(expected, theApp.m_nEnvironment);
        EXPECT_EQ(0, theApp.m_bDebugBuild);
        CloseFrame();
    }
}

TEST_F(SettingsTest, SessionNamesWithCommasAndBareCommas)
{
    Write("a,b.c", "ab\r\n");
    Write("c.c", "c\r\n");
    Write("kelmar.ini",
          "[Settings]\nArrange=1\n[Session]\nEditCount=3\nEdit01=" + FullLower("a,b.c") +
              ",60\nEdit02=" + FullLower("c.c") + ",\nEdit04=" + FullLower("a,b.c") + "\n");
    ASSERT_TRUE(Start(""));
    const std::vector<HWND> children = Children(); // the last opened on top
    ASSERT_EQ(2u, children.size());
    EXPECT_EQ(FullLower("c.c"), WindowText(children[0]));
    EXPECT_EQ(FullLower("a,b.c"), WindowText(children[1]));
    EXPECT_EQ(0u, KmChildOf(children[0])->m_flags & 63); // no scroll bars, no indent
    EXPECT_EQ(60u, KmChildOf(children[1])->m_flags & 63);
    EXPECT_FALSE(::IsZoomed(children[0])); // cascaded
    CString edit;
    EXPECT_FALSE(theApp.GetSetting(SECTION_SESSION, "EditCount", edit)); // used up
}

TEST_F(SettingsTest, AMaximisedFrameKeepsItsNormalRectangle)
{
    Write("kelmar.ini", "[Settings]\nWindow=-10,20,500,400,1\n");
    for (int run = 0; run < 2; ++run) {
        ASSERT_TRUE(Start(""));
        EXPECT_TRUE(::IsZoomed(m_frameWnd));
        EXPECT_TRUE(CloseFrame());
        EXPECT_EQ("0,20,500,400,1", Key(Path("kelmar.ini"), "Settings", "Window"));
    }
    ASSERT_TRUE(Start(""));
    ::ShowWindow(m_frameWnd, SW_RESTORE);
    ::MoveWindow(m_frameWnd, 30, 40, 300, 200, TRUE);
    EXPECT_TRUE(CloseFrame());
    EXPECT_EQ("30,40,330,240,0", Key(Path("kelmar.ini"), "Settings", "Window"));
}

TEST_F(SettingsTest, AnUnwritableOrVanishedFileAtExitIsTakenQuietly)
{
    for (bool readOnly : {true, false}) {
        SCOPED_TRACE(readOnly);
        Write("kelmar.ini", "[Settings]\nTabSize=6\n");
        ASSERT_TRUE(Start(""));
        if (readOnly)
            ::SetFileAttributesA(Path("kelmar.ini").c_str(), FILE_ATTRIBUTE_READONLY);
        else
            ::DeleteFileA(Path("kelmar.ini").c_str());
        EXPECT_TRUE(CloseFrame());
        ::SetFileAttributesA(Path("kelmar.ini").c_str(), FILE_ATTRIBUTE_NORMAL);
        EXPECT_EQ("6", Key(Path("kelmar.ini"), "Settings", "TabSize"));
    }
}

} // namespace
