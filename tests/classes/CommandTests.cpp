// What every command is to a host: its operands, its operation codes, and failures that arrive unchanged.
#include "tests/classes/Cases.h"
#include "tests/support/ComRules.h"
#include "tests/support/Variants.h"

#include <gmock/gmock.h>

namespace korvane::test
{

using testing::IsEmpty;

namespace
{

using Method = HRESULT (STDMETHODCALLTYPE IAppCommand::*)(VARIANT_BOOL*);

/// A value of a type, other than that of any other row.
Variant sample(VARTYPE type, long row)
{
    switch (type)
    {
    case VT_BSTR:
        return Variant(Bstr(L"text " + std::to_wstring(row)));
    case VT_DATE:
        return Variant(OleDate{46000.0 + static_cast<double>(row)});
    case VT_BOOL:
        return Variant(row % 2 == 0);
    default:
        return Variant(30 + row);
    }
}

std::wstring textOf(const Variant& value)
{
    return std::wstring(toText(value.get()).view());
}

VARIANT number(double value)
{
    return variant(VT_R8, &VARIANT::dblVal, value);
}

/// A value that goes in, and the text of what then comes out; empty where it is refused.
struct Conversion
{
    VARTYPE type; ///< of the operand
    VARIANT given;
    std::wstring stored;
    HRESULT outcome = S_OK;
};

class CommandTests : public testing::TestWithParam<CommandCase>
{
protected:
    void SetUp() override { GetParam().fill(data); }

    ComPtr<IAppCommand> make() const { return create<IAppCommand>(GetParam().classId); }
    ComPtr<IAppCommand> make(const CommandUse& use) const
    {
        return makeCommand(GetParam().classId, data, use.operation, use.operands);
    }

    void enter(const CommandUse& use) const
    {
        for (const auto& [name, value] : use.entered)
            letOperand(command, name, value);
    }

    std::string operands() const { return operandsOf(GetParam(), command); }

    /// Sets every operand to a value of its own.
    void setAll()
    {
        letOperand(command, L"Root", Variant(data.root.as<IDispatch>()));
        long row = 0;
        for (const OperandRow& operand : GetParam().operands)
            letOperand(command, operand.name, sample(operand.type, ++row));
    }

    HRESULT tryLet(const std::wstring& name, const VARIANT& value) const
    {
        const HRESULT result = command->put_Operand(Bstr(name).get(), value);
        SetErrorInfo(0, nullptr);
        return result;
    }

    IUnknown* root() const { return toObject(getOperand(command, L"Root").get()).as<IRoot>().get(); }

    /// A call by name, as scripts make it.
    HRESULT invoke(std::wstring name, WORD kind, const Variant& given, VARIANT* result,
                   EXCEPINFO* exception = nullptr) const
    {
        const auto dispatch = command.as<IDispatch>();
        LPOLESTR text = name.data();
        DISPID id = DISPID_UNKNOWN;
        EXPECT_EQ(dispatch->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id), S_OK)
            << narrow(name);
        DISPID put = DISPID_PROPERTYPUT;
        VARIANT value = given.get();
        DISPPARAMS parameters{};
        if (kind == DISPATCH_PROPERTYPUT)
            parameters = {&value, &put, 1, 1};
        return dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, result, exception,
                                nullptr);
    }

    void expectConversions(const std::vector<Conversion>& conversions)
    {
        for (const Conversion& conversion : conversions)
            for (const OperandRow& operand : GetParam().operands)
                if (operand.type == conversion.type)
                {
                    SCOPED_TRACE(narrow(operand.name) + ", type " + std::to_string(conversion.given.vt));
                    const std::string before = operands();
                    EXPECT_EQ(tryLet(operand.name, conversion.given), conversion.outcome);
                    const Variant value = getOperand(command, operand.name);
                    EXPECT_EQ(value.type(), operand.type);
                    if (FAILED(conversion.outcome))
                    {
                        EXPECT_EQ(operands(), before);
                        continue;
                    }
                    EXPECT_EQ(operand.type == VT_DATE ? std::to_wstring(value.get().date) : textOf(value),
                              conversion.stored);
                }
    }

    /// Runs a method of a new command, and what has to come before it.
    struct Outcome
    {
        ErrorInfo error;
        VARIANT_BOOL result = VARIANT_TRUE;
        std::vector<std::string> calls;
        std::string before;
        std::string operands;
        std::vector<std::string> operandsAtEachCall = {};
    };

