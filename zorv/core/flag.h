#pragma once

#include <cstdint>

#include "zorv/core/list_node.h"
#include "zorv/export.h"

class CZipWrapper;

/// A word of 32 flags, mixed into records.
class ZORV_API ZoFlag {
  public:
    /// These three return the new word.
    int SetFlag(int mask) { return static_cast<int>(flags |= static_cast<std::uint32_t>(mask)); }
    int ClearFlag(int mask) { return static_cast<int>(flags &= ~static_cast<std::uint32_t>(mask)); }
    int ToggleFlag(int mask) { return static_cast<int>(flags ^= static_cast<std::uint32_t>(mask)); }

    /// The bits of the mask that are set, not a normalised bool.
    int IsFlagSet(int mask) const { return static_cast<int>(flags & static_cast<std::uint32_t>(mask)); }
    int GetFlag() const { return static_cast<int>(flags); }

    /// Archive record: the word, 4 bytes.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    std::uint32_t flags = 0;
};

/// A record with flags: beside the plain neighbours, walks that stop only at records with any flag of a mask.
/// A mask of 0 matches nothing.
template <class T>
class TZoFlagNode : public TZoListnode<T>, public ZoFlag {
  public:
    using TZoListnode<T>::TZoListnode;
    using TZoListnode<T>::Next;
    using TZoListnode<T>::Previous;

    /// This node when it matches, else the next one that does, or null.
    T* First(int mask) { return IsFlagSet(mask) ? static_cast<T*>(this) : Next(mask); }

    T* Next(int mask) {
        T* node = Next();
        while (node && !node->IsFlagSet(mask))
            node = node->Next();
        return node;
    }

    T* Previous(int mask) {
        T* node = Previous();
        while (node && !node->IsFlagSet(mask))
            node = node->Previous();
        return node;
    }
};
