// The console helper between the workbench and a project command: its
// command line is the name of an output file, a blank and the command. It
// runs the command in its own current directory with standard output and
// error output going to that file, and ends with the command's exit code.
#include <windows.h>

namespace
{

// The text behind the first word of line, blanks skipped; a word in
// quotes ends at its closing quote.
char* SkipWord(char* line)
{
    while (*line == ' ' || *line == '\t')
        ++line;
    const bool quoted = *line == '"';
    if (quoted)
        ++line;
    while (*line && (quoted ? *line != '"' : *line != ' ' && *line != '\t'))
        ++line;
    if (quoted && *line)
        ++line;
    return line;
}

} // namespace

int main()
{
    char* line = SkipWord(::GetCommandLineA());
    while (*line == ' ')
        ++line;
    char* command = SkipWord(line);
    if (*command)
        *command++ = '\0';
    SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
    HANDLE output = ::CreateFileA(line, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit,
                                  CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (output == INVALID_HANDLE_VALUE)
        return 1;
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    start.hStdOutput = output;
    start.hStdError = output;
    PROCESS_INFORMATION process;
    DWORD status = 1;
    if (::CreateProcessA(nullptr, command, nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                         &process)) {
        ::WaitForSingleObject(process.hProcess, INFINITE);
        ::GetExitCodeProcess(process.hProcess, &status);
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
    }
    ::CloseHandle(output);
    return static_cast<int>(status);
}
