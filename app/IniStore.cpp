#include "app/IniStore.h"

#include "app/SettingsText.h"

#include <cstring>
#include <new>
#include <windows.h>

namespace
{

// The key names of a section are read into this much; those behind are
// not seen, which is intended.
const DWORD kKeyListSize = 256;
const DWORD kValueSize = 260;

} // namespace

CIniStore::CIniStore(const char* names)
{
    for (const char* name = names; *name; name += strlen(name) + 1)
        m_sections.push_back(name);
}

std::string CIniStore::MapKey(int section, const char* key) const
{
    return m_sections[section] + '\\' + key;
}

// A memory failure leaves the rest of the file unread.
void CIniStore::Load(const char* path)
{
    try {
        for (size_t section = 0; section < m_sections.size(); ++section) {
            const char* name = m_sections[section].c_str();
            char keys[kKeyListSize];
            const DWORD length =
                ::GetPrivateProfileStringA(name, nullptr, "", keys, kKeyListSize, path);
            // A list cut short ends in a name cut short, which is no key of
            // the file and must not be written back as one.
            const char* end = keys + length;
            if (length == kKeyListSize - 2)
                while (end > keys && end[-1])
                    --end;
            for (const char* key = keys; key < end && *key; key += strlen(key) + 1) {
                char value[kValueSize];
                ::GetPrivateProfileStringA(name, key, "", value, kValueSize, path);
                m_values[MapKey(static_cast<int>(section), key)] = value;
            }
        }
    } catch (const std::bad_alloc&) {
    }
    ::WritePrivateProfileStringA(nullptr, nullptr, nullptr, path);
}

void CIniStore::Save(const char* path) const
{
    for (const auto& entry : m_values) {
        const size_t slash = entry.first.find('\\');
        const std::string section = entry.first.substr(0, slash);
        ::WritePrivateProfileStringA(section.c_str(), entry.first.c_str() + slash + 1,
                                     entry.second.c_str(), path);
    }
    ::WritePrivateProfileStringA(nullptr, nullptr, nullptr, path);
}

bool CIniStore::GetString(int section, const char* key, CString& value) const
{
    value.Empty();
    try {
        const auto found = m_values.find(MapKey(section, key));
        if (found == m_values.end())
            return false;
        value = found->second;
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void CIniStore::SetString(int section, const char* key, const char* value)
{
    try {
        m_values[MapKey(section, key)] = value;
    } catch (const std::bad_alloc&) {
    }
}

bool CIniStore::GetInt(int section, const char* key, unsigned long& value, int radix) const
{
    CString text;
    if (!GetString(section, key, text))
        return false;
    value = ParseSetting(text, radix);
    return true;
}

void CIniStore::SetInt(int section, const char* key, long value, int radix)
{
    try {
        SetString(section, key, FormatSetting(value, radix).c_str());
    } catch (const std::bad_alloc&) {
    }
}

void CIniStore::Remove(int section, const char* key)
{
    try {
        m_values.erase(MapKey(section, key));
    } catch (const std::bad_alloc&) {
    }
}

void CIniStore::RemoveSection(int section)
{
    const std::string& name = m_sections[section];
    for (auto entry = m_values.begin(); entry != m_values.end();) {
        const std::string& key = entry->first;
        if (key.compare(0, key.find('\\'), name) == 0)
            entry = m_values.erase(entry);
        else
            ++entry;
    }
}

void CIniStore::RemoveAll()
{
    m_values.clear();
}

void CIniStore::BeginEnum(int section)
{
    m_enumSection = section;
    m_enumStarted = false;
}

bool CIniStore::NextInSection(CString& key, CString& value)
{
    const std::string& name = m_sections[m_enumSection];
    auto entry = m_enumStarted ? m_values.upper_bound(m_enumPos) : m_values.begin();
    while (entry != m_values.end() && entry->first.compare(0, name.size(), name) != 0)
        ++entry;
    if (entry == m_values.end())
        return false;
    try {
        m_enumPos = entry->first;
        m_enumStarted = true;
        key = entry->first.c_str() + entry->first.find('\\') + 1;
        value = entry->second;
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void CIniStore::EraseFileSection(int section, const char* path) const
{
    ::WritePrivateProfileStringA(SectionName(section), nullptr, nullptr, path);
}

void CIniStore::EraseFileKey(int section, const char* key, const char* path) const
{
    ::WritePrivateProfileStringA(SectionName(section), key, nullptr, path);
}
