// The editor window inside the real frame: files loaded, edited and saved
// byte for byte, the questions of loading, saving and closing answered
// through the real message boxes, saves that fail, and the captions.
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "app/Settings.h"
#include "edit/KmFileEdit.h"
#include "resources/KmIds.h"

#include "BoxAnswer.h"
#include "support/WinTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

using kmtest::FreshTempDir;
using kmtest::Lower;
using kmtest::RemoveTree;

namespace
{

std::string ReadBytes(const std::string& path)
{
    HANDLE file = ::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return "<missing>";
    std::string bytes(::GetFileSize(file, nullptr), '\0');
    DWORD got = 0;
    if (!bytes.empty())
        ::ReadFile(file, &bytes[0], static_cast<DWORD>(bytes.size()), &got, nullptr);
    ::CloseHandle(file);
    bytes.resize(got);
    return bytes;
}

void WriteBytes(const std::string& path, const std::string& bytes)
{
    HANDLE file = ::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, file) << path;
    DWORD written = 0;
    ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    ::CloseHandle(file);
    ASSERT_EQ(bytes.size(), written);
}

bool Exists(const std::string& path)
{
    return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// Names in dir that match pattern, such as "KMT*.tmp".
std::vector<std::string> FilesLike(const std::string& dir, const char* pattern)
{
    std::vector<std::string> names;
    WIN32_FIND_DATAA found;
    HANDLE search = ::FindFirstFileA((dir + "\\" + pattern).c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            std::string name = found.cFileName;
            if (name != "." && name != "..")
                names.push_back(name);
        } while (::FindNextFileA(search, &found));
        ::FindClose(search);
    }
    return names;
}

std::string Caption(HWND wnd)
{
    char text[MAX_PATH * 2] = "";
    ::GetWindowTextA(wnd, text, sizeof text);
    return text;
}

std::string Title(const CKmChild* child)
{
    CString text;
    child->GetTitle(text);
    return text.c_str();
}

HWND EditOf(const CKmChild* child)
{
    return ::GetDlgItem(child->m_hWnd, IDC_EDIT);
}

// What the control shows.
std::string EditText(const CKmChild* child)
{
    HWND edit = EditOf(child);
    int length = ::GetWindowTextLengthA(edit);
    std::string text(static_cast<size_t>(length) + 1, '\0');
    text.resize(static_cast<size_t>(::GetWindowTextA(edit, &text[0], length + 1)));
    return text;
}

// The control's own text block, to its NUL.
std::string EditBlock(const CKmChild* child)
{
    HLOCAL block = reinterpret_cast<HLOCAL>(::SendMessageA(EditOf(child), EM_GETHANDLE, 0, 0));
    const char* text = static_cast<const char*>(::LocalLock(block));
    std::string copy = text ? text : "<no block>";
    ::LocalUnlock(block);
    return copy;
}

// Puts text at the start, as the user's typing there would.
void InsertAtStart(const CKmChild* child, const char* text)
{
    HWND edit = EditOf(child);
    ::SendMessageA(edit, EM_SETSEL, 0, 0);
    ::SendMessageA(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
}

// Typing through the keyboard messages the control receives.
void Type(const CKmChild* child, const char* text)
{
    HWND edit = EditOf(child);
    ::SetFocus(edit);
    for (const char* p = text; *p; ++p)
        ::SendMessageA(edit, WM_CHAR, static_cast<unsigned char>(*p), 1);
}

FILETIME WriteTime(const std::string& path)
{
    FILETIME time = {};
    HANDLE file = ::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_EXISTING, 0, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        ::GetFileTime(file, nullptr, nullptr, &time);
        ::CloseHandle(file);
    }
    return time;
}

// 1 March 2001, far from the time of any write the test makes.
void SetOldWriteTime(const std::string& path)
{
    SYSTEMTIME old = {2001, 3, 4, 1, 12, 0, 0, 0};
    FILETIME time;
    ::SystemTimeToFileTime(&old, &time);
    HANDLE file = ::CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ, nullptr,
                                OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, file);
    ::SetFileTime(file, nullptr, nullptr, &time);
    ::CloseHandle(file);
}

bool SameTime(const FILETIME& a, const FILETIME& b)
{
    return a.dwLowDateTime == b.dwLowDateTime && a.dwHighDateTime == b.dwHighDateTime;
}

