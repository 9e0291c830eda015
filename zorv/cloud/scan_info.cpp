#include "zorv/cloud/scan_info.h"

#include <string>

#include "zorv/cloud/cloud_buffer.h"
#include "zorv/cloud/cloud_record.h"

namespace {

/// Calls `visit` with the fields in the order of the record.
template <class Info, class Visit>
void VisitFields(Info& info, Visit visit) {
    visit(info.firstWord);
    visit(info.timeStart);
    visit(info.timeEnd);
    visit(info.timeStart2);
    visit(info.timeEnd2);
    for (auto& word : info.words)
        visit(word);
    for (auto& block : info.blocks)
        visit(block);
    visit(info.triple1);
    visit(info.triple2);
    visit(info.triple3);
    visit(info.lastBlock);
    for (auto& text : info.texts)
        visit(text);
    for (auto& word : info.middleWords)
        visit(word);
    visit(info.lastText);
    visit(info.fiveWords);
    visit(info.tenWords);
}

}  // namespace

bool ScanDataInfo::Read(ZoFileBuffMemoryMap& buffer) {
    std::uint32_t marker = 0;
    buffer.Read(marker);
    if (marker != zorv::detail::kScanInfoMarker) return false;
    if (buffer.BytesLeft() < zorv::detail::kScanInfoRecord - sizeof marker) {
        buffer.SkipAll();
        return false;
    }
    VisitFields(*this, [&buffer](auto& field) { buffer.Read(&field, sizeof field); });
    return true;
}

void ScanDataInfo::Write(std::FILE* file) const {
    if (!file) return;
    std::string bytes;
    zorv::detail::AppendScanInfo(bytes, *this);
    std::fwrite(bytes.data(), 1, bytes.size(), file);
}

void zorv::detail::AppendScanInfo(std::string& bytes, const ScanDataInfo& info) {
    const auto append = [&bytes](const auto& field) {
        bytes.append(reinterpret_cast<const char*>(&field), sizeof field);
    };
    append(kScanInfoMarker);
    VisitFields(info, append);
}
