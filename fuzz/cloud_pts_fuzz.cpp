// Any bytes as a PTS file: the coordinates are those that the C library finds, and plain reads give what a view gives.

#include <cstdio>

#include "cloud_text.h"

using namespace cloud_text;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::vector<Xyz> expected;
    for (std::size_t at = FirstLine(bytes); at < size;) {
        const std::size_t end = std::min(bytes.find('\n', at), size);
        const std::string line = bytes.substr(at, end - at);
        Xyz xyz;
        if (Fields(line.substr(0, line.find('\0')), " \t\r\n;", xyz) >= 3) expected.push_back(xyz);
        at = end + 1;
    }
    file.Write(bytes);
    Container view, plain;
    ZoPointCloudReadResult result;
    Require(view.ReadPtsFile(file.Name(), result));
    Check(*view.First(), expected, size / 6 + 1);

    std::FILE* stream = std::fopen(file.path.c_str(), "rb");
    const ZoPointCloud* cloud = plain.ReadPtsFile(stream);
    std::fclose(stream);
    Require(IsSame(*cloud, *view.First()));
    return 0;
}
