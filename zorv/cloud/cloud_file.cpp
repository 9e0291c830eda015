// The native cloud file: all clouds of a container, packed records with a marker in front of each.

#include <algorithm>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <string>

#include "zorv/cloud/cloud_buffer.h"
#include "zorv/cloud/cloud_container.h"
#include "zorv/cloud/cloud_record.h"
#include "zorv/cloud/running_bounds.h"
#include "zorv/core/logger.h"
#include "zorv/core/number_text.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/text_conversion.h"

using zorv::detail::kScanPointRecord;

namespace {

constexpr std::int32_t kVersion = 2;
constexpr std::size_t kNameField = 60;  // with its terminating zero
constexpr std::uint64_t kMostPoints = std::numeric_limits<std::uint32_t>::max();

/// Records that are asked for at a time; they fit into a buffer's window.
constexpr std::size_t kBlock = 2048;
static_assert(kBlock * kScanPointRecord <= ZoFileBuffMemoryMap::kWindowSize);

/// Clouds of one file whose wrong marker is logged.
constexpr std::uint32_t kMostComplaints = 100;

using Sink = std::function<void(const void*, std::size_t)>;

/// Hands bytes on in blocks whose size and place in the file are whole multiples of large pages of the disk cache,
/// which takes such blocks at a third less cost than odd ones.
class PieceWriter {
  public:
    explicit PieceWriter(const Sink& target)
        : sink(target), block(std::make_unique_for_overwrite<unsigned char[]>(kBlockSize + kLargestPiece)) {}
    ~PieceWriter() { sink(block.get(), used); }
    PieceWriter(const PieceWriter&) = delete;
    PieceWriter& operator=(const PieceWriter&) = delete;

    /// Room for that many bytes, at most kLargestPiece, which the caller fills.
    unsigned char* Piece(std::size_t size) {
        if (used >= kBlockSize) HandOn();
        used += size;
        return block.get() + used - size;
    }
    void Append(const std::string& bytes) { std::copy(bytes.begin(), bytes.end(), Piece(bytes.size())); }

  private:
    static constexpr std::size_t kBlockSize = std::size_t{256} << 10;
    static constexpr std::size_t kLargestPiece = 1024;

    void HandOn() {
        sink(block.get(), kBlockSize);
        used -= kBlockSize;
        std::memcpy(block.get(), block.get() + kBlockSize, used);
    }