// A fresh frame per test, as the program makes it, over a directory of
// files of its own. The frame is closed at the end with every question
// answered No.
class EditorTest : public ::testing::Test
{
  protected:
    void SetUp() override
    {
        char buffer[MAX_PATH];
        ::GetCurrentDirectoryA(MAX_PATH, buffer);
        m_savedDir = buffer;
        m_dir = FreshTempDir("KmEditor");
        ASSERT_FALSE(m_dir.empty());

        theApp.SetInstance(::GetModuleHandleA(nullptr), nullptr, "", SW_SHOWNORMAL);
        theApp.SetInitialValues();
        if (!theApp.screenFont.m_hFont) {
            LOGFONTA logFont;
            ASSERT_TRUE(
                ::GetObjectA(::GetStockObject(SYSTEM_FIXED_FONT), sizeof logFont, &logFont));
            theApp.screenFont.CreateFontIndirect(&logFont);
        }
        CString title;
        title.LoadString(IDS_TITLE);
        m_frame = new CKmFrame;
        ASSERT_TRUE(m_frame->Create(title, 0, kRectDefault));
        theApp.m_pMainWnd = m_frame;
        m_frameWnd = m_frame->m_hWnd;
        ::ShowWindow(m_frameWnd, SW_SHOWNORMAL);
        ::UpdateWindow(m_frameWnd);
        PumpUntilIdle();
    }

    void TearDown() override
    {
        m_answers.Clear();
        if (::IsWindow(m_frameWnd)) {
            ::SendMessageA(m_frameWnd, WM_CLOSE, 0, 0);
            if (::IsWindow(m_frameWnd))
                ::DestroyWindow(m_frameWnd);
        }
        PumpUntilIdle();
        theApp.m_pMainWnd = nullptr;
        ::SetCurrentDirectoryA(m_savedDir.c_str());
        RemoveTree(m_dir);
    }

    std::string Path(const char* name) const { return m_dir + "\\" + name; }

    // A file with these bytes, opened for editing.
    CKmFileEdit* OpenWith(const char* name, const std::string& bytes)
    {
        WriteBytes(Path(name), bytes);
        return Open(name);
    }

    CKmFileEdit* Open(const char* name)
    {
        CKmChild* child = m_frame->OpenFile(Path(name).c_str(), false, false);
        PumpUntilIdle();
        if (!child)
            return nullptr;
        EXPECT_TRUE(child->IsKindOf(RUNTIME_CLASS(CKmFileEdit)));
        return static_cast<CKmFileEdit*>(child);
    }

    void Save(CKmChild* child)
    {
        ::SendMessageA(child->m_hWnd, WM_COMMAND, ID_FILE_SAVE, 0);
        PumpUntilIdle();
    }

    // The frame's children, without the icon titles.
    std::vector<HWND> Children() const
    {
        std::vector<HWND> children;
        for (HWND wnd = ::GetWindow(m_frame->m_hWndMDIClient, GW_CHILD); wnd;
             wnd = ::GetWindow(wnd, GW_HWNDNEXT))
            if (!::GetWindow(wnd, GW_OWNER))
                children.push_back(wnd);
        return children;
    }

    // Loads, checks the control, inserts text at the start, saves, and
    // checks the file: the round trip of one file.
    void RoundTrip(const char* name, const std::string& disk, const std::string& shown,
                   FileFormat format, const char* typed, const std::string& saved)
    {
        SCOPED_TRACE(name);
        CKmFileEdit* edit = OpenWith(name, disk);
        ASSERT_NE(nullptr, edit);
        EXPECT_EQ(format, edit->m_format);
        EXPECT_EQ(shown, EditText(edit));
        EXPECT_EQ(shown, EditBlock(edit));
        EXPECT_FALSE(edit->m_flags & CF_MODIFIED);
        InsertAtStart(edit, typed);
        EXPECT_TRUE(edit->m_flags & CF_MODIFIED);
        Save(edit);
        EXPECT_EQ(saved, ReadBytes(Path(name)));
        EXPECT_FALSE(edit->m_flags & CF_MODIFIED);
        EXPECT_EQ(format, edit->m_format);
    }

    std::string m_savedDir;
    std::string m_dir;
    CKmFrame* m_frame = nullptr;
    HWND m_frameWnd = nullptr;
    BoxAnswerer m_answers;
};

// --- loading and saving

TEST_F(EditorTest, DosUnixAndMacFilesComeBackInTheirOwnForm)
{
    RoundTrip("dos.c", "int a;\r\nint b;\r\n", "int a;\r\nint b;\r\n", FF_DOS, "x\r\n",
              "x\r\nint a;\r\nint b;\r\n");
    RoundTrip("unix.c", "int a;\nint b;\n", "int a;\r\nint b;\r\n", FF_UNIX, "x\r\ny ",
              "x\ny int a;\nint b;\n");
    RoundTrip("mac.c", "int a;\rint b;\r", "int a;\r\nint b;\r\n", FF_MAC, "x\r\n",
              "x\rint a;\rint b;\r");
    EXPECT_TRUE(m_answers.boxes.empty()) << m_answers.boxes[0].text;
}

TEST_F(EditorTest, UnixLastLineWithoutTerminatorStaysWithout)
{
    RoundTrip("last.c", "one\ntwo", "one\r\ntwo", FF_UNIX, "zero\r\n", "zero\none\ntwo");
    EXPECT_TRUE(m_answers.boxes.empty());
}

