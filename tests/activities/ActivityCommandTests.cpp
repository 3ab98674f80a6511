// What both activity commands are to a host: the frame, the operands, and a refusal of unknown operations.
#include "activities/EditEvents.h"
#include "activities/MoveEvents.h"
#include "tests/activities/ActivityFixture.h"
#include "tests/support/ComRules.h"

namespace korvane::test
{

using testing::IsEmpty;

template <class Command> class ActivityCommandTests : public ActivityTests<Command>
{
protected:
    std::vector<const wchar_t*> longs() const
    {
        std::vector<const wchar_t*> names{L"EventID", L"Instance", L"GroupID", L"TypeID", L"N0"};
        if constexpr (std::is_same_v<Command, MoveEvents>)
            names.push_back(L"N1");
        return names;
    }

    std::vector<const wchar_t*> allNames() const
    {
        auto names = longs();
        names.insert(names.end(), {L"Root", L"Text", L"T0", L"T1"});
        return names;
    }

    HRESULT tryLet(const wchar_t* name, const VARIANT& value)
    {
        const HRESULT result = this->command->put_Operand(Bstr(name).get(), value);
        SetErrorInfo(0, nullptr);
        return result;
    }

    ErrorInfo executeUnknown(long operation)
    {
        call(this->command, &IAppCommand::put_Operation, operation);
        VARIANT_BOOL result = VARIANT_TRUE;
        const HRESULT outcome = this->command->Execute(&result);
        EXPECT_EQ(result, VARIANT_FALSE);
        return errorOf(outcome);
    }
};

using Commands = testing::Types<EditEvents, MoveEvents>;
TYPED_TEST_SUITE(ActivityCommandTests, Commands);

TYPED_TEST(ActivityCommandTests, DialogClassIsTheDialogOfTheSameName)
{
    Bstr progId;
    call(this->command, &IAppCommand::get_DialogClass, progId.put());
    EXPECT_EQ(progId, (std::is_same_v<TypeParam, EditEvents> ? L"KorvaneDlg.ctlEditEvents"
                                                             : L"KorvaneDlg.ctlMoveEvents"));
}

TYPED_TEST(ActivityCommandTests, IsGrantedBeforeAnyOperandIsSet)
{
    VARIANT_BOOL granted = VARIANT_FALSE;
    call(make<TypeParam>()->asCommand(), &IAppCommand::get_Granted, &granted);
    EXPECT_EQ(granted, VARIANT_TRUE);
}

TYPED_TEST(ActivityCommandTests, OperationIsStoredUnchecked)
{
    for (const long stored : {0L, -17L, 3L, 4711L})
    {
        call(this->command, &IAppCommand::put_Operation, stored);
        long operation = -1;
        call(this->command, &IAppCommand::get_Operation, &operation);
        EXPECT_EQ(operation, stored);
    }
}

TYPED_TEST(ActivityCommandTests, OperandsOfANewCommandHaveTheirTypes)
{
    const auto fresh = make<TypeParam>()->asCommand();
    for (const wchar_t* name : this->longs())
    {
        EXPECT_EQ(get(fresh, name).type(), VT_I4) << narrow(name);
        EXPECT_EQ(toLong(get(fresh, name).get()), 0) << narrow(name);
    }
    EXPECT_EQ(get(fresh, L"Text").type(), VT_BSTR);
    EXPECT_EQ(toText(get(fresh, L"Text").get()), L"");
    for (const wchar_t* name : {L"T0", L"T1"})
    {
        EXPECT_EQ(get(fresh, name).type(), VT_DATE);
        EXPECT_EQ(get(fresh, name).get().date, 0.0);
    }
    EXPECT_EQ(get(fresh, L"Root").type(), VT_DISPATCH);
    EXPECT_EQ(get(fresh, L"Root").get().pdispVal, nullptr);
}

TYPED_TEST(ActivityCommandTests, OperandsAreReadAsTheyWereSet)
{
    long next = 31;
    for (const wchar_t* name : this->longs())
        this->let(name, next++);
    this->let(L"Text", Variant(Bstr(L"Inspection\r\nof the lift")));
    this->let(L"T0", nine);
    this->let(L"T1", ten);

    next = 31;
    for (const wchar_t* name : this->longs())
    {
        EXPECT_EQ(this->get(name).type(), VT_I4) << narrow(name);
        EXPECT_EQ(this->number(name), next++) << narrow(name);
    }
    EXPECT_EQ(this->get(L"Text").type(), VT_BSTR);
    EXPECT_EQ(this->text(L"Text"), L"Inspection\r\nof the lift");
    EXPECT_EQ(this->get(L"T0").type(), VT_DATE);
    EXPECT_EQ(this->time(L"T0"), nine);
    EXPECT_EQ(this->get(L"T1").type(), VT_DATE);
    EXPECT_EQ(this->time(L"T1"), ten);
    EXPECT_EQ(this->get(L"Root").type(), VT_DISPATCH);
    EXPECT_EQ(toObject(this->get(L"Root").get()).template as<IRoot>().get(), this->data.root.get());
    EXPECT_THAT(this->data.takeCalls(), IsEmpty());
}

TYPED_TEST(ActivityCommandTests, ValuesAreConverted)
{
    VARIANT real{};
    real.vt = VT_R8;
    real.dblVal = 46.0;
    VARIANT small{};
    small.vt = VT_I2;
    small.iVal = -3;
    for (const wchar_t* name : this->longs())
    {
        this->let(name, Variant(Bstr(L"45")));
        EXPECT_EQ(this->number(name), 45) << narrow(name);
        EXPECT_EQ(this->tryLet(name, real), S_OK);
        EXPECT_EQ(this->number(name), 46) << narrow(name);
        EXPECT_EQ(this->tryLet(name, small), S_OK);
        EXPECT_EQ(this->number(name), -3) << narrow(name);
        EXPECT_EQ(this->get(name).type(), VT_I4) << narrow(name);
    }
    for (const wchar_t* name : {L"T0", L"T1"})
    {
        EXPECT_EQ(this->tryLet(name, real), S_OK);
        EXPECT_EQ(this->get(name).type(), VT_DATE);
        EXPECT_EQ(this->time(name), 46.0);
    }
    this->let(L"Text", Variant(45L));
    EXPECT_EQ(this->get(L"Text").type(), VT_BSTR);
    EXPECT_EQ(this->text(L"Text"), L"45");
}

TYPED_TEST(ActivityCommandTests, ReferencesAreFollowed)
{
    long number = 45;
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_I4;
    reference.plVal = &number;
    for (const wchar_t* name : this->longs())
    {
        EXPECT_EQ(this->tryLet(name, reference), S_OK);
        EXPECT_EQ(this->number(name), 45) << narrow(name);
    }
    Variant held(46L);
    VARIANT toHeld{};
    toHeld.vt = VT_BYREF | VT_VARIANT;
    toHeld.pvarVal = const_cast<VARIANT*>(&held.get());
    EXPECT_EQ(this->tryLet(L"EventID", toHeld), S_OK);
    EXPECT_EQ(this->number(L"EventID"), 46);

    DATE date = nine;
    VARIANT toDate{};
    toDate.vt = VT_BYREF | VT_DATE;
    toDate.pdate = &date;
    EXPECT_EQ(this->tryLet(L"T0", toDate), S_OK);
    EXPECT_EQ(this->tryLet(L"T1", toDate), S_OK);
    EXPECT_EQ(this->time(L"T0"), nine);
    EXPECT_EQ(this->time(L"T1"), nine);

    Bstr words(L"Inspection");
    VARIANT toWords{};
    toWords.vt = VT_BYREF | VT_BSTR;
    toWords.pbstrVal = words.inOut();
    EXPECT_EQ(this->tryLet(L"Text", toWords), S_OK);
    EXPECT_EQ(this->text(L"Text"), L"Inspection");

    this->let(L"Root", Variant(ComPtr<IDispatch>()));
    EXPECT_EQ(this->get(L"Root").get().pdispVal, nullptr);
    IUnknown* root = this->data.root.get();
    VARIANT toRoot{};
    toRoot.vt = VT_BYREF | VT_UNKNOWN;
    toRoot.ppunkVal = &root;
    EXPECT_EQ(this->tryLet(L"Root", toRoot), S_OK);
    EXPECT_EQ(toObject(this->get(L"Root").get()).template as<IRoot>().get(), this->data.root.get());
}

TYPED_TEST(ActivityCommandTests, AValueThatCannotBeConvertedLeavesTheOperandAsItWas)
{
    for (const wchar_t* name : this->longs())
        this->let(name, 45L);
    this->let(L"T0", nine);
    this->let(L"T1", ten);
    this->let(L"Text", Variant(Bstr(L"Inspection")));
    const std::string before = operandsOf(this->command);

    const Variant words(Bstr(L"forty-five"));
    const Variant large(Bstr(L"99999999999"));
    const Variant root(this->data.root.template as<IDispatch>());
    for (const wchar_t* name : this->longs())
    {
        EXPECT_EQ(this->tryLet(name, words.get()), DISP_E_TYPEMISMATCH) << narrow(name);
        EXPECT_EQ(this->tryLet(name, large.get()), DISP_E_OVERFLOW) << narrow(name);
    }
    EXPECT_EQ(this->tryLet(L"T0", words.get()), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(this->tryLet(L"T1", words.get()), DISP_E_TYPEMISMATCH);
    EXPECT_NE(this->tryLet(L"Text", root.get()), S_OK);
    EXPECT_EQ(this->tryLet(L"Root", Variant(7L).get()), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(this->tryLet(L"Root", Variant(this->command.template as<IDispatch>()).get()),
              DISP_E_TYPEMISMATCH);
    EXPECT_EQ(operandsOf(this->command), before);
    EXPECT_EQ(toObject(this->get(L"Root").get()).template as<IRoot>().get(), this->data.root.get());
}

TYPED_TEST(ActivityCommandTests, OperandNamesAreExact)
{
    const std::string before = operandsOf(this->command);
    for (const wchar_t* const known : this->allNames())
    {
        const std::wstring name = known;
        std::wstring lower = name;
        std::wstring upper = name;
        CharLowerW(lower.data());
        CharUpperW(upper.data());
        for (const std::wstring& other : {lower, upper, name + L' ', L' ' + name})
            if (other != name)
            {
                this->let(other.c_str(), 45L);
                EXPECT_TRUE(this->get(other.c_str()).isEmpty()) << narrow(other);
            }
    }
    EXPECT_EQ(operandsOf(this->command), before);
}

TYPED_TEST(ActivityCommandTests, UnknownOperandsAreIgnored)
{
    const std::string before = operandsOf(this->command);
    for (const wchar_t* name :
         {L"", L"NameID", L"LinkID", L"Rule", L"UpdateAll", L"Operation", L"N2", L"Name"})
    {
        this->let(name, 45L);
        this->let(name, Variant(Bstr(L"forty-five")));
        EXPECT_TRUE(this->get(name).isEmpty()) << narrow(name);
    }
    EXPECT_EQ(operandsOf(this->command), before);
}

TYPED_TEST(ActivityCommandTests, UndoAndRedoReturnFalseAndChangeNothing)
{
    this->open(20, 3);
    this->execute(3);
    this->data.takeCalls();
    const std::string before = operandsOf(this->command);
    for (const auto method : {&IAppCommand::Undo, &IAppCommand::Redo})
    {
        VARIANT_BOOL result = VARIANT_TRUE;
        call(this->command, method, &result);
        EXPECT_EQ(result, VARIANT_FALSE);
    }
    EXPECT_THAT(this->data.takeCalls(), IsEmpty());
    EXPECT_EQ(operandsOf(this->command), before);
}

TYPED_TEST(ActivityCommandTests, AnUnknownOperationIsABadCommandNumber)
{
    std::vector<long> unknown{0, -1, 5, 4711};
    if (std::is_same_v<TypeParam, EditEvents>)
        unknown.push_back(4);
    else
        unknown.insert(unknown.end(), {1, 2});
    this->let(L"EventID", 11L);
    this->prepare(0);
    this->data.takeCalls();
    for (const long operation : unknown)
        EXPECT_EQ(this->executeUnknown(operation),
                  (ErrorInfo{static_cast<HRESULT>(0x80040001), L"EditEvents",
                             L"Bad command number: " + std::to_wstring(operation)}));
    EXPECT_THAT(this->data.takeCalls(), IsEmpty());
}

TYPED_TEST(ActivityCommandTests, TheTimesAreExchangedBeforeAnUnknownOperationFails)
{
    this->let(L"T0", ten);
    this->let(L"T1", nine);
    this->executeUnknown(17);
    EXPECT_EQ(this->time(L"T0"), nine);
    EXPECT_EQ(this->time(L"T1"), ten);
}

TYPED_TEST(ActivityCommandTests, WithoutRootPrepareAndExecuteFailWithAnError)
{
    const auto fresh = make<TypeParam>()->asCommand();
    call(fresh, &IAppCommand::put_Operation, 3L);
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(fresh->Prepare(&result), E_POINTER);
    EXPECT_EQ(result, VARIANT_FALSE);
    result = VARIANT_TRUE;
    EXPECT_EQ(fresh->Execute(&result), E_POINTER);
    EXPECT_EQ(result, VARIANT_FALSE);
}

TYPED_TEST(ActivityCommandTests, OnlyThePreparedCommandHearsOfTheLinks)
{
    EXPECT_FALSE(this->data.hasSubscribers());
    this->open(20, 3);
    EXPECT_TRUE(this->data.hasSubscribers(EventsOf::links));
    this->open(20, 3); // again, in place of the former subscription
    this->object.reset();
    this->command.reset();
    EXPECT_FALSE(this->data.hasSubscribers());
    EXPECT_EQ(references(this->data.root.get()), 1U);
    EXPECT_EQ(this->data.rulesAlive, 0);
}

TYPED_TEST(ActivityCommandTests, TheDialogsOperationsAreHiddenFromHosts)
{
    const auto dispatch = this->command.template as<IDispatch>();
    const auto idOf = [&](const wchar_t* name, DISPID& id) {
        auto* text = const_cast<LPOLESTR>(name);
        return dispatch->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    };
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(idOf(L"Command", id), S_OK);
    for (const wchar_t* name : {L"SetName", L"HasName", L"NameCount", L"MayBookOthers", L"Rule",
                                L"ExceptionFlag", L"LinkID", L"BookedNames", L"ChosenNames", L"Links"})
        EXPECT_EQ(idOf(name, id), DISP_E_UNKNOWNNAME) << narrow(name);

    DISPPARAMS none{};
    Variant result;
    if (std::is_same_v<TypeParam, MoveEvents>)
    {
        ASSERT_EQ(idOf(L"UpdateAll", id), S_OK);
        EXPECT_EQ(dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                   result.put(), nullptr, nullptr),
                  DISP_E_MEMBERNOTFOUND);
    }
    else
    {
        EXPECT_EQ(idOf(L"UpdateAll", id), DISP_E_UNKNOWNNAME);
    }
}

} // namespace korvane::test
