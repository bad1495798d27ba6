#include "print/PageLayout.h"

#include "app/SettingsText.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

std::vector<HeaderPart> ExpandHeader(const char* text, const HeaderFields& fields)
{
    std::vector<HeaderPart> parts;
    HeaderPart part{HA_CENTRE, {}};
    auto flush = [&](HeaderAlign next) {
        if (!part.text.empty())
            parts.push_back(part);
        part = {next, {}};
    };
    for (const char* p = text; *p; ++p) {
        if (*p != '&' || !p[1]) {
            part.text += *p;
            continue;
        }
        switch (*++p) {
        case 'l':
            flush(HA_LEFT);
            break;
        case 'c':
            flush(HA_CENTRE);
            break;
        case 'r':
            flush(HA_RIGHT);
            break;
        case 'f':
            part.text += fields.name;
            break;
        case 'F':
            part.text += fields.path;
            break;
        case 'p':
            part.text += std::to_string(fields.page);
            break;
        case 'd':
            part.text += fields.date;
            break;
        case 'D':
            part.text += fields.longDate;
            break;
        case 't':
            part.text += fields.time;
            break;
        default:
            part.text += '&', part.text += *p;
            break;
        }
    }
    flush(HA_CENTRE);
    return parts;
}

void ParseMargins(const char* text, int margins[MARGIN_COUNT])
{
    long fields[MARGIN_COUNT] = {};
    ParseFields(text, fields, MARGIN_COUNT);
    for (int i = 0; i < MARGIN_COUNT; ++i)
        margins[i] = static_cast<int>(fields[i]);
}

namespace
{

const int kTenthsPerInch = 254;
const int kTenthsPerCm = 100;
// Enough digits for any margin; more could only overflow.
const int kMaxDigits = 12;

} // namespace

std::string FormatMargin(int value, bool metric, const char* decimal)
{
    const int whole = metric ? value / kTenthsPerCm : value / kTenthsPerInch;
    const int fraction =
        metric ? value % kTenthsPerCm
               : ((value % kTenthsPerInch) * 100 + kTenthsPerInch / 2) / kTenthsPerInch;
    std::string text = std::to_string(whole) + decimal;
    if (fraction >= 0 && fraction < 10)
        text += '0';
    return text + std::to_string(fraction);
}

int ParseMargin(const char* text, bool metric, const char* decimal)
{
    long long whole = 0, fraction = 0, divisor = 1;
    int digits = 0;
    const char* p = text;
    for (; *p && *p != *decimal; ++p, ++digits) {
        if (*p < '0' || *p > '9' || digits == kMaxDigits)
            return -1;
        whole = whole * 10 + (*p - '0');
    }
    if (*p)
        for (++p, digits = 0; *p; ++p, ++digits) {
            if (*p < '0' || *p > '9' || digits == kMaxDigits)
                return -1;
            fraction = fraction * 10 + (*p - '0');
            divisor *= 10;
        }
    long long hundredths = (divisor / 2 + fraction * 100) / divisor + whole * 100;
    if (!metric)
        hundredths = hundredths * kTenthsPerInch / 100;
    return hundredths > INT_MAX ? -1 : static_cast<int>(hundredths);
}

PrintArea ComputePrintArea(const PageMetrics& page, const int margins[MARGIN_COUNT])
{
    const long long width = page.widthMm * 10LL, height = page.heightMm * 10LL;
    const long long hRes = page.horzRes, vRes = page.vertRes;
    long long unprintedRight = 0, unprintedBottom = 0;
    if (page.physical) {
        unprintedRight = page.physWidth - page.offsetX - hRes;
        unprintedBottom = page.physHeight - vRes - page.offsetY;
    }
    auto scale = [](long long res, int margin, long long size) {
        return size > 0 ? res * margin / size : 0;
    };
    long long left = scale(hRes, margins[MARGIN_LEFT], width) - page.offsetX;
    long long top = scale(vRes, margins[MARGIN_TOP], height) - page.offsetY;
    long long right = hRes - scale(hRes, margins[MARGIN_RIGHT], width) + unprintedRight;
    long long bottom = vRes - scale(vRes, margins[MARGIN_BOTTOM], height) + unprintedBottom;
    if (left < 0 || left > hRes / 3)
        left = 0;
    if (right < hRes * 2 / 3 || right > hRes)
        right = hRes;
    if (top < 0 || top > vRes / 3)
        top = 0;
    if (bottom < vRes * 2 / 3 || bottom > vRes)
        bottom = vRes;
    return {static_cast<int>(left), static_cast<int>(top), static_cast<int>(right),
            static_cast<int>(bottom)};
}

PrinterFontSpec ParsePrinterFont(const char* text)
{
    const size_t kFaceLimit = 32;
    PrinterFontSpec spec;
    const char* comma = strchr(text, ',');
    const size_t faceLength = comma ? static_cast<size_t>(comma - text) : strlen(text);
    if (faceLength < kFaceLimit)
        spec.face.assign(text, faceLength);
    long fields[3] = {};
    if (comma)
        ParseFields(comma + 1, fields, 3);
    spec.height = static_cast<int>(fields[0]);
    spec.weight = static_cast<int>(fields[1]);
    spec.italic = static_cast<int>(fields[2]);
    return spec;
}

bool BreakLine(const char* text, size_t length, int charsPerLine, int tabSize,
               const std::function<bool(const char* line, int length)>& print)
{
    if (length == 0)
        return print("", 0);
    if (tabSize < 1)
        tabSize = 1;
    std::string line;
    int tabIndex = 0;
    for (size_t i = 0; i < length; ++i) {
        const char byte = text[i];
        if (byte == '\t') {
            while (tabIndex * tabSize <= static_cast<int>(line.size()))
                ++tabIndex;
            line.resize(std::min(tabIndex * tabSize, charsPerLine), ' ');
        } else if (byte != '\0' && byte != '\r') {
            line += byte;
        }
        if (i + 1 == length || static_cast<int>(line.size()) >= charsPerLine) {
            if (!print(line.c_str(), static_cast<int>(line.size())))
                return false;
            line.clear();
        }
    }
    return true;
}
