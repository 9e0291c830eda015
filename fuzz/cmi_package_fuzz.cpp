// A measurement package of any bytes, unpacked inside a folder of its own; nothing may appear outside.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include "zorv/core/disto_package.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    namespace fs = std::filesystem;
    std::string outer = fs::temp_directory_path() / "zorv-fuzz-XXXXXX";
    if (!::mkdtemp(outer.data())) return 0;
    const fs::path inner = fs::path(outer) / "a" / "b";
    fs::create_directories(inner);
    const fs::path file = inner / "package.cmi";
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));

    const fs::path before = fs::current_path();
    const ZoLeicaDistoBlk3dCmiUnzipper package(file.wstring());
    fs::current_path(before);

    const fs::path target = inner / "ZORVSCOPE_10" / "package";
    for (const auto& entry : fs::recursive_directory_iterator(outer)) {
        const fs::path inTarget = entry.path().lexically_relative(target);
        if (entry.is_regular_file() && entry.path() != file && *inTarget.begin() == "..") std::abort();
    }
    for (const std::wstring& extracted : package.GetExtractedFiles()) {
        if (extracted.find(L"..\\") != extracted.npos) std::abort();
    }
    std::error_code error;
    fs::remove_all(outer, error);
    return 0;
}
