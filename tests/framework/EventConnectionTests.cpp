#include "framework/com/EventConnection.h"

#include "framework/com/Boundary.h"
#include "framework/com/ConnectionPoint.h"
#include "tests/support/ComRules.h"

#include <KorvaneData.h>

#include <gmock/gmock.h>

#include <optional>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class Source final : public Object<Source, Inherits<EventSource<IGroupsEvents>>, IConnectionPointContainer>
{
public:
    using EventSource<IGroupsEvents>::hasSubscribers;
    using EventSource<IGroupsEvents>::raise;

    void clear() { raise(1); }
    void add(long id) { raise(2, {Variant(id), Variant(Bstr(L"Drivers")), Variant(7L)}); }
    void addIncompletely(long id) { raise(2, {Variant(id)}); }
};

/// Has the events, and does as it is told when somebody subscribes.
class ScriptedSource final
    : public Object<ScriptedSource, Inherits<IConnectionPointContainer, IConnectionPoint>,
                    IConnectionPointContainer, IConnectionPoint>
{
public:
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    STDMETHODIMP FindConnectionPoint(REFIID, IConnectionPoint** point) override
    {
        return QueryInterface(IID_PPV_ARGS(point));
    }
    STDMETHODIMP GetConnectionInterface(IID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer**) override { return E_NOTIMPL; }
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override
    {
        *cookie = 4711;
        return guard([&] {
            onAdvise();
            subscriber = ComPtr<IUnknown>(sink);
        });
    }
    STDMETHODIMP Unadvise(DWORD cookie) override
    {
        EXPECT_EQ(cookie, 4711U);
        subscriber.reset();
        return S_OK;
    }
    STDMETHODIMP EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }
    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override
    {
        return iid == IID_IConnectionPoint ? S_OK : S_FALSE;
    }

    std::function<void()> onAdvise;
    ComPtr<IUnknown> subscriber;
};

/// Whoever subscribes, as an object that anybody may let go of.
class Owner final : public EventOwner
{
public:
    ComPtr<IUnknown> keptAlive() noexcept override { return ComPtr<IUnknown>(object.get()); }
    void announcementFailed(const Failure& failure) noexcept override { stray.push_back(failure.number()); }

    ComPtr<IUnknown> object = make<Source>().as<IUnknown>();
    std::vector<HRESULT> stray;
};

class EventConnectionTests : public testing::Test
{
protected:
    void connect()
    {
        connection->connect(static_cast<IConnectionPointContainer*>(source.get()), __uuidof(IGroupsEvents),
                            {.clear = [this] { heard.push_back(0); },
                             .add =
                                 [this](const EventArguments& item) {
                                     heard.push_back(item.number(0));
                                     if (onEvent)
                                         onEvent(item);
                                 }});
    }

    HRESULT failureOf(const std::function<void()>& body)
    {
        const auto failure = attempt(body);
        return failure ? failure->number() : S_OK;
    }

    ComPtr<Source> source = make<Source>();
    Owner owner;
    std::optional<EventConnection> connection{std::in_place, &owner};
    std::vector<long> heard;
    std::function<void(const EventArguments&)> onEvent;
};

} // namespace

TEST_F(EventConnectionTests, EventsArriveInTheirOrderWithTheirArguments)
{
    connect();
    std::vector<std::wstring> texts;
    onEvent = [&](const EventArguments& item) {
        texts.emplace_back(item.text(1).view());
        EXPECT_EQ(item.number(2), 7);
        EXPECT_EQ(item.count(), 3U);
    };
    source->clear();
    source->add(4);
    source->add(5);
    EXPECT_THAT(heard, ElementsAre(0, 4, 5));
    EXPECT_THAT(texts, ElementsAre(L"Drivers", L"Drivers"));
}

TEST_F(EventConnectionTests, AnArgumentIsATextWhateverItsType)
{
    connect();
    std::vector<std::wstring> texts;
    onEvent = [&](const EventArguments& item) {
        const LentText text = item.text(1);
        EXPECT_NE(text.get(), nullptr);
        texts.emplace_back(text.view());
    };
    source->raise(2, {Variant(4L), Variant(12L)});
    VARIANT null{};
    null.vt = VT_BSTR;
    source->raise(2, {Variant(4L), Variant::adopt(null)});
    EXPECT_THAT(texts, ElementsAre(L"12", L""));
}

