// Tabs to turn pages by. The pages are frames of the dialog, which their owner shows and hides.
#pragma once

#include "framework/control/Control.h"

#include <vector>

namespace korvane
{

class TabStrip : public Control
{
public:
    struct Tab
    {
        std::wstring key; ///< by which the owner knows it
        std::wstring caption;
    };

    TabStrip(Surface surface, const Design& design, std::vector<Tab> tabs)
        : Control(surface, design), tabs_(std::move(tabs))
    {
    }

    /// The key of the tab that is chosen: the first one to begin with.
    const std::wstring& SelectedKey() const { return tabs_.at(selected_).key; }
    /// Does not raise onClick.
    void select(std::wstring_view key);
    void setTabCaption(std::wstring_view key, std::wstring_view caption);

    /// The user has chosen a tab: by mouse, arrow keys, its access key or, anywhere in the dialog, Ctrl+Tab.
    std::function<void()> onClick;

    void placed() override;
    LRESULT notified(const NMHDR& notification) override;
    bool turnsPage(bool backwards) override;
    const std::wstring* accessCaption(std::size_t index) const noexcept override
    {
        return index < tabs_.size() ? &tabs_[index].caption : nullptr;
    }
    bool isWithinReach() const noexcept override
    {
        return Control::isWithinReach() && IsWindowEnabled(window());
    }
    bool accessKeyPressed(std::size_t index) override;

protected:
    HWND createWindow(HWND parent, int id) override;
    bool tellsOfFocus() const noexcept override { return false; }

private:
    std::size_t indexOf(std::wstring_view key) const;
    void show(std::size_t index) noexcept;

    std::vector<Tab> tabs_;
    std::size_t selected_ = 0;
};

} // namespace korvane
