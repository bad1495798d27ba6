// What reaches the frame from outside its menus: keys, requests to open a
// file (from the command line, the logs and DDE), dropped files, and how a
// path becomes a window.
#include "app/KmApp.h"
#include "app/KmChild.h"
#include "app/KmFrame.h"
#include "app/OpenRequest.h"
#include "edit/FileUtil.h"
#include "edit/KmFileEdit.h"
#include "edit/Messages.h"
#include "framework/File.h"
#include "views/HexFileView.h"
#include "views/TextFileView.h"

#include <cstring>
#include <dde.h>
#include <shellapi.h>
#include <vector>

namespace
{

const char kDdeService[] = "Kelmar";
const char kDdeTopic[] = "system";
const int kDdeCommandLimit = 520;
const WORD kDdeAckStatus = 1; // acceptance bit clear, whatever the command did

bool KeyHeld(int key)
{
    return (::GetKeyState(key) & 0x8000) != 0;
}

// The command that a key message stands for in table, 0 for none.
WORD FindAccelerator(HACCEL table, const MSG& msg)
{
    const bool virtualKey = msg.message == WM_KEYDOWN || msg.message == WM_SYSKEYDOWN;
    if (!virtualKey && msg.message != WM_CHAR && msg.message != WM_SYSCHAR)
        return 0;
    const int count = ::CopyAcceleratorTableA(table, nullptr, 0);
    if (count <= 0)
        return 0;
    std::vector<ACCEL> entries(static_cast<size_t>(count));
    ::CopyAcceleratorTableA(table, entries.data(), count);
    const BYTE held =
        static_cast<BYTE>((KeyHeld(VK_SHIFT) ? FSHIFT : 0) | (KeyHeld(VK_CONTROL) ? FCONTROL : 0) |
                          (KeyHeld(VK_MENU) ? FALT : 0));
    const bool altChar = (msg.lParam & 0x20000000) != 0; // the context bit: Alt is down
    for (const ACCEL& entry : entries) {
        if (entry.key != msg.wParam || ((entry.fVirt & FVIRTKEY) != 0) != virtualKey)
            continue;
        if (virtualKey ? (entry.fVirt & (FSHIFT | FCONTROL | FALT)) != held
                       : ((entry.fVirt & FALT) != 0) != altChar)
            continue;
        return entry.cmd;
    }
    return 0;
}

} // namespace

// A key goes to the active child, then the accelerators, then the MDI keys.
// The table is read here rather than by TranslateAccelerator, which drops
// the key of a grayed menu item: handlers rely on getting their keys, and
// the states of the items are only set when a popup opens.
bool CKmFrame::PreTranslateMessage(MSG* msg)
{
    if (msg->message < WM_KEYFIRST || msg->message > WM_KEYLAST)
        return false;
    if (m_pActiveChild && m_pActiveChild->PreTranslateMessage(msg))
        return true;
    if (m_hAccel) {
        if (WORD command = FindAccelerator(m_hAccel, *msg)) {
            SendMessage(WM_COMMAND, MAKEWPARAM(command, 1));
            return true;
        }
    }
    return CMDIFrameWnd::PreTranslateMessage(msg);
}

CKmChild* CKmFrame::OpenFile(const char* path, bool readOnly, bool hex)
{
    unsigned long flags = NewWindowFlags();
    if (readOnly)
        flags |= CF_READONLY;
    if (hex)
        flags |= CF_HEXVIEW;
    return OpenFileFlags(path, flags);
}

// An asked-for view accepts an open editor of the file; an asked-for editor
// replaces a view, or an editor set to read-only, once it agrees to go.
CKmChild* CKmFrame::OpenFileFlags(const char* path, unsigned long flags)
{
    const bool readOnly = (flags & CF_READONLY) != 0;
    const bool hex = (flags & CF_HEXVIEW) != 0;
    try {
        FileStatus status;
        CString fullName;
        if (GetFileStatus(path, status)) {
            fullName = status.fullName;
            fullName.MakeLower();
            if (CKmChild* child = FindChildByPath(fullName)) {
                ::BringWindowToTop(child->m_hWnd);
                const bool childHex = (child->m_flags & CF_HEXVIEW) != 0;
                if (childHex == hex && (readOnly || !(child->m_flags & CF_READONLY)))
                    return child;
                if (!child->SendMessage(WM_QUERYENDSESSION))
                    return nullptr;
                child->MDIDestroy();
            }
        } else if (readOnly) {
            ReportFileCause(path, CFileException::fileNotFound, MB_ICONEXCLAMATION);
            return nullptr;
        } else {
            if (KmMessageBox(nullptr, MB_YESNO | MB_ICONQUESTION, IDS_CREATENEW, path) != IDYES)
                return nullptr;
            CFile file;
            CFileException error;
            if (!file.Open(path, CFile::modeCreate | CFile::modeWrite, &error)) {
                ReportFileError(path, error, MB_ICONEXCLAMATION);
                return nullptr;
            }
            file.Abort();
            if (!GetFileStatus(path, status))
                return nullptr;
            fullName = status.fullName;
            fullName.MakeLower();
        }
        if (!readOnly)
            return CKmFileEdit::Open(fullName, flags);
        if (hex)
            return CHexFileView::Open(fullName, flags);
        return CTextFileView::Open(fullName, flags);
    } catch (const CMemoryException&) {
        OutOfMemoryNotice();
    }
    return nullptr;
}

