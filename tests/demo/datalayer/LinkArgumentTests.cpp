#include "tests/demo/datalayer/ActivityTest.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class LinkArguments : public ActivityTest
{
protected:
    void add(const VARIANT& names) const
    {
        call(desk->links, &IEventLinks::AddNames, Variant(link).get(), names);
    }

    void expectRefused(const VARIANT& names) const
    {
        Variant left;
        EXPECT_REFUSED(add(names), Code::namesExpected, L"EventLinks");
        EXPECT_REFUSED(call(desk->links, &IEventLinks::RemoveNames, Variant(link).get(), names, left.put()),
                       Code::namesExpected, L"EventLinks");
    }

    long link = *desk->create(desk->add(meeting()));
    const Lines both{L"1, 2", L"2, 3"};
};

VARIANT referenceTo(const Variant& value)
{
    VARIANT result{};
    result.vt = VT_BYREF | VT_VARIANT;
    result.pvarVal = const_cast<VARIANT*>(&value.get());
    return result;
}

} // namespace

TEST_F(LinkArguments, TakeAnArray)
{
    add(arrayOf({bert}).get());
    EXPECT_EQ(both, desk->members(link));
}

TEST_F(LinkArguments, TakeAnArrayByReference)
{
    const Variant array = arrayOf({bert});
    SAFEARRAY* held = array.get().parray;
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
    reference.pparray = &held;
    add(reference);
    EXPECT_EQ(both, desk->members(link));
}

TEST_F(LinkArguments, TakeAReferenceToAnArray)
{
    const Variant array = arrayOf({bert});
    add(referenceTo(array));
    EXPECT_EQ(both, desk->members(link));
}

TEST_F(LinkArguments, TakeShortNumbersAndReferencesInTheArray)
{
    Variant array = arrayOf({0, 0});
    long name = van;
    VARIANT* elements = nullptr;
    require(SafeArrayAccessData(array.get().parray, reinterpret_cast<void**>(&elements)));
    elements[0].vt = VT_I2;
    elements[0].iVal = static_cast<SHORT>(bert);
    elements[1].vt = VT_I4 | VT_BYREF;
    elements[1].plVal = &name;
    require(SafeArrayUnaccessData(array.get().parray));
    add(array.get());
    EXPECT_EQ((Lines{L"1, 2", L"2, 3", L"3, 5"}), desk->members(link));
}

TEST_F(LinkArguments, TakeAnArrayThatWasNeverGivenASize)
{
    VARIANT none{};
    none.vt = VT_ARRAY | VT_VARIANT;
    add(none);
    EXPECT_EQ(Lines{L"1, 2"}, desk->members(link));
}

TEST_F(LinkArguments, AreNothingElse)
{
    expectRefused(VARIANT{});
    expectRefused(Variant(bert).get());
    expectRefused(Variant(Bstr(L"3")).get());
    expectRefused(referenceTo(Variant(bert)));
}

TEST_F(LinkArguments, AreNoOtherArrays)
{
    Variant numbers;
    numbers.put()->vt = VT_ARRAY | VT_I4;
    const_cast<VARIANT&>(numbers.get()).parray = SafeArrayCreateVector(VT_I4, 0, 1);
    expectRefused(numbers.get());

    SAFEARRAYBOUND bounds[2] = {{1, 0}, {1, 0}};
    Variant table;
    table.put()->vt = VT_ARRAY | VT_VARIANT;
    const_cast<VARIANT&>(table.get()).parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
    expectRefused(table.get());
}

TEST_F(LinkArguments, AreNoArraysOfOtherThings)
{
    const Variant array = arrayOf({bert, van});
    LONG index = 1;
    Variant text(Bstr(L"5"));
    require(SafeArrayPutElement(array.get().parray, &index, &const_cast<VARIANT&>(text.get())));
    expectRefused(array.get());
}

TEST_F(LinkArguments, TakeTheLinkIdByReference)
{
    const Variant id(link);
    call(desk->links, &IEventLinks::AddNames, referenceTo(id), arrayOf({bert}).get());
    EXPECT_EQ(both, desk->members(link));
}

TEST_F(LinkArguments, AddNamesToNothingWhereTheLinkIsEmpty)
{
    const std::wstring untouched = content();
    call(desk->links, &IEventLinks::AddNames, VARIANT{}, arrayOf({bert}).get());
    EXPECT_EQ(untouched, content());
    EXPECT_REFUSED(call(desk->links, &IEventLinks::AddNames, VARIANT{}, VARIANT{}), Code::namesExpected,
                   L"EventLinks");
}

TEST_F(LinkArguments, RefuseALinkIdThatIsNoNumber)
{
    EXPECT_REFUSED(
        call(desk->links, &IEventLinks::AddNames, Variant(Bstr(L"x")).get(), arrayOf({bert}).get()),
        Code::unknownLink, L"EventLinks");
}
