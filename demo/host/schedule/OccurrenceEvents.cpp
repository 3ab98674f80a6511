#include "demo/host/schedule/OccurrenceEvents.h"

#include "framework/com/Boundary.h"

namespace korvane::host
{

namespace
{

enum EventsEvent : DISPID
{
    eventClear = 1,
    eventAdd = 2
};

/// The arguments arrive last first.
Occurrence occurrenceIn(const DISPPARAMS& arguments)
{
    constexpr UINT count = 7;
    if (arguments.cArgs != count)
        throw Failure(DISP_E_BADPARAMCOUNT);
    const auto argument = [&](UINT index) -> const VARIANT& { return arguments.rgvarg[count - 1 - index]; };
    return {{toLong(argument(0)), toLong(argument(1))},
            toLong(argument(2)),
            toLong(argument(3)),
            toDate(argument(4)),
            toDate(argument(5)),
            std::wstring(toText(argument(6)).view())};
}

} // namespace

/// What the collection holds: it may outlive the subscription.
class OccurrenceEvents::Sink final : public IDispatch
{
public:
    explicit Sink(OccurrenceEvents& owner) : owner_(&owner) {}
    virtual ~Sink() = default;

    void cutOff() noexcept { owner_ = nullptr; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        if (!object)
            return E_POINTER;
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(IEventsEvents);
        *object = known ? this : nullptr;
        if (!known)
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

    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return returnNothing(count, S_OK); }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** information) override
    {
        return returnNothing(information, DISP_E_BADINDEX);
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }

    STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                        UINT*) override
    {
        const ComPtr<Sink> alive(this); // a handler may end the subscription
        return guard([&] {
            notNull(arguments);
            if (!owner_)
                return;
            if (event == eventClear && owner_->onClear)
                owner_->onClear();
            else if (event == eventAdd && owner_->onAdd)
                owner_->onAdd(occurrenceIn(*arguments));
        });
    }

private:
    template <class Result> static HRESULT returnNothing(Result* result, HRESULT outcome) noexcept
    {
        if (!result)
            return E_POINTER;
        *result = Result{};
        return outcome;
    }

    OccurrenceEvents* owner_;
    ULONG references_ = 0;
    module::Lock lock_;
};

OccurrenceEvents::OccurrenceEvents() = default;

OccurrenceEvents::~OccurrenceEvents()
{
    if (sink_)
        sink_->cutOff();
    if (point_)
        point_->Unadvise(cookie_);
}

void OccurrenceEvents::connect(const ComPtr<IEvents>& events)
{
    const auto container = events.as<IConnectionPointContainer>();
    ComPtr<IConnectionPoint> point;
    call(container, &IConnectionPointContainer::FindConnectionPoint, __uuidof(IEventsEvents), point.put());
    const ComPtr<Sink> sink(new Sink(*this));
    call(point, &IConnectionPoint::Advise, static_cast<IDispatch*>(sink.get()), &cookie_);
    sink_ = sink;
    point_ = std::move(point);
}

} // namespace korvane::host
