#include "zorv/core/object.h"

int ZoObject::Compare(unsigned int other) const {
    if (other < id) return -1;
    return other > id ? 1 : 0;
}

int ZoObject::Compare(const ZoObject* other) const {
    return other ? ZoObject::Compare(other->id) : 0;
}

void ZoObject::SetName(const wchar_t* value) {
    if (value) {
        name = value;
    } else {
        name.clear();
    }
}