    const Sink& sink;
    std::unique_ptr<unsigned char[]> block;
    std::size_t used = 0;
};

void LogCorruptCloud(const ZoFileBuffMemoryMap& buffer) {
    const std::uint64_t size = std::max<std::uint64_t>(buffer.size, 1);
    const std::uint64_t position = buffer.Position();
    ZoApplicationLogger::Log(1, L"Pointcloud file %s corrupt, file position %llu, size %llu, %.2f %%", buffer.fileName,
                             static_cast<unsigned long long>(position), static_cast<unsigned long long>(size),
                             100.0 * static_cast<double>(position) / static_cast<double>(size));
}

/// Passes over words up to one that begins a cloud, at most `most` of them, and returns how many.
std::uint32_t SkipToCloud(ZoFileBuffMemoryMap& buffer, std::uint32_t most) {
    std::uint32_t skipped = 0;
    while (skipped < most) {
        std::uint32_t word;
        const std::span<const unsigned char> bytes = buffer.Peek(sizeof word);
        if (bytes.size() < sizeof word) break;
        std::memcpy(&word, bytes.data(), sizeof word);
        if (word == zorv::detail::kCloudMarker) break;
        buffer.Skip(sizeof word);
        ++skipped;
    }
    return skipped;
}

/// The name as the file holds it, without half a character at its end.
std::string NameField(const std::wstring& name) {
    std::string narrow = wstring2string(name);
    if (narrow.size() >= kNameField) {
        std::size_t length = kNameField - 1;
        const auto isInside = [](char c) { return (static_cast<unsigned char>(c) & 0xc0) == 0x80; };
        while (length > 0 && isInside(narrow[length]))
            --length;
        narrow.resize(length);
    }
    narrow.resize(kNameField);
    return narrow;
}

template <class T>
void Append(std::string& bytes, T value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

bool FitsFile(const ZoPointCloud& cloud) {
    return cloud.Size() <= kMostPoints;
}

bool FitsFile(const ZoPointCloudContainer& container) {
    for (const ZoPointCloud* cloud = container.First(); cloud; cloud = cloud->NextConst()) {
        if (!FitsFile(*cloud)) return false;
    }
    return true;
}

void WriteCloud(const ZoPointCloud& cloud, PieceWriter& writer) {
    std::string head;
    Append(head, zorv::detail::kCloudMarker);
    head += NameField(cloud.GetName());
    Append(head, cloud.flags);
    zorv::detail::AppendScanInfo(head, cloud.scanInfo);
    Append(head, static_cast<std::uint32_t>(cloud.Size()));
    writer.Append(head);
    for (const ZoScanPoint3d& point : cloud.points)
        zorv::detail::EncodeScanPoint(point, writer.Piece(kScanPointRecord));
}

void WriteContainer(const ZoPointCloudContainer& container, const Sink& sink) {
    PieceWriter writer(sink);
    std::string head;
    Append(head, zorv::detail::kCloudFileMarker);
    Append(head, kVersion);
    Append(head, static_cast<std::uint32_t>(container.clouds.Count()));
    writer.Append(head);
    for (const ZoPointCloud* cloud = container.First(); cloud; cloud = cloud->NextConst())
        WriteCloud(*cloud, writer);
}

Sink Into(std::FILE* file) {
    return [file](const void* data, std::size_t size) { std::fwrite(data, 1, size, file); };
}

}  // namespace

bool ZoScanPoint3d::Read(ZoFileBuffMemoryMap& buffer) {
    const std::span<const unsigned char> record = buffer.Peek(kScanPointRecord);
    const bool isGood = record.size() == kScanPointRecord && zorv::detail::DecodeScanPoint(record.data(), *this);
    // What is no whole record is left to whoever looks for the next marker.
    buffer.Skip(isGood ? record.size() : std::min(record.size(), sizeof zorv::detail::kScanPointMarker));
    return isGood;
}

void ZoScanPoint3d::Write(std::FILE* file) const {
    if (!file) return;
    unsigned char record[kScanPointRecord];
    zorv::detail::EncodeScanPoint(*this, record);
    std::fwrite(record, 1, sizeof record, file);
}

int ZoPointCloud::Read(ZoFileBuffMemoryMap& buffer, int version) {
    std::uint32_t marker = 0;
    buffer.Read(marker);
    if (marker != zorv::detail::kCloudMarker) {
        LogCorruptCloud(buffer);
        return 0;
    }
    char text[kNameField + 1] = {};
    if (!buffer.Read(text, kNameField)) buffer.SkipAll();  // a cut record, whatever its last bytes look like
    SetName(string2wstring(text));
    buffer.Read(flags);
    if (version >= 2) scanInfo.Read(buffer);
    std::uint32_t told = 0;
    buffer.Read(told);
    if (told == 0) return 0;
    try {
        AppendRecords(buffer, told);
    } catch (const std::bad_alloc&) {
        constexpr std::uint64_t kMegabyte = 1U << 20;
        const std::uint64_t megabytes = told * std::uint64_t{sizeof(ZoScanPoint3d)} / kMegabyte;
        ZoApplicationLogger::Log(1, L"ZoPointCloud::Read #Points %s, RAM: %llu MB", wzoitoa10(told).c_str(),
                                 static_cast<unsigned long long>(megabytes));
        return 0;
    }
    return 1;
}

void ZoPointCloud::AppendRecords(ZoFileBuffMemoryMap& buffer, std::uint64_t told) {
    const std::uint64_t held = std::min<std::uint64_t>(told, buffer.BytesLeft() / kScanPointRecord);
    Reserve(static_cast<std::size_t>(held));
    zorv::detail::RunningBounds bounds{box, center};
    std::uint64_t read = 0;
    for (bool isGood = true; isGood && read < held;) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(kBlock, held - read));
        const std::span<const unsigned char> bytes = buffer.Peek(wanted * kScanPointRecord);
        const unsigned char* record = bytes.data();
        const unsigned char* const end = record + bytes.size() / kScanPointRecord * kScanPointRecord;
        for (; record < end; record += kScanPointRecord) {
            ZoScanPoint3d point;
            if (!zorv::detail::DecodeScanPoint(record, point)) break;
            bounds.Add(point);
            if (point.IsSelected()) selectedBox.Update(point);
            points.push_back(std::move(point));
            ++read;
        }
        isGood = record == end && record != bytes.data();
        buffer.Skip(static_cast<std::size_t>(record - bytes.data()));
    }
    box = bounds.box;
    center = bounds.center;
    if (read < told) ZoScanPoint3d().Read(buffer);
}

