#include "zorv/core/list.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "zorv/core/flag.h"

namespace {

int living = 0;

/// Sorts descending by id, as records do by default.
struct Record : TZoListnode<Record> {
    explicit Record(unsigned int number, const std::wstring& text = {}) : TZoListnode<Record>(number, text) {
        ++living;
    }
    Record(const Record& other) : TZoListnode<Record>(other) { ++living; }
    Record& operator=(const Record&) = default;
    ~Record() override { --living; }
};

/// Sorts by the wrapped difference of its key, as points and photos do.
struct Keyed : TZoListnode<Keyed> {
    explicit Keyed(unsigned int key, const std::wstring& text = {}) : TZoListnode<Keyed>(key, text) {}
    using TZoListnode<Keyed>::Compare;
    virtual int Compare(ZoListnode* other) const { return static_cast<int>(id - other->id); }
    std::uint32_t OrderingKey() const { return id; }
};

using IdList = std::vector<unsigned int>;

template <class T>
IdList Ids(const TZoBaseListHeader<T>& list) {
    IdList ids;
    const T* behind = nullptr;
    for (const T* node = list.First(); node; behind = node, node = node->NextConst()) {
        EXPECT_EQ(node->PreviousConst(), behind);
        ids.push_back(node->GetId());
    }
    EXPECT_EQ(list.Last(), behind);
    return ids;
}

template <class T>
std::wstring Names(const TZoBaseListHeader<T>& list) {
    std::wstring names;
    for (const T* node = list.First(); node; node = node->NextConst())
        names += node->GetName();
    return names;
}

template <class T>
void Append(TZoListHeader<T>& list, const IdList& ids, const wchar_t* letters = nullptr) {
    for (unsigned int id : ids)
        list.Add(T(id, letters ? std::wstring(1, *letters++) : L""));
}

/// Writes down what a list tells: "+3" a node came, "-3" it left, "*" changed, "!" destroyed, "0" for no node.
class Listener : public LinkHdl {
  public:
    explicit Listener(ZoStandardNotifier& notifier) : observer(&notifier, Link(this, &Listener::Hear)) {}
    std::string Take() { return std::exchange(heard, {}); }

  private:
    long Hear(ZoNotifyEvent* event) {
        EXPECT_EQ(event->sender, observer.parent);
        const auto* node = static_cast<const Record*>(event->object);
        heard += "*+-!"[event->kind - 1];
        if (node || event->kind == eZoNotifySubtract) heard += node ? std::to_string(node->GetId()) : "0";
        return 1;
    }

    std::string heard;

