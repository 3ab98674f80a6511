// The schedule's window: a bar that is moved, by mouse or keyboard.
#include "demo/host/schedule/ScheduleWindow.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace korvane::host
{

namespace
{

constexpr UINT scrollInterval = 60; // milliseconds from one step to the next while the pointer is outside

} // namespace

// --- by mouse

void ScheduleWindow::dragged(POINT point)
{
    if (!pressedAt_)
        return;
    pointer_ = point;
    if (!move_)
    {
        if (std::abs(point.x - pressedAt_->x) < GetSystemMetrics(SM_CXDRAG) &&
            std::abs(point.y - pressedAt_->y) < GetSystemMetrics(SM_CYDRAG))
            return;
        const Bar* bar = cursor_.bar();
        if (!bar) // it is gone meanwhile
            return;
        move_.emplace(*bar, layout().timeAt(static_cast<int>(pressedAt_->x)));
        SetTimer(handle(), timerDrag, scrollInterval, nullptr);
    }
    followPointer();
}

/// The schedule comes along as long as the pointer is beside it, whether the pointer moves or not.
void ScheduleWindow::scrollToPointer()
{
    if (!move_ || !pressedAt_)
        return;
    const RECT area = clientArea();
    if (pointer_.x < metrics_.nameWidth)
        scrollTime(-scale_.slotMinutes());
    else if (pointer_.x >= area.right)
        scrollTime(scale_.slotMinutes());
    if (pointer_.y < metrics_.headerHeight())
        scrollRows(scrolled_ - metrics_.laneHeight);
    else if (pointer_.y >= area.bottom)
        scrollRows(scrolled_ + metrics_.laneHeight);
    followPointer();
}

/// No further than the window goes: nothing lands where nobody sees it.
void ScheduleWindow::followPointer()
{
    const RECT area = clientArea();
    const auto within = [](LONG value, int from, LONG to) {
        return std::max(from, std::min(static_cast<int>(value), static_cast<int>(to) - 1));
    };
    const auto places = layout();
    if (const auto row = places.rowNear(within(pointer_.y, metrics_.headerHeight(), area.bottom)))
        move_->follow(places.timeAt(within(pointer_.x, metrics_.nameWidth, area.right)), *row, scale_);
    moveChanged();
}

void ScheduleWindow::released()
{
    if (!pressedAt_)
        return;
    if (move_)
        drop(movesACopy());
    else
        ReleaseCapture();
}

// --- by keyboard

void ScheduleWindow::beginMove(bool copies)
{
    const Bar* bar = cursor_.bar();
    if (!bar || move_)
        return;
    move_.emplace(*bar, bar->start);
    moveCopies_ = copies;
    reveal(move_->landing());
    moveChanged();
}

/// Nothing else happens meanwhile.
bool ScheduleWindow::keyPressedInMove(WPARAM key)
{
    switch (key)
    {
    case VK_LEFT:
        move_->shift(-scale_.slotMinutes());
        break;
    case VK_RIGHT:
        move_->shift(scale_.slotMinutes());
        break;
    case VK_UP:
        move_->changeRow(-1, schedule_.rows().size());
        break;
    case VK_DOWN:
        move_->changeRow(1, schedule_.rows().size());
        break;
    case VK_ESCAPE:
        endMove();
        return true;
    case VK_RETURN:
        drop(movesACopy());
        return true;
    default:
        moveChanged(); // Ctrl makes it a copy
        return true;
    }
    reveal(move_->landing());
    moveChanged();
    return true;
}

// --- both

bool ScheduleWindow::movesACopy() const noexcept
{
    return moveCopies_ || isKeyDown(VK_CONTROL);
}

void ScheduleWindow::moveChanged() const noexcept
{
    if (pressedAt_)
        SetCursor(movesACopy() ? cursors_.copy : cursors_.move);
    invalidate();
}

/// A copy may lie where its original does.
void ScheduleWindow::drop(bool copies)
{
    const auto move = std::exchange(move_, std::nullopt);
    endMove();
    if (move && (copies || move->isElsewhere()) && onDrop)
        onDrop(move->bar(), move->landing(), copies);
}

void ScheduleWindow::endMove()
{
    KillTimer(handle(), timerDrag);
    move_.reset();
    moveCopies_ = false;
    pressedAt_.reset();
    if (GetCapture() == handle())
        ReleaseCapture();
    invalidate();
}

} // namespace korvane::host
