#include "app/BindingNames.h"
#include "resources/KmIds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <vector>

namespace
{

std::string Lower(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::vector<std::string> RowsOf(unsigned id)
{
    std::vector<std::string> rows;
    for (int i = 0; i < g_bindingNameCount; ++i)
        if (g_bindingNames[i].id == id)
            rows.push_back(g_bindingNames[i].name);
    return rows;
}

TEST(BindingNames, OneRowPerDialogLineInGroupOrderUniqueIgnoringCase)
{
    const std::vector<std::string> groups = {"File",    "Edit", "Search", "Set",
                                             "Project", "Tool", "Window", "Help"};
    ASSERT_EQ(85, g_bindingNameCount);
    size_t last = 0;
    std::set<std::string> seen;
    for (int i = 0; i < g_bindingNameCount; ++i) {
        const std::string name = g_bindingNames[i].name;
        const size_t group =
            std::find(groups.begin(), groups.end(), name.substr(0, name.find(':'))) -
            groups.begin();
        ASSERT_LT(group, groups.size()) << name;
        EXPECT_GE(group, last) << name << " stands after a later group";
        last = group;
        // Commands are numbered in blocks of a thousand by menu.
        EXPECT_EQ(group + 1, g_bindingNames[i].id / 1000) << name;
        EXPECT_TRUE(seen.insert(Lower(name)).second) << name;
        const unsigned id = g_bindingNames[i].id;
        EXPECT_TRUE(id == ID_EDIT_SHIFTRIGHT || id == ID_EDIT_TRANSPOSE || RowsOf(id).size() == 1)
            << name;
    }
    EXPECT_STREQ("File:New", g_bindingNames[0].name);
    EXPECT_STREQ("Help:About", g_bindingNames[g_bindingNameCount - 1].name);
    // The back-end motions share the numbers of Shift Right and Transpose.
    EXPECT_EQ((std::vector<std::string>{"Edit:ShiftRight", "Edit:MoveBackEnd"}),
              RowsOf(ID_EDIT_SHIFTRIGHT));
    EXPECT_EQ((std::vector<std::string>{"Edit:Transpose", "Edit:SelBackEnd"}),
              RowsOf(ID_EDIT_TRANSPOSE));
    for (unsigned id :
         {ID_FILE_CLOSE, ID_EDIT_UNDO, ID_EDIT_REDO, ID_HELP_CONTEXT_CHILD, ID_FILE_MRU_SEP})
        EXPECT_TRUE(RowsOf(id).empty()) << id;
    for (unsigned id = ID_FILE_MRU_FIRST; id <= ID_FILE_MRU_LAST; ++id)
        EXPECT_TRUE(RowsOf(id).empty()) << id;
    for (unsigned id = ID_TOOL_FIRST; id <= ID_TOOL_LAST; ++id)
        EXPECT_EQ(std::vector<std::string>{"Tool:" + std::to_string(id - ID_TOOL_FIRST)},
                  RowsOf(id));
}

} // namespace
