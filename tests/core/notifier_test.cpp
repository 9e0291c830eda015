#include "zorv/core/notifier.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace {

std::string calls;

/// Notes its name when told, then does what the test wants.
struct Named : ZoObserver {
    Named(char letter, ZoStandardNotifier* notifier) : ZoObserver(notifier), name(letter) {}
    void Notify(ZoNotifyEvent*) override {
        calls += name;
        if (then) then();
    }
    char name;
    std::function<void()> then;
};

std::string Told(ZoStandardNotifier& notifier, ZoObserver* skip = nullptr) {
    ZoNotifyEvent event{eZoNotifyChanged, &notifier, nullptr};
    calls += std::to_string(notifier.NotifyObservers(&event, skip));
    return std::exchange(calls, {});
}

TEST(Notifier, TellsInOrderOfRegistrationAllButOne) {
    ZoStandardNotifier notifier, other;
    Named a('a', &notifier), b('b', nullptr), c('c', &notifier);
    EXPECT_EQ(Told(notifier, &a), "c2");
    b.SetNotifyParent(&notifier);
    EXPECT_FALSE(notifier.AddObserver(&b) || other.AddObserver(&b) || notifier.AddObserver(nullptr));
    a.ChangeNotifyParent(&notifier);
    EXPECT_EQ(Told(notifier), "acb3");
    a.ChangeNotifyParent(&other);
    c.ChangeNotifyParent(nullptr);
    EXPECT_FALSE(notifier.RemoveObserver(&c));
    EXPECT_EQ(Told(notifier) + Told(other), "b1a1");
    notifier.RemoveAllObservers();
    EXPECT_EQ(b.parent, nullptr);
    EXPECT_EQ(Told(notifier), "0");
}

TEST(Notifier, ObserversMayComeAndGoWhileTold) {
    ZoStandardNotifier notifier;
    Named a('a', &notifier);
    auto b = std::make_unique<Named>('b', &notifier);
    Named c('c', &notifier), late('d', nullptr);
    a.then = [&] {
        b.reset();
        late.SetNotifyParent(&notifier);
    };
    EXPECT_EQ(Told(notifier), "ac3");
    { const Named copyHearsNothing(c); }
    a.then = nullptr;
    EXPECT_EQ(Told(notifier), "acd3");
}

TEST(Notifier, AnAssignedTableForgetsWhatDiesInAnyOrder) {
    auto source = std::make_unique<ZoStandardNotifier>();
    ZoStandardNotifier target;
    Named a('a', source.get());
    auto b = std::make_unique<Named>('b', source.get());
    target = *source;
    EXPECT_EQ(Told(target), "ab2");
    *source = target;  // a backup comes back
    EXPECT_EQ(a.parent, source.get());
    EXPECT_EQ(Told(*source), "ab2");
    b.reset();
    EXPECT_EQ(Told(target) + Told(*source), "a1a1");
    EXPECT_EQ(a.parent, source.get());
    source.reset();
    EXPECT_EQ(a.parent, nullptr);
    EXPECT_TRUE(target.AddObserver(&a));
    EXPECT_EQ(Told(target), "a1");
}

}  // namespace
