#include "framework/com/EventConnection.h"

#include "framework/com/Boundary.h"
#include "framework/com/Module.h"

namespace korvane
{

const VARIANT& EventArguments::at(UINT index) const
{
    if (index >= parameters_.cArgs)
        throw Failure(DISP_E_BADPARAMCOUNT);
    return parameters_.rgvarg[parameters_.cArgs - 1 - index]; // arguments arrive last first
}

/// What the source holds: it may outlive the connection, which cuts itself off when it ends.
class EventConnection::Sink final : public IDispatch
{
public:
    Sink(EventConnection& connection, REFIID events) : connection_(&connection), events_(events) {}
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
        const ComPtr<Sink> alive(this); // a handler may end the connection
        return connection_ ? connection_->deliver(event, *parameters) : S_OK;
    }

private:
    EventConnection* connection_;
    IID events_;
    ULONG references_ = 0;
    module::Lock lock_;
};

EventConnection::EventConnection() = default;

EventConnection::~EventConnection()
{
    disconnect();
}

void EventConnection::connect(IUnknown* source, REFIID events, Handler handler)
{
    disconnect();
    const auto container = queryFor<IConnectionPointContainer>(notNull(source));
    ComPtr<IConnectionPoint> point;
    if (!container)
        throw Failure(CONNECT_E_NOCONNECTION);
    call(container, &IConnectionPointContainer::FindConnectionPoint, events, point.put());

    handler_ = std::move(handler);
    sink_ = ComPtr<Sink>(new Sink(*this, events));
    if (const auto failure = attempt([&] { call(point, &IConnectionPoint::Advise, sink_.get(), &cookie_); }))
    {
        sink_->cutOff();
        sink_.reset();
        throw *failure;
    }
    point_ = std::move(point);
}

void EventConnection::disconnect() noexcept
{
    if (sink_)
        sink_->cutOff();
    if (point_)
        point_->Unadvise(cookie_);
    point_.reset();
    sink_.reset();
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

HRESULT EventConnection::deliver(DISPID event, const DISPPARAMS& parameters) noexcept
{
    if (failure_)
        return failure_->number();
    auto failure = attempt([&] { handler_(event, EventArguments(parameters)); });
    if (!failure)
        return S_OK;

    const HRESULT number = failure->number();
    if (calls_ > 0)
        failure_ = std::move(failure);
    else if (onStrayFailure)
        onStrayFailure(*failure);
    return number;
}

} // namespace korvane
