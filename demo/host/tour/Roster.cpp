#include "demo/host/tour/Roster.h"

#include "demo/host/schedule/Moment.h"
#include "framework/DataLayer.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

/// What a collection announces while it loads.
template <class Collection, class... Arguments, class Add>
void announced(const ComPtr<IRoot>& root, Add&& add, Arguments... arguments)
{
    Subscription<Collection> items;
    items.connect(root, {.add = add});
    items.load(&Collection::Load, arguments...);
}

} // namespace

std::wstring shown(const RosterItem& item)
{
    std::wstring text =
        std::to_wstring(item.id) + L"  " + item.name + L" | colour " + std::to_wstring(item.color);
    if (!item.login.empty())
        text += L" | login " + item.login + L", role " + std::to_wstring(item.role);
    return item.isSynchronised ? text + L", synchronised" : text;
}

std::vector<std::wstring> Roster::groups() const
{
    std::vector<std::wstring> names;
    announced<IGroups>(root_, [&](const EventArguments& group) { names.emplace_back(group.text(1).view()); });
    return names;
}

std::vector<RosterItem> Roster::resources(const std::wstring& group) const
{
    std::vector<RosterItem> items;
    announced<INames>(
        root_,
        [&](const EventArguments& name) {
            items.push_back({name.number(0), std::wstring(name.text(1).view()), name.number(3), {}});
        },
        idOf(group));
    const auto names = collection<INames>(root_);
    for (RosterItem& item : items)
    {
        Bstr text;
        Bstr login;
        long ignored = 0;
        call(names, &INames::Fetch, item.id, text.put(), &ignored, &ignored, login.put(), &ignored, &ignored);
        item.login = login.view();
        item.role = fetch(names, &INames::GetRole, item.id);
        item.isSynchronised = !fetch(names, &INames::GetMailbox, item.id).empty();
    }
    return items;
}

std::vector<RosterItem> Roster::types(const std::wstring& group) const
{
    std::vector<RosterItem> items;
    announced<ITypes>(
        root_,
        [&](const EventArguments& type) {
            items.push_back({type.number(0), std::wstring(type.text(1).view()), type.number(2), {}});
        },
        idOf(group));
    return items;
}

std::vector<std::wstring> Roster::info(const std::wstring& group, const std::wstring& resource) const
{
    constexpr DISPID eventInfoClear = 3;
    constexpr DISPID eventInfoAdd = 4;
    std::vector<std::wstring> rows;
    Subscription<INames> names;
    names.connect(root_, {.further = [&](DISPID event, const EventArguments& row) {
                      if (event == eventInfoClear)
                          rows.clear();
                      else if (event == eventInfoAdd)
                          rows.push_back(std::wstring(row.text(1).view()) + L": " +
                                         std::wstring(row.text(2).view()));
                  }});
    names.load(&INames::LoadInfo, idOf(group, resource));
    return rows;
}

void Roster::add(const std::wstring& group, const wchar_t* resource) const
{
    constexpr long newFlags = 2;
    const auto names = collection<INames>(root_);
    const long id = fetch(names, &INames::Add, Bstr(resource).get(), 0L, newFlags);
    fetch(names, &INames::AddToGroup, id, idOf(group), 0L);
}

void Roster::remove(const std::wstring& group, const std::wstring& resource) const
{
    fetch(collection<INames>(root_), &INames::RemoveFromGroup, idOf(group, resource), idOf(group));
}

void Roster::leaveMessage(const std::wstring& group, const std::wstring& resource, const wchar_t* about) const
{
    constexpr long other = 4;
    fetch(collection<IMessages>(root_), &IMessages::Add, idOf(group, resource), now().days, Bstr(about).get(),
          Bstr().get(), Bstr().get(), other);
}

long Roster::idOf(const std::wstring& group, const std::wstring& resource) const
{
    for (const RosterItem& each : resources(group))
        if (each.name == resource)
            return each.id;
    throw Failure(E_INVALIDARG, L"Tour", L"There is no resource " + resource + L".");
}

long Roster::idOf(const std::wstring& group) const
{
    long id = 0;
    announced<IGroups>(root_, [&](const EventArguments& each) {
        if (each.text(1).view() == group)
            id = each.number(0);
    });
    if (id == 0)
        throw Failure(E_INVALIDARG, L"Tour", L"There is no group " + group + L".");
    return id;
}

} // namespace korvane::host
