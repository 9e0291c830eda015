#include "zorv/core/attribute.h"

ZoAttribute& ZoAttribute::operator=(const ZoAttribute& other) {
    TZoListnode<ZoAttribute>::operator=(other);
    return *this;
}

int ZoAttribute::OnMove(ZoObject* newParent) {
    parent = newParent;
    return 1;
}

ZoAttribute* ZoAttributeList::Add(ZoAttribute* attribute, ZoObject* parent) {
    if (!attribute) return nullptr;
    attribute->SetParent(parent);
    Base::Add(attribute);
    attribute->OnAdd();
    return attribute;
}

ZoAttribute* ZoAttributeList::Subtract(ZoAttribute* attribute) {
    if (attribute) {
        attribute->OnSubtract();
        attribute->SetParent(nullptr);
    }
    return Base::Subtract(attribute);
}

void ZoAttributeList::MoveAttributes(ZoAttributeList* dest, ZoObject* newParent) {
    if (!dest || dest == this) return;
    // The last step of the walk takes null out, which observers see.
    while (ZoAttribute* attribute = Base::Subtract(First())) {
        attribute->OnPreMove();
        dest->Base::Add(attribute);
        attribute->OnMove(newParent);
    }
}

void ZoAttributeList::DbgPrintfAttributes() {
    for (ZoAttribute* attribute = First(); attribute; attribute = attribute->Next())
        attribute->DbgPrintf();
}
