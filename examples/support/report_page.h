#pragma once

#include <string>
#include <vector>

#include "raster.h"
#include <zorv/zorv.h>

/// One report page, built piece by piece and written with its style sheet and pictures into a folder.
class ReportPage {
  public:
    explicit ReportPage(const std::wstring& folder) : directory(folder) {}

    void Heading(const std::string& text);
    void Section(const std::string& text);
    void Paragraph(const std::string& text);
    /// The first row is the head; texts are escaped.
    void Table(const std::vector<std::vector<std::string>>& rows);
    /// Writes the picture beside the page and refers to it; sizes in pixels.
    void Picture(const std::wstring& name, const std::string& svg, const std::wstring& title, int width, int height);
    /// The same for a raster, a pixel a cell.
    void Picture(const std::wstring& name, const Raster& raster, const std::wstring& title);

    /// Writes page, style sheet and pictures; false when any of them failed.
    bool Write(const std::wstring& name, const std::string& title);

  private:
    HtmlLib html;
    std::wstring directory;
    std::string body;
    bool picturesWritten = true;
};

/// Text with the characters that mean something in HTML, and those beyond ASCII, escaped.
std::string Escape(const std::string& text);
