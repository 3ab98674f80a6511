#include "tests/demo/datalayer/DataLayer.h"
#include "tests/demo/datalayer/Subscriber.h"

using namespace korvane;
using namespace korvane::store::test;

namespace
{

class Module : public DataLayerTest
{
protected:
    /// The reference count, as far as AddRef and Release tell it.
    template <class Interface> static ULONG references(const ComPtr<Interface>& object)
    {
        object->AddRef();
        return object->Release();
    }

    /// The objects that activities are booked with.
    struct Booking
    {
        ComPtr<INames> names;
        ComPtr<ITypes> types;
        ComPtr<IEvents> events;
        ComPtr<IEventLinks> links;
        ComPtr<IRecurrence> rule;
    };

    static Booking collectionsOf(const ComPtr<IRoot>& root)
    {
        Booking result;
        call(root, &IRoot::get_Names, result.names.put());
        call(root, &IRoot::get_Types, result.types.put());
        call(root, &IRoot::get_Events, result.events.put());
        call(root, &IRoot::get_EventLinks, result.links.put());
        call(root, &IRoot::NewRecurrence, 1L, result.rule.put());
        return result;
    }

    /// Every object is one object through all of its interfaces.
    static void expectIdentity(const ComPtr<IUnknown>& object, std::initializer_list<IID> interfaces)
    {
        for (const IID& from : interfaces)
        {
            ComPtr<IUnknown> start;
            ASSERT_EQ(S_OK, object->QueryInterface(from, start.putVoid()));
            for (const IID& to : interfaces)
            {
                ComPtr<IUnknown> end;
                EXPECT_EQ(S_OK, start->QueryInterface(to, end.putVoid()));
                EXPECT_EQ(object.as<IUnknown>().get(), end.as<IUnknown>().get());
            }
            void* none = &start;
            EXPECT_EQ(E_NOINTERFACE, start->QueryInterface(IID_IPersistFile, &none));
            EXPECT_EQ(nullptr, none);
        }
    }
};

} // namespace

TEST_F(Module, IsIdleOnlyWhenEverythingIsReleased)
{
    EXPECT_FALSE(layer.isIdle()); // the test's own Database
    auto root = open();
    database.reset();
    EXPECT_FALSE(layer.isIdle());
    ComPtr<IScope> scope;
    require(root->OpenScope(0, Bstr(L"test").get(), scope.put()));
    auto groups = groupsOf(root);
    root.reset();
    auto point = eventsOf(groups);
    groups.reset();
    EXPECT_FALSE(layer.isIdle());
    scope.reset();
    EXPECT_FALSE(layer.isIdle());
    point.reset();
    EXPECT_TRUE(layer.isIdle());
}

TEST_F(Module, IsHeldByASettingsObject)
{
    database.reset();
    EXPECT_TRUE(layer.isIdle());
    auto registry = layer.makeRegistry();
    EXPECT_FALSE(layer.isIdle());
    registry.reset();
    EXPECT_TRUE(layer.isIdle());
}

TEST_F(Module, IsHeldByALockOfItsServer)
{
    database.reset();
    auto factory = layer.factory(__uuidof(::Database));
    EXPECT_EQ(S_OK, factory->LockServer(TRUE));
    factory.reset();
    EXPECT_FALSE(layer.isIdle());
    EXPECT_EQ(S_OK, layer.factory(__uuidof(::Database))->LockServer(FALSE));
    EXPECT_TRUE(layer.isIdle());
}

TEST_F(Module, WorksAgainAfterItWasIdle)
{
    add(openGroups(), L"Staff");
    database.reset();
    ASSERT_TRUE(layer.isIdle());
    database = layer.makeDatabase();
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(openGroups()));
}

TEST_F(Module, CanBeUnloadedAndLoadedAgain)
{
    add(openGroups(), L"Staff");
    database.reset();
    ASSERT_TRUE(layer.isIdle());
    layer.unload();
    EXPECT_EQ(nullptr, GetModuleHandleW(L"KorvaneData.dll"));
    layer.load();
    database = layer.makeDatabase();
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(openGroups()));
}

TEST_F(Module, KnowsNoOtherClasses)
{
    auto* factory = reinterpret_cast<void*>(0xdeadbeef);
    EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE, layer.entry<decltype(DllGetClassObject)>("DllGetClassObject")(
                                             IID_IUnknown, IID_IClassFactory, &factory));
    EXPECT_EQ(nullptr, factory);
}

TEST_F(Module, RefusesAggregation)
{
    void* object = &database;
    EXPECT_EQ(CLASS_E_NOAGGREGATION,
              layer.factory(__uuidof(::Database))->CreateInstance(database.get(), IID_IUnknown, &object));
    EXPECT_EQ(nullptr, object);
}

