#pragma once

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "zorv/core/key_sort.h"

class ZoObserver;

namespace zorv::detail {

/// A record whose order is the 32-bit difference of a key (with wrap-around), ascending: points and photos.
template <class T>
concept HasOrderingKey = requires(const T& record) {
    { record.OrderingKey() } -> std::same_as<std::uint32_t>;
};

}  // namespace zorv::detail

/// Intrusive doubly linked list that owns its nodes.
///
/// What is handed to Add, Insert and the like belongs to the list, which deletes it in Destroy and in its destructor.
/// The Subtract family hands a node back to the caller. The six Notify operations do nothing here; TZoListHeader
/// tells observers. Lookups walk the list; use ZoSortHelper for many.
template <class T>
class TZoBaseListHeader {
  public:
    TZoBaseListHeader() = default;
    TZoBaseListHeader(const TZoBaseListHeader& other) { CopyFrom(other); }
    virtual ~TZoBaseListHeader() { DeleteNodes(); }

    virtual void NotifyAdd(T*) {}
    virtual void NotifyMultiAdd() {}
    virtual void NotifySubtract(T*) {}
    virtual void NotifyChanged(T*, ZoObserver*) {}
    virtual void NotifySort() {}
    virtual void NotifyDestroyed() {}

    /// false holds notifications back, true lets them out again; the calls nest.
    virtual void SetNotify(bool on) {
        if (!on) {
            ++notifyOffCount;
        } else if (notifyOffCount > 0) {
            --notifyOffCount;
        }
    }
    /// Lets notifications out whatever the nesting.
    virtual void ForceNotify() { notifyOffCount = 0; }

    /// Replaces the nodes by copies of the other list's. Assigning a list to itself does nothing.
    virtual TZoBaseListHeader& operator=(const TZoBaseListHeader& other) {
        if (this == &other) return *this;
        SetNotify(false);
        Destroy();
        other.CopyTo(this);
        SetNotify(true);
        NotifyMultiAdd();
        return *this;
    }
    /// Appends copies of the other list's nodes.
    virtual TZoBaseListHeader& operator+=(const TZoBaseListHeader& other) {
        other.CopyTo(this);
        return *this;
    }

    virtual T* First() const { return first; }
    virtual T* Last() const { return last; }
    /// The node at a zero-based place; null outside the list.
    virtual T* Get(int index) const {
        if (index < 0) return nullptr;
        T* node = first;
        while (node && index-- > 0)
            node = NextOf(node);
        return node;
    }

    /// Appends the node and returns it. Null returns null and tells nobody.
    virtual T* Add(T* node) {
        if (!node) return nullptr;
        LinkBefore(nullptr, node);
        NotifyAdd(node);
        return node;
    }
    /// Puts the node in front of `before`, which must be in the list; on an empty list, or with null, appends.
    virtual T* Insert(T* before, T* node) {
        if (!first || !before || !node) return Add(node);
        LinkBefore(before, node);
        NotifyAdd(node);
        return node;
    }
    /// Puts the node in front of the first one that its type orders behind it, else at the end.
    virtual T* SortedInsert(T* node) { return node ? Insert(PlaceFor(node), node) : nullptr; }
    virtual T* InsertFirst(T* node) { return Insert(First(), node); }

    virtual T* Subtract(int index) { return Subtract(Get(index)); }
    /// Takes the node, which must be in this list, out and returns it; the caller owns it. Null returns null after a
    /// subtract notification with a null object.
    virtual T* Subtract(T* node) {
        if (node) Unlink(node);
        NotifySubtract(node);
        return node;
    }
    virtual T* SubtractFirst() { return Subtract(First()); }
    virtual T* SubtractLast() { return Subtract(Last()); }

    /// Stable sort by the ordering of T: points and photos ascending, all others descending by id. Returns the number
    /// of nodes.
    virtual int Sort() {
        SetNotify(false);
        const int sorted = SortNodes();
        NotifyMultiAdd();
        SetNotify(true);
        NotifySort();
        return sorted;
    }

