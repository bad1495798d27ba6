#include "help/HelpText.h"

#include <cstring>
#include <iterator>

namespace
{

// Kept in this order: _set_new_handler stands behind _setenvp, so that the
// search misses _setargv and _setenvp and sends them to the platform.
// clang-format off
const char* const kKeywords[] = {
    "#define", "#elif", "#else", "#endif", "#if", "#ifdef", "#ifndef", "#include", "#pragma",
    "#undef", "MSDOS", "M_I286", "M_I386", "M_I8086", "M_I86", "M_I86mM", "_CHAR_UNSIGNED", "_DLL",
    "_FAST", "_MSC_VER", "_MSDOS", "_M_I286", "_M_I386", "_M_I8086", "_M_I86", "_M_I86mM",
    "_PCODE", "_QC", "_WINDLL", "_WINDOWS", "__DATE__", "__FILE__", "__LINE__", "__STDC__",
    "__TIMESTAMP__", "__TIME__", "__asm", "__based", "__cdecl", "__cplusplus", "__emit",
    "__export", "__far", "__fastcall", "__fortran", "__huge", "__inline", "__interrupt",
    "__loadds", "__near", "__pascal", "__saveregs", "__segment", "__segname", "__self",
    "__stdcall", "__syscall", "_setargv", "_setenvp", "_set_new_handler", "argc", "argv", "auto",
    "break", "case", "char", "class", "const", "continue", "default", "delete", "do", "double",
    "else", "enum", "envp", "extern", "float", "for", "friend", "goto", "if", "inline", "int",
    "long", "main", "new", "operator", "private", "protected", "public", "register", "return",
    "short", "signed", "sizeof", "static", "struct", "switch", "this", "typedef", "union",
    "unsigned", "virtual", "void", "volatile", "while"};
// clang-format on

// A longer word is no help template's argument.
const size_t kTemplateWordLimit = 49;

const char* SkipBlanks(const char* p)
{
    while (*p == ' ' || *p == '\t')
        ++p;
    return p;
}

} // namespace

long IncludeMarkAt(const char* line)
{
    const char* p = SkipBlanks(line);
    if ((*p != '#' && *p != '!') || std::strncmp(p + 1, "include", 7) != 0)
        return kNotInclude;
    p = SkipBlanks(p + 8);
    return *p == '"' || *p == '<' ? static_cast<long>(p - line) : kIncludeWithoutName;
}

bool IncludeName(const char* text, std::string& name)
{
    const char close = *text == '<' ? '>' : '"';
    name.clear();
    const char* p = text + 1;
    for (; *p && *p != '\n' && *p != close; ++p) {
        if (p[0] == '\\' && p[1] == '\\')
            ++p;
        name += *p;
    }
    return *p == close;
}

bool IsAbsoluteName(const std::string& name)
{
    const size_t slash = name.find('\\');
    return slash == 0 || (slash != std::string::npos && name[slash - 1] == ':');
}

std::vector<std::string> IncludeCandidates(const std::string& name, bool quoted,
                                           const std::string& projectList,
                                           const std::string& environmentList)
{
    std::vector<std::string> paths;
    const bool absolute = IsAbsoluteName(name);
    if (absolute || quoted)
        paths.push_back(name);
    if (absolute)
        return paths;
    std::string list = projectList;
    if (!list.empty() && list.back() != ';')
        list += ';';
    list += environmentList;
    for (size_t from = 0; from < list.size();) {
        size_t end = list.find(';', from);
        if (end == std::string::npos)
            end = list.size();
        if (end > from) {
            std::string dir = list.substr(from, end - from);
            if (dir.back() != '\\')
                dir += '\\';
            paths.push_back(dir + name);
        }
        from = end + 1;
    }
    return paths;
}

bool IsEnvKeyword(const char* word)
{
    int low = 0;
    int high = static_cast<int>(std::size(kKeywords)) - 1;
    while (high >= low) {
        const int middle = (low + high) / 2;
        const int order = std::strcmp(word, kKeywords[middle]);
        if (order == 0)
            return true;
        if (order < 0)
            high = middle - 1;
        else
            low = middle + 1;
    }
    return false;
}

int HelpSource(int mode, const char* word)
{
    if (mode != 0)
        return mode;
    return IsEnvKeyword(word) ? 2 : 1;
}

std::string HelpWordAt(const char* text, long offset, WordByteTest isWord)
{
    const long end = WordEnd(text, offset, isWord);
    long start = WordStart(text, offset, isWord);
    if (start > 0 && text[start - 1] == '#')
        --start;
    return std::string(text + start, text + end);
}

void SplitHelpProgram(const std::string& value, const std::string& word, std::string& program,
                      std::string& arguments)
{
    const size_t space = value.find(' ');
    program = value;
    arguments.clear();
    if (space == std::string::npos || word.size() >= kTemplateWordLimit)
        return;
    program = value.substr(0, space);
    for (size_t i = space + 1; i < value.size(); ++i) {
        if (value[i] == '%' && i + 1 < value.size() && value[i + 1] == 's') {
            arguments += word;
            ++i;
        } else if (value[i] == '%' && i + 1 < value.size() && value[i + 1] == '%') {
            arguments += '%';
            ++i;
        } else {
            arguments += value[i];
        }
    }
}
