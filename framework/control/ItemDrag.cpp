#include "framework/control/ItemDrag.h"

#include "framework/control/DialogWindow.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <cstdlib>

namespace korvane
{

namespace
{

constexpr UINT_PTR scrolling = 1; // timer
constexpr UINT scrollInterval = 50;

} // namespace

void ItemDrag::watch(HWND list) noexcept
{
    list_ = list;
    from_ = -1;
    SetWindowSubclass(list, &procedure, reinterpret_cast<UINT_PTR>(this), reinterpret_cast<DWORD_PTR>(this));
}

LRESULT CALLBACK ItemDrag::procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                     DWORD_PTR drag) noexcept
{
    auto& self = *reinterpret_cast<ItemDrag*>(drag);
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, &procedure, id);
    if (message == WM_NCDESTROY || (message != WM_LBUTTONDOWN && self.from_ < 0))
        return DefSubclassProc(window, message, first, second);
    const ComPtr<IUnknown> alive(self.dialog_.identity()); // the container may let go of the dialog meanwhile
    const auto result = self.handle(message, first, second);
    return result ? *result : DefSubclassProc(window, message, first, second);
}

/// The result of a message; none for what is left to the list.
std::optional<LRESULT> ItemDrag::handle(UINT message, WPARAM first, LPARAM second) noexcept
{
    switch (message)
    {
    case WM_LBUTTONDOWN:
        return press(first, second);
    case WM_MOUSEMOVE:
        mouse_ = GET_Y_LPARAM(second);
        follow();
        return 0;
    case WM_TIMER:
        if (first != scrolling)
            return std::nullopt;
        follow();
        return 0;
    case WM_LBUTTONUP:
        ReleaseCapture();
        return 0;
    case WM_CAPTURECHANGED:
        end();
        return 0;
    case WM_GETDLGCODE: // Esc is the drag's for now, and no key may do anything else
        return DLGC_WANTALLKEYS;
    case WM_KEYDOWN:
        if (first == VK_ESCAPE)
        {
            dropAt(from_);
            ReleaseCapture();
        }
        return 0;
    default:
        return std::nullopt;
    }
}

/// The list gets press and release together: it selects the item, and does not follow the mouse itself.
LRESULT ItemDrag::press(WPARAM keys, LPARAM position) noexcept
{
    const LRESULT result = DefSubclassProc(list_, WM_LBUTTONDOWN, keys, position);
    DefSubclassProc(list_, WM_LBUTTONUP, keys & ~static_cast<WPARAM>(MK_LBUTTON), position);
    RECT item{};
    const LRESULT selected = SendMessageW(list_, LB_GETCURSEL, 0, 0);
    SendMessageW(list_, LB_GETITEMRECT, static_cast<WPARAM>(selected), reinterpret_cast<LPARAM>(&item));
    if (selected < 0 || !PtInRect(&item, {GET_X_LPARAM(position), GET_Y_LPARAM(position)}))
        return result;
    from_ = static_cast<int>(selected);
    pressed_ = mouse_ = GET_Y_LPARAM(position);
    moving_ = false;
    SetCapture(list_);
    return result;
}

/// Beyond the list's edges the item goes on step by step, and the list scrolls with it.
void ItemDrag::follow() noexcept
{
    if (!moving_ && std::abs(mouse_ - pressed_) < GetSystemMetrics(SM_CYDRAG))
        return;
    if (!std::exchange(moving_, true))
        SetTimer(list_, scrolling, scrollInterval, nullptr);
    RECT whole{};
    GetClientRect(list_, &whole);
    const auto height = std::max(static_cast<int>(SendMessageW(list_, LB_GETITEMHEIGHT, 0, 0)), 1);
    const auto top = static_cast<int>(SendMessageW(list_, LB_GETTOPINDEX, 0, 0));
    const auto last = static_cast<int>(SendMessageW(list_, LB_GETCOUNT, 0, 0)) - 1;
    const int row = mouse_ < 0 ? -1 : std::min<int>(mouse_, whole.bottom) / height;
    const int target = std::clamp(top + row, 0, last);
    if (target != SendMessageW(list_, LB_GETCURSEL, 0, 0))
        dropAt(target);
}

void ItemDrag::dropAt(int target) noexcept
{
    dialog_.run([this, target] { drop_(target); });
}

void ItemDrag::end() noexcept
{
    KillTimer(list_, scrolling);
    from_ = -1;
}

} // namespace korvane
