// All settings in memory: every known section of kelmar.ini read into one
// map at start, worked on there, and written back at exit. The map's key
// is the section's name, a backslash and the key, spelled exactly: unlike
// the platform's profile functions, the map tells case apart.
#pragma once
#include "framework/Object.h"
#include "framework/String.h"

#include <map>
#include <string>
#include <vector>

// Sections by number, in the order of the section list.
enum StoreSection {
    SECTION_SETTINGS = 0,
    SECTION_TOOLS = 1,
    SECTION_SESSION = 2,
    SECTION_PROJECT = 3,
    SECTION_KEYBINDINGS = 4,
    SECTION_ENVIRONMENT = 5, // the first of the five environments
    SECTION_OTHER = 9,       // the environment without a template
};

class CIniStore : public CObject
{
  public:
    // names: the section names, each ended by a null, the list by another.
    explicit CIniStore(const char* names);

    // Merges the file into the map, a later value over an earlier one.
    void Load(const char* path);
    // Writes every entry; keys of the file that the map lacks stay there.
    void Save(const char* path) const;

    bool GetString(int section, const char* key, CString& value) const;
    void SetString(int section, const char* key, const char* value);
    // The stored text read in radix; value is left alone when absent.
    bool GetInt(int section, const char* key, unsigned long& value, int radix) const;
    void SetInt(int section, const char* key, long value, int radix);
    void Remove(int section, const char* key);
    void RemoveSection(int section);
    void RemoveAll();

    // Walks the map in its own order, giving the entries of a section with
    // the key cut behind the backslash. The section is told by the leading
    // characters of the entry alone, so "Microsoft C" walks the entries of
    // "Microsoft C++" as well.
    void BeginEnum(int section);
    bool NextInSection(CString& key, CString& value);

    // In the file only.
    void EraseFileSection(int section, const char* path) const;
    void EraseFileKey(int section, const char* key, const char* path) const;

    const char* SectionName(int section) const { return m_sections[section].c_str(); }

  private:
    std::string MapKey(int section, const char* key) const;

    std::vector<std::string> m_sections;
    std::map<std::string, std::string> m_values;
    int m_enumSection = 0;
    // The last entry given: the walk goes on behind it, whatever was removed
    // from the map in the meantime.
    std::string m_enumPos;
    bool m_enumStarted = false;
};
