#include "framework/AppCommand.h"

#include "tests/framework/Fakes.h"
#include "tests/support/Variants.h"

#include <KorvaneDlg.h>

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

/// A command with an operand of each kind.
class TestCommand final : public AppCommand<TestCommand, IMoveEvents>
{
public:
    static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlTest";
    static const GUID* classId() noexcept { return &IID_IPersistFile; }

    static std::span<const Operand<TestCommand>> operands()
    {
        static constexpr Operand<TestCommand> table[] = {
            operand<&TestCommand::Root>(L"Root"), operand<&TestCommand::number>(L"Number"),
            operand<&TestCommand::flag>(L"Flag"), operand<&TestCommand::date>(L"Date"),
            operand<&TestCommand::text>(L"Text"), operand<&TestCommand::shadowed>(L"Number"),
        };
        return table;
    }

    bool prepare() { return true; }
    bool execute()
    {
        if (operation == 4)
            throw Failure(static_cast<HRESULT>(0x80040999), L"TestCommand", L"refused");
        if (operation == 5)
            throw std::bad_alloc();
        if (operation == 6)
            throw 6;
        return operation == 3;
    }

    STDMETHODIMP get_SourceName(long*) override { return E_NOTIMPL; }
    STDMETHODIMP get_TargetName(long*) override { return E_NOTIMPL; }
    STDMETHODIMP put_UpdateAll(VARIANT_BOOL) override { return E_NOTIMPL; }

    ComPtr<IRoot> Root;
    long number = 11;
    bool flag = false;
    OleDate date{1.5};
    Bstr text{L"before"};
    long shadowed = 0;
};

class AppCommandTests : public testing::Test
{
protected:
    HRESULT let(const wchar_t* name, const VARIANT& value)
    {
        return interface_->put_Operand(Bstr(name).get(), value);
    }
    HRESULT let(const wchar_t* name, const Variant& value) { return let(name, value.get()); }

    Variant get(const wchar_t* name)
    {
        Variant value;
        EXPECT_EQ(interface_->get_Operand(Bstr(name).get(), value.put()), S_OK);
        return value;
    }

    /// The number that is stored for a value.
    long stored(const VARIANT& value)
    {
        command->number = 11;
        EXPECT_EQ(let(L"Number", value), S_OK) << "type " << value.vt;
        return command->number;
    }

    /// The failure of a value that cannot be a number; the field keeps what it had.
    HRESULT refused(const VARIANT& value)
    {
        command->number = 11;
        const HRESULT result = let(L"Number", value);
        EXPECT_EQ(command->number, 11) << "type " << value.vt;
        return result;
    }

    ComPtr<TestCommand> command = make<TestCommand>();
    ComPtr<IAppCommand> interface_ = command->asCommand();
};

} // namespace

TEST_F(AppCommandTests, TheFrameAnswersForEveryCommand)
{
    Bstr dialog;
    EXPECT_EQ(interface_->get_DialogClass(dialog.put()), S_OK);
    EXPECT_EQ(dialog, L"KorvaneDlg.ctlTest");
    VARIANT_BOOL result = VARIANT_FALSE;
    EXPECT_EQ(interface_->get_Granted(&result), S_OK);
    EXPECT_EQ(result, VARIANT_TRUE);
    EXPECT_EQ(interface_->Undo(&result), S_OK);
    EXPECT_EQ(result, VARIANT_FALSE);
    result = VARIANT_TRUE;
    EXPECT_EQ(interface_->Redo(&result), S_OK);
    EXPECT_EQ(result, VARIANT_FALSE);
}

TEST_F(AppCommandTests, TheOperationIsStoredUnchecked)
{
    long code = 7;
    EXPECT_EQ(interface_->get_Operation(&code), S_OK);
    EXPECT_EQ(code, 0);
    for (const long operation : {1L, 3L, -1L, 4711L, std::numeric_limits<long>::min()})
    {
        EXPECT_EQ(interface_->put_Operation(operation), S_OK);
        EXPECT_EQ(interface_->get_Operation(&code), S_OK);
        EXPECT_EQ(code, operation);
    }
}

TEST_F(AppCommandTests, ResultsOfTheClassArePassedOn)
{
    VARIANT_BOOL result = VARIANT_FALSE;
    EXPECT_EQ(interface_->Prepare(&result), S_OK);
    EXPECT_EQ(result, VARIANT_TRUE);
    interface_->put_Operation(3);
    EXPECT_EQ(interface_->Execute(&result), S_OK);
    EXPECT_EQ(result, VARIANT_TRUE);
    interface_->put_Operation(1);
    EXPECT_EQ(interface_->Execute(&result), S_OK);
    EXPECT_EQ(result, VARIANT_FALSE);
}

