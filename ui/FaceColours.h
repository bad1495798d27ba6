// The brush and pens of a raised face in the system's button colours, which
// the status bar and the tool bar draw with.
#pragma once
#include <windows.h>

struct CFaceColours {
    HBRUSH face = nullptr;
    HPEN frame = nullptr;
    HPEN shadow = nullptr;
    HPEN highlight = nullptr;

    // Makes them anew from the system's colours: the face in faceColour (a
    // COLOR_ index), the pens penWidth wide. False if one can't be had.
    bool Create(int faceColour, int penWidth);
    void Delete();
};

// Whether the display shows more than two colours.
bool HasColourDisplay(HDC dc);
