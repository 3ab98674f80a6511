#include "demo/host/Orders.h"

#include "demo/host/SharedActivity.h"
#include "framework/com/Boundary.h"
#include "framework/com/Object.h"
#include "tests/demo/host/TestSchedule.h"
#include "tests/support/RecordingData.h"

#include <gtest/gtest.h>

namespace korvane::host
{

namespace
{

using test::at;

/// Writes down what it is told.
class Recorder final : public Object<Recorder, Inherits<IAppCommand>, IAppCommand>
{
public:
    std::vector<std::wstring> calls;
    bool granted = true;

    STDMETHODIMP get_DialogClass(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP get_Granted(VARIANT_BOOL* result) override
    {
        return returns(result, [&] {
            calls.emplace_back(L"Granted");
            return bool(granted);
        });
    }
    STDMETHODIMP get_Operation(long*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Operation(long code) override
    {
        return guard([&] { calls.push_back(L"Operation " + std::to_wstring(code)); });
    }
    STDMETHODIMP get_Operand(BSTR, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Operand(BSTR name, VARIANT value) override
    {
        return guard([&] {
            std::wstring call(view(name));
            if (value.vt == VT_I4)
                call += L" = " + std::to_wstring(value.lVal);
            else if (value.vt == VT_BSTR)
                call += L" = " + std::wstring(view(value.bstrVal));
            else if (value.vt == VT_DATE)
                call += L" at " + std::to_wstring(minutesBetween(test::monday, {value.date}));
            calls.push_back(call);
        });
    }
    STDMETHODIMP Prepare(VARIANT_BOOL* result) override
    {
        return returns(result, [&] {
            calls.emplace_back(L"Prepare");
            return false;
        });
    }
    STDMETHODIMP Execute(VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP Undo(VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP Redo(VARIANT_BOOL*) override { return E_NOTIMPL; }
};

using Calls = std::vector<std::wstring>;

Calls told(const Order& order)
{
    const auto recorder = make<Recorder>();
    prepare(ComPtr<IAppCommand>(recorder.get()), order, nullptr);
    return recorder->calls;
}

Bar bar()
{
    return {test::booked(5, 20, 9, 10, 3)};
}

TEST(Orders, OpenANewActivityInItsSlot)
{
    EXPECT_EQ(told(orderForSlot(entryNamed(newActivity), 4, 20, {1, at(9), at(9.5)})),
              (Calls{L"Operation 1", L"Root", L"GroupID = 4", L"N0 = 20", L"T0 at 540", L"T1 at 570",
                     L"Granted", L"Prepare"}));
}

TEST(Orders, OpenAnOccurrenceForChange)
{
    EXPECT_EQ(told(orderForBar(entryNamed(changeActivity), 4, bar())),
              (Calls{L"Operation 3", L"Root", L"EventID = 5", L"Instance = 3", L"GroupID = 4", L"N0 = 20",
                     L"Granted", L"Prepare"}));
}

TEST(Orders, TellACommandOnMembersTheirGroup)
{
    EXPECT_EQ(told(orderForGroup(entryNamed(L"Arrange.Types"), 4)),
              (Calls{L"Operation 3", L"Root", L"GroupID = 4", L"Granted", L"Prepare"}));
    EXPECT_EQ(told(orderForMember(entryNamed(L"Resource.Remove"), 4, 20)),
              (Calls{L"Operation 2", L"Root", L"GroupID = 4", L"NameID = 20", L"Granted", L"Prepare"}));
}

TEST(Orders, TellWhomAMessageIsFor)
{
    EXPECT_EQ(told(orderForResource(entryNamed(L"Message.Leave"), {20, L"Bob"})),
              (Calls{L"Operation 1", L"Root", L"NameID = 20", L"Name = Bob", L"Granted", L"Prepare"}));
    EXPECT_EQ(told(orderForResource(entryNamed(L"Message.Info"), {20, L"Bob"})).front(), L"Operation 3");
    EXPECT_EQ(told(orderForReader(entryNamed(L"Message.Read"), 20)),
              (Calls{L"Operation 2", L"Root", L"NameID = 20", L"Granted", L"Prepare"}));
}

TEST(Orders, MoveFromOneResourceToAnother)
{
    const Calls operands{L"Root",    L"EventID = 5", L"Instance = 3", L"GroupID = 4", L"N0 = 20",
                         L"N1 = 30", L"T0 at 660",   L"T1 at 720",    L"Granted",     L"Prepare"};
    Calls expected{L"Operation 3"};
    expected.insert(expected.end(), operands.begin(), operands.end());
    EXPECT_EQ(told(orderForLanding(entryNamed(moveActivity), 4, bar(), 30, {2, at(11), at(12)})), expected);
    expected.front() = L"Operation 4";
    EXPECT_EQ(told(orderForLanding(entryNamed(copyActivity), 4, bar(), 30, {2, at(11), at(12)})), expected);
}

TEST(Orders, GoNoFurtherWithoutTheRight)
{
    const auto recorder = make<Recorder>();
    recorder->granted = false;
    const auto failure = attempt([&] {
        prepare(ComPtr<IAppCommand>(recorder.get()), orderForGroup(commandTable().front(), 7), nullptr);
    });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number(), E_ACCESSDENIED);
    EXPECT_EQ(recorder->calls, (Calls{L"Operation 1", L"Root", L"GroupID = 7", L"Granted"}));
}

TEST(Orders, TellMouseAndMenuTheSameCommands)
{
    EXPECT_EQ(entryNamed(newActivity).target, Target::slot);
    EXPECT_EQ(entryNamed(changeActivity).target, Target::bar);
    for (const bool copies : {false, true})
    {
        EXPECT_EQ(entryNamed(copies ? copyActivity : moveActivity).target, Target::movingBar);
        EXPECT_EQ(entryNamed(copies ? copyActivity : moveActivity).operation, copies ? 4 : 3);
    }
}

TEST(Orders, AskBeforeADeletionForWhatItIs)
{
    const auto asks = [](const Bar& bar, bool isShared) {
        const std::wstring text = questionBeforeDeletion(bar, isShared);
        return text.substr(0, text.find(L'\n'));
    };
    Bar single = bar();
    single.id.instance = 0;
    single.text = L"Service";
    EXPECT_EQ(asks(bar(), false), L"Delete this occurrence of the activity?");
    EXPECT_EQ(asks(bar(), true), L"Delete this occurrence of the activity for all of its resources?");
    EXPECT_EQ(asks(single, false), L"Delete this activity?");
    EXPECT_EQ(asks(single, true), L"Delete this activity for all of its resources?");
    EXPECT_NE(questionBeforeDeletion(single, false).find(L"Service"), std::wstring::npos);
}

TEST(Orders, KnowWhichActivitiesSeveralResourcesShare)
{
    korvane::test::RecordingData data;
    const auto event = [](long id, long resource, std::optional<long> link) {
        return korvane::test::Event{id, resource, 1, 0, 1, L"Work", link};
    };
    data.events = {event(1, 10, 7), event(2, 20, 7), event(3, 10, 8), event(4, 30, std::nullopt)};
    EXPECT_TRUE(isShared(data.root, 1));
    EXPECT_TRUE(isShared(data.root, 2));
    EXPECT_FALSE(isShared(data.root, 3)) << "nobody else is left in its group";
    EXPECT_FALSE(isShared(data.root, 4));
    data.fail("EventLinks.Load", {E_ABORT, L"", L""});
    EXPECT_TRUE(attempt([&] { isShared(data.root, 1); }));
    EXPECT_FALSE(data.hasSubscribers());
}

} // namespace

} // namespace korvane::host