  public:
    ZoObserver observer;
};

TEST(List, LinksFindsAndHandsBack) {
    {
        TZoListHeader<Record> list;
        EXPECT_EQ(list.Get(0), nullptr);
        EXPECT_EQ(list.Pop(), nullptr);
        list.Insert(nullptr, new Record(2, L"POINT 1"));
        list.InsertFirst(new Record(1, L"point 1"));
        list.Push(new Record(4, L"Höhe"));
        list.Insert(list.Last(), new Record(2));
        EXPECT_EQ(Ids(list), (IdList{1, 2, 2, 4}));
        EXPECT_EQ(list.Get(list.Count()), nullptr);
        EXPECT_TRUE(list.CountMoreThan(3) && !list.CountMoreThan(4));
        EXPECT_EQ(std::tuple(list.Find(2u), list.Find(9u), list.Find(L"POINT 1", false), list.Find(L"POINT 1", true)),
                  std::tuple(list.Get(1), nullptr, list.Get(0), list.Get(1)));

        const std::unique_ptr<Record> byPlace(list.Subtract(1));
        EXPECT_EQ(byPlace->GetName(), L"POINT 1");
        EXPECT_TRUE(!byPlace->Next() && !byPlace->Previous());
        EXPECT_FALSE(list.Exist(byPlace.get()) || list.IsPtrInList(byPlace.get()));
        const std::unique_ptr<Record> byName(list.Subtract(std::wstring(L"HÖHE")));
        const std::unique_ptr<Record> byId(list.Subtract(1u));
        EXPECT_EQ(Ids(list), (IdList{2}));
        EXPECT_EQ(living, 4);
    }
    EXPECT_EQ(living, 0);
}

TEST(List, FreeIdsAndRenumbering) {
    struct {
        IdList ids;
        unsigned int start, expected;
    } const rows[] = {
        {{}, 0, 1}, {{3, 7}, 0, 8}, {{3, 4, 7}, 3, 5},       {{7, 4, 3, 3, 5}, 3, 6},       {{3}, 1, 1},
        {{}, 5, 5}, {{0, 1}, 0, 2}, {{0xffffffff, 1}, 0, 2}, {{0xffffffff}, 0xffffffff, 0},
    };
    for (const auto& [ids, start, expected] : rows) {
        TZoListHeader<Record> list;
        Append(list, ids);
        EXPECT_EQ(list.GetFreeId(start), expected);
    }
    TZoListHeader<Record> list;
    EXPECT_EQ(list.Renumber(1, nullptr, 1), 0);
    Append(list, {0, 0, 0});
    EXPECT_EQ(list.Renumber(10, nullptr, 5), 3);
    EXPECT_EQ(list.Renumber(7, list.Get(2), 1), 1);
    EXPECT_EQ(Ids(list), (IdList{10, 15, 7}));
}

TEST(List, EveryOperationTellsWhatHappened) {
    TZoListHeader<Record> list, other;
    Listener heard(list), there(other);
    const auto both = [&] { return heard.Take() + "|" + there.Take(); };

    Record* three = list.Add(Record(3));
    list.Insert(three, new Record(5));
    list.SortedInsert(new Record(4));
    EXPECT_EQ(Ids(list), (IdList{5, 4, 3}));
    delete list.Subtract(1);
    list.Subtract(static_cast<Record*>(nullptr));
    list.Add(static_cast<Record*>(nullptr));
    EXPECT_EQ(both(), "+3+5+4-4-0|");

    EXPECT_EQ(list.CopyTo(&other), 2);
    EXPECT_EQ(list.Move(list.First(), other), three);
    EXPECT_EQ(both(), "-5|*+5");
    other.MoveTo(&list);
    EXPECT_EQ(both(), "*|*");
    EXPECT_EQ(Ids(list), (IdList{3, 5, 3, 5}));
    EXPECT_EQ(other.CopyTo(&list), 0);
    other.MoveTo(&list);
    EXPECT_EQ(both(), "|");

    EXPECT_EQ(list.Sort(), 4);
    EXPECT_EQ(both(), "*|");
    EXPECT_TRUE(list.SortById());
    EXPECT_EQ(both(), "*|");
    other.Add(Record(9));
    list.Swap(&other);
    EXPECT_EQ(both(), "**|+9**");
    EXPECT_EQ(Ids(list), (IdList{9}));
    EXPECT_EQ(Ids(other), (IdList{3, 5}));
    list.Destroy();
    EXPECT_EQ(both(), "*|");
}

TEST(List, ReplacingKeepsThePlace) {
    TZoListHeader<Record> list;
    Append(list, {7, 5, 3});
    Listener heard(list);
    Record* replaced = list.Replace(Record(5, L"new"));
    EXPECT_EQ(list.Get(1), replaced);
    list.SortedReplace(Record(3, L"new"));
    list.SortedReplace(Record(6));
    list.Replace(Record(8));
    EXPECT_EQ(heard.Take(), "-0+5+3-3+6+8");

    // A node by itself, and by a copy of itself.
    EXPECT_EQ(list.Replace(replaced), replaced);
    EXPECT_EQ(list.SortedReplace(replaced), replaced);
    list.Replace(*list.First());
    EXPECT_EQ(Ids(list), (IdList{7, 6, 5, 3, 8}));
}

TEST(List, HeldBackNotificationsNest) {
    TZoListHeader<Record> list;
    Listener heard(list);
    list.SetNotify(true);
    list.SetNotify(false);
    list.SetNotify(false);
    list.SetNotify(true);
    Record* node = list.Add(Record(1));
    list.ForceNotify();
    list.NotifyChanged(node, nullptr);
    list.NotifyChanged(node, &heard.observer);
    EXPECT_EQ(heard.Take(), "*1");
}

TEST(List, CopiesOntoItselfTakeTheNodesOfTheStart) {
    TZoListHeader<Record> list;
    Append(list, {1, 2});
    list += list;
    EXPECT_EQ(list.CopyTo(&list), 4);
    list = *&list;
    list.MoveTo(&list);
    list.Swap(&list);
    EXPECT_EQ(Ids(list), (IdList{1, 2, 1, 2, 1, 2, 1, 2}));
    *list.Get(1) = *list.Get(2);  // a record's assignment leaves its links alone
    EXPECT_EQ(Ids(list), (IdList{1, 1, 1, 2, 1, 2, 1, 2}));
}

TEST(List, AssignmentTakesNodesAndObservers) {
    TZoListHeader<Record> list;
    Append(list, {1, 2});
    Listener heard(list);
    auto assigned = std::make_unique<TZoListHeader<Record>>();
    assigned->Add(Record(9));
    Listener own(*assigned);
    *assigned = list;
    EXPECT_EQ(Ids(*assigned), (IdList{1, 2}));
    EXPECT_EQ(own.Take(), "*");
    EXPECT_EQ(own.observer.parent, nullptr);
    ASSERT_EQ(assigned->Size(), 1);
    EXPECT_EQ((*assigned)[0], &heard.observer);

    // The observer stays with the list that it was made for.
    heard.observer.SetLink(Link());
    assigned.reset();
    EXPECT_EQ(heard.observer.parent, &list);
    EXPECT_EQ(TZoListHeader<Record>(list).Size(), 0);
}

TEST(List, ADyingListSaysSoAndLetsItsObserversGo) {
    for (const bool heldBack : {false, true}) {
        auto list = std::make_unique<TZoListHeader<Record>>();
        Append(*list, {1, 2});
        Listener heard(*list);
        list->SetNotify(!heldBack);
        list.reset();
        EXPECT_EQ(heard.Take(), heldBack ? "!" : "*!");
        EXPECT_EQ(heard.observer.parent, nullptr);
    }
}

TEST(List, SortsAndInsertsBehindItsEquals) {
    TZoListHeader<Record> descending;
    Append(descending, {2, 5, 2, 9, 5}, L"abcde");
    descending.Sort();
    EXPECT_EQ(Names(descending), L"dbeac");

    TZoListHeader<Keyed> ascending;
    Append(ascending, {1, 2, 2, 5}, L"abcd");
    ascending.SortedInsert(new Keyed(2, L"e"));
    EXPECT_EQ(Names(ascending), L"abced");
}

TEST(List, SortsManyKeysStablyAcrossTheSeam) {
    for (const std::uint32_t range : {0x10u, 0x300u, 0x7fffffffu}) {
        std::vector<std::pair<std::uint32_t, std::uint32_t>> expected;  // steps from the least key, number in the list
        TZoListHeader<Keyed> list;
        std::uint32_t state = range;
        for (std::uint32_t number = 0; number < 2000; ++number) {
            state = state * 1664525u + 1013904223u;
            expected.emplace_back((state >> 1) % range, number);
            list.Add(Keyed(0xffffff00u + expected.back().first, std::to_wstring(number)));
        }
        std::sort(expected.begin(), expected.end());
        std::wstring names;
        for (const auto& [steps, number] : expected)
            names += std::to_wstring(number);
        EXPECT_EQ(list.Sort(), 2000);
        EXPECT_EQ(Names(list), names);
    }
}

TEST(List, KeysAllAroundSortAsOneInsertionAfterTheOther) {
    // Half a turn and more makes the order a circle, where only the procedure itself says what comes out.
    const IdList sets[] = {
        {0, 0x80000000, 1, 0x80000001, 0x7fffffff},
        {0, 0x60000000, 0xc0000000, 0x30000000, 0x90000000, 0xf0000000, 1, 0},
    };
    for (const IdList& keys : sets) {
        IdList expected;
        for (const std::uint32_t key : keys) {
            auto place = expected.begin();
            while (place != expected.end() && static_cast<std::int32_t>(*place - key) < 1)
                ++place;
            expected.insert(place, key);
        }
        TZoListHeader<Keyed> list;
        Append(list, keys);
        list.Sort();
        EXPECT_EQ(Ids(list), expected);
    }
}

TEST(List, SortByIdFreesTheNodesOfTakenIds) {
    TZoListHeader<Record> list;
    Append(list, {4, 2, 4, 1}, L"abcd");
    const int before = living;
    const ZoSortHelper<Record> helper(&list);
    EXPECT_EQ(std::tuple(helper.count, helper.index.size(), helper.Find(4), helper.Find(3)),
              std::tuple(4, 3u, list.First(), nullptr));
    list.SortById();
    EXPECT_EQ(Names(list), L"dba");
    EXPECT_EQ(living, before - 1);
    EXPECT_TRUE(ZoSortHelper<Record>(nullptr).index.empty());
}

TEST(Record, ComparesAgainstTheUsualSign) {
    const Record five(5);
    EXPECT_EQ(five.Compare(4u), -1);
    EXPECT_EQ(five.Compare(0xffffffffu), 1);
    const Record same(5);
    const ZoListnode& node = five;
    EXPECT_EQ(node.Compare(&same), 0);
    EXPECT_EQ(node.ZoBaseListnode::Compare(&same), 1);
}

struct Flagged : TZoFlagNode<Flagged> {
    explicit Flagged(int bits) { SetFlag(bits); }
};

TEST(Flag, WalksStopAtAnyFlagOfTheMask) {
    TZoListHeader<Flagged> list;
    for (int bits : {1, 2, 0, 6, 1})
        list.Add(new Flagged(bits));
    EXPECT_EQ(std::tuple(list.First()->First(1), list.First()->First(4), list.First()->Next(1)),
              std::tuple(list.Get(0), list.Get(3), list.Get(4)));
    EXPECT_EQ(list.Last()->Previous(2), list.Get(3));
    EXPECT_TRUE(!list.Last()->Previous(8) && !list.First()->First(0));
    EXPECT_EQ(list.Last()->ToggleFlag(6), 7);
    EXPECT_EQ(list.Last()->ClearFlag(3), 4);
    EXPECT_EQ(list.Last()->IsFlagSet(12), 4);
}

struct Counter : LinkHdl {
    long Count(int* step) { return calls += *step; }
    int calls = 0;
};

TEST(Link, CallsWhatIsBound) {
    Counter counter;
    int step = 3;
    EXPECT_EQ(Link().Call(&step), 0);
    EXPECT_EQ(Link(static_cast<Counter*>(nullptr), &Counter::Count).Call(&step), 0);
    Link link;
    EXPECT_TRUE(!link);
    link = Link(&counter, &Counter::Count);
    EXPECT_EQ(link.Call(&step) + Link(link).Call(&step), 9);
}

}  // namespace
