#include "zorv/photo/reseau_trafo.h"

#include "zorv/core/reader_object.h"

ZoReseauTrafo& ZoReseauTrafo::operator=(const ZoReseauTrafo& other) {
    ZoTrafo2d::operator=(other);
    id = other.id;
    return *this;
}

long ZoReseauTrafo::ReadV50(ZoReaderObject* object) {
    ZoTrafo2d::ReadV50(object);
    ZoStreamParser in = object->GetStreamParser();
    in >> name;
    return 1;
}
