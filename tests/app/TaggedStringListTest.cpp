#include "app/TaggedStringList.h"

#include <QStringList>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

QStringList Texts(const TaggedStringList& list) {
    QStringList out;
    for (const TaggedStringList::Item& item : list.items())
        out << item.text;
    return out;
}

std::vector<std::int32_t> Tags(const TaggedStringList& list) {
    std::vector<std::int32_t> out;
    for (const TaggedStringList::Item& item : list.items())
        out.push_back(item.tag);
    return out;
}

TEST(TaggedStringListOps, AnEmptyListReadsAsEmptyTextAndTagZero) {
    TaggedStringList list;
    EXPECT_TRUE(list.isEmpty());
    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(list.text(0), QString());
    EXPECT_EQ(list.tag(0), 0);
    list.remove(0);
    list.setTag(0, 5);
    list.setText(0, QStringLiteral("x"));
    EXPECT_TRUE(list.isEmpty());
}

TEST(TaggedStringListOps, InsertingPastTheEndAppends) {
    TaggedStringList list;
    list.insert(0, QStringLiteral("first"), 1);
    list.insert(1, QStringLiteral("at the end"), 2);
    list.insert(500, QStringLiteral("far past the end"), 3);
    EXPECT_EQ(Texts(list), QStringList({"first", "at the end", "far past the end"}));
    EXPECT_EQ(Tags(list), (std::vector<std::int32_t>{1, 2, 3}));
    list.add(QStringLiteral("added"));
    EXPECT_EQ(list.tag(3), 0);
}

TEST(TaggedStringListOps, TagsFollowTheirItemsThroughInsertsAndRemoves) {
    TaggedStringList list;
    list.add(QStringLiteral("a"), 10);
    list.add(QStringLiteral("c"), 30);
    list.insert(1, QStringLiteral("b"), 20);
    list.insert(0, QStringLiteral("start"), 5);
    EXPECT_EQ(Texts(list), QStringList({"start", "a", "b", "c"}));
    EXPECT_EQ(Tags(list), (std::vector<std::int32_t>{5, 10, 20, 30}));

    list.remove(2);
    EXPECT_EQ(Texts(list), QStringList({"start", "a", "c"}));
    EXPECT_EQ(Tags(list), (std::vector<std::int32_t>{5, 10, 30}));
    list.remove(0);
    EXPECT_EQ(list.text(0), QStringLiteral("a"));
    EXPECT_EQ(list.tag(0), 10);
    list.remove(list.count() - 1);
    EXPECT_EQ(Texts(list), QStringList({"a"}));
    EXPECT_EQ(Tags(list), (std::vector<std::int32_t>{10}));
}

TEST(TaggedStringListOps, PositionsOutOfRangeChangeNothing) {
    TaggedStringList list;
    list.add(QStringLiteral("a"), 1);
    list.add(QStringLiteral("b"), 2);
    for (int position : {-1, 2, 3, 1000, std::numeric_limits<int>::min()}) {
        SCOPED_TRACE(position);
        list.remove(position);
        list.setTag(position, 99);
        list.setText(position, QStringLiteral("changed"));
        EXPECT_EQ(list.text(position), QString());
        EXPECT_EQ(list.tag(position), 0);
    }
    EXPECT_EQ(Texts(list), QStringList({"a", "b"}));
    EXPECT_EQ(Tags(list), (std::vector<std::int32_t>{1, 2}));
}

TEST(TaggedStringListOps, SettersChangeOnlyTheirOwnItem) {
    TaggedStringList list;
    list.add(QStringLiteral("a"), 1);
    list.add(QStringLiteral("b"), 2);
    list.add(QStringLiteral("c"), 3);
    list.setTag(1, -7);
    list.setText(2, QStringLiteral("C"));
    EXPECT_EQ(Texts(list), QStringList({"a", "b", "C"}));
    EXPECT_EQ(Tags(list), (std::vector<std::int32_t>{1, -7, 3}));
    list.clear();
    EXPECT_TRUE(list.isEmpty());
}

TEST(TaggedStringListOps, TakingOutByATestKeepsBothSidesInOrder) {
    TaggedStringList list;
    for (int i = 0; i < 9; ++i)
        list.add(QStringLiteral("%1%2").arg(i % 3 == 0 ? 'x' : 'k').arg(i), i);
    const auto taken =
        list.takeIf([](const TaggedStringList::Item& item) { return item.text[0] == 'x'; });
    std::vector<std::int32_t> takenTags;
    for (const TaggedStringList::Item& item : taken)
        takenTags.push_back(item.tag);
    EXPECT_EQ(takenTags, (std::vector<std::int32_t>{0, 3, 6}));
    EXPECT_EQ(taken[1].text, QStringLiteral("x3"));
    EXPECT_EQ(Texts(list), QStringList({"k1", "k2", "k4", "k5", "k7", "k8"}));
    EXPECT_EQ(Tags(list), (std::vector<std::int32_t>{1, 2, 4, 5, 7, 8}));

    EXPECT_TRUE(list.takeIf([](const TaggedStringList::Item&) { return false; }).empty());
    EXPECT_EQ(list.count(), 6);
    EXPECT_EQ(list.takeIf([](const TaggedStringList::Item&) { return true; }).size(), 6u);
    EXPECT_TRUE(list.isEmpty());
}

TEST(TaggedStringListOps, TagsKeepTheFullThirtyTwoBits) {
    TaggedStringList list;
    list.add(QStringLiteral("low"), std::numeric_limits<std::int32_t>::min());
    list.add(QStringLiteral("high"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(list.tag(0), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(list.tag(1), std::numeric_limits<std::int32_t>::max());
}

TEST(TaggedStringListOps, HoldsMoreItemsThanSixteenBitIndexesReach) {
    // Picture collections easily pass the 32767 items an old list box could hold.
    TaggedStringList list;
    constexpr int kItems = 40000;
    for (int i = 0; i < kItems; ++i)
        list.add(QString::number(i), i);
    list.insert(35000, QStringLiteral("inserted"), -1);
    ASSERT_EQ(list.count(), kItems + 1);
    EXPECT_EQ(list.text(34999), QStringLiteral("34999"));
    EXPECT_EQ(list.text(35000), QStringLiteral("inserted"));
    EXPECT_EQ(list.tag(35001), 35000);
    EXPECT_EQ(list.tag(kItems), kItems - 1);
}

} // namespace
