// What the tests of both activity commands share: a database with activities, and a command on it.
#pragma once

#include "framework/com/Object.h"
#include "tests/support/CommandUser.h"

#include <gmock/gmock.h>

namespace korvane::test
{

inline const DATE nine = dateOf("2026-11-20 09:00:00");
inline const DATE ten = dateOf("2026-11-20 10:00:00");

/// The resources 5 to 9, a single activity, and one that is booked for the resources 5, 6 and 7.
inline void fillWithActivities(RecordingData& data)
{
    data.names = {{5, L"Anna"}, {6, L"Ben"}, {7, L"Cleo"}, {8, L"Dora"}, {9, L"Emil"}};
    data.events = {{11, 5, 2, nine, ten, L"Inspection"},
                   {20, 5, 3, nine, ten, L"Meeting", 20},
                   {21, 6, 3, nine, ten, L"Meeting", 20},
                   {22, 7, 3, nine, ten, L"Meeting", 20}};
}

/// All operands as one text, for comparisons.
inline std::string operandsOf(const ComPtr<IAppCommand>& command)
{
    std::string result;
    for (const wchar_t* name : {L"EventID", L"Instance", L"GroupID", L"TypeID", L"N0", L"N1"})
        if (const Variant value = getOperand(command, name); !value.isEmpty())
            result += shown(toLong(value.get())) + ' ';
    for (const wchar_t* name : {L"T0", L"T1"})
        result += stamp(toDate(getOperand(command, name).get()).days) + ' ';
    return result + quoted(toText(getOperand(command, L"Text").get()).view());
}

template <class Command> class ActivityTests : public testing::Test, public CommandUser
{
protected:
    ActivityTests()
    {
        command = object->asCommand();
        fillWithActivities(data);
        letRoot();
    }

    /// Prepares the command for an activity, and forgets the calls.
    void open(long eventId, long operation)
    {
        let(L"EventID", eventId);
        prepare(operation);
        data.takeCalls();
    }

    /// The calls so far without those for the collection of activities, which the commands ask for at each step.
    std::vector<std::string> steps()
    {
        auto calls = data.takeCalls();
        std::erase(calls, "Root.Events()");
        return calls;
    }

    ComPtr<Command> object = make<Command>();
};

} // namespace korvane::test
