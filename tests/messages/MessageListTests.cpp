#include "messages/MessageList.h"

#include <gmock/gmock.h>

#include <random>

namespace korvane::test
{

namespace
{

MessageList listOf(std::initializer_list<std::pair<long, bool>> messages)
{
    MessageList list;
    for (const auto& [id, read] : messages)
        list.add(id, read);
    return list;
}

} // namespace

TEST(MessageListTests, BeginsWithTheFirstUnreadMessageOrElseTheFirst)
{
    EXPECT_EQ(listOf({{5, true}, {6, false}, {7, false}}).first(), 6);
    EXPECT_EQ(listOf({{5, true}, {6, true}}).first(), 5);
    EXPECT_EQ(listOf({{5, true}, {6, true}, {7, false}}).first(), 7);
    EXPECT_EQ(listOf({{5, false}, {6, false}}).first(), 5);
}

TEST(MessageListTests, CountsAllReadAndUnread)
{
    const auto list = listOf({{5, true}, {6, false}, {7, false}});
    EXPECT_EQ(list.all(), 3U);
    EXPECT_EQ(list.read(), 1U);
    EXPECT_EQ(list.unread(), 2U);
}

TEST(MessageListTests, AMessageThatIsShownForTheFirstTimeBecomesRead)
{
    auto list = listOf({{5, true}, {6, false}});
    EXPECT_TRUE(list.show(6, false));
    EXPECT_EQ(list.read(), 2U);
    EXPECT_TRUE(list.show(6, true));
    EXPECT_TRUE(list.show(5, true));
    EXPECT_EQ(list.unread(), 0U);
    EXPECT_TRUE(list.show(5, false)); // whatever the data layer says
    EXPECT_EQ(list.unread(), 0U);
}

TEST(MessageListTests, OneThatIsInItIsNotNew)
{
    auto list = listOf({{5, true}, {6, true}});
    list.addIfNew(5, false);
    list.addIfNew(7, false);
    list.addIfNew(7, false);
    list.add(8, true);
    list.addIfNew(8, false);
    EXPECT_EQ(list.all(), 4U);
    EXPECT_EQ(list.unread(), 1U);
    list.remove(5);
    list.addIfNew(5, true); // a data layer may give an id once more
    EXPECT_EQ(list.all(), 4U);
}

TEST(MessageListTests, ARemovedMessageIsFollowedByTheNextOrElseThePreviousOne)
{
    auto list = listOf({{5, true}, {6, true}, {7, true}});
    list.show(6, true);
    list.remove(6);
    EXPECT_FALSE(list.isShown());
    EXPECT_EQ(list.current(), 7);
    EXPECT_EQ(list.place(), 2U);
    list.remove(7);
    EXPECT_EQ(list.current(), 5);
    list.remove(5);
    EXPECT_TRUE(list.empty());
    EXPECT_FALSE(list.hasNext());
    EXPECT_FALSE(list.hasPrevious());
}

TEST(MessageListTests, AMessageThatCannotBeShownIsPassedOrTriedAgain)
{
    auto list = listOf({{5, true}, {6, false}, {7, true}});
    list.show(5, true);
    list.pass(6);
    EXPECT_FALSE(list.isShown());
    EXPECT_EQ(list.unread(), 1U);
    EXPECT_EQ(list.next(), 7);
    EXPECT_EQ(list.previous(), 5);
    list.pass(7);
    EXPECT_TRUE(list.hasNext());
    EXPECT_EQ(list.next(), 7);
    list.pass(9); // it is not there
    EXPECT_EQ(list.current(), 7);
}

TEST(MessageListTests, WhatIsNotInItIsNeitherShownNorRemoved)
{
    auto list = listOf({{5, true}, {6, false}});
    list.show(5, true);
    EXPECT_FALSE(list.show(9, false));
    list.remove(9);
    EXPECT_EQ(list.current(), 5);
    EXPECT_EQ(list.all(), 2U);
    EXPECT_EQ(list.unread(), 1U);
}

TEST(MessageListTests, RemovingAnotherMessageLeavesTheOneThatIsShown)
{
    auto list = listOf({{5, true}, {6, true}, {7, true}});
    list.show(6, true);
    list.remove(5);
    EXPECT_EQ(list.current(), 6);
    EXPECT_EQ(list.place(), 1U);
    list.remove(7);
    EXPECT_EQ(list.current(), 6);
    EXPECT_TRUE(list.isShown());
}

TEST(MessageListTests, ClearedItIsAsNew)
{
    auto list = listOf({{5, false}, {6, false}});
    list.show(6, false);
    list.clear();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.unread(), 0U);
    EXPECT_FALSE(list.isShown());
    list.add(6, true);
    list.add(8, false);
    EXPECT_EQ(list.first(), 8);
}

TEST(MessageListTests, RandomSequencesGoAsInAPlainList)
{
    struct Plain
    {
        long id;
        bool read;
    };
    std::mt19937 random(20261122);
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    for (int sequence = 0; sequence < 10'000; ++sequence)
    {
        MessageList list;
        std::vector<Plain> plain;
        long nextId = 1;
        const auto add = [&] {
            plain.push_back({nextId, below(2) == 0});
            list.add(nextId++, plain.back().read);
        };
        for (std::size_t count = below(6) + 1; count > 0; --count)
            add();
        std::size_t at = 0;
        while (at < plain.size() && plain[at].read)
            ++at;
        at = at == plain.size() ? 0 : at;
        ASSERT_EQ(list.first(), plain[at].id);
        const auto show = [&] {
            list.show(plain[at].id, plain[at].read);
            plain[at].read = true;
        };
        show();
        for (int step = 0; step < 20 && !plain.empty(); ++step)
        {
            switch (below(4))
            {
            case 0:
                if (list.hasNext())
                {
                    ASSERT_EQ(list.next(), plain.at(++at).id);
                    show();
                }
                break;
            case 1:
                if (list.hasPrevious())
                {
                    ASSERT_EQ(list.previous(), plain.at(--at).id);
                    show();
                }
                break;
            case 2:
                list.remove(plain[at].id);
                plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(at));
                if (plain.empty())
                    break;
                at = std::min(at, plain.size() - 1);
                ASSERT_EQ(list.current(), plain[at].id);
                show();
                break;
            default:
                add();
            }
            ASSERT_EQ(list.all(), plain.size());
            if (plain.empty())
                break;
            ASSERT_EQ(list.current(), plain[at].id);
            ASSERT_EQ(list.place(), at + 1);
            ASSERT_EQ(list.hasNext(), at + 1 < plain.size());
            ASSERT_EQ(list.hasPrevious(), at > 0);
            ASSERT_EQ(list.unread(), static_cast<std::size_t>(std::count_if(
                                         plain.begin(), plain.end(), [](auto& each) { return !each.read; })));
        }
    }
}

} // namespace korvane::test
