// The help keys in an editor and a text view: headers through the include
// list, and the word's source shown by the box of a help program that is
// not there.
#include "app/KmApp.h"
#include "edit/KmFileEdit.h"
#include "resources/KmIds.h"
#include "support/EditWindow.h"

namespace
{

using HelpKeys = kmtest::EditWindowTest;

TEST_F(HelpKeys, HeadersAndSources)
{
    for (const char* dir : {"inc1", "inc2"})
        ::CreateDirectoryA(Path(dir).c_str(), nullptr);
    Write("a.h", "#include <c.h>\r\n");
    Write("inc1\\b.h", "b");
    Write("inc2\\b.h", "b");
    Write("inc2\\c.h", "c");
    theApp.SetProjectSetting(IDS_ENV_INCLUDE, Path("inc1").c_str());
    ::SetEnvironmentVariableA("INCLUDE", (";" + Path("inc2") + "\\").c_str());
    theApp.SetEnvironmentSetting("HelpSDK", "sdkview -k %s");
    theApp.SetEnvironmentSetting("HelpEnv", "envview");
    const std::string sdk = "Cannot open\n'sdkview'", env = "Cannot open\n'envview'";
    const struct {
        const char* text;
        long caret;
        UINT command;
        std::string opened, box; // the header in front, the box's text
    } rows[] = {
        {"x\r\n #include \"a.h\" // CreateWindow", 20, ID_HELP_CONTEXT, "a.h", ""},
        {"#include <b.h>", 0, ID_HELP_CONTEXT, "inc1\\b.h", ""},
        {"#include \"b.h\"", 1, ID_HELP_CONTEXT, "inc1\\b.h", ""},
        {"!include\t<c.h>", 1, ID_HELP_CONTEXT, "inc2\\c.h", ""},
        {"#include <a.h>", 1, ID_HELP_CONTEXT, "",
         "Error accessing 'a.h'\nThe file could not be located"},
        {"#include <a.h", 1, ID_HELP_CONTEXT, "", ""},
        {"#include a.h", 1, ID_HELP_CONTEXT, "", ""},
        {"# include <b.h>", 3, ID_HELP_CONTEXT, "", sdk},
        {"#define X", 3, ID_HELP_CONTEXT, "", env},
        {"CreateWindow(", 3, ID_HELP_CONTEXT, "", sdk},
        {"CreateWindow(", 3, ID_HELP_ENVIRONMENT, "", env},
        {"while", 3, ID_HELP_SDK, "", sdk},
        {"_setargv", 3, ID_HELP_CONTEXT, "", sdk},
    };
    for (const auto& row : rows) {
        m_boxes.Clear();
        m_boxes.Queue({IDOK});
        SetText(row.text, row.caret);
        Command(row.command);
        const std::vector<HWND> children = Children();
        EXPECT_EQ(row.opened.empty() ? "" : FullLower(row.opened),
                  children.size() > 1 ? kmtest::WindowText(children[0]) : "")
            << row.text;
        EXPECT_EQ(row.box.empty() ? std::vector<std::string>() : std::vector<std::string>{row.box},
                  m_boxes.Texts())
            << row.text;
        for (HWND child : children)
            if (child != m_editor->m_hWnd)
                ::SendMessageA(child, WM_CLOSE, 0, 0);
        ::SendMessageA(MdiClient(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(m_editor->m_hWnd), 0);
    }
    // In the text view of a.h, F1 on its include line.
    SetText("#include \"a.h\"", 0);
    Command(ID_HELP_CONTEXT);
    Command(ID_HELP_CONTEXT);
    EXPECT_EQ(FullLower("inc2\\c.h"), kmtest::WindowText(Children().at(0)));
}

} // namespace
