#pragma once

#include <fstream>
#include <initializer_list>
#include <string>

#include "zorv/core/number_format.h"
#include "zorv/core/platform/files.h"

namespace zorv::detail {

/// Appends the numbers as "%.8f", blanks between them and a line end behind.
inline void AppendLogLine(std::string& text, std::initializer_list<double> numbers) {
    constexpr int kDecimals = 8;
    const char* separator = "";
    for (const double number : numbers) {
        text += separator;
        AppendFixed(text, number, kDecimals);
        separator = " ";
    }
    text += '\n';
}

/// Appends the text to a file that can be opened; else does nothing. No folder is made.
inline void AppendToLog(const std::wstring& file, const std::string& text) {
    std::ofstream stream(NativePath(file), std::ios::app);
    if (stream) stream << text;
}

}  // namespace zorv::detail
