#include "views/LineFile.h"

#include "search/ByteFind.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <exception>
#include <new>
#include <system_error>
#include <thread>

namespace
{

// The index is kept in pieces of this many line starts: an array grown
// step by step is copied again and again, and on the platform's heap that
// costs more than the scan itself. Each stretch of a large file ends in a
// piece of its own, filled only in part: pages never written take no memory,
// while giving the piece back down to size costs the platform's heap more
// than the scan of the stretch.
const uint32_t kPieceShift = 16;
const uint32_t kPieceSize = 1u << kPieceShift;

// The scan reads in larger pieces than the record block: it is the one pass
// over the whole file, and the calls to the file layer are what it costs.
const uint32_t kScanChunk = 0x40000;

#ifndef KM_BYTEFIND_VECTOR
const uint64_t kOnes = 0x0101010101010101ull;
const uint64_t kHighs = 0x8080808080808080ull;

uint64_t Load(const unsigned char* bytes)
{
    uint64_t word;
    memcpy(&word, bytes, sizeof word);
    return word;
}

// The high bit of each byte of word below high (at most 128), and with low
// also above low: exact for every byte, as no byte borrows from the next.
uint64_t BytesBelow(uint64_t word, unsigned high)
{
    return (kOnes * (127 + high) - (word & (kOnes * 127))) & ~word & kHighs;
}

uint64_t BytesBetween(uint64_t word, unsigned low, unsigned high)
{
    return BytesBelow(word, high) & ((word & (kOnes * 127)) + kOnes * (127 - low));
}

#endif

// One bit for each of the 16 bytes at bytes that is a control byte no text
// holds: below 32, but not tab, LF, VT, FF or CR.
uint32_t ForeignMask16(const unsigned char* bytes)
{
#ifdef KM_BYTEFIND_VECTOR
    // Unsigned "at most" as a minimum that equals the byte.
    auto atMost = [](__m128i v, char most) {
        return _mm_cmpeq_epi8(_mm_min_epu8(v, _mm_set1_epi8(most)), v);
    };
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
    const __m128i control = atMost(v, ' ' - 1);
    const __m128i layout = atMost(_mm_sub_epi8(v, _mm_set1_epi8('\t')), '\r' - '\t');
    return static_cast<uint32_t>(_mm_movemask_epi8(_mm_andnot_si128(layout, control)));
#else
    uint32_t mask = 0;
    for (int k = 0; k < 2; ++k) {
        const uint64_t word = Load(bytes + 8 * k);
        mask |= HighBitsOf(BytesBelow(word, ' ') & ~BytesBetween(word, '\b', 14)) << (8 * k);
    }
    return mask;
#endif
}

// The LFs and the CRs among the 32 bytes at bytes, and while watched for
// the foreign control bytes; those past count read as none of them.
struct Terminators {
    uint32_t lfs, crs, foreign = 0;
    Terminators(const unsigned char* bytes, uint32_t count, bool watch)
    {
        unsigned char tail[32] = {};
        if (count < 32) {
            memcpy(tail, bytes, count);
            bytes = tail;
        }
        lfs = ByteMask32(bytes, '\n', '\n');
        crs = ByteMask32(bytes, '\r', '\r');
        if (watch)
            foreign = (ForeignMask16(bytes) | ForeignMask16(bytes + 16) << 16) &
                      (count < 32 ? (1u << count) - 1 : ~0u);
    }
    // Whether every CR has its LF right behind it, both in these bytes.
    bool OnlyPairs() const { return (crs << 1) == lfs && !(crs >> 31); }
};

// Appends line starts to the pieces of the index while the scan runs. The
// count and the longest line are kept here rather than in the file: for
// all the compiler knows a store into the index could change the file's
// counters, and reloading them after every line costs more than finding it.
struct IndexWriter {
    std::vector<std::unique_ptr<uint32_t[]>>& pieces;
    uint32_t* piece = nullptr;
    // Wider than an entry, so that a store into the index cannot be one
    // into them, and they stay in registers.
    uint64_t count = 0, longest = 0;

    // The entry behind the last one, without counting it: the sentinel.
    bool Store(uint32_t start)
    {
        if ((count & (kPieceSize - 1)) == 0) {
            try {
                pieces.emplace_back(new uint32_t[kPieceSize]);
            } catch (const std::bad_alloc&) {
                return false;
            }
            piece = pieces.back().get();
        }
        piece[count & (kPieceSize - 1)] = start;
        return true;
    }

