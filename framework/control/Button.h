// A button to press.
#pragma once

#include "framework/control/Control.h"

#include <memory>
#include <optional>

namespace korvane
{

class Button : public Control
{
public:
    /// @param picture id of an icon that is shown in place of the caption, which stays the button's name for screen
    /// readers; 0 for none.
    Button(Surface surface, const Design& design, long picture = 0)
        : Control(surface, design), picture_(picture), secondClickCounts_(design.id == 0)
    {
    }

    /// Of two quick clicks each counts, as they do on the platform's own buttons. OK and Cancel, and a button that is
    /// told so, take the first one only: the second would be meant for what is done by then, and fall on what follows.
    /// The same goes for what a key presses again that is held down.
    void ignoreSecondClick() noexcept { secondClickCounts_ = false; }

    /// Fills the button with a colour (RGB; below 1 for none); without one it looks like any other button.
    void setFillColor(std::optional<long> color);

    std::function<void()> onClick; ///< by the user

    /// With the button's edges, and some room between them and the caption.
    float neededWidth() const override { return picture_ != 0 ? 0 : captionWidth() + 180; }
    bool stretches() const noexcept override { return false; }

    void placed() override;
    void closing() noexcept override { icon_.reset(); }
    void notify(WORD code) override;
    LRESULT notified(const NMHDR& notification) override;
    const std::wstring* accessCaption(std::size_t index) const noexcept override
    {
        return index == 0 ? &Caption() : nullptr;
    }

protected:
    HWND createWindow(HWND parent, int id) override;

private:
    void drawFilled(HDC context, RECT place, UINT state) const;

    struct IconDeleter
    {
        void operator()(HICON icon) const noexcept { DestroyIcon(icon); }
    };

    long picture_;
    bool secondClickCounts_;
    std::unique_ptr<std::remove_pointer_t<HICON>, IconDeleter> icon_;
    int iconSize_ = 0;
    std::optional<long> fillColor_;
};

} // namespace korvane