TEST_F(EditorTest, BytesAbove127AndLongFilesComeBackUnchanged)
{
    std::string high;
    for (int byte = 128; byte < 256; ++byte)
        high += static_cast<char>(byte);
    RoundTrip("high.txt", high + "\r\n", high + "\r\n", FF_DOS, "x", "x" + high + "\r\n");

    std::string unix, shown;
    for (int line = 0; line < 20000; ++line) {
        std::string text = "line " + std::to_string(line) + " of a long file";
        unix += text + "\n";
        shown += text + "\r\n";
    }
    RoundTrip("long.txt", unix, shown, FF_UNIX, "first\r\n", "first\n" + unix);
    EXPECT_TRUE(m_answers.boxes.empty());
}

TEST_F(EditorTest, TypedTextIsSavedAndASecondSaveWritesTheNewText)
{
    CKmFileEdit* edit = OpenWith("typed.txt", "end\n");
    ASSERT_NE(nullptr, edit);
    Type(edit, "ab\rc");
    EXPECT_TRUE(edit->m_flags & CF_MODIFIED);
    Save(edit);
    EXPECT_EQ("ab\ncend\n", ReadBytes(Path("typed.txt")));
    Type(edit, "d");
    Save(edit);
    EXPECT_EQ("ab\ncdend\n", ReadBytes(Path("typed.txt")));
}

TEST_F(EditorTest, EmptyFileOpensWithoutQuestionAsDos)
{
    CKmFileEdit* edit = OpenWith("empty.txt", "");
    ASSERT_NE(nullptr, edit);
    EXPECT_TRUE(m_answers.boxes.empty());
    EXPECT_EQ(FF_DOS, edit->m_format);
    EXPECT_EQ("", EditText(edit));
    InsertAtStart(edit, "a\r\nb");
    Save(edit);
    EXPECT_EQ("a\r\nb", ReadBytes(Path("empty.txt")));
}

TEST_F(EditorTest, OneLineWithoutTerminatorIsAskedAndSavedWithoutOne)
{
    WriteBytes(Path("one.txt"), "hello");
    m_answers.Queue(IDNO);
    EXPECT_EQ(nullptr, Open("one.txt"));
    EXPECT_TRUE(Children().empty());
    ASSERT_EQ(1u, m_answers.boxes.size());
    EXPECT_EQ("Invalid line terminators in the file:\n" + Lower(Path("one.txt")) +
                  "\nOpen it anyway?",
              m_answers.boxes[0].text);
    EXPECT_EQ("YN", m_answers.boxes[0].buttons);

    m_answers.Clear();
    m_answers.Queue(IDYES);
    CKmFileEdit* edit = Open("one.txt");
    ASSERT_NE(nullptr, edit);
    EXPECT_EQ(1u, m_answers.boxes.size());
    EXPECT_EQ(FF_DOS, edit->m_format);
    EXPECT_EQ("hello", EditText(edit));
    InsertAtStart(edit, "say ");
    Save(edit);
    EXPECT_EQ("say hello", ReadBytes(Path("one.txt")));
}

TEST_F(EditorTest, LfBeforeCrLfIsMixedAndAsked)
{
    const std::string mixed = "a\nb\r\nc\n";
    WriteBytes(Path("mixed.txt"), mixed);
    m_answers.Queue(IDNO);
    EXPECT_EQ(nullptr, Open("mixed.txt"));
    EXPECT_TRUE(Children().empty());
    ASSERT_EQ(1u, m_answers.boxes.size());
    EXPECT_EQ(0u, m_answers.boxes[0].text.find("Invalid line terminators"));

    m_answers.Queue(IDYES);
    CKmFileEdit* edit = Open("mixed.txt");
    ASSERT_NE(nullptr, edit);
    EXPECT_EQ(2u, m_answers.boxes.size());
    EXPECT_EQ(FF_DOS, edit->m_format);
    EXPECT_EQ(mixed, EditBlock(edit)); // taken as it stands
    InsertAtStart(edit, "x");
    Save(edit);
    EXPECT_EQ("x" + mixed, ReadBytes(Path("mixed.txt")));
}

TEST_F(EditorTest, CrLfBeforeLfIsDosAndTheLoneLfsAreWrittenUnchanged)
{
    const std::string text = "a\r\nb\nc\nd\r\n";
    CKmFileEdit* edit = OpenWith("dosfirst.txt", text);
    ASSERT_NE(nullptr, edit);
    EXPECT_TRUE(m_answers.boxes.empty());
    EXPECT_EQ(FF_DOS, edit->m_format);
    EXPECT_EQ(text, EditBlock(edit));
    InsertAtStart(edit, "x\r\n");
    Save(edit);
    EXPECT_EQ("x\r\n" + text, ReadBytes(Path("dosfirst.txt")));
}

