// File lists over real files: wildcards, a directory word, names that
// match nothing, directories left out, and the walk that starts again.
#include "tools/FileDir.h"
#include "support/WinTestSupport.h"

using namespace kmtest;

namespace
{

using FileDirTest = FrameTest;

TEST_F(FileDirTest, SpecificationsBecomeSortedFullPaths)
{
    for (const char* name : {"b.c", "A.c", "x.h", "y.txt"})
        Write(name, "");
    for (const char* dir : {"sub", "dir.c"})
        ASSERT_TRUE(::CreateDirectoryA(Path(dir).c_str(), nullptr));
    Write("sub\\inner.c", "");
    const std::string here = Lower(m_dir) + "\\";
    const struct {
        std::string text;
        const char* list; // null: the one-text form
        std::vector<std::string> names;
    } rows[] = {
        {"*.c", nullptr, {here + "a.c", here + "b.c"}},
        {m_dir, "*.h *.c x.h", {here + "a.c", here + "b.c", here + "x.h"}},
        {m_dir + "\\\\ *.h", nullptr, {here + "x.h"}},
        {"NoFile.c x.h", nullptr, {here + "x.h", "nofile.c"}},
        {"sub", nullptr, {}},
        {"SUB *.C", nullptr, {here + "sub\\inner.c"}},
    };
    for (const auto& row : rows) {
        CFileDir files;
        EXPECT_EQ(static_cast<int>(row.names.size()), files.Read(row.text.c_str(), row.list))
            << row.text;
        std::vector<std::string> names;
        while (const char* name = files.Next())
            names.push_back(name);
        EXPECT_EQ(row.names, names) << row.text;
        const char* again = files.Next();
        EXPECT_EQ(row.names.empty() ? "<end>" : row.names[0], again ? again : "<end>");
    }
}

} // namespace
