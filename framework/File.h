// Binary file over a Win32 handle. Failures raise CFileException, except
// in the Open that takes an exception record to fill.
#pragma once
#include "framework/Exception.h"
#include "framework/String.h"

#include <cstdint>

class CFile : public CObject
{
    DECLARE_DYNAMIC(CFile)
  public:
    enum OpenFlags {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoTruncate = 0x0100,
        modeCreate = 0x1000,
    };
    enum SeekPosition { begin = 0, current = 1, end = 2 };

    CFile() = default;
    CFile(const char* fileName, unsigned openFlags); // throws
    ~CFile() override;
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    // False on failure, with the cause in *error when given.
    bool Open(const char* fileName, unsigned openFlags, CFileException* error = nullptr);
    void Close(); // throws on failure
    void Abort(); // closes, ignoring any failure
    bool IsOpen() const { return m_hFile != nullptr; }

    unsigned Read(void* buffer, unsigned count);
    void Write(const void* buffer, unsigned count);
    uint64_t Seek(int64_t offset, SeekPosition from);
    uint64_t GetLength() const;
    void SetLength(uint64_t length);
    void Flush();
    const CString& GetFilePath() const { return m_strFileName; }
    void* GetHandle() const { return m_hFile; }

    // The open file's three times; a null one is neither read nor changed.
    void GetTimes(FILETIME* created, FILETIME* accessed, FILETIME* modified) const;
    void SetTimes(const FILETIME* created, const FILETIME* accessed, const FILETIME* modified);

    static void Rename(const char* oldName, const char* newName);
    static void SetAttributes(const char* fileName, unsigned long attributes);
    static void Remove(const char* fileName);

  private:
    [[noreturn]] void ThrowLastError() const;

    void* m_hFile = nullptr;
    CString m_strFileName;
};
