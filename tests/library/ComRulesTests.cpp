// Every public class of the library obeys the rules of COM.
#include "tests/support/ComRules.h"

#include <KorvaneDlg.h>

#include <gmock/gmock.h>
#include <objsafe.h>

#include <map>
#include <set>

namespace korvane::test
{

// For the messages of tests.
void PrintTo(const PublicClass& publicClass, std::ostream* stream)
{
    *stream << narrow(publicClass.name);
}

namespace
{

class ComRulesTests : public testing::TestWithParam<PublicClass>
{
protected:
    ComPtr<IUnknown> object = create<IUnknown>(GetParam().id);
};

/// The rules of OLE controls, for the dialogs.
class ControlRulesTests : public ComRulesTests
{
};

std::vector<PublicClass> controls()
{
    std::vector<PublicClass> found = publicClasses();
    std::erase_if(found, [](const PublicClass& publicClass) { return !publicClass.control; });
    return found;
}

INSTANTIATE_TEST_SUITE_P(EveryClass, ComRulesTests, testing::ValuesIn(publicClasses()),
                         [](const auto& tested) { return narrow(tested.param.name); });
INSTANTIATE_TEST_SUITE_P(EveryControl, ControlRulesTests, testing::ValuesIn(controls()),
                         [](const auto& tested) { return narrow(tested.param.name); });

/// What an out pointer holds that nobody has cleared.
template <class Pointer> Pointer poisoned()
{
    return reinterpret_cast<Pointer>(static_cast<UINT_PTR>(0xdeadbeef));
}

} // namespace

TEST_P(ComRulesTests, AnObjectIsOneObjectThroughAllItsInterfaces)
{
    expectOneIdentity(object.get());
}

TEST_P(ComRulesTests, AnObjectHasTheInterfacesThatItsClassPromises)
{
    for (const IID& iid : GetParam().interfaces)
    {
        ComPtr<IUnknown> found;
        EXPECT_EQ(object->QueryInterface(iid, found.putVoid()), S_OK)
            << narrow(nameOf(vtableInfo(iid).get()));
    }
}

TEST_P(ComRulesTests, ADialogIsAnAppDialogAndACommandAnAppCommand)
{
    const bool helper = GetParam().name == L"AppDialogEvents" || GetParam().name == L"Resources";
    EXPECT_EQ(static_cast<bool>(object.as<IAppDialog>()), GetParam().control);
    EXPECT_EQ(static_cast<bool>(object.as<IAppCommand>()), !GetParam().control && !helper);
}

TEST_P(ComRulesTests, TheDefaultInterfaceIsTheOneOfLateBinding)
{
    const auto dispatch = object.as<IDispatch>();
    ASSERT_TRUE(dispatch);
    UINT count = 0;
    EXPECT_EQ(dispatch->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1U);
    ComPtr<ITypeInfo> information;
    ASSERT_EQ(dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, information.put()), S_OK);
    EXPECT_EQ(nameOf(information.get()), nameOf(vtableInfo(GetParam().interfaces.at(0)).get()));
    EXPECT_EQ(dispatch->GetTypeInfo(1, LOCALE_USER_DEFAULT, information.put()), DISP_E_BADINDEX);
    EXPECT_FALSE(information);
}

// Object browsers, and languages that bind early, see nothing but this.
TEST_P(ComRulesTests, TypeInformationTellsWhatLateBindingAccepts)
{
    const auto dispatch = object.as<IDispatch>();
    ComPtr<ITypeInfo> information;
    ASSERT_EQ(dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, information.put()), S_OK);
    std::set<std::pair<std::wstring, INVOKEKIND>> told;
    std::map<std::wstring, MEMBERID> ids;
    std::map<MEMBERID, std::wstring> names;
    for (const Member& member : membersOf(information.get()))
    {
        if (member.id >= 0x60000000) // of IDispatch
            continue;
        SCOPED_TRACE(narrow(member.declaration));
        told.emplace(member.name, member.kind);
        EXPECT_EQ(ids.try_emplace(member.name, member.id).first->second, member.id);
        EXPECT_EQ(names.try_emplace(member.id, member.name).first->second, member.name);
        std::wstring name = member.name;
        LPOLESTR asked[] = {name.data()};
        DISPID id = DISPID_UNKNOWN;
        EXPECT_EQ(dispatch->GetIDsOfNames(IID_NULL, asked, 1, LOCALE_USER_DEFAULT, &id), S_OK);
        EXPECT_EQ(id, member.id);
        DISPPARAMS none{};
        EXPECT_NE(dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(member.kind), &none,
                                   nullptr, nullptr, nullptr),
                  DISP_E_MEMBERNOTFOUND);
    }

    std::set<std::pair<std::wstring, INVOKEKIND>> accepted;
    for (const IID& iid : dualInterfacesOf(object.get()))
    {
        // Its three contracts stand side by side, and a class tells one of them. A dialog's notifier is reached, and its
        // type told, by the property Notifier.
        const bool further = (GetParam().name == L"Resources" && iid != GetParam().interfaces.at(0)) ||
                             iid == __uuidof(IXtExecuteEvents);
        for (const Member& member : membersOf(vtableInfo(iid).get()))
            if (!further)
                accepted.emplace(member.name, member.kind);
    }
    EXPECT_EQ(told, accepted);
}

