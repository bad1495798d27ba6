#include "ui/ToolBar.h"

#include "framework/WinApp.h"
#include "ui/ToolItems.h"

namespace
{

const int kPicturesWidth = 256, kPicturesHeight = 96;
const int kItemHeight = 21;
const COLORREF kBlue = RGB(0, 0, 255);   // the face in the colour pictures
const DWORD kPaintWhereSet = 0x00B8074A; // the brush where the mask is set, else the target
const DWORD kClearWhereSet = 0x00220326; // black where the mask is set, else the target

// A memory context over a new bitmap of the pictures' size, compatible
// with the screen, or with nothing for a mask.
HDC MemoryContext(HBITMAP& bitmap, bool mask)
{
    HDC screen = ::GetDC(nullptr);
    HDC dc = ::CreateCompatibleDC(screen);
    bitmap = mask ? ::CreateBitmap(kPicturesWidth, kPicturesHeight, 1, 1, nullptr)
                  : ::CreateCompatibleBitmap(screen, kPicturesWidth, kPicturesHeight);
    ::ReleaseDC(nullptr, screen);
    if (dc && bitmap) {
        ::SelectObject(dc, bitmap);
        return dc;
    }
    if (dc)
        ::DeleteDC(dc);
    if (bitmap)
        ::DeleteObject(bitmap);
    bitmap = nullptr;
    return nullptr;
}

void FreeContext(HDC& dc, HBITMAP& bitmap)
{
    if (dc)
        ::DeleteDC(dc);
    if (bitmap)
        ::DeleteObject(bitmap);
    dc = nullptr;
    bitmap = nullptr;
}

// Paints colour into target wherever the mask is set, offset by dx, dy.
void PaintMask(HDC target, HDC mask, int dx, int dy, COLORREF colour)
{
    HBRUSH brush = ::CreateSolidBrush(colour);
    HGDIOBJ old = ::SelectObject(target, brush);
    ::SetTextColor(target, RGB(0, 0, 0));
    ::SetBkColor(target, RGB(255, 255, 255));
    ::BitBlt(target, dx, dy, kPicturesWidth - dx, kPicturesHeight - dy, mask, 0, 0, kPaintWhereSet);
    ::SelectObject(target, old);
    ::DeleteObject(brush);
}

} // namespace

CFaceColours CKmToolBar::s_colours;
int CKmToolBar::s_bColour = 0;
int CKmToolBar::s_nBorder = 0;

void CKmToolBar::SetUpColours()
{
    if (s_nBorder == 0) {
        HDC screen = ::GetDC(nullptr);
        s_bColour = HasColourDisplay(screen);
        ::ReleaseDC(nullptr, screen);
        s_nBorder = ::GetSystemMetrics(SM_CYBORDER);
    }
    s_colours.Create(s_bColour ? COLOR_BTNFACE : COLOR_MENU, s_nBorder);
}

bool CKmToolBar::Create(int style, HWND parent, UINT colourBitmap, UINT monoBitmap)
{
    m_nStyle = style;
    m_pParent = parent;
    m_nColourBitmap = colourBitmap;
    m_nMonoBitmap = monoBitmap;
    m_bVisible = 0;
    if (!::GetSystemMetrics(SM_MOUSEPRESENT))
        return false;
    SetUpColours();
    m_nItemHeight = kItemHeight;
    m_nItemTop = 2 * s_nBorder;
    m_nHeight = 7 * s_nBorder + kItemHeight;
    RECT client;
    ::GetClientRect(parent, &client);
    m_wnd.m_pBar = this;
    const char* className = KmRegisterWndClass(0, ::LoadCursorA(nullptr, IDC_ARROW));
    if (!className ||
        !m_wnd.CreateEx(0, className, "", WS_CHILD | WS_CLIPSIBLINGS, 0, 0, client.right, m_nHeight,
                        parent, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(colourBitmap))))
        return false;
    m_dcImages = MemoryContext(m_bmImages, false);
    m_dcDisabled = MemoryContext(m_bmDisabled, false);
    if (!m_dcImages || !m_dcDisabled || !BuildPictures()) {
        Destroy();
        return false;
    }
    return true;
}

