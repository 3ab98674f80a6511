#include "demo/host/schedule/ScheduleLayout.h"

#include <algorithm>

namespace korvane::host
{

ScheduleMetrics ScheduleMetrics::forDpi(int dpi, int textHeight) noexcept
{
    const auto scaled = [dpi](int pixels) { return MulDiv(pixels, dpi, 96); };
    return {.nameWidth = scaled(132),
            .headerLine = textHeight + scaled(6),
            .laneHeight = textHeight + scaled(8),
            .rowMargin = scaled(3),
            .padding = scaled(4)};
}

int ScheduleLayout::rowTop(std::size_t row) const noexcept
{
    if (row > 0 && row == schedule_.rows().size())
        return rowTop(row - 1) + rowHeight(row - 1);
    const int lanes = row == 0 ? 0 : schedule_.rows()[row].lanesAbove;
    return metrics_.headerHeight() - scrolled_ + lanes * metrics_.laneHeight +
           static_cast<int>(row) * 2 * metrics_.rowMargin;
}

int ScheduleLayout::rowHeight(std::size_t row) const noexcept
{
    return schedule_.rows()[row].lanes * metrics_.laneHeight + 2 * metrics_.rowMargin;
}

int ScheduleLayout::heightOfRows() const noexcept
{
    return rowTop(schedule_.rows().size()) - rowTop(0);
}

RECT ScheduleLayout::placeOf(const Bar& bar) const noexcept
{
    const int top = rowTop(bar.row) + metrics_.rowMargin + bar.lane * metrics_.laneHeight;
    const int left = pixelOf(bar.start);
    // The last pixel is left to the next bar: two that touch are seen as two.
    const int right = std::max(pixelOf(bar.end) - 1, left + narrowestBar);
    return {left, top + 1, right, top + metrics_.laneHeight - 1};
}

RECT ScheduleLayout::placeOf(const Slot& slot) const noexcept
{
    const int top = rowTop(slot.row);
    const int left = pixelOf(slot.start);
    return {left, top + 1, std::max(pixelOf(slot.end), left + narrowestBar), top + rowHeight(slot.row) - 1};
}

RECT ScheduleLayout::placeOfName(std::size_t row) const noexcept
{
    return {0, rowTop(row), metrics_.nameWidth, rowTop(row) + rowHeight(row)};
}

std::optional<Hit> ScheduleLayout::at(POINT point) const noexcept
{
    if (point.x < metrics_.nameWidth || point.y < metrics_.headerHeight())
        return std::nullopt;
    Hit hit{rowAt(point.y), timeAt(point.x), nullptr};
    if (!hit.row)
        return hit;
    for (const Bar& bar : schedule_.barsOf(*hit.row))
        if (const RECT place = placeOf(bar); PtInRect(&place, point))
            hit.bar = &bar;
    return hit;
}

std::optional<std::size_t> ScheduleLayout::nameAt(POINT point) const noexcept
{
    const bool isAmongNames =
        point.x >= 0 && point.x < metrics_.nameWidth && point.y >= metrics_.headerHeight();
    return isAmongNames ? rowAt(point.y) : std::nullopt;
}

/// Empty above the first row and below the last one.
std::optional<std::size_t> ScheduleLayout::rowAt(int y) const noexcept
{
    const auto row = rowNear(y);
    if (!row || y < rowTop(*row) || y >= rowTop(*row) + rowHeight(*row))
        return std::nullopt;
    return row;
}

std::optional<std::size_t> ScheduleLayout::rowNear(int y) const noexcept
{
    const auto& rows = schedule_.rows();
    if (rows.empty())
        return std::nullopt;
    const auto below = std::partition_point(rows.begin(), rows.end(), [&](const Row& row) {
        return rowTop(static_cast<std::size_t>(&row - rows.data())) <= y;
    });
    return below == rows.begin() ? 0 : static_cast<std::size_t>(below - rows.begin()) - 1;
}

RowRange ScheduleLayout::rowsBetween(int top, int bottom) const noexcept
{
    const auto first = rowNear(top);
    const auto last = rowNear(bottom);
    return first && last ? RowRange{*first, *last + 1} : RowRange{};
}

} // namespace korvane::host
