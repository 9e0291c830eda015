#include "zorv/core/attribute.h"

#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace {

std::string events;

struct Note : ZoAttribute {
    using ZoAttribute::ZoAttribute;
    int OnAdd() override { return Hook('a'); }
    int OnSubtract() override { return Hook('s'); }
    int OnPreMove() override { return Hook('p'); }
    int OnMove(ZoObject* record) override {
        ZoAttribute::OnMove(record);
        return Hook('m');
    }
    void DbgPrintf() override { Hook('d'); }
    int Hook(char letter) {
        events += letter;
        if (parent) events += static_cast<char>('0' + parent->GetId());
        return 1;
    }
};

struct Listener : LinkHdl {
    explicit Listener(ZoStandardNotifier& list, const char* kindLetters)
        : letters(kindLetters), observer(&list, Link(this, &Listener::Hear)) {}
    long Hear(ZoNotifyEvent* event) {
        events += letters[event->kind - 1];
        if (!event->object) events += '0';
        return 1;
    }
    const char* letters;
    ZoObserver observer;
};

TEST(Attribute, HooksFollowAnAttributeFromRecordToRecord) {
    ZoObject one(1), two(2);
    ZoAttributeList list, dest;
    const Listener here(list, "*+-!"), there(dest, "*ADX");

    ZoAttribute* first = list.Add(new Note(L"first"), &one);
    ZoAttribute* second = list.Add(new Note(L"second"), &one);
    EXPECT_EQ(std::exchange(events, {}), "+a1+a1");
    EXPECT_EQ(list.Add(nullptr, &one), nullptr);
    EXPECT_EQ(list.Add2(nullptr), nullptr);

    list.MoveAttributes(nullptr, &two);
    list.MoveAttributes(&list, &two);
    EXPECT_EQ(std::exchange(events, {}), "");
    list.MoveAttributes(&dest, &two);
    EXPECT_EQ(std::exchange(events, {}), "-p1Am2-p1Am2-0");
    EXPECT_EQ(dest.First(), first);
    EXPECT_EQ(second->GetParent(), &two);

    const std::unique_ptr<ZoAttribute> taken(dest.Subtract(std::wstring(L"SECOND")));
    EXPECT_EQ(taken.get(), second);
    EXPECT_EQ(taken->GetParent(), nullptr);
    EXPECT_EQ(std::exchange(events, {}), "s2D");
    const std::unique_ptr<ZoAttribute> third(dest.Add2(new Note(L"third")));
    dest.DbgPrintfAttributes();
    EXPECT_EQ(std::exchange(events, {}), "Ad2d");

    // In bulk the hooks run too; the list itself tells once.
    dest.SubtractAll();
    EXPECT_EQ(first->GetParent(), nullptr);
    dest.Add(first, &one);
    dest.Destroy();
    EXPECT_EQ(std::exchange(events, {}), "s2s*0Aa1s1*0");
}

TEST(Attribute, CopiesBelongToNoRecord) {
    ZoObject record(1);
    ZoAttribute attribute(L"a");
    attribute.SetParent(&record);
    EXPECT_EQ(ZoAttribute(attribute).GetParent(), nullptr);
    attribute = ZoAttribute(L"b");
    EXPECT_EQ(std::tuple(attribute.GetName(), attribute.GetParent()), std::tuple(L"b", &record));
}

}  // namespace
