// Calls with their results, late-bound calls, and tables of texts.
#include "framework/com/LateBound.h"
#include "framework/com/Object.h"
#include "framework/com/SafeArray.h"
#include "tests/support/EmptyData.h"
#include "tests/support/PlainObject.h"

#include <gtest/gtest.h>

namespace korvane::test
{

namespace
{

HRESULT failureOf(const std::function<void()>& body)
{
    const auto failure = attempt(body);
    return failure ? failure->number() : S_OK;
}

/// No object: to touch it is to crash.
template <class Interface> Interface* rubbish()
{
    return reinterpret_cast<Interface*>(UINT_PTR{0x10});
}

/// Fails, and leaves rubbish in what it is to give out.
class CarelessRoot final : public Object<CarelessRoot, Inherits<EmptyRoot>, IRoot>
{
public:
    STDMETHODIMP get_Groups(IGroups** collection) override
    {
        *collection = rubbish<IGroups>();
        return E_ACCESSDENIED;
    }
};

class CarelessUnknown final : public IUnknown
{
public:
    STDMETHODIMP QueryInterface(REFIID, void** object) override
    {
        *object = rubbish<void>();
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
};

/// Empties the pointer through which it is called, and fails when that ends it in its own call.
class ShyRoot final : public Object<ShyRoot, Inherits<EmptyRoot>, IRoot>
{
public:
    ShyRoot(ComPtr<IRoot>& caller, bool& alive) : caller_(caller), alive_(alive) { alive_ = true; }
    ~ShyRoot() { alive_ = false; }

