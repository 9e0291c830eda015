#include <cstddef>
#include <cstdint>

#include "zorv/core/archive.h"
#include "zorv/math/matrix.h"

namespace {

/// Whether a shape from an archive can be true: its elements are there, and an empty one is no more than odd.
bool IsCredible(const CZipWrapper& archive, std::int32_t rows, std::int32_t cols) {
    constexpr std::int64_t kLargestEmpty = 0xffff;
    if (rows < 0 || cols < 0) return false;
    const auto count = static_cast<std::uint64_t>(rows) * static_cast<std::uint64_t>(cols);
    if (count == 0) return rows <= kLargestEmpty && cols <= kLargestEmpty;
    return count <= archive.ReadBytesLeft() / sizeof(double);
}

}  // namespace

void ZoMatrix::ReadV9(CZipWrapper* archive) {
    std::int32_t lines = -1;
    std::int32_t columns = -1;
    if (!archive->ReadValue(lines) || !archive->ReadValue(columns) || !IsCredible(*archive, lines, columns)) return;
    Reshape(lines, columns);
    archive->Read(reinterpret_cast<char*>(data), static_cast<std::size_t>(Count()) * sizeof(double));
}

void ZoMatrix::WriteV9(CZipWrapper* archive) const {
    archive->WriteValue(rows);
    archive->WriteValue(cols);
    archive->AddZipData(data, static_cast<std::size_t>(Count()) * sizeof(double));
}

void ZoVector::ReadV9(CZipWrapper* archive) {
    std::int32_t count = -1;
    if (!archive->ReadValue(count) || !IsCredible(*archive, count, 1)) return;
    Reshape(count);
    archive->Read(reinterpret_cast<char*>(data), static_cast<std::size_t>(size) * sizeof(double));
}

void ZoVector::WriteV9(CZipWrapper* archive) const {
    archive->WriteValue(size);
    archive->AddZipData(data, static_cast<std::size_t>(size) * sizeof(double));
}
