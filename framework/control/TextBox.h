// A box to type a text in.
#pragma once

#include "framework/control/Control.h"

namespace korvane
{

class TextBox : public Control
{
public:
    enum class Kind
    {
        line,
        lines, ///< Enter is left to the default button, Ctrl+Enter breaks the line
        cell,  ///< the same over a cell of a grid: with a thin edge, and without a scroll bar
        digits ///< takes the digits 0 to 9 and Backspace
    };

    /// @param limit characters that can be typed; 0 for as many as the platform's box can hold.
    TextBox(Surface surface, const Design& design, Kind kind = Kind::line, WPARAM limit = 0);

    std::wstring Text() const { return textValue(); }
    void setText(std::wstring_view text) { setTextValue(text); }

    // The selection, in characters; without one, where the caret is.
    int SelStart() const noexcept { return selection().first; }
    int SelLength() const noexcept { return selection().second; }
    void select(int start, int length) const noexcept;
    /// Types a text in place of the selection.
    void insert(const std::wstring& text) const noexcept;
    void selectAll() const noexcept { send(EM_SETSEL, 0, -1); }

    /// The text of a locked box can be selected and copied, but not changed by the user.
    bool Locked() const noexcept { return locked_; }
    void setLocked(bool locked) noexcept;

    std::function<void()> onChange; ///< by the user; setText does not raise it
    std::function<void()> onGotFocus;
    std::function<void()> onLostFocus;

    std::wstring textValue() const override;
    void setTextValue(std::wstring_view text) override;
    void notify(WORD code) override;
    void completeEdit() override;

protected:
    HWND createWindow(HWND parent, int id) override;

private:
    std::pair<int, int> selection() const noexcept;
    bool isChanged();

    Kind kind_;
    WPARAM limit_;
    bool locked_ = false;
    bool settingText_ = false;
};

} // namespace korvane
