#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// What every host program takes: a folder for its results and the files to work on.
struct Arguments {
    std::filesystem::path out;
    std::vector<std::filesystem::path> files;
};

/// `program [--out FOLDER] [FILE ...]`; the folder is made, its default is named after the program. Prints the usage
/// and gives nothing for an option that is unknown.
std::optional<Arguments> TakeArguments(int argc, char** argv, const std::string& program, const std::string& fileHint);

/// A path as the library takes it.
std::wstring Wide(const std::filesystem::path& path);
