#include "app/FileReference.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>

namespace
{

TEST(FileReference, Parse)
{
    const struct {
        std::string text;
        int length; // -1 for the whole text
        int result;
        const char* name;
        unsigned line, column, address;
    } rows[] = {
        // clang-format off
        {"foo.c(3) rest", -1, 8, "foo.c", 3, 0, 0}, {"prog.c(12,5)", -1, 12, "prog.c", 12, 5, 0},
        {"prog.c( 12 : col 7)", -1, 19, "prog.c", 12, 7, 0},
        {"prog.exe(0x1F00)", -1, 16, "prog.exe", 0x1F00, 0, 1},
        {"a.b(0Xff,3)", -1, 11, "a.b", 0xFF, 0, 1}, {"x(0x) ", -1, 5, "x", 0, 0, 1},
        {"foo(3).c", -1, 6, "foo", 3, 0, 0}, {"error in bar.h \t ( 42)", -1, 22, "bar.h", 42, 0, 0},
        {"a\rb.c\r(1)", -1, 9, "b.c", 1, 0, 0},
        {"C:\\SRC\\\xC4\xD6\xDE\xD7\xDF.C(1)", -1, 17, "c:\\src\\\xE4\xF6\xFE\xD7\xDF.c", 1, 0, 0},
        {"c:\\work\\Main.C(1234): x = f(2);\r\n", -1, 20, "c:\\work\\main.c", 1234, 0, 0},
        {"c:\\bin\\tool.exe(0x002a): (text)\r\n", -1, 23, "c:\\bin\\tool.exe", 0x2A, 0, 1},
        {"x.c(12) tail", 7, 7, "x.c", 12, 0, 0},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        OpenRequest request;
        request.line = request.column = request.address = 77; // all must be set
        const int length = row.length < 0 ? static_cast<int>(row.text.size()) : row.length;
        EXPECT_EQ(row.result, ParseFileReference(row.text.c_str(), length, request));
        EXPECT_STREQ(row.name, request.name);
        EXPECT_EQ(row.line, request.line);
        EXPECT_EQ(row.column, request.column);
        EXPECT_EQ(row.address, request.address);
    }
}

TEST(FileReference, NoReference)
{
    const std::tuple<const char*, int> rows[] = {
        // clang-format off
        {"x.c(12) tail", 6}, {"x.c(12) tail", 0},  {"name (1)", 4}, {"plain.c", 7},
        {"open.c(12", 9},    {"(12) no name", 12}, {"   (12)", 7},  {"x.c(   )", 8},
        {"x.c()", 5},        {"x.c(0)", 6},        {"x.c(abc)", 8}, {"", 0},
        {"f(x) g.c(5)", 11}, // only the first parenthesis counts
        // clang-format on
    };
    for (const auto& [text, length] : rows) {
        OpenRequest request;
        request.line = 77;
        EXPECT_EQ(0, ParseFileReference(text, length, request)) << text;
        // Empty parentheses are turned down before the request is touched.
        if (strstr(text, "()") || strstr(text, "(   )")) {
            EXPECT_EQ(77u, request.line) << text;
        }
    }
}

TEST(FileReference, LongNameIsCutToTheBlock)
{
    OpenRequest request;
    const std::string text = std::string(300, 'A') + "(5)";
    EXPECT_EQ(303, ParseFileReference(text.c_str(), 303, request));
    EXPECT_EQ(std::string(259, 'a'), request.name);
}

} // namespace
