#include "zorv/core/notifier.h"

#include <algorithm>

ZoObserver::ZoObserver(ZoStandardNotifier* notifier) {
    SetNotifyParent(notifier);
}

ZoObserver::ZoObserver(ZoStandardNotifier* notifier, const Link& callback) : link(callback) {
    SetNotifyParent(notifier);
}

ZoObserver& ZoObserver::operator=(const ZoObserver& other) {
    link = other.link;
    return *this;
}

ZoObserver::~ZoObserver() {
    while (!holders.empty())
        holders.back()->RemoveObserver(this);
}

void ZoObserver::Notify(ZoNotifyEvent* event) {
    link.Call(event);
}

void ZoObserver::SetNotifyParent(ZoStandardNotifier* notifier) {
    if (notifier) notifier->AddObserver(this);
}

void ZoObserver::RemoveFromNotifyParent() {
    if (parent) parent->RemoveObserver(this);
}

void ZoObserver::ChangeNotifyParent(ZoStandardNotifier* notifier) {
    if (notifier == parent) return;
    RemoveFromNotifyParent();
    SetNotifyParent(notifier);
}

ZoStandardNotifier& ZoStandardNotifier::operator=(const ZoStandardNotifier& other) {
    if (this == &other) return *this;
    for (int i = 0; i < count; ++i) {
        // One that stands in both tables keeps its parent, also where that is this notifier.
        if (other.Search(*items[i]) < 0) {
            Detach(*items[i]);
        } else {
            std::erase((*items[i])->holders, this);
        }
    }
    TZoArray<ZoObserver*>::operator=(other);
    for (int i = 0; i < count; ++i)
        (*items[i])->holders.push_back(this);
    return *this;
}

ZoStandardNotifier::~ZoStandardNotifier() {
    RemoveAllObservers();
}

bool ZoStandardNotifier::AddObserver(ZoObserver* observer) {
    if (!observer || observer->parent) return false;
    observer->parent = this;
    // A list assignment may have brought it here already.
    if (Search(observer) < 0) {
        Add(observer);
        observer->holders.push_back(this);
    }
    return true;
}

bool ZoStandardNotifier::RemoveObserver(ZoObserver* observer) {
    const int index = Search(observer);
    if (index < 0) return false;
    Detach(observer);
    Remove(index);
    return true;
}

void ZoStandardNotifier::RemoveAllObservers() {
    while (!IsEmpty()) {
        Detach(*items[0]);
        Remove(0);
    }
}

int ZoStandardNotifier::NotifyObservers(ZoNotifyEvent* event, ZoObserver* skip) {
    const int registered = count;
    if (registered == 0) return 0;
    std::vector<ZoObserver*> called;
    called.reserve(static_cast<std::size_t>(registered));
    for (int i = 0; i < registered; ++i)
        called.push_back(*items[i]);
    for (ZoObserver* observer : called) {
        if (observer != skip && Search(observer) >= 0) observer->Notify(event);
    }
    return registered;
}

void ZoStandardNotifier::Detach(ZoObserver* observer) {
    if (observer->parent == this) observer->parent = nullptr;
    std::erase(observer->holders, this);
}
