#include "framework/File.h"

#include <windows.h>

IMPLEMENT_DYNAMIC(CFile, CObject)

namespace
{

[[noreturn]] void ThrowOsError(DWORD error)
{
    ThrowFileException(CFileException::OsErrorToException(static_cast<long>(error)),
                       static_cast<long>(error));
}

} // namespace

CFile::CFile(const char* fileName, unsigned openFlags)
{
    CFileException error;
    if (!Open(fileName, openFlags, &error))
        throw error;
}

CFile::~CFile()
{
    if (m_hFile)
        Abort();
}

bool CFile::Open(const char* fileName, unsigned openFlags, CFileException* error)
{
    DWORD access = 0;
    switch (openFlags & 3) {
    case modeRead:
        access = GENERIC_READ;
        break;
    case modeWrite:
        access = GENERIC_WRITE;
        break;
    default:
        access = GENERIC_READ | GENERIC_WRITE;
        break;
    }
    DWORD share = 0;
    switch (openFlags & 0x70) {
    case shareDenyWrite:
        share = FILE_SHARE_READ;
        break;
    case shareDenyRead:
        share = FILE_SHARE_WRITE;
        break;
    case shareDenyNone:
        share = FILE_SHARE_READ | FILE_SHARE_WRITE;
        break;
    default:
        break;
    }
    DWORD disposition = OPEN_EXISTING;
    if (openFlags & modeCreate)
        disposition = (openFlags & modeNoTruncate) ? OPEN_ALWAYS : CREATE_ALWAYS;

    m_strFileName = fileName;
    HANDLE file = ::CreateFileA(fileName, access, share, nullptr, disposition,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        DWORD os = ::GetLastError();
        if (error) {
            error->m_lOsError = static_cast<long>(os);
            error->m_cause = CFileException::OsErrorToException(static_cast<long>(os));
        }
        return false;
    }
    m_hFile = file;
    return true;
}

void CFile::Close()
{
    HANDLE file = m_hFile;
    m_hFile = nullptr;
    if (file && !::CloseHandle(file))
        ThrowOsError(::GetLastError());
}

void CFile::Abort()
{
    if (m_hFile)
        ::CloseHandle(m_hFile);
    m_hFile = nullptr;
}

void CFile::ThrowLastError() const
{
    ThrowOsError(::GetLastError());
}

unsigned CFile::Read(void* buffer, unsigned count)
{
    if (!m_hFile)
        ThrowFileException(CFileException::invalidFile);
    DWORD done = 0;
    if (!::ReadFile(m_hFile, buffer, count, &done, nullptr))
        ThrowLastError();
    return done;
}

void CFile::Write(const void* buffer, unsigned count)
{
    if (!m_hFile)
        ThrowFileException(CFileException::invalidFile);
    DWORD done = 0;
    if (!::WriteFile(m_hFile, buffer, count, &done, nullptr))
        ThrowLastError();
    if (done != count)
        ThrowFileException(CFileException::diskFull);
}

uint64_t CFile::Seek(int64_t offset, SeekPosition from)
{
    LARGE_INTEGER distance, position;
    distance.QuadPart = offset;
    if (!::SetFilePointerEx(m_hFile, distance, &position, static_cast<DWORD>(from)))
        ThrowLastError();
    return static_cast<uint64_t>(position.QuadPart);
}

uint64_t CFile::GetLength() const
{
    LARGE_INTEGER size;
    if (!::GetFileSizeEx(m_hFile, &size))
        ThrowLastError();
    return static_cast<uint64_t>(size.QuadPart);
}

void CFile::SetLength(uint64_t length)
{
    Seek(static_cast<int64_t>(length), begin);
    if (!::SetEndOfFile(m_hFile))
        ThrowLastError();
}

void CFile::Flush()
{
    if (m_hFile && !::FlushFileBuffers(m_hFile))
        ThrowLastError();
}

void CFile::GetTimes(FILETIME* created, FILETIME* accessed, FILETIME* modified) const
{
    if (!::GetFileTime(m_hFile, created, accessed, modified))
        ThrowLastError();
}

void CFile::SetTimes(const FILETIME* created, const FILETIME* accessed, const FILETIME* modified)
{
    if (!::SetFileTime(m_hFile, created, accessed, modified))
        ThrowLastError();
}

void CFile::SetAttributes(const char* fileName, unsigned long attributes)
{
    if (!::SetFileAttributesA(fileName, attributes))
        ThrowOsError(::GetLastError());
}

void CFile::Rename(const char* oldName, const char* newName)
{
    if (!::MoveFileA(oldName, newName))
        ThrowOsError(::GetLastError());
}

void CFile::Remove(const char* fileName)
{
    if (!::DeleteFileA(fileName))
        ThrowOsError(::GetLastError());
}
