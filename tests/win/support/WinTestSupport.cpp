#include "support/WinTestSupport.h"

#include "app/IniStore.h"
#include "app/KmApp.h"
#include "app/KmFrame.h"
#include "framework/Wnd.h"
#include "resources/KmIds.h"
#include "search/SearchRequest.h"

#include <cstring>
#include <fstream>
#include <iterator>

namespace kmtest
{

namespace
{

BoxAnswerer* g_answerer = nullptr;
const char kAnsweredProp[] = "KmTestAnswered";

bool Pump(const std::function<bool()>& done, DWORD settleMs, DWORD limitMs)
{
    const DWORD start = ::GetTickCount();
    bool quit = false;
    for (;;) {
        MSG msg;
        while (::PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE)) {
            if (msg.message == WM_QUIT)
                quit = ::PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
            else if (!theApp.PumpMessage())
                quit = true;
        }
        if (done && done())
            return true;
        const DWORD spent = ::GetTickCount() - start;
        if (spent >= limitMs)
            return done ? false : quit;
        // A condition may turn true without a message to this thread (a box
        // of another thread, a file written by a child): it is asked again
        // every few milliseconds.
        const DWORD wait = done ? std::min<DWORD>(limitMs - spent, 20) : settleMs;
        if (::MsgWaitForMultipleObjects(0, nullptr, FALSE, wait, QS_ALLINPUT) == WAIT_TIMEOUT &&
            !done)
            return quit;
    }
}

} // namespace

bool PumpUntilIdle(DWORD settleMs, DWORD limitMs)
{
    return Pump(nullptr, settleMs, limitMs);
}

bool PumpUntil(const std::function<bool()>& done, DWORD limitMs)
{
    return Pump(done, 0, limitMs);
}

BoxAnswerer::BoxAnswerer()
    : m_hook(::SetWindowsHookExA(WH_CBT, Hook, nullptr, ::GetCurrentThreadId()))
{
    g_answerer = this;
}

BoxAnswerer::~BoxAnswerer()
{
    ::UnhookWindowsHookEx(m_hook);
    if (g_answerer == this)
        g_answerer = nullptr;
}

std::vector<std::string> BoxAnswerer::Texts() const
{
    std::vector<std::string> texts;
    for (const Box& box : m_boxes)
        texts.push_back(box.text);
    return texts;
}

