#pragma once

#include <string>
#include <vector>

#include "zorv/export.h"

/// Pieces of HTML report pages, which the caller joins in the order it wants.
///
/// All texts are UTF-8. Nothing is escaped: the caller's text reaches the page as it stands, so that pieces nest.
///
///     HtmlLib html;
///     const std::string body = HtmlLib::Font_h1("Survey") + html.Table(rows, true);
///     HtmlLib::WriteCSSFile(folder);
///     HtmlLib::WriteHTMLFile(ZoMakeFilename(folder, L"survey.html"), html.Header("Survey"), body);
class ZORV_API HtmlLib {
  public:
    using Row = std::vector<std::string>;

    static const char* const m_pHtlmHeader;  ///< head of a page, with one "%s" for the title
    static const char* const m_pCssFile;     ///< the style sheet, 2302 bytes

    /// The page head, which refers to "styles.css" in the folder of the page.
    std::string Header(const std::string& title) const;

    static std::string Font_h1(const std::string& text);
    static std::string Font_h2(const std::string& text);
    static std::string Font_h3(const std::string& text);
    static std::string Font_h4(const std::string& text);
    /// Plain text in the sizes of the four headings.
    static std::string Font_f1(const std::string& text);
    static std::string Font_f2(const std::string& text);
    static std::string Font_f3(const std::string& text);
    static std::string Font_f4(const std::string& text);
    static std::string overline(const std::string& text);

    static std::string AlignLeft(const std::string& text);
    static std::string AlignRight(const std::string& text);
    static std::string AlignCenter(const std::string& text);

    /// n line breaks or hard blanks; empty for n below 1.
    static std::string Break(int n);
    static std::string Space(int n);
    static std::string HorziontalBreak();

    static std::string Link(const std::string& text, const std::string& href, const std::string& target);
    /// Width and height in pixels.
    static std::string Image(const std::wstring& source, const std::wstring& alt, const std::wstring& longDescription,
                             const std::wstring& title, int width, int height);

    /// With `header` the cells of the first row and of the first column are headings.
    std::string Table(const std::vector<Row>& rows, bool header) const;

    /// Writes "styles.css" into the folder. False when it cannot be written; an older file stays then.
    static bool WriteCSSFile(const std::wstring& directory);
    /// Writes a whole page. False when it cannot be written; an older file stays then.
    static bool WriteHTMLFile(const std::wstring& fileName, const std::string& head, const std::string& body);
};
