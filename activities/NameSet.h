// The resources of an activity: in the order in which they were added, each one once.
#pragma once

#include <cstddef>
#include <list>
#include <unordered_map>
#include <vector>

namespace korvane
{

/// Adding, removing and asking take the same time however many resources there are.
class NameSet
{
public:
    NameSet() = default;
    NameSet(const NameSet&) = delete;
    NameSet& operator=(const NameSet&) = delete;
    NameSet(NameSet&&) = default;
    NameSet& operator=(NameSet&&) = default;

    /// False, without a change, for a resource that is there already.
    bool add(long nameId);
    /// False for a resource that is not there.
    bool remove(long nameId);
    void removeFirst();

    bool contains(long nameId) const { return places_.contains(nameId); }
    bool empty() const noexcept { return names_.empty(); }
    std::size_t size() const noexcept { return names_.size(); }
    long first() const { return names_.front(); }

    auto begin() const noexcept { return names_.begin(); }
    auto end() const noexcept { return names_.end(); }

    /// Those that are not in another set, in this one's order.
    std::vector<long> without(const NameSet& other) const;

private:
    std::list<long> names_;
    std::unordered_map<long, std::list<long>::const_iterator> places_;
};

} // namespace korvane
