#include "zorv/report/html_report.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <iterator>

#include "tests/support/temp_folder.h"

namespace {

TEST(HtmlReport, PiecesEncloseTheTextAsItStands) {
    const HtmlLib html;
    const std::pair<std::string, std::string> pieces[] = {
        {HtmlLib::Font_h1("a < b & c"), "<h1>a < b & c</h1>"},
        {HtmlLib::Font_h4(""), "<h4></h4>"},
        {HtmlLib::Font_f1(HtmlLib::overline("x")), "<f1><overline>x</overline></f1>"},
        {HtmlLib::Font_f4("t"), "<f4>t</f4>"},
        {HtmlLib::AlignLeft("l"), "<div class=\"alignLeft\">l</div>"},
        {HtmlLib::AlignRight("r"), "<div class=\"alignRight\">r</div>"},
        {HtmlLib::AlignCenter("c"), "<div class=\"alignCenter\">c</div>"},
        {HtmlLib::Break(2), "<br>\n<br>\n"},
        {HtmlLib::Break(0), ""},
        {HtmlLib::Space(3), "&nbsp;&nbsp;&nbsp;"},
        {HtmlLib::Space(-1), ""},
        {HtmlLib::HorziontalBreak(), "<hr>\n"},
        {HtmlLib::Link("plan", "plan.html", ""), "<a href=\"plan.html\" target=\"\">plan</a>"},
        {HtmlLib::Image(L"pl\u00e4ne/1.png", L"a", L"", L"t", 640, -1),
         "<img src =\"pl\xc3\xa4ne/1.png\" alt = \"a\" longdesc = \"\" title = \"t\" style = \"width:640px; "
         "height:-1px;\">"},
        {html.Header("50 %s%d"),
         "<head>\n  <meta http-equiv=\"Content - Type\" content=\"text/html; charset = utf-8\">\n"
         "  <title>50 %s%d</title>\n  <link rel=\"Stylesheet\" href=\"styles.css\" type=\"text/css\"> \n</head>\n"},
    };
    for (const auto& [made, expected] : pieces)
        EXPECT_EQ(made, expected);
}

TEST(HtmlReport, TableHeadingsStandInTheFirstRowAndColumn) {
    const HtmlLib html;
    EXPECT_EQ(html.Table({}, true), "<table></table>\n");
    EXPECT_EQ(html.Table({{"a", "b"}, {"a", "b"}}, true),
              "<table><tr>\n<th>a</th> <th>b</th> </tr>\n<tr>\n<th>a</th> <td>b</td> </tr>\n</table>\n");
    EXPECT_EQ(html.Table({{"a"}, {}, {"b"}}, false),
              "<table><tr>\n<td>a</td> </tr>\n<tr>\n</tr>\n<tr>\n<td>b</td> </tr>\n</table>\n");
}

TEST(HtmlReport, StyleSheetKnowsEveryPieceOfAReport) {
    const std::string sheet = HtmlLib::m_pCssFile;
    EXPECT_EQ(sheet.size(), 2302U);
    EXPECT_TRUE(sheet.starts_with("@charset \"utf-8\";"));
    EXPECT_EQ(std::count(sheet.begin(), sheet.end(), '{'), std::count(sheet.begin(), sheet.end(), '}'));
    for (const char* selector : {"a", "a:hover", "body", "h1", "h4", "f1", "f4", "img", "overline", "table", "th", "td",
                                 ".content", ".menu", ".alignLeft", ".alignRight", ".alignCenter"}) {
        const std::size_t at = sheet.find(std::string("\n") + selector);
        ASSERT_NE(at, sheet.npos) << selector;
        EXPECT_EQ(sheet.find_first_not_of(" \n", at + 1 + std::strlen(selector)), sheet.find('{', at)) << selector;
    }
}

TEST(HtmlReport, PageAndStyleSheetAreWrittenWhole) {
    const TempFolder folder;
    EXPECT_TRUE(HtmlLib::WriteHTMLFile(folder.Name("Übersicht.html"), "HEAD", "BODY"));
    EXPECT_EQ(folder.Read("Übersicht.html"),
              "<!DOCTYPE HTML PUBLIC \" -//W3C//DTD HTML 4.01 Transitional//EN\">\n<html>HEAD<body>\nBODY\n</body>\n"
              "</html>");
    EXPECT_TRUE(HtmlLib::WriteCSSFile(folder.path.wstring()));
    EXPECT_EQ(folder.Read("styles.css"), HtmlLib::m_pCssFile);

    EXPECT_FALSE(HtmlLib::WriteCSSFile(folder.Name("missing")));
    EXPECT_FALSE(HtmlLib::WriteHTMLFile(folder.path.wstring(), "", ""));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path), {}), 2);
}

}  // namespace
