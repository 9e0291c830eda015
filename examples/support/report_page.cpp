#include "report_page.h"

#include <filesystem>
#include <fstream>

std::string Escape(const std::string& text) {
    std::string escaped = StringReplace(text, std::string("&"), std::string("&amp;"));
    escaped = StringReplace(escaped, std::string("<"), std::string("&lt;"));
    escaped = StringReplace(escaped, std::string(">"), std::string("&gt;"));
    std::string ascii;
    for (const wchar_t character : string2wstring(escaped)) {
        if (character < 0x80)
            ascii += static_cast<char>(character);
        else
            ascii += "&#" + std::to_string(static_cast<unsigned int>(character)) + ";";
    }
    return ascii;
}

void ReportPage::Heading(const std::string& text) {
    body += HtmlLib::Font_h1(Escape(text)) + HtmlLib::HorziontalBreak();
}

void ReportPage::Section(const std::string& text) {
    body += HtmlLib::Break(1) + HtmlLib::Font_h2(Escape(text));
}

void ReportPage::Paragraph(const std::string& text) {
    body += Escape(text) + HtmlLib::Break(2);
}

void ReportPage::Table(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::vector<std::string>> escaped = rows;
    for (auto& row : escaped) {
        for (std::string& cell : row)
            cell = Escape(cell);
    }
    body += html.Table(escaped, true) + HtmlLib::Break(1);
}

void ReportPage::Picture(const std::wstring& name, const std::string& svg, const std::wstring& title, int width,
                         int height) {
    std::ofstream file(std::filesystem::path(wstring2string(ZoMakeFilename(directory, name))), std::ios::binary);
    file << svg;
    picturesWritten = picturesWritten && file.flush();
    body += HtmlLib::Image(name, title, L"", title, width, height) + HtmlLib::Break(1);
}

void ReportPage::Picture(const std::wstring& name, const Raster& raster, const std::wstring& title) {
    picturesWritten = raster.WriteBmp(ZoMakeFilename(directory, name)) && picturesWritten;
    body += HtmlLib::Image(name, title, L"", title, raster.Width(), raster.Height()) + HtmlLib::Break(1);
}

bool ReportPage::Write(const std::wstring& name, const std::string& title) {
    return HtmlLib::WriteHTMLFile(ZoMakeFilename(directory, name), html.Header(Escape(title)), body) &&
           HtmlLib::WriteCSSFile(directory) && picturesWritten;
}
