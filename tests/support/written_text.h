#pragma once

#include <sstream>
#include <string>

/// The keyword form of a record.
template <class Record>
std::string WrittenText(const Record& record) {
    std::ostringstream out;
    record.Write(out);
    return out.str();
}