LRESULT CKmFrame::OnOpenFileRequest(WPARAM wParam, LPARAM lParam)
{
    HGLOBAL handle = reinterpret_cast<HGLOBAL>(lParam);
    if (OpenRequest* request = static_cast<OpenRequest*>(::GlobalLock(handle))) {
        if (wParam)
            BeginBusy(true);
        // An address asks for a read-only hex view. Until the hex view is
        // built, OpenFileFlags answers such a request with its alert: change
        // this along with it.
        const bool address = request->address != 0;
        CKmChild* child = OpenFile(request->name, address, address);
        if (wParam)
            EndBusy();
        if (child)
            child->SendMessage(WM_KM_GOTOPOS, request->column, static_cast<LPARAM>(request->line));
        ::GlobalUnlock(handle);
    }
    ::GlobalFree(handle);
    return 0;
}

LRESULT CKmFrame::OnDropFiles(WPARAM wParam, LPARAM)
{
    HDROP drop = reinterpret_cast<HDROP>(wParam);
    const UINT count = ::DragQueryFileA(drop, 0xFFFFFFFF, nullptr, 0);
    if (count == 0)
        return 0;
    BeginBusy(true);
    for (UINT i = 0; i < count; ++i) {
        const UINT length = ::DragQueryFileA(drop, i, nullptr, 0);
        CString name;
        ::DragQueryFileA(drop, i, name.GetBuffer(static_cast<int>(length) + 1), length + 1);
        name.ReleaseBuffer();
        OpenFile(name, false, false);
    }
    ::DragFinish(drop);
    EndBusy();
    if (IsIconic())
        ShowWindow(SW_SHOWNORMAL);
    return 0;
}

LRESULT CKmFrame::OnDdeInitiate(WPARAM wParam, LPARAM lParam)
{
    ATOM service = ::GlobalAddAtomA(kDdeService);
    ATOM topic = ::GlobalAddAtomA(kDdeTopic);
    if (LOWORD(lParam) == service && HIWORD(lParam) == topic)
        ::SendMessageA(reinterpret_cast<HWND>(wParam), WM_DDE_ACK, reinterpret_cast<WPARAM>(m_hWnd),
                       lParam);
    ::GlobalDeleteAtom(service);
    ::GlobalDeleteAtom(topic);
    return 0;
}

// One command per message: [open("name")]; whatever follows the closing
// quote is ignored. The answer goes out before the text is looked at.
LRESULT CKmFrame::OnDdeExecute(WPARAM wParam, LPARAM lParam)
{
    UINT_PTR unused = 0, commands = 0;
    ::UnpackDDElParam(WM_DDE_EXECUTE, lParam, &unused, &commands);
    char text[kDdeCommandLimit + 1] = "";
    HGLOBAL block = reinterpret_cast<HGLOBAL>(commands);
    if (const char* locked = static_cast<const char*>(::GlobalLock(block))) {
        lstrcpynA(text, locked, sizeof text);
        ::GlobalUnlock(block);
    }
    LPARAM ack = ::ReuseDDElParam(lParam, WM_DDE_EXECUTE, WM_DDE_ACK, kDdeAckStatus, commands);
    ::PostMessageA(reinterpret_cast<HWND>(wParam), WM_DDE_ACK, reinterpret_cast<WPARAM>(m_hWnd),
                   ack);

    static const char prefix[] = "[open(\"";
    if (strncmp(text, prefix, sizeof prefix - 1) != 0)
        return 0;
    char* name = text + sizeof prefix - 1;
    char* quote = strchr(name, '"');
    if (!quote)
        return 0;
    *quote = '\0';
    HGLOBAL request = MakeOpenRequest(name);
    if (!request) {
        OutOfMemoryNotice();
        return 0;
    }
    SendMessage(WM_KM_OPENFILE, 1, reinterpret_cast<LPARAM>(request));
    return 0;
}

LRESULT CKmFrame::OnDdeTerminate(WPARAM wParam, LPARAM lParam)
{
    ::PostMessageA(reinterpret_cast<HWND>(wParam), WM_DDE_TERMINATE,
                   reinterpret_cast<WPARAM>(m_hWnd), lParam);
    return 0;
}
