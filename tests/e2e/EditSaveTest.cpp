// kelmar.exe itself, started on two files, typed into from outside through
// key messages, saved and closed; the files on disk tell the result.
#include "Program.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

using namespace kmtest;

namespace
{

// A key pressed and released, posted as the keyboard driver would; the
// program's own loop translates it into the character.
void PressKey(HWND target, UINT key)
{
    const LPARAM scan = static_cast<LPARAM>(::MapVirtualKeyA(key, 0)) << 16;
    ::PostMessageA(target, WM_KEYDOWN, key, 1 | scan);
    ::PostMessageA(target, WM_KEYUP, key, 1 | scan | 0xC0000000u);
}

std::string EditText(HWND edit)
{
    char text[4096] = "";
    DWORD_PTR result = 0;
    ::SendMessageTimeoutA(edit, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text),
                          SMTO_ABORTIFHUNG, 2000, &result);
    return text;
}

TEST(EditSaveTest, TypedTextIsSavedWithTheFilesOwnLineEnds)
{
    ASSERT_FALSE(g_program.empty()) << "usage: e2e_edit_save <kelmar.exe>";
    char temp[MAX_PATH];
    ::GetTempPathA(MAX_PATH, temp);
    const std::string dir = std::string(temp) + "kme2e" + std::to_string(::GetCurrentProcessId());
    const std::string unixPath = dir + "\\unix.c", dosPath = dir + "\\dos.c";
    const std::string unixText = "int main(void)\n{\n    return 0;\n}\n";
    const std::string dosText = "int f(void);\r\nint g(void);\r\n";
    ::CreateDirectoryA(dir.c_str(), nullptr);
    WriteFileBytes(unixPath, unixText);
    WriteFileBytes(dosPath, dosText);

    // -s: no session restored, nothing written at exit.
    Program program;
    ASSERT_TRUE(program.Start("-s unix.c dos.c", dir)) << "cannot start " << g_program;
    HWND client = program.client;
    // The editor window of a file is the child captioned with its path.
    HWND unixChild = nullptr;
    EXPECT_TRUE(WaitFor([&] {
        unixChild = ::FindWindowExA(client, nullptr, nullptr, Lower(unixPath).c_str());
        return unixChild && ::FindWindowExA(client, nullptr, nullptr, Lower(dosPath).c_str());
    })) << "the files' windows did not open";
    HWND edit = ::GetDlgItem(unixChild, IDC_EDIT);

    // The Unix file to the front, so that Save goes to it.
    ::PostMessageA(client, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(unixChild), 0);
    EXPECT_TRUE(WaitFor([&] {
        return reinterpret_cast<HWND>(::SendMessageA(client, WM_MDIGETACTIVE, 0, 0)) == unixChild;
    }));
    for (char c : std::string("km typed 42"))
        PressKey(edit, c == ' ' ? VK_SPACE : static_cast<UINT>(::toupper(c)));
    PressKey(edit, VK_RETURN);
    EXPECT_TRUE(WaitFor([&] { return EditText(edit).rfind("km typed 42\r\nint main", 0) == 0; }))
        << "the keys did not arrive; the control holds: " << EditText(edit);

    ::PostMessageA(program.frame, WM_COMMAND, ID_FILE_SAVE, 0);
    EXPECT_TRUE(program.Close()) << "the program did not end: a question left open?";
    EXPECT_EQ("km typed 42\n" + unixText, ReadFileBytes(unixPath)); // no CR crept in
    EXPECT_EQ(dosText, ReadFileBytes(dosPath));                     // untouched
    RemoveTree(dir);
}

} // namespace

std::string kmtest::g_program;

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (argc > 1) { // the build passes a path of the host: /x/y becomes Z:\x\y
        g_program = argv[1][0] == '/' ? std::string("Z:") + argv[1] : argv[1];
        for (char& c : g_program)
            c = c == '/' ? '\\' : c;
    }
    return RUN_ALL_TESTS();
}
