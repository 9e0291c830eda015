#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include <unistd.h>

#include "zorv/core/text_conversion.h"

/// A file for the input of a harness, which goes with it. Its name is that of the process and the extension.
struct InputFile {
    explicit InputFile(const std::string& extension = {})
        : path(std::filesystem::temp_directory_path() / ("zorv-fuzz-" + std::to_string(::getpid()) + extension)) {}
    ~InputFile() { std::filesystem::remove(path); }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    void Write(std::string_view bytes) const {
        std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::string Read() const {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    std::wstring Name() const { return string2wstring(path.native()); }

    std::filesystem::path path;
};