TEST_F(EditorTest, NulAtOffset100IsAskedAndCutsTheText)
{
    std::string line = "0123456789abcdefghijklmnopqrstuvwxyz0123456789\r\n"; // 48 bytes
    std::string text = line + line + "abcd";                                 // 100 bytes
    std::string disk = text + '\0' + "tail after the nul\r\n";
    WriteBytes(Path("zero.txt"), disk);

    m_answers.Queue(IDNO);
    EXPECT_EQ(nullptr, Open("zero.txt"));
    EXPECT_TRUE(Children().empty());
    ASSERT_EQ(1u, m_answers.boxes.size());
    EXPECT_EQ("Non-ANSI character (0x0) in the file:\n" + Lower(Path("zero.txt")) +
                  "\nOpen it anyway?",
              m_answers.boxes[0].text);
    EXPECT_EQ("YN", m_answers.boxes[0].buttons);

    m_answers.Clear();
    m_answers.Queue(IDYES);
    CKmFileEdit* edit = Open("zero.txt");
    ASSERT_NE(nullptr, edit);
    EXPECT_EQ(1u, m_answers.boxes.size());
    EXPECT_EQ(text, EditText(edit));
    InsertAtStart(edit, "x");
    Save(edit);
    EXPECT_EQ("x" + text, ReadBytes(Path("zero.txt")));
}

TEST_F(EditorTest, ControlByteIsAskedAt255AndNotAt256)
{
    std::string text;
    while (text.size() < 300)
        text += "control bytes\r\n";
    std::string at255 = text, at256 = text;
    at255[255] = '\x01';
    at256[256] = '\x01';
    WriteBytes(Path("at255.txt"), at255);
    WriteBytes(Path("at256.txt"), at256);

    m_answers.Queue(IDNO);
    EXPECT_EQ(nullptr, Open("at255.txt"));
    ASSERT_EQ(1u, m_answers.boxes.size());
    EXPECT_EQ(0u, m_answers.boxes[0].text.find("Non-ANSI character (0x1) in the file:\n"))
        << m_answers.boxes[0].text;

    CKmFileEdit* edit = Open("at256.txt");
    ASSERT_NE(nullptr, edit);
    EXPECT_EQ(1u, m_answers.boxes.size()); // no new question
    EXPECT_EQ(at256, EditBlock(edit));
}

TEST_F(EditorTest, BackupHoldsThePreviousVersionAfterTwoSaves)
{
    theApp.flags |= KF_BACKUP;
    CKmFileEdit* edit = OpenWith("prog.c", "one\r\n");
    ASSERT_NE(nullptr, edit);
    InsertAtStart(edit, "two\r\n");
    Save(edit);
    EXPECT_EQ("one\r\n", ReadBytes(Path("prog.BAK")));
    InsertAtStart(edit, "three\r\n");
    Save(edit);
    EXPECT_EQ("three\r\ntwo\r\none\r\n", ReadBytes(Path("prog.c")));
    EXPECT_EQ("two\r\none\r\n", ReadBytes(Path("prog.BAK")));
    EXPECT_TRUE(m_answers.boxes.empty());
    EXPECT_TRUE(FilesLike(m_dir, "KMT*").empty());
}

TEST_F(EditorTest, WithoutBackupFlagNoBackupIsMade)
{
    CKmFileEdit* edit = OpenWith("prog.c", "one\r\n");
    ASSERT_NE(nullptr, edit);
    InsertAtStart(edit, "two\r\n");
    Save(edit);
    EXPECT_EQ("two\r\none\r\n", ReadBytes(Path("prog.c")));
    EXPECT_FALSE(Exists(Path("prog.BAK")));
}

// --- questions

TEST_F(EditorTest, MissingFileIsCreatedOnlyOnYes)
{
    const std::string path = Path("New.txt");
    m_answers.Queue(IDNO);
    EXPECT_EQ(nullptr, m_frame->OpenFile(path.c_str(), false, false));
    PumpUntilIdle();
    EXPECT_FALSE(Exists(path));
    EXPECT_TRUE(Children().empty());
    ASSERT_EQ(1u, m_answers.boxes.size());
    EXPECT_EQ("OK to create new\n'" + path + "'", m_answers.boxes[0].text);
    EXPECT_EQ("YN", m_answers.boxes[0].buttons);

    m_answers.Queue(IDYES);
    CKmChild* child = m_frame->OpenFile(path.c_str(), false, false);
    PumpUntilIdle();
    ASSERT_NE(nullptr, child);
    EXPECT_EQ(2u, m_answers.boxes.size());
    EXPECT_EQ("", ReadBytes(path));
    EXPECT_EQ(Lower(path), Caption(child->m_hWnd));
    EXPECT_EQ(1u, Children().size());
}

TEST_F(EditorTest, MissingFileOpenedReadOnlyIsReportedAndNotCreated)
{
    const std::string path = Path("absent.txt");
    EXPECT_EQ(nullptr, m_frame->OpenFile(path.c_str(), true, false));
    PumpUntilIdle();
    EXPECT_FALSE(Exists(path));
    ASSERT_EQ(1u, m_answers.boxes.size());
    EXPECT_EQ("Error accessing '" + path + "'\nThe file could not be located",
              m_answers.boxes[0].text);
}