    Outcome run(const CommandUse& use, Method method, const FailingCall* failing = nullptr)
    {
        GetParam().fill(data);
        data.nextId = 100;
        command = make(use);
        VARIANT_BOOL ignored = VARIANT_FALSE;
        if (method == &IAppCommand::Execute)
        {
            call(command, &IAppCommand::Prepare, &ignored);
            enter(use);
        }
        data.takeCalls();
        if (failing)
            data.failAfter(failing->name, failing->passed, locked);
        Outcome outcome;
        outcome.before = operands();
        data.during = [&](const std::string&) { outcome.operandsAtEachCall.push_back(operands()); };
        const HRESULT number = (command.get()->*method)(&outcome.result);
        data.during = nullptr;
        outcome.error = errorOf(number);
        outcome.calls = data.takeCalls();
        outcome.operands = operands();
        return outcome;
    }

    RecordingData data;
    ComPtr<IAppCommand> command = make();
};

INSTANTIATE_TEST_SUITE_P(EveryCommand, CommandTests, testing::ValuesIn(commandCases()),
                         [](const auto& tested) { return tested.param.name; });

} // namespace

TEST_P(CommandTests, DialogClassIsItsDialog)
{
    const auto progId = fetch(command, &IAppCommand::get_DialogClass);
    EXPECT_EQ(progId, GetParam().dialogClass);
}

TEST_P(CommandTests, IsGrantedBeforeAnyOperandIsSet)
{
    VARIANT_BOOL granted = VARIANT_FALSE;
    call(command, &IAppCommand::get_Granted, &granted);
    EXPECT_EQ(granted, VARIANT_TRUE);
}

TEST_P(CommandTests, OperationIsStoredUnchecked)
{
    for (const long stored : {0L, -17L, 3L, 4711L})
    {
        call(command, &IAppCommand::put_Operation, stored);
        const long operation = fetch(command, &IAppCommand::get_Operation);
        EXPECT_EQ(operation, stored);
    }
}

TEST_P(CommandTests, OperandsOfANewCommandHaveTheirTypesAndAreEmpty)
{
    for (const OperandRow& operand : GetParam().operands)
    {
        const Variant value = getOperand(command, operand.name);
        EXPECT_EQ(value.type(), operand.type) << narrow(operand.name);
        const bool isEmpty = operand.type == VT_BSTR ? textOf(value).empty() : toDate(value.get()).days == 0;
        EXPECT_TRUE(isEmpty) << narrow(operand.name);
    }
    EXPECT_EQ(getOperand(command, L"Root").type(), VT_DISPATCH);
    EXPECT_EQ(getOperand(command, L"Root").get().pdispVal, nullptr);
}

