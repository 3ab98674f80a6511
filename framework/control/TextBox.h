// A box to type a text in.
#pragma once

#include "framework/control/Control.h"

#include <functional>

namespace korvane
{

class TextBox : public Control
{
public:
    enum class Kind
    {
        line,
        lines, ///< Enter is left to the default button, Ctrl+Enter breaks the line
        digits ///< takes the digits 0 to 9 and Backspace
    };

    /// @param limit characters that can be typed; 0 for as many as the platform's box can hold.
    TextBox(Surface surface, const Design& design, Kind kind = Kind::line, WPARAM limit = 0)
        : Control(surface, design, TextProperty::text), kind_(kind), limit_(limit)
    {
    }

    std::wstring Text() const { return textValue(); }
    void setText(std::wstring_view text) { setTextValue(text); }

    std::function<void()> onChange; ///< by the user; setText does not raise it
    std::function<void()> onLostFocus;

    void notify(WORD code) override;
    void completeEdit() override;

protected:
    HWND createWindow(HWND parent, int id) override;

private:
    Kind kind_;
    WPARAM limit_;
};

} // namespace korvane
