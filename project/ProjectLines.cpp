#include "project/ProjectLines.h"

#include "resources/KmIds.h"

namespace
{

// Lines longer than this, less the two separating blanks, go through a
// response file.
const std::size_t kLineLimit = 0x401;

std::string Selected(bool debug, unsigned release, unsigned debugId, const EnvLookup& env)
{
    return env(debug ? debugId : release);
}

} // namespace

bool ComposeCompile(const std::string& file, bool debug, const EnvLookup& env, CompileParts& parts)
{
    const std::size_t dot = file.rfind('.');
    if (dot == std::string::npos || dot + 1 == file.size())
        return false;
    // The four keys of each kind lie in this order: program, arguments,
    // release switches, debug switches.
    const unsigned first =
        file.compare(dot, std::string::npos, ".rc") == 0 ? IDS_ENV_RC : IDS_ENV_COMPILER;
    parts.program = env(first);
    parts.arguments = env(first + 1) + " " + Selected(debug, first + 2, first + 3, env);
    return true;
}

bool CompileNeedsResponse(const CompileParts& parts, const std::string& file)
{
    return file.size() + parts.arguments.size() + parts.program.size() + 2 >= kLineLimit;
}

std::string CompileLine(const CompileParts& parts, const std::string& file,
                        const std::string& responseFile)
{
    if (responseFile.empty())
        return parts.program + " " + parts.arguments + " " + file;
    return parts.program + " @" + responseFile + " " + file;
}

// The selected libraries run straight into LinkLibs, without a blank.
std::string LinkLine(bool debug, const std::string& target, const EnvLookup& env)
{
    std::string line = env(IDS_ENV_LINKER) + " " + env(IDS_ENV_LINKARGS) + " " +
                       Selected(debug, IDS_ENV_LINKRELEASE, IDS_ENV_LINKDEBUG, env);
    if (!target.empty())
        line += " -out:" + target;
    const std::string listFile = env(IDS_ENV_LINKLISTFILE);
    if (!listFile.empty())
        line += " -map:" + listFile;
    line += " " + env(IDS_ENV_LINKOBJECTS) + " " +
            Selected(debug, IDS_ENV_LINKLIBSRELEASE, IDS_ENV_LINKLIBSDEBUG, env);
    return line + env(IDS_ENV_LINKLIBS);
}

std::string BuildLine(bool debug, const EnvLookup& env)
{
    return env(IDS_ENV_BUILDER) + " " + env(IDS_ENV_BUILDARGS) + " " +
           Selected(debug, IDS_ENV_BUILDRELEASE, IDS_ENV_BUILDDEBUG, env);
}
