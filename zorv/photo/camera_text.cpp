#include <cmath>
#include <ostream>

#include "zorv/core/reader_object.h"
#include "zorv/core/record_text.h"
#include "zorv/core/text_writer.h"
#include "zorv/photo/camera_parameters.h"

namespace camera_key = zorv::detail::camera_key;
using zorv::detail::FieldWidth;
using zorv::detail::FiniteOrZero;
using zorv::detail::kCameraParameters;
using zorv::detail::kExactDigits;
using zorv::detail::RecordText;

namespace {

void AddValue(RecordText& text, const char* keyword, double value) {
    text.Text(keyword).Char(' ').Number(FiniteOrZero(value), kExactDigits);
}

void AddLineEnd(RecordText& text, std::ostream& stream) {
    text.WriteTo(stream);
    text.Clear();
    Zoendl(stream);
}

}  // namespace

long ZoCamera::Read(ZoReaderObject* object) {
    ZoStreamParser in = object->GetStreamParser();
    in >> id >> c >> xh >> yh >> a1 >> a2 >> r0 >> name;
    c = std::fabs(c);
    RememberInversion(0.0, 0.0, 0.0, 0.0);
    rmax = r0 * kReachOfZeroRadius;
    return 1;
}

long ZoCamera::ReadFullData(ZoReaderObject* object) {
    object->RegisterObject(ZoReaderObject(camera_key::kId, &id));
    object->RegisterObject(ZoReaderObject(camera_key::kName, &name));
    object->RegisterObject(ZoReaderObject(camera_key::kMode, &mode));
    object->RegisterObject(ZoReaderObject(camera_key::kXhOlder, &xh));
    object->RegisterObject(ZoReaderObject(camera_key::kYhOlder, &yh));
    for (const auto& parameter : kCameraParameters)
        object->RegisterObject(ZoReaderObject(parameter.keyword, &(this->*parameter.member)));
    object->DoProcess();
    if (rmax == 0.0) rmax = r0 * kReachOfZeroRadius;
    return 1;
}

std::ostream& ZoCamera::Write(std::ostream& stream) const {
    RecordText text;
    text.Field(FieldWidth::w4, id);
    for (const double value : {c, xh, yh, a1, a2, r0})
        text.Field(FieldWidth::w19, FiniteOrZero(value), kExactDigits);
    text.Char(' ').Quoted(name).WriteTo(stream);
    return stream;
}

std::ostream& ZoCamera::WriteFullData(std::ostream& stream, bool lines) const {
    constexpr int kValuesOfLine = 3;
    RecordText text;
    text.Text(camera_key::kId).Char(' ').Number(id).Char(' ');
    text.Text(camera_key::kName).Char(' ').Quoted(name).Char(' ');
    text.Text(camera_key::kMode).Char(' ').Number(mode);
    int values = 0;
    for (const auto& parameter : kCameraParameters) {
        if (lines && values++ % kValuesOfLine == 0) {
            AddLineEnd(text, stream);
        } else {
            text.Char(' ');
        }
        AddValue(text, parameter.keyword, this->*parameter.member);
    }
    text.WriteTo(stream);
    return stream;
}

std::ostream& ZoCamera::WriteTS15Data(std::ostream& stream) const {
    RecordText text;
    AddValue(text, camera_key::kCViva, cViva);
    AddValue(text.Char(' '), camera_key::kXhViva, xhViva);
    AddValue(text.Char(' '), camera_key::kYhViva, yhViva);
    text.WriteTo(stream);
    return stream;
}

std::ostream& ZoCamera::WriteGentriFormat(std::ostream& stream) const {
    constexpr int kDigits = 8;
    RecordText text;
    text.Field(FieldWidth::w4, id).Field(FieldWidth::w12, std::fabs(c), kDigits);
    for (const double value : {xh, yh, a1, a2, r0})
        text.Field(FieldWidth::w12, camPair ? 0.0 : value, kDigits);
    text.WriteTo(stream);
    return stream;
}
