// The editor window inside the real frame: files loaded, edited and saved
// byte for byte, the questions of loading, saving and closing answered
// through the real message boxes, saves that fail, and the captions.
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "app/Settings.h"
#include "edit/KmFileEdit.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

#include <cstdlib>
#include <cstring>

using namespace kmtest;

namespace
{

HWND EditOf(const CKmChild* child)
{
    return ::GetDlgItem(child->m_hWnd, IDC_EDIT);
}

// Puts text at the start, as the user's typing there would.
void InsertAtStart(const CKmChild* child, const char* text)
{
    ::SendMessageA(EditOf(child), EM_SETSEL, 0, 0);
    ::SendMessageA(EditOf(child), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
}

std::string Title(const CKmChild* child)
{
    CString text;
    child->GetTitle(text);
    return text.c_str();
}

// Names in the directory, such as the temporary files of a save.
// The files of the test, without the settings that every start reads.
std::vector<std::string> FilesIn(const std::string& dir)
{
    std::vector<std::string> names;
    WIN32_FIND_DATAA found;
    HANDLE search = ::FindFirstFileA((dir + "\\*").c_str(), &found);
    for (bool more = search != INVALID_HANDLE_VALUE; more; more = ::FindNextFileA(search, &found))
        if (found.cFileName[0] != '.' && strcmp(found.cFileName, "kelmar.ini") != 0)
            names.push_back(found.cFileName);
    ::FindClose(search);
    return names;
}

std::string Question(const std::string& what, const std::string& path)
{
    return what + " in the file:\n" + path + "\nOpen it anyway?";
}

class EditorTest : public FrameTest
{
  protected:
    void SetUp() override
    {
        FrameTest::SetUp();
        ASSERT_TRUE(Start());
    }

    CKmFileEdit* Open(const std::string& name, bool readOnly = false)
    {
        CKmChild* child = m_frame->OpenFile(Path(name).c_str(), readOnly, false);
        PumpUntilIdle();
        EXPECT_TRUE(!child || child->IsKindOf(RUNTIME_CLASS(CKmFileEdit)));
        return static_cast<CKmFileEdit*>(child);
    }
    CKmFileEdit* OpenWith(const std::string& name, const std::string& bytes)
    {
        Write(name, bytes);
        return Open(name);
    }
    void Save(CKmChild* child)
    {
        ::SendMessageA(child->m_hWnd, WM_COMMAND, ID_FILE_SAVE, 0);
        PumpUntilIdle();
    }
    void Close(HWND wnd)
    {
        ::SendMessageA(wnd, WM_CLOSE, 0, 0);
        PumpUntilIdle();
    }
};

// --- loading and saving

// Doubtful files are asked about, and taken as they stand on Yes.
TEST_F(EditorTest, FilesComeBackInTheirOwnFormByteForByte)
{
    std::string longUnix, longShown, control;
    for (int line = 0; line < 20000; ++line) {
        const std::string text = "line " + std::to_string(line) + " of a long file";
        longUnix += text + "\n";
        longShown += text + "\r\n";
    }
    const std::string line = "0123456789abcdefghijklmnopqrstuvwxyz0123456789\r\n"; // 48 bytes
    const std::string hundred = line + line + "abcd";
    while (control.size() < 300)
        control += "control bytes\r\n";
    std::string at255 = control;
    at255[255] = '\x01';
    const struct {
        const char* name;
        std::string disk, question, shown; // no question: opened at once
        FileFormat format;
        const char* typed;
        std::string saved;
    } rows[] = {
        {"dos.c", "int a;\r\nint b;\r\n", "", "int a;\r\nint b;\r\n", FF_DOS, "x\r\n",
         "x\r\nint a;\r\nint b;\r\n"},
        {"unix.c", "int a;\nint b;\n", "", "int a;\r\nint b;\r\n", FF_UNIX, "x\r\ny ",
         "x\ny int a;\nint b;\n"},
        {"mac.c", "int a;\rint b;\r", "", "int a;\r\nint b;\r\n", FF_MAC, "x\r\n",
         "x\rint a;\rint b;\r"},
        {"empty.c", "", "", "", FF_DOS, "a\r\nb", "a\r\nb"},
        {"long.txt", longUnix, "", longShown, FF_UNIX, "first\r\n", "first\n" + longUnix},
        {"mixed.txt", "a\nb\r\nc\n", "Invalid line terminators", "a\nb\r\nc\n", FF_DOS, "x",
         "xa\nb\r\nc\n"},
        {"zero.txt", hundred + '\0' + "tail\r\n", "Non-ANSI character (0x0)", hundred, FF_DOS, "x",
         "x" + hundred},
        {"at255.txt", at255, "Non-ANSI character (0x1)", at255, FF_DOS, "x", "x" + at255},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Write(row.name, row.disk);
        m_boxes.Clear();
        if (!row.question.empty()) {
            m_boxes.Queue({IDNO});
            EXPECT_EQ(nullptr, Open(row.name));
            EXPECT_TRUE(Children().empty());
            ASSERT_EQ(1u, m_boxes.Boxes().size());
            EXPECT_EQ(Question(row.question, FullLower(row.name)), m_boxes.Boxes()[0].text);
            EXPECT_EQ("YN", m_boxes.Boxes()[0].buttons);
            m_boxes.Queue({IDYES});
        }
        CKmFileEdit* edit = Open(row.name);
        ASSERT_NE(nullptr, edit);
        EXPECT_EQ(row.question.empty() ? 0u : 2u, m_boxes.Boxes().size());
        EXPECT_EQ(row.format, edit->m_format);
        EXPECT_EQ(row.shown, WindowText(EditOf(edit)));
        EXPECT_EQ(row.shown, EditBlock(EditOf(edit)));
        EXPECT_FALSE(edit->m_flags & CF_MODIFIED);
        InsertAtStart(edit, row.typed);
        EXPECT_TRUE(edit->m_flags & CF_MODIFIED);
        Save(edit);
        EXPECT_EQ(row.saved, Read(row.name));
        EXPECT_FALSE(edit->m_flags & CF_MODIFIED);
        EXPECT_EQ(row.format, edit->m_format);
        Close(edit->m_hWnd);
    }
}

// --- questions

TEST_F(EditorTest, MissingFileIsCreatedOnlyOnYesAndReportedWhenReadOnly)
{
    m_boxes.Queue({IDOK});
    EXPECT_EQ(nullptr, Open("absent.txt", true));
    EXPECT_EQ(std::vector<std::string>{"Error accessing '" + Path("absent.txt") +
                                       "'\nThe file could not be located"},
              m_boxes.Texts());
    m_boxes.Clear();
    m_boxes.Queue({IDNO});
    EXPECT_EQ(nullptr, Open("New.txt"));
    EXPECT_FALSE(Exists(Path("New.txt")));
    EXPECT_EQ(std::vector<std::string>{"OK to create new\n'" + Path("New.txt") + "'"},
              m_boxes.Texts());
    EXPECT_EQ("YN", m_boxes.Boxes()[0].buttons);

    m_boxes.Queue({IDYES});
    CKmFileEdit* edit = Open("New.txt");
    ASSERT_NE(nullptr, edit);
    EXPECT_EQ("", Read("New.txt"));
    EXPECT_EQ(FullLower("New.txt"), WindowText(edit->m_hWnd));
    EXPECT_EQ(1u, Children().size());
}

TEST_F(EditorTest, CloseOfAModifiedWindowAsksToSave)
{
    HWND quiet = OpenWith("quiet.c", "x\r\n")->m_hWnd;
    Close(quiet); // unmodified: no question
    EXPECT_FALSE(::IsWindow(quiet));
    const struct {
        int answer;
        bool closes;
        const char* saved;
    } rows[] = {
        {IDCANCEL, false, "old\r\n"}, {IDNO, true, "old\r\n"}, {IDYES, true, "new old\r\n"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.answer);
        CKmFileEdit* edit = OpenWith("close.c", "old\r\n");
        ASSERT_NE(nullptr, edit);
        const HWND wnd = edit->m_hWnd;
        InsertAtStart(edit, "new ");
        m_boxes.Clear();
        m_boxes.Queue({row.answer});
        Close(wnd);
        EXPECT_EQ(row.closes, !::IsWindow(wnd));
        ASSERT_EQ(1u, m_boxes.Boxes().size());
        EXPECT_EQ("Save changes to '" + FullLower("close.c") + "'\nbefore closing?",
                  m_boxes.Boxes()[0].text);
        EXPECT_EQ("CYN", m_boxes.Boxes()[0].buttons);
        EXPECT_EQ(row.saved, Read("close.c"));
        if (!row.closes) {
            EXPECT_TRUE(edit->m_flags & CF_MODIFIED);
            EXPECT_EQ("new old\r\n", WindowText(EditOf(edit)));
            edit->m_flags &= ~CF_MODIFIED;
            Close(wnd);
        }
    }
}

// Save All then saves them without a question, and the frame closes without one.
TEST_F(EditorTest, FrameCloseAsksFrontWindowFirstAndAnyRefusalKeepsEveryWindow)
{
    CKmFileEdit* first = OpenWith("first.c", "1\r\n");
    CKmFileEdit* second = OpenWith("second.c", "2\n");
    ASSERT_TRUE(first && second);
    InsertAtStart(first, "a");
    InsertAtStart(second, "b");
    m_boxes.Queue({IDNO, IDCANCEL}); // No to the front window, Cancel to the next
    ::SendMessageA(m_frameWnd, WM_CLOSE, 0, 0);
    PumpUntilIdle();
    ASSERT_TRUE(::IsWindow(m_frameWnd));
    EXPECT_EQ(m_frame, theApp.m_pMainWnd);
    EXPECT_EQ(2u, Children().size());
    ASSERT_EQ(2u, m_boxes.Boxes().size());
    EXPECT_NE(std::string::npos, m_boxes.Boxes()[0].text.find("second.c"));
    EXPECT_NE(std::string::npos, m_boxes.Boxes()[1].text.find("first.c"));
    EXPECT_TRUE(first->m_flags & second->m_flags & CF_MODIFIED);
    EXPECT_EQ("1\r\n", Read("first.c"));
    EXPECT_EQ("2\n", Read("second.c"));
    m_boxes.Clear();
    Command(ID_FILE_SAVEALL);
    EXPECT_EQ("a1\r\n", Read("first.c"));
    EXPECT_EQ("b2\n", Read("second.c"));
    EXPECT_FALSE((first->m_flags | second->m_flags) & CF_MODIFIED);
    EXPECT_TRUE(CloseFrame());
    EXPECT_TRUE(m_boxes.Boxes().empty());
}

// --- saves that fail, and what a save keeps

TEST_F(EditorTest, SaveOverAFileHeldOpenLeavesItWholeAndGoesThroughLater)
{
    for (bool backup : {false, true}) {
        SCOPED_TRACE(backup);
        theApp.flags = backup ? theApp.flags | KF_BACKUP : theApp.flags & ~KF_BACKUP;
        // Another program reads the file and lets others read it, nothing more.
        Write("held.c", "line one\nline two\n");
        HANDLE holder = ::CreateFileA(Path("held.c").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                      nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(INVALID_HANDLE_VALUE, holder);
        CKmFileEdit* edit = Open("held.c");
        ASSERT_NE(nullptr, edit);
        InsertAtStart(edit, "changed ");
        m_boxes.Clear();
        m_boxes.Queue({IDOK});
        Save(edit);
        ::CloseHandle(holder);
        ASSERT_EQ(1u, m_boxes.Boxes().size()); // backup included, one report
        EXPECT_EQ("Error accessing '" + FullLower("held.c") +
                      "'\nSHARE.EXE not loaded or shared region is locked",
                  m_boxes.Boxes()[0].text);
        EXPECT_EQ("line one\nline two\n", Read("held.c"));
        EXPECT_TRUE(edit->m_flags & CF_MODIFIED);
        EXPECT_EQ(std::vector<std::string>{"held.c"}, FilesIn(m_dir));

        Save(edit); // once the other program lets go; the backup only when asked for
        EXPECT_EQ(1u, m_boxes.Boxes().size());
        EXPECT_EQ("changed line one\nline two\n", Read("held.c"));
        EXPECT_EQ(backup ? "line one\nline two\n" : "<missing>", Read("held.BAK"));
        EXPECT_FALSE(edit->m_flags & CF_MODIFIED);
        Close(edit->m_hWnd);
        ::DeleteFileA(Path("held.BAK").c_str());
        EXPECT_EQ(std::vector<std::string>{"held.c"}, FilesIn(m_dir)); // no temporary left
    }
}

// The creation time is checked where the file system keeps one that can be
// set at all.
TEST_F(EditorTest, SaveWritesOnlyAModifiedWindowAndKeepsAttributesAndCreationTime)
{
    Write("clean.c", "clean\n");
    const DWORD kept = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN;
    HANDLE file = ::CreateFileA(Path("clean.c").c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr,
                                OPEN_EXISTING, 0, nullptr);
    const FILETIME born = {0x2F2A8000, 0x01C06F82}, old = {0, 0x01C0A000}; // far from now
    ::SetFileTime(file, &born, nullptr, &old);
    ::CloseHandle(file);
    ASSERT_TRUE(::SetFileAttributesA(Path("clean.c").c_str(), kept));
    WIN32_FILE_ATTRIBUTE_DATA data;
    ASSERT_TRUE(::GetFileAttributesExA(Path("clean.c").c_str(), GetFileExInfoStandard, &data));
    const bool keepsCreation = ::CompareFileTime(&data.ftCreationTime, &born) == 0;
    CKmFileEdit* edit = Open("clean.c");
    ASSERT_NE(nullptr, edit);
    for (const char* typed : {"", "un"}) { // nothing typed: Ctrl+S writes nothing
        if (*typed)
            InsertAtStart(edit, typed);
        Command(ID_FILE_SAVE);
        ASSERT_TRUE(::GetFileAttributesExA(Path("clean.c").c_str(), GetFileExInfoStandard, &data));
        EXPECT_EQ(*typed == 0, ::CompareFileTime(&data.ftLastWriteTime, &old) == 0);
    }
    EXPECT_EQ("unclean\n", Read("clean.c"));
    EXPECT_EQ(kept, data.dwFileAttributes & 0x3F);
    EXPECT_TRUE(!keepsCreation || ::CompareFileTime(&data.ftCreationTime, &born) == 0);
    EXPECT_EQ(std::vector<std::string>{"clean.c"}, FilesIn(m_dir));
}

// --- windows and titles

TEST_F(EditorTest, OpeningTheSamePathAgainGivesTheSameWindow)
{
    CKmFileEdit* edit = OpenWith("Same.C", "x\r\n");
    ASSERT_NE(nullptr, edit);
    InsertAtStart(edit, "unsaved ");
    EXPECT_EQ(edit, m_frame->OpenFile("same.c", false, false));
    EXPECT_EQ(edit, m_frame->OpenFile(FullLower("SAME.c").c_str(), false, false));
    EXPECT_EQ(edit, m_frame->OpenFile(Path("same.c").c_str(), true, false)); // read-only too
    PumpUntilIdle();
    EXPECT_EQ(1u, Children().size());
    EXPECT_EQ("unsaved x\r\n", WindowText(EditOf(edit))); // not loaded anew

    // A hex view of it asks first; Cancel keeps the editor as it is.
    m_boxes.Queue({IDCANCEL});
    EXPECT_EQ(nullptr, m_frame->OpenFile(Path("same.c").c_str(), true, true));
    PumpUntilIdle();
    EXPECT_EQ(
        std::vector<std::string>{"Save changes to '" + FullLower("same.c") + "'\nbefore closing?"},
        m_boxes.Texts());
    EXPECT_EQ(1u, Children().size());
    EXPECT_TRUE(edit->m_flags & CF_MODIFIED);
    edit->m_flags &= ~CF_MODIFIED;
}

TEST_F(EditorTest, CaptionIsTheLowerCaseFullPathAndAnIconBreaksItAtTheLastBackslash)
{
    ASSERT_TRUE(::CreateDirectoryA(Path("My Dir").c_str(), nullptr));
    for (const char* name : {"MixedCaseZ.TXT", "My Dir\\a b.c"}) {
        SCOPED_TRACE(name);
        const std::string path = FullLower(name);
        CKmFileEdit* edit = OpenWith(name, "x\r\n");
        ASSERT_NE(nullptr, edit);
        EXPECT_EQ(path, WindowText(edit->m_hWnd));
        EXPECT_EQ(edit, m_frame->FindChildByPath(path.c_str()));
        EXPECT_EQ(nullptr, m_frame->FindChildByPath(Path(name).c_str()));
        // Restored after a minimise, only the blank the icon took goes back:
        // a window that never was an icon keeps the blanks of its path.
        for (WPARAM size : {SC_MAXIMIZE, SC_RESTORE, SC_MINIMIZE, SC_RESTORE}) {
            ::SendMessageA(edit->m_hWnd, WM_SYSCOMMAND, size, 0);
            PumpUntilIdle();
            std::string shown = path;
            if (::IsIconic(edit->m_hWnd))
                shown[shown.rfind('\\')] = ' ';
            EXPECT_EQ(shown, WindowText(edit->m_hWnd));
            EXPECT_EQ(path, Title(edit));
            EXPECT_EQ(edit, m_frame->FindChildByPath(path.c_str()));
        }
        InsertAtStart(edit, "y");
        Save(edit);
        EXPECT_EQ("yx\r\n", Read(name));
    }
}

// The test run makes KM_LOCKED_DIR a directory that takes no new file but
// holds a writable one, locked.c; the save then writes the file in place.
TEST_F(EditorTest, DirectoryThatRefusesNewFilesSavesInPlace)
{
    const char* unixDir = std::getenv("KM_LOCKED_DIR");
    if (!unixDir)
        GTEST_SKIP() << "KM_LOCKED_DIR is not set";
    std::string dir = std::string("Z:") + unixDir;
    for (char& ch : dir)
        ch = ch == '/' ? '\\' : ch;
    HANDLE probe = ::CreateFileA((dir + "\\probe.c").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                 FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (probe != INVALID_HANDLE_VALUE) {
        ::CloseHandle(probe);
        GTEST_SKIP() << "the directory could not be locked here";
    }
    CKmChild* child = m_frame->OpenFile((dir + "\\locked.c").c_str(), false, false);
    PumpUntilIdle();
    ASSERT_NE(nullptr, child);
    InsertAtStart(child, "saved ");
    Save(child);
    EXPECT_EQ("saved locked\r\n", ReadFileBytes(dir + "\\locked.c"));
    EXPECT_FALSE(child->m_flags & CF_MODIFIED);
    EXPECT_EQ(std::vector<std::string>{"locked.c"}, FilesIn(dir));
}

} // namespace