TEST_F(EditorTest, CloseOfAModifiedWindowAsksToSave)
{
    CKmFileEdit* edit = OpenWith("close.c", "old\r\n");
    ASSERT_NE(nullptr, edit);
    HWND wnd = edit->m_hWnd;
    InsertAtStart(edit, "new ");

    m_answers.Queue(IDCANCEL);
    ::SendMessageA(wnd, WM_CLOSE, 0, 0);
    PumpUntilIdle();
    ASSERT_TRUE(::IsWindow(wnd));
    ASSERT_EQ(1u, m_answers.boxes.size());
    EXPECT_EQ("Save changes to '" + Lower(Path("close.c")) + "'\nbefore closing?",
              m_answers.boxes[0].text);
    EXPECT_EQ("CYN", m_answers.boxes[0].buttons);
    EXPECT_TRUE(edit->m_flags & CF_MODIFIED);
    EXPECT_EQ("new old\r\n", EditText(edit));
    EXPECT_EQ("old\r\n", ReadBytes(Path("close.c")));

    m_answers.Queue(IDNO);
    ::SendMessageA(wnd, WM_CLOSE, 0, 0);
    PumpUntilIdle();
    EXPECT_FALSE(::IsWindow(wnd));
    EXPECT_EQ(2u, m_answers.boxes.size());
    EXPECT_EQ("old\r\n", ReadBytes(Path("close.c")));

    edit = Open("close.c");
    ASSERT_NE(nullptr, edit);
    wnd = edit->m_hWnd;
    InsertAtStart(edit, "saved ");
    m_answers.Queue(IDYES);
    ::SendMessageA(wnd, WM_CLOSE, 0, 0);
    PumpUntilIdle();
    EXPECT_FALSE(::IsWindow(wnd));
    EXPECT_EQ(3u, m_answers.boxes.size());
    EXPECT_EQ("saved old\r\n", ReadBytes(Path("close.c")));
}

TEST_F(EditorTest, UnmodifiedWindowClosesWithoutQuestion)
{
    CKmFileEdit* edit = OpenWith("quiet.c", "x\r\n");
    ASSERT_NE(nullptr, edit);
    HWND wnd = edit->m_hWnd;
    ::SendMessageA(wnd, WM_CLOSE, 0, 0);
    PumpUntilIdle();
    EXPECT_FALSE(::IsWindow(wnd));
    EXPECT_TRUE(m_answers.boxes.empty());
}

TEST_F(EditorTest, OneRefusalInTheFrameCloseKeepsEveryWindow)
{
    CKmFileEdit* first = OpenWith("first.c", "1\r\n");
    CKmFileEdit* second = OpenWith("second.c", "2\r\n");
    ASSERT_NE(nullptr, first);
    ASSERT_NE(nullptr, second);
    InsertAtStart(first, "a");
    InsertAtStart(second, "b");

    m_answers.Queue(IDNO);
    m_answers.Queue(IDCANCEL);
    ::SendMessageA(m_frameWnd, WM_CLOSE, 0, 0);
    PumpUntilIdle();
    ASSERT_TRUE(::IsWindow(m_frameWnd));
    EXPECT_EQ(m_frame, theApp.m_pMainWnd);
    EXPECT_EQ(2u, Children().size());
    ASSERT_EQ(2u, m_answers.boxes.size());
    // The window in front is asked first.
    EXPECT_NE(std::string::npos, m_answers.boxes[0].text.find("second.c"));
    EXPECT_NE(std::string::npos, m_answers.boxes[1].text.find("first.c"));
    EXPECT_TRUE(first->m_flags & CF_MODIFIED);
    EXPECT_TRUE(second->m_flags & CF_MODIFIED);
    EXPECT_EQ("1\r\n", ReadBytes(Path("first.c")));
    EXPECT_EQ("2\r\n", ReadBytes(Path("second.c")));

    // Cancel at the first question asks no more.
    m_answers.Clear();
    m_answers.Queue(IDCANCEL);
    ::SendMessageA(m_frameWnd, WM_CLOSE, 0, 0);
    PumpUntilIdle();
    ASSERT_TRUE(::IsWindow(m_frameWnd));
    EXPECT_EQ(1u, m_answers.boxes.size());
    EXPECT_EQ(2u, Children().size());
}

TEST_F(EditorTest, FrameCloseSavesOnYesAndEnds)
{
    CKmFileEdit* first = OpenWith("first.c", "1\r\n");
    CKmFileEdit* second = OpenWith("second.c", "2\n");
    ASSERT_NE(nullptr, first);
    ASSERT_NE(nullptr, second);
    InsertAtStart(first, "a");
    InsertAtStart(second, "b");

    m_answers.Queue(IDYES);
    m_answers.Queue(IDYES);
    ::SendMessageA(m_frameWnd, WM_CLOSE, 0, 0);
    PumpUntilIdle();
    EXPECT_FALSE(::IsWindow(m_frameWnd));
    EXPECT_EQ(nullptr, theApp.m_pMainWnd);
    EXPECT_EQ(2u, m_answers.boxes.size());
    EXPECT_EQ("a1\r\n", ReadBytes(Path("first.c")));
    EXPECT_EQ("b2\n", ReadBytes(Path("second.c")));
}

