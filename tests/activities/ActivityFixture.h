// What the tests of both activity commands share: a database with activities, and a command on it.
#pragma once

#include "framework/com/Object.h"
#include "framework/com/Variant.h"
#include "tests/support/Library.h"
#include "tests/support/RecordingData.h"

#include <KorvaneLib.h>

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

inline void let(const ComPtr<IAppCommand>& command, const wchar_t* name, const Variant& value)
{
    call(command, &IAppCommand::put_Operand, Bstr(name).get(), value.get());
}

inline Variant get(const ComPtr<IAppCommand>& command, const wchar_t* name)
{
    Variant value;
    call(command, &IAppCommand::get_Operand, Bstr(name).get(), value.put());
    return value;
}

/// All operands as one text, for comparisons.
inline std::string operandsOf(const ComPtr<IAppCommand>& command)
{
    std::string result;
    for (const wchar_t* name : {L"EventID", L"Instance", L"GroupID", L"TypeID", L"N0", L"N1"})
        if (const Variant value = get(command, name); !value.isEmpty())
            result += shown(toLong(value.get())) + ' ';
    for (const wchar_t* name : {L"T0", L"T1"})
        result += stamp(toDate(get(command, name).get()).days) + ' ';
    return result + quoted(toText(get(command, L"Text").get()).view());
}

template <class Command> class ActivityTests : public testing::Test
{
protected:
    ActivityTests()
    {
        fillWithActivities(data);
        let(L"Root", Variant(data.root.as<IDispatch>()));
    }

    void let(const wchar_t* name, const Variant& value) { test::let(command, name, value); }
    void let(const wchar_t* name, long value) { let(name, Variant(value)); }
    void let(const wchar_t* name, DATE value) { let(name, Variant(OleDate{value})); }

    Variant get(const wchar_t* name) const { return test::get(command, name); }
    long number(const wchar_t* name) const { return toLong(get(name).get()); }
    DATE time(const wchar_t* name) const { return toDate(get(name).get()).days; }
    std::wstring text(const wchar_t* name) const { return std::wstring(toText(get(name).get()).view()); }

    bool prepare(long operation) { return run(operation, &IAppCommand::Prepare); }
    bool execute(long operation) { return run(operation, &IAppCommand::Execute); }

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

    RecordingData data;
    ComPtr<Command> object = make<Command>();
    ComPtr<IAppCommand> command = object->asCommand();

private:
    bool run(long operation, HRESULT (STDMETHODCALLTYPE IAppCommand::*method)(VARIANT_BOOL*))
    {
        call(command, &IAppCommand::put_Operation, operation);
        VARIANT_BOOL result = VARIANT_FALSE;
        call(command, method, &result);
        return result != VARIANT_FALSE;
    }
};

} // namespace korvane::test
