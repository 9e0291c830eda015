// Text and archive forms of definition lines, constraints and their lists.

#include <memory>
#include <ostream>

#include "zorv/core/archive_list.h"
#include "zorv/core/lenient_number.h"
#include "zorv/core/number_format.h"
#include "zorv/core/reader_object.h"
#include "zorv/core/record_text.h"
#include "zorv/core/text_writer.h"
#include "zorv/rectify/definition_lines.h"

namespace {

using zorv::detail::FieldWidth;
using zorv::detail::FiniteOrZero;
using zorv::detail::kExactDigits;
using zorv::detail::RecordText;

/// id, an empty name, flags, then the fields.
constexpr std::size_t kSmallestLine = 4 + 2 + 4 + 2 * 4 + 8 + 4 + 2 * 8;
constexpr std::size_t kSmallestConstraint = 4 + 2 + 4 + 2 * 4 + 4 + 8;

template <class T>
void WriteBlocks(std::ostream& stream, const TZoListHeader<T>& list, const char* keyword) {
    for (const T* record = list.First(); record; record = record->NextConst()) {
        stream << s12 << keyword << w4 << ZoBeginBlock;
        record->Write(stream) << ZoEndBlock << Zoendl;
    }
}

}  // namespace

int ZoElspDefLine::Read(ZoReaderObject* object) {
    ZoStreamParser in = object->GetStreamParser();
    in >> id >> id1 >> id2 >> xAxis >> distance;
    return 1;
}

std::ostream& ZoElspDefLine::Write(std::ostream& stream) const {
    RecordText text;
    text.Field(FieldWidth::w8, id).Char(' ').Field(FieldWidth::w8, id1).Char(' ').Field(FieldWidth::w8, id2);
    text.Char(' ').Field(FieldWidth::w8, xAxis).Char(' ').Field(FieldWidth::w8, FiniteOrZero(distance), kExactDigits);
    text.WriteTo(stream);
    return stream;
}

void ZoElspDefLine::ReadV9(CZipWrapper* archive) {
    ZoObject::ReadV9(archive);
    ZoFlag::ReadV9(archive);
    archive->ReadValue(id1);
    archive->ReadValue(id2);
    archive->ReadValue(distance);
    archive->ReadValue(xAxis);
    archive->ReadValue(extra1);
    archive->ReadValue(extra2);
}

void ZoElspDefLine::WriteV9(CZipWrapper* archive) const {
    ZoObject::WriteV9(archive);
    ZoFlag::WriteV9(archive);
    archive->WriteValue(id1);
    archive->WriteValue(id2);
    archive->WriteValue(distance);
    archive->WriteValue(xAxis);
    archive->WriteValue(extra1);
    archive->WriteValue(extra2);
}

int ZoElspDefLineConstraint::Read(ZoReaderObject* object) {
    ZoStreamParser in = object->GetStreamParser();
    int kind = 0;
    in >> id1 >> id2 >> kind >> value;
    type = static_cast<ConstraintType>(kind);
    return 1;
}

std::ostream& ZoElspDefLineConstraint::Write(std::ostream& stream) const {
    RecordText text;
    text.Field(FieldWidth::w8, id1).Char(' ').Field(FieldWidth::w8, id2).Char(' ');
    text.Field(FieldWidth::w8, static_cast<int>(type))
        .Char(' ')
        .Field(FieldWidth::w8, FiniteOrZero(value), kExactDigits);
    text.WriteTo(stream);
    return stream;
}

void ZoElspDefLineConstraint::ReadV9(CZipWrapper* archive) {
    ZoObject::ReadV9(archive);
    ZoFlag::ReadV9(archive);
    archive->ReadValue(id1);
    archive->ReadValue(id2);
    archive->ReadValue(type);
    archive->ReadValue(value);
}

void ZoElspDefLineConstraint::WriteV9(CZipWrapper* archive) const {
    ZoObject::WriteV9(archive);
    ZoFlag::WriteV9(archive);
    archive->WriteValue(id1);
    archive->WriteValue(id2);
    archive->WriteValue(type);
    archive->WriteValue(value);
}

long ZoElspDefLineList::AddObject(ZoReaderObject* object) {
    Add(std::make_unique<ZoElspDefLine>(object).release());
    return 1;
}

void ZoElspDefLineList::ReadV9(CZipWrapper* archive) {
    zorv::detail::ReadRecords(*this, archive, kSmallestLine);
}

void ZoElspDefLineList::WriteV9(CZipWrapper* archive) const {
    zorv::detail::WriteRecords(*this, archive);
}

long ZoElspDefLineConstraintList::AddObject(ZoReaderObject* object) {
    Add(std::make_unique<ZoElspDefLineConstraint>(object).release());
    return 1;
}

void ZoElspDefLineConstraintList::ReadV9(CZipWrapper* archive) {
    zorv::detail::ReadRecords(*this, archive, kSmallestConstraint);
}

void ZoElspDefLineConstraintList::WriteV9(CZipWrapper* archive) const {
    zorv::detail::WriteRecords(*this, archive);
}

int ZoElspParallelDef::Read(ZoReaderObject* object) {
    object->RegisterObject(ZoReaderObject("DEFLINE", Link(&lines, &ZoElspDefLineList::AddObject)));
    object->RegisterObject(ZoReaderObject("CONSTRAINT", Link(&constraints, &ZoElspDefLineConstraintList::AddObject)));
    object->DoProcess();
    return 1;
}

std::ostream& ZoElspParallelDef::Write(std::ostream& stream) const {
    WriteBlocks(stream, lines, "DEFLINE");
    WriteBlocks(stream, constraints, "CONSTRAINT");
    return stream;
}

void ZoElspParallelDef::ReadV9(CZipWrapper* archive) {
    lines.ReadV9(archive);
    constraints.ReadV9(archive);
}

void ZoElspParallelDef::WriteV9(CZipWrapper* archive) const {
    lines.WriteV9(archive);
    constraints.WriteV9(archive);
}
