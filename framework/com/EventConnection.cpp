#include "framework/com/EventConnection.h"

#include "framework/com/Boundary.h"
#include "framework/com/Module.h"

namespace korvane
{

/// What the source holds: it may outlive the connection, which cuts itself off when it ends.
class EventConnection::Sink final : public IDispatch
{
public:
    Sink(EventConnection& connection, REFIID events, EventHandlers handlers)
        : connection_(&connection), events_(events), handlers_(std::move(handlers))
    {
    }
    virtual ~Sink() = default;

    void cutOff() noexcept { connection_ = nullptr; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        if (!object)
            return E_POINTER;
        *object = iid == IID_IUnknown || iid == IID_IDispatch || iid == events_ ? this : nullptr;
        if (!*object)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }

    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }

    STDMETHODIMP_(ULONG) Release() override
    {
        const ULONG remaining = --references_;
        if (remaining == 0)
            delete this;
        return remaining;
    }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override
    {
        if (!count)
            return E_POINTER;
        *count = 0;
        return S_OK;
    }

    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** information) override
    {
        if (!information)
            return E_POINTER;
        *information = nullptr;
        return DISP_E_BADINDEX;
    }

    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }

    STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                        UINT*) override
    {
        if (!parameters)
            return E_POINTER;
        if (!connection_)
            return S_OK;
        if (connection_->failure_)
            return connection_->failure_->number();
        // A handler may end the connection, and whoever it calls its owner.
        const ComPtr<Sink> alive(this);
        const ComPtr<IUnknown> owner = connection_->owner_ ? connection_->owner_->keptAlive() : nullptr;
        HRESULT result = S_OK;
        attempt([&] { handle(event, EventArguments(*parameters)); },
                [&](Failure&& failure) {
                    result = failure.number();
                    if (connection_)
                        connection_->failed(std::move(failure));
                });
        return result;
    }

private:
    void handle(DISPID event, const EventArguments& arguments)
    {
        if (event == eventAdd)
        {
            if (handlers_.add)
                handlers_.add(arguments);
        }
        else if (event == eventClear)
        {
            if (handlers_.clear)
                handlers_.clear();
        }
        else if (handlers_.further)
            handlers_.further(event, arguments);
    }

    EventConnection* connection_;
    IID events_;
    EventHandlers handlers_;
    ULONG references_ = 0;
    module::Lock lock_;
};

EventConnection::EventConnection(EventOwner* owner) noexcept : owner_(owner) {}

EventConnection::~EventConnection()
{
    disconnect();
}

void EventConnection::connect(IUnknown* source, REFIID events, EventHandlers handlers)
{
    // Whoever is called may connect or disconnect within, and let go of the source: the last to do so counts.
    const ComPtr<IUnknown> held(source);
    const ComPtr<Sink> sink(new Sink(*this, events, std::move(handlers)));
    use(sink);
    undoOnFailure(
        [&] {
            const auto container = queryFor<IConnectionPointContainer>(notNull(source));
            if (!container)
                throw Failure(CONNECT_E_NOCONNECTION);
            auto point = fetch(container, &IConnectionPointContainer::FindConnectionPoint, events);
            DWORD cookie = 0;
            call(point, &IConnectionPoint::Advise, sink.get(), &cookie);
            if (sink_.get() != sink.get())
            {
                point->Unadvise(cookie);
                return;
            }
            point_ = std::move(point);
            cookie_ = cookie;
        },
        [&] {
            if (sink_.get() == sink.get())
                disconnect();
        });
}

void EventConnection::disconnect() noexcept
{
    use(nullptr);
}

/// Ends the subscription that there is. @param next the sink of the one that follows, which is there before anybody is
/// called; null for none.
void EventConnection::use(ComPtr<Sink> next) noexcept
{
    const auto former = std::exchange(sink_, std::move(next));
    const auto point = std::exchange(point_, nullptr);
    if (former)
        former->cutOff();
    if (point)
        point->Unadvise(cookie_);
}

void EventConnection::during(const std::function<void()>& callThatRaises)
{
    struct Call
    {
        EventConnection& connection;
        explicit Call(EventConnection& of) : connection(of) { ++connection.calls_; }
        ~Call() { --connection.calls_; }
    };

    failure_.reset();
    std::optional<Failure> ofCall;
    {
        const Call call(*this);
        ofCall = attempt(callThatRaises);
    }
    // The handler's failure first: the source may have ended its call because of it.
    if (const auto ofHandler = std::exchange(failure_, std::nullopt))
        throw *ofHandler;
    if (ofCall)
        throw *ofCall;
}

void EventConnection::failed(Failure&& failure) noexcept
{
    if (calls_ > 0)
        failure_ = std::move(failure);
    else if (owner_)
        owner_->announcementFailed(failure);
}

} // namespace korvane
