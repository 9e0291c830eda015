#include "zorv/report/html_report.h"

#include <string_view>

#include "zorv/core/path_tools.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/text_conversion.h"

namespace {

constexpr char kHeader[] =
    "<head>\n"
    "  <meta http-equiv=\"Content - Type\" content=\"text/html; charset = utf-8\">\n"
    "  <title>%s</title>\n"
    "  <link rel=\"Stylesheet\" href=\"styles.css\" type=\"text/css\"> \n"
    "</head>\n";

constexpr char kStyleSheet[] = R"css(@charset "utf-8";

/* Links are red and turn green under the pointer. */
a {
    color: #b10027;
    text-decoration: none;
}
a:visited {
    text-decoration: underline;
}
a:hover {
    color: #008055;
    text-decoration: underline;
}
a:active {
    text-decoration: underline;
}

/* The page, and its column of justified text. */
body {
    background-color: #FFFFFF;
    color: black;
    font-family: sans-serif;
    font-size: 12px;
    margin: 16px;
}
.content {
    text-align: justify;
    width: 1200px;
}

/* Headings, and running text in the sizes of the headings. */
h1 {
    color: #b10027;
    font-size: 16px;
    font-weight: bold;
}
h2 {
    color: #b10027;
    font-size: 14px;
    font-weight: bold;
}
h3 {
    color: #b10027;
    font-size: 12px;
    font-weight: bold;
}
h4 {
    font-size: 10px;
    font-weight: bold;
}
f1 {
    color: #101010;
    font-size: 16px;
}
f2 {
    color: #101010;
    font-size: 14px;
}
f3 {
    color: #101010;
    font-size: 12px;
}
f4 {
    color: #101010;
    font-size: 10px;
}
/* A bar over the text, as for a mean value. */
overline {
    text-decoration: overline;
}

/* Rules and pictures. */
hr {
    background-color: #b10027;
    border: 0;
    color: #b10027;
    height: 1px;
}
img {
    background-color: #f5f5f5;
    border: 1px solid #b10027;
}

/* Tables of figures: headings to the left, figures to the right. The row under the pointer is marked. */
table {
    border-collapse: collapse;
}
th {
    border-bottom: 1px solid #b10027;
    padding: 3px;
    text-align: left;
}
td {
    padding: 3px;
    text-align: right;
    vertical-align: top;
}
tr:hover {
    background-color: #f5f5f5;
}

/* A bar of links on top of a page, and boxes of links beside the text. */
.menu {
    height: 20px;
    width: 100%;
}
.link {
    font-weight: bold;
    padding-right: 12px;
}
.linkDiv {
    border: 1px solid #b10027;
    float: left;
    margin: 3px;
    padding: 3px;
}
/* A framed table, full page width. */
.newsTable {
    border: 1px solid #b10027;
    width: 100%;
}
/* Ends the text that flows around a floating box. */
.clearing {
    clear: both;
}
/* Blocks by the side to which their lines are aligned. */
.alignLeft {
    text-align: left;
}
.alignRight {
    text-align: right;
}
.alignCenter {
    text-align: center;
}
)css";
static_assert(sizeof kStyleSheet - 1 == 2302, "the size of the style sheet is fixed");

std::string Enclose(std::string_view tag, const std::string& text) {
    std::string html;
    html.reserve(text.size() + 2 * tag.size() + 5);
    html.append("<").append(tag).append(">").append(text);
    return html.append("</").append(tag).append(">");
}

std::string Align(std::string_view styleClass, const std::string& text) {
    std::string html = "<div class=\"";
    return html.append(styleClass).append("\">").append(text).append("</div>");
}

std::string Repeat(std::string_view piece, int n) {
    std::string html;
    for (int i = 0; i < n; ++i)
        html += piece;
    return html;
}

}  // namespace

const char* const HtmlLib::m_pHtlmHeader = kHeader;
const char* const HtmlLib::m_pCssFile = kStyleSheet;

std::string HtmlLib::Header(const std::string& title) const {
    std::string head = kHeader;
    return head.replace(head.find("%s"), 2, title);
}

std::string HtmlLib::Font_h1(const std::string& text) {
    return Enclose("h1", text);
}

std::string HtmlLib::Font_h2(const std::string& text) {
    return Enclose("h2", text);
}

std::string HtmlLib::Font_h3(const std::string& text) {
    return Enclose("h3", text);
}

std::string HtmlLib::Font_h4(const std::string& text) {
    return Enclose("h4", text);
}

std::string HtmlLib::Font_f1(const std::string& text) {
    return Enclose("f1", text);
}

std::string HtmlLib::Font_f2(const std::string& text) {
    return Enclose("f2", text);
}

std::string HtmlLib::Font_f3(const std::string& text) {
    return Enclose("f3", text);
}

std::string HtmlLib::Font_f4(const std::string& text) {
    return Enclose("f4", text);
}

std::string HtmlLib::overline(const std::string& text) {
    return Enclose("overline", text);
}

std::string HtmlLib::AlignLeft(const std::string& text) {
    return Align("alignLeft", text);
}

std::string HtmlLib::AlignRight(const std::string& text) {
    return Align("alignRight", text);
}

std::string HtmlLib::AlignCenter(const std::string& text) {
    return Align("alignCenter", text);
}

std::string HtmlLib::Break(int n) {
    return Repeat("<br>\n", n);
}

std::string HtmlLib::Space(int n) {
    return Repeat("&nbsp;", n);
}

std::string HtmlLib::HorziontalBreak() {
    return "<hr>\n";
}

std::string HtmlLib::Link(const std::string& text, const std::string& href, const std::string& target) {
    return "<a href=\"" + href + "\" target=\"" + target + "\">" + text + "</a>";
}

std::string HtmlLib::Image(const std::wstring& source, const std::wstring& alt, const std::wstring& longDescription,
                           const std::wstring& title, int width, int height) {
    const std::wstring html = L"<img src =\"" + source + L"\" alt = \"" + alt + L"\" longdesc = \"" + longDescription +
                              L"\" title = \"" + title + L"\" style = \"width:" + std::to_wstring(width) +
                              L"px; height:" + std::to_wstring(height) + L"px;\">";
    return wstring2string(html);
}

std::string HtmlLib::Table(const std::vector<Row>& rows, bool header) const {
    std::string html = "<table>";
    for (const Row& row : rows) {
        html += "<tr>\n";
        for (const std::string& cell : row) {
            const bool heading = header && (&row == &rows.front() || &cell == &row.front());
            html += heading ? "<th>" : "<td>";
            html += cell;
            html += heading ? "</th> " : "</td> ";
        }
        html += "</tr>\n";
    }
    return html += "</table>\n";
}

bool HtmlLib::WriteCSSFile(const std::wstring& directory) {
    zorv::detail::FileReplacement file(ZoMakeFilename(directory, L"styles.css"));
    file.Stream() << kStyleSheet;
    return file.Commit();
}

bool HtmlLib::WriteHTMLFile(const std::wstring& fileName, const std::string& head, const std::string& body) {
    zorv::detail::FileReplacement file(fileName);
    file.Stream() << "<!DOCTYPE HTML PUBLIC \" -//W3C//DTD HTML 4.01 Transitional//EN\">\n<html>" << head << "<body>\n"
                  << body << "\n</body>\n</html>";
    return file.Commit();
}
