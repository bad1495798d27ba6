// The Project menu's commands over a real frame, with real child processes:
// the console helper, and a stand-in tool whose first argument says how it
// ends.
#include "app/IniStore.h"
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "project/ProjectLines.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

using namespace kmtest;

namespace
{

const char kLogTitle[] = "Project Command Error Log";

class ProjectTest : public FrameTest
{
  protected:
    // Starts in a project whose environment has no template, with the
    // stand-in as its make.
    void StartProject()
    {
        ASSERT_TRUE(Start("-s"));
        theApp.m_strProjectDir = m_dir.c_str();
        theApp.m_nEnvironment = SECTION_OTHER;
        const CString tool = theApp.programDir + "faketool.exe";
        theApp.SetEnvironmentSetting("Builder", tool);
    }
    // Build with the stand-in acting as mode says, until it has ended.
    void Build(const char* mode)
    {
        theApp.SetEnvironmentSetting("BuildArgs", mode);
        Command(ID_PROJECT_BUILD);
        ASSERT_TRUE(PumpUntil([&] { return !ProjectGrayed(ID_PROJECT_BUILD); }, 10000));
        PumpUntilIdle();
    }
    // The item's state in the Project popup, wherever the menu on show has it.
    bool ProjectGrayed(UINT id)
    {
        HMENU bar = ::GetMenu(m_frameWnd);
        for (int i = 0; i < ::GetMenuItemCount(bar); ++i)
            if (::GetMenuState(::GetSubMenu(bar, i), ID_PROJECT_BUILD, MF_BYCOMMAND) != UINT(-1))
                return Grayed(OpenPopupAt(i), id);
        ADD_FAILURE() << "no Project popup";
        return false;
    }
    // The program's temporary files.
    static int TempFiles()
    {
        char dir[MAX_PATH];
        ::GetTempPathA(MAX_PATH, dir);
        WIN32_FIND_DATAA found;
        HANDLE find = ::FindFirstFileA((std::string(dir) + "KMT*").c_str(), &found);
        int count = find != INVALID_HANDLE_VALUE;
        while (count && ::FindNextFileA(find, &found))
            ++count;
        if (count)
            ::FindClose(find);
        return count;
    }
};

// The templates' values as the frame reads them.
TEST_F(ProjectTest, TemplatesGiveTheirLines)
{
    ASSERT_TRUE(Start("-s"));
    const EnvLookup env = [](unsigned id) {
        CString value;
        theApp.GetEnvironmentSetting(id, value);
        return value.str();
    };
    theApp.m_nEnvironment = SECTION_ENVIRONMENT; // Microsoft C
    CompileParts parts;
    EXPECT_TRUE(ComposeCompile("a.rc", false, env, parts));
    EXPECT_EQ("rc.exe   a.rc", CompileLine(parts, "a.rc", ""));
    theApp.m_nEnvironment = SECTION_ENVIRONMENT + 2; // Zortech C
    EXPECT_EQ("make.exe  DEBUG=1", BuildLine(true, env));
}

TEST_F(ProjectTest, OutputIsKeptShownOrDroppedByHowTheCommandEnds)
{
    Write("src.c", "one\r\ntwo\r\nthree\r\n");
    StartProject();
    const int before = TempFiles();
    Build("quiet");
    EXPECT_TRUE(ProjectGrayed(ID_PROJECT_VIEWLOG));
    EXPECT_EQ(before, TempFiles());
    Build("lots");
    EXPECT_FALSE(ProjectGrayed(ID_PROJECT_VIEWLOG));
    EXPECT_EQ(before + 1, TempFiles());
    EXPECT_TRUE(ChildCaptions().empty());

    // The second Build while the first runs is refused.
    theApp.SetEnvironmentSetting("BuildArgs", "fail");
    ::PostMessageA(m_frameWnd, WM_COMMAND, ID_PROJECT_BUILD, 0);
    ::PostMessageA(m_frameWnd, WM_COMMAND, ID_PROJECT_BUILD, 0);
    ASSERT_TRUE(PumpUntil([&] { return ChildByCaption(kLogTitle) != nullptr; }, 10000));
    PumpUntilIdle(200);
    EXPECT_EQ(1u, Children().size());
    EXPECT_TRUE(ProjectGrayed(ID_PROJECT_VIEWLOG));
    EXPECT_EQ(before + 1, TempFiles()); // the unviewed output is gone, the view's is there

    // The error output's line, behind the command line and the first
    // error, leads to its line and column.
    HWND log = ChildByCaption(kLogTitle);
    ::SendMessageA(log, WM_KEYDOWN, VK_DOWN, 0);
    ::SendMessageA(log, WM_KEYDOWN, VK_DOWN, 0);
    Command(ID_SEARCH_GOTOLINE);
    HWND source = ChildByCaption(FullLower("src.c"));
    ASSERT_NE(nullptr, source) << ::testing::PrintToString(m_boxes.Texts());
    EXPECT_EQ((CaretPlace{2, 4}), CaretOf(source));
    // Active again, the view's names still lead to the command's directory.
    const size_t boxes = m_boxes.Texts().size(), children = Children().size();
    ::SendMessageA(MdiClient(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(log), 0);
    Command(ID_SEARCH_GOTOLINE);
    EXPECT_EQ(source, m_frame->m_pActiveChild->m_hWnd);
    EXPECT_EQ(children, Children().size());
    EXPECT_EQ(boxes, m_boxes.Texts().size());
    ::SendMessageA(MdiClient(), WM_MDIDESTROY, reinterpret_cast<WPARAM>(log), 0);
    EXPECT_EQ(before, TempFiles());

    // A failure without output: the empty file is reported, and kept.
    m_boxes.Queue({IDOK});
    Build("none");
    ASSERT_EQ(1u, m_boxes.Texts().size());
    EXPECT_NE(std::string::npos, m_boxes.Texts()[0].find("\nis an empty file"));
    EXPECT_FALSE(ProjectGrayed(ID_PROJECT_VIEWLOG));
    EXPECT_EQ(before + 1, TempFiles());
}

// The target given is offered again, in the dialog that shows where the
// build runs.
TEST_F(ProjectTest, BuildTargetRemembersTheTarget)
{
    StartProject();
    theApp.SetEnvironmentSetting("BuildArgs", "quiet");
    m_boxes.Queue(IDOK, [](HWND dialog) { ::SetDlgItemTextA(dialog, IDC_BUILD_TARGET, "tgt"); });
    Command(ID_PROJECT_BUILDTARGET);
    ASSERT_TRUE(PumpUntil([&] { return !ProjectGrayed(ID_PROJECT_BUILD); }, 10000));
    m_boxes.Queue({IDCANCEL});
    Command(ID_PROJECT_BUILDTARGET);
    ASSERT_EQ(2u, m_boxes.Boxes().size());
    EXPECT_EQ("", m_boxes.Boxes()[0].field);
    EXPECT_EQ("tgt", m_boxes.Boxes()[1].field);
}

// The worker's own box comes from its thread, out of the answerer's reach:
// its text is taken and OK pressed here.
TEST_F(ProjectTest, MissingHelperIsReportedAndEndsWithErrors)
{
    StartProject();
    theApp.programDir = (m_dir + "\\").c_str(); // no nt\ here
    m_boxes.Queue({IDOK});
    theApp.SetEnvironmentSetting("BuildArgs", "quiet");
    ::PostMessageA(m_frameWnd, WM_COMMAND, ID_PROJECT_BUILD, 0);
    std::string workerBox;
    ASSERT_TRUE(PumpUntil(
        [&] {
            HWND box = ::FindWindowA("#32770", nullptr);
            // The box is answered once its text is there.
            if (box && ::GetWindowThreadProcessId(box, nullptr) != ::GetCurrentThreadId()) {
                const std::string text = WindowText(::GetDlgItem(box, 0xFFFF));
                if (!text.empty()) {
                    workerBox = text;
                    ::PostMessageA(box, WM_COMMAND, IDOK, 0);
                }
            }
            return !m_boxes.Boxes().empty();
        },
        10000));
    EXPECT_EQ(0u,
              workerBox.find("CreateProcess error 2 on command:\n" + m_dir + "\\nt\\projexec.exe "))
        << workerBox;
    ASSERT_EQ(1u, m_boxes.Texts().size());
    EXPECT_NE(std::string::npos, m_boxes.Texts()[0].find("\nis an empty file"));
}

} // namespace
