// The activity commands as a script of the host sees them: created from the DLL, used by names alone.
#include "framework/com/Variant.h"
#include "tests/activities/ActivityFixture.h"
#include "tests/support/ComRules.h"

#include <KorvaneDlg.h>

#include <algorithm>
#include <iterator>

namespace korvane::test
{

using testing::ElementsAre;

class ActivityClassTests : public testing::Test
{
protected:
    ActivityClassTests() { fillWithActivities(data); }

    void use(REFCLSID classId)
    {
        command = create<IDispatch>(classId);
        let(L"Root", Variant(data.root.as<IDispatch>()));
    }

    HRESULT invoke(const wchar_t* name, WORD kind, std::vector<Variant> arguments, VARIANT* result)
    {
        auto* text = const_cast<LPOLESTR>(name);
        DISPID id = DISPID_UNKNOWN;
        const HRESULT known = command->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
        if (FAILED(known))
            return known;
        std::vector<VARIANT> values;
        std::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(values),
                       [](const Variant& argument) { return argument.get(); });
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters{values.data(), nullptr, static_cast<UINT>(values.size()), 0};
        if (kind == DISPATCH_PROPERTYPUT)
        {
            parameters.rgdispidNamedArgs = &put;
            parameters.cNamedArgs = 1;
        }
        exception = {};
        return command->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, result, &exception,
                               nullptr);
    }

    void let(const wchar_t* operand, const Variant& value)
    {
        EXPECT_EQ(invoke(L"Operand", DISPATCH_PROPERTYPUT, {Variant(Bstr(operand)), value}, nullptr), S_OK);
    }

    Variant get(const wchar_t* operand)
    {
        Variant result;
        EXPECT_EQ(invoke(L"Operand", DISPATCH_PROPERTYGET, {Variant(Bstr(operand))}, result.put()), S_OK);
        return result;
    }

    Variant run(const wchar_t* method, long operation)
    {
        EXPECT_EQ(invoke(L"Operation", DISPATCH_PROPERTYPUT, {Variant(operation)}, nullptr), S_OK);
        Variant result;
        EXPECT_EQ(invoke(method, DISPATCH_METHOD, {}, result.put()), S_OK);
        return result;
    }

    RecordingData data;
    ComPtr<IDispatch> command;
    EXCEPINFO exception{};
};

TEST_F(ActivityClassTests, AScriptAddsAnActivity)
{
    use(__uuidof(::EditEvents));
    let(L"N0", Variant(5L));
    let(L"TypeID", Variant(Bstr(L"2")));
    let(L"T0", Variant(OleDate{ten}));
    let(L"T1", Variant(OleDate{nine}));
    let(L"Text", Variant(Bstr(L"Visit")));
    EXPECT_TRUE(toBool(run(L"Prepare", 1).get()));
    const Variant result = run(L"Execute", 1);
    EXPECT_EQ(result.type(), VT_BOOL);
    EXPECT_FALSE(toBool(result.get()));
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.EventLinks()", "Root.Events()",
                            "Events.Add(5, 2, 2026-11-20 09:00:00, 2026-11-20 10:00:00, \"Visit\")",
                            "Root.Events()", "Events.SetRecurrence(100, none)"));
    EXPECT_EQ(toLong(get(L"EventID").get()), 100);
}

TEST_F(ActivityClassTests, AScriptMovesAnActivity)
{
    use(__uuidof(::MoveEvents));
    let(L"EventID", Variant(21L));
    let(L"N1", Variant(8L));
    let(L"T0", Variant(OleDate{nine}));
    let(L"T1", Variant(OleDate{ten}));
    EXPECT_TRUE(toBool(run(L"Prepare", 3).get()));
    EXPECT_EQ(invoke(L"UpdateAll", DISPATCH_PROPERTYPUT, {Variant(false)}, nullptr), S_OK);
    data.takeCalls();
    EXPECT_TRUE(toBool(run(L"Execute", 3).get()));
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("EventLinks.Detach(20, 6)", "Root.Events()",
                            "Events.Update(21, 0, 8, 3, 2026-11-20 09:00:00, 2026-11-20 10:00:00, "
                            "\"Meeting\")"));
}

TEST_F(ActivityClassTests, AScriptHearsOfAnUnknownOperation)
{
    for (const CLSID& id : {__uuidof(::EditEvents), __uuidof(::MoveEvents)})
    {
        use(id);
        invoke(L"Operation", DISPATCH_PROPERTYPUT, {Variant(0L)}, nullptr);
        Variant result;
        EXPECT_EQ(invoke(L"Execute", DISPATCH_METHOD, {}, result.put()), DISP_E_EXCEPTION);
        EXPECT_EQ(exception.scode, static_cast<HRESULT>(0x80040001));
        EXPECT_EQ(Bstr::adopt(exception.bstrSource), L"EditEvents");
        EXPECT_EQ(Bstr::adopt(exception.bstrDescription), L"Bad command number: 0");
        SysFreeString(exception.bstrHelpFile);
    }
}

TEST_F(ActivityClassTests, NothingIsHeldOnceTheCommandIsGone)
{
    for (const CLSID& id : {__uuidof(::EditEvents), __uuidof(::MoveEvents)})
    {
        use(id);
        let(L"EventID", Variant(20L));
        run(L"Prepare", 3);
        EXPECT_TRUE(data.hasSubscribers());
        command.reset();
        EXPECT_FALSE(data.hasSubscribers());
        EXPECT_EQ(references(data.root.get()), 1U);
        EXPECT_EQ(canUnload(), S_OK);
    }
}

} // namespace korvane::test
