#include "bench/ActivityData.h"

#include "bench/Announcer.h"
#include "framework/com/Decimal.h"
#include "framework/com/Variant.h"
#include "tests/support/EmptyData.h"

namespace korvane::bench
{

namespace
{

constexpr long shownGroup = 3;
constexpr long activity = 1;

} // namespace

class ActivityData::Groups final : public Announcer<Groups, IGroups, IGroupsEvents, test::EmptyGroups>
{
public:
    explicit Groups(ActivityData& data) : data_(data) {}

    STDMETHODIMP Load(VARIANT_BOOL* result) override
    {
        raise(eventClear);
        long id = firstGroup;
        for (const Bstr& name : data_.groupNames_)
        {
            VARIANT arguments[] = {of(shownGroup), of(name.get()), of(id++)};
            raise(eventAdd, arguments, 3);
        }
        *result = VARIANT_TRUE;
        return S_OK;
    }

private:
    ActivityData& data_;
};

class ActivityData::Names final : public Announcer<Names, INames, INamesEvents, test::EmptyNames>
{
public:
    explicit Names(ActivityData& data) : data_(data) {}

    STDMETHODIMP Load(long, VARIANT_BOOL* result) override
    {
        raise(eventClear);
        long index = 0;
        for (const Bstr& name : data_.names_)
        {
            VARIANT arguments[] = {of(0L), of(firstGroup + index / data_.perGroup_), of(name.get()),
                                   of(firstName + index)};
            raise(eventAdd, arguments, 4);
            ++index;
        }
        *result = VARIANT_TRUE;
        return S_OK;
    }

private:
    ActivityData& data_;
};

class ActivityData::Types final : public Announcer<Types, ITypes, ITypesEvents, test::EmptyTypes>
{
public:
    STDMETHODIMP Load(long, VARIANT_BOOL* result) override
    {
        raise(eventClear);
        *result = VARIANT_TRUE;
        return S_OK;
    }
};

class ActivityData::Events final : public Announcer<Events, IEvents, IEventsEvents, test::EmptyEvents>
{
public:
    STDMETHODIMP Add(long, long, DATE, DATE, BSTR, long* eventId) override
    {
        *eventId = activity;
        return S_OK;
    }
    STDMETHODIMP Update(long, long, long, long, DATE, DATE, BSTR) override { return S_OK; }
    STDMETHODIMP Remove(long, long) override { return S_OK; }
    STDMETHODIMP Fetch(long, long, long* nameId, long*, DATE* T0, DATE* T1, BSTR*) override
    {
        *nameId = firstName;
        *T0 = 46349;
        *T1 = 46350;
        return S_OK;
    }
    STDMETHODIMP GetRecurrence(long, IRecurrence** rule) override
    {
        *rule = nullptr;
        return S_OK;
    }
    STDMETHODIMP SetRecurrence(long, IRecurrence*) override { return S_OK; }
    STDMETHODIMP IsException(long, long* result) override
    {
        *result = 0;
        return S_OK;
    }
};

class ActivityData::Links final
    : public Announcer<Links, IEventLinks, IEventLinksEvents, test::EmptyEventLinks>
{
public:
    explicit Links(ActivityData& data) : data_(data) {}

    STDMETHODIMP Load(long, VARIANT* linkId) override
    {
        raise(eventClear);
        for (long index = 0; index < data_.members; ++index)
        {
            VARIANT arguments[] = {of(firstName + index), of(activity + index)};
            raise(eventAdd, arguments, 2);
        }
        *linkId = data_.members > 1 ? of(activity) : VARIANT{};
        return S_OK;
    }
    STDMETHODIMP Create(long, VARIANT* linkId) override { return give(linkId); }
    STDMETHODIMP AddNames(VARIANT, VARIANT) override { return S_OK; }
    STDMETHODIMP RemoveNames(VARIANT, VARIANT, VARIANT* linkId) override { return give(linkId); }
    STDMETHODIMP RemoveOccurrence(VARIANT, long) override { return S_OK; }
    STDMETHODIMP RemoveAll(VARIANT) override { return S_OK; }
    STDMETHODIMP UpdateLinked(VARIANT, long, long, DATE, DATE, BSTR, VARIANT* linkId) override
    {
        return give(linkId);
    }
    STDMETHODIMP Detach(VARIANT, long) override { return S_OK; }
    STDMETHODIMP SetRecurrence(VARIANT, IRecurrence*) override { return S_OK; }
    STDMETHODIMP HasAccess(long, long, VARIANT_BOOL* result) override
    {
        *result = VARIANT_TRUE;
        return S_OK;
    }

private:
    static HRESULT give(VARIANT* linkId) noexcept
    {
        *linkId = of(activity);
        return S_OK;
    }

    ActivityData& data_;
};

class ActivityData::Scope final : public Object<Scope, Inherits<IScope>, IScope>
{
public:
    STDMETHODIMP Close(long, long) override { return S_OK; }
};

class ActivityData::Root final : public Object<Root, Inherits<test::EmptyRoot>, IRoot>
{
public:
    explicit Root(ActivityData& data)
        : groups_(make<Groups>(data)), names_(make<Names>(data)), types_(make<Types>()),
          events_(make<Events>()), links_(make<Links>(data))
    {
    }

    STDMETHODIMP get_Groups(IGroups** collection) override { return give(groups_, collection); }
    STDMETHODIMP get_Names(INames** collection) override { return give(names_, collection); }
    STDMETHODIMP get_Types(ITypes** collection) override { return give(types_, collection); }
    STDMETHODIMP get_Events(IEvents** collection) override { return give(events_, collection); }
    STDMETHODIMP get_EventLinks(IEventLinks** collection) override { return give(links_, collection); }
    STDMETHODIMP OpenScope(long, BSTR, IScope** scope) override
    {
        *scope = ComPtr<IScope>(make<Scope>().get()).detach();
        return S_OK;
    }

private:
    template <class Class, class Interface>
    static HRESULT give(const ComPtr<Class>& object, Interface** result)
    {
        *result = ComPtr<Interface>(object.get()).detach();
        return S_OK;
    }

    ComPtr<Groups> groups_;
    ComPtr<Names> names_;
    ComPtr<Types> types_;
    ComPtr<Events> events_;
    ComPtr<Links> links_;
};

ActivityData::ActivityData() : root_(ComPtr<IRoot>(make<Root>(*this).get())) {}

ActivityData::~ActivityData() = default;

void ActivityData::resize(int names, int perGroup)
{
    perGroup_ = perGroup;
    groupNames_.clear();
    names_.clear();
    for (long index = 0; index < (names + perGroup - 1) / perGroup; ++index)
        groupNames_.emplace_back(L"Group " + decimal(index));
    for (long index = 0; index < names; ++index)
        names_.emplace_back(L"Resource " + decimal(index));
}

} // namespace korvane::bench
