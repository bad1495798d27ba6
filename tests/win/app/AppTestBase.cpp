#include "AppTestBase.h"

#include "app/KmApp.h"
#include "framework/Wnd.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

using kmtest::RemoveTree;

namespace
{


void ResetApp()
{
    theApp.m_pMainWnd = nullptr;
    theApp.SetInitialValues();
    theApp.safeMode = 0;
    theApp.m_strProjectDir.Empty();
}

} // namespace

void AppTestBase::SetUp()
{
    static int serial = 0;
    char temp[MAX_PATH];
    ::GetTempPathA(MAX_PATH, temp);
    m_dir = std::string(temp) + "kmapp" + std::to_string(::GetCurrentProcessId()) + "-" +
            std::to_string(++serial);
    ASSERT_TRUE(::CreateDirectoryA(m_dir.c_str(), nullptr));
    ::GetCurrentDirectoryA(MAX_PATH, m_oldDir);
    ASSERT_TRUE(::SetCurrentDirectoryA(m_dir.c_str()));
    ResetApp();
}

void AppTestBase::TearDown()
{
    CloseFrame();
    ::SetCurrentDirectoryA(m_oldDir);
    RemoveTree(m_dir);
}

bool AppTestBase::Start(const std::string& commandLine)
{
    m_commandLine = commandLine;
    theApp.SetInstance(::GetModuleHandleA(nullptr), nullptr, m_commandLine.c_str(), SW_SHOWNORMAL);
    bool result = theApp.InitInstance();
    m_frame = theApp.m_pMainWnd ? theApp.m_pMainWnd->m_hWnd : nullptr;
    PumpUntilIdle();
    return result;
}

void AppTestBase::CloseFrame()
{
    if (m_frame && ::IsWindow(m_frame)) {
        ::SendMessageA(m_frame, WM_CLOSE, 0, 0);
        if (::IsWindow(m_frame))
            ::DestroyWindow(m_frame);
    }
    PumpUntilIdle();
    m_frame = nullptr;
    ResetApp();
}

std::string AppTestBase::FullLower(const std::string& name) const
{
    char full[MAX_PATH];
    ::GetFullPathNameA((m_dir + "\\" + name).c_str(), MAX_PATH, full, nullptr);
    ::CharLowerA(full);
    return full;
}

void AppTestBase::WriteFile(const std::string& name, const std::string& bytes) const
{
    HANDLE file = ::CreateFileA((m_dir + "\\" + name).c_str(), GENERIC_WRITE, 0, nullptr,
                                CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    ::CloseHandle(file);
    ASSERT_EQ(written, bytes.size());
}

bool AppTestBase::Exists(const std::string& name) const
{
    return ::GetFileAttributesA((m_dir + "\\" + name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

HWND AppTestBase::MdiClient() const
{
    return m_frame ? ::FindWindowExA(m_frame, nullptr, "MDICLIENT", nullptr) : nullptr;
}

// The multiple-document children, without the owned icon titles.
std::set<std::string> AppTestBase::ChildCaptions() const
{
    std::set<std::string> captions;
    HWND client = MdiClient();
    for (HWND child = client ? ::GetWindow(client, GW_CHILD) : nullptr; child;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (::GetWindow(child, GW_OWNER))
            continue;
        char text[MAX_PATH + 1] = "";
        ::GetWindowTextA(child, text, sizeof text);
        captions.insert(text);
    }
    return captions;
}

HWND AppTestBase::ChildByCaption(const std::string& caption) const
{
    HWND client = MdiClient();
    return client ? ::FindWindowExA(client, nullptr, nullptr, caption.c_str()) : nullptr;
}

CaretPlace CaretOf(HWND child)
{
    HWND edit = ::GetDlgItem(child, IDC_EDIT);
    DWORD start = 0, end = 0;
    ::SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                   reinterpret_cast<LPARAM>(&end));
    long line = static_cast<long>(::SendMessageA(edit, EM_LINEFROMCHAR, start, 0));
    long first = static_cast<long>(::SendMessageA(edit, EM_LINEINDEX, line, 0));
    return {line, static_cast<long>(start) - first};
}
