#include "zorv/report/html_report.h"

#include <filesystem>
#include <iterator>
#include <map>

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

std::map<std::string, std::string> RulesOf(std::string sheet) {
    for (std::size_t from; (from = sheet.find("/*")) != std::string::npos;)
        sheet.erase(from, sheet.find("*/", from) + 2 - from);
    std::erase_if(sheet, [](char c) { return c == ' ' || c == '\n'; });
    std::map<std::string, std::string> rules;
    for (std::size_t from = 0, open; (open = sheet.find('{', from)) != std::string::npos;) {
        const std::size_t close = sheet.find('}', open);
        rules[sheet.substr(from, open - from)] = sheet.substr(open + 1, close - open - 1);
        from = close + 1;
    }
    return rules;
}

TEST(HtmlReport, StyleSheetHoldsTheRulesOfTheReports) {
    const std::string sheet = HtmlLib::m_pCssFile;
    EXPECT_EQ(sheet.size(), 2302U);
    EXPECT_TRUE(sheet.starts_with("@charset \"utf-8\";"));
    const auto rules = RulesOf(sheet.substr(sheet.find(';') + 1));
    const auto expected = RulesOf(R"(a { color: #b10027; text-decoration: none; }
        a:active { text-decoration: underline; } a:visited { text-decoration: underline; }
        a:hover { color: #008055; text-decoration: underline; }
        body { color: black; background-color: #FFFFFF; font-family: sans-serif; font-size: 12px; }
        .content { width: 1200px; text-align: justify; } hr { color: #b10027; }
        h1 { font-weight: bold; font-size: 16px; color: #b10027; } h2 { font-weight: bold; font-size: 14px; color: #b10027; }
        h3 { font-weight: bold; font-size: 12px; color: #b10027; } h4 { font-weight: bold; font-size: 10px; }
        f1 { font-size: 16px; color: #101010; } f2 { font-size: 14px; color: #101010; }
        f3 { font-size: 12px; color: #101010; } f4 { font-size: 10px; color: #101010; }
        img { border: 1px solid #b10027; background-color: #f5f5f5; } overline { text-decoration: overline; }
        table { border-collapse: collapse; } th { text-align: left; padding: 3px; }
        td { text-align: right; vertical-align: top; padding: 3px; } tr:hover { background-color: #f5f5f5; }
        .menu { width: 100%; height: 20px; } .linkDiv { float: left; border: 1px solid #b10027; }
        .link { } .newsTable { } .clearing { } .alignLeft { text-align: left; } .alignRight { text-align: right; }
        .alignCenter { text-align: center; })");
    EXPECT_EQ(rules.size(), expected.size());
    for (const auto& [selector, declarations] : expected) {
        ASSERT_TRUE(rules.contains(selector)) << selector;
        const std::string& rule = rules.at(selector);
        for (std::size_t from = 0, to; (to = declarations.find(';', from)) != std::string::npos; from = to + 1)
            EXPECT_NE(rule.find(declarations.substr(from, to - from)), std::string::npos) << selector;
        EXPECT_FALSE(selector == "h4" && rule.find("color") != std::string::npos);
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