// --- saves that fail, and what a save keeps

TEST_F(EditorTest, SaveOverAFileHeldOpenLeavesItWhole)
{
    const std::string path = Path("held.c");
    const std::string original = "line one\nline two\n";
    CKmFileEdit* edit = OpenWith("held.c", original);
    ASSERT_NE(nullptr, edit);
    InsertAtStart(edit, "changed ");

    // Another program reads the file and lets nobody write or delete it.
    HANDLE holder = ::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, holder);
    Save(edit);
    ::CloseHandle(holder);

    ASSERT_EQ(1u, m_answers.boxes.size());
    EXPECT_EQ(0u, m_answers.boxes[0].text.find("Error accessing '" + Lower(path) + "'\n"))
        << m_answers.boxes[0].text;
    EXPECT_EQ(original, ReadBytes(path));
    EXPECT_TRUE(edit->m_flags & CF_MODIFIED);
    EXPECT_EQ(std::vector<std::string>{"held.c"}, FilesLike(m_dir, "*"));

    // Once the other program lets go, the same save goes through.
    Save(edit);
    EXPECT_EQ(1u, m_answers.boxes.size());
    EXPECT_EQ("changed line one\nline two\n", ReadBytes(path));
    EXPECT_FALSE(edit->m_flags & CF_MODIFIED);
}

TEST_F(EditorTest, FailedSaveWithBackupsOnLeavesTheOriginalAndNoBackup)
{
    theApp.flags |= KF_BACKUP;
    const std::string path = Path("held.c");
    CKmFileEdit* edit = OpenWith("held.c", "kept\r\n");
    ASSERT_NE(nullptr, edit);
    InsertAtStart(edit, "lost ");
    HANDLE holder = ::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, holder);
    Save(edit);
    ::CloseHandle(holder);

    // The save fails as a whole, backup included, with one report.
    ASSERT_EQ(1u, m_answers.boxes.size());
    for (const BoxAnswerer::Box& box : m_answers.boxes)
        EXPECT_EQ(0u, box.text.find("Error accessing '")) << box.text;
    EXPECT_EQ("kept\r\n", ReadBytes(path));
    EXPECT_TRUE(edit->m_flags & CF_MODIFIED);
    EXPECT_EQ(std::vector<std::string>{"held.c"}, FilesLike(m_dir, "*"));
}

TEST_F(EditorTest, SaveKeepsTheAttributesOfTheFile)
{
    const std::string path = Path("hidden.c");
    WriteBytes(path, "text\r\n");
    const DWORD kept = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN;
    ASSERT_TRUE(::SetFileAttributesA(path.c_str(), kept));
    ASSERT_EQ(kept, ::GetFileAttributesA(path.c_str()) & 0x3F);
    CKmFileEdit* edit = Open("hidden.c");
    ASSERT_NE(nullptr, edit);
    InsertAtStart(edit, "more ");
    Save(edit);
    EXPECT_TRUE(m_answers.boxes.empty());
    EXPECT_EQ("more text\r\n", ReadBytes(path));
    EXPECT_EQ(kept, ::GetFileAttributesA(path.c_str()) & 0x3F);
    EXPECT_TRUE(FilesLike(m_dir, "KMT*").empty());
}

// --- windows and titles

TEST_F(EditorTest, OpeningTheSamePathAgainGivesTheSameWindow)
{
    CKmFileEdit* edit = OpenWith("Same.C", "x\r\n");
    ASSERT_NE(nullptr, edit);
    InsertAtStart(edit, "unsaved ");
    ASSERT_TRUE(::SetCurrentDirectoryA(m_dir.c_str()));
    EXPECT_EQ(edit, m_frame->OpenFile("same.c", false, false));
    EXPECT_EQ(edit, m_frame->OpenFile(Lower(Path("SAME.c")).c_str(), false, false));
    // Read-only asked while an editor is open gives the editor.
    EXPECT_EQ(edit, m_frame->OpenFile(Path("same.c").c_str(), true, false));
    PumpUntilIdle();
    EXPECT_EQ(1u, Children().size());
    EXPECT_EQ("unsaved x\r\n", EditText(edit)); // not loaded anew
    EXPECT_TRUE(m_answers.boxes.empty());
}

TEST_F(EditorTest, HexViewOfAModifiedEditorAsksAndCancelKeepsTheEditor)
{
    CKmFileEdit* edit = OpenWith("hex.c", "x\r\n");
    ASSERT_NE(nullptr, edit);
    HWND wnd = edit->m_hWnd;
    InsertAtStart(edit, "y");
    m_answers.Queue(IDCANCEL);
    EXPECT_EQ(nullptr, m_frame->OpenFile(Path("hex.c").c_str(), true, true));
    PumpUntilIdle();
    ASSERT_EQ(1u, m_answers.boxes.size());
    EXPECT_EQ("Save changes to '" + Lower(Path("hex.c")) + "'\nbefore closing?",
              m_answers.boxes[0].text);
    ASSERT_TRUE(::IsWindow(wnd));
    EXPECT_EQ(1u, Children().size());
    EXPECT_TRUE(edit->m_flags & CF_MODIFIED);
    EXPECT_EQ("yx\r\n", EditText(edit));
}

