// What a printed page holds, without a device: the header and footer
// templates, margins in tenths of a millimetre with their text in inches or
// centimetres, the print area from the printer's measures, the printer font
// setting and the breaking of a text line into printed lines.
// Platform-free.
#pragma once
#include <functional>
#include <string>
#include <vector>

enum HeaderAlign { HA_LEFT, HA_CENTRE, HA_RIGHT };

struct HeaderPart {
    HeaderAlign align;
    std::string text;
    bool operator==(const HeaderPart& o) const { return align == o.align && text == o.text; }
};

// What the codes of a template stand for on one page.
struct HeaderFields {
    std::string name, path, date, longDate, time;
    int page = 1;
};

// The parts of a header or footer line, each with the alignment it prints
// with: centred until the first of &l, &c and &r. &f, &F, &p, &d, &D and &t
// give the fields; any other letter behind & stands as it is, and so does a
// & at the very end. Empty parts are left out.
std::vector<HeaderPart> ExpandHeader(const char* text, const HeaderFields& fields);

// Margins in tenths of a millimetre, in the order of the stored setting.
enum { MARGIN_LEFT, MARGIN_TOP, MARGIN_RIGHT, MARGIN_BOTTOM, MARGIN_COUNT };

// Base-10 numbers separated by commas; those missing stay 0.
void ParseMargins(const char* text, int margins[MARGIN_COUNT]);
// Centimetres, or inches rounded to hundredths, with the decimal mark.
std::string FormatMargin(int value, bool metric, const char* decimal);
// A margin as typed: digits, the first byte of the decimal mark and digits,
// rounded to hundredths of the unit; empty is 0. -1 for anything else.
int ParseMargin(const char* text, bool metric, const char* decimal);

// The printer's measures: the printable area in millimetres and pixels, the
// offset of that area on the paper, and the paper in pixels if known.
struct PageMetrics {
    int widthMm, heightMm, horzRes, vertRes;
    int offsetX = 0, offsetY = 0;
    bool physical = false;
    int physWidth = 0, physHeight = 0;
};

struct PrintArea {
    int left, top, right, bottom;
    bool operator==(const PrintArea& o) const
    {
        return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
    }
};

// The area inside the margins, in the printer's pixels. A margin that would
// take more than a third of the page is ignored: that side goes to the edge
// of the printable area.
PrintArea ComputePrintArea(const PageMetrics& page, const int margins[MARGIN_COUNT]);

// The printer font setting "face,height,weight,italic": a face of 32
// characters or more is dropped, numbers missing stay 0.
struct PrinterFontSpec {
    std::string face;
    int height = 0, weight = 0, italic = 0;
};
PrinterFontSpec ParsePrinterFont(const char* text);

// Breaks one line of text into printed lines of at most charsPerLine
// characters, with tabs to stops every tabSize characters. A tab goes to
// the first stop above the column, searched on from the stop of the tab
// before it in the same line, also behind a wrap: the first tab of a
// wrapped part goes at least as far as the last one before it. NULs and CRs print nothing; an empty
// line is one empty printed line. print gets each line and says whether to go on; false if it said
// no.
bool BreakLine(const char* text, size_t length, int charsPerLine, int tabSize,
               const std::function<bool(const char* line, int length)>& print);
