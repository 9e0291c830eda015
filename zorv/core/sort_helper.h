#pragma once

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

template <class T>
class TZoListHeader;

/// Snapshot of a list by id, for many lookups; later changes of the list do not reach it.
///
/// The first node of an id wins. The nodes stay with the list.
template <class T>
class ZoSortHelper {
  public:
    using Index = std::map<unsigned int, T*>;

    /// A null list gives an empty index.
    explicit ZoSortHelper(TZoListHeader<T>* source) : list(source) {
        // Entries made in the order of their ids lie side by side, which is what makes lookups in a long list fast.
        std::vector<std::pair<unsigned int, T*>> nodes;
        for (T* node = list ? list->First() : nullptr; node; node = static_cast<T*>(node->next))
            nodes.emplace_back(node->GetId(), node);
        std::stable_sort(nodes.begin(), nodes.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        for (const auto& [id, node] : nodes)
            index.emplace_hint(index.end(), id, node);
        count = static_cast<int>(nodes.size());
        begin = index.begin();
    }
    ZoSortHelper(const ZoSortHelper& other)
        : list(other.list), index(other.index), begin(index.begin()), count(other.count) {}
    ZoSortHelper& operator=(const ZoSortHelper& other) {
        list = other.list;
        index = other.index;
        begin = index.begin();
        count = other.count;
        return *this;
    }

    /// The first node of the list that has the id, or null.
    T* Find(unsigned int id) const {
        const auto found = index.find(id);
        return found == index.end() ? nullptr : found->second;
    }

    TZoListHeader<T>* list = nullptr;
    Index index;
    typename Index::iterator begin;
    int count = 0;  ///< nodes walked, duplicates included
};

namespace zorv::detail {

/// A list that is only read, as a helper takes it: the helper hands out what it was given and changes nothing.
template <class T>
TZoListHeader<T>* ForLookups(const TZoListHeader<T>* list) {
    return const_cast<TZoListHeader<T>*>(list);
}

}  // namespace zorv::detail
