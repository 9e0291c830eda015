#include "zorv/core/object.h"
#include "zorv/core/reader_object.h"
#include "zorv/core/record_text.h"

int ZoObject::Read(ZoReaderObject* object) {
    ZoStreamParser in = object->GetStreamParser();
    in >> id >> name;
    return 1;
}

std::ostream& ZoObject::Write(std::ostream& stream) const {
    zorv::detail::RecordText text;
    text.Field(zorv::detail::FieldWidth::w4, id).Char(' ').Quoted(name).WriteTo(stream);
    return stream;
}
