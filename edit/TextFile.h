// The one file layer for text: a file read whole into a block of local
// memory with its line terminators turned into CR LF, and a text written
// back safely. No windows here: the questions a read may raise go to the
// caller, and file failures to the file error report.
#pragma once
#include "edit/TextFormat.h"

#include <functional>
#include <windows.h>

// Answers for a read; an empty one counts as Yes.
struct TextReadQuestions {
    // A control byte (its value) stands among the first bytes: go on?
    std::function<bool(unsigned value)> acceptControlByte;
    // The file has no line terminator, or mixed ones: take it as it stands?
    std::function<bool()> acceptTerminators;
};

enum TextReadResult {
    TR_OK,       // the block holds the text with CR LF and a NUL behind it
    TR_FAILED,   // opening or reading failed, and was reported
    TR_REFUSED,  // a question was answered No
    TR_TOOLARGE, // more than maxSize bytes, or the memory for it was missing
};

// Reads path into block, growing the one given or else allocating one. A
// given block stays the caller's whatever happens (block holds its handle
// after growing); one allocated here is the caller's only after TR_OK.
// format gets the terminator the file had: FF_DOS, FF_UNIX or FF_MAC.
TextReadResult ReadTextBlock(const char* path, DWORD maxSize, HLOCAL& block, FileFormat& format,
                             const TextReadQuestions& questions);

// Writes length bytes of text to path, every CR LF and lone CR as format's
// terminator; the text is written as it stands when the memory for the
// conversion is missing. The text goes to a temporary file beside path that
// then takes path's place through the platform's replacing call, which
// keeps the original's creation time, attributes and security; with backup
// the original goes to its .BAK name. Where the directory refuses a new
// file, the file itself is rewritten in place. False after a reported
// failure, with the original untouched unless it was being rewritten in
// place.
bool WriteTextFile(const char* path, const char* text, size_t length, FileFormat format,
                   bool backup);
