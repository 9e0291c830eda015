#include <cstdarg>

#include "zorv/core/debug_output.h"
#include "zorv/core/number_format.h"
#include "zorv/core/wide_format.h"
#include "zorv/math/matrix.h"

using zorv::detail::AppendFixed;

namespace {

void AppendLine(std::string& text, const ZoMatrix& m, int r) {
    for (int c = 1; c <= m.cols; ++c) {
        AppendFixed(text, m[r][c], 7, '\0', 11);
        text += ' ';
    }
    text += '\n';
}

}  // namespace

std::string ZoMatrix::AsString() const {
    std::string text;
    for (int r = 1; r <= rows; ++r)
        AppendLine(text, *this, r);
    return text;
}

void ZoMatrix::DbgPrintf() const {
    for (int r = 1; r <= rows; ++r) {
        std::string line;
        AppendLine(line, *this, r);
        dbgprintf("%s", line.c_str());
    }
}

void ZoMatrix::DbgPrintf(const char* format, ...) const {
    std::va_list arguments;
    va_start(arguments, format);
    const auto message = zorv::detail::FormatText(format, arguments);
    va_end(arguments);
    if (message) dbgprintf("%s", message->c_str());
    dbgprintf("\n");
    DbgPrintf();
}

std::string ZoVector::AsString() const {
    std::string text = "[ ";
    for (int i = 0; i < size; ++i) {
        AppendFixed(text, data[i], 6, ' ');
        text += "   ";
    }
    text += ']';
    return text;
}

void ZoVector::DbgPrintf(const char* label) const {
    dbgprintf("\n[ZoVector::DbgPrintf : 297] ");
    std::string line;
    if (label) line.append(label).append(" ");
    for (int i = 0; i < size; ++i) {
        AppendFixed(line, data[i], 7);
        line += "   ";
    }
    line += " (";
    AppendFixed(line, Abs(), 7);
    line += ')';
    dbgprintf("%s", line.c_str());
}
