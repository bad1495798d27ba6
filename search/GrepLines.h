// The lines of a file as the global search reads them: a text-mode stream,
// in which a Ctrl-Z ends the text and CR LF becomes LF, cut into lines by a
// buffer of fixed size. Platform-free: the bytes come from a callback.
#pragma once
#include "search/Pattern.h"

#include <cstddef>
#include <functional>
#include <vector>

class TextLineReader
{
  public:
    // Fills buffer with up to capacity bytes of the source; 0 at its end.
    // A read failure is the callback's to throw.
    using Fill = std::function<size_t(char* buffer, size_t capacity)>;
    // endLastLine: a last line without an LF gets one (the global search's
    // reading), or comes as it is (the runtime's fgets).
    explicit TextLineReader(Fill fill, bool endLastLine = true);

    // Stores bytes up to and including an LF, or size - 1 bytes, and a NUL
    // behind them. A last line without an LF gets one. The number of bytes
    // stored, without the NUL; 0 at the end of the text.
    int ReadLine(char* buffer, int size);

    // The text of the block that was not read yet, refilled when there is
    // none; size 0 at the end of the text. Ctrl-Z has ended it, but CR LF
    // still stands as it is. Pass(n) reads n bytes of it, which must end
    // with an LF.
    const char* Ahead(size_t& size);
    void Pass(size_t count);

  private:
    // Makes text available at m_pos; false at the end.
    bool Refill();

    Fill m_fill;
    std::vector<char> m_block;
    size_t m_pos = 0;
    size_t m_end = 0;
    bool m_heldCr = false; // a CR ended the last block: its LF may come next
    bool m_atEnd = false;  // the source ended, or a Ctrl-Z did
    bool m_endLastLine;
};

// The size of the line buffer of the global search.
const int kGrepLineSize = 256;

// Searches every line of the reader: calls hit with the line number (from
// 1) and the text of each line that holds a match; the number of those.
// An empty line is never searched. A line longer than the buffer comes in
// pieces, each counted as a line, and the last byte of each piece is lost
// to the search; the line numbers that run ahead after it are intended.
// Lines without the pattern's needle are only counted.
int GrepLines(TextLineReader& reader, PatternBuffer* pattern,
              const std::function<void(int number, const char* text)>& hit);
