// The window of a dialog, and the controls on it.
#pragma once

#include "framework/control/Control.h"
#include "framework/control/DialogFont.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace korvane
{

class DialogWindow
{
public:
    DialogWindow() = default;
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;

    HWND window() const noexcept { return window_; }
    int dpi() const noexcept { return dpi_; }
    const std::vector<Control*>& controls() const noexcept { return controls_; }
    DialogFont& font() noexcept { return font_; }

    /// The object that the window belongs to. It is held while the window handles a message.
    virtual IUnknown* identity() noexcept = 0;

    /// The access keys that lead to a control, in upper case.
    std::wstring accessKeys() const;
    /// Does what the access key of a message leads to. False when it is none of a visible and enabled control.
    bool followAccessKey(MSG message) noexcept;

    /// Gives a key to the control that it goes to before the dialog has it, and Ctrl+Tab to the tabs. True when it is
    /// dealt with.
    bool takesDialogKey(const MSG& message) noexcept;

    // The ends of the tab order; null in a dialog without a control that takes the focus.
    HWND firstTabStop() const noexcept { return GetNextDlgTabItem(window_, nullptr, FALSE); }
    HWND lastTabStop() const noexcept;

    // For the controls.
    /// Whether one of them has the focus.
    bool hasFocus() const noexcept { return window_ && IsChild(window_, GetFocus()); }
    bool isFrozen() const noexcept { return frozen_; }
    /// Whether what happens comes of a key that is held down, and has come before.
    bool isKeyRepeated() const noexcept { return keyRepeated_; }
    void add(Control& control) { controls_.push_back(&control); }
    void layoutChanged() noexcept;
    void textChanged() noexcept { textsChanged_ = true; }
    /// A control has another caption, or is within reach or no longer: maybe the access keys are other ones.
    void reachChanged() noexcept { reachChanged_ = true; }
    void toolTipChanged(const Control& control);
    /// Runs a handler under the dialog's error trap.
    virtual void run(const std::function<void()>& handler) noexcept = 0;
    /// Runs a box that the user has to answer first: the container disables what of its own would let him do otherwise.
    virtual void runModal(const std::function<void()>& box) const = 0;
    virtual void focusArrived() noexcept = 0;
    virtual void focusLeft(const Control& control) noexcept = 0;
    /// The icon with an id, as wide and high as a number of pixels; null when there is none. The caller destroys it.
    virtual HICON loadIcon(long id, int size) const noexcept = 0;
    /// Lets a control come back to something once the message at hand is over.
    void post(const Control& control, LPARAM value) const noexcept;

protected:
    virtual ~DialogWindow();

    /// The dialog's window exists from the first need of it to the end of the dialog: while the dialog is not
    /// active in a container, it stands on a hidden window of its own, and what the user entered is kept.
    void requireWindow();
    void attachWindow(HWND parent);
    void parkWindow() noexcept;
    void destroyWindow() noexcept;

    /// Makes the windows of the controls, if they are not there yet.
    void createControls();

    /// Disables everything but the ways out, OK and Cancel, or lets it be as it was.
    void freeze(bool frozen) noexcept;

    /// Gives the focus to the control that had it when it left the dialog. False where none can take it.
    bool returnFocus() const noexcept;
    void rememberFocus(const Control* control) noexcept { lastFocus_ = control; }

    /// Notes the resolution of the window. True when it is another one.
    bool takeDpi() noexcept;

    /// Gives every control the dialog's font, at the window's resolution.
    void applyFont();

    /// Whether a text has changed since this was asked.
    bool takeTextsChanged() noexcept { return std::exchange(textsChanged_, false); }

    /// Puts every control where its place is, and shows and hides. Does nothing but note it within a Batch.
    void arrange() noexcept;

    /// Lets changes of the layout take effect together: while one lives, something is being handled.
    class Batch
    {
    public:
        explicit Batch(DialogWindow& dialog) noexcept : dialog_(dialog) { ++dialog_.batches_; }
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;
        ~Batch();

    private:
        DialogWindow& dialog_;
    };

    bool isHandling() const noexcept { return batches_ > 0; }
    /// The last Batch is over.
    virtual void handled() noexcept {}

    /// While it lives, what happens comes of a key.
    class KeyPress
    {
    public:
        KeyPress(DialogWindow& dialog, const MSG& message) noexcept
            : dialog_(dialog),
              former_(std::exchange(dialog.keyRepeated_, (HIWORD(message.lParam) & KF_REPEAT) != 0))
        {
        }
        KeyPress(const KeyPress&) = delete;
        KeyPress& operator=(const KeyPress&) = delete;
        ~KeyPress() { dialog_.keyRepeated_ = former_; }

    private:
        DialogWindow& dialog_;
        bool former_;
    };

    /// The resolution of the window has changed.
    virtual void dpiChanged() = 0;
    /// The access keys may be other ones than before. Comes once for all that is done together.
    virtual void accessKeysChanged() noexcept = 0;
    /// The window is about to be seen.
    virtual void windowShown() noexcept {}
    virtual void postedToDialog() {}
    void postToDialog() const noexcept;

private:
    struct AccessKey
    {
        Control* control = nullptr;
        std::size_t caption = 0;
        wchar_t spelled = 0; ///< as the caption has it
    };
    AccessKey findAccessKey(wchar_t key) const noexcept;

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;
    /// The result of a message; none for what is left to the platform.
    std::optional<LRESULT> handle(UINT message, WPARAM first, LPARAM second) noexcept;
    Control* controlOf(HWND window) const noexcept;
    bool makeParking() noexcept;
    void createToolTips();
    void destroyToolTips() noexcept;
    void relayToToolTips(HWND control, UINT mouseMessage) const noexcept;
    void tellOfSystemColors() const noexcept;

    std::vector<Control*> controls_;
    DialogFont font_;
    HWND window_ = nullptr;
    HWND parking_ = nullptr;
    HWND toolTips_ = nullptr;
    HFONT appliedFont_ = nullptr;        ///< the one that the controls have
    const Control* lastFocus_ = nullptr; ///< had the focus when it left the dialog
    int dpi_ = 96;
    int batches_ = 0;
    bool layoutPending_ = false;
    bool textsChanged_ = false;
    bool reachChanged_ = false;
    bool frozen_ = false;
    bool keyRepeated_ = false;
    bool controlsCreated_ = false;
};

} // namespace korvane
