// The file compare: one forward pass over two texts, keeping only the lines
// not yet accounted for, and back in step after three consecutive lines of
// one file found among the pending lines of the other. Lines are known by
// two 16-bit hashes and a length class; their text is never compared.
// Platform-free: the caller hands in the readers and the writer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Pieces of lines as the runtime's fgets gives them: at most size - 1 bytes,
// through the next LF, NUL-ended; false at the end of the file.
class CompareInput
{
  public:
    virtual ~CompareInput() = default;
    virtual bool ReadPiece(char* buffer, int size) = 0;
};

// Where the listing goes. Poll keeps the user interface alive; false
// stops the writing of the difference at hand, and a cancel may leave as an
// exception, which the compare lets through after freeing nothing it still
// needs (its destructor frees the lines).
class CompareOutput
{
  public:
    virtual ~CompareOutput() = default;
    virtual bool Poll() = 0;
    virtual void Write(const std::string& line) = 0;
};

struct CompareLine {
    uint32_t hash1, hash2; // 16-bit values
    uint32_t lineNumber;   // of the piece, from 1
    CompareLine* nextInBucket;
    CompareLine* next;
    unsigned char lengthClass;
    char text[1]; // without its LF; empty when not kept
};

class CCompare
{
  public:
    enum { MODE_SCRIPT = 0, MODE_LISTING = 1 };
    enum { PIECE_SIZE = 128, LENGTH_CLASSES = 80, MAX_CANDIDATES = 5, IN_STEP = 3 };

    CCompare(CompareOutput& output, int mode);
    virtual ~CCompare();
    CCompare(const CCompare&) = delete;
    CCompare& operator=(const CCompare&) = delete;

    // Reads both to their ends and writes the differences. A memory
    // shortage with nothing pending throws std::bad_alloc.
    void Run(CompareInput& first, CompareInput& second);

  protected:
    // Null when the heap is short; the compare then gives up its oldest
    // pending lines and tries again.
    virtual void* AllocateLine(size_t bytes);
    virtual void FreeLine(void* line);

  private:
    struct Candidates {
        int count;
        uint32_t line[MAX_CANDIDATES];
        uint32_t run[MAX_CANDIDATES];
    };
    struct File {
        CompareLine* bucketHead[LENGTH_CLASSES];
        CompareLine* bucketTail[LENGTH_CLASSES];
        CompareLine *head, *tail;
        uint32_t lineCount, pendingCount;
        Candidates candidates, previous;
        bool atEnd;
    };

    void ReadCompareLine(int f, CompareInput& input);
    CompareLine* NewLine(size_t textBytes);
    void FindCandidates(int f, const CompareLine* line, int lengthClass);
    void ReportDifference(uint32_t run, uint32_t line0, uint32_t line1);
    void WriteHeader(long deleted, long added);
    void WriteScript(long deleted, long added, uint32_t line1);
    void WriteLines(int f, uint32_t through, const char* prefix, bool yield);
    void DiscardLines(int f, uint32_t through);
    void FreeAll();

    CompareOutput& m_output;
    int m_mode;
    File m_files[2];
};