LRESULT CALLBACK BoxAnswerer::Hook(int code, WPARAM wParam, LPARAM lParam)
{
    HWND wnd = reinterpret_cast<HWND>(wParam);
    char name[16] = "";
    if (code == HCBT_ACTIVATE && g_answerer && ::GetClassNameA(wnd, name, sizeof name) &&
        lstrcmpA(name, "#32770") == 0)
        g_answerer->Answer(wnd);
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

// The answer is posted: the box is still being set up when it first becomes
// active, and its own loop takes the command once it runs. A box activated
// again before then keeps the answer it has.
void BoxAnswerer::Answer(HWND box)
{
    HWND owner = ::GetWindow(box, GW_OWNER);
    if (::GetPropA(box, kAnsweredProp) ||
        (owner ? ::IsWindowEnabled(owner) != FALSE : CWnd::FromHandle(box) != nullptr))
        return;
    ::SetPropA(box, kAnsweredProp, reinterpret_cast<HANDLE>(1));
    Box seen = {WindowText(box),
                WindowText(::GetDlgItem(box, 0xFFFF)),
                WindowText(::FindWindowExA(box, nullptr, "Edit", nullptr)),
                "",
                0,
                false};
    for (const auto& kind : {std::make_pair(IDOK, 'O'), std::make_pair(IDCANCEL, 'C'),
                             std::make_pair(IDYES, 'Y'), std::make_pair(IDNO, 'N')})
        if (::GetDlgItem(box, kind.first))
            seen.buttons += kind.second;
    if (!m_queue.empty()) {
        seen.pressed = m_queue.front().first;
        if (m_queue.front().second)
            m_queue.front().second(box);
        m_queue.pop_front();
        seen.expected = seen.pressed == kLeaveOpen || ::GetDlgItem(box, seen.pressed) != nullptr;
        if (seen.pressed == kLeaveOpen)
            return m_boxes.push_back(seen);
    }
    for (auto id = m_order.begin(); !seen.expected && id != m_order.end(); ++id)
        if (::GetDlgItem(box, (seen.pressed = *id)))
            break;
    ::PostMessageA(box, WM_COMMAND, MAKEWPARAM(seen.pressed, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(box, seen.pressed)));
    m_boxes.push_back(seen);
}

std::string Lower(std::string text)
{
    for (char& ch : text)
        if (ch >= 'A' && ch <= 'Z')
            ch = static_cast<char>(ch - 'A' + 'a');
    return text;
}

std::string WindowText(HWND wnd)
{
    const int length = wnd ? ::GetWindowTextLengthA(wnd) : 0;
    std::string text(static_cast<size_t>(length) + 1, '\0');
    text.resize(wnd ? static_cast<size_t>(::GetWindowTextA(wnd, &text[0], length + 1)) : 0);
    return text;
}

void RemoveTree(const std::string& dir)
{
    WIN32_FIND_DATAA found;
    HANDLE search = ::FindFirstFileA((dir + "\\*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::string name = found.cFileName, path = dir + "\\" + name;
            if (name == "." || name == "..")
                continue;
            ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                RemoveTree(path);
            else
                ::DeleteFileA(path.c_str());
        } while (::FindNextFileA(search, &found));
        ::FindClose(search);
    }
    ::RemoveDirectoryA(dir.c_str());
}

std::string ReadFileBytes(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return in ? std::string(std::istreambuf_iterator<char>(in), {}) : "<missing>";
}

void WriteFileBytes(const std::string& path, const std::string& bytes)
{
    std::ofstream out(path, std::ios::binary);
    EXPECT_TRUE(out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush())
        << path;
}

bool Exists(const std::string& path)
{
    return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

RECT Place(HWND wnd, HWND in)
{
    RECT rect;
    ::GetWindowRect(wnd, &rect);
    ::MapWindowPoints(nullptr, in, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

namespace
{

// Everything a run may leave in theApp, back to how a start finds it.
void ResetApp()
{
    theApp.m_pMainWnd = nullptr;
    theApp.SetInitialValues(); // flags, arrangement, recent lists
    theApp.safeMode = 0;
    theApp.m_strProjectDir.Empty();
    theApp.m_strProjectIni.Empty();
    delete theApp.store; // when the frame went without its close
    theApp.store = nullptr;
    SearchRequest& search = g_searchRequest;
    search.m_strFind.Empty();
    search.m_strReplace.Empty();
    search.m_bForward = search.m_bMatchCase = search.m_bRecompile = 1;
    search.m_bWholeWord = search.m_bSelectionOnly = 0;
    theApp.recentFilesDirty = 0;
    theApp.toolsDirty = 0;
    theApp.statusBar.Destroy();
}

} // namespace

void FrameTest::SetUp()
{
    static int serial = 0;
    char buffer[MAX_PATH];
    ::GetCurrentDirectoryA(MAX_PATH, buffer);
    m_oldDir = buffer;
    ::GetTempPathA(MAX_PATH, buffer);
    m_dir = std::string(buffer) + "kmtest" + std::to_string(::GetCurrentProcessId()) + "-" +
            std::to_string(++serial);
    RemoveTree(m_dir);
    ASSERT_TRUE(::CreateDirectoryA(m_dir.c_str(), nullptr));
    ASSERT_TRUE(::GetFullPathNameA(m_dir.c_str(), MAX_PATH, buffer, nullptr));
    m_dir = buffer;
    ASSERT_TRUE(::SetCurrentDirectoryA(m_dir.c_str()));
    Write("kelmar.ini", ""); // the settings of the test, not the program directory's
    ResetApp();
}

void FrameTest::TearDown()
{
    EXPECT_EQ(0, m_boxes.Unexpected()) << "boxes that came unexpected";
    CloseFrame();
    ::SetCurrentDirectoryA(m_oldDir.c_str());
    RemoveTree(m_dir);
}

bool FrameTest::Start(const std::string& commandLine)
{
    m_commandLine = commandLine;
    theApp.SetInstance(::GetModuleHandleA(nullptr), nullptr, m_commandLine.c_str(), SW_SHOWNORMAL);
    const bool result = theApp.InitInstance();
    m_frame = theApp.Frame();
    m_frameWnd = m_frame ? m_frame->m_hWnd : nullptr;
    PumpUntilIdle();
    return result;
}

bool FrameTest::CloseFrame()
{
    bool ended = false;
    m_boxes.WhenUnexpected({IDNO, IDCANCEL, IDOK});
    if (m_frameWnd && ::IsWindow(m_frameWnd)) {
        ::SendMessageA(m_frameWnd, WM_CLOSE, 0, 0);
        ended = PumpUntilIdle() && !::IsWindow(m_frameWnd) && !theApp.m_pMainWnd;
        if (::IsWindow(m_frameWnd))
            ::DestroyWindow(m_frameWnd);
        PumpUntilIdle();
    }
    m_boxes.WhenUnexpected({IDCANCEL, IDNO, IDOK});
    m_frame = nullptr;
    m_frameWnd = nullptr;
    ResetApp();
    return ended;
}

std::string FrameTest::FullLower(const std::string& name) const
{
    char full[MAX_PATH];
    ::GetFullPathNameA(Path(name).c_str(), MAX_PATH, full, nullptr);
    return Lower(full);
}

HWND FrameTest::MdiClient() const
{
    return m_frameWnd ? ::FindWindowExA(m_frameWnd, nullptr, "MDICLIENT", nullptr) : nullptr;
}

std::vector<HWND> FrameTest::Children() const
{
    std::vector<HWND> children;
    HWND client = MdiClient();
    for (HWND wnd = client ? ::GetWindow(client, GW_CHILD) : nullptr; wnd;
         wnd = ::GetWindow(wnd, GW_HWNDNEXT))
        if (!::GetWindow(wnd, GW_OWNER))
            children.push_back(wnd);
    return children;
}

std::set<std::string> FrameTest::ChildCaptions() const
{
    std::set<std::string> captions;
    for (HWND child : Children())
        captions.insert(WindowText(child));
    return captions;
}

HWND FrameTest::ChildByCaption(const std::string& caption) const
{
    HWND client = MdiClient();
    return client ? ::FindWindowExA(client, nullptr, nullptr, caption.c_str()) : nullptr;
}

void FrameTest::Command(UINT id)
{
    ::SendMessageA(m_frameWnd, WM_COMMAND, id, 0);
    PumpUntilIdle();
}

HMENU FrameTest::OpenPopup(int position)
{
    BOOL maximized = FALSE;
    ::SendMessageA(MdiClient(), WM_MDIGETACTIVE, 0, reinterpret_cast<LPARAM>(&maximized));
    return OpenPopupAt(position + (maximized ? 1 : 0));
}

HMENU FrameTest::OpenPopupAt(int shownPosition)
{
    HMENU popup = ::GetSubMenu(::GetMenu(m_frameWnd), shownPosition);
    EXPECT_NE(nullptr, popup) << "no popup at " << shownPosition;
    ::SendMessageA(m_frameWnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup),
                   MAKELPARAM(shownPosition, 0));
    return popup;
}

namespace
{
UINT StateOf(HMENU menu, UINT id)
{
    const UINT state = ::GetMenuState(menu, id, MF_BYCOMMAND);
    EXPECT_NE(static_cast<UINT>(-1), state) << "no item " << id;
    return state == static_cast<UINT>(-1) ? 0 : state;
}
} // namespace

bool FrameTest::Grayed(HMENU menu, UINT id)
{
    return (StateOf(menu, id) & MF_GRAYED) != 0;
}

bool FrameTest::Checked(HMENU menu, UINT id)
{
    return (StateOf(menu, id) & MF_CHECKED) != 0;
}

CaretPlace CaretOf(HWND child)
{
    HWND edit = ::GetDlgItem(child, IDC_EDIT);
    DWORD start = 0, end = 0;
    ::SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                   reinterpret_cast<LPARAM>(&end));
    const long line = static_cast<long>(::SendMessageA(edit, EM_LINEFROMCHAR, start, 0));
    const long first = static_cast<long>(::SendMessageA(edit, EM_LINEINDEX, line, 0));
    return {line, static_cast<long>(start) - first};
}

std::string EditBlock(HWND edit)
{
    HLOCAL block = reinterpret_cast<HLOCAL>(::SendMessageA(edit, EM_GETHANDLE, 0, 0));
    const char* text = static_cast<const char*>(::LocalLock(block));
    const std::string copy = text ? text : "<no block>";
    ::LocalUnlock(block);
    return copy;
}

std::string ClipboardText()
{
    std::string text = "<none>";
    if (::OpenClipboard(nullptr)) {
        if (HANDLE data = ::GetClipboardData(CF_TEXT)) {
            text = static_cast<const char*>(::GlobalLock(data));
            ::GlobalUnlock(data);
        }
        ::CloseClipboard();
    }
    return text;
}

void SetClipboardText(const char* text)
{
    ASSERT_TRUE(::OpenClipboard(nullptr));
    ::EmptyClipboard();
    if (text) {
        HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, strlen(text) + 1);
        strcpy(static_cast<char*>(::GlobalLock(block)), text);
        ::GlobalUnlock(block);
        ::SetClipboardData(CF_TEXT, block);
    }
    ::CloseClipboard();
}

} // namespace kmtest
