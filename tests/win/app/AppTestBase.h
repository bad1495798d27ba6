// The application started in-process on a command line, in a directory of
// its own, and taken down again so that every case starts afresh.
#pragma once
#include "BoxHook.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <windows.h>

class AppTestBase : public ::testing::Test
{
  protected:
    void SetUp() override;
    void TearDown() override;

    // theApp.InitInstance on this command line; the frame stays in m_frame.
    bool Start(const std::string& commandLine);
    // Closes the frame as the user would, answering its questions.
    void CloseFrame();

    // The lower-case full path of a name in the test's directory.
    std::string FullLower(const std::string& name) const;
    void WriteFile(const std::string& name, const std::string& bytes) const;
    bool Exists(const std::string& name) const;

    HWND MdiClient() const;
    std::set<std::string> ChildCaptions() const;
    HWND ChildByCaption(const std::string& caption) const;

    BoxHook m_boxes;
    HWND m_frame = nullptr;
    std::string m_dir;

  private:
    std::string m_commandLine; // theApp keeps only the pointer
    char m_oldDir[MAX_PATH] = "";
};

// Zero-based line and column of the caret in an editor window's control.
struct CaretPlace {
    long line;
    long column;
};
CaretPlace CaretOf(HWND child);