    // The line from start to end, its terminator included. Room is always
    // left for the sentinel behind the last line.
    RecordOpenResult Add(uint32_t start, uint32_t end)
    {
        if (count == INT32_MAX - 1)
            return RECORD_TOOLARGE;
        if (!Store(start))
            return RECORD_NOMEMORY;
        ++count;
        if (end - start > longest)
            longest = end - start;
        return RECORD_OPEN;
    }

    // Adds the lines that end in whole windows of 32 bytes from bytes + i
    // on, below end, as long as the windows hold LFs alone or CR LF pairs
    // and the piece has room for all of their lines; offset turns a place
    // in bytes into a line start; while watched a foreign control byte
    // stops them too. Gives the place of the first window not taken. The
    // counters stay in registers here.
    uint32_t AddPlainLines(const unsigned char* bytes, uint32_t i, uint32_t end, uint32_t offset,
                           uint32_t& lineStart, bool& sawLf, bool watch)
    {
        uint64_t n = count, most = longest;
        uint32_t start = lineStart;
        bool lf = false;
        for (; i + 32 <= end; i += 32) {
            const uint64_t used = n & (kPieceSize - 1);
            if (used == 0 || used > kPieceSize - 32 || n > INT32_MAX - 40)
                break;
            const Terminators found(bytes + i, 32, watch);
            if (found.foreign || (found.crs && !found.OnlyPairs()))
                break;
            lf = lf || (found.lfs && !found.crs);
            for (uint32_t lfs = found.lfs; lfs; lfs &= lfs - 1) {
                const uint32_t lineEnd = offset + i + static_cast<uint32_t>(__builtin_ctz(lfs)) + 1;
                piece[n++ & (kPieceSize - 1)] = start;
                if (lineEnd - start > most)
                    most = lineEnd - start;
                start = lineEnd;
            }
        }
        count = n;
        longest = most;
        lineStart = start;
        sawLf = sawLf || lf;
        return i;
    }
};

bool IsTerminator(int byte)
{
    return byte == '\r' || byte == '\n';
}

bool IsForeign(unsigned char byte)
{
    return byte < ' ' && (byte < '\t' || byte > '\r');
}

// The scan of a stretch of the file, from a line start to its end or on to
// the file's end, into pieces of an index of its own.
class LineScan
{
  public:
    // The stretch from `from` up to `to`, or to the end.
    LineScan(std::vector<std::unique_ptr<uint32_t[]>>& pieces, uint32_t from, uint32_t to)
        : m_index{pieces}, m_lineStart(from), m_base(from), m_to(to)
    {
    }

    // Reads the stretch; asks about the first control byte, or without ask
    // takes it as allowed and keeps it for the caller.
    RecordOpenResult Run(CByteSource& source, const CLineFile::ControlByteQuestion* ask,
                         const std::atomic<bool>& stop);
    // The last line, a CR that waits and the sentinel, once the stretch
    // before this one is known: with shift 1 when either moved its line ends.
    RecordOpenResult Finish(uint32_t length, uint32_t shift, int terminator);
    // Moves the line ends found before this stretch's control byte one
    // byte on, as a control byte before the stretch moves every one.
    void ShiftAhead();

    bool Shifted() const { return m_shift != 0; }
    unsigned ForeignByte() const { return m_foreign; }
    int Terminator() const { return m_terminator; }
    uint64_t Count() const { return m_index.count; }
    uint64_t Longest() const { return m_index.longest; }

  private:
    RecordOpenResult Chunk(const unsigned char* bytes, uint32_t count,
                           const CLineFile::ControlByteQuestion* ask);
    RecordOpenResult ScanRange(const unsigned char* bytes, uint32_t i, uint32_t& end);
    RecordOpenResult EndLine(uint32_t end)
    {
        const RecordOpenResult added = m_index.Add(m_lineStart, end);
        m_lineStart = end;
        return added;
    }
    RecordOpenResult SettleCR(const unsigned char* bytes, uint32_t next);

