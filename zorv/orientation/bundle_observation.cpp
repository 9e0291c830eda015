#include "zorv/orientation/bundle_observation.h"

#include <ostream>

#include "zorv/core/archive.h"
#include "zorv/core/number_format.h"
#include "zorv/core/reader_object.h"
#include "zorv/core/record_text.h"

namespace {

using zorv::detail::FieldWidth;
using zorv::detail::FiniteOrZero;
using zorv::detail::RecordText;

constexpr int kPrecision = 8;  // significant digits

std::ostream& WriteWithGentriColumns(std::ostream& stream, RecordText& text, const ZoBundleAOB& record) {
    text.Field(FieldWidth::w4, record.type).Field(FieldWidth::w8, record.id1).Field(FieldWidth::w8, record.id2);
    text.Field(FieldWidth::w14, FiniteOrZero(record.value), kPrecision)
        .Field(FieldWidth::w14, FiniteOrZero(record.sigma), kPrecision);
    text.WriteTo(stream);
    stream.precision(kPrecision);
    return stream;
}

}  // namespace

void ZoBundleAOB::Init() {
    SetActive(false);
    type = kDefaultType;
    id1 = 0;
    id2 = 0;
    value = 0.0;
    sigma = kDefaultSigma;
    extra = 0.0;
}

bool ZoBundleAOB::SetActive(bool on) {
    on ? SetFlag(kActive) : ClearFlag(kActive);
    return on;
}

int ZoBundleAOB::Read(ZoReaderObject* object) {
    ZoStreamParser in = object->GetStreamParser();
    int active = 0;
    in >> active;
    SetActive(active != 0);
    in >> type >> id1 >> id2 >> value >> sigma;
    return 1;
}

std::ostream& ZoBundleAOB::Write(std::ostream& stream) const {
    RecordText text;
    text.Field(FieldWidth::w4, IsActive() ? 1 : 0);
    return WriteWithGentriColumns(stream, text, *this);
}

std::ostream& ZoBundleAOB::WriteGentri(std::ostream& stream) const {
    RecordText text;
    return WriteWithGentriColumns(stream, text, *this);
}

void ZoBundleAOB::ReadV9(CZipWrapper* archive) {
    std::int16_t active = IsActive() ? 1 : 0;
    archive->ReadValue(active);
    SetActive(active != 0);
    archive->ReadValue(type);
    archive->ReadValue(id1);
    archive->ReadValue(id2);
    archive->ReadValue(value);
    archive->ReadValue(sigma);
    archive->ReadValue(extra);
}

void ZoBundleAOB::WriteV9(CZipWrapper* archive) const {
    archive->WriteValue<std::int16_t>(IsActive() ? 1 : 0);
    archive->WriteValue(type);
    archive->WriteValue(id1);
    archive->WriteValue(id2);
    archive->WriteValue(value);
    archive->WriteValue(sigma);
    archive->WriteValue(extra);
}
