// The text side of context help: the include line and its header's places,
// the keyword table that sends a word to the environment's source, and
// the split of a help program's value. No windows here.
#pragma once
#include "edit/EditText.h"

#include <string>
#include <vector>

// Where the name's opening '"' or '<' stands in a line beginning at line:
// "#include" or "!include" behind blanks, and blanks after it. kNotInclude
// for any other line; kIncludeWithoutName when no mark follows.
const long kNotInclude = -1;
const long kIncludeWithoutName = -2;
long IncludeMarkAt(const char* line);

// The name behind the mark at text, a doubled backslash taken as one;
// false when a line feed or the end of text comes before the closing mark.
bool IncludeName(const char* text, std::string& name);
// Whether the first backslash stands at the start or just after a colon.
bool IsAbsoluteName(const std::string& name);
// The paths tried for a header, in order: the name itself (against the
// current directory) when it is absolute or quoted, then, unless it is
// absolute, the name in each directory of the project's list and the
// environment's.
std::vector<std::string> IncludeCandidates(const std::string& name, bool quoted,
                                           const std::string& projectList,
                                           const std::string& environmentList);

// The words of the language and its compiler.
bool IsEnvKeyword(const char* word);
// 1 the platform's source, 2 the environment's; mode 0 chooses by word.
int HelpSource(int mode, const char* word);
// The word around offset; a '#' just before it belongs to it.
std::string HelpWordAt(const char* text, long offset, WordByteTest isWord);

// A help program's value split into the program and its arguments: the
// text behind the first blank is a template whose %s takes the word. A
// word of 49 bytes or more leaves the value whole and no arguments.
void SplitHelpProgram(const std::string& value, const std::string& word, std::string& program,
                      std::string& arguments);
