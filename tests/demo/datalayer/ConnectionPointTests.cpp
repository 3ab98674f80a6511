#include "tests/demo/datalayer/DataLayer.h"
#include "tests/demo/datalayer/Listener.h"

#include "framework/com/Object.h"

using namespace korvane;
using namespace korvane::store::test;

namespace
{

class ConnectionPoints : public DataLayerTest
{
};

/// An object without late binding.
class Deaf final : public Object<Deaf, Inherits<IClassFactory>, IClassFactory>
{
public:
    STDMETHODIMP CreateInstance(IUnknown*, REFIID, void**) override { return CLASS_E_CLASSNOTAVAILABLE; }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

} // namespace

TEST_F(ConnectionPoints, AreFoundForTheGroupsEventsOnly)
{
    const auto container = openGroups().as<IConnectionPointContainer>();
    ComPtr<IConnectionPoint> point;
    EXPECT_EQ(S_OK, container->FindConnectionPoint(DIID_IGroupsEvents, point.put()));
    auto* none = reinterpret_cast<IConnectionPoint*>(0xdeadbeef);
    EXPECT_EQ(CONNECT_E_NOCONNECTION, container->FindConnectionPoint(IID_IDispatch, &none));
    EXPECT_EQ(nullptr, none);
    EXPECT_EQ(E_POINTER, container->FindConnectionPoint(DIID_IGroupsEvents, nullptr));
}

TEST_F(ConnectionPoints, AreThereForTheEventsOfEachCollection)
{
    const auto root = open();
    const auto container = [&](auto member) {
        return korvane::fetch(root, member).template as<IConnectionPointContainer>();
    };
    const std::pair<ComPtr<IConnectionPointContainer>, IID> sources[] = {
        {container(&IRoot::get_Groups), DIID_IGroupsEvents},
        {container(&IRoot::get_Names), DIID_INamesEvents},
        {container(&IRoot::get_Types), DIID_ITypesEvents},
        {container(&IRoot::get_Events), DIID_IEventsEvents},
        {container(&IRoot::get_EventLinks), DIID_IEventLinksEvents},
    };
    for (const auto& [source, own] : sources)
        for (const auto& [other, asked] : sources)
        {
            ComPtr<IConnectionPoint> point;
            EXPECT_EQ(asked == own ? S_OK : CONNECT_E_NOCONNECTION,
                      source->FindConnectionPoint(asked, point.put()));
        }
}

TEST_F(ConnectionPoints, KnowTheirEventsAndTheirOwner)
{
    auto groups = openGroups();
    const auto point = eventsOf(groups);
    IID events{};
    EXPECT_EQ(S_OK, point->GetConnectionInterface(&events));
    EXPECT_EQ(DIID_IGroupsEvents, events);
    EXPECT_EQ(E_POINTER, point->GetConnectionInterface(nullptr));

    ComPtr<IConnectionPointContainer> owner;
    EXPECT_EQ(S_OK, point->GetConnectionPointContainer(owner.put()));
    EXPECT_EQ(groups.as<IUnknown>().get(), owner.as<IUnknown>().get());
    EXPECT_EQ(E_POINTER, point->GetConnectionPointContainer(nullptr));
}

TEST_F(ConnectionPoints, OutliveTheirOwnerWithoutTouchingIt)
{
    auto groups = openGroups();
    const auto point = eventsOf(groups);
    groups.reset();
    auto* owner = reinterpret_cast<IConnectionPointContainer*>(0xdeadbeef);
    EXPECT_EQ(E_UNEXPECTED, point->GetConnectionPointContainer(&owner));
    EXPECT_EQ(nullptr, owner);
    DWORD cookie = 4711;
    EXPECT_EQ(CONNECT_E_CANNOTCONNECT,
              point->Advise(ComPtr<Listener>(new Listener(DIID_IGroupsEvents)).get(), &cookie));
    EXPECT_EQ(0u, cookie);
}

TEST_F(ConnectionPoints, AreEnumerated)
{
    const auto groups = openGroups();
    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(S_OK, groups.as<IConnectionPointContainer>()->EnumConnectionPoints(points.put()));
    IConnectionPoint* raw[2]{};
    ULONG fetched = 4711;
    EXPECT_EQ(S_FALSE, points->Next(2, raw, &fetched));
    EXPECT_EQ(1u, fetched);
    EXPECT_EQ(eventsOf(groups).get(), ComPtr<IConnectionPoint>::adopt(raw[0]).get());
    EXPECT_EQ(S_FALSE, points->Next(1, raw, nullptr));
    EXPECT_EQ(S_OK, points->Reset());
    EXPECT_EQ(S_OK, points->Skip(1));
    EXPECT_EQ(S_FALSE, points->Skip(1));
    EXPECT_EQ(E_POINTER, points->Next(2, raw, nullptr));
    EXPECT_EQ(E_POINTER, points->Next(1, nullptr, &fetched));
}

TEST_F(ConnectionPoints, EnumerateTheirSubscribers)
{
    const auto groups = openGroups();
    const Listener::Subscription first(groups, DIID_IGroupsEvents);
    Listener::Subscription second(groups, DIID_IGroupsEvents);
    const auto point = eventsOf(groups);
    ComPtr<IEnumConnections> subscribers;
    ASSERT_EQ(S_OK, point->EnumConnections(subscribers.put()));
    ASSERT_EQ(S_OK, subscribers->Skip(1));
    ComPtr<IEnumConnections> copy;
    ASSERT_EQ(S_OK, subscribers->Clone(copy.put()));

    CONNECTDATA data[2]{};
    ULONG fetched = 0;
    EXPECT_EQ(S_FALSE, copy->Next(2, data, &fetched));
    ASSERT_EQ(1u, fetched);
    const auto sink = ComPtr<IUnknown>::adopt(data[0].pUnk);
    EXPECT_EQ(static_cast<IUnknown*>(second.operator->()), sink.get());
    EXPECT_EQ(S_OK, point->Unadvise(data[0].dwCookie));
    EXPECT_EQ(CONNECT_E_NOCONNECTION, point->Unadvise(data[0].dwCookie));
}

TEST_F(ConnectionPoints, GiveEachSubscriptionItsOwnCookie)
{
    const auto groups = openGroups();
    const auto point = eventsOf(groups);
    const ComPtr<Listener> subscriber(new Listener(DIID_IGroupsEvents));
    DWORD first = 0;
    DWORD second = 0;
    ASSERT_EQ(S_OK, point->Advise(subscriber.get(), &first));
    ASSERT_EQ(S_OK, point->Advise(subscriber.get(), &second));
    EXPECT_NE(0u, first);
    EXPECT_NE(0u, second);
    EXPECT_NE(first, second);
    EXPECT_EQ(S_OK, point->Unadvise(first));
    korvane::fetch(groups, &IGroups::Load);
    EXPECT_EQ(4u, subscriber->events().size());
    EXPECT_EQ(S_OK, point->Unadvise(second));
    EXPECT_EQ(1u, subscriber->references());
    EXPECT_EQ(CONNECT_E_NOCONNECTION, point->Unadvise(0));
}

TEST_F(ConnectionPoints, TakeASinkThatOnlyHasLateBinding)
{
    const auto groups = openGroups();
    const auto point = eventsOf(groups);
    const ComPtr<Listener> subscriber(new Listener(DIID_IGroupsEvents));
    subscriber->knowsEvents = false;
    DWORD cookie = 0;
    ASSERT_EQ(S_OK, point->Advise(subscriber.get(), &cookie));
    korvane::fetch(groups, &IGroups::Load);
    EXPECT_EQ(4u, subscriber->events().size());
    EXPECT_EQ(S_OK, point->Unadvise(cookie));
}

TEST_F(ConnectionPoints, RefuseSinksThatCannotListen)
{
    const auto groups = openGroups();
    const auto point = eventsOf(groups);
    DWORD cookie = 4711;
    EXPECT_EQ(CONNECT_E_CANNOTCONNECT, point->Advise(make<Deaf>().as<IUnknown>().get(), &cookie));
    EXPECT_EQ(0u, cookie);
    EXPECT_EQ(E_POINTER, point->Advise(nullptr, &cookie));
    EXPECT_EQ(E_POINTER, point->Advise(ComPtr<Listener>(new Listener(DIID_IGroupsEvents)).get(), nullptr));
}
