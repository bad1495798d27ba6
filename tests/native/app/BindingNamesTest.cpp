#include "app/BindingNames.h"
#include "resources/KmIds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <regex>
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

// A small reader of the resource scripts: the numbers of the id header, the
// menu items, the accelerators (as the menus write them, "ctrl+shift+f5")
// and the string table entries, unescaped only as far as the tests need.
struct ResourceScript {
    std::map<std::string, unsigned> ids;
    std::map<unsigned, std::vector<std::pair<std::string, unsigned>>> menus;
    std::vector<std::pair<std::string, unsigned>> keys;
    std::map<unsigned, std::string> strings;
    bool allVirtual = true;

    ResourceScript()
    {
        Read(std::string(KM_SOURCE_DIR) + "/resources/KmIds.h");
        Read(std::string(KM_SOURCE_DIR) + "/resources/kelmar.rc");
    }

    void Read(const std::string& path)
    {
        std::ifstream in(path);
        ASSERT_TRUE(in.good()) << path;
        const std::regex define(R"(#define\s+(\w+)\s+(0x[0-9A-Fa-f]+|\d+))");
        const std::regex include(R"re(#include\s+"(\w+\.rc)")re"), menu(R"re((\w+)\s+MENU)re");
        const std::regex item(R"re(MENUITEM\s+"((?:[^"]|"")*)",\s*(\w+))re");
        const std::regex accel(R"re(("\w"|\w+),\s*(\w+),\s*(\w+)((?:,\s*\w+)*))re");
        const std::regex text(R"re((\w+)\s+"((?:[^"]|"")*)")re"), trim(R"(^\s+|\s+$)");
        const std::regex tab(R"(\\t)");
        char block = ' '; // Menu, Accelerators, Strings
        int depth = 0;
        unsigned menuId = 0;
        std::string line;
        std::smatch m;
        while (std::getline(in, line)) {
            line = std::regex_replace(line, trim, "");
            if (line.rfind("//", 0) == 0)
                continue;
            if (std::regex_match(line, m, define)) {
                ids[m[1]] = static_cast<unsigned>(std::stoul(m[2], nullptr, 0));
            } else if (std::regex_match(line, m, include)) {
                Read(path.substr(0, path.rfind('/') + 1) + m[1].str());
            } else if (std::regex_match(line, m, menu)) {
                block = 'M';
                menuId = ids[m[1]];
            } else if (line.find("ACCELERATORS") != std::string::npos) {
                block = 'A';
            } else if (line == "STRINGTABLE") {
                block = 'S';
            } else if (line == "BEGIN" || line == "END") {
                depth += line == "BEGIN" ? 1 : -1;
                block = depth == 0 ? ' ' : block;
            } else if (block == 'M' && std::regex_match(line, m, item)) {
                menus[menuId].push_back({std::regex_replace(m[1].str(), tab, "\t"), ids[m[2]]});
            } else if (block == 'A' && std::regex_match(line, m, accel)) {
                const std::string key = m[1], flags = m[4];
                auto has = [&flags](const char* flag) { return flags.find(flag) != flags.npos; };
                keys.push_back({Lower(std::string(has("CONTROL") ? "Ctrl+" : "") +
                                      (has("ALT") ? "Alt+" : "") + (has("SHIFT") ? "Shift+" : "") +
                                      (key[0] == '"' ? key.substr(1, 1) : key.substr(3))),
                                ids[m[2]]});
                allVirtual = allVirtual && m[3] == "VIRTKEY";
            } else if (block == 'S' && std::regex_match(line, m, text) && ids[m[1]]) {
                strings[ids[m[1]]] = m[2];
            }
        }
    }

    std::vector<std::string> KeysOf(unsigned id) const
    {
        std::vector<std::string> found;
        for (const auto& key : keys)
            if (key.second == id)
                found.push_back(key.first);
        return found;
    }
};

TEST(ResourceScript, MenusKeysAndStringsAgreeWithTheBindingTable)
{
    const ResourceScript script;
    ASSERT_EQ(3u, script.menus.count(IDR_MENU_NOFILE) + script.menus.count(IDR_MENU_FILE) +
                      script.menus.count(IDR_MENU_POPUP));
    EXPECT_EQ(44u, script.keys.size());
    EXPECT_TRUE(script.allVirtual);
    EXPECT_EQ("Kelmar Workbench", script.strings.at(IDS_TITLE));

    // Every key is unique and bound to a command with a row, or to Undo.
    std::set<std::string> seen;
    for (const auto& key : script.keys) {
        EXPECT_TRUE(seen.insert(key.first).second) << key.first << " is bound twice";
        EXPECT_TRUE(key.second == ID_EDIT_UNDO || !RowsOf(key.second).empty()) << key.first;
    }
    // The first record of a command is the one the Key Bindings dialog shows
    // and replaces, so the word-motion keys must come first.
    EXPECT_EQ((std::vector<std::string>{"ctrl+a", "ctrl+tab"}), script.KeysOf(ID_EDIT_SHIFTRIGHT));
    EXPECT_EQ((std::vector<std::string>{"ctrl+shift+a", "ctrl+t"}),
              script.KeysOf(ID_EDIT_TRANSPOSE));

    // The key text of a menu item names a key of the same command.
    std::set<unsigned> inFileMenu;
    for (unsigned menu : {IDR_MENU_NOFILE, IDR_MENU_FILE}) {
        for (const auto& item : script.menus.at(menu)) {
            if (menu == IDR_MENU_FILE)
                inFileMenu.insert(item.second);
            const size_t tab = item.first.find('\t');
            const auto keys = script.KeysOf(item.second);
            EXPECT_TRUE(tab == std::string::npos ||
                        std::count(keys.begin(), keys.end(), Lower(item.first.substr(tab + 1))))
                << item.first;
        }
    }

    const std::set<unsigned> silent = {
        ID_EDIT_MOVEBACKSTART, ID_EDIT_SELBACKSTART, ID_EDIT_MOVEFWDEND, ID_EDIT_SELFWDEND,
        ID_EDIT_MOVEFWDSTART,  ID_EDIT_SELFWDSTART,  ID_SET_INSERT};
    for (int i = 0; i < g_bindingNameCount; ++i) {
        const unsigned id = g_bindingNames[i].id;
        const bool laterTool = id > ID_TOOL_FIRST && id <= ID_TOOL_LAST;
        // Every command is reached from a menu or a key, except the bookmarks
        // and the user's tools, which get their items at run time.
        EXPECT_TRUE(id == ID_SEARCH_MARK || id == ID_SEARCH_GOTOMARK || laterTool ||
                    inFileMenu.count(id) || !script.KeysOf(id).empty())
            << g_bindingNames[i].name;
        // Commands with help have their status bar text; all Tools entries
        // show the help of the first.
        EXPECT_EQ(!silent.count(id) && !laterTool ? 1u : 0u, script.strings.count(id))
            << g_bindingNames[i].name;
    }
}

} // namespace