// As a script does that assigns an object without Set.
TEST_P(ComRulesTests, APropertyThatHoldsAnObjectIsPutByValueToo)
{
    const auto dispatch = object.as<IDispatch>();
    for (const IID& iid : dualInterfacesOf(object.get()))
        for (const Member& member : membersOf(vtableInfo(iid).get()))
        {
            if (member.kind != INVOKE_PROPERTYPUTREF)
                continue;
            VARIANT nothing{};
            nothing.vt = VT_DISPATCH;
            DISPID put = DISPID_PROPERTYPUT;
            DISPPARAMS parameters{&nothing, &put, 1, 1};
            const auto outcome = [&](WORD kind) {
                return dispatch->Invoke(member.id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, nullptr,
                                        nullptr, nullptr);
            };
            EXPECT_NE(outcome(DISPATCH_PROPERTYPUT), DISP_E_MEMBERNOTFOUND) << narrow(member.name);
            EXPECT_EQ(outcome(DISPATCH_PROPERTYPUT), outcome(DISPATCH_PROPERTYPUTREF)) << narrow(member.name);
        }
}

TEST_P(ComRulesTests, ReferencesAreBalanced)
{
    expectBalancedReferences(object.get());
}

TEST_P(ComRulesTests, ANullPointerForAResultIsRefused)
{
    expectNullResultsRefused(object.get());
}

TEST_P(ComRulesTests, AMemberThatFailsLeavesNothingInItsResults)
{
    expectResultsClearedOnFailure(object.get());
}

TEST_P(ComRulesTests, LateBindingReachesEveryMemberAsTheVtableDoes)
{
    expectLateBindingAgrees(object.get());
}

TEST_P(ComRulesTests, ErrorInformationIsPromisedForTheDualInterfacesOnly)
{
    expectErrorSupport(object.get());
}

TEST_P(ComRulesTests, AggregationIsRefused)
{
    expectNoAggregation(GetParam());
}

TEST_P(ComRulesTests, AnUnknownInterfaceIsNotCreated)
{
    void* poison = this;
    EXPECT_EQ(create(GetParam().id, IID_IPersistFile, &poison), E_NOINTERFACE);
    EXPECT_EQ(poison, nullptr);
}

// Dialogs write through the data layer with the rights of their host: no page of a browser may create them.
TEST_P(ComRulesTests, AnObjectDoesNotCallItselfSafe)
{
    ComPtr<IObjectSafety> safety;
    EXPECT_EQ(object->QueryInterface(IID_IObjectSafety, safety.putVoid()), E_NOINTERFACE);
}

TEST_P(ComRulesTests, OnlyAControlIsAnOleObject)
{
    EXPECT_EQ(static_cast<bool>(object.as<IOleObject>()), GetParam().control);
    EXPECT_EQ(static_cast<bool>(object.as<IProvideClassInfo2>()), GetParam().control);
}

TEST_P(ControlRulesTests, AControlTellsItsClass)
{
    const auto provider = object.as<IProvideClassInfo2>();
    ASSERT_TRUE(provider);
    ComPtr<ITypeInfo> information;
    ASSERT_EQ(provider->GetClassInfo(information.put()), S_OK);
    EXPECT_EQ(nameOf(information.get()), GetParam().name);
    EXPECT_EQ(provider->GetClassInfo(nullptr), E_POINTER);

    GUID source = IID_IUnknown;
    EXPECT_EQ(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source), S_OK);
    EXPECT_EQ(source, __uuidof(IDialogEvents));
    ComPtr<IConnectionPoint> point;
    EXPECT_EQ(object.as<IConnectionPointContainer>()->FindConnectionPoint(source, point.put()), S_OK);
    source = IID_IUnknown;
    EXPECT_EQ(provider->GetGUID(99, &source), E_INVALIDARG);
    EXPECT_EQ(source, GUID_NULL);
    EXPECT_EQ(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, nullptr), E_POINTER);
}

