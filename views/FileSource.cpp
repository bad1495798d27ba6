#include "views/FileSource.h"

#include "edit/Messages.h"
#include "framework/File.h"
#include "resources/KmIds.h"

namespace
{

class CFileSource : public CByteSource
{
  public:
    uint64_t GetLength() override { return m_file.GetLength(); }
    uint32_t GetPosition() override
    {
        return static_cast<uint32_t>(m_file.Seek(0, CFile::current));
    }
    void Seek(uint32_t offset) override { m_file.Seek(offset, CFile::begin); }
    uint32_t Read(void* buffer, uint32_t count) override { return m_file.Read(buffer, count); }
    std::unique_ptr<CByteSource> Twin() override
    {
        auto twin = std::make_unique<CFileSource>();
        if (!twin->Open(m_path))
            return nullptr;
        return twin;
    }

    bool Open(const CString& path, CFileException* error = nullptr)
    {
        m_path = path;
        return m_file.Open(path, CFile::modeRead | CFile::shareDenyWrite, error);
    }

    CFile m_file;
    CString m_path;
};

} // namespace

bool OpenRecordFile(CRecordFile& file, const char* path)
{
    auto source = std::make_unique<CFileSource>();
    CFileException error;
    if (!source->Open(path, &error)) {
        ReportFileError(path, error, MB_ICONEXCLAMATION);
        return false;
    }
    try {
        switch (file.Open(std::move(source))) {
        case RECORD_OPEN:
            if (file.m_nFileLength != 0)
                return true;
            file.Close();
            KmMessageBox(nullptr, MB_ICONEXCLAMATION, IDS_EMPTYFILE, path);
            return false;
        case RECORD_TOOLARGE:
            KmMessageBox(nullptr, MB_ICONEXCLAMATION, IDS_TOOLARGEVIEW, path);
            return false;
        case RECORD_NOMEMORY:
            OutOfMemoryNotice();
            return false;
        default:
            return false;
        }
    } catch (const CFileException& failure) {
        file.Close();
        ReportFileError(path, failure, MB_ICONEXCLAMATION);
        return false;
    }
}
