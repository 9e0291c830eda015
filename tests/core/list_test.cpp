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
    explicit Record(unsigned int objectId, const std::wstring& objectName = {})
        : TZoListnode<Record>(objectId, objectName) {
        ++living;
    }
    Record(const Record& other) : TZoListnode<Record>(other) { ++living; }
    Record& operator=(const Record&) = default;
    ~Record() override { --living; }
};

/// Sorts by the wrapped difference of its key, as points and photos do.
struct Keyed : TZoListnode<Keyed> {
    explicit Keyed(unsigned int key, const std::wstring& objectName = {}) : TZoListnode<Keyed>(key, objectName) {}
    using TZoListnode<Keyed>::Compare;
    virtual int Compare(ZoListnode* other) const { return static_cast<int>(id - other->id); }
    std::uint32_t OrderingKey() const { return id; }
};

template <class T>
std::vector<unsigned int> Ids(const TZoBaseListHeader<T>& list) {
    std::vector<unsigned int> ids;
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

using IdList = std::vector<unsigned int>;

template <class T>
void Append(TZoListHeader<T>& list, const IdList& ids) {
    for (unsigned int id : ids)
        list.Add(T(id));
}

/// Writes down what a list tells: "+3" a node came, "-3" it left, "*" changed, "!" destroyed, "0" for no node.
class Listener : public LinkHdl {
  public:
    explicit Listener(ZoStandardNotifier& notifier) : observer(&notifier, Link(this, &Listener::Hear)) {}

    std::string Take() { return std::exchange(heard, {}); }
    ZoObserver& Observer() { return observer; }

  private:
    long Hear(ZoNotifyEvent* event) {
        EXPECT_EQ(event->sender, observer.parent);
        const auto* node = static_cast<const Record*>(event->object);
        const std::string id = node ? std::to_string(node->GetId()) : "0";
        if (event->kind == eZoNotifyAdd) heard += "+" + id;
        if (event->kind == eZoNotifySubtract) heard += "-" + id;
        if (event->kind == eZoNotifyChanged) heard += node ? "*" + id : "*";
        if (event->kind == eZoNotifyDestroyed) heard += "!";
        return 1;
    }

    std::string heard;
    ZoObserver observer;
};

TEST(List, LinksNodesAndHandsThemBack) {
    {
        TZoListHeader<Record> list;
        EXPECT_EQ(list.Get(0), nullptr);
        EXPECT_EQ(list.Pop(), nullptr);
        list.Insert(nullptr, new Record(2));
        list.InsertFirst(new Record(1));
        list.Push(new Record(4));
        list.Insert(list.Last(), new Record(3));
        EXPECT_EQ(Ids(list), (IdList{1, 2, 3, 4}));
        EXPECT_EQ(list.Get(list.Count()), nullptr);
        EXPECT_EQ(list.Get(2)->GetId(), 3u);
        EXPECT_TRUE(list.CountMoreThan(3));
        EXPECT_FALSE(list.CountMoreThan(4));
        EXPECT_EQ(list.Index(list.Get(2)), 2);

        const std::unique_ptr<Record> second(list.Subtract(1));
        EXPECT_EQ(second->GetId(), 2u);
        EXPECT_EQ(second->Next(), nullptr);
        EXPECT_EQ(second->Previous(), nullptr);
        EXPECT_FALSE(list.Exist(second.get()));
        EXPECT_FALSE(list.IsPtrInList(second.get()));
        const std::unique_ptr<Record> last(list.Pop());
        const std::unique_ptr<Record> byId(list.Subtract(1u));
        EXPECT_EQ(Ids(list), (IdList{3}));
        EXPECT_EQ(living, 4);
    }
    EXPECT_EQ(living, 0);
}

TEST(List, FindsTheFirstNodeByIdAndName) {
    TZoListHeader<Record> list;
    list.Add(Record(3, L"point 1"));
    list.Add(Record(3, L"POINT 1"));
    list.Add(Record(4, L"Höhe"));
    EXPECT_EQ(list.Find(3u), list.Get(0));
    EXPECT_EQ(list.Find(9u), nullptr);
    EXPECT_EQ(list.Find(L"POINT 1", false), list.Get(0));
    EXPECT_EQ(list.Find(L"POINT 1", true), list.Get(1));
    EXPECT_EQ(list.Find(L"HÖHE", false), list.Get(2));
    const std::unique_ptr<Record> taken(list.Subtract(std::wstring(L"höhe")));
    EXPECT_EQ(taken->GetId(), 4u);
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
    TZoListHeader<Record> list;
    TZoListHeader<Record> other;
    Listener heard(list);
    Listener there(other);

    Record* three = list.Add(Record(3));
    list.Insert(three, new Record(5));
    list.SortedInsert(new Record(4));
    EXPECT_EQ(heard.Take(), "+3+5+4");
    EXPECT_EQ(Ids(list), (IdList{5, 4, 3}));

    delete list.Subtract(1);
    list.Subtract(static_cast<Record*>(nullptr));
    list.Add(static_cast<Record*>(nullptr));
    EXPECT_EQ(heard.Take(), "-4-0");

    EXPECT_EQ(list.CopyTo(&other), 2);
    EXPECT_EQ(there.Take(), "*");
    EXPECT_EQ(Ids(other), (IdList{5, 3}));
    EXPECT_EQ(list.Move(list.First(), other), three);
    EXPECT_EQ(heard.Take() + "|" + there.Take(), "-5|+5");
    other.MoveTo(&list);
    EXPECT_EQ(heard.Take() + "|" + there.Take(), "*|*");
    EXPECT_EQ(Ids(list), (IdList{3, 5, 3, 5}));
    EXPECT_EQ(other.CopyTo(&list), 0);
    other.MoveTo(&list);
    EXPECT_EQ(heard.Take() + there.Take(), "");

    list.Sort();
    EXPECT_EQ(heard.Take(), "*");
    list.SortById();
    EXPECT_EQ(heard.Take(), "*");
    EXPECT_EQ(Ids(list), (IdList{3, 5}));
    other.Add(Record(9));
    there.Take();
    list.Swap(&other);
    EXPECT_EQ(heard.Take() + "|" + there.Take(), "**|**");
    EXPECT_EQ(Ids(list), (IdList{9}));
    EXPECT_EQ(Ids(other), (IdList{3, 5}));

    list.Destroy();
    const std::unique_ptr<Record> taken(other.SubtractFirst());
    EXPECT_EQ(heard.Take() + "|" + there.Take(), "*|-3");
}

TEST(List, ReplacingKeepsThePlace) {
    TZoListHeader<Record> list;
    Append(list, {7, 5, 3});
    Listener heard(list);
    Record* replaced = list.Replace(Record(5, L"new"));
    EXPECT_EQ(list.Get(1), replaced);
    EXPECT_EQ(heard.Take(), "-0+5");
    list.SortedReplace(Record(3, L"new"));
    EXPECT_EQ(heard.Take(), "+3-3");
    list.SortedReplace(Record(6));
    list.Replace(Record(8));
    EXPECT_EQ(heard.Take(), "+6+8");
    EXPECT_EQ(Ids(list), (IdList{7, 6, 5, 3, 8}));

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
    Append(list, {1, 2});
    list.Sort();
    list.Destroy();
    EXPECT_EQ(heard.Take(), "");
    list.SetNotify(true);
    EXPECT_TRUE(list.IsNotifyEnabled());
    list.SetNotify(false);
    list.SetNotify(false);
    list.ForceNotify();
    Record* node = list.Add(Record(1));
    list.NotifyChanged(node, nullptr);
    list.NotifyChanged(node, &heard.Observer());
    EXPECT_EQ(heard.Take(), "+1*1");
}

TEST(List, CopiesOntoItselfTakeTheNodesOfTheStart) {
    TZoListHeader<Record> list;
    Append(list, {1, 2});
    list += list;
    EXPECT_EQ(list.CopyTo(&list), 4);
    EXPECT_EQ(Ids(list), (IdList{1, 2, 1, 2, 1, 2, 1, 2}));
    const TZoListHeader<Record>& same = list;
    list = same;
    list.MoveTo(&list);
    list.Swap(&list);
    EXPECT_EQ(list.Count(), 8);
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
    EXPECT_EQ(own.Observer().parent, nullptr);
    ASSERT_EQ(assigned->Size(), 1);
    EXPECT_EQ((*assigned)[0], &heard.Observer());

    // The observer stays with the list that it was made for.
    heard.Observer().SetLink(Link());
    assigned.reset();
    EXPECT_EQ(heard.Observer().parent, &list);
    const TZoListHeader<Record> copy(list);
    EXPECT_EQ(Ids(copy), (IdList{1, 2}));
    EXPECT_EQ(copy.Size(), 0);
}

TEST(List, ADyingListSaysSoAndLetsItsObserversGo) {
    auto list = std::make_unique<TZoListHeader<Record>>();
    Append(*list, {1, 2});
    Listener heard(*list);
    list->SetNotify(false);
    list.reset();
    EXPECT_EQ(heard.Take(), "!");
    EXPECT_EQ(heard.Observer().parent, nullptr);

    TZoListHeader<Record> longer;
    { const Listener shorter(longer); }
    longer.Add(Record(1));
    EXPECT_EQ(longer.Size(), 0);
}

TEST(List, SortsStablyByEachOrdering) {
    TZoListHeader<Record> descending;
    for (const auto& [id, name] : {std::pair{2u, L"a"}, {5u, L"b"}, {2u, L"c"}, {9u, L"d"}, {5u, L"e"}})
        descending.Add(Record(id, name));
    EXPECT_EQ(descending.Sort(), 5);
    EXPECT_EQ(Names(descending), L"dbeac");

    TZoListHeader<Keyed> ascending;
    for (const auto& [id, name] : {std::pair{5u, L"a"}, {2u, L"b"}, {5u, L"c"}, {1u, L"d"}, {2u, L"e"}})
        ascending.Add(Keyed(id, name));
    EXPECT_EQ(ascending.Sort(), 5);
    EXPECT_EQ(Names(ascending), L"dbeac");
    ascending.SortedInsert(new Keyed(2, L"f"));
    EXPECT_EQ(Names(ascending), L"dbefac");
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

TEST(List, KeysThatWrapAroundSortAsOneInsertionAfterTheOther) {
    // Half a turn and more makes the order a circle, where only the procedure itself says what comes out.
    const IdList sets[] = {
        {1, 0xfffffff0, 5, 0xffffffff, 0},
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
    TZoListHeader<Keyed> seam;
    Append(seam, sets[0]);
    seam.Sort();
    EXPECT_EQ(Ids(seam), (IdList{0xfffffff0, 0xffffffff, 0, 1, 5}));
}

TEST(List, SortByIdFreesTheNodesOfTakenIds) {
    {
        TZoListHeader<Record> list;
        for (const auto& [id, name] : {std::pair{4u, L"a"}, {2u, L"b"}, {4u, L"c"}, {1u, L"d"}})
            list.Add(Record(id, name));
        const ZoSortHelper<Record> helper(&list);
        EXPECT_EQ(helper.count, 4);
        EXPECT_EQ(helper.index.size(), 3u);
        EXPECT_EQ(helper.Find(4), list.First());
        EXPECT_EQ(helper.Find(3), nullptr);
        EXPECT_TRUE(list.SortById());
        EXPECT_EQ(Names(list), L"dba");
        EXPECT_EQ(living, 3);
    }
    EXPECT_TRUE(ZoSortHelper<Record>(nullptr).index.empty());
}

TEST(Record, ComparesAgainstTheUsualSign) {
    const Record five(5);
    const ZoListnode& node = five;
    EXPECT_EQ(five.Compare(4u), -1);
    EXPECT_EQ(five.Compare(6u), 1);
    EXPECT_EQ(five.Compare(0xffffffffu), 1);
    const Record same(5);
    EXPECT_EQ(node.Compare(&same), 0);
    EXPECT_EQ(node.ZoBaseListnode::Compare(&same), 1);
}

TEST(Record, AssignmentLeavesTheLinksAlone) {
    TZoListHeader<Record> list;
    Append(list, {1, 2, 3});
    Record lone(9, L"name");
    *list.Get(1) = lone;
    lone = *list.First();
    EXPECT_EQ(Ids(list), (IdList{1, 9, 3}));
    EXPECT_EQ(lone.Next(), nullptr);
    lone.SetName(static_cast<const wchar_t*>(nullptr));
    EXPECT_EQ(lone.GetName(), L"");
}

struct Flagged : TZoFlagNode<Flagged> {
    Flagged(unsigned int objectId, int flagBits) : TZoFlagNode<Flagged>(objectId) { SetFlag(flagBits); }
};

TEST(Flag, WalksStopAtAnyFlagOfTheMask) {
    TZoListHeader<Flagged> list;
    for (int bits : {1, 2, 0, 6, 1})
        list.Add(new Flagged(static_cast<unsigned int>(list.Count()), bits));
    EXPECT_EQ(list.First()->First(1), list.Get(0));
    EXPECT_EQ(list.First()->First(4), list.Get(3));
    EXPECT_EQ(list.First()->Next(1), list.Get(4));
    EXPECT_EQ(list.First()->Next(6), list.Get(1));
    EXPECT_EQ(list.Last()->Previous(2), list.Get(3));
    EXPECT_EQ(list.Last()->Previous(8), nullptr);
    EXPECT_EQ(list.First()->First(0), nullptr);

    ZoFlag flag;
    EXPECT_EQ(flag.SetFlag(6), 6);
    EXPECT_EQ(flag.ToggleFlag(3), 5);
    EXPECT_EQ(flag.IsFlagSet(12), 4);
    EXPECT_EQ(flag.ClearFlag(1), 4);
}

struct Counter : LinkHdl {
    long Count(int* step) { return calls += *step; }
    long Long(void*) { return static_cast<long>(0x1'0000'0007LL); }
    int calls = 0;
};

TEST(Link, CallsWhatIsBoundAndCutsTheResult) {
    Counter counter;
    int step = 3;
    EXPECT_EQ(Link().Call(&step), 0);
    EXPECT_TRUE(!Link(static_cast<Counter*>(nullptr), &Counter::Count));
    EXPECT_EQ(Link(static_cast<Counter*>(nullptr), &Counter::Count).Call(&step), 0);
    Link link;
    link = Link(&counter, &Counter::Count);
    EXPECT_TRUE(link.IsSet());
    EXPECT_EQ(link.Call(&step), 3);
    EXPECT_EQ(Link(&counter, &Counter::Long).Call(nullptr), 7);
}

}  // namespace
