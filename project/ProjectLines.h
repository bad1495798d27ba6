// The command lines of the Project menu, composed from the environment's
// settings. No windows here: the values come through a look-up by the
// setting's string id, and the caller runs what comes out.
#pragma once
#include <functional>
#include <string>

// The effective value of an environment setting (IDS_ENV_...).
using EnvLookup = std::function<std::string(unsigned id)>;

// The program and the arguments that compile one file.
struct CompileParts {
    std::string program, arguments;
};

// Picks the resource compiler for ".rc" exactly, the compiler otherwise;
// false for a name with no extension.
bool ComposeCompile(const std::string& file, bool debug, const EnvLookup& env, CompileParts& parts);
// True when the arguments have to go through a response file.
bool CompileNeedsResponse(const CompileParts& parts, const std::string& file);
// The line, with the arguments in place or behind " @" and the response
// file's name when one is given.
std::string CompileLine(const CompileParts& parts, const std::string& file,
                        const std::string& responseFile);
std::string LinkLine(bool debug, const std::string& target, const EnvLookup& env);
std::string BuildLine(bool debug, const EnvLookup& env);