TEST_F(EditorTest, SaveOfAnUnmodifiedWindowWritesNothing)
{
    const std::string path = Path("clean.c");
    WriteBytes(path, "clean\n");
    SetOldWriteTime(path);
    const FILETIME before = WriteTime(path);
    CKmFileEdit* edit = Open("clean.c");
    ASSERT_NE(nullptr, edit);
    ::SendMessageA(m_frameWnd, WM_COMMAND, ID_FILE_SAVE, 0); // Ctrl+S
    PumpUntilIdle();
    EXPECT_TRUE(SameTime(before, WriteTime(path)));
    EXPECT_TRUE(m_answers.boxes.empty());
    EXPECT_EQ((std::vector<std::string>{"clean.c"}), FilesLike(m_dir, "*"));

    // The same command on a modified window does write.
    InsertAtStart(edit, "un");
    ::SendMessageA(m_frameWnd, WM_COMMAND, ID_FILE_SAVE, 0);
    PumpUntilIdle();
    EXPECT_FALSE(SameTime(before, WriteTime(path)));
    EXPECT_EQ("unclean\n", ReadBytes(path));
}

TEST_F(EditorTest, CaptionIsTheLowerCaseFullPath)
{
    WriteBytes(Path("MixedCase.TXT"), "x\r\n");
    ASSERT_TRUE(::SetCurrentDirectoryA(m_dir.c_str()));
    CKmChild* child = m_frame->OpenFile("MixedCase.TXT", false, false);
    PumpUntilIdle();
    ASSERT_NE(nullptr, child);
    EXPECT_EQ(Lower(Path("MixedCase.TXT")), Caption(child->m_hWnd));
    EXPECT_EQ(Lower(Path("MixedCase.TXT")), Title(child));
    EXPECT_EQ(child, m_frame->FindChildByPath(Lower(Path("MixedCase.TXT")).c_str()));
    EXPECT_EQ(nullptr, m_frame->FindChildByPath(Path("MixedCase.TXT").c_str()));
}

TEST_F(EditorTest, NewWindowsAreNumberedOnwards)
{
    ::SendMessageA(m_frameWnd, WM_COMMAND, ID_FILE_NEW, 0);
    ::SendMessageA(m_frameWnd, WM_COMMAND, ID_FILE_NEW, 0);
    PumpUntilIdle();
    std::vector<HWND> children = Children();
    ASSERT_EQ(2u, children.size());
    // The newest is in front.
    EXPECT_EQ("File2", Caption(children[0]));
    EXPECT_EQ("File1", Caption(children[1]));
    CKmChild* second = static_cast<CKmChild*>(CWnd::FromHandle(children[0]));
    EXPECT_TRUE(second->m_flags & CF_UNTITLED);

    // A closed number is not given again.
    ::SendMessageA(children[0], WM_CLOSE, 0, 0);
    ::SendMessageA(m_frameWnd, WM_COMMAND, ID_FILE_NEW, 0);
    PumpUntilIdle();
    children = Children();
    ASSERT_EQ(2u, children.size());
    EXPECT_EQ("File3", Caption(children[0]));
    EXPECT_TRUE(m_answers.boxes.empty());
}

TEST_F(EditorTest, MinimisedCaptionBreaksAtTheLastBackslash)
{
    CKmFileEdit* edit = OpenWith("icon.c", "x\r\n");
    ASSERT_NE(nullptr, edit);
    const std::string path = Lower(Path("icon.c"));
    ::SendMessageA(edit->m_hWnd, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    PumpUntilIdle();
    ASSERT_TRUE(::IsIconic(edit->m_hWnd));
    std::string iconic = path;
    iconic[iconic.rfind('\\')] = ' ';
    EXPECT_EQ(iconic, Caption(edit->m_hWnd));
    EXPECT_EQ(path, Title(edit));
    EXPECT_EQ(edit, m_frame->FindChildByPath(path.c_str()));
    EXPECT_EQ(edit, m_frame->OpenFile(path.c_str(), false, false));

    ::SendMessageA(edit->m_hWnd, WM_SYSCOMMAND, SC_RESTORE, 0);
    PumpUntilIdle();
    ASSERT_FALSE(::IsIconic(edit->m_hWnd));
    EXPECT_EQ(path, Caption(edit->m_hWnd));
}

TEST_F(EditorTest, TileVerticalPutsTwoWindowsSideBySide)
{
    CKmFileEdit* left = OpenWith("left.c", "int left(void)\r\n{\r\n    return 1;\r\n}\r\n");
    CKmFileEdit* right = OpenWith("right.c", "int right(void)\n{\n    return 2;\n}\n");
    ASSERT_NE(nullptr, left);
    ASSERT_NE(nullptr, right);
    ::SendMessageA(m_frameWnd, WM_COMMAND, ID_WINDOW_TILEVERT, 0);
    PumpUntilIdle();
    RECT a, b;
    ::GetWindowRect(left->m_hWnd, &a);
    ::GetWindowRect(right->m_hWnd, &b);
    if (a.left > b.left)
        std::swap(a, b);
    EXPECT_LE(a.right, b.left + 1);
    EXPECT_EQ(a.top, b.top);
    EXPECT_EQ(a.bottom, b.bottom);
    EXPECT_EQ(0, theApp.arrange);
}

} // namespace

