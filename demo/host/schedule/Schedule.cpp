#include "demo/host/schedule/Schedule.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace korvane::host
{

namespace
{

/// The first lane that is free at a time, which it is then occupied until.
int occupyLane(std::vector<OleDate>& freeFrom, const Occurrence& occurrence, long shortestBar)
{
    const auto lane = std::find_if(freeFrom.begin(), freeFrom.end(),
                                   [&](OleDate free) { return minutesBetween(free, occurrence.start) >= 0; });
    const auto index = static_cast<int>(lane - freeFrom.begin());
    const OleDate until{std::max(occurrence.end.days, later(occurrence.start, shortestBar).days)};
    if (lane == freeFrom.end())
        freeFrom.push_back(until);
    else
        *lane = until;
    return index;
}

} // namespace

void Schedule::setResources(std::vector<Resource> resources)
{
    rows_.clear();
    std::set<long> known;
    for (Resource& resource : resources)
        if (known.insert(resource.id).second)
            rows_.push_back({std::move(resource)});
    layOut();
}

void Schedule::setOccurrences(std::vector<Occurrence> occurrences)
{
    occurrences_ = std::move(occurrences);
    layOut();
}

void Schedule::setShortestBar(long minutes)
{
    shortestBar_ = minutes;
    layOut();
}

void Schedule::layOut()
{
    std::map<long, std::size_t> rowOf;
    for (std::size_t row = 0; row < rows_.size(); ++row)
        rowOf.emplace(rows_[row].resource.id, row);

    bars_.clear();
    for (const Occurrence& occurrence : occurrences_)
        if (const auto row = rowOf.find(occurrence.resource); row != rowOf.end())
            bars_.push_back({occurrence, row->second});
    std::sort(bars_.begin(), bars_.end(), [](const Bar& left, const Bar& right) {
        return std::tuple(left.row, left.start.days, left.id) <
               std::tuple(right.row, right.start.days, right.id);
    });

    int lanes = 0;
    auto bar = bars_.begin();
    for (std::size_t row = 0; row < rows_.size(); ++row)
    {
        std::vector<OleDate> freeFrom;
        for (; bar != bars_.end() && bar->row == row; ++bar)
            bar->lane = occupyLane(freeFrom, *bar, shortestBar_);
        rows_[row].lanes = std::max(1, static_cast<int>(freeFrom.size()));
        rows_[row].lanesAbove = lanes;
        lanes += rows_[row].lanes;
    }
}

std::span<const Bar> Schedule::barsOf(std::size_t row) const noexcept
{
    const auto isAbove = [](const Bar& bar, std::size_t wanted) { return bar.row < wanted; };
    const auto first = std::lower_bound(bars_.begin(), bars_.end(), row, isAbove);
    return {first, std::lower_bound(first, bars_.end(), row + 1, isAbove)};
}

const Bar* Schedule::find(BarId id) const noexcept
{
    const auto found = std::find_if(bars_.begin(), bars_.end(), [&](const Bar& bar) { return bar.id == id; });
    return found == bars_.end() ? nullptr : &*found;
}

std::optional<COLORREF> Schedule::colorOf(long type) const
{
    const auto found = colors_.find(type);
    if (found == colors_.end() || found->second < 1)
        return std::nullopt;
    return static_cast<COLORREF>(found->second);
}

} // namespace korvane::host