    /// Moves all nodes to the end of `dest` in constant time. Null, this list itself and an empty list do nothing.
    virtual void MoveTo(TZoBaseListHeader<T>* dest) {
        if (!dest || dest == this || !first) return;
        SpliceTo(dest);
        dest->NotifyMultiAdd();
        NotifyChanged(nullptr, nullptr);
    }
    virtual void Swap(TZoBaseListHeader<T>* other) {
        if (!other || other == this) return;
        TZoBaseListHeader<T> held;
        MoveTo(&held);
        other->MoveTo(this);
        if (held.IsEmpty()) {
            other->NotifyMultiAdd();
        } else {
            held.MoveTo(other);
        }
    }
    /// Appends copies of the nodes that are here at the start to `dest` and returns their number.
    virtual int CopyTo(TZoBaseListHeader<T>* dest) const {
        if (!dest || !first) return 0;
        dest->SetNotify(false);
        const int copied = dest->CopyFrom(*this);
        dest->SetNotify(true);
        dest->NotifyMultiAdd();
        return copied;
    }

    /// Takes all nodes out, the first one first, and deletes them; observers get one changed event.
    virtual void Destroy() {
        SetNotify(false);
        while (first)
            delete Subtract(first);
        SetNotify(true);
        NotifyChanged(nullptr, nullptr);
    }
    /// Takes all nodes out without deleting them: they belong to whoever holds pointers to them.
    virtual void SubtractAll() {
        SetNotify(false);
        while (first)
            Subtract(first);
        SetNotify(true);
        NotifyChanged(nullptr, nullptr);
    }

    virtual int Count() const {
        int nodes = 0;
        for (const T* node = first; node; node = NextOf(node))
            ++nodes;
        return nodes;
    }
    /// Stops walking as soon as the answer is known.
    virtual bool CountMoreThan(int limit) const {
        int nodes = 0;
        for (const T* node = first; node; node = NextOf(node)) {
            if (++nodes > limit) return true;
        }
        return nodes > limit;
    }
    virtual bool Exist(T* node) const { return Index(node) >= 0; }
    /// The node's zero-based place, or -1.
    virtual int Index(T* node) const {
        int index = 0;
        for (const T* each = first; each; each = NextOf(each), ++index) {
            if (each == node) return index;
        }
        return -1;
    }
    virtual bool IsEmpty() const { return first == nullptr; }
    /// The first node that the ordering of T takes for equal to `value`, or null.
    virtual T* Find(const T& value) const {
        for (T* node = first; node; node = NextOf(node)) {
            if (Order(node, &value) == 0) return node;
        }
        return nullptr;
    }
    virtual T* Push(T* node) { return Add(node); }
    virtual T* Pop() { return SubtractLast(); }

    bool IsNotifyEnabled() const { return notifyOffCount == 0; }
    bool IsPtrInList(void* pointer) const {
        for (T* node = first; node; node = NextOf(node)) {
            if (node == pointer) return true;
        }
        return false;
    }
    T* Cast(const void* pointer) const { return static_cast<T*>(const_cast<void*>(pointer)); }
    /// Hooks for a debugging host; they do nothing.
    void AssertInvalid() const {}
    void AssertPointNotInList(T*) {}

    T* first = nullptr;
    T* last = nullptr;
    std::int32_t notifyOffCount = 0;

  protected:
    static T* NextOf(const T* node) { return static_cast<T*>(node->next); }
    static T* PreviousOf(const T* node) { return static_cast<T*>(node->previous); }

    /// Links a node in front of `before`, or at the end with null. Tells nobody.
    void LinkBefore(T* before, T* node) {
        T* behind = before ? PreviousOf(before) : last;
        node->previous = behind;
        node->next = before;
        if (behind) {
            behind->next = node;
        } else {
            first = node;
        }
        if (before) {
            before->previous = node;
        } else {
            last = node;
        }
    }

