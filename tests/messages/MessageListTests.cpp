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

namespace
{

/// A reader who does this and that, with a plain list beside the one under test.
class RandomReader
{
public:
    explicit RandomReader(std::mt19937& random) : random_(random)
    {
        for (std::size_t count = below(6) + 1; count > 0; --count)
            add();
        const auto unread = std::find_if(plain_.begin(), plain_.end(), [](auto& each) { return !each.read; });
        at_ = unread == plain_.end() ? 0 : static_cast<std::size_t>(unread - plain_.begin());
        EXPECT_EQ(list_.first(), plain_[at_].id);
        show();
    }

    /// False when there is nothing left to read.
    bool step()
    {
        switch (below(4))
        {
        case 0:
            goOn();
            break;
        case 1:
            goBack();
            break;
        case 2:
            remove();
            break;
        default:
            add();
        }
        return !plain_.empty();
    }

    void expectEqual() const
    {
        ASSERT_EQ(list_.all(), plain_.size());
        ASSERT_EQ(list_.current(), plain_[at_].id);
        ASSERT_EQ(list_.place(), at_ + 1);
        ASSERT_EQ(list_.hasNext(), at_ + 1 < plain_.size());
        ASSERT_EQ(list_.hasPrevious(), at_ > 0);
        const auto unread =
            std::count_if(plain_.begin(), plain_.end(), [](auto& each) { return !each.read; });
        ASSERT_EQ(list_.unread(), static_cast<std::size_t>(unread));
    }

    void expectEmpty() const { EXPECT_TRUE(list_.empty()); }

private:
    struct Plain
    {
        long id;
        bool read;
    };

    std::size_t below(std::size_t limit)
    {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

    void add()
    {
        plain_.push_back({nextId_, below(2) == 0});
        list_.add(nextId_++, plain_.back().read);
    }

    void show()
    {
        list_.show(plain_[at_].id, plain_[at_].read);
        plain_[at_].read = true;
    }

    void goOn()
    {
        if (!list_.hasNext())
            return;
        EXPECT_EQ(list_.next(), plain_.at(++at_).id);
        show();
    }

    void goBack()
    {
        if (!list_.hasPrevious())
            return;
        EXPECT_EQ(list_.previous(), plain_.at(--at_).id);
        show();
    }

    void remove()
    {
        list_.remove(plain_[at_].id);
        plain_.erase(plain_.begin() + static_cast<std::ptrdiff_t>(at_));
        if (plain_.empty())
            return;
        at_ = std::min(at_, plain_.size() - 1);
        EXPECT_EQ(list_.current(), plain_[at_].id);
        show();
    }

    std::mt19937& random_;
    MessageList list_;
    std::vector<Plain> plain_;
    std::size_t at_ = 0;
    long nextId_ = 1;
};

} // namespace

TEST(MessageListTests, RandomSequencesGoAsInAPlainList)
{
    std::mt19937 random(20261122);
    for (int sequence = 0; sequence < 10'000; ++sequence)
    {
        RandomReader reader(random);
        int steps = 20;
        while (steps > 0 && reader.step())
        {
            ASSERT_NO_FATAL_FAILURE(reader.expectEqual());
            --steps;
        }
        if (steps > 0)
            reader.expectEmpty();
    }
}

} // namespace korvane::test