void CKmToolBar::Destroy()
{
    while (m_nItems > 0)
        delete m_items[--m_nItems];
    if (m_wnd.m_hWnd)
        m_wnd.DestroyWindow();
    m_wnd.m_pCaptured = nullptr;
    FreeContext(m_dcImages, m_bmImages);
    FreeContext(m_dcDisabled, m_bmDisabled);
    m_bVisible = 0;
}

// Blue in the colour pictures becomes the face as it is now; the disabled
// set is the black and white form etched into the face.
bool CKmToolBar::BuildPictures()
{
    HINSTANCE instance = KmGetResourceHandle();
    HBITMAP source =
        ::LoadBitmapA(instance, MAKEINTRESOURCEA(s_bColour ? m_nColourBitmap : m_nMonoBitmap));
    HBITMAP maskBitmap = nullptr;
    HDC sourceDc = ::CreateCompatibleDC(m_dcImages);
    HDC mask = MemoryContext(maskBitmap, true);
    bool built = source && sourceDc && mask;
    if (built) {
        ::SelectObject(sourceDc, source);
        ::SetTextColor(m_dcImages, RGB(0, 0, 0));
        ::SetBkColor(m_dcImages, RGB(255, 255, 255));
        if (s_bColour) {
            const RECT all = {0, 0, kPicturesWidth, kPicturesHeight};
            ::FillRect(m_dcImages, &all, s_colours.face);
            ::SetBkColor(sourceDc, kBlue);
            ::BitBlt(mask, 0, 0, kPicturesWidth, kPicturesHeight, sourceDc, 0, 0, SRCCOPY);
            ::SetTextColor(sourceDc, RGB(0, 0, 0));
            ::SetBkColor(sourceDc, RGB(255, 255, 255));
            ::BitBlt(sourceDc, 0, 0, kPicturesWidth, kPicturesHeight, mask, 0, 0, kClearWhereSet);
            ::BitBlt(m_dcImages, 0, 0, kPicturesWidth, kPicturesHeight, mask, 0, 0, SRCAND);
            ::BitBlt(m_dcImages, 0, 0, kPicturesWidth, kPicturesHeight, sourceDc, 0, 0, SRCPAINT);
        } else {
            ::BitBlt(m_dcImages, 0, 0, kPicturesWidth, kPicturesHeight, sourceDc, 0, 0, SRCCOPY);
        }
        ::DeleteDC(sourceDc);
        sourceDc = nullptr;
        ::DeleteObject(source);
        source = nullptr;
        built = BuildDisabled(mask);
    }
    if (sourceDc)
        ::DeleteDC(sourceDc);
    if (source)
        ::DeleteObject(source);
    FreeContext(mask, maskBitmap);
    return built;
}

// The shape is what differs from the pixel at the top left; it is painted
// in the highlight one pixel down and right, and in the shadow over that.
bool CKmToolBar::BuildDisabled(HDC mask)
{
    HBITMAP mono = ::LoadBitmapA(KmGetResourceHandle(), MAKEINTRESOURCEA(m_nMonoBitmap));
    HDC monoDc = mono ? ::CreateCompatibleDC(m_dcDisabled) : nullptr;
    if (!monoDc) {
        if (mono)
            ::DeleteObject(mono);
        return false;
    }
    ::SelectObject(monoDc, mono);
    ::SetBkColor(monoDc, ::GetPixel(monoDc, 0, 0));
    ::BitBlt(mask, 0, 0, kPicturesWidth, kPicturesHeight, monoDc, 0, 0, NOTSRCCOPY);
    ::DeleteDC(monoDc);
    ::DeleteObject(mono);
    const RECT all = {0, 0, kPicturesWidth, kPicturesHeight};
    ::FillRect(m_dcDisabled, &all, ::GetSysColorBrush(COLOR_BTNFACE));
    PaintMask(m_dcDisabled, mask, 1, 1, ::GetSysColor(COLOR_BTNHIGHLIGHT));
    PaintMask(m_dcDisabled, mask, 0, 0, ::GetSysColor(COLOR_BTNSHADOW));
    return true;
}

