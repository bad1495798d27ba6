#include "tools/ToolList.h"

#include "app/IniStore.h"
#include "resources/KmIds.h"

namespace
{

const unsigned long kDefaultCount = 3;
// The fields of a default tool, as strings of the resources.
enum { FIELD_COMMAND, FIELD_MENUTEXT, FIELD_ARGUMENTS, FIELD_INITDIR, FIELD_FLAGS, FIELD_COUNT };

// "ToolCommand" and the like with the tool's digit behind.
CString ToolKey(const char* stem, int index)
{
    CString key(stem);
    key += static_cast<char>('0' + index);
    return key;
}

// A blank stands for the empty value that a resource string can't hold.
CString DefaultField(int index, int field)
{
    CString text;
    text.LoadString(IDS_TOOLDEFAULTS + static_cast<unsigned>(index * FIELD_COUNT + field));
    if (text == " ")
        text.Empty();
    return text;
}

// The defaults' flags text reads the other way round from the stored
// number: minimised first, then prompt. Intended.
void LoadDefault(int index, CToolEntry& tool)
{
    tool.m_strCommand = DefaultField(index, FIELD_COMMAND);
    tool.m_strMenuText = DefaultField(index, FIELD_MENUTEXT);
    tool.m_strArguments = DefaultField(index, FIELD_ARGUMENTS);
    tool.m_strInitDir = DefaultField(index, FIELD_INITDIR);
    const CString flags = DefaultField(index, FIELD_FLAGS);
    tool.m_bMinimized = flags.GetLength() > 0 && flags[0] == '1';
    tool.m_bPrompt = flags.GetLength() > 1 && flags[1] == '1';
}

} // namespace

int CToolList::Add(const CToolEntry& entry)
{
    if (GetCount() >= kMaxTools)
        return -1;
    m_entries.push_back(entry);
    return GetCount() - 1;
}

void CToolList::Load(const CIniStore& store)
{
    RemoveAll();
    for (CString& text : m_keyTexts)
        text.Empty(); // the key bindings come after the list
    unsigned long count = kDefaultCount;
    store.GetInt(SECTION_TOOLS, "ToolCount", count, 10);
    if (count > kMaxTools) // a negative count too, which reads as a large one
        count = kMaxTools;
    for (int n = 0; n < static_cast<int>(count); ++n) {
        CToolEntry tool;
        if (store.GetString(SECTION_TOOLS, ToolKey("ToolCommand", n), tool.m_strCommand)) {
            store.GetString(SECTION_TOOLS, ToolKey("ToolMenuText", n), tool.m_strMenuText);
            store.GetString(SECTION_TOOLS, ToolKey("ToolArguments", n), tool.m_strArguments);
            store.GetString(SECTION_TOOLS, ToolKey("ToolInitDir", n), tool.m_strInitDir);
            unsigned long flags = 0;
            store.GetInt(SECTION_TOOLS, ToolKey("ToolFlags", n), flags, 2);
            tool.m_bPrompt = (flags & 2) != 0;
            tool.m_bMinimized = (flags & 1) != 0;
        } else if (n < static_cast<int>(kDefaultCount)) {
            LoadDefault(n, tool);
        } else {
            break;
        }
        Add(tool);
    }
}

void CToolList::Save(CIniStore& store)
{
    store.SetInt(SECTION_TOOLS, "ToolCount", GetCount(), 10);
    for (int n = 0; n < GetCount(); ++n) {
        const CToolEntry& tool = GetAt(n);
        store.SetString(SECTION_TOOLS, ToolKey("ToolCommand", n), tool.m_strCommand);
        store.SetString(SECTION_TOOLS, ToolKey("ToolMenuText", n), tool.m_strMenuText);
        store.SetString(SECTION_TOOLS, ToolKey("ToolArguments", n), tool.m_strArguments);
        store.SetString(SECTION_TOOLS, ToolKey("ToolInitDir", n), tool.m_strInitDir);
        store.SetInt(SECTION_TOOLS, ToolKey("ToolFlags", n), tool.m_bPrompt * 2 + tool.m_bMinimized,
                     2);
    }
    RemoveAll();
}