    IndexWriter m_index;
    // Line starts count the bytes consumed; after the question for a control
    // byte that byte is counted twice, so every later line start lies one
    // byte late. Kept as the scan always had it.
    uint32_t m_shift = 0;
    uint64_t m_shiftedFrom = UINT64_MAX; // the first entry stored with the shift
    unsigned m_foreign = 0;              // the control byte that set it
    uint32_t m_lineStart, m_base, m_to;
    bool m_pendingCR = false;
    uint32_t m_crAt = 0;
    int m_terminator = 0; // as the file's, 0 while this stretch set none
};

RecordOpenResult LineScan::Run(CByteSource& source, const CLineFile::ControlByteQuestion* ask,
                               const std::atomic<bool>& stop)
{
    std::unique_ptr<unsigned char[]> chunk(new (std::nothrow) unsigned char[kScanChunk]);
    if (!chunk)
        return RECORD_NOMEMORY;
    source.Seek(m_base);
    while (m_base < m_to && !stop) {
        const uint32_t count = source.Read(chunk.get(), std::min(kScanChunk, m_to - m_base));
        if (!count)
            break;
        if (RecordOpenResult scanned = Chunk(chunk.get(), count, ask))
            return scanned;
        m_base += count;
    }
    return RECORD_OPEN;
}

RecordOpenResult LineScan::Chunk(const unsigned char* bytes, uint32_t count,
                                 const CLineFile::ControlByteQuestion* ask)
{
    uint32_t end = count;
    if (RecordOpenResult scanned = ScanRange(bytes, 0, end))
        return scanned;
    if (end < count) {
        if (ask && *ask && !(*ask)(bytes[end]))
            return RECORD_REFUSED;
        m_foreign = bytes[end];
        m_shift = 1;
        m_shiftedFrom = m_index.count;
        const uint32_t foreign = end;
        end = count;
        if (RecordOpenResult scanned = ScanRange(bytes, foreign, end))
            return scanned;
    }
    return RECORD_OPEN;
}

// A CR ends its line with the LF behind it as a pair, or alone as a
// terminator of its own; it may stand at the end of one piece read, and
// then the first byte of the next settles it.
RecordOpenResult LineScan::SettleCR(const unsigned char* bytes, uint32_t next)
{
    m_pendingCR = false;
    const bool pair = bytes[next] == '\n';
    if (!pair)
        m_terminator = 2;
    return EndLine(m_base + next + m_shift + (pair ? 1 : 0));
}

// The terminators are found 32 bytes at a time, and handled one by one in
// their order; a CR is settled by the next terminator or by the end. Until
// the first foreign control byte, that byte ends the range: end is set to
// it, and a CR right before it waits for the byte to be asked about.
RecordOpenResult LineScan::ScanRange(const unsigned char* bytes, uint32_t i, uint32_t& end)
{
    const bool watch = !m_shift;
    if (watch && i < end && IsForeign(bytes[i])) {
        end = i;
        return RECORD_OPEN;
    }
    if (m_pendingCR && i < end) {
        const bool pair = bytes[i] == '\n';
        if (RecordOpenResult added = SettleCR(bytes, i))
            return added;
        i += pair ? 1 : 0;
    }
    for (; i < end; i += 32) {
        // Most bytes read have LFs alone or CR LF pairs, and no CR waits.
        if (!m_pendingCR) {
            bool sawLf = false;
            i = m_index.AddPlainLines(bytes, i, end, m_base + m_shift, m_lineStart, sawLf, watch);
            if (sawLf)
                m_terminator = 1;
            if (i >= end)
                break;
        }
        const Terminators found(bytes + i, end - i, watch);
        uint32_t hits = found.lfs | found.crs;
        if (found.foreign) {
            const uint32_t at = static_cast<uint32_t>(__builtin_ctz(found.foreign));
            hits &= (1u << at) - 1;
            end = i + at; // the last window
        }
        for (; hits; hits &= hits - 1) {
            const uint32_t at = i + static_cast<uint32_t>(__builtin_ctz(hits));
            if (m_pendingCR) {
                const bool pair = at == m_crAt + 1 && bytes[at] == '\n';
                if (RecordOpenResult added = SettleCR(bytes, m_crAt + 1))
                    return added;
                if (pair)
                    continue;
            }
            if (bytes[at] == '\r') {
                m_pendingCR = true;
                m_crAt = at;
            } else {
                m_terminator = 1;
                if (RecordOpenResult added = EndLine(m_base + at + 1 + m_shift))
                    return added;
            }
        }
    }
    if (m_pendingCR && m_crAt + 1 < end)
        return SettleCR(bytes, m_crAt + 1);
    return RECORD_OPEN;
}

void LineScan::ShiftAhead()
{
    // Entry n holds the end of line n - 1: those up to the one stored
    // when the shift came were counted without it.
    auto entry = [this](uint64_t n) -> uint32_t& {
        return m_index.pieces[n >> kPieceShift][n & (kPieceSize - 1)];
    };
    uint64_t longest = 0;
    for (uint64_t n = 0; n < m_index.count; ++n) {
        entry(n) += n <= m_shiftedFrom ? 1 : 0;
        if (n > 0)
            longest = std::max<uint64_t>(longest, entry(n) - entry(n - 1));
    }
    if (m_index.count <= m_shiftedFrom)
        ++m_lineStart;
    if (m_index.count > 0)
        longest = std::max<uint64_t>(longest, m_lineStart - entry(m_index.count - 1));
    m_index.longest = longest;
    m_shift = 1;
}

RecordOpenResult LineScan::Finish(uint32_t length, uint32_t shift, int terminator)
{
    if (m_pendingCR) {
        terminator = 2;
        if (RecordOpenResult added = EndLine(length + shift))
            return added;
    }
    m_terminator = terminator;
    uint32_t sentinel = m_lineStart;
    if (m_lineStart < length + shift) {
        // The extra bytes stand for the terminator the line lacks, so that
        // its length comes out as for any other line.
        sentinel = length + (terminator ? 1 : 2);
        if (RecordOpenResult added = m_index.Add(m_lineStart, sentinel))
            return added;
    }
    return m_index.Store(sentinel) ? RECORD_OPEN : RECORD_NOMEMORY;
}

} // namespace

