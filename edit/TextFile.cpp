#include "edit/TextFile.h"

#include "edit/FileUtil.h"
#include "edit/Messages.h"
#include "framework/File.h"

#include <cstring>

namespace
{

// Larger transfers go in pieces, since one call moves at most 4 GB.
const size_t kChunk = 0x40000000u;

unsigned ChunkOf(size_t remaining)
{
    return static_cast<unsigned>(remaining > kChunk ? kChunk : remaining);
}

// Reads up to length bytes; the number read.
size_t ReadAll(CFile& file, char* text, size_t length)
{
    size_t done = 0;
    while (done < length) {
        const unsigned got = file.Read(text + done, ChunkOf(length - done));
        if (got == 0)
            break;
        done += got;
    }
    return done;
}

void WriteAll(CFile& file, const char* text, size_t length)
{
    for (size_t done = 0; done < length;) {
        const unsigned chunk = ChunkOf(length - done);
        file.Write(text + done, chunk);
        done += chunk;
    }
}

// Grows block, or allocates one, to size bytes of movable local memory;
// null when either the size or the memory is too much.
HLOCAL GrowBlock(HLOCAL block, uint64_t size)
{
    if (size >= 0xFFFFFFFFu)
        return nullptr;
    if (block)
        return ::LocalReAlloc(block, static_cast<SIZE_T>(size), LMEM_MOVEABLE);
    return ::LocalAlloc(LMEM_MOVEABLE, static_cast<SIZE_T>(size));
}

bool Ask(const std::function<bool()>& question)
{
    return !question || question();
}

// The checks on a text that was read: control bytes, then terminators.
TextReadResult CheckText(const char* text, size_t length, const TextReadQuestions& questions,
                         FileFormat& state, size_t& count)
{
    const int bad = FindNonAnsiByte(text, length);
    if (bad >= 0 && questions.acceptControlByte &&
        !questions.acceptControlByte(static_cast<unsigned char>(text[bad])))
        return TR_REFUSED;
    state = DetectFormat(text, length, count);
    if (state == FF_NONE || state == FF_MIXED) {
        if (!Ask(questions.acceptTerminators))
            return TR_REFUSED;
        state = FF_DOS;
    }
    return TR_OK;
}

TextReadResult ReadInto(CFile& file, const char* path, DWORD maxSize, HLOCAL& block,
                        FileFormat& format, const TextReadQuestions& questions)
{
    uint64_t length64 = 0;
    try {
        length64 = file.GetLength();
    } catch (const CFileException& e) {
        ReportFileError(path, e, MB_ICONEXCLAMATION);
        return TR_FAILED;
    }
    HLOCAL grown = length64 <= maxSize ? GrowBlock(block, length64 + 1) : nullptr;
    if (!grown)
        return TR_TOOLARGE;
    block = grown;
    const size_t length = static_cast<size_t>(length64);

    TextReadResult result = TR_OK;
    char* text = static_cast<char*>(::LocalLock(block));
    try {
        text[ReadAll(file, text, length)] = '\0';
    } catch (const CFileException& e) {
        ReportFileError(path, e, MB_ICONEXCLAMATION);
        result = TR_FAILED;
    }
    file.Abort();

    FileFormat state = FF_DOS;
    size_t count = 0;
    if (result == TR_OK && length != 0)
        result = CheckText(text, length, questions, state, count);
    ::LocalUnlock(block);
    if (result != TR_OK)
        return result;

    if (state == FF_UNIX || state == FF_MAC) {
        // Each lone terminator becomes CR LF, expanded within the block.
        const uint64_t newSize = static_cast<uint64_t>(length) + count;
        HLOCAL wider = newSize < maxSize ? GrowBlock(block, newSize + 1) : nullptr;
        if (!wider)
            return TR_TOOLARGE;
        block = wider;
        ExpandTerminators(static_cast<char*>(::LocalLock(block)), length, count, state);
        ::LocalUnlock(block);
    }
    format = state;
    return TR_OK;
}

// The text in the terminators of format, in a block of global memory that
// the caller frees; null for FF_DOS, or when memory is missing (noticed).
char* ConvertedText(const char* text, size_t& length, FileFormat format)
{
    if (format == FF_DOS)
        return nullptr;
    char* converted = static_cast<char*>(::GlobalAlloc(GMEM_FIXED, length + 1));
    if (!converted) {
        OutOfMemoryNotice(); // the text is written as it stands
        return nullptr;
    }
    length = ContractTerminators(text, length, converted, format);
    return converted;
}

bool WriteFileAt(const char* target, const char* reportName, const char* text, size_t length)
{
    CFile file;
    try {
        CFileException error;
        if (!file.Open(target, CFile::modeWrite | CFile::modeCreate | CFile::shareExclusive,
                       &error))
            throw error;
        WriteAll(file, text, length);
        file.Close();
        return true;
    } catch (const CFileException& e) {
        file.Abort();
        ReportFileError(reportName, e, MB_ICONEXCLAMATION);
        return false;
    }
}

// The old way, for a directory that takes no new file: the original is
// copied to its .BAK name when asked, then truncated and written.
bool WriteInPlace(const char* path, const char* text, size_t length, bool backup)
{
    FileStatus status;
    if (backup && GetFileStatus(path, status) &&
        !::CopyFileA(status.fullName, BackupName(status.fullName), FALSE))
        ReportLastError(status.fullName, MB_ICONEXCLAMATION); // the save goes on
    return WriteFileAt(path, path, text, length);
}

// A name for a new, empty file in dir, or empty.
CString TempNameIn(const char* dir)
{
    char name[MAX_PATH];
    return ::GetTempFileNameA(dir, "KMT", 0, name) ? CString(name) : CString();
}

// Puts temp in path's place. An existing original is replaced through the
// platform and set aside under its .BAK name, or else under a name of our
// own that goes afterwards: never under one the platform would pick itself
// and leave behind after a failure.
bool ReplaceWith(const char* temp, const char* path, const char* dir, bool backup)
{
    FileStatus status;
    if (!GetFileStatus(path, status))
        return ::MoveFileExA(temp, path, MOVEFILE_REPLACE_EXISTING) != FALSE;
    const DWORD attributes = ::GetFileAttributesA(status.fullName);
    CString aside;
    if (backup) {
        aside = BackupName(status.fullName);
        if (::GetFileAttributesA(aside) != INVALID_FILE_ATTRIBUTES && !RemoveFile(aside))
            aside.Empty(); // a failed backup does not stop the save
    }
    const bool scratch = aside.IsEmpty();
    if (scratch)
        aside = TempNameIn(dir);
    const BOOL replaced =
        ::ReplaceFileA(status.fullName, temp, aside.IsEmpty() ? nullptr : aside.c_str(),
                       REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr);
    const DWORD error = ::GetLastError();
    if (!replaced && error == ERROR_UNABLE_TO_MOVE_REPLACEMENT_2)
        ::MoveFileA(aside, status.fullName); // the original goes back to its name
    if (scratch && !aside.IsEmpty())
        ::DeleteFileA(aside);
    if (!replaced) {
        ::SetLastError(error);
        return false;
    }
    // Not every platform's replacing keeps the attributes.
    if (attributes != INVALID_FILE_ATTRIBUTES &&
        ::GetFileAttributesA(status.fullName) != attributes)
        ::SetFileAttributesA(status.fullName, attributes);
    return true;
}

} // namespace

