#include "zorv/core/working_directory.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "zorv/core/platform/files.h"
#include "zorv/core/platform/local_time.h"
#include "zorv/core/text_conversion.h"

bool IsCurrentPathWriteable() {
    constexpr std::size_t kLineSize = 100;
    const char* const file = "ZorvtestWrite.txt";
    const std::tm now = zorv::detail::LocalTimeNow();
    char written[kLineSize] = "";
    const std::size_t length = std::strftime(written, kLineSize, "%c\n", &now);

    std::ofstream out(file);
    if (!out) return false;
    out.write(written, static_cast<std::streamsize>(length));
    out.close();

    char read[kLineSize] = "";
    std::ifstream in(file);
    const bool isOpened = in.is_open();
    in.getline(read, kLineSize);
    in.close();
    std::error_code error;
    std::filesystem::remove(file, error);
    // The line end is not compared, nor what a text mode makes of it.
    return isOpened && length > 2 && std::equal(written, written + length - 2, read);
}

bool SetCurrentPathToWriteAblePath() {
    constexpr std::size_t kPathSize = 999;
    if (IsCurrentPathWriteable()) return true;
    std::error_code error;
    const std::filesystem::path temporary = std::filesystem::temp_directory_path(error);
    if (!error && temporary.native().size() < kPathSize) std::filesystem::current_path(temporary, error);
    return IsCurrentPathWriteable();
}

void SetCurrentPathTo(const char* path) {
    SetCurrentPathTo(string2wstring(path).c_str());
}

void SetCurrentPathTo(const wchar_t* path) {
    std::error_code error;
    std::filesystem::current_path(zorv::detail::NativePath(path ? path : L""), error);
    SetCurrentPathToWriteAblePath();
}
