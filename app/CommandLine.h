// The program's command line and the start-up rules that need no window.
#pragma once
#include "app/WordList.h"

#include <string>

struct CCommandLine {
    int arrange = 0;       // 0 none, 1 -av, 2 -ah, 3 -ac, 4 -am
    int editOnly = 0;      // -e
    int printOnly = 0;     // -p
    int safeMode = 0;      // -s
    std::string directory; // -d
    std::string iniName;   // -i
    CWordList files;

    // Switches start with - or /, letters in either case. The first word
    // that is no switch starts the file list, which takes the rest of the
    // line, so a switch behind a file name is a file name: intended.
    void Parse(const char* text);
};

// The value of the arrangement for an -a switch (1 to 4).
int ArrangeForSwitch(int arrangeSwitch);

// The program directory from the module's path: lower case, ending in a
// backslash, and without a last "nt\" (compared without asking for a
// backslash before it, so c:\client\ becomes c:\clie: kept as it is).
std::string ProgramDirFromModule(const char* modulePath);