TextReadResult ReadTextBlock(const char* path, DWORD maxSize, HLOCAL& block, FileFormat& format,
                             const TextReadQuestions& questions)
{
    CFile file;
    CFileException error;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyWrite, &error)) {
        ReportFileError(path, error, MB_ICONEXCLAMATION);
        return TR_FAILED;
    }
    const HLOCAL given = block;
    const TextReadResult result = ReadInto(file, path, maxSize, block, format, questions);
    if (result != TR_OK && !given && block) {
        ::LocalFree(block);
        block = nullptr;
    }
    return result;
}

bool WriteTextFile(const char* path, const char* text, size_t length, FileFormat format,
                   bool backup)
{
    char* converted = ConvertedText(text, length, format);
    const char* out = converted ? converted : text;

    CString dir;
    if (!SplitDir(path, dir))
        GetCurrentDir(dir);
    char temp[MAX_PATH] = "";
    bool saved = false;
    // Some platforms name a temporary file they could not create.
    if (!::GetTempFileNameA(dir, "KMT", 0, temp) ||
        ::GetFileAttributesA(temp) == INVALID_FILE_ATTRIBUTES) {
        temp[0] = '\0';
        saved = WriteInPlace(path, out, length, backup); // the directory takes no new file
    } else if (WriteFileAt(temp, path, out, length)) {
        saved = ReplaceWith(temp, path, dir, backup);
        if (!saved)
            ReportLastError(path, MB_ICONEXCLAMATION);
    }
    if (!saved && temp[0])
        ::DeleteFileA(temp);
    if (converted)
        ::GlobalFree(converted);
    return saved;
}