TEST_F(AppCommandTests, FailuresOfTheClassAreComErrors)
{
    VARIANT_BOOL result = VARIANT_TRUE;
    interface_->put_Operation(4);
    EXPECT_EQ(errorOf(interface_->Execute(&result)),
              (ErrorInfo{static_cast<HRESULT>(0x80040999), L"TestCommand", L"refused"}));
    EXPECT_EQ(result, VARIANT_FALSE);
    interface_->put_Operation(5);
    EXPECT_EQ(interface_->Execute(&result), E_OUTOFMEMORY);
    interface_->put_Operation(6);
    EXPECT_EQ(interface_->Execute(&result), E_UNEXPECTED);
}

TEST_F(AppCommandTests, OperandsHaveTheTypesOfTheirFields)
{
    EXPECT_EQ(get(L"Number").type(), VT_I4);
    EXPECT_EQ(get(L"Number").get().lVal, 11);
    EXPECT_EQ(get(L"Flag").type(), VT_BOOL);
    EXPECT_EQ(get(L"Date").type(), VT_DATE);
    EXPECT_EQ(get(L"Date").get().date, 1.5);
    EXPECT_EQ(get(L"Text").type(), VT_BSTR);
    EXPECT_EQ(view(get(L"Text").get().bstrVal), L"before");
    EXPECT_EQ(get(L"Root").type(), VT_DISPATCH);
    EXPECT_EQ(get(L"Root").get().pdispVal, nullptr);
}

TEST_F(AppCommandTests, NamesAreExact)
{
    for (const wchar_t* name : {L"number", L"NUMBER", L"Number ", L" Number", L"Numbe", L"Numbers", L""})
    {
        EXPECT_TRUE(get(name).isEmpty());
        EXPECT_EQ(let(name, Variant(5L)), S_OK);
    }
    Variant value(1L);
    EXPECT_EQ(interface_->get_Operand(nullptr, value.put()), S_OK);
    EXPECT_TRUE(value.isEmpty());
    EXPECT_EQ(interface_->put_Operand(nullptr, Variant(5L).get()), S_OK);
    const std::wstring withNull(L"Number\0", 7);
    EXPECT_EQ(interface_->put_Operand(Bstr(withNull).get(), Variant(5L).get()), S_OK);
    EXPECT_EQ(command->number, 11);
}

TEST_F(AppCommandTests, AnUnknownNameTakesAnyValue)
{
    EXPECT_EQ(let(L"Colour", Variant(Bstr(L"no number"))), S_OK);
    EXPECT_EQ(let(L"Colour", variant(VT_ERROR)), S_OK);
}

TEST_F(AppCommandTests, TheFirstOfTwoRowsWithOneNameCounts)
{
    EXPECT_EQ(let(L"Number", Variant(5L)), S_OK);
    EXPECT_EQ(command->number, 5);
    EXPECT_EQ(command->shadowed, 0);
}

TEST_F(AppCommandTests, NumbersOfEveryTypeBecomeALong)
{
    const std::pair<VARIANT, long> numbers[] = {
        {variant(VT_I1, &VARIANT::cVal, -3), -3},
        {variant(VT_UI1, &VARIANT::bVal, 200), 200},
        {variant(VT_I2, &VARIANT::iVal, -300), -300},
        {variant(VT_UI2, &VARIANT::uiVal, 60000), 60000},
        {variant(VT_I4, &VARIANT::lVal, -70000), -70000},
        {variant(VT_UI4, &VARIANT::ulVal, 70000), 70000},
        {variant(VT_INT, &VARIANT::intVal, 8), 8},
        {variant(VT_UINT, &VARIANT::uintVal, 9), 9},
        {variant(VT_I8, &VARIANT::llVal, -5), -5},
        {variant(VT_UI8, &VARIANT::ullVal, 6), 6},
        {variant(VT_R4, &VARIANT::fltVal, 7), 7},
        {variant(VT_CY, &VARIANT::llVal, 120000), 12},
        {variant(VT_BOOL, &VARIANT::boolVal, VARIANT_TRUE), -1},
        {variant(VT_BOOL, &VARIANT::boolVal, VARIANT_FALSE), 0},
        {variant(VT_EMPTY), 0},
    };
    for (const auto& [number, expected] : numbers)
        EXPECT_EQ(stored(number), expected) << "type " << number.vt;
}

