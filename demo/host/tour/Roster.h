// Who and what stands in the groups, as the data layer tells it through a root of the tour's own.
#pragma once

#include "framework/com/ComPtr.h"

#include <KorvaneData.h>

#include <string>
#include <vector>

namespace korvane::host
{

/// A resource or an activity type as the member of a group. Types have no login.
struct RosterItem
{
    long id;
    std::wstring name;
    long color;
    std::wstring login;
    long role = 0;
    bool isSynchronised = false;
};

/// As the tour prints it.
std::wstring shown(const RosterItem& item);

class Roster
{
public:
    explicit Roster(ComPtr<IRoot> root) : root_(std::move(root)) {}

    std::vector<std::wstring> groups() const;
    // Of a group, in their order.
    std::vector<RosterItem> resources(const std::wstring& group) const;
    /// Information rows, each as "label: value".
    std::vector<std::wstring> info(const std::wstring& group, const std::wstring& resource) const;
    std::vector<RosterItem> types(const std::wstring& group) const;

    // What another host does.
    void add(const std::wstring& group, const wchar_t* resource) const;
    void remove(const std::wstring& group, const std::wstring& resource) const;
    void leaveMessage(const std::wstring& group, const std::wstring& resource, const wchar_t* about) const;

private:
    long idOf(const std::wstring& group, const std::wstring& resource) const;
    long idOf(const std::wstring& group) const;

    ComPtr<IRoot> root_;
};

} // namespace korvane::host
