// The schedule: resources below each other, the time across, and the bars of what is booked.
#pragma once

#include "demo/host/Display.h"
#include "demo/host/Window.h"
#include "demo/host/schedule/ActivityMove.h"
#include "demo/host/schedule/ScheduleCursor.h"
#include "demo/host/schedule/ScheduleData.h"
#include "demo/host/schedule/SchedulePainter.h"
#include "demo/host/schedule/Wheel.h"

namespace korvane::host
{

class ScheduleWindow final : public Window
{
public:
    static constexpr const wchar_t* className = L"KorvaneHost.Schedule";

    enum Timer : UINT_PTR
    {
        timerMinute = 1,
        timerDrag
    };

    ScheduleWindow(HWND parent, const ComPtr<IRoot>& root);
    ScheduleWindow(const ScheduleWindow&) = delete;
    ScheduleWindow& operator=(const ScheduleWindow&) = delete;

    // What the user asks for with the mouse or the keyboard.
    /// A double click, on a bar or in an empty slot.
    std::function<void()> onOpen;
    std::function<void(const Bar& bar, const Slot& landing, bool copies)> onDrop;
    /// The cursor is elsewhere.
    std::function<void()> onSelect;

    /// What the pointer looks like while it has hold of a bar.
    struct Cursors
    {
        HCURSOR move;
        HCURSOR copy;
    };
    void useCursors(const Cursors& cursors) noexcept { cursors_ = cursors; }

    void place(const RECT& area) const noexcept;

    /// Shows another database, or the same one for somebody else.
    void follow(const ComPtr<IRoot>& root);
    /// Shows the resources of a group, or of all of them for 0.
    void showGroup(long group);
    long group() const noexcept { return group_; }
    /// Something has been written: shows what there is now.
    /// @param tells whether the user is to be told when that cannot be read.
    void refresh(bool tells);

    const Schedule& content() const noexcept { return schedule_; }
    /// Null when the cursor is in an empty slot.
    const Bar* selectedBar() const noexcept { return cursor_.bar(); }
    std::optional<Slot> selectedSlot() const noexcept { return cursor_.slot(); }
    /// Selects an occurrence, or any one of the activity where that one is not to be seen: as soon as what has
    /// changed is shown.
    void select(BarId bar);
    /// What the cursor is on, in words.
    std::wstring describeSelection() const;

    /// Takes the selected bar along with the arrow keys, until Enter or Esc.
    void beginMove(bool copies);
    bool isMoving() const noexcept { return move_.has_value(); }

    void zoom(int steps);
    void showToday();
    /// The first slot that is seen whole.
    OleDate firstSlot() const noexcept { return later(scale_.slotOf(scale_.start()), scale_.slotMinutes()); }
    /// Where on the screen a menu is to stand, and what for.
    struct MenuPlace
    {
        POINT point;
        bool isOfResource; ///< among the names; otherwise it is for what is booked
    };
    /// Empty where there is nothing that a menu could be for.
    /// @param asked where the user has asked for it, which is then selected; -1 and -1 for the keyboard.
    std::optional<MenuPlace> menuPlace(POINT asked);
    /// Brings a day and hour to the left edge.
    void scrollTo(OleDate start);

    ScheduleLayout layout() const noexcept { return {schedule_, scale_, metrics_, scrolled_}; }

private:
    LRESULT receive(UINT message, WPARAM first, LPARAM second) override;
    std::optional<LRESULT> receiveInput(UINT message, WPARAM first, LPARAM second);

    // What is shown.
    void paint();
    void draw(HDC context) const;
    RECT clientArea() const noexcept;
    void invalidate() const noexcept { InvalidateRect(handle(), nullptr, FALSE); }
    void cursorMoved();
    void changed();
    void tryAgain();
    void reload();
    void selectWhatIsWanted();
    void loadWhatIsSeen();

    // Scrolling.
    void updateScrollBars() const noexcept;
    void scrolledBy(WORD request, int bar);
    void scrollRows(int to);
    void scrollTime(long minutes);
    void reveal(const Slot& slot);
    int visibleHeight() const noexcept;
    long visibleMinutes() const noexcept;

    // Input.
    void pressed(POINT point);
    void selectAt(const Hit& hit);
    void selectRow(std::size_t row);
    void opened(POINT point);
    void wheel(int delta, WORD keys, int x);
    void wheelSideways(int delta);
    void zoomAround(int pixel, int steps);
    bool keyPressed(WPARAM key);

    // What is moved.
    void dragged(POINT point);
    void scrollToPointer();
    void followPointer();
    void released();
    bool keyPressedInMove(WPARAM key);
    bool movesACopy() const noexcept;
    void moveChanged() const noexcept;
    void drop(bool copies);
    void endMove();

    Schedule schedule_;
    TimeScale scale_;
    Font font_;
    ScheduleMetrics metrics_;
    ScheduleCursor cursor_;
    ScheduleData data_;
    long group_ = 0;
    int scrolled_ = 0;            ///< pixels of the rows above the edge
    std::optional<BarId> wanted_; ///< to be selected once it is loaded
    OleDate loadedFrom_;
    OleDate loadedTo_;
    bool reloadPosted_ = false;
    bool tells_ = false; ///< whether the user is to be told when the posted one is refused
    bool stale_ = false;
    Cursors cursors_{LoadCursorW(nullptr, IDC_SIZEALL), LoadCursorW(nullptr, IDC_SIZEALL)};
    WheelTurns wheelRows_;
    WheelTurns wheelTime_;
    WheelTurns wheelZoom_;
    std::optional<POINT> pressedAt_; ///< where a bar was taken hold of
    POINT pointer_{};                ///< where it has been drawn to
    std::optional<ActivityMove> move_;
    bool moveCopies_ = false;
};

} // namespace korvane::host