TEST_F(AppCommandTests, FractionsAreRoundedToTheEvenNumber)
{
    for (const auto& [fraction, expected] :
         {std::pair{1.4, 1L}, {1.6, 2L}, {2.5, 2L}, {3.5, 4L}, {-2.5, -2L}, {45000.5, 45000L}})
        EXPECT_EQ(stored(variant(VT_R8, &VARIANT::dblVal, fraction)), expected) << fraction;
    EXPECT_EQ(stored(Variant(OleDate{45001.5}).get()), 45002);
}

TEST_F(AppCommandTests, TextsBecomeALongByTheUsersLocale)
{
    EXPECT_EQ(stored(Variant(Bstr(L"17")).get()), 17);
    EXPECT_EQ(stored(Variant(Bstr(L" -17 ")).get()), -17);
    // What the platform writes in the user's locale is read back.
    Bstr local;
    require(VarBstrFromR8(1234.75, LOCALE_USER_DEFAULT, 0, local.put()));
    EXPECT_EQ(stored(Variant(local).get()), 1235);
}

TEST_F(AppCommandTests, WhatIsNoNumberIsATypeMismatch)
{
    EXPECT_EQ(refused(Variant(Bstr(L"")).get()), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(refused(Variant(Bstr(L"Drivers")).get()), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(refused(variant(VT_NULL)), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(refused(variant(VT_ERROR, &VARIANT::scode, DISP_E_PARAMNOTFOUND)), DISP_E_TYPEMISMATCH);
}

TEST_F(AppCommandTests, ANumberBeyondALongOverflows)
{
    EXPECT_EQ(refused(variant(VT_R8, &VARIANT::dblVal, 2147483648.0)), DISP_E_OVERFLOW);
    EXPECT_EQ(refused(variant(VT_I8, &VARIANT::llVal, 1LL << 40)), DISP_E_OVERFLOW);
    EXPECT_EQ(refused(Variant(Bstr(L"99999999999")).get()), DISP_E_OVERFLOW);
}

TEST_F(AppCommandTests, ReferencesAreFollowed)
{
    long number = 21;
    SHORT small = 22;
    Bstr text(L"23");
    VARIANT inner = Variant(24L).get();
    EXPECT_EQ(stored(variant(VT_BYREF | VT_I4, &VARIANT::plVal, &number)), 21);
    EXPECT_EQ(stored(variant(VT_BYREF | VT_I2, &VARIANT::piVal, &small)), 22);
    EXPECT_EQ(stored(variant(VT_BYREF | VT_BSTR, &VARIANT::pbstrVal, text.inOut())), 23);
    EXPECT_EQ(stored(variant(VT_BYREF | VT_VARIANT, &VARIANT::pvarVal, &inner)), 24);
    inner = variant(VT_NULL);
    EXPECT_EQ(refused(variant(VT_BYREF | VT_VARIANT, &VARIANT::pvarVal, &inner)), DISP_E_TYPEMISMATCH);
}

TEST_F(AppCommandTests, TheDefaultPropertyOfAnObjectIsItsValue)
{
    const ComPtr<IDispatch> object(new NumberObject(31));
    EXPECT_EQ(stored(Variant(object).get()), 31);
    EXPECT_EQ(let(L"Text", Variant(object)), S_OK);
    EXPECT_EQ(command->text, L"31");
}

TEST_F(AppCommandTests, TheValueBelongsToTheCaller)
{
    const Variant value(Bstr(L"Drivers"));
    EXPECT_EQ(let(L"Text", value), S_OK);
    EXPECT_EQ(view(value.get().bstrVal), L"Drivers");
    EXPECT_NE(command->text.get(), value.get().bstrVal);
    const Variant first = get(L"Text");
    EXPECT_NE(first.get().bstrVal, command->text.get());
}

TEST_F(AppCommandTests, TextsAreMadeOfEveryValue)
{
    EXPECT_EQ(let(L"Text", Variant(17L)), S_OK);
    EXPECT_EQ(command->text, L"17");
    EXPECT_EQ(let(L"Text", variant(VT_EMPTY)), S_OK);
    EXPECT_EQ(command->text, L"");
    Bstr byReference(L"referred");
    EXPECT_EQ(let(L"Text", variant(VT_BYREF | VT_BSTR, &VARIANT::pbstrVal, byReference.inOut())), S_OK);
    EXPECT_EQ(command->text, L"referred");
    EXPECT_EQ(let(L"Text", variant(VT_BSTR)), S_OK); // a null BSTR is an empty text
    EXPECT_EQ(command->text, L"");
    const std::wstring withNull(L"a\0b", 3);
    EXPECT_EQ(let(L"Text", Variant(Bstr(withNull))), S_OK);
    EXPECT_EQ(command->text, withNull);
    EXPECT_EQ(let(L"Text", variant(VT_NULL)), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(command->text, withNull);
}

TEST_F(AppCommandTests, FlagsAndDatesAreConverted)
{
    EXPECT_EQ(let(L"Flag", Variant(5L)), S_OK);
    EXPECT_TRUE(command->flag);
    EXPECT_EQ(let(L"Flag", Variant(Bstr(L"0"))), S_OK);
    EXPECT_FALSE(command->flag);
    EXPECT_EQ(let(L"Flag", Variant(Bstr(L"perhaps"))), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(let(L"Date", Variant(45000L)), S_OK);
    EXPECT_EQ(command->date.days, 45000.0);
    EXPECT_EQ(let(L"Date", Variant(Bstr(L"2024-02-29"))), S_OK);
    EXPECT_EQ(command->date.days, 45351.0);
    EXPECT_EQ(let(L"Date", Variant(Bstr(L"someday"))), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(command->date.days, 45351.0);
}

TEST_F(AppCommandTests, AnObjectIsStoredAsTheInterfaceThatIsNeeded)
{
    const auto root = make<BareRoot>();
    const ComPtr<IDispatch> object(static_cast<IDispatch*>(root.get()));
    const ULONG before = root->referenceCount();
    EXPECT_EQ(let(L"Root", Variant(object)), S_OK);
    EXPECT_EQ(command->Root.get(), static_cast<IRoot*>(root.get()));
    EXPECT_EQ(root->referenceCount(), before + 1);
    const Variant read = get(L"Root");
    EXPECT_EQ(read.type(), VT_DISPATCH);
    EXPECT_EQ(ComPtr<IDispatch>(read.get().pdispVal).as<IUnknown>().get(), object.as<IUnknown>().get());
}

TEST_F(AppCommandTests, AnObjectMayComeInEveryWrapping)
{
    const auto root = make<BareRoot>();
    IUnknown* plain = static_cast<IRoot*>(root.get());
    IDispatch* dispatch = root.get();
    VARIANT inner = variant(VT_DISPATCH, &VARIANT::pdispVal, dispatch);
    for (const VARIANT& value : {variant(VT_UNKNOWN, &VARIANT::punkVal, plain),
                                 variant(VT_UNKNOWN | VT_BYREF, &VARIANT::ppunkVal, &plain),
                                 variant(VT_DISPATCH | VT_BYREF, &VARIANT::ppdispVal, &dispatch),
                                 variant(VT_VARIANT | VT_BYREF, &VARIANT::pvarVal, &inner)})
    {
        EXPECT_EQ(let(L"Root", value), S_OK) << "type " << value.vt;
        EXPECT_TRUE(command->Root) << "type " << value.vt;
        command->Root.reset();
    }
}

TEST_F(AppCommandTests, NothingClearsAnObject)
{
    command->Root = ComPtr<IRoot>(make<BareRoot>().get());
    EXPECT_EQ(let(L"Root", Variant(ComPtr<IDispatch>())), S_OK);
    EXPECT_FALSE(command->Root);
}

TEST_F(AppCommandTests, AnotherObjectIsATypeMismatchAndChangesNothing)
{
    const auto root = make<BareRoot>();
    command->Root = ComPtr<IRoot>(root.get());
    EXPECT_EQ(let(L"Root", Variant(ComPtr<IDispatch>(new NumberObject(5)))), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(let(L"Root", Variant(17L)), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(let(L"Root", Variant(Bstr(L"root"))), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(let(L"Root", variant(VT_EMPTY)), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(command->Root.get(), static_cast<IRoot*>(root.get()));
}

TEST_F(AppCommandTests, AFailedConversionLeavesNoErrorTextOfAnotherCall)
{
    leaveError(E_FAIL, L"another", L"stale");
    const ErrorInfo error = errorOf(let(L"Number", Variant(Bstr(L"Drivers"))));
    EXPECT_EQ(error.number, DISP_E_TYPEMISMATCH);
    EXPECT_NE(error.source, L"another");
    EXPECT_NE(error.description, L"stale");
}

TEST_F(AppCommandTests, TheClassIdAnswersWithTheObjectItself)
{
    void* object = nullptr;
    ASSERT_EQ(interface_->QueryInterface(*TestCommand::classId(), &object), S_OK);
    EXPECT_EQ(ComPtr<TestCommand>::adopt(static_cast<TestCommand*>(object)).get(), command.get());
}

} // namespace korvane::test
