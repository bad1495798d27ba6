#include "edit/FileUtil.h"

#include "framework/File.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

using kmtest::FreshTempDir;
using kmtest::RemoveTree;

namespace
{

std::string ReadAll(const std::string& path)
{
    CFile file(path.c_str(), CFile::modeRead);
    std::string text(static_cast<size_t>(file.GetLength()), '\0');
    if (!text.empty())
        file.Read(&text[0], static_cast<unsigned>(text.size()));
    return text;
}

void WriteAll(const std::string& path, const std::string& text)
{
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
    file.Write(text.data(), static_cast<unsigned>(text.size()));
    file.Close();
}

bool Exists(const std::string& path)
{
    return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}


// A fresh directory of its own under the temporary directory, removed
// again with the current directory restored.
class FileUtilTest : public ::testing::Test
{
  protected:
    void SetUp() override
    {
        char buffer[MAX_PATH];
        ::GetCurrentDirectoryA(MAX_PATH, buffer);
        m_savedDir = buffer;
        m_dir = FreshTempDir("kmfileutil");
        ASSERT_FALSE(m_dir.empty());
    }
    void TearDown() override
    {
        ::SetCurrentDirectoryA(m_savedDir.c_str());
        RemoveTree(m_dir);
    }
    std::string Path(const char* name) const { return m_dir + "\\" + name; }
    static std::string Lower(std::string text)
    {
        for (char& ch : text)
            if (ch >= 'A' && ch <= 'Z')
                ch = static_cast<char>(ch + 32);
        return text;
    }

