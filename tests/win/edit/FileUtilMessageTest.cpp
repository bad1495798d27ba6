// The messages of the file helpers, answered by a hook that presses the
// box's button and keeps its text.
#include "app/KmApp.h"
#include "edit/FileUtil.h"
#include "edit/Messages.h"

#include "framework/File.h"
#include "resources/KmIds.h"
#include "support/WinTestSupport.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using kmtest::MessageBoxAnswerer;

const UINT kMissingId = 9999; // no string has this number

std::string TempPath(const char* name)
{
    char dir[MAX_PATH];
    ::GetTempPathA(MAX_PATH, dir);
    return std::string(dir) + name;
}

TEST(KmMessageBox, FormatsTheStringAndGivesTheButton)
{
    MessageBoxAnswerer answerer;
    answerer.Answer(IDNO);
    EXPECT_EQ(IDNO, KmMessageBox(nullptr, MB_YESNO | MB_ICONQUESTION, IDS_CREATENEW, "c:\\new.c"));
    ASSERT_EQ(1u, answerer.Boxes().size());
    EXPECT_EQ("OK to create new\n'c:\\new.c'", answerer.Boxes()[0].text);
    EXPECT_EQ(theApp.m_pszAppName, answerer.Boxes()[0].caption);
    EXPECT_EQ("Kelmar", answerer.Boxes()[0].caption);
}

TEST(KmMessageBox, FormatsNumbersAsWvsprintfDoes)
{
    MessageBoxAnswerer answerer;
    answerer.Answer(IDYES);
    EXPECT_EQ(IDYES, KmMessageBox(nullptr, MB_YESNO, IDS_NONANSI, 0, "c:\\a.c"));
    ASSERT_EQ(1u, answerer.Boxes().size());
    EXPECT_EQ("Non-ANSI character (0x0) in the file:\nc:\\a.c\nOpen it anyway?",
              answerer.Boxes()[0].text);
}

TEST(KmMessageBox, MissingStringShowsItsNumber)
{
    MessageBoxAnswerer answerer;
    answerer.Answer(IDOK);
    EXPECT_EQ(IDOK, KmMessageBox(nullptr, MB_ICONEXCLAMATION, kMissingId, "ignored"));
    ASSERT_EQ(1u, answerer.Boxes().size());
    EXPECT_EQ("*9999*", answerer.Boxes()[0].text);
    EXPECT_EQ(0, answerer.Unexpected());
}

TEST(ReportFileError, CauseSelectsTheSecondLine)
{
    MessageBoxAnswerer answerer;
    answerer.Answer({IDOK, IDOK, IDOK, IDOK, IDOK});
    ReportFileError("c:\\x.c", CFileException(CFileException::fileNotFound), MB_ICONEXCLAMATION);
    ReportFileError("c:\\x.c", CFileException(CFileException::accessDenied), MB_ICONEXCLAMATION);
    ReportFileError("c:\\x.c", CFileException(CFileException::diskFull), MB_ICONEXCLAMATION);
    // Causes without a row of their own share the generic text.
    ReportFileError("c:\\x.c", CFileException(CFileException::removeCurrentDir),
                    MB_ICONEXCLAMATION);
    ReportFileError("c:\\x.c", CFileException(99), MB_ICONEXCLAMATION);
    ASSERT_EQ(5u, answerer.Boxes().size());
    EXPECT_EQ("Error accessing 'c:\\x.c'\nThe file could not be located", answerer.Boxes()[0].text);
    EXPECT_EQ("Error accessing 'c:\\x.c'\nAccess denied to this file", answerer.Boxes()[1].text);
    EXPECT_EQ("Error accessing 'c:\\x.c'\nThe disk is full", answerer.Boxes()[2].text);
    EXPECT_EQ("Error accessing 'c:\\x.c'\nAn unspecified error occurred", answerer.Boxes()[3].text);
    EXPECT_EQ("Error accessing 'c:\\x.c'\nAn unspecified error occurred", answerer.Boxes()[4].text);
}

TEST(ReportFileError, GivesTheButtonOfTheStyle)
{
    MessageBoxAnswerer answerer;
    answerer.Answer(IDCANCEL);
    EXPECT_EQ(IDCANCEL, ReportFileCause("c:\\y.c", CFileException::badPath, MB_OKCANCEL));
    ASSERT_EQ(1u, answerer.Boxes().size());
    EXPECT_EQ("Error accessing 'c:\\y.c'\nAll or part of the path is invalid",
              answerer.Boxes()[0].text);
}

TEST(FileHelpers, FailuresAreReportedWithThePath)
{
    MessageBoxAnswerer answerer;
    answerer.Answer({IDOK, IDOK});
    const std::string missing = TempPath("kmnodir\\out.txt");
    EXPECT_FALSE(WriteStringFile(missing.c_str(), "x"));
    const std::string gone = TempPath("kmnofile.txt");
    EXPECT_FALSE(RemoveFile(gone.c_str()));
    ASSERT_EQ(2u, answerer.Boxes().size());
    EXPECT_EQ("Error accessing '" + missing + "'\nAll or part of the path is invalid",
              answerer.Boxes()[0].text);
    EXPECT_EQ("Error accessing '" + gone + "'\nThe file could not be located",
              answerer.Boxes()[1].text);
}

TEST(FileHelpers, FailedBackupNamesTheFileAndKeepsIt)
{
    const std::string file = TempPath("kmbackup.txt");
    const std::string blocker = TempPath("kmbackup.BAK");
    ASSERT_TRUE(WriteStringFile(file.c_str(), "keep"));
    // A directory with something in it stands where the backup would go.
    ASSERT_TRUE(MakeDir(blocker.c_str()));
    ASSERT_TRUE(WriteStringFile((blocker + "\\inside").c_str(), "x"));

    MessageBoxAnswerer answerer;
    answerer.Answer(IDOK);
    FileStatus status;
    ASSERT_TRUE(GetFileStatus(file.c_str(), status));
    EXPECT_FALSE(MakeBackup(file.c_str()));
    ASSERT_EQ(1u, answerer.Boxes().size());
    EXPECT_EQ(0u, answerer.Boxes()[0].text.find(std::string("Error accessing '") + status.fullName +
                                                "'\n"));
    EXPECT_NE(INVALID_FILE_ATTRIBUTES, ::GetFileAttributesA(file.c_str())); // still there

    ::DeleteFileA((blocker + "\\inside").c_str());
    ::RemoveDirectoryA(blocker.c_str());
    ::DeleteFileA(file.c_str());
}

} // namespace
