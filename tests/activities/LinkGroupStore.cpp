#include "tests/activities/LinkGroupStore.h"

#include "framework/com/Object.h"
#include "tests/support/EmptyData.h"

#include <algorithm>

namespace korvane::test
{

const ErrorInfo LinkGroupStore::injected{static_cast<HRESULT>(0x80041234), L"Store", L"The store is locked."};
const ErrorInfo LinkGroupStore::refusal{E_INVALIDARG, L"Store", L"There is no such activity."};

namespace
{

HRESULT reported(const ErrorInfo& error)
{
    return Failure(error.number, error.source, error.description).report();
}

class StoreRoot final : public Object<StoreRoot, Inherits<EmptyRoot>, IRoot>
{
public:
    explicit StoreRoot(LinkGroupStore& store) : events_(store.makeEvents()), links_(store.makeLinks()) {}

    STDMETHODIMP get_Events(IEvents** collection) override
    {
        *collection = ComPtr(events_).detach();
        return S_OK;
    }
    STDMETHODIMP get_EventLinks(IEventLinks** links) override
    {
        *links = ComPtr(links_).detach();
        return S_OK;
    }
    STDMETHODIMP NewRecurrence(long kind, IRecurrence** rule) override
    {
        *rule = LinkGroupStore::makeRule({kind}).detach();
        return S_OK;
    }

private:
    ComPtr<IEvents> events_;
    ComPtr<IEventLinks> links_;
};

} // namespace

LinkGroupStore::LinkGroupStore() : root_(make<StoreRoot>(*this).get()) {}

HRESULT LinkGroupStore::write()
{
    return failing_ >= 0 && failing_-- == 0 ? reported(injected) : S_OK;
}

HRESULT LinkGroupStore::refuse() const
{
    return reported(refusal);
}

long LinkGroupStore::add(const Activity& activity)
{
    activities.emplace(nextId_, activity);
    return nextId_++;
}

std::vector<long> LinkGroupStore::members(const std::optional<long>& link) const
{
    std::vector<long> result;
    for (const auto& [id, activity] : activities)
        if (link && activity.link == link)
            result.push_back(id);
    return result;
}

std::optional<long> LinkGroupStore::keyed(const std::optional<long>& link)
{
    const auto left = members(link);
    if (left.empty())
        return std::nullopt;
    if (std::find(left.begin(), left.end(), *link) != left.end())
        return link;
    for (const long id : left)
        activities.at(id).link = left.front();
    return left.front();
}

std::optional<long> LinkGroupStore::renamed(const std::optional<long>& link)
{
    if (!std::exchange(renamesGroup_, false))
        return link;
    const auto group = members(link);
    for (const long id : group)
        activities.at(id).link = group.back();
    return group.back();
}

std::string LinkGroupStore::groupOf(long id) const
{
    const auto& link = activities.at(id).link;
    std::vector<const Booking*> bookings;
    for (const long member : link ? members(link) : std::vector{id})
        bookings.push_back(&activities.at(member).booking);
    return shownGroup(link.has_value(), bookings);
}

std::vector<std::string> LinkGroupStore::groups() const
{
    std::vector<std::string> result;
    std::set<long> told;
    for (const auto& [id, activity] : activities)
        if (!activity.link || told.insert(*activity.link).second)
            result.push_back(groupOf(id));
    std::sort(result.begin(), result.end());
    return result;
}

std::string LinkGroupStore::complaints() const
{
    std::string result = complaint_;
    std::set<std::pair<long, long>> booked;
    for (const auto& [id, activity] : activities)
    {
        if (activity.booking.values.t0 > activity.booking.values.t1)
            result += "an activity ends before it starts\n";
        if (!activity.link)
            continue;
        const auto first = activities.find(*activity.link);
        if (first == activities.end() || first->second.link != activity.link)
            result += "a group has the id of an activity that is not in it\n";
        if (!booked.emplace(*activity.link, activity.booking.nameId).second)
            result += "a group has a resource twice\n";
    }
    return result;
}

} // namespace korvane::test
