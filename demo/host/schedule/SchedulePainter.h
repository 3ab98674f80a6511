// Draws the schedule.
#pragma once

#include "demo/host/schedule/ScheduleLayout.h"

namespace korvane::host
{

/// Everything that is shown but the data.
struct ScheduleView
{
    const Schedule& schedule;
    const TimeScale& scale;
    const ScheduleMetrics& metrics;
    ScheduleLayout layout;
    OleDate now;
    const Bar* selected = nullptr;
    std::optional<Slot> slot;    ///< where the keyboard is, when no bar is selected
    std::optional<Slot> outline; ///< where what is moved would land
    bool copies = false;         ///< it is a copy that would land there
    bool focused = false;
};

class SchedulePainter
{
public:
    SchedulePainter(HDC context, const ScheduleView& view, const RECT& area) noexcept;
    SchedulePainter(const SchedulePainter&) = delete;
    SchedulePainter& operator=(const SchedulePainter&) = delete;
    ~SchedulePainter();

    /// @param font that the metrics were made for.
    void draw(HFONT font) const;

private:
    void drawDays() const;
    void drawRows() const;
    void drawBars() const;
    void drawBar(const Bar& bar) const;
    void drawMarks() const;
    void drawOutline() const;
    void drawNames() const;
    void drawHeader() const;
    void drawHeading(OleDate from, OleDate to, const wchar_t* picture) const;
    void drawLowerLine() const;

    void fill(const RECT& place, COLORREF color) const noexcept;
    void frame(const RECT& place, COLORREF color) const noexcept;
    void text(RECT place, const std::wstring& text, COLORREF color, UINT format) const;
    void clipTo(const RECT& place) const noexcept;
    RECT timeArea() const noexcept;
    RowRange seenRows() const noexcept;

    HDC context_;
    const ScheduleView& view_;
    RECT area_;
    int saved_;
};

} // namespace korvane::host
