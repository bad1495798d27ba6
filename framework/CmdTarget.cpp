#include "framework/CmdTarget.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

namespace
{

const KmMsgMapEntry g_baseEntries[] = {
    {0, 0, 0, 0, KmSig_end, nullptr, nullptr, nullptr, nullptr, nullptr}};

} // namespace

const KmMsgMap* CCmdTarget::GetThisMessageMap()
{
    static const KmMsgMap map = {nullptr, g_baseEntries};
    return &map;
}

const KmMsgMap* CCmdTarget::GetMessageMap() const
{
    return GetThisMessageMap();
}

const KmMsgMapEntry* CCmdTarget::FindEntry(UINT message, UINT code, UINT id) const
{
    for (const KmMsgMap* map = GetMessageMap(); map;
         map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr) {
        for (const KmMsgMapEntry* entry = map->lpEntries; entry->nSig != KmSig_end; ++entry) {
            if (entry->pRegistered) {
                // 0 until registered, or when registering failed
                if (*entry->pRegistered == message && message != 0)
                    return entry;
                continue;
            }
            if (entry->nMessage != message)
                continue;
            if (message == WM_COMMAND || message == WM_NOTIFY) {
                if (entry->nCode == code && id >= entry->nID && id <= entry->nLastID)
                    return entry;
            } else {
                return entry;
            }
        }
    }
    return nullptr;
}

bool CCmdTarget::DispatchEntry(const KmMsgMapEntry* entry, UINT id, WPARAM wParam, LPARAM lParam,
                               LRESULT& result)
{
    result = 0;
    switch (entry->nSig) {
    case KmSig_lwl:
        result = (this->*entry->pfnMessage)(wParam, lParam);
        return true;
    case KmSig_vv:
        (this->*entry->pfnVoid)();
        return true;
    case KmSig_vu:
        (this->*entry->pfnRange)(id);
        return true;
    case KmSig_lnm:
        result = (this->*entry->pfnNotify)(reinterpret_cast<NMHDR*>(lParam));
        return true;
    default:
        return false;
    }
}

bool CCmdTarget::OnCmdMsg(UINT id, UINT code)
{
    const KmMsgMapEntry* entry = FindEntry(WM_COMMAND, code, id);
    LRESULT ignored;
    return entry && DispatchEntry(entry, id, 0, 0, ignored);
}

bool CCmdTarget::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    const KmMsgMapEntry* entry = FindEntry(message, 0, 0);
    return entry && DispatchEntry(entry, 0, wParam, lParam, result);
}
