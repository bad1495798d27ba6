// The working copy of an accelerator table: its records in one block of
// movable global memory, and the records changed since it was loaded,
// oldest first, for the menus and the settings.
#pragma once
#include "ui/KeyRecords.h"

#include <windows.h>

#include <deque>
#include <string>

class CKeyTable
{
  public:
    CKeyTable() = default;
    ~CKeyTable() { Clear(); }
    CKeyTable(const CKeyTable&) = delete;
    CKeyTable& operator=(const CKeyTable&) = delete;

    // Copies the table, keeping the changes; false when there is no memory.
    bool Load(HACCEL accelerators);
    void Clear();
    // A table of the records, null on failure; old is destroyed on success
    // only, so a failure leaves it in use.
    HACCEL Build(HACCEL old) const;
    // False when there is nothing to remove, no room, or no memory.
    bool SetBinding(unsigned fVirt, unsigned key, unsigned cmd);
    bool FindBinding(unsigned cmd, KeyRecord& record) const;
    // Takes the oldest change off the list.
    bool NextChange(KeyRecord& record);

    int GetCount() const { return m_count; }

  private:
    HGLOBAL m_entries = nullptr;
    int m_count = 0;
    int m_capacity = 0;
    std::deque<KeyRecord> m_changes;
};