void CKmToolBar::RecreateColours()
{
    if (!Exists())
        return;
    SetUpColours();
    BuildPictures();
    for (int i = 0; i < m_nItems; ++i)
        m_items[i]->OnPlaced();
    ::InvalidateRect(m_wnd.m_hWnd, nullptr, TRUE);
}

int CKmToolBar::Resize(int width, int)
{
    if (!Exists())
        return 0;
    ::MoveWindow(m_wnd.m_hWnd, 0, 0, width, m_nHeight, TRUE);
    return m_nHeight;
}

void CKmToolBar::Show(bool on)
{
    m_bVisible = on;
    if (Exists())
        ::ShowWindow(m_wnd.m_hWnd, on ? SW_SHOW : SW_HIDE);
}

int CKmToolBar::IndexOf(const CToolItem* item) const
{
    for (int i = 0; i < m_nItems; ++i)
        if (m_items[i] == item)
            return i;
    return -1;
}

void CKmToolBar::ShiftFrom(int index, int dx)
{
    for (int i = index; i < m_nItems; ++i) {
        RECT rect = m_items[i]->m_rc;
        ::OffsetRect(&rect, dx, 0);
        m_items[i]->Place(this, rect);
    }
}

bool CKmToolBar::Add(CToolItem* item, CToolItem* before)
{
    if (m_nItems >= kMaxItems)
        return false;
    int at = before ? IndexOf(before) : -1;
    if (at < 0)
        at = m_nItems;
    int x = 0;
    for (int i = 0; i < at; ++i)
        x += m_items[i]->m_nWidth;
    ShiftFrom(at, item->m_nWidth);
    for (int i = m_nItems; i > at; --i)
        m_items[i] = m_items[i - 1];
    m_items[at] = item;
    ++m_nItems;
    item->Place(this, {x, m_nItemTop, x + item->m_nWidth, m_nItemTop + m_nItemHeight});
    return true;
}

bool CKmToolBar::AddBefore(CToolItem* item, unsigned id)
{
    return Add(item, FindId(id));
}

bool CKmToolBar::RemoveId(unsigned id)
{
    const int at = IndexOf(FindId(id));
    if (at < 0)
        return false;
    CToolItem* item = m_items[at];
    if (m_wnd.m_pCaptured == item)
        m_wnd.m_pCaptured = nullptr;
    item->Invalidate();
    for (int i = at; i < m_nItems - 1; ++i)
        m_items[i] = m_items[i + 1];
    --m_nItems;
    ShiftFrom(at, -item->m_nWidth);
    delete item;
    return true;
}

CToolItem* CKmToolBar::FindId(unsigned id) const
{
    for (int i = 0; i < m_nItems; ++i)
        if (m_items[i]->m_nId == id)
            return m_items[i];
    return nullptr;
}

void CKmToolBar::SetEnabled(unsigned id, bool on)
{
    CToolItem* item = FindId(id);
    if (!item || item->m_bEnabled == static_cast<int>(on))
        return;
    item->m_bEnabled = on;
    item->Invalidate();
}

CToolItem* CKmToolBar::ItemAt(int x, int y) const
{
    for (int i = 0; i < m_nItems; ++i)
        if (m_items[i]->HitTest(x, y))
            return m_items[i];
    return nullptr;
}

// The face, a frame line along the last row with a shadow above it, and
// the items in the update rectangle.
void CKmToolBar::Paint(HDC dc, const RECT& update)
{
    if (!m_bVisible)
        return;
    ::FillRect(dc, &update, s_colours.face);
    RECT client;
    ::GetClientRect(m_wnd.m_hWnd, &client);
    HGDIOBJ old = ::SelectObject(dc, s_colours.frame);
    ::MoveToEx(dc, 0, client.bottom - 1, nullptr);
    ::LineTo(dc, client.right, client.bottom - 1);
    if (s_bColour) {
        ::SelectObject(dc, s_colours.shadow);
        ::MoveToEx(dc, 0, client.bottom - 2, nullptr);
        ::LineTo(dc, client.right, client.bottom - 2);
    }
    ::SelectObject(dc, old);
    for (int i = 0; i < m_nItems; ++i) {
        RECT common;
        if (::IntersectRect(&common, &m_items[i]->m_rcPaint, &update))
            m_items[i]->Draw(dc);
    }
}
