#pragma once

#include <functional>
#include <map>
#include <string>

/// Writers of the examples in docs/formats, by their names there. Each is given the file that it reads, if any.
using FormatWriters = std::map<std::string, std::function<std::string(const std::string& input)>>;
const FormatWriters& GetFormatWriters();