    STDMETHODIMP get_Groups(IGroups** collection) override
    {
        const bool& alive = alive_; // not a member of what may be gone
        *collection = nullptr;
        caller_.reset();
        return alive ? S_OK : E_UNEXPECTED;
    }

private:
    ComPtr<IRoot>& caller_;
    bool& alive_;
};

class CleanGroups final : public Object<CleanGroups, Inherits<EmptyGroups>, IGroups>
{
public:
    STDMETHODIMP HasAccess(long operation, long id, VARIANT_BOOL* granted) override
    {
        return returns(granted, [&] { return operation == 3 && id == 4; });
    }
    STDMETHODIMP Add(BSTR name, long flags, long* id) override
    {
        return returns(id, [&] { return static_cast<long>(view(name).size()) + flags; });
    }
};

/// Empties the pointer through which it is called when it is asked for a name.
class ShyObject final : public PlainObject<>
{
public:
    explicit ShyObject(ComPtr<IDispatch>& caller) : caller_(caller) {}

    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* id) override
    {
        *id = 1;
        caller_.reset();
        return S_OK;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override
    {
        *result = Variant(7L).detach();
        return S_OK;
    }

private:
    ComPtr<IDispatch>& caller_;
};

ComPtr<IDispatch> dictionary()
{
    return createByProgId<IDispatch>(L"Scripting.Dictionary");
}

} // namespace

TEST(FetchTests, TheLastParameterIsTheResult)
{
    const ComPtr<IGroups> groups = make<CleanGroups>().as<IGroups>();
    EXPECT_TRUE(fetch(groups, &IGroups::HasAccess, 3L, 4L));
    EXPECT_FALSE(fetch(groups, &IGroups::HasAccess, 3L, 5L));
    EXPECT_EQ(fetch(groups, &IGroups::Add, Bstr(L"Vans").get(), 3L), 7);
    EXPECT_EQ(failureOf([] { fetch(ComPtr<IGroups>(), &IGroups::HasAccess, 3L, 4L); }), E_POINTER);
    EXPECT_FALSE(fetchIfAny(ComPtr<IGroups>(), &IGroups::HasAccess, 3L, 4L));
}

TEST(FetchTests, WhatAFailingCallLeavesBehindIsNotTouched)
{
    const ComPtr<IRoot> root = make<CarelessRoot>().as<IRoot>();
    EXPECT_EQ(failureOf([&] { fetch(root, &IRoot::get_Groups); }), E_ACCESSDENIED);
    EXPECT_FALSE(fetchIfAny(root, &IRoot::get_Groups));
    CarelessUnknown careless;
    EXPECT_FALSE(ComPtr<IUnknown>(&careless).as<IRoot>());
}

TEST(FetchTests, AnObjectIsHeldWhileItIsCalled)
{
    bool alive = false;
    ComPtr<IRoot> root;
    root = make<ShyRoot>(root, alive).as<IRoot>();
    EXPECT_EQ(failureOf([&] { fetch(root, &IRoot::get_Groups); }), S_OK);
    EXPECT_FALSE(root);
    EXPECT_FALSE(alive); // and not longer
}

TEST(LateBoundTests, MembersAreCalledByTheirNames)
{
    const auto words = dictionary();
    invoke(words, L"Add", {Variant(Bstr(L"one")), Variant(1L)});
    invoke(words, L"add", {Variant(Bstr(L"two")), Variant(2L)});
    EXPECT_EQ(toLong(get(words, L"Count").get()), 2);
    EXPECT_EQ(toLong(get(words, L"Item", {Variant(Bstr(L"two"))}).get()), 2);
    EXPECT_TRUE(toBool(invoke(words, L"Exists", {Variant(Bstr(L"one"))}).get()));
}

TEST(LateBoundTests, AnObjectIsHeldFromItsNamesToItsCall)
{
    ComPtr<IDispatch> object;
    object = ComPtr<IDispatch>(new ShyObject(object));
    EXPECT_EQ(toLong(get(object, L"Number").get()), 7);
    EXPECT_FALSE(object);
}

TEST(LateBoundTests, TheObjectsFailureIsThrown)
{
    const auto words = dictionary();
    invoke(words, L"Add", {Variant(Bstr(L"one")), Variant(1L)});
    // The number of a key that is there already.
    EXPECT_EQ(failureOf([&] { invoke(words, L"Add", {Variant(Bstr(L"one")), Variant(2L)}); }),
              static_cast<HRESULT>(0x800A01C9));
    EXPECT_EQ(failureOf([&] { get(words, L"Nothing"); }), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(failureOf([&] { get(ComPtr<IDispatch>(), L"Count"); }), E_POINTER);
}

TEST(LateBoundTests, WhatAnObjectDoesNotHaveIsEmptyWhereThatIsNoFailure)
{
    EXPECT_TRUE(getIfAny(dictionary(), L"Nothing").isEmpty());
    EXPECT_TRUE(getIfAny(nullptr, L"Count").isEmpty());
    EXPECT_EQ(toLong(getIfAny(dictionary(), L"Count").get()), 0);
}

TEST(LateBoundTests, AClassThatIsNotThereIsAFailure)
{
    EXPECT_EQ(failureOf([] { createObject(L"Korvane.Nothing"); }), CO_E_CLASSSTRING);
    EXPECT_EQ(failureOf([] { createByProgId<IRoot>(L"Scripting.Dictionary"); }), E_NOINTERFACE);
}

TEST(TextTableTests, GoesRoundThroughAnArray)
{
    TextTable table(2, 3);
    table.at(0, 2) = Bstr(L"first row");
    table.at(1, 0) = Bstr(L"second row");
    const TextTable back(table.toArray().get());
    EXPECT_EQ(back.rows(), 2U);
    EXPECT_EQ(back.columns(), 3U);
    EXPECT_EQ(back.at(0, 2), L"first row");
    EXPECT_EQ(back.at(1, 0), L"second row");
    EXPECT_EQ(back.at(1, 1), L"");
}

TEST(TextTableTests, TheFirstIndexIsTheRowForTheCallerToo)
{
    TextTable table(2, 3);
    table.at(1, 2) = Bstr(L"here");
    const Variant array = table.toArray();
    EXPECT_EQ(array.type(), VT_ARRAY | VT_BSTR);
    LONG place[] = {1, 2};
    Bstr text;
    EXPECT_EQ(SafeArrayGetElement(array.get().parray, place, text.put()), S_OK);
    EXPECT_EQ(text, L"here");
}

TEST(TextTableTests, ValuesAreConvertedAndBoundsNeedNotBeginAtZero)
{
    SAFEARRAYBOUND bounds[] = {{2, 1}, {1, 5}};
    VARIANT value{};
    value.vt = VT_ARRAY | VT_VARIANT;
    value.parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
    LONG place[] = {2, 5};
    VARIANT number = Variant(17L).get();
    EXPECT_EQ(SafeArrayPutElement(value.parray, place, &number), S_OK);
    const Variant array = Variant::adopt(value);
    const TextTable table(array.get());
    EXPECT_EQ(table.rows(), 2U);
    EXPECT_EQ(table.at(0, 0), L"");
    EXPECT_EQ(table.at(1, 0), L"17");
}

TEST(TextTableTests, AnythingElseIsRefused)
{
    EXPECT_EQ(failureOf([] { TextTable(Variant(7L).get()); }), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(failureOf([] { TextTable(Variant().get()); }), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(failureOf([] { TextTable(arrayOf({1, 2}).get()); }), DISP_E_BADINDEX);
    EXPECT_EQ(TextTable(TextTable(0, 2).toArray().get()).rows(), 0U);
}

} // namespace korvane::test
