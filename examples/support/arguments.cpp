#include "arguments.h"

#include <cstdio>

#include <zorv/zorv.h>

std::optional<Arguments> TakeArguments(int argc, char** argv, const std::string& program, const std::string& fileHint) {
    Arguments arguments;
    arguments.out = program;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--out" && i + 1 < argc) {
            arguments.out = argv[++i];
        } else if (argument.starts_with("--")) {
            std::fprintf(stderr, "usage: %s [--out FOLDER] %s\n", program.c_str(), fileHint.c_str());
            return std::nullopt;
        } else {
            arguments.files.emplace_back(argument);
        }
    }
    std::filesystem::create_directories(arguments.out);
    return arguments;
}

std::wstring Wide(const std::filesystem::path& path) {
    return string2wstring(path.string());
}
