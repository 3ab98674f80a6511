#include "tests/activities/LinkGroupStore.h"

#include "framework/com/Object.h"

namespace korvane::test
{

namespace
{

using Store = LinkGroupStore;

class StoredRule final : public Object<StoredRule, Inherits<IRecurrence>, IRecurrence>
{
public:
    explicit StoredRule(const Rule& rule) : rule_(rule) {}

    STDMETHODIMP get_Kind(long* value) override { return get(rule_.kind, value); }
    STDMETHODIMP get_Interval(long* value) override { return get(rule_.interval, value); }
    STDMETHODIMP put_Interval(long value) override { return put(rule_.interval, value); }
    STDMETHODIMP get_Count(long* value) override { return get(rule_.count, value); }
    STDMETHODIMP put_Count(long value) override { return put(rule_.count, value); }
    STDMETHODIMP get_Anchor(long* value) override { return get(rule_.anchor, value); }
    STDMETHODIMP put_Anchor(long value) override { return put(rule_.anchor, value); }

private:
    static HRESULT get(long field, long* value)
    {
        *value = field;
        return S_OK;
    }
    static HRESULT put(long& field, long value)
    {
        field = value;
        return S_OK;
    }

    Rule rule_;
};

class StoredEvents final : public Object<StoredEvents, Inherits<IEvents>, IEvents>
{
public:
    explicit StoredEvents(Store& store) : store_(store) {}

    STDMETHODIMP Add(long nameId, long typeId, DATE T0, DATE T1, BSTR text, long* eventId) override
    {
        return writing([&] {
            *eventId = store_.add({{nameId, {typeId, T0, T1, std::wstring(view(text))}}});
            return S_OK;
        });
    }

    STDMETHODIMP Update(long eventId, long instance, long nameId, long typeId, DATE T0, DATE T1,
                        BSTR text) override
    {
        return writing(eventId, [&](Store::Activity& activity) {
            if (instance == 0 && activity.link && nameId != activity.booking.nameId)
                store_.complain("a linked activity was given another resource");
            activity.booking.write(instance, nameId, {typeId, T0, T1, std::wstring(view(text))});
        });
    }

    STDMETHODIMP Remove(long eventId, long instance) override
    {
        return writing(eventId, [&](Store::Activity& activity) {
            if (instance != 0)
                activity.booking.remove(instance);
            else if (activity.link)
                store_.complain("a linked activity was removed by itself");
            else
                store_.activities.erase(eventId);
        });
    }

    STDMETHODIMP Fetch(long eventId, long instance, long* nameId, long* typeId, DATE* T0, DATE* T1,
                       BSTR* text) override
    {
        const auto found = store_.activities.find(eventId);
        if (found == store_.activities.end())
            return store_.refuse();
        const Booking& booking = found->second.booking;
        const auto occurrence = booking.edited.find(instance);
        const ActivityValues& values =
            occurrence == booking.edited.end() ? booking.values : occurrence->second.values;
        *nameId = booking.nameId;
        *typeId = values.typeId;
        *T0 = values.t0;
        *T1 = values.t1;
        SysReAllocStringLen(text, values.text.data(), static_cast<UINT>(values.text.size()));
        return S_OK;
    }

    STDMETHODIMP GetRecurrence(long eventId, IRecurrence** rule) override
    {
        *rule = nullptr;
        const auto found = store_.activities.find(eventId);
        if (found == store_.activities.end())
            return store_.refuse();
        if (const auto& stored = found->second.booking.rule)
            *rule = Store::makeRule(*stored).detach();
        return S_OK;
    }

    STDMETHODIMP SetRecurrence(long eventId, IRecurrence* rule) override
    {
        return writing(eventId, [&](Store::Activity& activity) {
            if (activity.link)
                store_.complain("a linked activity was given a rule by itself");
            activity.booking.rule = ruleIn(rule);
        });
    }

    STDMETHODIMP IsException(long, long* result) override
    {
        *result = 0;
        return S_OK;
    }

private:
    template <class Body> HRESULT writing(Body body)
    {
        const HRESULT outcome = store_.write();
        return FAILED(outcome) ? outcome : body();
    }

    template <class Body> HRESULT writing(long eventId, Body body)
    {
        return writing([&]() -> HRESULT {
            const auto found = store_.activities.find(eventId);
            if (found == store_.activities.end())
                return store_.refuse();
            body(found->second);
            return S_OK;
        });
    }

    Store& store_;
};

} // namespace

ComPtr<IRecurrence> LinkGroupStore::makeRule(const Rule& rule)
{
    return ComPtr<IRecurrence>(make<StoredRule>(rule).get());
}

ComPtr<IEvents> LinkGroupStore::makeEvents()
{
    return ComPtr<IEvents>(make<StoredEvents>(*this).get());
}

} // namespace korvane::test
