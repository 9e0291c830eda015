#pragma once

#include <vector>

#include "zorv/core/array.h"
#include "zorv/core/link.h"
#include "zorv/export.h"

class ZoStandardNotifier;

/// What a list tells its observers.
enum eZoNotify : int {
    eZoNotifyChanged = 1,    ///< contents changed in bulk, or one node changed
    eZoNotifyAdd = 2,        ///< a node came into the list
    eZoNotifySubtract = 3,   ///< a node left the list
    eZoNotifyDestroyed = 4,  ///< the list is going away
};

/// What happened to a notifier; the parameter with which an observer's link is called.
struct ZoNotifyEvent {
    int kind = 0;  ///< one of eZoNotify, or a number of the host's own
    ZoStandardNotifier* sender = nullptr;
    void* object = nullptr;  ///< the node concerned, or null for the list as a whole
};

/// Receives the events of a notifier and hands them to a Link.
///
/// Notifier and observer may die in either order. Copying and assigning take over the link only: a copy observes
/// nothing until it is given a notifier.
class ZORV_API ZoObserver {
  public:
    ZoObserver() = default;
    explicit ZoObserver(const Link& callback) : link(callback) {}
    /// These two register at once unless the notifier is null.
    explicit ZoObserver(ZoStandardNotifier* notifier);
    ZoObserver(ZoStandardNotifier* notifier, const Link& callback);
    ZoObserver(const ZoObserver& other) : link(other.link) {}
    ZoObserver& operator=(const ZoObserver& other);

  protected:
    virtual void Notify(ZoNotifyEvent* event);

  public:
    virtual ~ZoObserver();

    void SetLink(const Link& callback) { link = callback; }
    /// Registers with the notifier; null does nothing.
    void SetNotifyParent(ZoStandardNotifier* notifier);
    void RemoveFromNotifyParent();
    /// Does nothing when the notifier is the parent already.
    void ChangeNotifyParent(ZoStandardNotifier* notifier);

    Link link;
    ZoStandardNotifier* parent = nullptr;

  private:
    friend class ZoStandardNotifier;

    // Every notifier whose table holds this observer; a list assignment can make that more than the parent.
    std::vector<ZoStandardNotifier*> holders;
};

/// Table of registered observers, in the order of registration. It owns none of them.
class ZORV_API ZoStandardNotifier : public TZoArray<ZoObserver*> {
  public:
    ZoStandardNotifier() = default;
    /// A copy has no observers.
    ZoStandardNotifier(const ZoStandardNotifier&) : TZoArray<ZoObserver*>() {}
    /// Takes over the other's table: its observers hear of this notifier too and keep their parent.
    ZoStandardNotifier& operator=(const ZoStandardNotifier& other);
    /// Leaves no observer behind that points here.
    ~ZoStandardNotifier() override;

    /// False for null and for an observer that has a parent already.
    bool AddObserver(ZoObserver* observer);
    /// False when the observer is not in the table.
    bool RemoveObserver(ZoObserver* observer);
    void RemoveAllObservers();

    /// Calls every observer but `skip` in the order of registration and returns how many were registered when it
    /// began. Observers may register and unregister meanwhile: a new one is not called, a removed one no longer.
    int NotifyObservers(ZoNotifyEvent* event, ZoObserver* skip);

  protected:
    // Observers come and go by the operations above, which keep both sides informed.
    using TZoArray<ZoObserver*>::Add;
    using TZoArray<ZoObserver*>::Clear;
    using TZoArray<ZoObserver*>::Insert;
    using TZoArray<ZoObserver*>::Remove;

  private:
    void Detach(ZoObserver* observer);
};