CLineFile::~CLineFile()
{
    Close();
}

void CLineFile::Close()
{
    CRecordFile::Close();
    m_stretches.clear();
    m_nCurRecord = m_nRecordCount = 0;
}

RecordOpenResult CLineFile::Open(std::unique_ptr<CByteSource> source)
{
    RecordOpenResult result = CRecordFile::Open(std::move(source));
    // Two more than the length must fit an index entry: the unterminated
    // last line's sentinel.
    if (result == RECORD_OPEN && m_nFileLength > UINT32_MAX - 2)
        result = RECORD_TOOLARGE;
    if (result == RECORD_OPEN)
        result = Scan();
    if (result != RECORD_OPEN)
        Close();
    return result;
}

uint32_t CLineFile::LineStart(int32_t line) const
{
    uint32_t n = static_cast<uint32_t>(line);
    // Lines are mostly read one after another: the stretch of the last
    // look-up is tried first.
    const size_t count = m_stretches.size();
    size_t k = m_lastStretch < count ? m_lastStretch : 0;
    if (n < m_stretches[k].firstLine || (k + 1 < count && n >= m_stretches[k + 1].firstLine)) {
        k = static_cast<size_t>(
            std::upper_bound(m_stretches.begin(), m_stretches.end(), n,
                             [](uint32_t n, const Stretch& s) { return n < s.firstLine; }) -
            m_stretches.begin() - 1);
        m_lastStretch = k;
    }
    n -= m_stretches[k].firstLine;
    return m_stretches[k].pieces[n >> kPieceShift][n & (kPieceSize - 1)];
}

int32_t CLineFile::LineOf(uint32_t offset) const
{
    int32_t low = 0, high = m_nRecordCount; // the line is in [low, high)
    while (high - low > 1) {
        const int32_t middle = low + (high - low) / 2;
        if (LineStart(middle) <= offset)
            low = middle;
        else
            high = middle;
    }
    return low;
}

int32_t CLineFile::NextLineHolding(const PatternNeedle& needle, int32_t from)
{
    const uint32_t kPiece = 0x10000;
    const bool crossesLines = memchr(needle.bytes, '\n', size_t(needle.length)) ||
                              memchr(needle.bytes, '\r', size_t(needle.length));
    if (from >= m_nRecordCount || needle.length <= 0 || crossesLines)
        return from;
    if (m_piece.empty())
        m_piece.resize(kPiece);
    uint32_t at = LineStart(from);
    const uint32_t overlap = static_cast<uint32_t>(needle.length) - 1;
    while (at < m_nFileLength) {
        const uint32_t count = ReadAt(at, m_piece.data(), std::min(kPiece, m_nFileLength - at));
        const int found = FindNeedle(needle, m_piece.data(), static_cast<int>(count));
        if (found >= 0)
            return LineOf(at + static_cast<uint32_t>(found));
        if (count <= overlap || at + count >= m_nFileLength)
            break;
        at += count - overlap;
    }
    return m_nRecordCount;
}

