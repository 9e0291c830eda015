#include "zorv/core/disto_package.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

#include <pugixml.hpp>

#include "zorv/core/platform/files.h"
#include "zorv/core/text_conversion.h"

namespace {

constexpr std::wstring_view kVideoItem = L"00_InputVideo";
constexpr std::wstring_view kStream = L"stream";
constexpr std::wstring_view kDistoFile = L"DistoFile.xml";
constexpr std::wstring_view kTargetFolder = L"ZORVSCOPE_10";
/// Shortest name of a stream: "stream", a number, a dot and an extension.
constexpr std::size_t kShortestTail = 11;
/// The word "stream" begins at the latest this far in front of the item's end.
constexpr std::size_t kLastStart = 5;
/// Descriptions take some kilobytes.
constexpr std::uint32_t kLargestDescription = 16U << 20;

/// Whether the name stays below the folder that it is relative to.
bool StaysInside(std::wstring_view path) {
    if (path.find(L':') != path.npos || path.find(L'\0') != path.npos) return false;
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find_first_of(L"/\\", start), path.size());
        const std::wstring_view part = path.substr(start, end - start);
        if (part.empty() || part == L"..") return false;
        start = end + 1;
    }
    return true;
}

/// The part of a video item's name that names the stream; empty for other items.
std::wstring_view StreamName(std::wstring_view item) {
    if (item.find(kVideoItem) == item.npos || item.size() < kLastStart) return {};
    const std::size_t start = item.rfind(kStream, item.size() - kLastStart);
    if (start == item.npos || item.size() - start < kShortestTail) return {};
    return item.substr(start);
}

/// Finds the first element of a name, however deep the document nests.
class FirstElement final : public pugi::xml_tree_walker {
  public:
    explicit FirstElement(std::string_view wanted) : name(wanted) {}

    bool for_each(pugi::xml_node& node) override {
        if (name != node.name()) return true;
        found = node;
        return false;
    }

    pugi::xml_node found;

  private:
    std::string_view name;
};

struct UnzipCloser {
    void operator()(HZIP zip) const { ZoUnzipClose(zip); }
};

}  // namespace

ZoLeicaDistoBlk3dCmiUnzipper::ZoLeicaDistoBlk3dCmiUnzipper(const std::wstring& file) : cmiFile(file) {
    UnzipCmiFile();
}

bool ZoLeicaDistoBlk3dCmiUnzipper::UnzipCmiFile() {
    if (cmiFile.empty()) return false;
    extractedFiles.clear();
    hasDistoFile = false;
    name.clear();

    // A relative name means the current directory of now, not the package's.
    std::error_code error;
    const std::filesystem::path package = std::filesystem::absolute(zorv::detail::NativePath(cmiFile), error);
    if (error) return false;
    const std::wstring directory = zorv::detail::WidePath(package.parent_path());
    const std::wstring stem = zorv::detail::WidePath(package.stem());
    std::filesystem::current_path(package.parent_path(), error);

    const std::unique_ptr<ZoZip, UnzipCloser> zip(ZoUnzipOpen(zorv::detail::WidePath(package).c_str()));
    if (!zip) return false;
    ZIPENTRY entry;
    ZoUnzipEntry(zip.get(), -1, &entry);
    const int count = entry.index;
    // Items that share bytes could unpack to any amount; honest ones together take no more than the file has.
    std::uint64_t packedLeft = std::filesystem::file_size(package, error);
    for (int index = 0; index < count; ++index) {
        if (ZoUnzipEntry(zip.get(), index, &entry) != eZoZipOk) continue;
        const std::wstring_view stream = StreamName(entry.name);
        const bool isDescription = entry.name.find(kDistoFile) != entry.name.npos;
        hasDistoFile |= isDescription;
        if ((stream.empty() && !isDescription) || entry.comp_size > packedLeft) continue;
        packedLeft -= entry.comp_size;
        if (isDescription && entry.unc_size <= kLargestDescription) ReadDistoFile(zip.get(), index);
        std::wstring relative(kTargetFolder);
        relative.append(L"\\").append(stem).append(L"\\").append(stream);
        if (stream.empty() || !StaysInside(entry.name) || !StaysInside(relative)) continue;
        std::wstring target(directory);
        target.append(L"\\").append(relative);
        if (ZoUnzipItem(zip.get(), index, target.c_str()) == eZoZipOk) extractedFiles.push_back(target);
    }
    return true;
}

void ZoLeicaDistoBlk3dCmiUnzipper::ReadDistoFile(HZIP zip, int index) {
    std::unique_ptr<char[]> text;
    std::size_t size = 0;
    if (ZoUnzipItem(zip, index, text, size) != eZoZipOk) return;
    pugi::xml_document document;
    document.load_buffer_inplace(text.get(), size, pugi::parse_default, pugi::encoding_utf8);
    FirstElement search("Name");
    document.traverse(search);
    if (search.found) name = string2wstring(search.found.child_value());
}
