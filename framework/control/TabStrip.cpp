#include "framework/control/TabStrip.h"

#include "framework/com/Failure.h"
#include "framework/control/DialogWindow.h"

#include <commctrl.h>

#include <algorithm>

namespace korvane
{

namespace
{

/// Pixels by which the tab that is chosen is higher than the others.
constexpr int rise = 2;

/// Lets a message take a caption over, as an item of the platform's.
template <class Send> LRESULT withItem(std::wstring& caption, const Send& send)
{
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = caption.data();
    return send(reinterpret_cast<LPARAM>(&item));
}

} // namespace

HWND TabStrip::createWindow(HWND parent, int id)
{
    const HWND strip = makeWindow(parent, id, WC_TABCONTROLW, WS_TABSTOP | WS_CLIPSIBLINGS, 0);
    for (std::size_t index = 0; index < tabs_.size(); ++index)
        withItem(tabs_[index].caption,
                 [&](LPARAM item) { return SendMessageW(strip, TCM_INSERTITEMW, index, item); });
    SendMessageW(strip, TCM_SETCURSEL, selected_, 0);
    return strip;
}

/// The tabs are as high as the strip: what is below them is the page's.
void TabStrip::placed()
{
    RECT client{};
    if (!window() || !GetClientRect(window(), &client))
        return;
    const LPARAM size = MAKELPARAM(0, client.bottom - 2 * rise);
    RECT tab{};
    send(TCM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&tab));
    if (tab.bottom - tab.top != HIWORD(size))
        send(TCM_SETITEMSIZE, 0, size);
}

std::size_t TabStrip::indexOf(std::wstring_view key) const
{
    const auto found =
        std::find_if(tabs_.begin(), tabs_.end(), [&](const Tab& tab) { return tab.key == key; });
    if (found == tabs_.end())
        throw Failure(E_INVALIDARG);
    return static_cast<std::size_t>(found - tabs_.begin());
}

void TabStrip::setTabCaption(std::wstring_view key, std::wstring_view caption)
{
    const std::size_t index = indexOf(key);
    tabs_[index].caption = caption;
    withItem(tabs_[index].caption, [&](LPARAM item) { return send(TCM_SETITEMW, index, item); });
    dialog_.reachChanged();
}

void TabStrip::select(std::wstring_view key)
{
    show(indexOf(key));
}

void TabStrip::show(std::size_t index) noexcept
{
    selected_ = index;
    send(TCM_SETCURSEL, index);
}

LRESULT TabStrip::notified(const NMHDR& notification)
{
    if (notification.code != TCN_SELCHANGE)
        return Control::notified(notification);
    accessKeyPressed(static_cast<std::size_t>(send(TCM_GETCURSEL)));
    return 0;
}

/// The focus comes along: where it was may be on the page that goes.
bool TabStrip::accessKeyPressed(std::size_t index)
{
    setFocus();
    show(index);
    raise(onClick);
    return true;
}

bool TabStrip::turnsPage(bool backwards)
{
    const std::size_t step = backwards ? tabs_.size() - 1 : 1;
    return accessKeyPressed((selected_ + step) % tabs_.size());
}

} // namespace korvane
