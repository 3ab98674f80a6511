// Dragging the items of a list: the selected item goes along with the mouse, from place to place.
#pragma once

#include "framework/com/Platform.h"

#include <functional>
#include <optional>
#include <utility>

namespace korvane
{

class DialogWindow;

class ItemDrag
{
public:
    /// @param drop moves the selected item of the list to the place of another one, and selects it there.
    ItemDrag(DialogWindow& dialog, std::function<void(int target)> drop)
        : dialog_(dialog), drop_(std::move(drop))
    {
    }
    ItemDrag(const ItemDrag&) = delete;
    ItemDrag& operator=(const ItemDrag&) = delete;

    /// Lets the items of a list box be dragged, for as long as it has its window.
    void watch(HWND list) noexcept;

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                      DWORD_PTR drag) noexcept;
    std::optional<LRESULT> handle(UINT message, WPARAM first, LPARAM second) noexcept;
    LRESULT press(WPARAM keys, LPARAM position) noexcept;
    void follow() noexcept;
    void dropAt(int target) noexcept;
    void end() noexcept;

    DialogWindow& dialog_;
    std::function<void(int)> drop_;
    HWND list_ = nullptr;
    int from_ = -1;       ///< where the item was; -1 while none is dragged
    int pressed_ = 0;     ///< where the mouse was then
    int mouse_ = 0;       ///< and where it is, both from the list's top
    bool moving_ = false; ///< it has gone far enough to mean it
};

} // namespace korvane