    /// Takes a node of this list out and clears its links. Tells nobody.
    void Unlink(T* node) {
        T* before = PreviousOf(node);
        T* behind = NextOf(node);
        if (before) {
            before->next = behind;
        } else {
            first = behind;
        }
        if (behind) {
            behind->previous = before;
        } else {
            last = before;
        }
        node->previous = nullptr;
        node->next = nullptr;
    }

    /// Moves all nodes to the end of `dest`. Tells nobody.
    void SpliceTo(TZoBaseListHeader<T>* dest) {
        if (dest->last) {
            dest->last->next = first;
            first->previous = dest->last;
        } else {
            dest->first = first;
        }
        dest->last = last;
        first = nullptr;
        last = nullptr;
    }

    void DeleteNodes() {
        while (first) {
            T* node = first;
            Unlink(node);
            delete node;
        }
    }

    /// Links the nodes of a vector as the whole contents of the list.
    void Relink(const std::vector<T*>& nodes) {
        first = nullptr;
        last = nullptr;
        for (T* node : nodes)
            LinkBefore(nullptr, node);
    }

  private:
    static int Order(const T* element, const T* node) { return element->Compare(const_cast<T*>(node)); }

    /// Appends copies of the other list's nodes, of those that are there at the start.
    int CopyFrom(const TZoBaseListHeader& other) {
        int copied = 0;
        const T* end = other.last;
        for (const T* node = other.first; node; node = NextOf(node)) {
            LinkBefore(nullptr, new T(*node));
            ++copied;
            if (node == end) break;
        }
        return copied;
    }

    T* PlaceFor(const T* node) const {
        T* place = first;
        while (place && Order(place, node) < 1)
            place = NextOf(place);
        return place;
    }

    int SortNodes() {
        if constexpr (zorv::detail::HasOrderingKey<T>) {
            return SortByKey();
        } else {
            std::vector<T*> nodes;
            for (T* node = first; node; node = NextOf(node))
                nodes.push_back(node);
            std::stable_sort(nodes.begin(), nodes.end(), [](const T* a, const T* b) { return Order(b, a) >= 1; });
            Relink(nodes);
            return static_cast<int>(nodes.size());
        }
    }

    /// Sorts (key, node) pairs, so that the comparisons do not touch the nodes. That is the order of the type where
    /// all keys lie within half a turn; else their wrapped differences are no order.
    int SortByKey() requires zorv::detail::HasOrderingKey<T> {
        std::vector<std::pair<std::uint32_t, T*>> keyed;
        for (T* node = first; node; node = NextOf(node))
            keyed.emplace_back(node->OrderingKey(), node);
        if (keyed.empty()) return 0;

        std::int32_t low = 0;
        std::int32_t high = 0;
        const std::uint32_t origin = keyed.front().first;
        for (const auto& [key, node] : keyed) {
            low = std::min(low, static_cast<std::int32_t>(key - origin));
            high = std::max(high, static_cast<std::int32_t>(key - origin));
        }
        std::vector<T*> nodes(keyed.size());
        const auto takeNodes = [&] {
            std::transform(keyed.begin(), keyed.end(), nodes.begin(), [](const auto& pair) { return pair.second; });
        };
        constexpr std::int64_t kHalfTurn = std::numeric_limits<std::int32_t>::max();
        if (std::int64_t{high} - low > kHalfTurn) {
            takeNodes();
            return SortByInsertion(nodes);
        }
        const std::uint32_t smallest = origin + static_cast<std::uint32_t>(low);
        for (auto& [key, node] : keyed)
            key -= smallest;
        zorv::detail::StableSortByKey(keyed);
        takeNodes();
        Relink(nodes);
        return static_cast<int>(nodes.size());
    }

    /// The sort in its plain form, one insertion after the other, for keys that wrap around.
    int SortByInsertion(const std::vector<T*>& nodes) {
        first = nullptr;
        last = nullptr;
        for (T* node : nodes)
            LinkBefore(PlaceFor(node), node);
        return static_cast<int>(nodes.size());
    }
};
