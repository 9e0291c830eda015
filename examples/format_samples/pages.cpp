#include "pages.h"

#include <map>
#include <sstream>

#include "samples.h"

namespace {

/// As a page holds it: no blanks at line ends, and a line end at the end.
std::string AsShown(const std::string& sample) {
    std::istringstream lines(sample);
    std::string shown;
    for (std::string line; std::getline(lines, line);)
        shown += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
    return shown;
}

}  // namespace

std::string RenewedPage(const std::string& page, std::set<std::string>& shown) {
    const FormatWriters& writers = GetFormatWriters();
    std::istringstream lines(page);
    std::string renewed;
    std::map<std::string, std::string> inputs;
    for (std::string line; std::getline(lines, line);) {
        renewed += line + '\n';
        std::istringstream words(line);
        std::string fence, verb, name;
        words >> fence >> verb >> name;
        if (fence != "```text" || name.empty()) continue;
        std::string content;
        for (std::string inner; std::getline(lines, inner) && inner != "```";)
            content += inner + '\n';
        if (verb == "read-by") inputs[name] = content;
        const auto writer = verb == "made-by" ? writers.find(name) : writers.end();
        if (writer != writers.end()) {
            shown.insert(name);
            content = AsShown(writer->second(inputs[name]));
        } else if (verb == "made-by") {
            content = "nothing makes this example\n";
        }
        renewed += content + "```\n";
    }
    return renewed;
}
