#include "tools/CompareEngine.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

CCompare::CCompare(CompareOutput& output, int mode) : m_output(output), m_mode(mode)
{
    memset(m_files, 0, sizeof m_files);
}

CCompare::~CCompare()
{
    FreeAll();
}

void* CCompare::AllocateLine(size_t bytes)
{
    return malloc(bytes);
}

void CCompare::FreeLine(void* line)
{
    free(line);
}

void CCompare::FreeAll()
{
    for (File& file : m_files) {
        for (CompareLine* line = file.head; line;) {
            CompareLine* next = line->next;
            FreeLine(line);
            line = next;
        }
        memset(&file, 0, sizeof file);
    }
}

void CCompare::Run(CompareInput& first, CompareInput& second)
{
    FreeAll();
    while (!m_files[0].atEnd || !m_files[1].atEnd) {
        if (!m_files[0].atEnd)
            ReadCompareLine(0, first);
        if (!m_files[1].atEnd)
            ReadCompareLine(1, second);
    }
    // Whatever is still pending at the end is a difference.
    ReportDifference(0, m_files[0].lineCount, m_files[1].lineCount);
}

// A short heap gives up the oldest eleven pending lines of each file,
// however they might have matched, and the compare goes on.
CompareLine* CCompare::NewLine(size_t textBytes)
{
    for (;;) {
        if (void* block = AllocateLine(offsetof(CompareLine, text) + textBytes + 1))
            return static_cast<CompareLine*>(block);
        if (!m_files[0].pendingCount && !m_files[1].pendingCount)
            throw std::bad_alloc();
        uint32_t through[2];
        for (int f = 0; f < 2; ++f) {
            const File& file = m_files[f];
            through[f] = file.head ? file.head->lineNumber + 10 : file.lineCount;
            if (through[f] > file.lineCount)
                through[f] = file.lineCount;
        }
        ReportDifference(0, through[0], through[1]);
    }
}

void CCompare::ReadCompareLine(int f, CompareInput& input)
{
    File& file = m_files[f];
    char piece[PIECE_SIZE];
    if (!input.ReadPiece(piece, PIECE_SIZE)) {
        file.atEnd = true;
        return;
    }
    size_t length = strlen(piece);
    // The hashes take the LF too, so a piece without one never equals one
    // with it.
    uint32_t hash1 = 0, hash2 = 0;
    for (size_t i = 0; i < length; ++i) {
        const int c = static_cast<signed char>(piece[i]);
        hash1 = (((hash1 << 1) | (hash1 >> 15)) + static_cast<uint32_t>(c)) & 0xFFFF;
        hash2 = (hash2 ^ static_cast<uint32_t>(c)) & 0xFFFF;
    }
    if (length && piece[length - 1] == '\n')
        --length;
    const bool keep = m_mode == MODE_LISTING || f == 1;
    CompareLine* line = NewLine(keep ? length : 0);
    line->hash1 = hash1;
    line->hash2 = hash2;
    line->nextInBucket = line->next = nullptr;
    const size_t kept = keep ? length : 0;
    memcpy(line->text, piece, kept);
    line->text[kept] = '\0';
    line->lineNumber = ++file.lineCount;
    ++file.pendingCount;

    const int lengthClass =
        length < LENGTH_CLASSES - 1 ? static_cast<int>(length) : LENGTH_CLASSES - 1;
    (file.bucketTail[lengthClass] ? file.bucketTail[lengthClass]->nextInBucket
                                  : file.bucketHead[lengthClass]) = line;
    file.bucketTail[lengthClass] = line;
    (file.tail ? file.tail->next : file.head) = line;
    file.tail = line;

    line->lengthClass = static_cast<unsigned char>(lengthClass);
    FindCandidates(f, line, lengthClass);
}

// The newest line's matches among the other file's pending lines, each
// with the run of matching lines that ends there; a run of three is being
// back in step.
void CCompare::FindCandidates(int f, const CompareLine* line, int lengthClass)
{
    File& file = m_files[f];
    const File& other = m_files[1 - f];
    file.previous = file.candidates;
    Candidates& now = file.candidates;
    now.count = 0;
    for (const CompareLine* seen = other.bucketHead[lengthClass];
         seen && now.count < MAX_CANDIDATES; seen = seen->nextInBucket)
        if (seen->hash1 == line->hash1 && seen->hash2 == line->hash2) {
            now.line[now.count] = seen->lineNumber;
            now.run[now.count++] = 1;
        }
    for (int j = 0; j < file.previous.count; ++j)
        for (int k = 0; k < now.count; ++k)
            if (file.previous.line[j] + 1 == now.line[k])
                now.run[k] += file.previous.run[j];
    for (int k = 0; k < now.count; ++k) {
        if (now.run[k] < IN_STEP)
            continue;
        const uint32_t mine = file.lineCount, theirs = now.line[k], run = now.run[k];
        ReportDifference(run, f == 0 ? mine : theirs, f == 0 ? theirs : mine);
        now.count = 1;
        now.line[0] = theirs;
        now.run[0] = run;
        return;
    }
}

