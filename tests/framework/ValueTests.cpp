// The small owning types: BSTR, VARIANT and interface pointer, and the type information of interfaces.
#include "framework/com/Boundary.h"
#include "framework/com/Decimal.h"
#include "framework/com/MemberTable.h"
#include "framework/com/Object.h"
#include "tests/support/Library.h"

#include <KorvaneDlg.h>

#include <gmock/gmock.h>

#include <limits>

namespace korvane::test
{

namespace
{

/// Counts what is asked of it.
class Counted final : public Object<Counted, Inherits<IPersist>, IPersist>
{
public:
    STDMETHODIMP GetClassID(CLSID*) override { return E_NOTIMPL; }
};

HRESULT failureOf(const std::function<void()>& body)
{
    const auto failure = attempt(body);
    return failure ? failure->number() : S_OK;
}

} // namespace

TEST(BstrTests, OwnsACopyOfItsText)
{
    const std::wstring text(L"with\0null", 9);
    const Bstr first(text);
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what is tested
    const Bstr second = first;
    EXPECT_EQ(first, text);
    EXPECT_EQ(second, text);
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(SysStringLen(second.get()), 9U);
}

TEST(BstrTests, AnEmptyOneIsNullUntilItIsGivenAway)
{
    Bstr empty;
    EXPECT_TRUE(empty.empty());
    EXPECT_EQ(empty.get(), nullptr);
    EXPECT_STREQ(empty.c_str(), L"");
    EXPECT_EQ(empty, L"");
    const BSTR given = empty.detach();
    EXPECT_NE(given, nullptr);
    SysFreeString(given);
    EXPECT_TRUE(empty.empty());
}

TEST(BstrTests, MovesAndAdopts)
{
    Bstr first = Bstr::adopt(SysAllocString(L"text"));
    const BSTR held = first.get();
    Bstr second(std::move(first));
    EXPECT_EQ(second.get(), held);
    first = std::move(second);
    EXPECT_EQ(first.get(), held);
    *first.put() = SysAllocString(L"other");
    EXPECT_EQ(first, L"other");
    EXPECT_TRUE(SysReAllocString(first.inOut(), L"longer than before"));
    EXPECT_EQ(first, L"longer than before");
}

TEST(VariantTests, HoldsWhatItIsMadeOf)
{
    EXPECT_TRUE(Variant().isEmpty());
    EXPECT_EQ(Variant(5L).get().lVal, 5);
    EXPECT_EQ(Variant(true).get().boolVal, VARIANT_TRUE);
    EXPECT_EQ(Variant(false).get().boolVal, VARIANT_FALSE);
    EXPECT_EQ(Variant(OleDate{1.25}).get().date, 1.25);
    EXPECT_EQ(Variant(Bstr(L"text")).type(), VT_BSTR);
    EXPECT_NE(Variant(Bstr()).get().bstrVal, nullptr);
    EXPECT_EQ(Variant(ComPtr<IDispatch>()).type(), VT_DISPATCH);
}

TEST(VariantTests, CopiesDeeply)
{
    const Variant first(Bstr(L"text"));
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what is tested
    const Variant second = first;
    EXPECT_NE(first.get().bstrVal, second.get().bstrVal);
    EXPECT_EQ(view(second.get().bstrVal), L"text");
    Variant third;
    third = second;
    EXPECT_EQ(view(third.get().bstrVal), L"text");
    Variant fourth(std::move(third));
    EXPECT_TRUE(third.isEmpty()); // NOLINT(bugprone-use-after-move): what a move leaves is what is tested
    EXPECT_EQ(view(fourth.get().bstrVal), L"text");
}

TEST(VariantTests, IsClearedWhereItIsFilledAgain)
{
    Variant value(Bstr(L"text"));
    EXPECT_EQ(value.put()->vt, VT_EMPTY);
    VARIANT given = Variant(Bstr(L"given")).detach();
    EXPECT_EQ(view(given.bstrVal), L"given");
    VariantClear(&given);
}

TEST(VariantTests, FollowsReferencesToReferences)
{
    VARIANT inner = Variant(7L).get();
    VARIANT outer;
    VariantInit(&outer);
    outer.vt = VT_BYREF | VT_VARIANT;
    outer.pvarVal = &inner;
    EXPECT_EQ(Variant::valueOf(outer).get().lVal, 7);
    EXPECT_EQ(toLong(outer), 7);
}

TEST(VariantTests, ObjectsAreTakenFromObjectsOnly)
{
    EXPECT_FALSE(toObject(Variant(ComPtr<IDispatch>()).get()));
    EXPECT_EQ(failureOf([] { toObject(Variant(7L).get()); }), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(failureOf([] { toObject(Variant().get()); }), DISP_E_TYPEMISMATCH);
}

TEST(ComPtrTests, SharesAdoptsAndGivesAway)
{
    const auto object = make<Counted>();
    EXPECT_EQ(object->referenceCount(), 1U);
    {
        const ComPtr<IPersist> shared(object.get());
        EXPECT_EQ(object->referenceCount(), 2U);
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what is tested
        const ComPtr<IPersist> copy = shared;
        EXPECT_EQ(object->referenceCount(), 3U);
        ComPtr<IPersist> moved = ComPtr(copy);
        EXPECT_EQ(object->referenceCount(), 4U);
        IPersist* given = moved.detach();
        EXPECT_FALSE(moved);
        EXPECT_EQ(object->referenceCount(), 4U);
        const auto adopted = ComPtr<IPersist>::adopt(given);
        EXPECT_EQ(object->referenceCount(), 4U);
    }
    EXPECT_EQ(object->referenceCount(), 1U);
}

TEST(ComPtrTests, ReplacesWhatItHeld)
{
    const auto first = make<Counted>();
    const auto second = make<Counted>();
    ComPtr<IPersist> pointer(first.get());
    pointer = ComPtr<IPersist>(second.get());
    EXPECT_EQ(first->referenceCount(), 1U);
    EXPECT_EQ(second->referenceCount(), 2U);
    pointer = ComPtr<IPersist>(pointer.get()); // to itself
    EXPECT_EQ(second->referenceCount(), 2U);
    EXPECT_EQ(*pointer.put(), nullptr);
    EXPECT_EQ(second->referenceCount(), 1U);
}

TEST(ComPtrTests, AsksForOtherInterfaces)
{
    const auto object = make<Counted>();
    EXPECT_TRUE(object.as<IPersist>());
    EXPECT_TRUE(object.as<ISupportErrorInfo>());
    EXPECT_FALSE(object.as<IDispatch>());
    EXPECT_FALSE(ComPtr<IPersist>().as<IPersist>());
    EXPECT_FALSE(queryFor<IPersist>(nullptr));
    EXPECT_EQ(object->referenceCount(), 1U);
}

TEST(TypeInfoTests, ComesFromEveryLibraryOfTheModule)
{
    for (const IID& iid :
         {__uuidof(IEditGroups), __uuidof(IAppCommand), __uuidof(IAppDialog), __uuidof(IRoot)})
    {
        const auto information = typeInfoOf(iid);
        TYPEATTR* attributes = nullptr;
        ASSERT_EQ(information->GetTypeAttr(&attributes), S_OK);
        EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FDUAL, 0);
        information->ReleaseTypeAttr(attributes);
    }
    EXPECT_TRUE(typeInfoOf(__uuidof(::EditGroups)));
}

TEST(TypeInfoTests, OfAnUndescribedInterfaceIsAFailure)
{
    EXPECT_TRUE(FAILED(failureOf([] { typeInfoOf(__uuidof(IPersist)); })));
}

namespace
{

class MemberTableTests : public testing::Test
{
protected:
    static const MemberTable& table()
    {
        static MemberTableSlot slot;
        const IID* const ids[] = {&__uuidof(IEditGroups), nullptr, &__uuidof(IAppCommand)};
        return memberTable(slot, ids);
    }
};

} // namespace

TEST_F(MemberTableTests, FindsMembersByNameWhateverTheCase)
{
    for (const wchar_t* name : {L"GroupID", L"groupid", L"GROUPID"})
    {
        const MemberEntry* member = table().find(std::wstring_view(name));
        ASSERT_NE(member, nullptr);
        EXPECT_EQ(member->id, 102);
        EXPECT_EQ(member->name, L"GroupID");
    }
}

TEST_F(MemberTableTests, LeadsToTheInterfaceThatDeclaresAMember)
{
    EXPECT_EQ(table().find(std::wstring_view(L"GroupName"))->face, 0U);
    EXPECT_EQ(table().find(std::wstring_view(L"Operand"))->face, 2U);
    EXPECT_EQ(table().find(DISPID{104})->face, 0U);
    EXPECT_EQ(table().find(DISPID{4})->face, 2U);
    EXPECT_EQ(table().information(1), nullptr);
}

// Tools that ask an object for its type information look for the library's name and id in it.
TEST_F(MemberTableTests, TellsTheLibraryThatIsRegistered)
{
    ComPtr<ITypeLib> library;
    UINT index = 0;
    ASSERT_EQ(table().information()->GetContainingTypeLib(library.put(), &index), S_OK);
    Bstr help;
    ASSERT_EQ(library->GetDocumentation(-1, nullptr, help.put(), nullptr, nullptr), S_OK);
    EXPECT_EQ(help.view(), L"Korvane dialog library");
}

TEST_F(MemberTableTests, DoesNotFindWhatIsNotThere)
{
    for (const wchar_t* name : {L"", L"Group", L"GroupIDs", L"A", L"zzz", L"Gr\x00f6upID", L"AddRef"})
        EXPECT_EQ(table().find(std::wstring_view(name)), nullptr);
    EXPECT_EQ(table().find(DISPID{7777}), nullptr);
    EXPECT_EQ(table().find(DISPID_UNKNOWN), nullptr);
}

TEST_F(MemberTableTests, IsKeptUntilItIsReleased)
{
    const MemberTable& kept = table();
    const ComPtr<ITypeInfo> information(kept.information());
    EXPECT_EQ(&table(), &kept);
    releaseMemberTables();
    information->AddRef();
    EXPECT_EQ(information->Release(), 1U);
    EXPECT_EQ(table().find(DISPID{4})->name, L"Operand");
}

TEST_F(MemberTableTests, OfAnUndescribedInterfaceIsAFailure)
{
    MemberTableSlot slot;
    const IID* const ids[] = {&__uuidof(IPersist)};
    EXPECT_TRUE(FAILED(failureOf([&] { memberTable(slot, ids); })));
    EXPECT_EQ(slot.table, nullptr);
}

TEST(DecimalTests, WritesEveryNumber)
{
    EXPECT_EQ(decimal(0), L"0");
    EXPECT_EQ(decimal(-17), L"-17");
    EXPECT_EQ(decimal(std::numeric_limits<long>::max()), L"2147483647");
    EXPECT_EQ(decimal(std::numeric_limits<long>::min()), L"-2147483648");
}

} // namespace korvane::test
