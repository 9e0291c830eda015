#include "zorv/core/list_node.h"

int ZoBaseListnode::Compare(const ZoBaseListnode*) const {
    return 1;
}

int ZoListnode::Compare(const ZoListnode* other) const {
    return other ? ZoObject::Compare(other->id) : 0;
}