TEST_F(Module, ObjectsKeepTheirIdentity)
{
    const auto root = open();
    const auto groups = groupsOf(root);
    ComPtr<IScope> scope;
    require(root->OpenScope(0, Bstr(L"test").get(), scope.put()));
    expectIdentity(database.as<IUnknown>(),
                   {IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo, IID_IDatabase});
    expectIdentity(root.as<IUnknown>(),
                   {IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo, IID_IRoot, IID_ISession});
    expectIdentity(
        korvane::fetch(root, &IRoot::get_Accounts).as<IUnknown>(),
        {IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo, IID_IAccounts, IID_IConnectionPointContainer});
    expectIdentity(
        korvane::fetch(root, &IRoot::get_Messages).as<IUnknown>(),
        {IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo, IID_IMessages, IID_IConnectionPointContainer});
    expectIdentity(scope.as<IUnknown>(), {IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo, IID_IScope});
    expectIdentity(groups.as<IUnknown>(), {IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo, IID_IGroups,
                                           IID_IConnectionPointContainer});
    expectIdentity(layer.makeRegistry().as<IUnknown>(),
                   {IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo, IID_IRegistry});
    expectIdentity(eventsOf(groups).as<IUnknown>(),
                   {IID_IUnknown, IID_ISupportErrorInfo, IID_IConnectionPoint});
    require(scope->Close(0, 0));
}

TEST_F(Module, ObjectsOfActivitiesKeepTheirIdentity)
{
    const auto root = open();
    const Booking booked = collectionsOf(root);
    expectIdentity(booked.names.as<IUnknown>(), {IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo,
                                                 IID_INames, IID_IConnectionPointContainer});
    expectIdentity(booked.types.as<IUnknown>(), {IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo,
                                                 IID_ITypes, IID_IConnectionPointContainer});
    expectIdentity(booked.events.as<IUnknown>(), {IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo,
                                                  IID_IEvents, IID_ISchedule, IID_IConnectionPointContainer});
    expectIdentity(booked.links.as<IUnknown>(), {IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo,
                                                 IID_IEventLinks, IID_IConnectionPointContainer});
    expectIdentity(booked.rule.as<IUnknown>(),
                   {IID_IUnknown, IID_IDispatch, IID_ISupportErrorInfo, IID_IRecurrence});
}

TEST_F(Module, ObjectsOfActivitiesCountTheirReferencesExactly)
{
    const auto root = open();
    const Booking booked = collectionsOf(root);
    EXPECT_EQ(2u, references(booked.names)); // the root's and this one
    EXPECT_EQ(2u, references(booked.types));
    EXPECT_EQ(3u, references(booked.events)); // the link groups' as well
    EXPECT_EQ(2u, references(booked.links));
    EXPECT_EQ(1u, references(booked.rule));
    EXPECT_EQ(1u, references(root));
}

TEST_F(Module, IsHeldByARuleThatIsLeft)
{
    auto root = open();
    auto rule = collectionsOf(root).rule;
    root.reset();
    database.reset();
    EXPECT_FALSE(layer.isIdle());
    rule.reset();
    EXPECT_TRUE(layer.isIdle());
}

TEST_F(Module, ObjectsAnswerForTheirErrors)
{
    const Booking booked = collectionsOf(open());
    EXPECT_EQ(S_OK, booked.events.as<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(IID_IEvents));
    EXPECT_EQ(S_OK, booked.events.as<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(IID_ISchedule));
    EXPECT_EQ(S_OK, booked.links.as<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(IID_IEventLinks));
    EXPECT_EQ(S_OK, booked.names.as<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(IID_INames));
    EXPECT_EQ(S_OK, booked.types.as<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(IID_ITypes));
    const auto root = open();
    EXPECT_EQ(S_OK, root.as<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(IID_ISession));
    EXPECT_EQ(S_OK, korvane::fetch(root, &IRoot::get_Accounts)
                        .as<ISupportErrorInfo>()
                        ->InterfaceSupportsErrorInfo(IID_IAccounts));
    EXPECT_EQ(S_OK, korvane::fetch(root, &IRoot::get_Messages)
                        .as<ISupportErrorInfo>()
                        ->InterfaceSupportsErrorInfo(IID_IMessages));
    const auto groups = openGroups().as<ISupportErrorInfo>();
    EXPECT_EQ(S_OK, groups->InterfaceSupportsErrorInfo(IID_IGroups));
    EXPECT_EQ(S_FALSE, groups->InterfaceSupportsErrorInfo(IID_IConnectionPointContainer));
    EXPECT_EQ(S_OK, database.as<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(IID_IDatabase));
}

TEST_F(Module, ObjectsCountTheirReferencesExactly)
{
    const auto root = open();
    EXPECT_EQ(1u, references(root));
    EXPECT_EQ(1u, references(database));
    const auto groups = groupsOf(root);
    EXPECT_EQ(2u, references(groups)); // the root's and this one
    const auto same = groupsOf(root);
    EXPECT_EQ(3u, references(groups));
    {
        const auto subscriber = Subscriber::subscribedTo(groups);
        load(groups);
        add(groups, L"Staff");
        EXPECT_EQ(3u, references(groups));
    }
    EXPECT_EQ(1u, references(root));
}

TEST_F(Module, DescribesItsInterfaces)
{
    const auto root = open();
    ComPtr<ITypeInfo> information;
    ASSERT_EQ(S_OK, root->GetTypeInfo(0, LOCALE_USER_DEFAULT, information.put()));
    ComPtr<ITypeLib> library;
    UINT index = 0;
    ASSERT_EQ(S_OK, information->GetContainingTypeLib(library.put(), &index));
    Bstr name;
    ASSERT_EQ(S_OK, library->GetDocumentation(-1, name.put(), nullptr, nullptr, nullptr));
    EXPECT_EQ(L"KorvaneData", std::wstring(name.c_str()));
}