// The lines of the run, and all pending lines before them, are accounted
// for now.
void CCompare::ReportDifference(uint32_t run, uint32_t line0, uint32_t line1)
{
    const long deleted = static_cast<long>(line0) - static_cast<long>(m_files[0].lineCount) -
                         static_cast<long>(run) + static_cast<long>(m_files[0].pendingCount);
    const long added = static_cast<long>(line1) - static_cast<long>(m_files[1].lineCount) -
                       static_cast<long>(run) + static_cast<long>(m_files[1].pendingCount);
    if (deleted >= 1 || added >= 1) {
        if (m_mode == MODE_SCRIPT)
            WriteScript(deleted, added, line1 - run);
        else if (m_output.Poll()) {
            WriteHeader(deleted, added);
            if (deleted > 0) {
                WriteLines(0, line0 - run, "< ", true);
                if (added > 0)
                    m_output.Write("---\r\n");
            }
            if (added > 0)
                WriteLines(1, line1 - run, "> ", true);
        }
    }
    DiscardLines(0, line0);
    DiscardLines(1, line1);
}

// "5c5", "2,3d1", "4a5,6", "7,8c9,11": the first number of an add is the
// next pending line of the first file, not the one before it.
void CCompare::WriteHeader(long deleted, long added)
{
    const File &a = m_files[0], &b = m_files[1];
    const unsigned long first = a.head ? a.head->lineNumber : a.lineCount;
    const unsigned long second = b.head ? b.head->lineNumber : b.lineCount + 1;
    char header[64];
    int n = snprintf(header, sizeof header, "%lu", first);
    if (deleted > 1)
        n += snprintf(header + n, sizeof header - n, ",%lu", first + deleted - 1);
    const char letter = deleted > 0 && added > 0 ? 'c' : deleted > 0 ? 'd' : 'a';
    n += snprintf(header + n, sizeof header - n, "%c%lu", letter, second);
    if (added > 1)
        snprintf(header + n, sizeof header - n, ",%lu", second + added - 1);
    m_output.Write(std::string(header) + "\r\n");
}

// The edit script keeps the second file's text only and does not yield.
void CCompare::WriteScript(long deleted, long added, uint32_t addedThrough)
{
    const File& a = m_files[0];
    char text[64];
    if (added > 0) {
        snprintf(text, sizeof text, "%lua%ld\r\n",
                 static_cast<unsigned long>(a.head ? a.head->lineNumber : a.lineCount + 1), added);
        m_output.Write(text);
        WriteLines(1, addedThrough, "", false);
    }
    if (deleted > 0) {
        snprintf(text, sizeof text, "%lud%ld\r\n",
                 static_cast<unsigned long>(a.head ? a.head->lineNumber : a.lineCount), deleted);
        m_output.Write(text);
    }
}

// Yields before the first line and then before every sixth.
void CCompare::WriteLines(int f, uint32_t through, const char* prefix, bool yield)
{
    int written = 0;
    for (const CompareLine* line = m_files[f].head; line && line->lineNumber <= through;
         line = line->next, ++written) {
        if (yield && written % 6 == 0 && !m_output.Poll())
            return;
        m_output.Write(prefix + std::string(line->text) + "\r\n");
    }
}

// Lines go oldest first, so in each bucket they are the first.
void CCompare::DiscardLines(int f, uint32_t through)
{
    File& file = m_files[f];
    while (file.head && file.head->lineNumber <= through) {
        CompareLine* line = file.head;
        file.head = line->next;
        --file.pendingCount;
        const int c = line->lengthClass;
        file.bucketHead[c] = line->nextInBucket;
        if (!file.bucketHead[c])
            file.bucketTail[c] = nullptr;
        FreeLine(line);
    }
    if (!file.head)
        file.tail = nullptr;
}
