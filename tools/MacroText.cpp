#include "tools/MacroText.h"

#include <cstring>

namespace
{

bool SameName(const char* a, const char* b)
{
    for (; *a && *b; ++a, ++b)
        if ((*a | 0x20) != (*b | 0x20))
            return false;
    return *a == *b;
}

std::string Behind(const std::string& text, char separator)
{
    const size_t at = text.rfind(separator);
    return at == std::string::npos ? text : text.substr(at + 1);
}

std::string CutFrom(const std::string& text, char separator)
{
    return text.substr(0, text.rfind(separator));
}

// The root's backslash stays, so a file in c:\ gives c:\ and not c:.
std::string DirOf(const std::string& file)
{
    const size_t at = file.rfind('\\');
    if (at == std::string::npos)
        return "";
    return file.substr(0, at == 2 && file[1] == ':' ? at + 1 : at);
}

std::string TargetPath(const MacroFacts& facts)
{
    if (facts.target.empty())
        return "";
    return facts.projectDir + (facts.projectDir.empty() ? "" : "\\") + facts.target;
}

} // namespace

bool LookupMacroIn(const MacroFacts& facts, const char* name, std::string& value)
{
    static const struct {
        const char* name;
        bool needsFile;
        std::string (*get)(const MacroFacts&);
    } macros[] = {
        {"$File", true, [](const MacroFacts& f) { return f.file; }},
        {"$FileName", true, [](const MacroFacts& f) { return Behind(f.file, '\\'); }},
        {"$FileDir", true, [](const MacroFacts& f) { return DirOf(f.file); }},
        {"$Line", true, [](const MacroFacts& f) { return std::to_string(f.line); }},
        {"$Col", true, [](const MacroFacts& f) { return std::to_string(f.column); }},
        {"$ProjName", false,
         [](const MacroFacts& f) { return CutFrom(Behind(f.target, '\\'), '.'); }},
        {"$ProjDir", false, [](const MacroFacts& f) { return f.projectDir; }},
        {"$Target", false, TargetPath},
        {"$RC", false,
         [](const MacroFacts& f) {
             return f.target.empty() ? std::string() : CutFrom(TargetPath(f), '.') + ".rc";
         }},
        {"$Dir", false, [](const MacroFacts& f) { return f.currentDir; }},
    };
    for (const auto& macro : macros) {
        if (!SameName(name, macro.name))
            continue;
        value = macro.needsFile && !facts.hasFile ? std::string() : macro.get(facts);
        return true;
    }
    return false;
}

std::string ExpandMacroText(const char* text, const MacroLookup& lookup,
                            bool (*isLetter)(unsigned char))
{
    std::string result;
    while (const char* dollar = strchr(text, '$')) {
        result.append(text, dollar);
        const char* end = dollar + 1;
        while (*end && isLetter(static_cast<unsigned char>(*end)))
            ++end;
        const std::string token(dollar, end);
        std::string value;
        result += lookup(token, value) ? value : token;
        text = end;
    }
    return result + text;
}
