#include "demo/host/schedule/ScheduleLayout.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

/// Bars that are shorter are drawn this wide, so that they can be hit.
constexpr int narrowestBar = 6;

} // namespace

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
    int top = metrics_.headerHeight() - scrolled_;
    for (std::size_t above = 0; above < row; ++above)
        top += rowHeight(above);
    return top;
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

std::optional<Hit> ScheduleLayout::at(POINT point) const noexcept
{
    if (point.x < metrics_.nameWidth || point.y < metrics_.headerHeight())
        return std::nullopt;
    Hit hit{std::nullopt, timeAt(point.x), nullptr};
    for (std::size_t row = 0; row < schedule_.rows().size(); ++row)
        if (const int top = rowTop(row); point.y >= top && point.y < top + rowHeight(row))
            hit.row = row;
    for (const Bar& bar : schedule_.bars())
        if (const RECT place = placeOf(bar); PtInRect(&place, point))
            hit.bar = &bar;
    return hit;
}

std::optional<std::size_t> ScheduleLayout::rowNear(int y) const noexcept
{
    const std::size_t count = schedule_.rows().size();
    if (count == 0)
        return std::nullopt;
    std::size_t row = 0;
    while (row + 1 < count && y >= rowTop(row + 1))
        ++row;
    return row;
}

} // namespace korvane::host
