// How the current code page changes the case of single bytes. The window
// code passes the platform's conversions; the native tools and tests pass
// the ASCII ones.
#pragma once

struct CaseMap {
    unsigned char (*upper)(unsigned char);
    unsigned char (*lower)(unsigned char);
    bool (*isUpper)(unsigned char);
};

extern const CaseMap AsciiCaseMap;
