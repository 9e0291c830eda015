#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "zorv/core/base_list.h"
#include "zorv/core/list_node.h"
#include "zorv/core/notifier.h"
#include "zorv/core/sort_helper.h"
#include "zorv/core/string_tools.h"

/// The list of a record class: an owning intrusive list that tells its observers of every change and finds its
/// nodes by id and by name.
template <class T>
class TZoListHeader : public TZoBaseListHeader<T>, public ZoStandardNotifier {
    using Base = TZoBaseListHeader<T>;

  public:
    using Base::Add;
    using Base::Count;
    using Base::Find;
    using Base::first;
    using Base::Insert;
    using Base::IsEmpty;
    using Base::Sort;
    using Base::Subtract;
    using Base::Swap;

    TZoListHeader() = default;
    /// Copies the nodes; the copy has no observers.
    TZoListHeader(const TZoListHeader& other) : Base(other), ZoStandardNotifier() {}
    ~TZoListHeader() override {
        Base::Destroy();
        NotifyDestroyed();
    }

    void NotifyAdd(T* node) override { Send(eZoNotifyAdd, node); }
    void NotifyMultiAdd() override { Send(eZoNotifyChanged, nullptr); }
    void NotifySubtract(T* node) override { Send(eZoNotifySubtract, node); }
    /// `skip` is the one observer that is not told, or null.
    void NotifyChanged(T* node, ZoObserver* skip) override { Send(eZoNotifyChanged, node, skip); }
    void NotifySort() override { Send(eZoNotifyChanged, nullptr); }
    void NotifyDestroyed() override { SendAlways(eZoNotifyDestroyed, nullptr, nullptr); }

    /// Replaces the nodes by copies of the other list's and takes over its table of observers.
    TZoListHeader& operator=(const Base& other) override {
        if (this == &other) return *this;
        Base::operator=(other);
        if (const auto* observed = dynamic_cast<const TZoListHeader*>(&other)) ZoStandardNotifier::operator=(*observed);
        return *this;
    }
    TZoListHeader& operator=(const TZoListHeader& other) { return *this = static_cast<const Base&>(other); }

    /// Appends a copy.
    virtual T* Add(const T& record) { return Add(std::make_unique<T>(record).release()); }

    /// Hands the node to the other list and returns the node that followed it here, so that a walk can go on.
    virtual T* Move(T* node, TZoListHeader<T>& other) {
        if (!node) return nullptr;
        T* following = Base::NextOf(node);
        Subtract(node);
        other.Add(node);
        return following;
    }

    /// Puts the record in the place of the one with its id, which is deleted, or appends it. Returns the new node.
    virtual T* Replace(const T& record) { return Replace(std::make_unique<T>(record).release()); }
    virtual T* Replace(T* node) {
        T* former = node ? Find(node->GetId()) : nullptr;
        if (former == node) return node;
        if (!former) return Add(node);
        this->SetNotify(false);
        ReplaceNode(former, node);
        this->SetNotify(true);
        NotifySubtract(nullptr);
        NotifyAdd(node);
        return node;
    }

    /// As Replace, but a record with a new id goes where SortedInsert puts it.
    virtual T* SortedReplace(const T& record) { return SortedReplace(std::make_unique<T>(record).release()); }
    virtual T* SortedReplace(T* node) {
        T* former = node ? Find(node->GetId()) : nullptr;
        if (former == node) return node;
        if (!former) return this->SortedInsert(node);
        ReplaceNode(former, node);
        return node;
    }

    /// The first node of that name without regard to case, or of that id, goes back to the caller; null when there is
    /// none.
    virtual T* Subtract(const std::wstring& name) { return Subtract(Find(name, false)); }
    virtual T* Subtract(unsigned int id) { return Subtract(Find(id)); }

    /// The first node of that name, or null.
    virtual T* Find(const std::wstring& name, bool caseSensitive) const {
        for (T* node = first; node; node = Base::NextOf(node)) {
            const std::wstring& own = node->GetName();
            if (caseSensitive ? own == name : StringEqualsNoCase(own, name)) return node;
        }
        return nullptr;
    }
    /// The first node of that id, or null.
    virtual T* Find(unsigned int id) const {
        for (T* node = first; node; node = Base::NextOf(node)) {
            if (node->GetId() == id) return node;
        }
        return nullptr;
    }

    /// With 0: the largest id plus 1 (1 for an empty list; when that would overflow, the smallest free id). Else the
    /// smallest free id at or above `start`, or 0 when there is none.
    virtual unsigned int GetFreeId(unsigned int start) const {
        constexpr unsigned int kLargest = std::numeric_limits<unsigned int>::max();
        std::vector<unsigned int> used;
        for (const T* node = first; node; node = Base::NextOf(node)) {
            if (node->GetId() >= start) used.push_back(node->GetId());
        }
        std::sort(used.begin(), used.end());
        if (start == 0) {
            if (used.empty()) return 1;
            if (used.back() != kLargest) return used.back() + 1;
            start = 1;
        }
        unsigned int free = start;
        for (unsigned int id : used) {
            if (id < free) continue;
            if (id > free) break;
            if (free == kLargest) return 0;
            ++free;
        }
        return free;
    }

    /// Numbers the nodes from `from` (the first one when null) to the end: start, start + step, ... Returns how many.
    virtual int Renumber(unsigned int start, T* from, unsigned int step) {
        int renumbered = 0;
        for (T* node = from && first ? from : first; node; node = Base::NextOf(node), ++renumbered) {
            node->SetId(start);
            start += step;
        }
        return renumbered;
    }

    virtual void Dump() {
        for (T* node = first; node; node = Base::NextOf(node))
            node->Dump();
    }

    /// Orders the nodes ascending by id. Of nodes with the same id only the first stays; the others are deleted.
    bool SortById() {
        ZoSortHelper<T> helper(this);
        this->SetNotify(false);
        std::vector<T*> kept;
        kept.reserve(helper.index.size());
        for (const auto& [id, node] : helper.index) {
            this->Unlink(node);
            kept.push_back(node);
        }
        this->DeleteNodes();
        this->Relink(kept);
        this->SetNotify(true);
        NotifyChanged(nullptr, nullptr);
        return true;
    }

  private:
    void Send(eZoNotify kind, T* node, ZoObserver* skip = nullptr) {
        if (this->IsNotifyEnabled()) SendAlways(kind, node, skip);
    }
    void SendAlways(eZoNotify kind, T* node, ZoObserver* skip) {
        ZoNotifyEvent event{kind, this, node};
        NotifyObservers(&event, skip);
    }

    void ReplaceNode(T* former, T* node) {
        this->Insert(former, node);
        delete Subtract(former);
    }
};
