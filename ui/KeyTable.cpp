#include "ui/KeyTable.h"

#include <new>

static_assert(sizeof(KeyRecord) == sizeof(ACCEL), "a record is laid out as ACCEL");

namespace
{

// Room for a record for every row of the command table.
const int kMaxRecords = 85;

} // namespace

// The changes of an earlier load stay: they still reach the menus and the
// file, though the new records no longer hold them. Intended.
bool CKeyTable::Load(HACCEL accelerators)
{
    if (m_entries)
        ::GlobalFree(m_entries);
    m_count = m_capacity = 0;
    m_entries = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, kMaxRecords * sizeof(ACCEL));
    if (!m_entries)
        return false;
    m_capacity = static_cast<int>(::GlobalSize(m_entries) / sizeof(ACCEL));
    auto* records = static_cast<ACCEL*>(::GlobalLock(m_entries));
    m_count = ::CopyAcceleratorTableA(accelerators, records, kMaxRecords);
    ::GlobalUnlock(m_entries);
    return true;
}

void CKeyTable::Clear()
{
    if (m_entries)
        ::GlobalFree(m_entries);
    m_entries = nullptr;
    m_count = m_capacity = 0;
    m_changes.clear();
}

HACCEL CKeyTable::Build(HACCEL old) const
{
    auto* records = static_cast<ACCEL*>(::GlobalLock(m_entries));
    HACCEL table = ::CreateAcceleratorTableA(records, m_count);
    ::GlobalUnlock(m_entries);
    if (table && old)
        ::DestroyAcceleratorTable(old);
    return table;
}

bool CKeyTable::SetBinding(unsigned fVirt, unsigned key, unsigned cmd)
{
    if (!m_entries)
        return false;
    auto* records = static_cast<KeyRecord*>(::GlobalLock(m_entries));
    const bool done = SetRecord(records, m_count, m_capacity, fVirt, key, cmd);
    ::GlobalUnlock(m_entries);
    if (!done)
        return false;
    KeyRecord change = {};
    change.cmd = static_cast<unsigned short>(cmd);
    if (key != 0) {
        change.fVirt = static_cast<unsigned char>(fVirt);
        change.key = static_cast<unsigned short>(key);
    }
    try {
        m_changes.push_back(change);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

bool CKeyTable::FindBinding(unsigned cmd, KeyRecord& record) const
{
    if (!m_entries)
        return false;
    const auto* records = static_cast<const KeyRecord*>(::GlobalLock(m_entries));
    const int at = FindRecord(records, m_count, cmd);
    if (at >= 0)
        record = records[at];
    ::GlobalUnlock(m_entries);
    return at >= 0;
}

bool CKeyTable::NextChange(KeyRecord& record)
{
    if (m_changes.empty())
        return false;
    record = m_changes.front();
    m_changes.pop_front();
    return true;
}
