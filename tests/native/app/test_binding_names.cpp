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

const char* const kGroups[] = {"File",    "Edit", "Search", "Set",
                               "Project", "Tool", "Window", "Help"};

std::string Group(const char* name)
{
    const std::string text = name;
    return text.substr(0, text.find(':'));
}

int GroupIndex(const char* name)
{
    const auto* end = std::end(kGroups);
    const auto* found = std::find(std::begin(kGroups), end, Group(name));
    return found == end ? -1 : static_cast<int>(found - std::begin(kGroups));
}

std::string Lower(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::vector<const BindingName*> RowsOf(unsigned id)
{
    std::vector<const BindingName*> rows;
    for (int i = 0; i < g_bindingNameCount; ++i)
        if (g_bindingNames[i].id == id)
            rows.push_back(&g_bindingNames[i]);
    return rows;
}

TEST(BindingNames, HasOneRowPerDialogLineInGroupOrder)
{
    ASSERT_EQ(85, g_bindingNameCount);
    int last = 0;
    for (int i = 0; i < g_bindingNameCount; ++i) {
        const BindingName& row = g_bindingNames[i];
        const int group = GroupIndex(row.name);
        ASSERT_GE(group, 0) << row.name;
        EXPECT_GE(group, last) << row.name << " stands after a later group";
        last = group;
        // Commands are numbered in blocks of a thousand by menu, Settings
        // being the fourth.
        EXPECT_EQ(static_cast<unsigned>(group + 1), row.id / 1000) << row.name;
    }
    EXPECT_STREQ("File:New", g_bindingNames[0].name);
    EXPECT_STREQ("Help:About", g_bindingNames[g_bindingNameCount - 1].name);
}

TEST(BindingNames, NamesAreUniqueIgnoringCase)
{
    // The settings file is matched without regard to case.
    std::set<std::string> seen;
    for (int i = 0; i < g_bindingNameCount; ++i)
        EXPECT_TRUE(seen.insert(Lower(g_bindingNames[i].name)).second) << g_bindingNames[i].name;
}

TEST(BindingNames, BackEndMotionsShareTheNumbersOfShiftRightAndTranspose)
{
    const auto right = RowsOf(ID_EDIT_SHIFTRIGHT);
    ASSERT_EQ(2u, right.size());
    EXPECT_STREQ("Edit:ShiftRight", right[0]->name);
    EXPECT_STREQ("Edit:MoveBackEnd", right[1]->name);

    const auto transpose = RowsOf(ID_EDIT_TRANSPOSE);
    ASSERT_EQ(2u, transpose.size());
    EXPECT_STREQ("Edit:Transpose", transpose[0]->name);
    EXPECT_STREQ("Edit:SelBackEnd", transpose[1]->name);

    for (int i = 0; i < g_bindingNameCount; ++i) {
        const unsigned id = g_bindingNames[i].id;
        if (id != ID_EDIT_SHIFTRIGHT && id != ID_EDIT_TRANSPOSE) {
            EXPECT_EQ(1u, RowsOf(id).size()) << g_bindingNames[i].name;
        }
    }
}

TEST(BindingNames, CommandsThatCannotBeRebound)
{
    for (unsigned id :
         {ID_FILE_CLOSE, ID_EDIT_UNDO, ID_EDIT_REDO, ID_HELP_CONTEXT_CHILD, ID_FILE_MRU_SEP})
        EXPECT_TRUE(RowsOf(id).empty()) << id;
    for (unsigned id = ID_FILE_MRU_FIRST; id <= ID_FILE_MRU_LAST; ++id)
        EXPECT_TRUE(RowsOf(id).empty()) << id;
}

TEST(BindingNames, EveryToolEntryIsNamedByItsNumber)
{
    for (unsigned id = ID_TOOL_FIRST; id <= ID_TOOL_LAST; ++id) {
        const auto rows = RowsOf(id);
        ASSERT_EQ(1u, rows.size()) << id;
        EXPECT_EQ("Tool:" + std::to_string(id - ID_TOOL_FIRST), rows[0]->name);
    }
}

// A small reader of the resource scripts: the numbers of the id header, the
// menus, the accelerators and the plain string table entries.
struct MenuItem {
    std::string text;
    unsigned id;
};

struct Accelerator {
    std::string key; // as the menus write it, "Ctrl+Shift+F5"
    unsigned id;
    bool virtKey;
};

class ResourceScript
{
  public:
    ResourceScript()
    {
        ReadIds(std::string(KM_SOURCE_DIR) + "/resources/KmIds.h");
        ReadScript(std::string(KM_SOURCE_DIR) + "/resources/kelmar.rc");
    }

    std::map<std::string, unsigned> ids;
    std::map<unsigned, std::vector<MenuItem>> menus;
    std::vector<Accelerator> accelerators;
    std::map<unsigned, std::string> strings;

  private:
    enum class Block { None, Menu, Accelerators, Strings };

    void ReadIds(const std::string& path)
    {
        std::ifstream in(path);
        EXPECT_TRUE(in.good()) << path;
        const std::regex define(R"(#define\s+(\w+)\s+(0x[0-9A-Fa-f]+|\d+)\s*)");
        std::string line;
        std::smatch m;
        while (std::getline(in, line))
            if (std::regex_match(line, m, define))
                ids[m[1]] = static_cast<unsigned>(std::stoul(m[2], nullptr, 0));
    }

    unsigned Id(const std::string& symbol) const
    {
        auto found = ids.find(symbol);
        return found == ids.end() ? 0 : found->second;
    }

    static std::string Unescape(const std::string& text)
    {
        std::string out;
        for (size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\\' && i + 1 < text.size()) {
                const char c = text[++i];
                out += c == 't' ? '\t' : c == 'n' ? '\n' : c;
            } else if (text[i] == '"' && i + 1 < text.size() && text[i + 1] == '"') {
                out += text[i++];
            } else {
                out += text[i];
            }
        }
        return out;
    }

    void ReadScript(const std::string& path)
    {
        std::ifstream in(path);
        ASSERT_TRUE(in.good()) << path;
        const std::string dir = path.substr(0, path.rfind('/') + 1);
        const std::regex include(R"re(#include\s+"(\w+\.rc)")re");
        const std::regex menu(R"re((\w+)\s+MENU)re");
        const std::regex item(R"re(MENUITEM\s+"((?:[^"]|"")*)",\s*(\w+))re");
        const std::regex accel(R"re(("\w"|\w+),\s*(\w+),\s*(\w+)((?:,\s*\w+)*))re");
        const std::regex text(R"re((\w+)\s+"((?:[^"]|"")*)")re");
        Block block = Block::None;
        int depth = 0;
        unsigned menuId = 0;
        std::string line;
        std::smatch m;
        while (std::getline(in, line)) {
            line = std::regex_replace(line, std::regex(R"(^\s+|\s+$)"), "");
            if (line.empty() || line.rfind("//", 0) == 0)
                continue;
            if (std::regex_match(line, m, include)) {
                ReadScript(dir + m[1].str());
            } else if (std::regex_match(line, m, menu)) {
                block = Block::Menu;
                menuId = Id(m[1]);
            } else if (line.find("ACCELERATORS") != std::string::npos) {
                block = Block::Accelerators;
            } else if (line == "STRINGTABLE") {
                block = Block::Strings;
            } else if (line == "BEGIN") {
                ++depth;
            } else if (line == "END") {
                if (--depth == 0)
                    block = Block::None;
            } else if (block == Block::Menu) {
                if (std::regex_match(line, m, item))
                    menus[menuId].push_back({Unescape(m[1]), Id(m[2])});
            } else if (block == Block::Accelerators && std::regex_match(line, m, accel)) {
                accelerators.push_back({KeyText(m[1], m[4]), Id(m[2]), m[3] == "VIRTKEY"});
            } else if (block == Block::Strings && std::regex_match(line, m, text)) {
                if (Id(m[1]))
                    strings[Id(m[1])] = Unescape(m[2]);
            }
        }
    }

    static std::string KeyText(const std::string& key, const std::string& flags)
    {
        std::string text;
        if (flags.find("CONTROL") != std::string::npos)
            text += "Ctrl+";
        if (flags.find("ALT") != std::string::npos)
            text += "Alt+";
        if (flags.find("SHIFT") != std::string::npos)
            text += "Shift+";
        if (key[0] == '"')
            return text + key.substr(1, 1);
        return text + key.substr(3); // VK_F5, VK_TAB, VK_INSERT
    }
};

const ResourceScript& Script()
{
    static const ResourceScript script;
    return script;
}

std::vector<MenuItem> ItemsOf(unsigned menu, unsigned id)
{
    std::vector<MenuItem> found;
    for (const MenuItem& item : Script().menus.at(menu))
        if (item.id == id)
            found.push_back(item);
    return found;
}

std::vector<std::string> KeysOf(unsigned id)
{
    std::vector<std::string> keys;
    for (const Accelerator& a : Script().accelerators)
        if (a.id == id)
            keys.push_back(Lower(a.key));
    return keys;
}

TEST(ResourceScript, ReaderSeesTheMenusAndTheKeyTable)
{
    EXPECT_EQ(3u, Script().menus.count(IDR_MENU_NOFILE) + Script().menus.count(IDR_MENU_FILE) +
                      Script().menus.count(IDR_MENU_POPUP));
    EXPECT_EQ(44u, Script().accelerators.size());
    EXPECT_EQ("Kelmar Workbench", Script().strings.at(IDS_TITLE));
}

TEST(ResourceScript, EveryBoundCommandCanBeReachedFromAMenuOrAKey)
{
    for (int i = 0; i < g_bindingNameCount; ++i) {
        const BindingName& row = g_bindingNames[i];
        // The bookmarks have neither; the user's tools get their items at
        // run time and only the first has a placeholder.
        if (row.id == ID_SEARCH_MARK || row.id == ID_SEARCH_GOTOMARK ||
            (row.id > ID_TOOL_FIRST && row.id <= ID_TOOL_LAST))
            continue;
        EXPECT_FALSE(ItemsOf(IDR_MENU_FILE, row.id).empty() && KeysOf(row.id).empty()) << row.name;
    }
}

TEST(ResourceScript, MenuKeyTextsNameAKeyOfTheSameCommand)
{
    for (unsigned menu : {IDR_MENU_NOFILE, IDR_MENU_FILE}) {
        for (const MenuItem& item : Script().menus.at(menu)) {
            const size_t tab = item.text.find('\t');
            if (tab == std::string::npos)
                continue;
            const auto keys = KeysOf(item.id);
            EXPECT_NE(keys.end(),
                      std::find(keys.begin(), keys.end(), Lower(item.text.substr(tab + 1))))
                << item.text;
        }
    }
}

TEST(ResourceScript, EveryKeyIsVirtualUniqueAndBoundToACommandWithARowOrUndo)
{
    std::set<std::string> seen;
    for (const Accelerator& a : Script().accelerators) {
        EXPECT_TRUE(a.virtKey) << a.key;
        EXPECT_TRUE(seen.insert(Lower(a.key)).second) << a.key << " is bound twice";
        EXPECT_TRUE(a.id == ID_EDIT_UNDO || !RowsOf(a.id).empty()) << a.key;
    }
}

TEST(ResourceScript, CtrlAShiftsRightAndCtrlShiftATransposes)
{
    // The first record of a command is the one the Key Bindings dialog shows
    // and replaces, so the word-motion keys must come first.
    EXPECT_EQ((std::vector<std::string>{"ctrl+a", "ctrl+tab"}), KeysOf(ID_EDIT_SHIFTRIGHT));
    EXPECT_EQ((std::vector<std::string>{"ctrl+shift+a", "ctrl+t"}), KeysOf(ID_EDIT_TRANSPOSE));
}

TEST(ResourceScript, CommandsWithHelpHaveTheirStatusBarText)
{
    const std::set<unsigned> silent = {
        ID_EDIT_MOVEBACKSTART, ID_EDIT_SELBACKSTART, ID_EDIT_MOVEFWDEND, ID_EDIT_SELFWDEND,
        ID_EDIT_MOVEFWDSTART,  ID_EDIT_SELFWDSTART,  ID_SET_INSERT};
    for (int i = 0; i < g_bindingNameCount; ++i) {
        const unsigned id = g_bindingNames[i].id;
        // All Tools entries show the help of the first.
        const bool hasHelp = !silent.count(id) && (id <= ID_TOOL_FIRST || id > ID_TOOL_LAST);
        EXPECT_EQ(hasHelp ? 1u : 0u, Script().strings.count(id)) << g_bindingNames[i].name;
    }
}

} // namespace
