// The file helpers on the real file system, and the messages and file-error
// reports through real message boxes.
#include "edit/FileUtil.h"
#include "edit/Messages.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

#include <cstring>

using namespace kmtest;

namespace
{

class FileUtilTest : public FrameTest
{
  protected:
    std::string LowerPath(const std::string& name) const { return Lower(Path(name)); }
};

TEST(SplitDir, CutsAtTheLastBackslashOrLeavesTheOutputAlone)
{
    const struct {
        const char* path;
        bool split;
        const char* dir;
    } rows[] = {
        {"C:\\Dir\\Sub\\Name.C", true, "c:\\dir\\sub"},
        {"c:\\name.c", true, "c:\\"},
        {"C:name.c", true, "c:"},
        {"dir\\name.c", true, "dir"},
        {"\\name.c", true, "\\"},
        {"name.c", false, "unchanged"},
        {"", false, "unchanged"},
    };
    for (const auto& row : rows) {
        CString dir("unchanged");
        EXPECT_EQ(row.split, SplitDir(row.path, dir)) << row.path;
        EXPECT_STREQ(row.dir, dir) << row.path;
    }
}

TEST(PathRelativeTo, StripsTheDirectoryAndItsBackslashOnly)
{
    const char* rows[][3] = {
        {"c:\\ab\\x.c", "c:\\ab", "x.c"},
        {"c:\\ab\\x.c", "c:", "ab\\x.c"},
        {"c:\\abc\\x.c", "c:\\ab", "c:\\abc\\x.c"},
        {"C:\\AB\\x.c", "c:\\ab", "C:\\AB\\x.c"},
        {"c:\\ab", "c:\\ab", "c:\\ab"},
    };
    for (const auto& row : rows)
        EXPECT_STREQ(row[2], PathRelativeTo(row[0], row[1])) << row[0] << " " << row[1];
}

TEST_F(FileUtilTest, StatusOfFilesDirectoriesRootsAndMissingNames)
{
    Write("Data.Txt", "hello");
    ASSERT_TRUE(::CreateDirectoryA(Path("Sub").c_str(), nullptr));
    FileStatus status;
    ASSERT_TRUE(GetFileStatus(Path("data.txt").c_str(), status));
    EXPECT_EQ(5u, status.size);
    EXPECT_EQ(0, status.attribute & (FILE_ATTRIBUTE_DIRECTORY | ~63));
    EXPECT_GT(status.modified, 1000000000);
    EXPECT_GT(status.created, 1000000000);
    EXPECT_EQ(LowerPath("data.txt"), Lower(status.fullName));

    ASSERT_TRUE(GetFileStatus("sub", status)); // relative to the current directory
    EXPECT_NE(0, status.attribute & FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(LowerPath("sub"), Lower(status.fullName));

    EXPECT_FALSE(GetFileStatus(Path("missing.c").c_str(), status));
    EXPECT_EQ(LowerPath("missing.c"), Lower(status.fullName)); // the full name all the same

    const FileStatus before = status;
    EXPECT_FALSE(GetFileStatus("c:\\*.c", status)); // a pattern is never a file
    EXPECT_FALSE(GetFileStatus("c:\\windows\\?", status));
    EXPECT_EQ(0, memcmp(&before, &status, sizeof status));

    // Roots have no times and no size.
    for (const char* root : {"c:\\", "c:"}) { // "c:" is drive C's current directory, here its root
        SCOPED_TRACE(root);
        ASSERT_TRUE(ChangeDir("c:\\"));
        memset(&status, 0x5A, sizeof status);
        ASSERT_TRUE(GetFileStatus(root, status));
        EXPECT_EQ(0u, status.size);
        EXPECT_EQ(0, status.created);
        EXPECT_EQ(0, status.modified);
        EXPECT_EQ(0, status.accessed);
        EXPECT_NE(0, status.attribute & FILE_ATTRIBUTE_DIRECTORY);
        EXPECT_EQ("c:\\", Lower(status.fullName));
    }
}

TEST_F(FileUtilTest, NamesBeyondAsciiSurviveTheOemRoundTrip)
{
    const std::string dir = Path("d\xE4t\xE9");
    ASSERT_TRUE(MakeDir(dir.c_str()));
    ASSERT_TRUE(Exists(dir)); // found under its ANSI name
    WriteFileBytes(dir + "\\f\xF6.c", "x");
    FileStatus status;
    ASSERT_TRUE(GetFileStatus((dir + "\\f\xF6.c").c_str(), status));
    EXPECT_EQ(Lower(dir + "\\f\xF6.c"), Lower(status.fullName));

    ASSERT_TRUE(ChangeDir(dir.c_str()));
    CString current, full;
    GetCurrentDir(current);
    CString expected(dir.c_str());
    ::CharLowerA(expected.GetBuffer(0));
    EXPECT_STREQ(expected, current);
    ASSERT_TRUE(GetFullPath("F\xD6.C", full));
    EXPECT_EQ(std::string(expected) + "\\f\xD6.c", std::string(full)); // as the name was given
}

TEST_F(FileUtilTest, CurrentDirectoryFollowsChangeDirAndFullPathsAreLowerCase)
{
    ASSERT_TRUE(::CreateDirectoryA(Path("Sub").c_str(), nullptr));
    CString current, full;
    const struct {
        std::string to;
        bool changes;
        std::string current;
    } rows[] = {
        {Path("Sub"), true, LowerPath("sub")},
        {Path("nothere"), false, LowerPath("sub")},
        {"z:\\", true, "z:\\"},
        {Path("Sub"), true, LowerPath("sub")},
        {"q:\\", false, LowerPath("sub")},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.changes, ChangeDir(row.to.c_str())) << row.to;
        GetCurrentDir(current);
        EXPECT_EQ(row.current, std::string(current)) << row.to;
    }
    ASSERT_TRUE(GetFullPath("..\\X.C", full));
    EXPECT_EQ(LowerPath("x.c"), std::string(full));
}

// The extension replaces the last three characters of the name; the file
// made keeps its .tmp name.
TEST_F(FileUtilTest, TemporaryNamesAreMadeInTheTemporaryDirectory)
{
    char tempDir[MAX_PATH];
    ::GetTempPathA(MAX_PATH, tempDir);
    for (const char* extension : {static_cast<const char*>(nullptr), "c"}) {
        CString name;
        ASSERT_TRUE(MakeTempName(extension, name));
        const std::string lower = Lower(name.c_str()), stem = lower.substr(0, lower.rfind('.'));
        EXPECT_EQ(0u, lower.find(Lower(tempDir) + "kmt")) << lower;
        EXPECT_EQ(std::string(".") + (extension ? extension : "tmp"), lower.substr(stem.size()));
        EXPECT_EQ(!extension, Exists(lower));
        EXPECT_TRUE(::DeleteFileA((stem + ".tmp").c_str())) << lower;
    }
}

TEST_F(FileUtilTest, BackupReplacesTheExtensionFromTheLastDot)
{
    ASSERT_EQ(std::string::npos, m_dir.find('.')) << "the test needs a dotless directory";
    ASSERT_TRUE(::CreateDirectoryA(Path("src.old").c_str(), nullptr));
    Write("prog.BAK", "older");
    const struct {
        const char* file;
        const char* backup;
    } rows[] = {
        {"prog.c", "prog.BAK"},
        {"makefile", "makefile.BAK"},
        {"src.old\\makefile", "src.BAK"}, // moves up into the parent as src.BAK
        {"prog.tar.gz", "prog.tar.BAK"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.file);
        Write(row.file, row.file);
        ASSERT_TRUE(MakeBackup(Path(row.file).c_str()));
        EXPECT_FALSE(Exists(Path(row.file)));
        EXPECT_EQ(row.file, Read(row.backup));
    }
    EXPECT_TRUE(MakeBackup(Path("nothing.c").c_str())); // a missing file is no failure
    EXPECT_FALSE(Exists(Path("nothing.BAK")));
}

// --- messages and reports

// The cause selects the second line of a report.
TEST_F(FileUtilTest, MessagesFormatTheirStringAndGiveTheButton)
{
    m_boxes.Queue({IDNO, IDYES, IDOK, IDCANCEL});
    EXPECT_EQ(IDNO, KmMessageBox(nullptr, MB_YESNO | MB_ICONQUESTION, IDS_CREATENEW, "c:\\new.c"));
    EXPECT_EQ(IDYES, KmMessageBox(nullptr, MB_YESNO, IDS_NONANSI, 0, "c:\\a.c"));
    EXPECT_EQ(IDOK, KmMessageBox(nullptr, MB_ICONEXCLAMATION, 9999u, "ignored")); // no such string
    EXPECT_EQ(IDCANCEL, ReportFileCause("c:\\x.c", CFileException::badPath, MB_OKCANCEL));
    EXPECT_EQ("Kelmar", m_boxes.Boxes()[0].caption);
    EXPECT_EQ("OC", m_boxes.Boxes()[3].buttons);
    std::vector<std::string> expected = {
        "OK to create new\n'c:\\new.c'",
        "Non-ANSI character (0x0) in the file:\nc:\\a.c\nOpen it anyway?", "*9999*",
        "Error accessing 'c:\\x.c'\nAll or part of the path is invalid"};
    const std::pair<int, const char*> rows[] = {
        {CFileException::fileNotFound, "The file could not be located"},
        {CFileException::accessDenied, "Access denied to this file"},
        {CFileException::diskFull, "The disk is full"},
        {CFileException::removeCurrentDir, "An unspecified error occurred"}, // no row of its own
        {99, "An unspecified error occurred"},
    };
    for (const auto& [cause, line] : rows) {
        m_boxes.Queue({IDOK});
        ReportFileError("c:\\x.c", CFileException(cause), MB_ICONEXCLAMATION);
        expected.push_back(std::string("Error accessing 'c:\\x.c'\n") + line);
    }
    EXPECT_EQ(expected, m_boxes.Texts());
}

TEST_F(FileUtilTest, WriteStringFileAndRemoveFileAndTheirFailuresReportedWithThePath)
{
    ASSERT_TRUE(WriteStringFile(Path("out.txt").c_str(), "first line\r\nsecond"));
    ASSERT_TRUE(WriteStringFile(Path("out.txt").c_str(), "x")); // truncated
    EXPECT_EQ("x", Read("out.txt"));
    EXPECT_TRUE(RemoveFile(Path("out.txt").c_str()));
    EXPECT_FALSE(Exists(Path("out.txt")));

    Write("keep.txt", "keep");
    ASSERT_TRUE(MakeDir(Path("keep.BAK").c_str())); // a full directory where the backup goes
    Write("keep.BAK\\inside", "x");
    m_boxes.Queue({IDOK, IDOK, IDOK});
    EXPECT_FALSE(WriteStringFile(Path("nodir\\out.txt").c_str(), "x"));
    EXPECT_FALSE(RemoveFile(Path("gone.txt").c_str()));
    EXPECT_FALSE(MakeBackup(Path("keep.txt").c_str()));
    ASSERT_EQ(3u, m_boxes.Boxes().size());
    EXPECT_EQ("Error accessing '" + Path("nodir\\out.txt") +
                  "'\nAll or part of the path is invalid",
              m_boxes.Boxes()[0].text);
    EXPECT_EQ("Error accessing '" + Path("gone.txt") + "'\nThe file could not be located",
              m_boxes.Boxes()[1].text);
    EXPECT_EQ(0u, Lower(m_boxes.Boxes()[2].text).find("error accessing '" + LowerPath("keep.txt")));
    EXPECT_EQ("keep", Read("keep.txt"));
}

} // namespace
