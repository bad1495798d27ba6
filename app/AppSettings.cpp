// Loading and saving the settings: the store's life from start to exit,
// which key goes to which file, the Settings section's keys with their
// ranges, and the screen font.
#include "app/IniStore.h"
#include "app/KmApp.h"
#include "app/Settings.h"
#include "app/SettingsText.h"
#include "resources/KmIds.h"

#include <cstdint>
#include <cstring>
#include <new>
#include <string>

namespace
{

const int kRecentCount = 6;

// "File " and "Project " with their last character made the entry's
// digit: File1 to File6, Project1 to Project6.
CString RecentKey(const char* stem, int index)
{
    CString key(stem);
    key.SetAt(key.GetLength() - 1, static_cast<char>('1' + index));
    return key;
}

// A list ends at its first empty entry.
void ReadRecent(const CIniStore& store, int section, const char* stem, CString (&list)[6])
{
    for (int i = 0; i < kRecentCount && store.GetString(section, RecentKey(stem, i), list[i]); ++i)
        ;
}

void WriteRecent(CIniStore& store, int section, const char* stem, CString (&list)[6])
{
    for (int i = 0; i < kRecentCount && !list[i].IsEmpty(); ++i) {
        store.SetString(section, RecentKey(stem, i), list[i]);
        list[i].Empty();
    }
}

} // namespace

bool CKmApp::GetSetting(int section, const char* key, CString& value) const
{
    value.Empty();
    return store && store->GetString(section, key, value);
}

void CKmApp::SetSetting(int section, const char* key, const char* value)
{
    if (store)
        store->SetString(section, key, value);
}

bool CKmApp::GetSettingInt(int section, const char* key, unsigned long& value, int radix) const
{
    return store && store->GetInt(section, key, value, radix);
}

void CKmApp::SetSettingInt(int section, const char* key, long value, int radix)
{
    if (store)
        store->SetInt(section, key, value, radix);
}

// A value outside low to high is ignored: the earlier one stays.
void CKmApp::ReadRanged(const char* key, int& field, int low, int high) const
{
    unsigned long value = 0;
    if (GetSettingInt(SECTION_SETTINGS, key, value, 10) && static_cast<long>(value) >= low &&
        static_cast<long>(value) <= high)
        field = static_cast<int>(value);
}

void CKmApp::LoadSettings(bool lookUpProject)
{
    try {
        CString sections, environments;
        sections.LoadString(IDS_SECTIONS);
        environments.LoadString(IDS_ENVIRONMENTS);
        std::string names = sections.str() + environments.str();
        for (char& c : names)
            c = c == '|' ? '\0' : c;
        delete store;
        store = nullptr;
        store = new CIniStore(names.c_str());
        for (int i = 0; i < 5; ++i)
            m_strEnvironment[i] = store->SectionName(SECTION_ENVIRONMENT + i);
    } catch (const std::bad_alloc&) {
        return; // the defaults stay, and nothing is saved
    }
    store->Load(iniPath);
    LoadProject(lookUpProject);

    unsigned long value = 0;
    if (GetSettingInt(SECTION_SETTINGS, "SaveSettings", value, 2))
        saveSettings = value == 1;
    if (GetSettingInt(SECTION_SETTINGS, "SaveWindows", value, 2))
        saveWindows = value == 1;
    if (GetSettingInt(SECTION_SETTINGS, "Flags", flags, 2) && (flags & KF_INDENT))
        flags |= KF_ALIGN;
    ReadRanged("Arrange", arrange, ARRANGE_TILEACROSS, ARRANGE_TILEDOWN);
    ReadRanged("TabSize", tabSize, 2, 8);
    ReadRanged("ShiftWidth", shiftWidth, 1, 8); // 1 only through the file: intended

    tools.Load(*store);
    toolsDirty = 1;
    store->RemoveSection(SECTION_TOOLS);
    ReadRecent(*store, SECTION_SESSION, "File ", recentFiles);
    recentFilesDirty = 1;
    ReadRecent(*store, SECTION_PROJECT, "Project ", recentProjects);
    for (int i = 0; i < kRecentCount; ++i)
        store->Remove(SECTION_PROJECT, RecentKey("Project ", i));
    LoadProjectChoice();
}

// With a project open everything but the project key and the recent
// projects goes to the project's file; the Session section is erased in
// the file written, so no stale window survives there.
void CKmApp::SaveSettings()
{
    if (!store)
        return;
    try {
        store->SetInt(SECTION_SETTINGS, "SaveSettings", saveSettings, 2);
        if (saveSettings) {
            WriteWindowPlacement();
            store->SetInt(SECTION_SETTINGS, "SaveWindows", saveWindows, 2);
            store->SetInt(SECTION_SETTINGS, "Flags", static_cast<long>(flags), 2);
            store->SetInt(SECTION_SETTINGS, "Arrange", arrange, 10);
            store->SetInt(SECTION_SETTINGS, "TabSize", tabSize, 10);
            store->SetInt(SECTION_SETTINGS, "ShiftWidth", shiftWidth, 10);
        }
        WriteRecent(*store, SECTION_SESSION, "File ", recentFiles);
        SaveProject();
        tools.Save(*store);
        WriteRecent(*store, SECTION_PROJECT, "Project ", recentProjects);
        if (m_strProjectDir.IsEmpty())
            store->EraseFileSection(SECTION_SESSION, iniPath);
        else
            store->RemoveSection(SECTION_SESSION);
        store->Save(iniPath);
    } catch (const std::bad_alloc&) {
    }
    delete store;
    store = nullptr;
}

// The height is negated as it is read, while the font dialog stores it as
// it is: intended, a size chosen there comes back by the font mapper's
// rule for cell heights.
void CKmApp::LoadScreenFont()
{
    screenFont.DeleteObject();
    CString text;
    if (GetSetting(SECTION_SETTINGS, "ScreenFont", text) && !text.IsEmpty()) {
        LOGFONTA font = {};
        font.lfPitchAndFamily = FIXED_PITCH;
        const int comma = text.Find(',');
        const CString face = comma < 0 ? text : text.Left(comma);
        if (face.GetLength() < LF_FACESIZE) {
            lstrcpynA(font.lfFaceName, face, LF_FACESIZE);
            long fields[3] = {0, 0, 0};
            if (comma >= 0)
                ParseFields(text.c_str() + comma + 1, fields, 3);
            font.lfHeight = -fields[0];
            font.lfWeight = fields[1];
            // One 32-bit word over lfItalic and the three bytes behind it.
            const uint32_t italic = static_cast<uint32_t>(fields[2]);
            memcpy(&font.lfItalic, &italic, sizeof italic);
            if (screenFont.CreateFontIndirect(&font))
                return;
        }
    }
    LOGFONTA stock;
    if (::GetObjectA(::GetStockObject(SYSTEM_FIXED_FONT), sizeof stock, &stock))
        screenFont.CreateFontIndirect(&stock);
}
