#include "app/IniStore.h"
#include "app/KmApp.h"
#include "print/PageSetupDialog.h"
#include "resources/KmIds.h"
#include "support/EditWindow.h"

#include <dlgs.h>

#include <map>
#include <sstream>

namespace
{
using namespace kmtest;

// Where the test printer of scripts/printer.sh puts each job.
const char kOutput[] = "Z:\\var\\spool\\kelmar\\KelmarPS.ps";

// One text output as the printer's PostScript draws it.
struct Run {
    int x, y;
    std::string text;
    bool operator==(const Run& o) const { return x == o.x && y == o.y && text == o.text; }
};
using Page = std::vector<Run>;

// Each "x y moveto" starts a run, and each glyph shown adds its character;
// a run without one was the move of the text's background.
std::vector<Page> ReadPages(const std::string& postScript)
{
    static const std::map<std::string, char> names = {
        {"uni00A0", ' '}, {"zero", '0'},  {"one", '1'},  {"two", '2'},
        {"three", '3'},   {"four", '4'},  {"five", '5'}, {"six", '6'},
        {"seven", '7'},   {"eight", '8'}, {"nine", '9'}, {"period", '.'}};
    std::vector<Page> pages;
    std::istringstream in(postScript);
    std::string line;
    int x, y;
    while (std::getline(in, line)) {
        const size_t show = line.rfind(" glyphshow");
        if (line.rfind("%%Page:", 0) == 0)
            pages.emplace_back();
        else if (!pages.empty() && sscanf(line.c_str(), "%d %d moveto", &x, &y) == 2) {
            if (!pages.back().empty() && pages.back().back().text.empty())
                pages.back().pop_back();
            pages.back().push_back({x, y, ""});
        } else if (!pages.empty() && show != std::string::npos && show + 10 == line.size()) {
            const std::string name = line.substr(1, show - 1);
            pages.back().back().text += name.size() == 1 ? name[0] : names.at(name);
        }
    }
    return pages;
}

class PrintTest : public EditWindowTest
{
  protected:
    // The pages that come out of the printer when act has run, with the
    // print dialog's choices made by choose.
    std::vector<Page> Print(const std::function<void()>& act,
                            std::function<void(HWND)> choose = nullptr)
    {
        ::DeleteFileA(kOutput);
        m_boxes.Queue(IDOK, choose);
        m_boxes.Queue(BoxAnswerer::kLeaveOpen, [this](HWND box) {
            m_abortLines = WindowText(::GetDlgItem(box, IDC_PRINTABORT_DEVICE)) + " " +
                           WindowText(::GetDlgItem(box, IDC_PRINTABORT_PORT));
        });
        act();
        EXPECT_TRUE(PumpUntil([] { return Exists(kOutput); }, 30000)) << "nothing printed";
        return ReadPages(ReadFileBytes(kOutput));
    }
    const std::function<void()> m_printing = [this] { Command(ID_FILE_PRINT); };
    std::string m_abortLines; // printer and port as the box of the last job showed them
};

TEST_F(PrintTest, PagesWithHeadersAndFootersAndARangeOfThem)
{
    std::string text;
    for (int i = 1; i <= 200; ++i)
        text += "line " + std::to_string(i) + "\r\n";
    Write("a.c", text);
    CloseFrame();
    const auto all = Print([&] {
        EXPECT_FALSE(Start("-s -p a.c"));
        EXPECT_TRUE(Children().empty());
    });
    ASSERT_GE(all.size(), 3u);
    const size_t perPage = all[0].size() - 2;
    EXPECT_EQ((200 + perPage - 1) / perPage, all.size());
    int line = 0;
    for (size_t k = 0; k < all.size(); ++k) {
        EXPECT_EQ("a.c", all[k].front().text);
        EXPECT_EQ("Page " + std::to_string(k + 1), all[k].back().text);
        for (size_t i = 1; i + 1 < all[k].size(); ++i)
            EXPECT_EQ("line " + std::to_string(++line), all[k][i].text);
    }
    EXPECT_EQ(200, line);
    EXPECT_EQ("KelmarPS CUPS:KelmarPS", m_abortLines);

    CloseFrame();
    ASSERT_TRUE(Start("-s a.c"));
    const auto range = Print(m_printing, [](HWND box) {
        ::CheckRadioButton(box, rad1, rad3, rad3);
        ::SetDlgItemInt(box, edt1, 2, FALSE);
        ::SetDlgItemInt(box, edt2, 3, FALSE);
    });
    EXPECT_EQ(std::vector<Page>(all.begin() + 1, all.begin() + 3), range);

    theApp.SetSetting(SECTION_SETTINGS, "PageFooter", "");
    const auto noFooter = Print(m_printing);
    ASSERT_FALSE(noFooter.empty());
    EXPECT_EQ(perPage + 3, noFooter[0].size()) << "two more lines and no footer";
}

TEST_F(PrintTest, SelectionOverLinesWithTabsAndAThreePartHeader)
{
    SetText("one\r\ntwo\tx\r\nthree\r\nfour\r\n");
    theApp.SetSetting(SECTION_SETTINGS, "PageHeader", "&lL&cC&rR &p");
    bool offered = true;
    const auto offer = [&](HWND box) { offered = ::IsWindowEnabled(::GetDlgItem(box, rad2)); };
    Select(1, 2);
    m_boxes.Queue(IDCANCEL, offer);
    Command(ID_FILE_PRINT);
    EXPECT_FALSE(offered) << "a selection within a line";

    Select(7, 12);
    const auto pages = Print(m_printing, [&](HWND box) {
        offer(box);
        ::CheckRadioButton(box, rad1, rad3, rad2);
    });
    EXPECT_TRUE(offered);
    const char* texts[] = {"L", "C", "R 1", "two     x", "three", "Page 1"};
    ASSERT_TRUE(pages.size() == 1 && pages[0].size() == 6);
    for (size_t i = 0; i < 6; ++i)
        EXPECT_EQ(texts[i], pages[0][i].text);
    const Page& page = pages[0]; // the header's parts from left to right on one line
    EXPECT_TRUE(page[0].x < page[1].x && page[1].x < page[2].x && page[0].y == page[2].y);
}

// Cancel in the box that shows while a long job prints: the job is dropped
// whole, no failure is reported, and the frame takes input again.
TEST_F(PrintTest, CancelWhilePrintingDropsTheJob)
{
    std::string text;
    for (int i = 1; i <= 3000; ++i)
        text += "line " + std::to_string(i) + "\r\n";
    SetText(text);
    ::DeleteFileA(kOutput);
    m_boxes.Queue({IDOK, IDCANCEL});
    Command(ID_FILE_PRINT);
    EXPECT_FALSE(PumpUntil([] { return Exists(kOutput); }, 3000)) << "the job came out";
    ASSERT_EQ(2u, m_boxes.Boxes().size()) << "the print dialog and the printing box only";
    EXPECT_TRUE(::IsWindowEnabled(m_frameWnd));
}

TEST_F(PrintTest, PageSetupMarginsInTheRegionsUnitsAndDecimalMark)
{
    const struct {
        const char *decimal, *measure, *shown, *typed; // null: not set
        int margin;                                    // -1: refused
    } rows[] = {
        {",", "0", "Margins (cm) 2,50", "2.5", -1},
        {",", "0", "Margins (cm) 2,50", "2,5", 250},
        {nullptr, nullptr, "Margins (inches) 0.98", "1.5", 381},
    };
    for (const auto& row : rows) {
        ::WriteProfileStringA("intl", "sDecimal", row.decimal);
        ::WriteProfileStringA("intl", "iMeasure", row.measure);
        CPageSetupDialog dialog(m_frameWnd);
        std::string shown;
        m_boxes.Queue(IDOK, [&](HWND box) {
            shown = WindowText(::GetDlgItem(box, IDC_PAGE_MARGINS)) + " " +
                    WindowText(::GetDlgItem(box, IDC_PAGE_LEFT));
            ::SetDlgItemTextA(box, IDC_PAGE_LEFT, row.typed);
        });
        if (row.margin < 0) // the refusal, then Cancel
            m_boxes.Queue(IDOK, [](HWND box) {
                ::PostMessageA(::GetWindow(box, GW_OWNER), WM_COMMAND, IDCANCEL, 0);
            });
        EXPECT_EQ(row.margin < 0 ? IDCANCEL : IDOK, dialog.DoModal()) << row.typed;
        EXPECT_EQ(row.shown, shown);
        EXPECT_EQ(row.margin, dialog.m_margins[0]) << row.typed;
        const auto& boxes = m_boxes.Boxes();
        EXPECT_EQ(row.margin < 0 ? "Invalid setting for margin" : "",
                  boxes.size() > 1 ? boxes[1].text : "");
        m_boxes.Clear();
    }
    ::WriteProfileStringA("intl", "sDecimal", nullptr);
    ::WriteProfileStringA("intl", "iMeasure", nullptr);
}

} // namespace
