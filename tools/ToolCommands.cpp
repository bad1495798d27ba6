#include "tools/ToolCommands.h"

#include "resources/KmIds.h"
#include "tools/CompareTool.h"
#include "tools/ExtractTool.h"

IMPLEMENT_DYNAMIC(CToolCommands, CKmCommands)

// clang-format off
BEGIN_MESSAGE_MAP(CToolCommands, CKmCommands)
    ON_COMMAND_RANGE(ID_FILE_MANAGE, ID_FILE_MANAGE, OnNotYet)
    ON_COMMAND(ID_TOOL_COMPARE, OnCompare)
    ON_COMMAND(ID_TOOL_EXTRACTSTRINGS, OnExtractStrings)
    ON_COMMAND_RANGE(ID_TOOL_RUN, ID_TOOL_LAST, OnNotYet)
END_MESSAGE_MAP()
// clang-format on

void CToolCommands::OnCompare()
{
    RunCompareTool();
}

void CToolCommands::OnExtractStrings()
{
    RunExtractTool();
}
