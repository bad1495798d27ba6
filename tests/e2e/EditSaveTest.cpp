// kelmar.exe itself, started on two files, typed into from outside through
// key messages, saved and closed; the files on disk tell the result.
#include "resources/KmIds.h"

#include <gtest/gtest.h>

#include <string>
#include <windows.h>

namespace
{

std::string g_program; // kelmar.exe, as a Windows path

// The build passes a path of the host: /x/y becomes Z:\x\y.
std::string WindowsPath(std::string path)
{
    if (!path.empty() && path[0] == '/')
        path = "Z:" + path;
    for (char& c : path)
        if (c == '/')
            c = '\\';
    return path;
}

std::string ReadAll(const std::string& path)
{
    std::string text;
    HANDLE file = ::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return text;
    char buffer[4096];
    DWORD got = 0;
    while (::ReadFile(file, buffer, sizeof buffer, &got, nullptr) && got > 0)
        text.append(buffer, got);
    ::CloseHandle(file);
    return text;
}

void WriteAll(const std::string& path, const std::string& text)
{
    HANDLE file = ::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    ::WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    ::CloseHandle(file);
}

std::string LowerFull(const std::string& path)
{
    char full[MAX_PATH];
    ::GetFullPathNameA(path.c_str(), MAX_PATH, full, nullptr);
    ::CharLowerA(full);
    return full;
}

// Polls until found() is true or the time is up.
template <typename Found> bool WaitFor(Found found, DWORD milliseconds)
{
    const DWORD start = ::GetTickCount();
    while (!found()) {
        if (::GetTickCount() - start > milliseconds)
            return false;
        ::Sleep(50);
    }
    return true;
}

struct FrameSearch {
    DWORD process;
    HWND frame;
};

// The process's top-level window that holds an MDI client.
BOOL CALLBACK FindFrame(HWND hwnd, LPARAM lParam)
{
    FrameSearch* search = reinterpret_cast<FrameSearch*>(lParam);
    DWORD owner = 0;
    ::GetWindowThreadProcessId(hwnd, &owner);
    if (owner == search->process && ::FindWindowExA(hwnd, nullptr, "MDICLIENT", nullptr)) {
        search->frame = hwnd;
        return FALSE;
    }
    return TRUE;
}

// A key pressed and released, posted as the keyboard driver would; the
// program's own loop translates it into the character.
void PressKey(HWND target, UINT key)
{
    const UINT scan = ::MapVirtualKeyA(key, 0);
    ::PostMessageA(target, WM_KEYDOWN, key, static_cast<LPARAM>(1 | (scan << 16)));
    ::PostMessageA(target, WM_KEYUP, key, static_cast<LPARAM>(1 | (scan << 16) | 0xC0000000u));
}

std::string EditText(HWND edit)
{
    char text[4096] = "";
    DWORD_PTR result = 0;
    ::SendMessageTimeoutA(edit, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text),
                          SMTO_ABORTIFHUNG, 2000, &result);
    return text;
}

class EditSaveTest : public ::testing::Test
{
  protected:
    void SetUp() override
    {
        char temp[MAX_PATH];
        ::GetTempPathA(MAX_PATH, temp);
        m_dir = std::string(temp) + "kme2e" + std::to_string(::GetCurrentProcessId());
        ::CreateDirectoryA(m_dir.c_str(), nullptr);
        m_unix = m_dir + "\\unix.c";
        m_dos = m_dir + "\\dos.c";
        WriteAll(m_unix, kUnixText);
        WriteAll(m_dos, kDosText);
    }

    void TearDown() override
    {
        if (m_process.hProcess) {
            if (::WaitForSingleObject(m_process.hProcess, 0) == WAIT_TIMEOUT)
                ::TerminateProcess(m_process.hProcess, 1);
            ::CloseHandle(m_process.hProcess);
            ::CloseHandle(m_process.hThread);
        }
        ::DeleteFileA(m_unix.c_str());
        ::DeleteFileA(m_dos.c_str());
        ::RemoveDirectoryA(m_dir.c_str());
    }

    bool Launch()
    {
        // -s: no session restored, nothing written at exit.
        std::string line = "\"" + g_program + "\" -s " + m_unix + " " + m_dos;
        STARTUPINFOA startup = {};
        startup.cb = sizeof startup;
        return ::CreateProcessA(g_program.c_str(), &line[0], nullptr, nullptr, FALSE, 0, nullptr,
                                m_dir.c_str(), &startup, &m_process) != FALSE;
    }

    static constexpr const char* kUnixText = "int main(void)\n{\n    return 0;\n}\n";
    static constexpr const char* kDosText = "int f(void);\r\nint g(void);\r\n";

    std::string m_dir, m_unix, m_dos;
    PROCESS_INFORMATION m_process = {};
};

TEST_F(EditSaveTest, TypedTextIsSavedWithTheFilesOwnLineEnds)
{
    ASSERT_FALSE(g_program.empty()) << "usage: e2e_edit_save <kelmar.exe>";
    ASSERT_TRUE(Launch()) << "cannot start " << g_program;

    FrameSearch search = {m_process.dwProcessId, nullptr};
    ASSERT_TRUE(WaitFor(
        [&] {
            ::EnumWindows(FindFrame, reinterpret_cast<LPARAM>(&search));
            return search.frame != nullptr;
        },
        20000))
        << "no frame window";
    HWND client = ::FindWindowExA(search.frame, nullptr, "MDICLIENT", nullptr);

    // The editor window of a file is the child captioned with its path.
    HWND unixChild = nullptr, dosChild = nullptr;
    ASSERT_TRUE(WaitFor(
        [&] {
            unixChild = ::FindWindowExA(client, nullptr, nullptr, LowerFull(m_unix).c_str());
            dosChild = ::FindWindowExA(client, nullptr, nullptr, LowerFull(m_dos).c_str());
            return unixChild && dosChild;
        },
        20000))
        << "the files' windows did not open";
    HWND edit = ::GetDlgItem(unixChild, IDC_EDIT);
    ASSERT_NE(edit, nullptr);

    // Bring the Unix file to the front so that Save goes to it.
    ::PostMessageA(client, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(unixChild), 0);
    ASSERT_TRUE(WaitFor(
        [&] {
            return reinterpret_cast<HWND>(::SendMessageA(client, WM_MDIGETACTIVE, 0, 0)) ==
                   unixChild;
        },
        10000));

    for (char c : std::string("km typed 42"))
        PressKey(edit, c == ' ' ? VK_SPACE : static_cast<UINT>(::toupper(c)));
    PressKey(edit, VK_RETURN);
    ASSERT_TRUE(
        WaitFor([&] { return EditText(edit).rfind("km typed 42\r\nint main", 0) == 0; }, 10000))
        << "the keys did not arrive; the control holds: " << EditText(edit);

    ::PostMessageA(search.frame, WM_COMMAND, ID_FILE_SAVE, 0);
    ::PostMessageA(search.frame, WM_CLOSE, 0, 0);
    ASSERT_EQ(::WaitForSingleObject(m_process.hProcess, 20000), WAIT_OBJECT_0)
        << "the program did not end: a question left open?";

    const std::string saved = ReadAll(m_unix);
    EXPECT_EQ(saved, std::string("km typed 42\n") + kUnixText);
    EXPECT_EQ(saved.find('\r'), std::string::npos);
    EXPECT_EQ(ReadAll(m_dos), kDosText); // untouched, still CR LF
}

} // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (argc > 1)
        g_program = WindowsPath(argv[1]);
    return RUN_ALL_TESTS();
}
