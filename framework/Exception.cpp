#include "framework/Exception.h"

#include "framework/WinApp.h"

#include <windows.h>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CMemoryException, CException)
IMPLEMENT_DYNAMIC(CFileException, CException)

int CFileException::OsErrorToException(long osError)
{
    switch (osError) {
    case NO_ERROR:
        return none;
    case ERROR_FILE_NOT_FOUND:
        return fileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_BAD_NETPATH:
    case ERROR_FILENAME_EXCED_RANGE:
        return badPath;
    case ERROR_TOO_MANY_OPEN_FILES:
        return tooManyOpenFiles;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return accessDenied;
    case ERROR_INVALID_HANDLE:
        return invalidFile;
    case ERROR_CURRENT_DIRECTORY:
        return removeCurrentDir;
    case ERROR_CANNOT_MAKE:
        return directoryFull;
    case ERROR_SEEK:
    case ERROR_NEGATIVE_SEEK:
        return badSeek;
    case ERROR_CRC:
    case ERROR_SECTOR_NOT_FOUND:
    case ERROR_GEN_FAILURE:
    case ERROR_NOT_READY:
    case ERROR_WRITE_FAULT:
    case ERROR_READ_FAULT:
        return hardIO;
    case ERROR_SHARING_VIOLATION:
        return sharingViolation;
    case ERROR_LOCK_VIOLATION:
        return lockViolation;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return diskFull;
    case ERROR_HANDLE_EOF:
        return endOfFile;
    default:
        return generic;
    }
}

void ThrowMemoryException()
{
    throw CMemoryException();
}

void ThrowFileException(int cause, long osError)
{
    throw CFileException(cause, osError);
}

void KmReportStrayException(unsigned message)
{
    CWinApp* app = KmGetApp();
    if (!app)
        return;
    try {
        throw;
    } catch (const CException& e) {
        app->ProcessWndProcException(&e, message);
    } catch (const std::bad_alloc&) {
        CMemoryException memory;
        app->ProcessWndProcException(&memory, message);
    } catch (...) {
        app->ProcessWndProcException(nullptr, message);
    }
}
