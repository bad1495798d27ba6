#include "ui/FaceColours.h"

#include <initializer_list>

bool CFaceColours::Create(int faceColour, int penWidth)
{
    Delete();
    face = ::CreateSolidBrush(::GetSysColor(faceColour));
    frame = ::CreatePen(PS_SOLID, penWidth, ::GetSysColor(COLOR_WINDOWFRAME));
    shadow = ::CreatePen(PS_SOLID, penWidth, ::GetSysColor(COLOR_BTNSHADOW));
    highlight = ::CreatePen(PS_SOLID, penWidth, ::GetSysColor(COLOR_BTNHIGHLIGHT));
    return face && frame && shadow && highlight;
}

void CFaceColours::Delete()
{
    for (HGDIOBJ* object :
         {reinterpret_cast<HGDIOBJ*>(&face), reinterpret_cast<HGDIOBJ*>(&frame),
          reinterpret_cast<HGDIOBJ*>(&shadow), reinterpret_cast<HGDIOBJ*>(&highlight)}) {
        if (*object)
            ::DeleteObject(*object);
        *object = nullptr;
    }
}

// A display of more than 8 bits per pixel has no colour table and answers -1.
bool HasColourDisplay(HDC dc)
{
    const int colours = ::GetDeviceCaps(dc, NUMCOLORS);
    return colours > 2 || colours == -1;
}