int ZoPointCloud::Write(std::FILE* file) const {
    if (!file || !FitsFile(*this)) return 0;
    const Sink sink = Into(file);
    PieceWriter writer(sink);
    WriteCloud(*this, writer);
    return 1;
}

bool ZoPointCloudContainer::Read(const std::wstring& path, ZoPointCloudReadResult& result) {
    ZoFileBuffMemoryMap buffer(path.c_str());
    if (buffer.error != ZoFileBuffMemoryMap::kNoError) result.error = buffer.error;
    return Read(buffer, result);
}

bool ZoPointCloudContainer::Read(ZoFileBuffMemoryMap& buffer, ZoPointCloudReadResult& result) {
    if (buffer.error != ZoFileBuffMemoryMap::kNoError || buffer.size == 0) return false;
    std::uint32_t marker = 0;
    std::int32_t version = 0;
    buffer.Read(marker);
    buffer.Read(version);
    if (marker != zorv::detail::kCloudFileMarker || version < kVersion) return false;
    std::uint32_t count = 0;
    buffer.Read(count);

    std::uint32_t id = clouds.GetFreeId(firstId);
    std::uint32_t complaints = 0;
    const ZoPointCloud* firstRead = nullptr;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint64_t before = buffer.Position();
        auto cloud = std::make_unique<ZoPointCloud>();
        if (cloud->Read(buffer, version) == 1) {
            // The search for a free id and for display lists waits for the end, for the sake of many clouds.
            ZoPointCloud* const added = Adopt(std::move(cloud), id++, true);
            result.Add(added);
            if (!firstRead) firstRead = added;
        } else if (buffer.Position() == before) {
            break;  // nor do the clouds behind it have bytes
        } else if (++complaints >= kMostComplaints) {
            i += SkipToCloud(buffer, count - 1 - i);
        }
    }
    dirty = 0;
    clouds.Renumber(1, nullptr, 1);
    UpdateCenterAndBoxBefore(firstRead);
    return !clouds.IsEmpty();
}

int ZoPointCloudContainer::Write(const std::wstring& path) {
    if (!FitsFile(*this)) return 0;
    zorv::detail::FileReplacement file(path);
    if (!file.IsOpen()) return 0;
    WriteContainer(*this, [&file](const void* data, std::size_t size) {
        file.Stream().write(static_cast<const char*>(data), static_cast<std::streamsize>(size));
    });
    if (!file.Commit()) return 0;
    dirty = 0;
    return 1;
}

int ZoPointCloudContainer::Write(std::FILE* file) {
    if (!file || !FitsFile(*this)) return 0;
    WriteContainer(*this, Into(file));
    dirty = 0;
    return 1;
}
