#include "zorv/core/id_table.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <ostream>
#include <string_view>
#include <vector>

#include "zorv/core/archive.h"
#include "zorv/core/number_format.h"
#include "zorv/core/parser.h"
#include "zorv/core/reader_object.h"
#include "zorv/core/stream_parser.h"
#include "zorv/core/text_writer.h"

namespace {

constexpr int kIdsPerLine = 10;
constexpr int kPairsPerLine = 5;
constexpr int kCellsPerLine = 100;  // of a wide table: the reader takes lines of limited length only

void WriteId(std::ostream& stream, unsigned int id) {
    char text[zorv::detail::kNumberTextSize];
    const char* const end = zorv::detail::FormatUnsigned(text, id);
    stream << s10 << std::string_view(text, static_cast<std::size_t>(end - text)) << ' ';
}

/// Takes records until the block ends.
template <class ReadRecord>
long ReadToBlockEnd(ZoReaderObject* object, const ReadRecord& readRecord) {
    ZoStreamParser in = object->GetStreamParser();
    try {
        for (;;)
            readRecord(in);
    } catch (const ZoParserStatus&) {
        if (in.parser->GetToken().GetType() != eZoTokenBlockEnd) throw;
    }
    return 1;
}

}  // namespace

void ZoIdTable::DbgPrintf(const char*) const {}

std::ostream& ZoIdTable::Write(std::ostream& stream) const {
    for (int i = 0; i < Size(); ++i) {
        WriteId(stream, (*this)[i]);
        if ((i + 1) % kIdsPerLine == 0) stream << Zoendl;
    }
    return stream << Zoendl;
}

long ZoIdTable::Read(ZoReaderObject* object) {
    return ReadToBlockEnd(object, [this](ZoStreamParser& in) {
        unsigned int id = 0;
        in >> id;
        Add(id);
    });
}

void ZoIdTable::WriteV9(CZipWrapper* archive) const {
    archive->WriteCount(static_cast<std::uint64_t>(Size()));
    for (int i = 0; i < Size(); ++i)
        archive->WriteValue<std::uint32_t>((*this)[i]);
}

void ZoIdTable::ReadV9(CZipWrapper* archive) {
    for (std::uint64_t left = archive->ReadCount(sizeof(std::uint32_t)); left > 0; --left) {
        std::uint32_t id = 0;
        if (!archive->ReadValue(id)) return;
        Add(id);
    }
}

void ZoIdPairTable::DbgPrintf(const char*) const {}

void ZoIdPairTable::SortIdPairs() {
    for (int i = 0; i < Size(); ++i)
        (*this)[i].Sort();
}

std::ostream& ZoIdPairTable::Write(std::ostream& stream) const {
    for (int i = 0; i < Size(); ++i) {
        WriteId(stream, (*this)[i].first);
        WriteId(stream, (*this)[i].second);
        stream << ' ';
        if ((i + 1) % kPairsPerLine == 0) stream << Zoendl;
    }
    return stream << Zoendl;
}

long ZoIdPairTable::Read(ZoReaderObject* object) {
    return ReadToBlockEnd(object, [this](ZoStreamParser& in) {
        ZoIdPair pair;
        in >> pair.first >> pair.second;
        Add(pair);
    });
}

std::ostream& ZoIdTable2D::Write(std::ostream& stream) const {
    WriteId(stream, static_cast<unsigned int>(table.SizeX()));
    WriteId(stream, static_cast<unsigned int>(table.SizeY()));
    for (int y = 0; y < table.SizeY(); ++y) {
        for (int x = 0; x < table.SizeX(); ++x) {
            if (x % kCellsPerLine == 0) stream << Zoendl;
            WriteId(stream, table(x, y));
        }
    }
    return stream;
}

long ZoIdTable2D::Read(ZoReaderObject* object) {
    // A table up to this size takes its memory at once; a larger one grows with the ids that are really there.
    constexpr std::size_t kCellsAtOnce = 64 * 1024;

    ZoStreamParser in = object->GetStreamParser();
    table.Set(0, 0);
    int width = 0;
    int height = 0;
    in >> width >> height;
    width = std::max(width, 0);
    height = std::max(height, 0);

    const std::size_t cells = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    if (cells == 0) return 1;
    if (cells <= kCellsAtOnce) {
        table.Set(width, height);
        for (unsigned int& id : table.data)
            in >> id;
        return 1;
    }
    std::vector<unsigned int> ids;
    while (ids.size() < cells)
        in >> ids.emplace_back();
    table.data.swap(ids);
    table.sizeX = width;
    table.sizeY = height;
    return 1;
}

void ZoIdTable2D::WriteV9(CZipWrapper* archive) const {
    archive->WriteCount(static_cast<std::uint64_t>(table.SizeX()));
    archive->WriteCount(static_cast<std::uint64_t>(table.SizeY()));
    for (const std::uint32_t id : table.data)
        archive->WriteValue(id);
}

void ZoIdTable2D::ReadV9(CZipWrapper* archive) {
    table.Set(0, 0);
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    archive->ReadValue(width);
    archive->ReadValue(height);
    constexpr std::uint64_t kLargest = std::numeric_limits<std::int32_t>::max();
    if (width == 0 || height == 0 || width > kLargest || height > kLargest) return;
    if (width * height > archive->ReadBytesLeft() / sizeof(std::uint32_t)) return;
    table.Set(static_cast<int>(width), static_cast<int>(height));
    for (unsigned int& id : table.data)
        archive->ReadValue(id);
}
