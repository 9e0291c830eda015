#pragma once

#include <string>

#include "zorv/core/link.h"
#include "zorv/core/object.h"
#include "zorv/export.h"

/// Node of an intrusive doubly linked list. A node sits in at most one list at a time; null marks the ends.
class ZORV_API ZoBaseListnode {
  public:
    ZoBaseListnode() = default;
    ZoBaseListnode(const ZoBaseListnode&) = default;
    /// Leaves the links alone.
    ZoBaseListnode& operator=(const ZoBaseListnode&) { return *this; }
    virtual ~ZoBaseListnode() = default;

    virtual int Compare(const ZoBaseListnode* other) const;

    ZoBaseListnode* Next() { return next; }
    ZoBaseListnode* Previous() { return previous; }
    const ZoBaseListnode* NextConst() const { return next; }
    const ZoBaseListnode* PreviousConst() const { return previous; }

    ZoBaseListnode* previous = nullptr;
    ZoBaseListnode* next = nullptr;
};

/// A named, numbered record that can stand in a list and be the target of a Link.
///
/// The copy constructor copies the neighbour links too; they mean nothing until the copy is added to a list.
/// Assignment copies id and name and leaves the links alone.
class ZORV_API ZoListnode : public ZoBaseListnode, public ZoObject, public LinkHdl {
  public:
    ZoListnode() = default;
    explicit ZoListnode(unsigned int objectId) : ZoObject(objectId) {}
    explicit ZoListnode(const std::wstring& objectName) : ZoObject(objectName) {}
    ZoListnode(unsigned int objectId, const std::wstring& objectName) : ZoObject(objectId, objectName) {}
    ZoListnode(const ZoListnode&) = default;
    ZoListnode& operator=(const ZoListnode&) = default;

    using ZoBaseListnode::Compare;
    using ZoObject::Compare;
    /// By id with the sign of ZoObject::Compare, so that lists sort descending by id.
    virtual int Compare(const ZoListnode* other) const;
};

/// ZoListnode with neighbours of the record's own type T. Every record class derives from it.
template <class T>
class TZoListnode : public ZoListnode {
  public:
    using ZoListnode::ZoListnode;

    T* Next() { return static_cast<T*>(next); }
    T* Previous() { return static_cast<T*>(previous); }
    const T* NextConst() const { return static_cast<const T*>(next); }
    const T* PreviousConst() const { return static_cast<const T*>(previous); }
};
