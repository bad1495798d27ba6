// kelmar.ini and a project's file read at start and written at exit, with
// the session in them: real files in the test's directory.
#include "app/IniStore.h"
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

#include <cstring>

using namespace kmtest;

namespace
{

using SettingsTest = FrameTest;

// The values of "Section:Key" names in a file, joined by "|"; "-" for a
// key that is not there.
std::string Keys(const std::string& file, std::initializer_list<const char*> names)
{
    std::string values;
    for (const char* name : names) {
        char value[1024];
        const char* colon = strchr(name, ':');
        ::GetPrivateProfileStringA(std::string(name, colon).c_str(), colon + 1, "-", value,
                                   sizeof value, file.c_str());
        values += (name == *names.begin() ? "" : "|") + std::string(value);
    }
    return values;
}

// Flags, tab size, shift width, arrangement, SaveSettings, environment,
// debug build, a screen font other than the stock one; and the tools, with
// prompt and minimised.
std::string Loaded()
{
    char text[64];
    sprintf(text, "%lx %d %d %d %d e%d d%d", theApp.flags, theApp.tabSize, theApp.shiftWidth,
            theApp.arrange, theApp.saveSettings, theApp.m_nEnvironment, theApp.m_bDebugBuild);
    std::string loaded = text;
    LOGFONTA font, stock;
    ::GetObjectA(::GetStockObject(SYSTEM_FIXED_FONT), sizeof stock, &stock);
    if (theApp.screenFont.GetLogFont(&font) && strcmp(font.lfFaceName, stock.lfFaceName) != 0)
        loaded += " " + std::string(font.lfFaceName) + std::to_string(font.lfHeight) + "," +
                  std::to_string(font.lfWeight) + "," + std::to_string(font.lfItalic);
    for (int i = 0; i < theApp.tools.GetCount(); ++i) {
        const CToolEntry& tool = theApp.tools.GetAt(i);
        loaded +=
            " " + tool.m_strCommand.str() + std::to_string(tool.m_bPrompt * 10 + tool.m_bMinimized);
    }
    return loaded;
}

TEST_F(SettingsTest, LoadKeepsDefaultsWhereAValueIsUnusable)
{
    const std::string junk("\x01\xff[\0Settings]\0\x80=\x7f\n\r\xfe\0TabSize=\x01\x02", 31);
    const std::string none = "[Tools]\nToolCount=0\n";
    std::string ten = "[Tools]\nToolCount=11\n";
    for (int i = 0; i < 10; ++i)
        ten += "ToolCommand" + std::to_string(i) + "=p\n";
    const std::string tools = " dlgedit.exe0 imagedit.exe0 calc.exe0";
    const struct {
        std::string ini, loaded;
    } rows[] = {
        {"", "408 8 4 2 1 e5 d0" + tools}, // first start
        {none + "[Settings]\nFlags=100000000000\nArrange=3\nSaveSettings=0\n", "c00 8 4 3 0 e5 d0"},
        {none + "[Settings]\nTabSize=1\nShiftWidth=1\nArrange=7\n", "408 8 1 2 1 e5 d0"},
        {none + "[Settings]\nTabSize=9\nShiftWidth=9\nSaveSettings=10\n", "408 8 4 2 0 e5 d0"},
        {none + "[Settings]\nTabSize=3x\nShiftWidth=-2\nArrange=99999999999\n",
         "408 3 4 2 1 e5 d0"},
        {none + "[Settings]\ntabsize=5\nFLAGS=0\n", "408 8 4 2 1 e5 d0"}, // case tells keys apart
        {none + "[Settings]\nTabSize=4\n[Tools]\n[Settings]\nTabSize=6\nArrange=1\n",
         "408 4 4 2 1 e5 d0"}, // the first section of a name counts
        {none + "[Settings]\nPageHeader=" + std::string(10000, 'x') + "\nTabSize=5\n",
         "408 5 4 2 1 e5 d0"},
        {junk, "408 8 4 2 1 e5 d0" + tools},
        {none + "[Settings]\nScreenFont=Courier New,12,700,1\n",
         "408 8 4 2 1 e5 d0 Courier New-12,700,1"},
        {none + "[Settings]\nScreenFont=Courier New,-10\n", "408 8 4 2 1 e5 d0 Courier New10,0,0"},
        {none + "[Settings]\nScreenFont=" + std::string(32, 'F') + ",12\n", "408 8 4 2 1 e5 d0"},
        {none + "[Project]\nEnvironment=Pascal\nDebugBuild=yes\n", "408 8 4 2 1 e5 d0"},
        {none + "[Project]\nEnvironment=other\nDebugBuild=1\n", "408 8 4 2 1 e9 d1"},
        {ten, "408 8 4 2 1 e5 d0 p0 p0 p0 p0 p0 p0 p0 p0 p0 p0"},
        {"[Tools]\nToolCount=5\nToolCommand0=x\nToolFlags0=11\nToolCommand1=y\nToolFlags1=10\n"
         "ToolCommand3=z\nToolFlags3=1\n",
         "408 8 4 2 1 e5 d0 x11 y10 calc.exe0 z1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.ini.substr(0, 60));
        Write("kelmar.ini", row.ini);
        ASSERT_TRUE(Start("-s"));
        EXPECT_EQ(row.loaded, Loaded());
        CString header;
        theApp.GetSetting(SECTION_SETTINGS, "PageHeader", header);
        EXPECT_LE(header.GetLength(), 259);
        EXPECT_TRUE(CloseFrame());
        EXPECT_EQ(row.ini, Read("kelmar.ini")); // -s writes nothing
    }
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
    EXPECT_EQ("v21|-",
              Keys(Path("kelmar.ini"), {"Key Bindings:KeyName_____________21", "Key Bindings:K"}));
}

// A section is told by the leading characters of the entries; the walk
// goes on past entries removed while it runs, and begins anew.
TEST_F(SettingsTest, TheWalkOfASectionTakesEntriesThatBeginWithItsName)
{
    Write("kelmar.ini", "[Microsoft C]\nb=2\na=1\n[Microsoft C++]\nc=3\n[Other]\nd=4\n");
    CIniStore store("Microsoft C\0Microsoft C++\0Other\0");
    store.Load(Path("kelmar.ini").c_str());
    std::string walked;
    CString key, value;
    for (int section : {0, 0, 2}) {
        store.BeginEnum(section);
        while (store.NextInSection(key, value)) {
            walked += key.str() + "=" + value.str() + " ";
            store.Remove(section, key);
        }
        walked += "| ";
    }
    EXPECT_EQ("c=3 a=1 b=2 | c=3 | d=4 | ", walked); // the map's order
}

TEST_F(SettingsTest, WithoutSaveSettingsOnlyRecentFilesToolsAndTheSessionAreWritten)
{
    Write("a.c", "a\r\n");
    Write("kelmar.ini", "[Settings]\nSaveSettings=0\nWindow=1,2,3,4,0\nFlags=0\n"
                        "[Project]\nProject=gone\\away\nProject1=c:\\old\n");
    ASSERT_TRUE(Start("a.c"));
    EXPECT_TRUE(theApp.m_strProjectDir.IsEmpty()); // the directory has vanished
    theApp.AddRecentProject("c:\\new");
    theApp.AddRecentProject("c:\\old");        // changes places with the first
    ::DeleteFileA(Path("kelmar.ini").c_str()); // the file has vanished too: written anew
    EXPECT_TRUE(CloseFrame());
    EXPECT_EQ("1,2,3,4,0|0|" + FullLower("a.c") + "|" + FullLower("a.c") +
                  ",12|-|c:\\old|c:\\new|3|" + "$ProjName.res|&Calculator||0",
              Keys(Path("kelmar.ini"),
                   {"Settings:Window", "Settings:Flags", "Session:File1", "Session:Edit01",
                    "Project:Project", "Project:Project1", "Project:Project2", "Tools:ToolCount",
                    "Tools:ToolArguments0", "Tools:ToolMenuText2", "Tools:ToolInitDir2",
                    "Tools:ToolFlags1"}));
}

TEST_F(SettingsTest, AProjectKeepsItsOwnSettingsAndTheGlobalFileOnlyTheProject)
{
    ::CreateDirectoryA(Path("proj").c_str(), nullptr);
    const std::string project = FullLower("proj");
    Write("kelmar.ini", "[Settings]\nTabSize=5\n[Session]\nEditCount=1\nEdit01=x.c,0\n"
                        "[Project]\nProject=" +
                            project + "\n");
    Write("proj\\kelmar.ini", "[Settings]\nTabSize=3\n[Project]\nEnvironment=zortech c\n"
                              "DebugBuild=1\nTarget=x.exe\n[Zortech C]\nLinker=my.exe\n");
    ASSERT_TRUE(Start(""));
    EXPECT_STREQ(project.c_str(), theApp.m_strProjectDir);
    EXPECT_EQ("408 3 4 2 1 e7 d1", Loaded().substr(0, 17));
    EXPECT_TRUE(Children().empty()); // the global file's session does not count
    std::string values;
    CString value;
    theApp.SetEnvironmentSetting("LinkRelease", " ");
    for (int environment : {7, 6, 9}) {
        theApp.m_nEnvironment = environment;
        for (unsigned id : {IDS_ENV_LINKER, IDS_ENV_COMPILER, IDS_ENV_LINKLIBSDEBUG,
                            IDS_ENV_LINKRELEASE, IDS_ENV_HELPENV}) {
            theApp.GetEnvironmentSetting(id, value);
            values += value.str() + "|";
        }
    }
    EXPECT_EQ("my.exe|ztc.com|| |upshot|"                                     // Zortech C
              "link32.exe|cl386.exe /nologo /D_X86_=1|nafxcwd.lib||$msc.hlp|" // Microsoft C++
              "|||||",                                                        // Other
              values);
    theApp.m_nEnvironment = 6;
    theApp.m_bDebugBuild = 0;
    ::SetFileAttributesA(Path("kelmar.ini").c_str(), FILE_ATTRIBUTE_READONLY); // taken quietly
    EXPECT_TRUE(CloseFrame());
    ::SetFileAttributesA(Path("kelmar.ini").c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(project + "|5|1|3|-",
              Keys(Path("kelmar.ini"), {"Project:Project", "Settings:TabSize", "Session:EditCount",
                                        "Tools:ToolCount", "Project:Target"}));
    EXPECT_EQ("3|-|Microsoft C++|0|-|x.exe|-",
              Keys(project + "\\kelmar.ini",
                   {"Settings:TabSize", "Session:EditCount", "Project:Environment",
                    "Project:DebugBuild", "Project:Project", "Project:Target", "Tools:ToolCount"}));
}

TEST_F(SettingsTest, SessionNamesWithCommasAndBareCommas)
{
    Write("a,b.c", "ab\r\n");
    Write("c.c", "c\r\n");
    Write("kelmar.ini",
          "[Settings]\nArrange=1\n[Session]\nEditCount=3\nEdit01=" + FullLower("a,b.c") +
              ",60\nEdit02=" + FullLower("c.c") + ",\nEdit04=" + FullLower("a,b.c") + "\n");
    ASSERT_TRUE(Start(""));
    std::string windows; // the last opened on top, each with its own flags
    for (HWND child : Children())
        windows += WindowText(child) + "," + std::to_string(KmChildOf(child)->m_flags & 63) +
                   (::IsZoomed(child) ? " zoomed " : " ");
    EXPECT_EQ(FullLower("c.c") + ",0 " + FullLower("a,b.c") + ",60 ", windows); // cascaded
    CString edit;
    EXPECT_FALSE(theApp.GetSetting(SECTION_SESSION, "EditCount", edit)); // used up
}

TEST_F(SettingsTest, AMaximisedFrameKeepsItsNormalRectangle)
{
    Write("kelmar.ini", "[Settings]\nWindow=-10,20,500,400,1\n");
    for (int run = 0; run < 3; ++run) {
        ASSERT_TRUE(Start(""));
        EXPECT_TRUE(::IsZoomed(m_frameWnd));
        if (run == 2) {
            ::ShowWindow(m_frameWnd, SW_RESTORE);
            ::MoveWindow(m_frameWnd, 30, 40, 300, 200, TRUE);
        }
        EXPECT_TRUE(CloseFrame());
        EXPECT_EQ(run < 2 ? "0,20,500,400,1" : "30,40,330,240,0",
                  Keys(Path("kelmar.ini"), {"Settings:Window"}));
    }
}

} // namespace
