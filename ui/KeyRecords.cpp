#include "ui/KeyRecords.h"

#include "app/BindingNames.h"

#include <cctype>
#include <cstdlib>
#include <cstring>

const VirtualKeyName g_virtualKeys[] = {
    {0, "Unassigned"},
    {'A', "A"},
    {'B', "B"},
    {'C', "C"},
    {'D', "D"},
    {'E', "E"},
    {'F', "F"},
    {'G', "G"},
    {'H', "H"},
    {'I', "I"},
    {'J', "J"},
    {'K', "K"},
    {'L', "L"},
    {'M', "M"},
    {'N', "N"},
    {'O', "O"},
    {'P', "P"},
    {'Q', "Q"},
    {'R', "R"},
    {'S', "S"},
    {'T', "T"},
    {'U', "U"},
    {'V', "V"},
    {'W', "W"},
    {'X', "X"},
    {'Y', "Y"},
    {'Z', "Z"},
    {'0', "0"},
    {'1', "1"},
    {'2', "2"},
    {'3', "3"},
    {'4', "4"},
    {'5', "5"},
    {'6', "6"},
    {'7', "7"},
    {'8', "8"},
    {'9', "9"},
    {0x60, "Num 0"},
    {0x61, "Num 1"},
    {0x62, "Num 2"},
    {0x63, "Num 3"},
    {0x64, "Num 4"},
    {0x65, "Num 5"},
    {0x66, "Num 6"},
    {0x67, "Num 7"},
    {0x68, "Num 8"},
    {0x69, "Num 9"},
    {0x70, "F1"},
    {0x71, "F2"},
    {0x72, "F3"},
    {0x73, "F4"},
    {0x74, "F5"},
    {0x75, "F6"},
    {0x76, "F7"},
    {0x77, "F8"},
    {0x78, "F9"},
    {0x79, "F10"},
    {0x7A, "F11"},
    {0x7B, "F12"},
    {0x7C, "F13"},
    {0x7D, "F14"},
    {0x7E, "F15"},
    {0x7F, "F16"},
    {0x80, "F17"},
    {0x81, "F18"},
    {0x82, "F19"},
    {0x83, "F20"},
    {0x84, "F21"},
    {0x85, "F22"},
    {0x86, "F23"},
    {0x87, "F24"},
    {0x08, "Backspace"},
    {0x09, "Tab"},
    {0x0C, "Clear"},
    {0x0D, "Enter"},
    {0x10, "Shift"},
    {0x11, "Control"},
    {0x12, "Menu"},
    {0x13, "Pause"},
    {0x14, "Capital"},
    {0x1B, "Escape"},
    {0x20, "Space"},
    {0x21, "Page Up"},
    {0x22, "Page Down"},
    {0x23, "End"},
    {0x24, "Home"},
    {0x25, "Left Arrow"},
    {0x26, "Up Arrow"},
    {0x27, "Right Arrow"},
    {0x28, "Down Arrow"},
    {0x29, "Select"},
    {0x2A, "Print"},
    {0x2B, "Execute"},
    {0x2C, "Print Screen"},
    {0x2D, "Insert"},
    {0x2E, "Delete"},
    {0x2F, "Help"},
    {0x6A, "Multiply"},
    {0x6B, "Add"},
    {0x6C, "Separator"},
    {0x6D, "Subtract"},
    {0x6E, "Decimal"},
    {0x6F, "Divide"},
    {0x90, "Num Lock"},
    {0x91, "Scroll Lock"},
};
const int g_virtualKeyCount = static_cast<int>(sizeof g_virtualKeys / sizeof g_virtualKeys[0]);

int VirtualKeyRow(unsigned key)
{
    for (int i = 0; i < g_virtualKeyCount; ++i)
        if (g_virtualKeys[i].code == key)
            return i;
    return -1;
}

bool KeyText(unsigned key, unsigned fVirt, std::string& text)
{
    text.clear();
    if (key == 0)
        return true;
    const int row = VirtualKeyRow(key);
    if (row < 0 || fVirt == 0)
        return false;
    text = "\t";
    if (fVirt & KEY_CONTROL)
        text += "Ctrl+";
    if (fVirt & KEY_ALT)
        text += "Alt+";
    if (fVirt & KEY_SHIFT)
        text += "Shift+";
    text += g_virtualKeys[row].name;
    return true;
}

void ParseBindingValue(const char* value, unsigned& key, unsigned& fVirt)
{
    char* end = nullptr;
    key = static_cast<unsigned>(std::strtoul(value, &end, 10));
    while (*end == ' ' || *end == ',')
        ++end;
    fVirt = static_cast<unsigned>(std::strtoul(end, nullptr, 10));
}

int FindRecord(const KeyRecord* records, int count, unsigned cmd)
{
    for (int i = 0; i < count; ++i)
        if (records[i].cmd == cmd)
            return i;
    return -1;
}

bool SetRecord(KeyRecord* records, int& count, int capacity, unsigned fVirt, unsigned key,
               unsigned cmd)
{
    int at = FindRecord(records, count, cmd);
    if (key == 0) {
        if (at < 0)
            return false;
        std::memmove(records + at, records + at + 1, sizeof(KeyRecord) * (count - at - 1));
        --count;
        return true;
    }
    if (at < 0) {
        if (count == capacity)
            return false;
        at = count++;
        records[at].cmd = static_cast<unsigned short>(cmd);
        records[at].pad = 0;
    }
    records[at].fVirt = static_cast<unsigned char>(fVirt);
    records[at].key = static_cast<unsigned short>(key);
    return true;
}

unsigned CommandByName(const char* name)
{
    for (int i = 0; i < g_bindingNameCount; ++i) {
        const char* a = g_bindingNames[i].name;
        const char* b = name;
        while (*a && std::tolower(static_cast<unsigned char>(*a)) ==
                         std::tolower(static_cast<unsigned char>(*b)))
            ++a, ++b;
        if (*a == 0 && *b == 0)
            return g_bindingNames[i].id;
    }
    return 0;
}

const char* CommandName(unsigned cmd)
{
    for (int i = 0; i < g_bindingNameCount; ++i)
        if (g_bindingNames[i].id == cmd)
            return g_bindingNames[i].name;
    return nullptr;
}
