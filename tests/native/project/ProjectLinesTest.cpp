#include "project/ProjectLines.h"

#include "resources/KmIds.h"

#include <gtest/gtest.h>
#include <map>

namespace
{

// Every setting reads as its offset from the first key, "c0" to "c27", but
// for those a row empties.
EnvLookup Env(std::map<unsigned, std::string> over = {})
{
    return [over](unsigned id) {
        const auto it = over.find(id);
        return it != over.end() ? it->second : "c" + std::to_string(id - IDS_ENV_COMPILER);
    };
}

TEST(ProjectLines, CompileChoosesKeysByExtension)
{
    const struct {
        const char* file;
        bool debug;
        const char* line; // "" for a refused name
    } rows[] = {
        {"a.rc", false, "c18 c19 c20 a.rc"},
        {"a.rc", true, "c18 c19 c21 a.rc"},
        {"A.RC", false, "c0 c1 c2 A.RC"},
        {"x.y\\a.c", true, "c0 c1 c3 x.y\\a.c"},
        {"make", false, ""},
        {"a.", false, ""},
    };
    for (const auto& row : rows) {
        CompileParts parts;
        const bool ok = ComposeCompile(row.file, row.debug, Env(), parts);
        EXPECT_EQ(*row.line != 0, ok) << row.file;
        if (ok) {
            EXPECT_EQ(row.line, CompileLine(parts, row.file, "")) << row.file;
        }
    }
}

// Program, arguments and name with 2 more reach 1025 at the limit.
TEST(ProjectLines, ResponseFileFromTheLimitOn)
{
    const std::string file(20, 'f');
    for (const std::size_t length : {1000u, 1001u}) {
        const CompileParts parts = {"cl", std::string(length, 'a')};
        EXPECT_EQ(length == 1001, CompileNeedsResponse(parts, file)) << length;
    }
    EXPECT_EQ("cl @kmt1 f.c", CompileLine({"cl", "-c x"}, "f.c", "kmt1"));
}

TEST(ProjectLines, LinkAndBuild)
{
    const auto bare = Env({{IDS_ENV_LINKLISTFILE, ""}});
    EXPECT_EQ("c4 c5 c6 -out:t.exe -map:c9 c8 c11c10", LinkLine(false, "t.exe", Env()));
    EXPECT_EQ("c4 c5 c7 c8 c12c10", LinkLine(true, "", bare));
    EXPECT_EQ("c14 c15 c16", BuildLine(false, Env()));
    EXPECT_EQ("c14  c17", BuildLine(true, Env({{IDS_ENV_BUILDARGS, ""}})));
}

} // namespace
