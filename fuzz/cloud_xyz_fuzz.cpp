// Any bytes as columns of text: every line is a point with the coordinates that the C library finds, and plain reads
// give what a view gives.

#include "cloud_text.h"

using namespace cloud_text;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::vector<Xyz> expected;
    for (std::size_t at = FirstLine(bytes), end; (end = bytes.find('\n', at)) != bytes.npos; at = end + 1) {
        Xyz xyz;
        Fields(bytes.substr(at, end - at), " \t", xyz);
        expected.push_back(xyz);
    }
    file.Write(bytes);
    Container view, plain;
    ZoPointCloudReadResult result;
    Require(view.ReadXYZFile(file.Name(), result));
    Check(*view.First(), expected, size + 1);

    const zorv::detail::MappingRefusal refusal(zorv::detail::MappingRefusal::kView);
    Require(plain.ReadXYZFile(file.Name(), result));
    Require(IsSame(*plain.First(), *view.First()));
    return 0;
}
