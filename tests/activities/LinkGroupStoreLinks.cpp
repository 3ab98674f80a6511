#include "tests/activities/LinkGroupStore.h"

#include "framework/com/ConnectionPoint.h"

namespace korvane::test
{

namespace
{

using Store = LinkGroupStore;

VARIANT shownAs(const std::optional<long>& link)
{
    return link ? Variant(*link).detach() : VARIANT{};
}

class StoredLinks final : public Object<StoredLinks, Inherits<IEventLinks, EventSource<IEventLinksEvents>>,
                                        IEventLinks, IConnectionPointContainer>
{
public:
    explicit StoredLinks(Store& store) : store_(store) {}

    STDMETHODIMP Load(long eventId, VARIANT* linkId) override
    {
        const auto found = store_.activities.find(eventId);
        if (found == store_.activities.end())
            return store_.refuse();
        raise(1);
        const auto link = found->second.link;
        for (const long id : link ? store_.members(link) : std::vector{eventId})
            raise(2, {Variant(id), Variant(long{store_.activities.at(id).booking.nameId})});
        *linkId = shownAs(link);
        return S_OK;
    }

    STDMETHODIMP Create(long eventId, VARIANT* linkId) override
    {
        const HRESULT outcome = store_.write();
        if (FAILED(outcome))
            return outcome;
        const auto found = store_.activities.find(eventId);
        if (found == store_.activities.end())
            return store_.refuse();
        if (found->second.link && store_.members(found->second.link).size() > 1)
            store_.complain("a member of a group was made the first of another one");
        found->second.link = eventId;
        *linkId = shownAs(eventId);
        return S_OK;
    }

    STDMETHODIMP AddNames(VARIANT linkId, VARIANT names) override
    {
        const HRESULT outcome = store_.write();
        if (FAILED(outcome) || linkId.vt == VT_EMPTY)
            return outcome;
        return inGroup(linkId, [&](const std::vector<long>& members) {
            for (const long nameId : idsIn(names))
            {
                if (memberOf(members, nameId))
                    store_.complain("a resource was added that is in the group");
                auto copy = store_.activities.at(members.front());
                copy.booking.nameId = nameId;
                store_.add(copy);
            }
        });
    }

    STDMETHODIMP RemoveNames(VARIANT linkId, VARIANT names, VARIANT* newLinkId) override
    {
        const HRESULT outcome = store_.write();
        if (FAILED(outcome))
            return outcome;
        return inGroup(linkId, [&](const std::vector<long>& members) {
            for (const long nameId : idsIn(names))
            {
                if (const auto id = memberOf(members, nameId))
                    store_.activities.erase(*id);
                else
                    store_.complain("a resource was removed that is not in the group");
            }
            *newLinkId = shownAs(store_.keyed(linkIn(linkId)));
        });
    }

    STDMETHODIMP RemoveOccurrence(VARIANT linkId, long instance) override
    {
        return writing(linkId, [&](Store::Activity& activity) { activity.booking.remove(instance); });
    }

    STDMETHODIMP RemoveAll(VARIANT linkId) override
    {
        const HRESULT outcome = store_.write();
        if (FAILED(outcome))
            return outcome;
        return inGroup(linkId, [&](const std::vector<long>& members) {
            for (const long id : members)
                store_.activities.erase(id);
        });
    }

    STDMETHODIMP UpdateLinked(VARIANT linkId, long instance, long typeId, DATE T0, DATE T1, BSTR text,
                              VARIANT* newLinkId) override
    {
        const HRESULT outcome = writing(linkId, [&](Store::Activity& activity) {
            activity.booking.write(instance, activity.booking.nameId,
                                   {typeId, T0, T1, std::wstring(view(text))});
        });
        if (SUCCEEDED(outcome))
            *newLinkId = shownAs(store_.renamed(linkIn(linkId)));
        return outcome;
    }

    STDMETHODIMP Detach(VARIANT linkId, long nameId) override
    {
        const HRESULT outcome = store_.write();
        if (FAILED(outcome))
            return outcome;
        const auto link = linkIn(linkId);
        const auto id = memberOf(store_.members(link), nameId);
        if (!id)
            return store_.refuse();
        store_.activities.at(*id).link.reset();
        if (const auto left = store_.members(link); left.size() == 1)
            store_.activities.at(left.front()).link.reset();
        store_.keyed(link);
        return S_OK;
    }

    STDMETHODIMP SetRecurrence(VARIANT linkId, IRecurrence* rule) override
    {
        return writing(linkId, [&](Store::Activity& activity) { activity.booking.rule = ruleIn(rule); });
    }

    STDMETHODIMP HasAccess(long, long, VARIANT_BOOL* result) override
    {
        *result = VARIANT_TRUE;
        return S_OK;
    }

private:
    std::optional<long> memberOf(const std::vector<long>& members, long nameId) const
    {
        for (const long id : members)
            if (const auto found = store_.activities.find(id);
                found != store_.activities.end() && found->second.booking.nameId == nameId)
                return id;
        return std::nullopt;
    }

    template <class Body> HRESULT inGroup(const VARIANT& linkId, Body body)
    {
        const auto members = store_.members(linkIn(linkId));
        if (members.empty())
            return store_.refuse();
        body(members);
        return S_OK;
    }

    template <class Body> HRESULT writing(const VARIANT& linkId, Body body)
    {
        const HRESULT outcome = store_.write();
        if (FAILED(outcome))
            return outcome;
        return inGroup(linkId, [&](const std::vector<long>& members) {
            for (const long id : members)
                body(store_.activities.at(id));
        });
    }

    Store& store_;
};

} // namespace

ComPtr<IEventLinks> LinkGroupStore::makeLinks()
{
    return ComPtr<IEventLinks>(make<StoredLinks>(*this).get());
}

} // namespace korvane::test
