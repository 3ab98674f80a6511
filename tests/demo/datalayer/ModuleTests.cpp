#include "tests/demo/datalayer/DataLayer.h"
#include "tests/demo/datalayer/Listener.h"

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

    /// Every object is one object through all of its interfaces.
    static void expectIdentity(const ComPtr<IUnknown>& object, std::vector<IID> interfaces)
    {
        interfaces.insert(interfaces.end(), {IID_IUnknown, IID_ISupportErrorInfo});
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
    auto scope = korvane::fetch(root, &IRoot::OpenScope, 0L, Bstr(L"test").get());
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
    const auto scope = korvane::fetch(root, &IRoot::OpenScope, 0L, Bstr(L"test").get());
    const auto rule = korvane::fetch(root, &IRoot::NewRecurrence, 1L);
    expectIdentity(database.as<IUnknown>(), {IID_IDispatch, IID_IDatabase});
    expectIdentity(root.as<IUnknown>(), {IID_IDispatch, IID_IRoot, IID_ISession});
    expectIdentity(scope.as<IUnknown>(), {IID_IDispatch, IID_IScope});
    expectIdentity(rule.as<IUnknown>(), {IID_IDispatch, IID_IRecurrence});
    expectIdentity(layer.makeRegistry().as<IUnknown>(), {IID_IDispatch, IID_IRegistry});
    expectIdentity(eventsOf(groupsOf(root)).as<IUnknown>(), {IID_IConnectionPoint});
    const auto collection = [&](auto member, const std::vector<IID>& own) {
        std::vector<IID> interfaces{IID_IDispatch, IID_IConnectionPointContainer};
        interfaces.insert(interfaces.end(), own.begin(), own.end());
        expectIdentity(korvane::fetch(root, member).template as<IUnknown>(), interfaces);
    };
    collection(&IRoot::get_Groups, {IID_IGroups});
    collection(&IRoot::get_Names, {IID_INames});
    collection(&IRoot::get_Types, {IID_ITypes});
    collection(&IRoot::get_Accounts, {IID_IAccounts});
    collection(&IRoot::get_Messages, {IID_IMessages});
    collection(&IRoot::get_Events, {IID_IEvents, IID_ISchedule});
    collection(&IRoot::get_EventLinks, {IID_IEventLinks});
    require(scope->Close(0, 0));
}

TEST_F(Module, ObjectsOfActivitiesCountTheirReferencesExactly)
{
    const auto root = open();
    // The root's and the one here.
    EXPECT_EQ(2u, references(korvane::fetch(root, &IRoot::get_Names)));
    EXPECT_EQ(2u, references(korvane::fetch(root, &IRoot::get_Types)));
    EXPECT_EQ(3u, references(korvane::fetch(root, &IRoot::get_Events))); // the link groups' as well
    EXPECT_EQ(2u, references(korvane::fetch(root, &IRoot::get_EventLinks)));
    EXPECT_EQ(1u, references(korvane::fetch(root, &IRoot::NewRecurrence, 1L)));
    EXPECT_EQ(1u, references(root));
}

TEST_F(Module, IsHeldByARuleThatIsLeft)
{
    auto root = open();
    auto rule = korvane::fetch(root, &IRoot::NewRecurrence, 1L);
    root.reset();
    database.reset();
    EXPECT_FALSE(layer.isIdle());
    rule.reset();
    EXPECT_TRUE(layer.isIdle());
}

TEST_F(Module, ObjectsAnswerForTheirErrors)
{
    const auto root = open();
    const auto answer = [](const auto& object, REFIID iid) {
        return object.template as<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(iid);
    };
    const auto groups = groupsOf(root);
    const auto events = korvane::fetch(root, &IRoot::get_Events);
    EXPECT_EQ(S_OK, answer(events, IID_IEvents));
    EXPECT_EQ(S_OK, answer(events, IID_ISchedule));
    EXPECT_EQ(S_OK, answer(korvane::fetch(root, &IRoot::get_EventLinks), IID_IEventLinks));
    EXPECT_EQ(S_OK, answer(korvane::fetch(root, &IRoot::get_Names), IID_INames));
    EXPECT_EQ(S_OK, answer(korvane::fetch(root, &IRoot::get_Types), IID_ITypes));
    EXPECT_EQ(S_OK, answer(korvane::fetch(root, &IRoot::get_Accounts), IID_IAccounts));
    EXPECT_EQ(S_OK, answer(korvane::fetch(root, &IRoot::get_Messages), IID_IMessages));
    EXPECT_EQ(S_OK, answer(root, IID_ISession));
    EXPECT_EQ(S_OK, answer(groups, IID_IGroups));
    EXPECT_EQ(S_FALSE, answer(groups, IID_IConnectionPointContainer));
    EXPECT_EQ(S_OK, answer(database, IID_IDatabase));
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
        const Listener::Subscription subscriber(groups, DIID_IGroupsEvents);
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
