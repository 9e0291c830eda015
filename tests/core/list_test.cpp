#include "zorv/core/list.h"

#include <gtest/gtest.h>

namespace {

struct Record : TZoListnode<Record> {
    using TZoListnode<Record>::TZoListnode;
};

TEST(List, GetPastTheEndIsNull) {
    TZoListHeader<Record> list;
    EXPECT_EQ(list.Get(0), nullptr);
    list.Add(Record(3u));
    list.Add(Record(7u));
    EXPECT_EQ(list.Get(2), nullptr);
    EXPECT_EQ(list.GetFreeId(0), 8u);
    TZoListHeader<Record> copy = list;
    copy = list;
    copy.Sort();
    EXPECT_EQ(copy.First()->GetId(), 7u);
    copy.SortById();
    EXPECT_EQ(copy.First()->GetId(), 3u);
    copy.Swap(&list);
    copy.Replace(Record(3u));
    EXPECT_EQ(copy.Find(std::wstring(), true), copy.First());
}

}  // namespace
