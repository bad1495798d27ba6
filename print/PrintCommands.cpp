#include "print/PrintCommands.h"

#include "resources/KmIds.h"

IMPLEMENT_DYNAMIC(CPrintCommands, CKmCommands)

// clang-format off
BEGIN_MESSAGE_MAP(CPrintCommands, CKmCommands)
    ON_COMMAND_RANGE(ID_FILE_PRINTSETUP, ID_FILE_PRINTSETUP, OnNotYet)
END_MESSAGE_MAP()
// clang-format on
