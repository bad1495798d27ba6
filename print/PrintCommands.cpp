#include "print/PrintCommands.h"

#include "app/KmApp.h"
#include "print/KmPrinter.h"
#include "resources/KmIds.h"

IMPLEMENT_DYNAMIC(CPrintCommands, CKmCommands)

// clang-format off
BEGIN_MESSAGE_MAP(CPrintCommands, CKmCommands)
    ON_COMMAND(ID_FILE_PRINTSETUP, OnPrintSetup)
END_MESSAGE_MAP()
// clang-format on

void CPrintCommands::OnPrintSetup()
{
    theApp.printer->PrintSetup();
}
