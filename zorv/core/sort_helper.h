#pragma once

#include <map>

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
        if (list) {
            for (T* node = list->First(); node; node = static_cast<T*>(node->next)) {
                index.emplace_hint(index.end(), node->GetId(), node);
                ++count;
            }
        }
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
