// What the schedule shows: a row for each resource, and in it a bar for each occurrence of an activity.
#pragma once

#include "demo/host/schedule/Moment.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace korvane::host
{

struct Resource
{
    long id;
    std::wstring name;
    long color = 0; ///< RGB; below 1 for none
};

/// Which occurrence of which activity.
struct BarId
{
    long event = 0;
    long instance = 0; ///< 0 for an activity that does not repeat
    friend bool operator==(const BarId&, const BarId&) = default;
    friend bool operator<(const BarId& left, const BarId& right) noexcept
    {
        return left.event != right.event ? left.event < right.event : left.instance < right.instance;
    }
};

struct Occurrence
{
    BarId id;
    long resource;
    long type;
    OleDate start;
    OleDate end;
    std::wstring text;
};

struct Bar : Occurrence
{
    std::size_t row = 0;
    int lane = 0; ///< bars of a row that overlap stand in lanes of their own
};

struct Row
{
    Resource resource;
    int lanes = 1;
    int lanesAbove = 0; ///< those of all rows above
};

class Schedule
{
public:
    /// A resource that stands in several groups has one row.
    void setResources(std::vector<Resource> resources);
    /// Those of other resources are left out.
    void setOccurrences(std::vector<Occurrence> occurrences);
    /// A bar takes this much room at least, in minutes, lest the next one cover it.
    void setShortestBar(long minutes);
    /// Colours by type; below 1 for none.
    void setColors(std::map<long, long> colors) { colors_ = std::move(colors); }

    const std::vector<Row>& rows() const noexcept { return rows_; }
    /// Row by row, and in each row by their start.
    const std::vector<Bar>& bars() const noexcept { return bars_; }
    std::span<const Bar> barsOf(std::size_t row) const noexcept;
    const Bar* find(BarId id) const noexcept;

    /// The colour of an activity's type; empty for a type that has none.
    std::optional<COLORREF> colorOf(long type) const;

private:
    void layOut();

    std::vector<Row> rows_;
    std::vector<Occurrence> occurrences_;
    std::vector<Bar> bars_;
    long shortestBar_ = 15;
    std::map<long, long> colors_;
};

} // namespace korvane::host