TEST_P(ControlRulesTests, NullPointersOfTheContainerAreRefused)
{
    const auto ole = object.as<IOleObject>();
    EXPECT_EQ(ole->GetClientSite(nullptr), E_POINTER);
    EXPECT_EQ(ole->GetMoniker(OLEGETMONIKER_ONLYIFTHERE, OLEWHICHMK_OBJREL, nullptr), E_POINTER);
    EXPECT_EQ(ole->GetClipboardData(0, nullptr), E_POINTER);
    EXPECT_EQ(ole->EnumVerbs(nullptr), E_POINTER);
    EXPECT_EQ(ole->GetUserClassID(nullptr), E_POINTER);
    EXPECT_EQ(ole->GetUserType(USERCLASSTYPE_FULL, nullptr), E_POINTER);
    EXPECT_EQ(ole->SetExtent(DVASPECT_CONTENT, nullptr), E_POINTER);
    EXPECT_EQ(ole->GetExtent(DVASPECT_CONTENT, nullptr), E_POINTER);
    EXPECT_EQ(ole->Advise(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(ole->EnumAdvise(nullptr), E_POINTER);
    EXPECT_EQ(ole->GetMiscStatus(DVASPECT_CONTENT, nullptr), E_POINTER);

    const auto inPlace = object.as<IOleInPlaceObject>();
    EXPECT_EQ(inPlace->GetWindow(nullptr), E_POINTER);
    EXPECT_EQ(inPlace->SetObjectRects(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(object.as<IOleInPlaceActiveObject>()->TranslateAccelerator(nullptr), E_POINTER);

    const auto control = object.as<IOleControl>();
    EXPECT_EQ(control->GetControlInfo(nullptr), E_POINTER);
    EXPECT_EQ(control->OnMnemonic(nullptr), E_POINTER);

    const auto drawn = object.as<IViewObject2>();
    EXPECT_EQ(
        drawn->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0),
        E_POINTER);
    EXPECT_EQ(drawn->GetColorSet(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(drawn->GetExtent(DVASPECT_CONTENT, -1, nullptr, nullptr), E_POINTER);

    const auto stream = object.as<IPersistStreamInit>();
    EXPECT_EQ(stream->GetClassID(nullptr), E_POINTER);
    EXPECT_EQ(stream->Load(nullptr), E_POINTER);
    EXPECT_EQ(stream->Save(nullptr, TRUE), E_POINTER);
    EXPECT_EQ(stream->GetSizeMax(nullptr), E_POINTER);
    const auto bag = object.as<IPersistPropertyBag>();
    EXPECT_EQ(bag->Load(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(bag->Save(nullptr, TRUE, TRUE), E_POINTER);
}

TEST_P(ControlRulesTests, NothingIsGivenWhereAMemberFails)
{
    const auto ole = object.as<IOleObject>();
    auto* moniker = poisoned<IMoniker*>();
    EXPECT_EQ(ole->GetMoniker(OLEGETMONIKER_ONLYIFTHERE, OLEWHICHMK_OBJREL, &moniker), E_NOTIMPL);
    EXPECT_EQ(moniker, nullptr);
    auto* data = poisoned<IDataObject*>();
    EXPECT_EQ(ole->GetClipboardData(0, &data), E_NOTIMPL);
    EXPECT_EQ(data, nullptr);
    auto* verbs = poisoned<IEnumOLEVERB*>();
    EXPECT_EQ(ole->EnumVerbs(&verbs), OLEOBJ_E_NOVERBS);
    EXPECT_EQ(verbs, nullptr);
    auto* site = poisoned<IOleClientSite*>();
    EXPECT_EQ(ole->GetClientSite(&site), S_OK);
    EXPECT_EQ(site, nullptr);
    auto* advises = poisoned<IEnumSTATDATA*>();
    EXPECT_EQ(ole->EnumAdvise(&advises), S_OK);
    EXPECT_EQ(advises, nullptr);
    DWORD connection = 0xdeadbeef;
    EXPECT_TRUE(FAILED(ole->Advise(nullptr, &connection)));
    EXPECT_EQ(connection, 0U);
    SIZEL extent{7, 7};
    EXPECT_EQ(ole->GetExtent(DVASPECT_ICON, &extent), DV_E_DVASPECT);
    EXPECT_EQ(extent.cx, 0);
    EXPECT_EQ(extent.cy, 0);

    auto* window = poisoned<HWND>();
    EXPECT_EQ(object.as<IOleWindow>()->GetWindow(&window), E_FAIL);
    EXPECT_EQ(window, nullptr);
    auto* colors = poisoned<LOGPALETTE*>();
    EXPECT_EQ(
        object.as<IViewObject2>()->GetColorSet(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, &colors),
        S_FALSE);
    EXPECT_EQ(colors, nullptr);
}

TEST(ClassesTest, AMemberOfEachKindFails)
{
    // The rule that a failing member clears its results says nothing where no member fails.
    EXPECT_GT(expectResultsClearedOnFailure(create<IUnknown>(__uuidof(::EditGroups)).get()), 0);
    EXPECT_GT(expectResultsClearedOnFailure(create<IUnknown>(__uuidof(::ctlEditGroups)).get()), 0);
    EXPECT_GT(expectResultsClearedOnFailure(create<IUnknown>(__uuidof(::Resources)).get()), 0);
}

TEST(ClassesTest, TheClassesAreThoseOfTheCatalogue)
{
    std::vector<std::wstring> names;
    for (const PublicClass& publicClass : publicClasses())
        names.push_back(publicClass.name);
    EXPECT_THAT(names,
                testing::IsSupersetOf({L"AppDialogEvents", L"Resources", L"EditGroups", L"ctlEditGroups"}));
    for (const PublicClass& publicClass : publicClasses())
        EXPECT_EQ(publicClass.control, publicClass.name.starts_with(L"ctl")) << narrow(publicClass.name);
}

} // namespace korvane::test
