#pragma once

#include <string>

#include "zorv/core/list.h"
#include "zorv/core/list_node.h"
#include "zorv/export.h"

/// Something that a host hangs on a record under a name. A host derives its own attributes and learns by the hooks
/// when they come, go and move.
class ZORV_API ZoAttribute : public TZoListnode<ZoAttribute> {
  public:
    explicit ZoAttribute(const std::wstring& attributeName) : TZoListnode<ZoAttribute>(attributeName) {}
    /// The copy belongs to no record yet.
    ZoAttribute(const ZoAttribute& other) : TZoListnode<ZoAttribute>(other) {}

    /// Takes id and name; the parent stays.
    virtual ZoAttribute& operator=(const ZoAttribute& other);

    /// Called when the attribute came to its parent, before it leaves it, and before it moves to another one. They
    /// return 1.
    virtual int OnAdd() { return 1; }
    virtual int OnSubtract() { return 1; }
    virtual int OnPreMove() { return 1; }
    /// Called after the move; stores the new parent and returns 1.
    virtual int OnMove(ZoObject* newParent);
    /// Writes the attribute to a debugging aid. Does nothing here.
    virtual void DbgPrintf() {}

    ZoObject* GetParent() const { return parent; }
    void SetParent(ZoObject* record) { parent = record; }

    ZoObject* parent = nullptr;  ///< the record that the attribute hangs on; null in no record's list
};

/// The attributes of one record. It owns them.
class ZORV_API ZoAttributeList : public TZoListHeader<ZoAttribute> {
    using Base = TZoListHeader<ZoAttribute>;

  public:
    using Base::Add;
    using Base::Subtract;

    /// Appends the attribute to the record's list and then calls its OnAdd. Returns it.
    ZoAttribute* Add(ZoAttribute* attribute, ZoObject* parent);
    /// Appends without touching the parent and without the hook. Null returns null.
    ZoAttribute* Add2(ZoAttribute* attribute) { return Base::Add(attribute); }

    /// Calls OnSubtract, clears the parent and hands the attribute back to the caller. Destroy and SubtractAll take
    /// each attribute out this way; the end of the list itself deletes them without the hook.
    ZoAttribute* Subtract(ZoAttribute* attribute) override;

    /// Moves all attributes to the end of another record's list, each between its OnPreMove and OnMove. A null list
    /// and this list itself do nothing.
    void MoveAttributes(ZoAttributeList* dest, ZoObject* newParent);

    void DbgPrintfAttributes();
};
