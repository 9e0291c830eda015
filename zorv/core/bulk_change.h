#pragma once

namespace zorv::detail {

/// Changes a list with its notifications held back and ends with one changed event, also when the change throws.
template <class List, class Change>
void BulkChange(List& list, Change change) {
    list.SetNotify(false);
    try {
        change();
    } catch (...) {
        list.SetNotify(true);
        list.NotifyChanged(nullptr, nullptr);
        throw;
    }
    list.SetNotify(true);
    list.NotifyChanged(nullptr, nullptr);
}

}  // namespace zorv::detail
