// The controls of a dialog, in the vocabulary that the dialogs are described in: Caption, Text, ItemData,
// ListIndex, Visible, Top, Height. They are members of their dialog, declared in tab order:
//
//   Frame fraEdit{*this, {.name = L"fraEdit", .place = {0, 0, 4500, 600}}};
//   Label lblName{fraEdit, {.name = L"lblName", .place = {120, 165, 900, 195}, .text = L"21004"}};
//   TextBox txtName{fraEdit, {.name = L"txtName", .place = {1080, 120, 3300, 285}}};
//
// A caption, text or tooltip in a layout is the decimal id of a text. Windows come into being when the dialog
// readies itself; until then, and without them, the properties are kept here. Controls of a kind of their own have
// a header of their own: ComboBox.h, TreeView.h, DateTimePicker.h, UpDown.h.
#pragma once

#include "framework/com/Bstr.h"
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
    /// Which of a control's properties hold a user-visible text.
    enum class TextProperty
    {
        none,
        text,
        caption
    };

    Control(Surface surface, const Design& design, TextProperty textProperty);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;

    const wchar_t* name() const noexcept { return name_; }

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

    TextProperty textProperty() const noexcept { return textProperty_; }
    std::wstring textValue() const;
    const std::wstring& Caption() const noexcept { return text_; }
    void setTextValue(std::wstring_view text);
    const std::wstring& ToolTipText() const noexcept { return toolTip_; }
    void setToolTipText(std::wstring_view text);

    HWND window() const noexcept { return window_; }
    bool hasFocus() const noexcept { return window_ && GetFocus() == window_; }
    void setFocus() const noexcept;

    // For the dialog's window.
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
    virtual void notified(const NMHDR& notification);
    virtual void scrolled() {}
    virtual void draw(const DRAWITEMSTRUCT&) const {}
    /// What a control has posted to itself.
    virtual void posted(LPARAM) {}
    /// Takes over what the user is still typing.
    virtual void completeEdit() {}

protected:
    virtual HWND createWindow(HWND parent, int id) = 0;
    HWND createWindow(HWND parent, int id, const wchar_t* windowClass, DWORD style,
                      DWORD extendedStyle) const;

    /// Runs a handler under the dialog's error trap.
    void raise(const std::function<void()>& handler) const;

    void focusNotified(bool arrived) const noexcept;

    /// The change of the text at hand is the owner's.
    bool isSettingText() const noexcept { return settingText_; }

    LRESULT send(UINT message, WPARAM first = 0, LPARAM second = 0) const noexcept;

    DialogWindow& dialog_;

private:
    Frame* frame_;
    const wchar_t* name_;
    int id_;
    TextProperty textProperty_;
    Place place_;
    std::wstring text_;
    std::wstring toolTip_;
    bool visible_ = true;
    bool enabled_ = true;
    bool settingText_ = false;
    HWND window_ = nullptr;
    struct Arrangement
    {
        RECT pixels;
        bool shown;
    };
    std::optional<Arrangement> arranged_; ///< the last one
};

/// A region of the dialog. What stands in it moves, shows and hides with it.
class Frame : public Control
{
public:
    Frame(Surface surface, const Design& design) : Control(surface, design, TextProperty::none) {}

    DialogWindow& dialog() const noexcept { return dialog_; }

protected:
    using Control::createWindow;
    HWND createWindow(HWND, int) override { return nullptr; }
};

class Label : public Control
{
public:
    Label(Surface surface, const Design& design) : Control(surface, design, TextProperty::caption) {}

    void setCaption(std::wstring_view caption) { setTextValue(caption); }

    /// Twips that the caption takes in the dialog's font.
    float captionWidth() const;

    /// Makes this the label of a control: its access key leads there, and screen readers name the control by it.
    void labels(const Control& control) const noexcept;

protected:
    using Control::createWindow;
    HWND createWindow(HWND parent, int id) override;
};

class Button : public Control
{
public:
    Button(Surface surface, const Design& design) : Control(surface, design, TextProperty::caption) {}

    std::function<void()> onClick; ///< by the user

    void notify(WORD code) override;

protected:
    using Control::createWindow;
    HWND createWindow(HWND parent, int id) override;
};

/// A button with a state.
class CheckableButton : public Button
{
public:
    using Button::Button;

    bool Value() const noexcept { return send(BM_GETCHECK) == BST_CHECKED; }
    /// Does not raise onClick.
    void setValue(bool checked) const noexcept;
};

class CheckBox : public CheckableButton
{
public:
    using CheckableButton::CheckableButton;

protected:
    using Control::createWindow;
    HWND createWindow(HWND parent, int id) override;
};

/// One of several: those that follow each other in the layout exclude each other.
class OptionButton : public CheckableButton
{
public:
    enum class Position
    {
        first,
        further
    };

    OptionButton(Surface surface, const Design& design, Position position = Position::further)
        : CheckableButton(surface, design), position_(position)
    {
    }

protected:
    using Control::createWindow;
    HWND createWindow(HWND parent, int id) override;

private:
    Position position_;
};

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
    using Control::createWindow;
    HWND createWindow(HWND parent, int id) override;

private:
    Kind kind_;
    WPARAM limit_;
};

/// A field of one colour.
class Swatch : public Control
{
public:
    Swatch(Surface surface, const Design& design) : Control(surface, design, TextProperty::none) {}

    /// @param color RGB; below 1 for none.
    void setFillColor(long color);
    long FillColor() const noexcept { return color_; }

    void draw(const DRAWITEMSTRUCT& item) const override;

protected:
    using Control::createWindow;
    HWND createWindow(HWND parent, int id) override;

private:
    long color_ = 0;
};

class ListBox : public Control
{
public:
    ListBox(Surface surface, const Design& design) : Control(surface, design, TextProperty::none) {}

    /// Adds an item at the end, with its data. Throws E_OUTOFMEMORY when the list is full.
    void AddItem(BSTR text, long itemData);
    void Clear();
    int ListCount() const noexcept;
    int ListIndex() const noexcept; ///< -1 without a selection
    long ItemData(int index) const noexcept;
    std::wstring List(int index) const;

    std::function<void()> onClick;    ///< the selection was made, by mouse or keyboard
    std::function<void()> onDblClick; ///< comes after onClick

    void notify(WORD code) override;

    /// While it lives, the list is not redrawn: filling is as quick as the list itself.
    class Filling
    {
    public:
        explicit Filling(ListBox& list) noexcept;
        Filling(const Filling&) = delete;
        Filling& operator=(const Filling&) = delete;
        ~Filling();

    private:
        ListBox& list_;
    };

protected:
    using Control::createWindow;
    HWND createWindow(HWND parent, int id) override;
};

} // namespace korvane
