// Where things are in the schedule's window: names at the left, the time's header above, the rows below it.
#pragma once

#include "demo/host/schedule/Schedule.h"
#include "demo/host/schedule/TimeScale.h"

namespace korvane::host
{

/// Bars that are shorter are drawn this wide, in pixels, so that they can be hit.
constexpr int narrowestBar = 6;

/// Sizes in pixels.
struct ScheduleMetrics
{
    int nameWidth;
    int headerLine; ///< the header has two of them
    int laneHeight;
    int rowMargin; ///< above the first and below the last lane
    int padding;   ///< around texts

    /// @param textHeight of the font that everything is written in.
    static ScheduleMetrics forDpi(int dpi, int textHeight) noexcept;

    int headerHeight() const noexcept { return 2 * headerLine; }
};

/// A row and a time in it.
struct Slot
{
    std::size_t row = 0;
    OleDate start;
    OleDate end;
};

/// Rows that follow each other; none where the end is the first.
struct RowRange
{
    std::size_t first = 0;
    std::size_t end = 0;
};

/// What is at a point.
struct Hit
{
    std::optional<std::size_t> row; ///< empty below the last row
    OleDate time;
    const Bar* bar = nullptr;
};

class ScheduleLayout
{
public:
    ScheduleLayout(const Schedule& schedule, const TimeScale& scale, const ScheduleMetrics& metrics,
                   int scrolled) noexcept
        : schedule_(schedule), scale_(scale), metrics_(metrics), scrolled_(scrolled)
    {
    }

    /// The end of the rows counts as one more row.
    int rowTop(std::size_t row) const noexcept;
    int rowHeight(std::size_t row) const noexcept;
    int heightOfRows() const noexcept;

    int pixelOf(OleDate moment) const noexcept { return metrics_.nameWidth + scale_.pixelOf(moment); }
    OleDate timeAt(int pixel) const noexcept { return scale_.timeAt(pixel - metrics_.nameWidth); }

    RECT placeOf(const Bar& bar) const noexcept;
    /// All lanes of the row.
    RECT placeOf(const Slot& slot) const noexcept;

    RECT placeOfName(std::size_t row) const noexcept;

    /// Empty in the header and among the names.
    std::optional<Hit> at(POINT point) const noexcept;
    /// The row whose name is at a point.
    std::optional<std::size_t> nameAt(POINT point) const noexcept;
    /// The row that is nearest to a height; empty when there are no rows.
    std::optional<std::size_t> rowNear(int y) const noexcept;
    /// The rows nearest to two heights, and those between.
    RowRange rowsBetween(int top, int bottom) const noexcept;

private:
    std::optional<std::size_t> rowAt(int y) const noexcept;

    const Schedule& schedule_;
    const TimeScale& scale_;
    const ScheduleMetrics& metrics_;
    int scrolled_; ///< pixels of the rows above the window's edge
};

} // namespace korvane::host
