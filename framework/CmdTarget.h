// Message maps and command dispatch, shared by the windows and by the
// command targets that the frame consults after its own maps. Maps are
// searched from the most derived class to the base; the first entry that
// fits wins.
#pragma once
#include "framework/Object.h"

#include <windows.h>

class CCmdTarget;

enum KmSig {
    KmSig_end = 0,
    KmSig_lwl, // LRESULT (WPARAM, LPARAM): a window message
    KmSig_vv,  // void (): a command or a control notification
    KmSig_vu,  // void (UINT id): a command in a range
    KmSig_lnm, // LRESULT (NMHDR*): a WM_NOTIFY notification
};

// One handler per entry; nSig says which of the four members holds it.
struct KmMsgMapEntry {
    UINT nMessage; // window message, WM_COMMAND or WM_NOTIFY
    UINT nCode;    // notification code for WM_COMMAND and WM_NOTIFY
    UINT nID;      // first command or control id
    UINT nLastID;  // last id of a range
    int nSig;
    void (CCmdTarget::*pfnVoid)();
    LRESULT (CCmdTarget::*pfnMessage)(WPARAM, LPARAM);
    void (CCmdTarget::*pfnRange)(UINT);
    LRESULT (CCmdTarget::*pfnNotify)(NMHDR*);
    const UINT* pRegistered; // a registered message: its number, known at run time
};

struct KmMsgMap {
    const KmMsgMap* (*pfnGetBaseMap)();
    const KmMsgMapEntry* lpEntries;
};

// clang-format off
#define DECLARE_MESSAGE_MAP()                                                  \
public:                                                                        \
    static const KmMsgMap* GetThisMessageMap();                                \
                                                                               \
protected:                                                                     \
    const KmMsgMap* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                 \
    const KmMsgMap* theClass::GetMessageMap() const { return GetThisMessageMap(); } \
    const KmMsgMap* theClass::GetThisMessageMap()                              \
    {                                                                          \
        typedef theClass ThisClass;                                            \
        typedef baseClass TheBaseClass;                                        \
        static const KmMsgMapEntry entries[] = {

#define END_MESSAGE_MAP()                                                      \
        {0, 0, 0, 0, KmSig_end, nullptr, nullptr, nullptr, nullptr, nullptr}  \
        };                                                                     \
        static const KmMsgMap map = {&TheBaseClass::GetThisMessageMap, entries}; \
        return &map;                                                           \
    }

#define KM_PMSG(type, fn) static_cast<type>(&ThisClass::fn)

// LRESULT OnXxx(WPARAM, LPARAM)
#define ON_MESSAGE(message, fn)                                                \
    {message, 0, 0, 0, KmSig_lwl, nullptr,                                     \
     KM_PMSG(LRESULT (CCmdTarget::*)(WPARAM, LPARAM), fn), nullptr, nullptr, nullptr},
// LRESULT OnXxx(WPARAM, LPARAM) for a registered message: pMessage points to
// the UINT that holds what RegisterWindowMessage gave, read at each dispatch
#define ON_REGISTERED_MESSAGE(pMessage, fn)                                    \
    {0, 0, 0, 0, KmSig_lwl, nullptr,                                           \
     KM_PMSG(LRESULT (CCmdTarget::*)(WPARAM, LPARAM), fn), nullptr, nullptr, (pMessage)},
// void OnXxx()
#define ON_COMMAND(id, fn)                                                     \
    {WM_COMMAND, 0, (id), (id), KmSig_vv, KM_PMSG(void (CCmdTarget::*)(), fn), \
     nullptr, nullptr, nullptr, nullptr},
// void OnXxx(UINT id)
#define ON_COMMAND_RANGE(first, last, fn)                                      \
    {WM_COMMAND, 0, (first), (last), KmSig_vu, nullptr, nullptr,               \
     KM_PMSG(void (CCmdTarget::*)(UINT), fn), nullptr, nullptr},
// void OnXxx(): a notification carried by WM_COMMAND, such as EN_CHANGE
#define ON_CONTROL(code, id, fn)                                               \
    {WM_COMMAND, (code), (id), (id), KmSig_vv,                                 \
     KM_PMSG(void (CCmdTarget::*)(), fn), nullptr, nullptr, nullptr, nullptr},
// LRESULT OnXxx(NMHDR*)
#define ON_NOTIFY(code, id, fn)                                                \
    {WM_NOTIFY, (code), (id), (id), KmSig_lnm, nullptr, nullptr, nullptr,      \
     KM_PMSG(LRESULT (CCmdTarget::*)(NMHDR*), fn), nullptr},
// clang-format on

class CCmdTarget : public CObject
{
    DECLARE_DYNAMIC(CCmdTarget)
  public:
    // Searches the maps for a command; true when a handler ran.
    virtual bool OnCmdMsg(UINT id, UINT code);
    // Searches the maps for a window message other than WM_COMMAND and
    // WM_NOTIFY; true, with the handler's result, when one ran.
    bool OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    // The code under which a WM_COMMAND is looked up: a menu item and an
    // accelerator (code 1) are the same command, found by ON_COMMAND.
    static UINT CommandCode(WPARAM wParam, LPARAM lParam)
    {
        return lParam == 0 && HIWORD(wParam) == 1 ? 0 : HIWORD(wParam);
    }

    static const KmMsgMap* GetThisMessageMap();

  protected:
    virtual const KmMsgMap* GetMessageMap() const;
    const KmMsgMapEntry* FindEntry(UINT message, UINT code, UINT id) const;
    bool DispatchEntry(const KmMsgMapEntry* entry, UINT id, WPARAM wParam, LPARAM lParam,
                       LRESULT& result);
};
