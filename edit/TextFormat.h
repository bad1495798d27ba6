// Line terminators of a text file: the check for control bytes, the
// detection of the terminator in use, and the conversion to CR LF and back.
// Byte work only, so that the editor can run it on its own text block.
#pragma once
#include <cstddef>

// The terminator of a file on disk. FF_NONE and FF_MIXED come only from
// detection; saving treats FF_MIXED like FF_MAC.
enum FileFormat { FF_DOS = 0, FF_UNIX = 1, FF_MAC = 2, FF_NONE = 3, FF_MIXED = 4 };

// Offset of the first control byte (under 32, not 9 to 13) among the first
// 256 bytes of text, or of all but the last in a shorter text; -1 if none.
int FindNonAnsiByte(const char* text, size_t length);

// The terminator of text, and in count the number of terminator bytes met
// before the walk ended. The walk stops at the first CR LF (FF_DOS if it
// came first, else FF_MIXED) and at the first terminator of another kind
// (FF_MIXED). An empty text is FF_DOS.
FileFormat DetectFormat(const char* text, size_t length, size_t& count);

// Writes text with every LF (FF_UNIX) or CR (FF_MAC) as CR LF to dst, which
// holds length + count + 1 bytes and may be text itself; count is the one
// that DetectFormat gave. The new length; a NUL stands behind it.
size_t ExpandTerminators(const char* text, size_t length, size_t count, FileFormat format,
                         char* dst);

// The same within one block of length + count + 1 bytes.
inline size_t ExpandTerminators(char* text, size_t length, size_t count, FileFormat format)
{
    return ExpandTerminators(text, length, count, format, text);
}

// Writes text to dst (length bytes, may be text itself) with every CR LF and
// every lone CR as the one terminator byte of format: LF for FF_UNIX, CR for
// the others; FF_DOS copies unchanged. A lone LF stays. The new length; no
// NUL is added.
size_t ContractTerminators(const char* text, size_t length, char* dst, FileFormat format);