// --- the safe save and paths with blanks

TEST_F(EditorTest, PathWithBlanksSurvivesMinimiseRestoreAndSave)
{
    ASSERT_TRUE(::CreateDirectoryA(Path("my dir").c_str(), nullptr));
    CKmFileEdit* edit = OpenWith("my dir\\a b.c", "x\r\n");
    ASSERT_NE(nullptr, edit);
    const std::string path = Lower(Path("my dir\\a b.c"));

    // A window that was never an icon keeps its caption through a maximise.
    ::SendMessageA(edit->m_hWnd, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    ::SendMessageA(edit->m_hWnd, WM_SYSCOMMAND, SC_RESTORE, 0);
    PumpUntilIdle();
    EXPECT_EQ(path, Caption(edit->m_hWnd));

    ::SendMessageA(edit->m_hWnd, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    PumpUntilIdle();
    std::string iconic = path;
    iconic[iconic.rfind('\\')] = ' ';
    EXPECT_EQ(iconic, Caption(edit->m_hWnd));
    EXPECT_EQ(path, Title(edit));
    ::SendMessageA(edit->m_hWnd, WM_SYSCOMMAND, SC_RESTORE, 0);
    PumpUntilIdle();
    EXPECT_EQ(path, Caption(edit->m_hWnd));

    InsertAtStart(edit, "saved ");
    Save(edit);
    EXPECT_TRUE(m_answers.boxes.empty());
    EXPECT_EQ("saved x\r\n", ReadBytes(path));
    EXPECT_EQ(std::vector<std::string>{"a b.c"}, FilesLike(Path("my dir"), "*"));

    ::SendMessageA(edit->m_hWnd, WM_CLOSE, 0, 0);
    PumpUntilIdle();
    CKmFileEdit* again = Open("my dir\\a b.c");
    ASSERT_NE(nullptr, again);
    EXPECT_EQ("saved x\r\n", EditText(again));
}

// Where the file system keeps a creation time that can be set at all.
TEST_F(EditorTest, SaveKeepsTheCreationTime)
{
    const std::string path = Path("born.c");
    WriteBytes(path, "old\r\n");
    FILETIME born = {0x2F2A8000, 0x01C06F82}; // a day in 2001
    HANDLE file = ::CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ, nullptr,
                                OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, file);
    ::SetFileTime(file, &born, nullptr, nullptr);
    ::CloseHandle(file);
    WIN32_FILE_ATTRIBUTE_DATA data;
    ASSERT_TRUE(::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data));
    if (::CompareFileTime(&data.ftCreationTime, &born) != 0)
        GTEST_SKIP() << "this file system keeps no creation time of its own";

    CKmFileEdit* edit = Open("born.c");
    ASSERT_NE(nullptr, edit);
    InsertAtStart(edit, "new ");
    Save(edit);
    EXPECT_EQ("new old\r\n", ReadBytes(path));
    ASSERT_TRUE(::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data));
    EXPECT_EQ(0, ::CompareFileTime(&data.ftCreationTime, &born));
}

// The test run makes KM_LOCKED_DIR a directory that takes no new file but
// holds a writable one, locked.c; the save then writes the file in place.
TEST_F(EditorTest, DirectoryThatRefusesNewFilesSavesInPlace)
{
    const char* unixDir = std::getenv("KM_LOCKED_DIR");
    if (!unixDir)
        GTEST_SKIP() << "KM_LOCKED_DIR is not set";
    std::string dir = std::string("Z:") + unixDir;
    std::replace(dir.begin(), dir.end(), '/', '\\');
    const std::string probe = dir + "\\probe.c";
    HANDLE created = ::CreateFileA(probe.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    if (created != INVALID_HANDLE_VALUE) {
        ::CloseHandle(created);
        ::DeleteFileA(probe.c_str());
        GTEST_SKIP() << "the directory could not be locked here";
    }
    const std::string path = dir + "\\locked.c";
    CKmChild* child = m_frame->OpenFile(path.c_str(), false, false);
    PumpUntilIdle();
    ASSERT_NE(nullptr, child);
    InsertAtStart(child, "saved ");
    Save(child);
    EXPECT_TRUE(m_answers.boxes.empty());
    EXPECT_EQ("saved locked\r\n", ReadBytes(path));
    EXPECT_FALSE(child->m_flags & CF_MODIFIED);
    EXPECT_EQ(std::vector<std::string>{"locked.c"}, FilesLike(dir, "*"));
}