namespace
{

// The scans of the stretches, after all of them ran: the first control byte
// in the file is the one asked about, if no scan asked already, and it
// moves every later line start; the last stretch ends the index.
RecordOpenResult SettleStretches(std::vector<LineScan>& scans, uint32_t length,
                                 const CLineFile::ControlByteQuestion* ask, int& terminator)
{
    const auto shifted =
        std::find_if(scans.begin(), scans.end(), [](const LineScan& s) { return s.Shifted(); });
    if (shifted != scans.end() && ask && *ask && !(*ask)(shifted->ForeignByte()))
        return RECORD_REFUSED;
    uint64_t count = 0;
    terminator = 0;
    for (auto scan = scans.begin(); scan != scans.end(); ++scan) {
        if (shifted < scan)
            scan->ShiftAhead();
        count += scan->Count();
        if (scan->Terminator())
            terminator = scan->Terminator();
    }
    if (count > INT32_MAX - 1)
        return RECORD_TOOLARGE;
    LineScan& last = scans.back();
    if (RecordOpenResult finished = last.Finish(length, last.Shifted() ? 1 : 0, terminator))
        return finished;
    terminator = last.Terminator();
    return RECORD_OPEN;
}

// Runs the scans of the stretches: threads of their own over twins of
// the source take them one by one, and the caller's thread joins them once
// its work comes out true. What a thread throws is thrown here.
RecordOpenResult RunScans(CByteSource& source, std::vector<LineScan>& scans,
                          const CLineFile::ControlByteQuestion* ask,
                          const std::function<bool()>& first)
{
    const size_t count = scans.size();
    std::atomic<size_t> next{0};
    std::atomic<bool> stop{false};
    std::vector<RecordOpenResult> results(count, RECORD_OPEN);
    auto work = [&](CByteSource& from) {
        for (size_t k; !stop && (k = next++) < count;) {
            results[k] = scans[k].Run(from, ask, stop);
            if (results[k] != RECORD_OPEN)
                stop = true;
        }
    };
    const unsigned cores = std::thread::hardware_concurrency();
    const size_t helpers = std::min<size_t>({count - 1, cores > 1 ? cores - 1 : 1, 7});
    std::vector<std::unique_ptr<CByteSource>> twins;
    twins.reserve(helpers); // each thread reads its own while more are made
    std::vector<std::exception_ptr> failures(helpers);
    std::vector<std::thread> threads;
    auto joinAll = [&threads] {
        for (std::thread& thread : threads)
            thread.join();
    };
    for (size_t h = 0; h < helpers; ++h) {
        twins.push_back(source.Twin());
        if (!twins.back())
            break;
        try {
            threads.emplace_back([&, h] {
                try {
                    work(*twins[h]);
                } catch (...) {
                    failures[h] = std::current_exception();
                    stop = true;
                }
            });
        } catch (const std::system_error&) {
            break; // the threads there are, or this one, do it all
        }
    }
    RecordOpenResult result = RECORD_REFUSED;
    try {
        if (first()) {
            work(source);
            result = RECORD_OPEN;
        }
    } catch (...) {
        stop = true;
        joinAll();
        throw;
    }
    stop = stop || result != RECORD_OPEN;
    joinAll();
    for (const std::exception_ptr& failure : failures)
        if (failure)
            std::rethrow_exception(failure);
    for (size_t k = 0; k < count && result == RECORD_OPEN; ++k)
        result = results[k];
    return result;
}

} // namespace

RecordOpenResult CLineFile::Scan()
{
    m_nTerminator = 0;
    m_stretches.clear();
    for (uint32_t from : m_nFileLength >= m_nSplitFrom ? FindCuts() : std::vector<uint32_t>{0})
        m_stretches.push_back(Stretch{from, 0, {}});
    std::vector<LineScan> scans;
    scans.reserve(m_stretches.size());
    for (size_t k = 0; k < m_stretches.size(); ++k)
        scans.emplace_back(m_stretches[k].pieces, m_stretches[k].from,
                           k + 1 < m_stretches.size() ? m_stretches[k + 1].from : UINT32_MAX);
    // With one stretch its scan asks about a control byte where it meets
    // it; with more the question waits for them all.
    const bool one = scans.size() == 1;
    RecordOpenResult result = RunScans(*m_source, scans, one ? &m_question : nullptr,
                                       [this] { return DoWhileOpening(); });
    if (result == RECORD_OPEN)
        result = SettleStretches(scans, m_nFileLength, one ? nullptr : &m_question, m_nTerminator);
    if (result != RECORD_OPEN)
        return result;
    uint64_t longest = 0, firstLine = 0;
    for (size_t k = 0; k < scans.size(); ++k) {
        m_stretches[k].firstLine = static_cast<uint32_t>(firstLine);
        firstLine += scans[k].Count();
        longest = std::max(longest, scans[k].Longest());
    }
    m_nRecordCount = static_cast<int32_t>(firstLine);
    m_nRecordSize = static_cast<int32_t>(longest);
    if (m_nRecordSize)
        --m_nRecordSize;
    if (m_nRecordSize && !m_nTerminator)
        --m_nRecordSize;
    m_source->Seek(0);
    return RECORD_OPEN;
}

