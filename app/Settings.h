// The settings flag word and its bits, as kelmar.ini keeps them under Flags.
#pragma once

enum : unsigned long {
    KF_NOSTATUSBAR = 0x1,
    KF_NOCLOCK = 0x2,
    KF_NOTOOLBAR = 0x4,
    KF_NOHSCROLL = 0x8,
    KF_NOVSCROLL = 0x10,
    KF_AUTOSAVE = 0x20,
    KF_BACKUP = 0x40,
    KF_SPACEDELIM = 0x80,
    KF_ALERTS = 0x100,
    KF_NOPROJECT = 0x200,
    KF_ALIGN = 0x400,
    KF_INDENT = 0x800,
};

// Initial value of the flag word before any settings file is read.
const unsigned long KF_DEFAULT = 0x408;

// Values of the arrangement (key Arrange): how windows are laid out.
enum Arrangement {
    ARRANGE_TILEACROSS = 0, // side by side
    ARRANGE_CASCADE = 1,
    ARRANGE_MAXIMISED = 2,
    ARRANGE_TILEDOWN = 3, // one above the other
};
