// The $ macros of the tools' and project commands' arguments: the table
// and the substitution, over facts gathered beforehand. No windows here.
#pragma once
#include <functional>
#include <string>

// What the macros can tell at the moment a program starts.
struct MacroFacts {
    bool hasFile = false; // the active child shows a named file
    std::string file;     // its full name
    long line = 0, column = 0;
    std::string projectDir; // empty without a project
    std::string target;     // the project's Target, empty without one
    std::string currentDir;
};

// The value of a macro named without regard to case, "$" included; false
// for a name that is not in the table. A macro that needs a file gives
// "" without one.
bool LookupMacroIn(const MacroFacts& facts, const char* name, std::string& value);

// Replaces each "$" and the run of letters behind it that lookup knows;
// an unknown one, "$" alone included, stays as it stands, and what a
// macro gives is not expanded again.
using MacroLookup = std::function<bool(const std::string& name, std::string& value)>;
std::string ExpandMacroText(const char* text, const MacroLookup& lookup,
                            bool (*isLetter)(unsigned char));