    std::string m_savedDir;
    std::string m_dir;
};

TEST(SplitDir, CutsAtTheLastBackslash)
{
    CString dir;
    EXPECT_TRUE(SplitDir("C:\\Dir\\Sub\\Name.C", dir));
    EXPECT_STREQ("c:\\dir\\sub", dir);
    EXPECT_TRUE(SplitDir("c:\\name.c", dir));
    EXPECT_STREQ("c:\\", dir);
    EXPECT_TRUE(SplitDir("C:name.c", dir));
    EXPECT_STREQ("c:", dir);
    EXPECT_TRUE(SplitDir("dir\\name.c", dir));
    EXPECT_STREQ("dir", dir);
    EXPECT_TRUE(SplitDir("\\name.c", dir));
    EXPECT_STREQ("\\", dir);
}

TEST(SplitDir, BareNameLeavesTheOutputAlone)
{
    CString dir("unchanged");
    EXPECT_FALSE(SplitDir("name.c", dir));
    EXPECT_FALSE(SplitDir("", dir));
    EXPECT_STREQ("unchanged", dir);
}

TEST(PathRelativeTo, StripsTheDirectoryAndItsBackslashOnly)
{
    const char* path = "c:\\ab\\x.c";
    EXPECT_STREQ("x.c", PathRelativeTo(path, "c:\\ab"));
    EXPECT_STREQ("ab\\x.c", PathRelativeTo(path, "c:"));
    const char* longer = "c:\\abc\\x.c";
    EXPECT_EQ(longer, PathRelativeTo(longer, "c:\\ab"));
    const char* upper = "C:\\AB\\x.c";
    EXPECT_EQ(upper, PathRelativeTo(upper, "c:\\ab"));
    const char* same = "c:\\ab";
    EXPECT_EQ(same, PathRelativeTo(same, "c:\\ab"));
}

TEST_F(FileUtilTest, StatusOfAFile)
{
    WriteAll(Path("Data.Txt"), "hello");
    FileStatus status;
    ASSERT_TRUE(GetFileStatus(Path("data.txt").c_str(), status));
    EXPECT_EQ(5u, status.size);
    EXPECT_EQ(0, status.attribute & FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(0, status.attribute & ~63);
    EXPECT_GT(status.modified, 1000000000);
    EXPECT_GT(status.created, 1000000000);
    EXPECT_STREQ(Lower(Path("data.txt")).c_str(), Lower(status.fullName).c_str());
}

TEST_F(FileUtilTest, StatusOfADirectoryAndARelativeName)
{
    ASSERT_TRUE(::CreateDirectoryA(Path("Sub").c_str(), nullptr));
    ASSERT_TRUE(ChangeDir(m_dir.c_str()));
    FileStatus status;
    ASSERT_TRUE(GetFileStatus("sub", status));
    EXPECT_NE(0, status.attribute & FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_STREQ(Lower(Path("sub")).c_str(), Lower(status.fullName).c_str());
}

TEST_F(FileUtilTest, MissingFileStillGivesTheFullName)
{
    FileStatus status;
    EXPECT_FALSE(GetFileStatus(Path("missing.c").c_str(), status));
    EXPECT_STREQ(Lower(Path("missing.c")).c_str(), Lower(status.fullName).c_str());
}

TEST_F(FileUtilTest, RootsHaveNoTimesAndNoSize)
{
    FileStatus status;
    memset(&status, 0x5A, sizeof status);
    ASSERT_TRUE(GetFileStatus("c:\\", status));
    EXPECT_EQ(0u, status.size);
    EXPECT_EQ(0, status.created);
    EXPECT_EQ(0, status.modified);
    EXPECT_EQ(0, status.accessed);
    EXPECT_NE(0, status.attribute & FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_STREQ("c:\\", Lower(status.fullName).c_str());

    // "c:" is the current directory of drive C, here its root.
    ASSERT_TRUE(ChangeDir("c:\\"));
    memset(&status, 0x5A, sizeof status);
    ASSERT_TRUE(GetFileStatus("c:", status));
    EXPECT_EQ(0u, status.size);
    EXPECT_EQ(0, status.created);
    EXPECT_EQ(0, status.modified);
    EXPECT_EQ(0, status.accessed);
}

TEST_F(FileUtilTest, PatternIsNeverAFile)
{
    FileStatus status;
    memset(&status, 0x5A, sizeof status);
    FileStatus before = status;
    EXPECT_FALSE(GetFileStatus("c:\\*.c", status));
    EXPECT_FALSE(GetFileStatus("c:\\windows\\?", status));
    EXPECT_EQ(0, memcmp(&before, &status, sizeof status));
}

TEST_F(FileUtilTest, NamesBeyondAsciiSurviveTheOemRoundTrip)
{
    const std::string dir = Path("d\xE4t\xE9");
    ASSERT_TRUE(MakeDir(dir.c_str()));
    ASSERT_TRUE(Exists(dir)); // found under its ANSI name
    WriteAll(dir + "\\f\xF6.c", "x");

    FileStatus status;
    ASSERT_TRUE(GetFileStatus((dir + "\\f\xF6.c").c_str(), status));
    EXPECT_STREQ(Lower(dir + "\\f\xF6.c").c_str(), Lower(status.fullName).c_str());

    ASSERT_TRUE(ChangeDir(dir.c_str()));
    CString current;
    GetCurrentDir(current);
    CString expected(dir.c_str());
    ::CharLowerA(expected.GetBuffer(0));
    EXPECT_STREQ(expected, current);

    CString full;
    ASSERT_TRUE(GetFullPath("F\xD6.C", full));
    EXPECT_STREQ((Lower(dir) + "\\f\xD6.c").c_str(), full);
}

TEST_F(FileUtilTest, CurrentDirectoryFollowsChangeDir)
{
    ASSERT_TRUE(::CreateDirectoryA(Path("Sub").c_str(), nullptr));
    ASSERT_TRUE(ChangeDir(Path("Sub").c_str()));
    CString current;
    GetCurrentDir(current);
    EXPECT_STREQ(Lower(Path("sub")).c_str(), current);

    EXPECT_FALSE(ChangeDir(Path("nothere").c_str()));
    GetCurrentDir(current);
    EXPECT_STREQ(Lower(Path("sub")).c_str(), current);

    ASSERT_TRUE(ChangeDir("z:\\"));
    GetCurrentDir(current);
    EXPECT_STREQ("z:\\", current);
    ASSERT_TRUE(ChangeDir(Path("Sub").c_str()));
    GetCurrentDir(current);
    EXPECT_STREQ(Lower(Path("sub")).c_str(), current);

    EXPECT_FALSE(ChangeDir("q:\\"));
}

TEST_F(FileUtilTest, FullPathIsLowerCase)
{
    ASSERT_TRUE(ChangeDir(m_dir.c_str()));
    CString full;
    ASSERT_TRUE(GetFullPath("Sub\\..\\X.C", full));
    EXPECT_STREQ(Lower(Path("x.c")).c_str(), full);
}

TEST_F(FileUtilTest, TemporaryNames)
{
    CString plain, withExtension;
    ASSERT_TRUE(MakeTempName(nullptr, plain));
    ASSERT_TRUE(MakeTempName("c", withExtension));
    char tempDir[MAX_PATH];
    ::GetTempPathA(MAX_PATH, tempDir);
    const std::string dir = Lower(tempDir);
    for (const char* name : {plain.c_str(), withExtension.c_str()}) {
        std::string lower = Lower(name);
        EXPECT_EQ(0u, lower.find(dir)) << name;
        EXPECT_EQ(dir.size(), lower.find("kmt", dir.size())) << name;
    }
    EXPECT_EQ(".tmp", Lower(plain.Right(4).c_str()));
    EXPECT_TRUE(Exists(plain.c_str()));
    // The extension replaces the last three characters; the created file
    // keeps its .tmp name.
    EXPECT_EQ(".c", std::string(withExtension.Right(2)));
    EXPECT_FALSE(Exists(withExtension.c_str()));
    std::string created = std::string(withExtension.Left(withExtension.GetLength() - 1)) + "tmp";
    EXPECT_TRUE(Exists(created));
    ::DeleteFileA(plain);
    ::DeleteFileA(created.c_str());
}

TEST_F(FileUtilTest, WriteStringFileCreatesAndTruncates)
{
    const std::string path = Path("out.txt");
    ASSERT_TRUE(WriteStringFile(path.c_str(), "first line\r\nsecond"));
    EXPECT_EQ("first line\r\nsecond", ReadAll(path));
    ASSERT_TRUE(WriteStringFile(path.c_str(), "x"));
    EXPECT_EQ("x", ReadAll(path));
}

TEST_F(FileUtilTest, RemoveFileDeletes)
{
    const std::string path = Path("gone.txt");
    WriteAll(path, "x");
    EXPECT_TRUE(RemoveFile(path.c_str()));
    EXPECT_FALSE(Exists(path));
}

TEST_F(FileUtilTest, BackupReplacesTheExtension)
{
    WriteAll(Path("prog.c"), "old");
    WriteAll(Path("prog.BAK"), "older");
    ASSERT_TRUE(MakeBackup(Path("prog.c").c_str()));
    EXPECT_FALSE(Exists(Path("prog.c")));
    EXPECT_EQ("old", ReadAll(Path("prog.BAK")));
}

TEST_F(FileUtilTest, BackupOfADotlessNameAppendsBak)
{
    ASSERT_EQ(std::string::npos, m_dir.find('.')) << "the test needs a dotless directory";
    WriteAll(Path("makefile"), "all:");
    ASSERT_TRUE(MakeBackup(Path("makefile").c_str()));
    EXPECT_FALSE(Exists(Path("makefile")));
    EXPECT_EQ("all:", ReadAll(Path("makefile.BAK")));
}

TEST_F(FileUtilTest, BackupInADottedDirectoryCutsAtItsDot)
{
    ASSERT_EQ(std::string::npos, m_dir.find('.')) << "the test needs a dotless directory";
    ASSERT_TRUE(::CreateDirectoryA(Path("src.old").c_str(), nullptr));
    WriteAll(Path("src.old\\makefile"), "all:");
    ASSERT_TRUE(MakeBackup(Path("src.old\\makefile").c_str()));
    // The file moves up into the parent directory as src.BAK.
    EXPECT_FALSE(Exists(Path("src.old\\makefile")));
    EXPECT_EQ("all:", ReadAll(Path("src.BAK")));
}

TEST_F(FileUtilTest, BackupOfAMissingFileIsNoFailure)
{
    EXPECT_TRUE(MakeBackup(Path("nothing.c").c_str()));
    EXPECT_FALSE(Exists(Path("nothing.BAK")));
}

TEST_F(FileUtilTest, SecondSaveLeavesThePreviousVersionInTheBackup)
{
    const std::string path = Path("notes.txt");
    WriteAll(path, "version 1");
    for (const char* next : {"version 2", "version 3"}) {
        ASSERT_TRUE(MakeBackup(path.c_str()));
        ASSERT_TRUE(WriteStringFile(path.c_str(), next));
    }
    EXPECT_EQ("version 2", ReadAll(Path("notes.BAK")));
    EXPECT_EQ("version 3", ReadAll(path));
}

} // namespace
