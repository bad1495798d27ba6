// The byte work of the key bindings: the virtual key names of the dialog,
// the text a menu shows for a key, the settings value of a binding and the
// change of one accelerator record. No windows here.
#pragma once
#include <string>

// One accelerator record, laid out as the platform's: 6 bytes.
struct KeyRecord {
    unsigned char fVirt;
    unsigned char pad;
    unsigned short key;
    unsigned short cmd;
};

enum { KEY_VIRTKEY = 1, KEY_SHIFT = 4, KEY_CONTROL = 8, KEY_ALT = 0x10 };

struct VirtualKeyName {
    unsigned code;
    const char* name;
};

// In the order of the dialog's combo box; row 0 is "Unassigned", code 0.
extern const VirtualKeyName g_virtualKeys[];
extern const int g_virtualKeyCount;

// The row of a key code, or -1.
int VirtualKeyRow(unsigned key);

// A tab, the shifts and the key's name; empty for key 0. False for a key
// the table lacks, or for no flags at all.
bool KeyText(unsigned key, unsigned fVirt, std::string& text);

// Reads "key,fVirt" in decimal; blanks and commas between them are
// skipped, and what is missing reads as 0.
void ParseBindingValue(const char* value, unsigned& key, unsigned& fVirt);

// The index of the first record of cmd, or -1.
int FindRecord(const KeyRecord* records, int count, unsigned cmd);

// Key 0 removes the first record of cmd, closing the gap; any other key
// replaces its flags and key, or appends a record while there is room.
// False when nothing was there to remove or no room was left.
bool SetRecord(KeyRecord* records, int& count, int capacity, unsigned fVirt, unsigned key,
               unsigned cmd);

// The first binding name of the command, null if it has none.
const char* CommandName(unsigned cmd);
// The binding name's command, without regard to case; 0 if unknown.
unsigned CommandByName(const char* name);
