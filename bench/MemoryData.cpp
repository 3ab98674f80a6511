#include "bench/MemoryData.h"

#include "bench/Measurement.h"
#include "framework/com/Decimal.h"
#include "framework/com/Object.h"

namespace korvane::bench
{

namespace
{

enum GroupsEvent : DISPID
{
    eventClear = 1,
    eventAdd = 2
};

} // namespace

/// The groups, and at the same time the connection point of their events, for one subscriber.
class MemoryData::Groups final
    : public Object<Groups, Inherits<IGroups, IConnectionPointContainer, IConnectionPoint>, IGroups,
                    IConnectionPointContainer, IConnectionPoint>
{
public:
    explicit Groups(MemoryData& data) : data_(data) {}

    bool hasSubscriber() const noexcept { return static_cast<bool>(subscriber_); }

    void raiseClear() const
    {
        DISPPARAMS none{};
        raise(eventClear, none);
    }

    /// The name is lent, not copied: what is measured is the subscriber.
    void raiseAdd(long id, BSTR name) const
    {
        VARIANT arguments[3]; // last first
        arguments[0].vt = VT_I4;
        arguments[0].lVal = 1;
        arguments[1].vt = VT_BSTR;
        arguments[1].bstrVal = name;
        arguments[2].vt = VT_I4;
        arguments[2].lVal = id;
        DISPPARAMS parameters{arguments, nullptr, 3, 0};
        raise(eventAdd, parameters);
    }

    // IGroups
    STDMETHODIMP Load(VARIANT_BOOL* result) override
    {
        raiseClear();
        long id = firstId;
        for (const Bstr& name : data_.names_)
            raiseAdd(id++, name.get());
        *result = VARIANT_TRUE;
        return S_OK;
    }

    STDMETHODIMP Fetch(long, BSTR* name, long* flags, VARIANT_BOOL* result) override
    {
        *flags = 1;
        *result = SysReAllocString(name, L"Group") ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }

    STDMETHODIMP HasAccess(long, long, VARIANT_BOOL* result) override
    {
        *result = VARIANT_TRUE;
        return S_OK;
    }

    STDMETHODIMP Add(BSTR, long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP Remove(long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP Update(long, BSTR, long, long*) override { return E_NOTIMPL; }

    // IConnectionPointContainer
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override
    {
        *points = nullptr;
        return E_NOTIMPL;
    }

    STDMETHODIMP FindConnectionPoint(REFIID events, IConnectionPoint** point) override
    {
        return events == __uuidof(IGroupsEvents) ? QueryInterface(IID_PPV_ARGS(point))
                                                 : CONNECT_E_NOCONNECTION;
    }

    // IConnectionPoint
    STDMETHODIMP GetConnectionInterface(IID* events) override
    {
        *events = __uuidof(IGroupsEvents);
        return S_OK;
    }

    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override
    {
        return QueryInterface(IID_PPV_ARGS(container));
    }

    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override
    {
        if (subscriber_)
            return CONNECT_E_ADVISELIMIT;
        *cookie = 1;
        return sink->QueryInterface(__uuidof(IGroupsEvents), subscriber_.putVoid());
    }

    STDMETHODIMP Unadvise(DWORD) override
    {
        subscriber_.reset();
        return S_OK;
    }

    STDMETHODIMP EnumConnections(IEnumConnections** connections) override
    {
        *connections = nullptr;
        return E_NOTIMPL;
    }

private:
    void raise(DISPID event, DISPPARAMS& parameters) const
    {
        if (subscriber_)
            subscriber_->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                                nullptr, nullptr);
    }

    MemoryData& data_;
    ComPtr<IDispatch> subscriber_;
};

class MemoryData::Scope final : public Object<Scope, Inherits<IScope>, IScope>
{
public:
    explicit Scope(MemoryData& data) : data_(data) {}

    STDMETHODIMP Close(long, long) override
    {
        data_.stepEnd_ = now();
        return S_OK;
    }

private:
    MemoryData& data_;
};

class MemoryData::Root final : public Object<Root, Inherits<IRoot>, IRoot>
{
public:
    explicit Root(MemoryData& data) : data_(data) {}

    STDMETHODIMP get_Groups(IGroups** collection) override
    {
        *collection = ComPtr<IGroups>(data_.groups_.get()).detach();
        return S_OK;
    }

    STDMETHODIMP OpenScope(long, BSTR, IScope** scope) override
    {
        *scope = ComPtr<IScope>(make<Scope>(data_).get()).detach();
        data_.stepStart_ = now();
        return S_OK;
    }

    STDMETHODIMP get_Names(INames** collection) override { return lacks(collection); }
    STDMETHODIMP get_Types(ITypes** collection) override { return lacks(collection); }
    STDMETHODIMP get_Events(IEvents** collection) override { return lacks(collection); }
    STDMETHODIMP get_EventLinks(IEventLinks** collection) override { return lacks(collection); }
    STDMETHODIMP NewRecurrence(long, IRecurrence** rule) override { return lacks(rule); }

private:
    template <class Interface> static HRESULT lacks(Interface** result)
    {
        *result = nullptr;
        return E_NOTIMPL;
    }

    MemoryData& data_;
};

MemoryData::MemoryData() : groups_(make<Groups>(*this)), root_(ComPtr<IRoot>(make<Root>(*this).get())) {}

MemoryData::~MemoryData() = default;

void MemoryData::resize(int groups)
{
    names_.clear();
    names_.reserve(static_cast<std::size_t>(groups));
    for (long index = 0; index < groups; ++index)
        names_.emplace_back(L"Resource group " + decimal(index));
}

void MemoryData::announce(long id, BSTR name) const
{
    groups_->raiseAdd(id, name);
}

bool MemoryData::hasSubscriber() const noexcept
{
    return groups_->hasSubscriber();
}

} // namespace korvane::bench