// Where the file is cut into stretches of about m_nStretchSize bytes, at
// least two: the first line start of each at or behind its place.
std::vector<uint32_t> CLineFile::FindCuts()
{
    std::vector<uint32_t> froms{0};
    const uint64_t size = std::max(1u, m_nStretchSize);
    const uint64_t count = std::max<uint64_t>(2, (m_nFileLength + size - 1) / size);
    for (uint64_t k = 1; k < count; ++k) {
        const uint32_t at = static_cast<uint32_t>(m_nFileLength * k / count);
        const uint32_t cut = LineStartFrom(at);
        if (cut > froms.back() && cut < m_nFileLength) // not the last cut again
            froms.push_back(cut);
    }
    return froms;
}

// The byte behind the first LF in the megabyte from at on, or the length:
// a file without LFs there is not cut there.
uint32_t CLineFile::LineStartFrom(uint32_t at)
{
    const uint32_t kLook = 4096, kLookFar = 1u << 20;
    unsigned char bytes[kLook];
    const uint32_t from = at;
    m_source->Seek(at);
    while (at - from < kLookFar) {
        const uint32_t count = m_source->Read(bytes, kLook);
        if (!count)
            break;
        if (const char* lf = FindByte(reinterpret_cast<const char*>(bytes), '\n', count))
            return at + static_cast<uint32_t>(lf - reinterpret_cast<const char*>(bytes)) + 1;
        at += count;
    }
    return m_nFileLength;
}

int CLineFile::GetRecordLength(int32_t record)
{
    if (record < 0 || record >= m_nRecordCount)
        return 0;
    int length = static_cast<int>(LineStart(record + 1) - LineStart(record)) - 1;
    if (length > 0 && !m_nTerminator)
        --length;
    return length;
}

int32_t CLineFile::SeekRecord(int32_t record)
{
    if (record < 0)
        return -2;
    if (record >= m_nRecordCount)
        return -1;
    SeekOffset(LineStart(record));
    m_nCurRecord = record;
    return record;
}

int CLineFile::ReadRecord(char* dest, int max)
{
    if (m_nCurRecord < 0 || m_nCurRecord >= m_nRecordCount)
        return -1;
    const uint32_t span = LineStart(m_nCurRecord + 1) - LineStart(m_nCurRecord);
    const uint32_t keep = max > 0 ? static_cast<uint32_t>(max) : 0;
    int stored = static_cast<int>(std::min(TakeBytes(dest, span, keep), keep));
    while (stored > 0 && IsTerminator(static_cast<unsigned char>(dest[stored - 1])))
        --stored;
    ++m_nCurRecord;
    return stored;
}

int CLineFile::ReadExpandedRecord(char* dest, int max)
{
    if (m_nCurRecord < 0 || m_nCurRecord >= m_nRecordCount)
        return -1;
    const int limit = max - 1;
    const int tab = m_nTabWidth > 0 ? m_nTabWidth : 1;
    const uint32_t span = LineStart(m_nCurRecord + 1) - LineStart(m_nCurRecord);
    int column = 0;
    for (uint32_t i = 0; i < span; ++i) {
        const int byte = ReadByte();
        if (byte < 0)
            break;
        if (byte == '\t') {
            do {
                if (column < limit)
                    dest[column] = ' ';
                ++column;
            } while (column % tab != 0 && column < limit);
        } else {
            if (column < limit)
                dest[column] = static_cast<char>(byte);
            ++column;
        }
    }
    int stored = column < limit ? column : limit;
    while (stored > 0 && IsTerminator(static_cast<unsigned char>(dest[stored - 1])))
        --stored;
    dest[stored] = '\0';
    ++m_nCurRecord;
    return stored;
}
