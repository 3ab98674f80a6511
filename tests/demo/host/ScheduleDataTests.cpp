#include "demo/host/schedule/ScheduleData.h"

#include "framework/com/Boundary.h"
#include "tests/demo/host/TestSchedule.h"
#include "tests/support/EmptyData.h"
#include "tests/support/RecordedEvents.h"

#include <gtest/gtest.h>

namespace korvane::host
{

namespace
{

using test::at;

/// What is announced for one occurrence.
using Values = std::vector<Variant>;

/// The activities of a data layer, which announce what a test wants.
class Activities final
    : public Object<Activities, Inherits<korvane::test::EmptyEvents, ISchedule, EventSource<IEventsEvents>>,
                    IEvents, ISchedule, IConnectionPointContainer>
{
public:
    std::vector<Values> announced;
    HRESULT outcome = S_OK; ///< of the load, after everything is announced

    using EventSource<IEventsEvents>::raise;

    STDMETHODIMP Load(DATE, DATE) override
    {
        raise(eventClear);
        for (const Values& each : announced)
        {
            if (each.size() == 7)
                raise(eventAdd, {each[0], each[1], each[2], each[3], each[4], each[5], each[6]});
            else
                raise(eventAdd, {each.front()});
        }
        return outcome;
    }
};

/// A data layer with these activities, and the resources and types of another one.
class Root final : public Object<Root, Inherits<korvane::test::EmptyRoot>, IRoot>
{
public:
    explicit Root(ComPtr<IRoot> other) : other_(std::move(other)) {}

    ComPtr<Activities> activities = make<Activities>();

    STDMETHODIMP get_Names(INames** collection) override { return other_->get_Names(collection); }
    STDMETHODIMP get_Types(ITypes** collection) override { return other_->get_Types(collection); }
    STDMETHODIMP get_Events(IEvents** collection) override
    {
        return returns(collection, [&] { return ComPtr<IEvents>(activities.get()); });
    }

private:
    ComPtr<IRoot> other_;
};

class ScheduleDataTest : public testing::Test
{
protected:
    ScheduleDataTest()
    {
        data.names = {{10, L"Ann", 1, 0x123456}, {20, L"Bob", 1}, {30, L"Cid", 2}};
        root->activities->announced = {occurrence(1, 10)};
    }

    static Values occurrence(long event, long resource)
    {
        return {Variant(event), Variant(0L),     Variant(resource),     Variant(1L),
                Variant(at(9)), Variant(at(10)), Variant(Bstr(L"Work"))};
    }

    void load(long group) { reader.load(schedule, group, at(0), at(24)); }

    korvane::test::RecordingData data;
    ComPtr<Root> root = make<Root>(data.root);
    Schedule schedule;
    ScheduleData reader{ComPtr<IRoot>(root.get())};
};

TEST_F(ScheduleDataTest, ReadsResourcesAndWhatIsBookedForThem)
{
    load(1);
    ASSERT_EQ(schedule.rows().size(), 2U);
    ASSERT_EQ(schedule.bars().size(), 1U);
    const Bar& bar = schedule.bars().front();
    EXPECT_EQ(bar.id, (BarId{1, 0}));
    EXPECT_EQ(bar.resource, 10);
    EXPECT_EQ(bar.start, at(9));
    EXPECT_EQ(bar.end, at(10));
    EXPECT_EQ(bar.text, L"Work");
    EXPECT_EQ(schedule.rows().front().resource.color, 0x123456);
}

TEST_F(ScheduleDataTest, ReadsResourcesAndTypesAgainOnlyWhenTheyAreOutOfDate)
{
    load(1);
    data.takeCalls();
    data.names.front().text = L"Zoe";
    load(1);
    EXPECT_TRUE(data.takeCalls().empty()) << "another time, and nothing else";
    reader.outdate();
    load(1);
    EXPECT_EQ(data.takeCalls(), (std::vector<std::string>{"Names.Load(1)", "Types.Load(0)"}));
    EXPECT_EQ(schedule.rows().front().resource.name, L"Zoe");
}

TEST_F(ScheduleDataTest, ReadsFromAnotherRoot)
{
    load(1);
    korvane::test::RecordingData other;
    other.names = {{40, L"Dan", 1}};
    const auto otherRoot = make<Root>(other.root);
    reader.follow(ComPtr<IRoot>(otherRoot.get()));
    load(1);
    ASSERT_EQ(schedule.rows().size(), 1U);
    EXPECT_EQ(schedule.rows().front().resource.name, L"Dan");
    EXPECT_FALSE(data.hasSubscribers());
    reader.follow(ComPtr<IRoot>(root.get()));
}

TEST_F(ScheduleDataTest, TellsAnAnnouncementThatItCannotRead)
{
    load(1);
    root->activities->announced = {occurrence(2, 20), {Variant(3L)}, occurrence(4, 20)};
    const auto failure = attempt([&] { load(1); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number(), DISP_E_BADPARAMCOUNT);
    ASSERT_EQ(schedule.bars().size(), 1U) << "a part is not shown as if it were everything";
    EXPECT_EQ(schedule.bars().front().id.event, 1);
}

TEST_F(ScheduleDataTest, LeavesTheScheduleAsItIsWhenSomethingIsRefused)
{
    load(1);
    root->activities->announced = {occurrence(2, 30)};
    root->activities->outcome = E_ABORT;
    EXPECT_TRUE(attempt([&] { load(2); }));
    EXPECT_EQ(schedule.rows().size(), 2U);
    ASSERT_EQ(schedule.bars().size(), 1U);
    EXPECT_EQ(schedule.bars().front().id.event, 1);

    root->activities->outcome = S_OK;
    load(2);
    ASSERT_EQ(schedule.rows().size(), 1U);
    EXPECT_EQ(schedule.rows().front().resource.name, L"Cid");
    ASSERT_EQ(schedule.bars().size(), 1U);
    EXPECT_EQ(schedule.bars().front().id.event, 2);
}

TEST_F(ScheduleDataTest, DoesNotTakeAPartOfTheResourcesForAllOfThem)
{
    load(1);
    data.fail("Names.Load", {E_ABORT, L"", L""});
    EXPECT_TRUE(attempt([&] { load(2); }));
    data.takeCalls();
    load(1);
    EXPECT_EQ(data.takeCalls(), std::vector<std::string>{"Names.Load(1)"})
        << "whatever came of the refused one";
    EXPECT_EQ(schedule.rows().size(), 2U);
}

} // namespace

} // namespace korvane::host