TEST_P(CommandTests, OperandsAreReadAsTheyWereSet)
{
    setAll();
    long row = 0;
    for (const OperandRow& operand : GetParam().operands)
    {
        const Variant value = getOperand(command, operand.name);
        const Variant set = sample(operand.type, ++row);
        EXPECT_EQ(value.type(), operand.type) << narrow(operand.name);
        EXPECT_EQ(textOf(value), textOf(set)) << narrow(operand.name);
    }
    EXPECT_EQ(root(), data.root.get());
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_P(CommandTests, ValuesAreConvertedAndReferencesFollowed)
{
    long whole = 45;
    DATE date = 46.5;
    Bstr words(L"Inspection");
    Variant held(Bstr(L"47"));
    const VARIANT toHeld =
        variant(VT_BYREF | VT_VARIANT, &VARIANT::pvarVal, const_cast<VARIANT*>(&held.get()));
    expectConversions(
        {{VT_I4, Variant(Bstr(L"45")).get(), L"45"},
         {VT_I4, number(46), L"46"},
         {VT_I4, variant(VT_I2, &VARIANT::iVal, -3), L"-3"},
         {VT_I4, variant(VT_BYREF | VT_I4, &VARIANT::plVal, &whole), L"45"},
         {VT_I4, toHeld, L"47"},
         {VT_DATE, number(46), std::to_wstring(46.0)},
         {VT_DATE, variant(VT_BYREF | VT_DATE, &VARIANT::pdate, &date), std::to_wstring(46.5)},
         {VT_BSTR, Variant(45L).get(), L"45"},
         {VT_BSTR, variant(VT_BYREF | VT_BSTR, &VARIANT::pbstrVal, words.inOut()), L"Inspection"},
         {VT_BSTR, toHeld, L"47"}});

    IUnknown* object = data.root.get();
    EXPECT_EQ(tryLet(L"Root", variant(VT_BYREF | VT_UNKNOWN, &VARIANT::ppunkVal, &object)), S_OK);
    EXPECT_EQ(root(), data.root.get());
    letOperand(command, L"Root", Variant(ComPtr<IDispatch>()));
    EXPECT_EQ(getOperand(command, L"Root").get().pdispVal, nullptr);
}

TEST_P(CommandTests, AValueThatCannotBeConvertedLeavesTheOperandAsItWas)
{
    setAll();
    const Variant words(Bstr(L"forty-five"));
    const Variant large(Bstr(L"99999999999"));
    const Variant object(data.root.as<IDispatch>());
    expectConversions({{VT_I4, words.get(), {}, DISP_E_TYPEMISMATCH},
                       {VT_I4, large.get(), {}, DISP_E_OVERFLOW},
                       {VT_DATE, words.get(), {}, DISP_E_TYPEMISMATCH}});
    for (const OperandRow& operand : GetParam().operands)
        EXPECT_TRUE(FAILED(tryLet(operand.name, object.get()))) << narrow(operand.name);
    EXPECT_EQ(tryLet(L"Root", Variant(7L).get()), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(tryLet(L"Root", Variant(command.as<IDispatch>()).get()), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(root(), data.root.get());
}

TEST_P(CommandTests, OperandNamesAreExactAndOthersAreIgnored)
{
    const std::string before = operands();
    std::vector<std::wstring> unknown{L"", L"Operation", L"Command", L"LinkID", L"Rule", L"UpdateAll", L"N2"};
    for (const CommandCase& other : commandCases())
        for (const OperandRow& operand : other.operands)
        {
            std::wstring lower = operand.name;
            std::wstring upper = operand.name;
            CharLowerW(lower.data());
            CharUpperW(upper.data());
            unknown.insert(unknown.end(),
                           {operand.name, lower, upper, operand.name + L' ', L' ' + operand.name});
        }
    for (const OperandRow& operand : GetParam().operands)
        std::erase(unknown, operand.name);
    for (const std::wstring& name : unknown)
        for (const Variant& value : {Variant(45L), Variant(Bstr(L"forty-five"))})
        {
            EXPECT_EQ(tryLet(name, value.get()), S_OK) << narrow(name);
            EXPECT_TRUE(getOperand(command, name).isEmpty()) << narrow(name);
        }
    EXPECT_EQ(operands(), before);
}

TEST_P(CommandTests, ItsOwnPropertiesAreItsOperands)
{
    setAll();
    long row = 100;
    for (const OperandRow& operand : GetParam().operands)
    {
        if (operand.property.empty())
            continue;
        SCOPED_TRACE(narrow(operand.property));
        Variant value;
        EXPECT_EQ(invoke(operand.property, DISPATCH_PROPERTYGET, {}, value.put()), S_OK);
        EXPECT_EQ(value.type(), operand.type);
        EXPECT_EQ(textOf(value), textOf(getOperand(command, operand.name)));
        // Some of them can only be read.
        const Variant other = sample(operand.type, ++row);
        if (invoke(operand.property, DISPATCH_PROPERTYPUT, other, nullptr) == S_OK)
        {
            EXPECT_EQ(textOf(getOperand(command, operand.name)), textOf(other));
        }
    }
    Variant itself;
    EXPECT_EQ(invoke(L"Command", DISPATCH_PROPERTYGET, {}, itself.put()), S_OK);
    EXPECT_EQ(toObject(itself.get()).as<IAppCommand>().get(), command.get());
}

TEST_P(CommandTests, UndoAndRedoReturnFalseAndChangeNothing)
{
    for (const CommandUse& use : GetParam().uses)
    {
        run(use, &IAppCommand::Execute);
        const std::string before = operands();
        for (const auto method : {&IAppCommand::Undo, &IAppCommand::Redo})
        {
            VARIANT_BOOL result = VARIANT_TRUE;
            call(command, method, &result);
            EXPECT_EQ(result, VARIANT_FALSE);
        }
        EXPECT_THAT(data.takeCalls(), IsEmpty());
        EXPECT_EQ(operands(), before);
    }
}

TEST_P(CommandTests, AnUnknownOperationWritesNothing)
{
    for (const long operation : GetParam().unknownOperations)
    {
        const Outcome outcome =
            run({"Unknown", operation, GetParam().uses.back().operands}, &IAppCommand::Execute);
        EXPECT_EQ(outcome.result, VARIANT_FALSE);
        EXPECT_EQ(outcome.calls, GetParam().unknownCalls);
        if (!GetParam().refusesUnknown)
        {
            EXPECT_EQ(outcome.error.number, S_OK);
            continue;
        }
        EXPECT_EQ(outcome.error, (ErrorInfo{static_cast<HRESULT>(0x80040001), L"EditEvents",
                                            L"Bad command number: " + std::to_wstring(operation)}));
        EXCEPINFO exception{};
        EXPECT_EQ(invoke(L"Execute", DISPATCH_METHOD, {}, nullptr, &exception), DISP_E_EXCEPTION);
        EXPECT_EQ(exception.scode, outcome.error.number);
        EXPECT_EQ(Bstr::adopt(exception.bstrSource), outcome.error.source);
        EXPECT_EQ(Bstr::adopt(exception.bstrDescription), outcome.error.description);
        SysFreeString(exception.bstrHelpFile);
    }
}

TEST_P(CommandTests, WithoutRootPrepareAndExecuteFailWithAnError)
{
    call(command, &IAppCommand::put_Operation, 3L);
    for (const auto method : {&IAppCommand::Prepare, &IAppCommand::Execute})
    {
        const bool reads = method == &IAppCommand::Execute || GetParam().prepareReads;
        VARIANT_BOOL result = VARIANT_TRUE;
        EXPECT_EQ((command.get()->*method)(&result), reads ? E_POINTER : S_OK);
        EXPECT_EQ(result, reads ? VARIANT_FALSE : VARIANT_TRUE);
    }
}

TEST_P(CommandTests, AFailingDataLayerCallReachesTheCallerUnchangedAndTheNextAttemptSucceeds)
{
    for (const CommandUse& use : GetParam().uses)
        for (const auto method : {&IAppCommand::Prepare, &IAppCommand::Execute})
        {
            SCOPED_TRACE(use.name + (method == &IAppCommand::Prepare ? ", Prepare" : ", Execute"));
            const Outcome whole = run(use, method);
            ASSERT_EQ(whole.error.number, S_OK);
            for (const FailingCall& failing : eachOf(whole.calls))
            {
                SCOPED_TRACE(failing.upToTheFailure.back());
                const Outcome failed = run(use, method, &failing);
                EXPECT_EQ(failed.error, locked);
                EXPECT_EQ(failed.result, VARIANT_FALSE);
                EXPECT_EQ(failed.calls, failing.upToTheFailure); // and nothing after it
                ASSERT_EQ(failed.operandsAtEachCall.size(), failing.upToTheFailure.size());
                EXPECT_EQ(failed.operands, failed.operandsAtEachCall.back()); // what failed changed nothing
                EXPECT_EQ(failed.operandsAtEachCall.front(), failed.before);

                VARIANT_BOOL result = VARIANT_FALSE;
                EXPECT_EQ((command.get()->*method)(&result), S_OK);
                EXPECT_EQ(operands(), whole.operands);
                EXPECT_EQ(result, whole.result);
            }
        }
}

TEST_P(CommandTests, LateBoundItDoesTheSame)
{
    for (const CommandUse& use : GetParam().uses)
    {
        const Outcome prepared = run(use, &IAppCommand::Prepare);
        const Outcome executed = run(use, &IAppCommand::Execute);
        GetParam().fill(data);
        data.nextId = 100;
        command = make(use);
        for (const auto& [name, whole] : {std::pair{L"Prepare", &prepared}, {L"Execute", &executed}})
        {
            Variant result;
            EXPECT_EQ(invoke(name, DISPATCH_METHOD, {}, result.put()), S_OK);
            EXPECT_EQ(result.type(), VT_BOOL);
            EXPECT_EQ(result.get().boolVal, whole->result);
            EXPECT_EQ(data.takeCalls(), whole->calls);
            EXPECT_EQ(operands(), whole->operands);
            if (whole == &prepared)
                enter(use);
        }
    }
}

} // namespace korvane::test
