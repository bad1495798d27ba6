// Manage Files: its refusals, the questions on failures and what reaches
// the disk, one action after another in one directory.
#include "app/KmFrame.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"
#include "tools/FileManagerDialog.h"

#include <cstring>

namespace
{

using ManageFiles = kmtest::FrameTest;

FILETIME Modified(const std::string& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    ::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data);
    return data.ftLastWriteTime;
}

TEST_F(ManageFiles, RefusalsAndQuestions)
{
    const FILETIME old = {0, 0x01C00000}; // in 1997
    for (const char* name : {"a.txt", "b.txt", "h.txt", "q.txt", "r.txt", "z.txt"})
        Write(name, name);
    for (const char* name : {"q.txt", "r.txt"}) {
        HANDLE file =
            ::CreateFileA(Path(name).c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        ::SetFileTime(file, nullptr, nullptr, &old);
        ::CloseHandle(file);
    }
    ::SetFileAttributesA(Path("h.txt").c_str(), FILE_ATTRIBUTE_HIDDEN);
    ::SetFileAttributesA(Path("r.txt").c_str(), FILE_ATTRIBUTE_READONLY);
    ASSERT_TRUE(Start());
    Command(ID_FILE_MANAGE);
    ASSERT_NE(nullptr, m_frame->m_pFileManager);
    const HWND dialog = static_cast<CFileManagerDialog*>(m_frame->m_pFileManager)->m_hWnd;
    const std::string here = "Working Directory:";
    const struct {
        const char* files;
        int button;
        const char* to;                 // the target typed in Copy and Rename
        int answer;                     // of the first box after the action's dialog
        std::vector<std::string> texts; // of the boxes after the action's dialog
        const char* after;              // the contents of a.txt b.txt h.txt a.bak q.bak
    } rows[] = {
        {"a.txt",
         IDC_FM_COPY,
         "A.TXT",
         IDOK,
         {"Cannot copy/rename to itself\n'" + FullLower("a.txt") + "'"},
         "a.txt b.txt h.txt <missing> <missing>"},
        {"b.txt h.txt z.txt",
         IDC_FM_DELETE,
         nullptr,
         IDOK,
         {"Invalid operation for path\n'" + Path("h.txt") + "'"},
         "a.txt <missing> h.txt <missing> <missing>"},
        {"q.txt r.txt",
         IDC_FM_TOUCH,
         nullptr,
         IDCANCEL,
         {"Error accessing '" + FullLower("r.txt") + "'\nThe file could not be located"},
         "a.txt <missing> h.txt <missing> <missing>"},
        {"a.txt q.txt",
         IDC_FM_COPY,
         "z.txt",
         IDOK,
         {"Cannot copy/rename multiple files to\n'z.txt'"},
         "a.txt <missing> h.txt <missing> <missing>"},
        {"a.txt q.txt", IDC_FM_COPY, "*.bak", IDOK, {}, "a.txt <missing> h.txt a.txt q.txt"},
        {"a.bak",
         IDC_FM_RENAME,
         "q.bak",
         IDYES,
         {"OK to replace existing\n'" + FullLower("q.bak") + "'"},
         "a.txt <missing> h.txt <missing> a.txt"},
    };
    for (const auto& row : rows) {
        m_boxes.Clear();
        const char* to = row.to;
        m_boxes.Queue(IDOK, [to](HWND box) {
            if (to)
                ::SetDlgItemTextA(box, IDC_CR_TO, to);
        });
        m_boxes.Queue({row.answer});
        ::SetDlgItemTextA(dialog, IDC_FM_FILES, row.files);
        ::SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(row.button, BN_CLICKED),
                       reinterpret_cast<LPARAM>(::GetDlgItem(dialog, row.button)));
        kmtest::PumpUntilIdle();
        std::vector<std::string> texts = m_boxes.Texts();
        ASSERT_FALSE(texts.empty()) << row.files;
        EXPECT_EQ(here, texts.front()) << row.files;
        char title[16] = "";
        ::GetDlgItemTextA(dialog, row.button, title, sizeof title);
        EXPECT_EQ(std::strtok(title + 1, "."), m_boxes.Boxes().front().caption);
        EXPECT_EQ(row.texts, std::vector<std::string>(texts.begin() + 1, texts.end())) << row.files;
        std::string after;
        for (const char* name : {"a.txt", "b.txt", "h.txt", "a.bak", "q.bak"})
            after += (after.empty() ? "" : " ") + Read(name);
        EXPECT_EQ(row.after, after) << row.files;
    }
    const FILETIME touched = Modified(Path("q.txt")), readOnly = Modified(Path("r.txt"));
    const FILETIME source = Modified(Path("a.txt")), copy = Modified(Path("q.bak"));
    EXPECT_GT(::CompareFileTime(&touched, &old), 0);
    EXPECT_EQ(0, ::CompareFileTime(&readOnly, &old));
    EXPECT_EQ(0, ::CompareFileTime(&source, &copy));
    ::SetDlgItemTextA(dialog, IDC_FM_FILES, "");
    EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(dialog, IDC_FM_TOUCH)));
    ::SendMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    kmtest::PumpUntilIdle();
    EXPECT_EQ(nullptr, m_frame->m_pFileManager);
}

} // namespace
