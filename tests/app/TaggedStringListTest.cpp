#include "app/TaggedStringList.h"

#include <QStringList>
#include <gtest/gtest.h>
#include <limits>

namespace {

// Each item as "text:tag", so that one comparison checks both and that they stay paired.
QStringList Items(const TaggedStringList& list) {
    QStringList out;
    for (const TaggedStringList::Item& item : list.items())
        out << item.text + ':' + QString::number(item.tag);
    return out;
}

TEST(TaggedStringListOps, TagsFollowTheirItemsThroughInsertsRemovesAndSetters) {
    TaggedStringList list;
    list.add(QStringLiteral("a"), 10);
    list.add(QStringLiteral("c"), 30);
    list.insert(1, QStringLiteral("b"), 20);
    list.insert(0, QStringLiteral("start"), 5);
    // Positions past the end append, as the list boxes did.
    list.insert(4, QStringLiteral("end"), 40);
    list.insert(500, QStringLiteral("far"), 50);
    list.add(QStringLiteral("untagged"));
    EXPECT_EQ(Items(list),
              QStringList({"start:5", "a:10", "b:20", "c:30", "end:40", "far:50", "untagged:0"}));

    list.remove(2);
    list.remove(0);
    list.remove(list.count() - 1);
    list.setTag(1, -7);
    list.setText(2, QStringLiteral("E"));
    EXPECT_EQ(Items(list), QStringList({"a:10", "c:-7", "E:40", "far:50"}));
    list.clear();
    EXPECT_TRUE(list.isEmpty());
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
    EXPECT_EQ(Items(list), QStringList({"a:1", "b:2"}));
}

TEST(TaggedStringListOps, TakingOutByATestKeepsBothSidesInOrder) {
    TaggedStringList list;
    for (int i = 0; i < 9; ++i)
        list.add(QStringLiteral("%1%2").arg(i % 3 == 0 ? 'x' : 'k').arg(i), i);
    const auto taken =
        list.takeIf([](const TaggedStringList::Item& item) { return item.text[0] == 'x'; });
    TaggedStringList takenList;
    for (const TaggedStringList::Item& item : taken)
        takenList.add(item.text, item.tag);
    EXPECT_EQ(Items(takenList), QStringList({"x0:0", "x3:3", "x6:6"}));
    EXPECT_EQ(Items(list), QStringList({"k1:1", "k2:2", "k4:4", "k5:5", "k7:7", "k8:8"}));

    EXPECT_TRUE(list.takeIf([](const TaggedStringList::Item&) { return false; }).empty());
    EXPECT_EQ(list.count(), 6);
    EXPECT_EQ(list.takeIf([](const TaggedStringList::Item&) { return true; }).size(), 6u);
    EXPECT_TRUE(list.isEmpty());
}

} // namespace
