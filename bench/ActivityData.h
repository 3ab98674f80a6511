// A data layer of activities that costs as little as one can: groups and resources in memory, and writes that do
// nothing.
#pragma once

#include "framework/com/Bstr.h"
#include "framework/com/ComPtr.h"

#include <KorvaneData.h>

#include <vector>

namespace korvane::bench
{

class ActivityData
{
public:
    ActivityData();
    ActivityData(const ActivityData&) = delete;
    ActivityData& operator=(const ActivityData&) = delete;
    ~ActivityData();

    static constexpr long firstGroup = 4;
    static constexpr long firstName = 1000;

    /// Makes it hold this many resources, in groups of so many.
    void resize(int names, int perGroup);
    int perGroup() const noexcept { return perGroup_; }
    const std::vector<Bstr>& groups() const noexcept { return groupNames_; }
    const std::vector<Bstr>& names() const noexcept { return names_; }

    /// How many resources the one activity is booked for.
    int members = 1;

    IRoot* root() const noexcept { return root_.get(); }

private:
    class Groups;
    class Names;
    class Types;
    class Events;
    class Links;
    class Scope;
    class Root;

    int perGroup_ = 1;
    std::vector<Bstr> groupNames_;
    std::vector<Bstr> names_;
    ComPtr<IRoot> root_;
};

} // namespace korvane::bench
