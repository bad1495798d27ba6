// The programs of the Tools menu, up to ten, and how they are kept in the
// settings' Tools section.
#pragma once
#include "framework/String.h"

#include <utility>
#include <vector>

class CIniStore;

struct CToolEntry {
    CString m_strCommand;
    CString m_strMenuText; // with "&" before its mnemonic
    CString m_strArguments;
    CString m_strInitDir;
    int m_bPrompt = 0; // ask for arguments at each start
    int m_bMinimized = 0;
};

class CToolList
{
  public:
    enum { kMaxTools = 10 };

    // The new entry's index; -1 when the list is full.
    int Add(const CToolEntry& entry);
    void RemoveAll() { m_entries.clear(); }
    void SetAt(int index, const CToolEntry& entry)
    {
        m_entries[static_cast<size_t>(index)] = entry;
    }
    // Closes the gap.
    void RemoveAt(int index) { m_entries.erase(m_entries.begin() + index); }
    // Swaps the entry with the one behind it.
    void SwapWithNext(int index)
    {
        std::swap(m_entries[static_cast<size_t>(index)], m_entries[static_cast<size_t>(index) + 1]);
    }
    int GetCount() const { return static_cast<int>(m_entries.size()); }
    const CToolEntry& GetAt(int index) const { return m_entries[static_cast<size_t>(index)]; }

    // Reads ToolCount tools, three when it is missing and ten when out of
    // range; the first three fall back to the defaults of the resources,
    // and a later one without its command ends the list.
    void Load(const CIniStore& store);
    // Writes every tool and empties the list.
    void Save(CIniStore& store);

    // The key bound to a tool, as a menu shows it behind a tab.
    void SetKeyText(int index, const char* text) { m_keyTexts[index] = text; }
    const CString& GetKeyText(int index) const { return m_keyTexts[index]; }

  private:
    std::vector<CToolEntry> m_entries;
    CString m_keyTexts[kMaxTools];
};