TEST_F(EventConnectionTests, ADisconnectedHandlerHearsNothing)
{
    connect();
    EXPECT_TRUE(source->hasSubscribers());
    connection->disconnect();
    EXPECT_FALSE(source->hasSubscribers());
    source->add(4);
    EXPECT_THAT(heard, IsEmpty());
    connection->disconnect();
}

TEST_F(EventConnectionTests, AnotherConnectionTakesThePlaceOfTheFirst)
{
    connect();
    connect();
    source->add(4);
    EXPECT_THAT(heard, ElementsAre(4));
}

TEST_F(EventConnectionTests, ASourceOfOtherEventsIsRefused)
{
    auto* const point = static_cast<IConnectionPointContainer*>(source.get());
    EXPECT_EQ(failureOf([&] { connection->connect(point, IID_IPropertyNotifySink, {}); }),
              CONNECT_E_NOCONNECTION);
    EXPECT_EQ(failureOf([&] { connection->connect(nullptr, __uuidof(IGroupsEvents), {}); }), E_POINTER);
}

TEST_F(EventConnectionTests, ASourceThatRefusesTellsWhy)
{
    const auto refusing = make<ScriptedSource>();
    refusing->onAdvise = [] { throw Failure(static_cast<HRESULT>(0x80041234), L"data", L"too many"); };
    const auto failure = attempt([&] {
        connection->connect(static_cast<IConnectionPointContainer*>(refusing.get()), __uuidof(IGroupsEvents),
                            {});
    });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number(), static_cast<HRESULT>(0x80041234));
    EXPECT_EQ(failure->source(), L"data");
    EXPECT_EQ(failure->description(), L"too many");
    EXPECT_EQ(references(static_cast<IConnectionPointContainer*>(refusing.get())), 1);
}

TEST_F(EventConnectionTests, OfConnectionsWithinEachOtherTheLastOneCounts)
{
    const auto calling = make<ScriptedSource>();
    for (const bool fails : {false, true})
    {
        calling->onAdvise = [&] {
            connect();
            if (fails)
                throw Failure(E_ACCESSDENIED);
        };
        EXPECT_EQ(failureOf([&] {
                      connection->connect(static_cast<IConnectionPointContainer*>(calling.get()),
                                          __uuidof(IGroupsEvents), {});
                  }),
                  fails ? E_ACCESSDENIED : S_OK);
        EXPECT_FALSE(calling->subscriber);
        source->add(4);
        EXPECT_THAT(heard, ElementsAre(4));
        heard.clear();
        connection->disconnect();
        EXPECT_FALSE(source->hasSubscribers());
    }
}

TEST_F(EventConnectionTests, WhoIsDisconnectedWhileItConnectsHearsNothing)
{
    const auto calling = make<ScriptedSource>();
    calling->onAdvise = [&] { connection->disconnect(); };
    connection->connect(static_cast<IConnectionPointContainer*>(calling.get()), __uuidof(IGroupsEvents), {});
    EXPECT_FALSE(calling->subscriber);
}

TEST_F(EventConnectionTests, AnObjectWithoutEventsIsRefused)
{
    const auto point =
        make<ConnectionPoint>(*static_cast<IConnectionPointContainer*>(source.get()), IID_IUnknown);
    EXPECT_EQ(
        failureOf([&] { connection->connect(point.as<IUnknown>().get(), __uuidof(IGroupsEvents), {}); }),
        CONNECT_E_NOCONNECTION);
}

TEST_F(EventConnectionTests, AHandlersFailureIsThrownByTheCallThatRaisedTheEvent)
{
    connect();
    onEvent = [&](const EventArguments&) {
        if (heard.back() == 5)
            throw Failure(static_cast<HRESULT>(0x80041234), L"handler", L"no more");
    };
    const auto failure = attempt([&] {
        connection->during([&] {
            source->add(4);
            source->add(5);
            source->add(6); // not heard any more
        });
    });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number(), static_cast<HRESULT>(0x80041234));
    EXPECT_EQ(failure->description(), L"no more");
    EXPECT_THAT(heard, ElementsAre(4, 5));
}

