#include "activities/NameSet.h"

#include <gmock/gmock.h>

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

std::vector<long> contents(const NameSet& names)
{
    return {names.begin(), names.end()};
}

NameSet setOf(std::initializer_list<long> ids)
{
    NameSet result;
    for (const long id : ids)
        result.add(id);
    return result;
}

} // namespace

TEST(NameSetTests, ANewSetIsEmpty)
{
    const NameSet names;
    EXPECT_TRUE(names.empty());
    EXPECT_EQ(names.size(), 0U);
    EXPECT_FALSE(names.contains(0));
    EXPECT_THAT(contents(names), IsEmpty());
}

TEST(NameSetTests, KeepsTheOrderOfAddition)
{
    const auto names = setOf({7, 5, 9, -1, 0});
    EXPECT_THAT(contents(names), ElementsAre(7, 5, 9, -1, 0));
    EXPECT_EQ(names.first(), 7);
    EXPECT_EQ(names.size(), 5U);
    for (const long id : {7L, 5L, 9L, -1L, 0L})
        EXPECT_TRUE(names.contains(id)) << id;
    EXPECT_FALSE(names.contains(1));
}

TEST(NameSetTests, TakesEachResourceOnce)
{
    auto names = setOf({7, 5});
    EXPECT_FALSE(names.add(7));
    EXPECT_TRUE(names.add(6));
    EXPECT_THAT(contents(names), ElementsAre(7, 5, 6));
}

TEST(NameSetTests, RemovesFromAnyPlace)
{
    auto names = setOf({7, 5, 9, 6});
    EXPECT_TRUE(names.remove(5));
    EXPECT_FALSE(names.remove(5));
    EXPECT_FALSE(names.contains(5));
    EXPECT_TRUE(names.remove(6));
    EXPECT_TRUE(names.remove(7));
    EXPECT_THAT(contents(names), ElementsAre(9));
    EXPECT_EQ(names.first(), 9);
    EXPECT_TRUE(names.remove(9));
    EXPECT_TRUE(names.empty());
}

TEST(NameSetTests, ARemovedResourceComesBackLast)
{
    auto names = setOf({7, 5});
    names.remove(7);
    names.add(7);
    EXPECT_THAT(contents(names), ElementsAre(5, 7));
}

TEST(NameSetTests, RemovesTheFirst)
{
    auto names = setOf({7, 5});
    names.removeFirst();
    EXPECT_THAT(contents(names), ElementsAre(5));
    EXPECT_FALSE(names.contains(7));
    names.removeFirst();
    names.removeFirst(); // nothing is left
    EXPECT_TRUE(names.empty());
}

TEST(NameSetTests, TellsWhatAnotherSetLacks)
{
    const auto names = setOf({7, 5, 9, 6});
    EXPECT_THAT(names.without(setOf({9, 7, 1})), ElementsAre(5, 6));
    EXPECT_THAT(names.without({}), ElementsAre(7, 5, 9, 6));
    EXPECT_THAT(names.without(names), IsEmpty());
    EXPECT_THAT(NameSet().without(names), IsEmpty());
}

TEST(NameSetTests, IsWholeAfterAMove)
{
    auto names = setOf({7, 5, 9});
    NameSet moved = std::move(names);
    EXPECT_TRUE(moved.remove(5));
    EXPECT_THAT(contents(moved), ElementsAre(7, 9));
    names = setOf({1});
    EXPECT_THAT(contents(names), ElementsAre(1));
    moved = setOf({3, 2});
    moved.remove(3);
    EXPECT_THAT(contents(moved), ElementsAre(2));
}

TEST(NameSetTests, HoldsManyResources)
{
    NameSet names;
    for (long id = 0; id < 100000; ++id)
        names.add(id * 7);
    for (long id = 0; id < 100000; id += 2)
        EXPECT_TRUE(names.remove(id * 7));
    EXPECT_EQ(names.size(), 50000U);
    long expected = 7;
    for (const long id : names)
    {
        ASSERT_EQ(id, expected);
        expected += 14;
    }
}

} // namespace korvane::test
