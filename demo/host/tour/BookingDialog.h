// The activity dialog, as the tour's visitor sees and fills it.
#pragma once

#include "demo/host/tour/Visitor.h"

namespace korvane::host
{

class BookingDialog
{
public:
    /// Waits for the dialog.
    explicit BookingDialog(Visitor& visitor);

    HWND handle() const noexcept { return dialog_; }
    HWND text() const;
    HWND types() const;
    HWND tree() const;

    // What the user does.
    void enterText(const std::wstring& wanted);
    /// Puts the stop off, with the arrow keys in the hour.
    void stopLater(long hours);
    void chooseType(const std::wstring& type);
    /// Checks or unchecks a resource in the tree, with the keyboard.
    void toggle(const std::wstring& resource);
    void repeatWeekly(long count);
    void ok();
    void cancel();

    /// The resources that are checked, each once.
    std::vector<std::wstring> checked() const;

private:
    struct Node
    {
        HTREEITEM item;
        std::wstring text;
        bool isChecked;
        bool isGroup;
    };

    std::vector<Node> nodes() const;
    bool isChecked(HTREEITEM item) const;

    Visitor& visitor_;
    HWND dialog_;
};

} // namespace korvane::host