TEST_F(EventConnectionTests, TheHandlersFailureCountsBeforeTheCalls)
{
    connect();
    onEvent = [](const EventArguments&) { throw Failure(E_ACCESSDENIED); };
    EXPECT_EQ(failureOf([&] {
                  connection->during([&] {
                      source->add(4);
                      throw Failure(E_ABORT);
                  });
              }),
              E_ACCESSDENIED);
    onEvent = nullptr;
    EXPECT_EQ(failureOf([&] { connection->during([] { throw Failure(E_ABORT); }); }), E_ABORT);
}

TEST_F(EventConnectionTests, AnEventAfterAFailedCallIsHeardAgain)
{
    connect();
    onEvent = [](const EventArguments&) { throw Failure(E_FAIL); };
    EXPECT_EQ(failureOf([&] { connection->during([&] { source->add(4); }); }), E_FAIL);
    onEvent = nullptr;
    source->add(5);
    EXPECT_EQ(failureOf([&] { connection->during([&] { source->add(6); }); }), S_OK);
    EXPECT_THAT(heard, ElementsAre(4, 5, 6));
}

TEST_F(EventConnectionTests, AStrayFailureIsTold)
{
    connect();
    onEvent = [](const EventArguments&) { throw Failure(E_FAIL); };
    source->add(4);
    source->add(5);
    EXPECT_THAT(owner.stray, ElementsAre(E_FAIL, E_FAIL));
    EXPECT_EQ(failureOf([&] { connection->during([] {}); }), S_OK);
}

TEST_F(EventConnectionTests, TheOwnerIsKeptAliveWhileAnAnnouncementIsHandled)
{
    connect();
    ULONG whileHandled = 0;
    onEvent = [&](const EventArguments&) { whileHandled = references(owner.object.get()); };
    source->add(4);
    EXPECT_EQ(whileHandled, references(owner.object.get()) + 1);
}

TEST_F(EventConnectionTests, AnEventBesidesClearAndAddComesToItsOwnHandler)
{
    std::vector<DISPID> further;
    connection->connect(static_cast<IConnectionPointContainer*>(source.get()), __uuidof(IGroupsEvents),
                        {.further = [&](DISPID event, const EventArguments&) { further.push_back(event); }});
    source->add(4); // has no handler
    source->raise(3);
    EXPECT_THAT(further, ElementsAre(3));
}

TEST_F(EventConnectionTests, AStrayFailureThatNobodyWantsIsForgotten)
{
    connection.emplace();
    connect();
    onEvent = [](const EventArguments&) { throw Failure(E_FAIL); };
    source->add(4);
    onEvent = nullptr;
    source->add(5);
    EXPECT_THAT(heard, ElementsAre(4, 5));
}

TEST_F(EventConnectionTests, AnEventWithoutAllItsArgumentsIsAFailure)
{
    connect();
    onEvent = [](const EventArguments& arguments) { arguments.text(1); };
    EXPECT_EQ(failureOf([&] { connection->during([&] { source->addIncompletely(4); }); }),
              DISP_E_BADPARAMCOUNT);
}

TEST_F(EventConnectionTests, AnEventWithAnArgumentOfAnotherTypeIsAFailure)
{
    connect();
    onEvent = [](const EventArguments& arguments) { arguments.number(1); };
    EXPECT_EQ(failureOf([&] { connection->during([&] { source->add(4); }); }), DISP_E_TYPEMISMATCH);
}

TEST_F(EventConnectionTests, AHandlerMayDisconnect)
{
    connect();
    onEvent = [this](const EventArguments&) { connection->disconnect(); };
    source->add(4);
    source->add(5);
    EXPECT_THAT(heard, ElementsAre(4));
}

TEST_F(EventConnectionTests, AHandlerMayEndTheConnection)
{
    connect();
    onEvent = [this](const EventArguments&) { connection.reset(); };
    source->add(4);
    source->add(5);
    EXPECT_THAT(heard, ElementsAre(4));
}

TEST_F(EventConnectionTests, TheSourceMayGoFirst)
{
    connect();
    source.reset();
    connection->disconnect();
}

TEST_F(EventConnectionTests, TheSourceMayOutliveTheConnection)
{
    connect();
    connection.reset();
    source->add(4);
    EXPECT_THAT(heard, IsEmpty());
}

} // namespace korvane::test
