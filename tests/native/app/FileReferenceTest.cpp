#include "app/FileReference.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

namespace
{

// A request whose fields show whether the parser touched them.
OpenRequest Untouched()
{
    OpenRequest request;
    request.line = 77;
    request.column = 88;
    request.address = 99;
    strcpy(request.name, "untouched");
    return request;
}

int Parse(const char* text, OpenRequest& request)
{
    return ParseFileReference(text, static_cast<int>(strlen(text)), request);
}

TEST(FileReference, LineOnly)
{
    OpenRequest request = Untouched();
    EXPECT_EQ(8, Parse("foo.c(3) rest", request));
    EXPECT_STREQ("foo.c", request.name);
    EXPECT_EQ(3u, request.line);
    EXPECT_EQ(0u, request.column);
    EXPECT_EQ(0u, request.address);
}

TEST(FileReference, LineAndColumnAfterComma)
{
    OpenRequest request = Untouched();
    EXPECT_EQ(12, Parse("prog.c(12,5)", request));
    EXPECT_STREQ("prog.c", request.name);
    EXPECT_EQ(12u, request.line);
    EXPECT_EQ(5u, request.column);
    EXPECT_EQ(0u, request.address);

    EXPECT_EQ(19, Parse("prog.c( 12 : col 7)", request));
    EXPECT_EQ(12u, request.line);
    EXPECT_EQ(7u, request.column);
}

TEST(FileReference, HexadecimalAddress)
{
    OpenRequest request = Untouched();
    EXPECT_EQ(16, Parse("prog.exe(0x1F00)", request));
    EXPECT_STREQ("prog.exe", request.name);
    EXPECT_EQ(0x1F00u, request.line);
    EXPECT_EQ(0u, request.column);
    EXPECT_EQ(1u, request.address);

    EXPECT_EQ(11, Parse("a.b(0Xff,3)", request));
    EXPECT_EQ(0xFFu, request.line);
    EXPECT_EQ(0u, request.column);
}

TEST(FileReference, HexadecimalWithoutDigitsIsStillAReference)
{
    OpenRequest request = Untouched();
    EXPECT_EQ(5, Parse("x(0x) ", request));
    EXPECT_STREQ("x", request.name);
    EXPECT_EQ(0u, request.line);
    EXPECT_EQ(1u, request.address);
}

TEST(FileReference, ParenthesisInsideAWord)
{
    OpenRequest request = Untouched();
    EXPECT_EQ(6, Parse("foo(3).c", request));
    EXPECT_STREQ("foo", request.name);
    EXPECT_EQ(3u, request.line);
}

TEST(FileReference, WhiteSpaceAroundTheParenthesis)
{
    OpenRequest request = Untouched();
    EXPECT_EQ(22, Parse("error in bar.h \t ( 42)", request));
    EXPECT_STREQ("bar.h", request.name);
    EXPECT_EQ(42u, request.line);
}

TEST(FileReference, NameIsLowerCasedIncludingLatin1Capitals)
{
    OpenRequest request = Untouched();
    EXPECT_GT(Parse("C:\\SRC\\\xC4\xD6\xDE\xD7\xDF.C(1)", request), 0);
    EXPECT_STREQ("c:\\src\\\xE4\xF6\xFE\xD7\xDF.c", request.name);
}

TEST(FileReference, LongNameIsCutToTheBlock)
{
    char text[400];
    memset(text, 'A', 300);
    strcpy(text + 300, "(5)");
    OpenRequest request = Untouched();
    EXPECT_EQ(303, Parse(text, request));
    EXPECT_EQ(259u, strlen(request.name));
    EXPECT_EQ('a', request.name[258]);
    EXPECT_EQ(5u, request.line);
}

TEST(FileReference, NoReference)
{
    OpenRequest request = Untouched();
    EXPECT_EQ(0, Parse("plain.c", request));      // no parenthesis
    EXPECT_EQ(0, Parse("open.c(12", request));    // no closing one
    EXPECT_EQ(0, Parse("(12) no name", request)); // empty name
    EXPECT_EQ(0, Parse("   (12)", request));      // only white space before
    EXPECT_EQ(0, Parse("x.c(   )", request));     // nothing inside
    EXPECT_EQ(0, Parse("x.c()", request));
    EXPECT_EQ(0, Parse("x.c(0)", request));   // line 0
    EXPECT_EQ(0, Parse("x.c(abc)", request)); // no digits: line 0
    EXPECT_EQ(0, Parse("", request));
}

TEST(FileReference, ClosingParenthesisMustLieWithinLength)
{
    const char text[] = "x.c(12) tail";
    OpenRequest request = Untouched();
    EXPECT_EQ(0, ParseFileReference(text, 6, request));
    EXPECT_EQ(7, ParseFileReference(text, 7, request));
    EXPECT_EQ(0, ParseFileReference(text, 0, request));
}

TEST(FileReference, OpeningParenthesisOutsideLengthIsNotSeen)
{
    OpenRequest request = Untouched();
    EXPECT_EQ(0, ParseFileReference("name (1)", 4, request));
}

TEST(FileReference, ReadsTheLogLineForms)
{
    char line[300];
    OpenRequest request = Untouched();
    snprintf(line, sizeof line, "%s(%d): %s\r\n", "c:\\work\\Main.C", 1234, "x = f(2);");
    EXPECT_EQ(20, Parse(line, request));
    EXPECT_STREQ("c:\\work\\main.c", request.name);
    EXPECT_EQ(1234u, request.line);
    EXPECT_EQ(0u, request.column);
    EXPECT_EQ(0u, request.address);

    snprintf(line, sizeof line, "%s(0x%.4lx): %s\r\n", "c:\\bin\\tool.exe", 0x2aUL, "(text)");
    EXPECT_EQ(23, Parse(line, request));
    EXPECT_STREQ("c:\\bin\\tool.exe", request.name);
    EXPECT_EQ(0x2Au, request.line);
    EXPECT_EQ(1u, request.address);
}

TEST(FileReference, OnlyTheFirstParenthesisCounts)
{
    OpenRequest request = Untouched();
    // The first parenthesis holds no number: no reference, although a
    // later one would.
    EXPECT_EQ(0, Parse("f(x) g.c(5)", request));
}

} // namespace
