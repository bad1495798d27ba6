// The scan of Extract Strings: the filter pattern tried, anchored, at every
// position of a sliding buffer over a byte stream, and every match listed
// with its offset in pieces of at most 128 bytes. Platform-free.
#pragma once

#include <string>

struct PatternBuffer;

class ExtractInput
{
  public:
    virtual ~ExtractInput() = default;
    // Up to size bytes; fewer only at the end. A read error leaves as an
    // exception.
    virtual int Read(char* buffer, int size) = 0;
};

class ExtractOutput
{
  public:
    virtual ~ExtractOutput() = default;
    // Keeps the user interface alive; a cancel leaves as an exception.
    virtual void Poll() = 0;
    virtual void Write(const std::string& line) = 0;
};

enum {
    EXTRACT_WINDOW = 32768, // refilled in steps of this much
    EXTRACT_MARGIN = 1024,  // how far a match can see past a refill point
    EXTRACT_PIECE = 128,    // bytes of a match listed on one line
};

// Lines "name(0x%.4lx): text\r\n". False when the buffer could not be had.
bool ExtractFromFile(const char* displayName, ExtractInput& input, PatternBuffer* pattern,
                     ExtractOutput& output);
