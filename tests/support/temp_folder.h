#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

#include "zorv/core/text_conversion.h"

inline std::string BytesOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// A folder for the files of one test, which goes with it.
class TempFolder {
  public:
    TempFolder() {
        std::string name = std::filesystem::temp_directory_path() / "zorv-test-XXXXXX";
        if (::mkdtemp(name.data())) {
            path = name;
        } else {
            ADD_FAILURE() << "no temporary folder";
        }
    }
    ~TempFolder() {
        std::error_code error;
        if (!path.empty()) std::filesystem::remove_all(path, error);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    /// The wide name of a file in the folder, as the library takes it. The name is UTF-8.
    std::wstring Name(const std::string& file) const { return string2wstring((path / file).native()); }

    /// Makes a file of these bytes and returns its wide name.
    std::wstring Write(const std::string& file, const std::string& bytes) const {
        std::ofstream(path / file, std::ios::binary) << bytes;
        return Name(file);
    }

    std::string Read(const std::string& file) const { return BytesOf(path / file); }

    std::filesystem::path path;
};
