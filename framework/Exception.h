// Exceptions of the class library, thrown by value and caught by reference.
#pragma once
#include "framework/Object.h"

#include <new>

class CException : public CObject
{
    DECLARE_DYNAMIC(CException)
};

// The one memory failure. The application's new handler throws it too, so
// a failing operator new and a failing platform allocation are caught alike.
class CMemoryException : public CException, public std::bad_alloc
{
    DECLARE_DYNAMIC(CMemoryException)
};

class CFileException : public CException
{
    DECLARE_DYNAMIC(CFileException)
  public:
    enum {
        none = 0,
        generic = 1,
        fileNotFound = 2,
        badPath = 3,
        tooManyOpenFiles = 4,
        accessDenied = 5,
        invalidFile = 6,
        removeCurrentDir = 7,
        directoryFull = 8,
        badSeek = 9,
        hardIO = 10,
        sharingViolation = 11,
        lockViolation = 12,
        diskFull = 13,
        endOfFile = 14,
    };
    explicit CFileException(int cause = none, long osError = -1)
        : m_cause(cause), m_lOsError(osError)
    {
    }

    // Maps an operating-system error code to one of the causes above.
    static int OsErrorToException(long osError);

    int m_cause;
    long m_lOsError;
};

[[noreturn]] void ThrowMemoryException();
// For use inside a catch block at a border that nothing may cross (a window
// procedure, the message loop): hands what was caught to the application.
void KmReportStrayException(unsigned message);
[[noreturn]] void ThrowFileException(int cause, long osError = -1);
