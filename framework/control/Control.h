// The controls of a dialog, in the vocabulary that the dialogs are described in: Caption, Text, ItemData,
// ListIndex, Visible, Top, Height. They are members of their dialog, declared in tab order:
//
//   Frame fraEdit{*this, {.name = L"fraEdit", .place = {0, 0, 4500, 600}}};
//   Label lblName{fraEdit, {.name = L"lblName", .place = {120, 165, 900, 195}, .text = L"21004"}};
//   TextBox txtName{fraEdit, {.name = L"txtName", .place = {1080, 120, 3300, 285}}};
//
// A caption, text or tooltip in a layout is the decimal id of a text. Windows come into being when the dialog
// readies itself; until then, and without them, the properties are kept here. Each kind of control has
// its header beside this one.
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/control/Geometry.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace korvane
{

class DialogWindow;
class Frame;

/// What a control stands on: the dialog itself, or a frame on it.
struct Surface
{
    Surface(DialogWindow& ofDialog) noexcept : dialog(ofDialog) {}
    Surface(Frame& ofFrame) noexcept;

    DialogWindow& dialog;
    Frame* frame = nullptr;
};

/// What a layout says about a control.
struct Design
{
    const wchar_t* name = L"";
    Place place; ///< in twips, on the control's surface
    const wchar_t* text = L"";
    const wchar_t* toolTip = L"";
    int id = 0; ///< IDOK and IDCANCEL make the default and the cancel button; 0 for any other control
};

class Control
{
public:
    Control(Surface surface, const Design& design);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;

    const wchar_t* name() const noexcept { return name_; }
    /// The frame that the control stands in; null for none.
    const Frame* frame() const noexcept { return frame_; }

    /// Place in twips on the control's surface.
    const Place& place() const noexcept { return place_; }
    void setPlace(const Place& place);
    float Left() const noexcept { return place_.left; }
    float Top() const noexcept { return place_.top; }
    float Width() const noexcept { return place_.width; }
    float Height() const noexcept { return place_.height; }
    float right() const noexcept { return place_.left + place_.width; }
    float bottom() const noexcept { return place_.bottom(); }
    void setLeft(float left);
    void setTop(float top);
    void setWidth(float width);

    /// A control shows when it and its frame are visible.
    bool Visible() const noexcept { return visible_; }
    void setVisible(bool visible);
    bool shows() const noexcept;

    bool Enabled() const noexcept { return enabled_; }
    void setEnabled(bool enabled);

    /// The text of the control's window: a caption, what a text box holds, or what a screen reader calls the control.
    virtual std::wstring textValue() const { return text_; }
    virtual void setTextValue(std::wstring_view text);
    const std::wstring& Caption() const noexcept { return text_; }
    const std::wstring& ToolTipText() const noexcept { return toolTip_; }
    void setToolTipText(std::wstring_view text);

    HWND window() const noexcept { return window_; }
    bool hasFocus() const noexcept;
    void setFocus() const noexcept;

    // The keys that go to the control, before it sees them. True for a key that is dealt with: the control does not see
    // it. To be bound before the control has its window.
    std::function<bool(WORD key, DWORD modifiers)> onKeyDown; ///< modifiers: a sum of KeyModifier
    std::function<bool(wchar_t character)> onKeyPress;
    /// Tab, Enter and Esc, which are the dialog's, before it sees them. From where the focus is then, Tab leads on.
    std::function<bool(WORD key)> onDialogKey;

    /// What the control shows is on the screen when the call returns.
    void showNow() const noexcept;
    /// Puts the control in front of those that it overlaps. It comes first in the tab order then.
    void bringToFront() const noexcept;
    /// Twips that the caption takes in the dialog's font.
    float captionWidth() const;
    /// Twips that a text takes in the dialog's font, its lines broken where they are wider than a width.
    float textHeight(std::wstring_view text, float width) const;

    /// While it lives, the control is not redrawn: a list or tree is filled as quickly as the platform's own.
    class Filling
    {
    public:
        explicit Filling(const Control& control) noexcept;
        Filling(const Filling&) = delete;
        Filling& operator=(const Filling&) = delete;
        ~Filling();

    private:
        const Control& control_;
    };

    // For making room for texts.
    /// Twips that the control is to be wide for its caption to be read; 0 where it shows none.
    virtual float neededWidth() const { return 0; }
    /// Whether the control becomes wider with the part of the dialog that it spans.
    virtual bool stretches() const noexcept { return true; }

    // For the dialog's window.
    /// In a frozen dialog only the ways out are enabled.
    void showEnabled() const noexcept;
    void create(HWND parent, int id);
    void forgetWindow() noexcept;
    Place placeOnDialog() const noexcept;
    /// Twips that the control's window is higher than what shows of it.
    virtual float hiddenHeight() const noexcept { return 0; }
    /// Notes where the window is put, in pixels, and whether it shows. False when it is like that already.
    bool arranges(const RECT& pixels, bool shown) noexcept;
    /// The window may be anywhere: the next arrangement puts it where it belongs.
    void forgetArrangement() noexcept { arranged_.reset(); }
    /// The window is where its place is.
    virtual void placed() {}
    /// The window is about to go.
    virtual void closing() noexcept {}
    virtual void notify(WORD code);
    virtual LRESULT notified(const NMHDR& notification);
    virtual void scrolled() {}
    virtual void draw(const DRAWITEMSTRUCT&) const {}
    bool takesKey(WORD key, DWORD modifiers) const noexcept;
    bool takesCharacter(wchar_t character) const noexcept;
    bool takesDialogKey(WORD key) const noexcept;
    /// Shows the next page, or the one before. False for a control without pages.
    virtual bool turnsPage(bool) { return false; }
    void focusNotified(bool arrived) const noexcept;
    /// The dialog, held.
    ComPtr<IUnknown> keptAlive() const noexcept;
    /// The captions whose access keys lead to the control: its own, or that of each of its tabs. Null after the last.
    virtual const std::wstring* accessCaption(std::size_t) const noexcept { return nullptr; }
    /// Whether the access keys lead anywhere now.
    virtual bool isWithinReach() const noexcept { return enabled_ && shows(); }
    /// The access key of a caption is pressed. False leaves it to the dialog manager, which knows labels and buttons.
    virtual bool accessKeyPressed(std::size_t) { return false; }
    /// What a control has posted to itself.
    virtual void posted(LPARAM) {}
    /// Takes over what the user is still typing.
    virtual void completeEdit() {}

protected:
    virtual HWND createWindow(HWND parent, int id) = 0;
    HWND makeWindow(HWND parent, int id, const wchar_t* windowClass, DWORD style, DWORD extendedStyle);

    /// Runs a handler under the dialog's error trap.
    void raise(const std::function<void()>& handler) const;

    /// Whether the platform's control tells its owner when the focus comes and goes.
    virtual bool tellsOfFocus() const noexcept { return true; }

    /// The window to which the keys go while the control has the focus.
    virtual HWND keyWindow() const noexcept { return window_; }

    std::wstring windowText() const;
    LRESULT send(UINT message, WPARAM first = 0, LPARAM second = 0) const noexcept;
    /// The same for each of many items: past those who watch the keys of the control, for whom the platform looks up a
    /// property of the window with every message.
    LRESULT sendItem(UINT message, WPARAM first, LPARAM second = 0) const noexcept;

    DialogWindow& dialog_;
    std::wstring text_; ///< the text that the owner knows of

private:
    Frame* frame_;
    const wchar_t* name_;
    int id_;
    Place place_;
    std::wstring toolTip_;
    bool visible_ = true;
    bool enabled_ = true;
    HWND window_ = nullptr;
    WNDPROC procedure_ = nullptr; ///< the window's own
    struct Arrangement
    {
        RECT pixels;
        bool shown;
    };
    std::optional<Arrangement> arranged_; ///< the last one
};

} // namespace korvane
