// A box to choose one item of a list from, which drops down, or to type a text in.
#pragma once

#include "framework/control/ItemControl.h"

namespace korvane
{

class ComboBox : public ItemControl
{
public:
    enum class Kind
    {
        list, ///< an item is chosen
        edit  ///< or any text is typed
    };

    ComboBox(Surface surface, const Design& design, Kind kind = Kind::list)
        : ItemControl(surface, design, messages), kind_(kind)
    {
    }

    void Clear();     ///< the text goes too
    void ClearList(); ///< of a box to type in, where the text stays
    void setListIndex(int index) noexcept;

    /// What stands in the box. While onClick is raised, it may still be the former text.
    std::wstring Text() const { return window() ? windowText() : std::wstring(); }
    void setText(std::wstring_view text); ///< of a box to type in; selects no item

    std::function<void()> onClick;  ///< the user has chosen an item; setListIndex does not raise it
    std::function<void()> onChange; ///< the user has typed; setText does not raise it

    float hiddenHeight() const noexcept override;
    void placed() override;
    void notify(WORD code) override;

protected:
    HWND createWindow(HWND parent, int id) override;
    HWND keyWindow() const noexcept override;

private:
    static const Messages messages;

    int height() const noexcept; ///< in pixels, without the list

    Kind kind_;
    bool settingText_ = false;
};

} // namespace korvane
