// The frame of every dialog: the Ready sequence, texts, font, OK and Cancel, and the error trap.
//
// A dialog class states its title, its layout as members, its bindings in the constructor, and its load routine:
//
//   class ctlEditThings final : public Dialog<ctlEditThings, EditThings>
//   {
//   public:
//       ctlEditThings();
//   private:
//       bool load() override;       // fills the dialog; the result is that of Ready
//       void takeValues() override; // OK: the controls' values into the command
//       Frame fraEdit{*this, {...}};
//       TextBox txtName{fraEdit, {...}};
//       CommandFrame fraCommands{*this, {...}};
//   };
#pragma once

#include "framework/AppDialogEvents.h"
#include "framework/com/Object.h"
#include "framework/control/OleControl.h"
#include "framework/modKorvaneDlg.h"

#include <KorvaneData.h>
#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>

#include <optional>
#include <vector>

namespace korvane
{

class AppDialog : public IDialogControl, public OleControl
{
public:
    // IAppDialog
    STDMETHODIMP get_Name(BSTR* title) override;
    STDMETHODIMP get_Ready(VARIANT_BOOL* result) override;
    STDMETHODIMP get_Changed(VARIANT_BOOL* result) override;
    STDMETHODIMP putref_Command(IDispatch* value) override;
    STDMETHODIMP get_Command(IAppCommand** value) override;
    STDMETHODIMP get_Notifier(IXtExecuteEvents** value) override;
    STDMETHODIMP putref_Resources(IResources* value) override;
    STDMETHODIMP get_Resources(IResources** value) override;

    // IDialogControl
    STDMETHODIMP get_Font(IFontDisp** value) override;
    STDMETHODIMP putref_Font(IFontDisp* value) override;
    STDMETHODIMP get_Enabled(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Enabled(VARIANT_BOOL value) override;
    STDMETHODIMP get_hWnd(long* value) override;

    /// The OK button, and whatever else confirms with it.
    void ok();
    void cancel();

    void run(const std::function<void()>& handler) noexcept override;

protected:
    /// @param titleId text id of the dialog's title; @param width and @param height its designed size in twips.
    AppDialog(REFCLSID classId, long titleId, float width, float height);

    /// Fills lists and fields from the command and the data layer. What it returns is the result of Ready.
    virtual bool load() = 0;
    /// Writes the controls' values into the command.
    virtual void takeValues() = 0;

    /// Text id of the dialog's title.
    virtual long titleId() const { return titleId_; }

    virtual void storeCommand(IDispatch* command) = 0;
    virtual ComPtr<IAppCommand> commandView() const = 0;

    /// Hands the command to the container and ends the dialog. While the container executes, and once the
    /// dialog has ended, nothing is submitted again.
    void confirm();
    /// While the container executes, and once the dialog has ended, the buttons do nothing.
    bool isOver() const noexcept { return submitting_ || ended_; }

    void raiseError(const Failure& failure) noexcept;
    /// Tells the container that the dialog has changed its size.
    void raiseResize();

    /// Whether the dialog ends as cancelled when the container has answered a submitted command.
    virtual bool cancelledAfter(bool executed) const;

    /// Asks the user a question in front of the container's window, with texts of the current resources.
    /// @param style buttons and icon of a message box; the answer is one of its ids.
    int ask(long textId, UINT style) const;

private:
    /// Tells the container that the dialog is done with.
    void end(bool cancelled);
    void LocalizeCaptions();
    void ApplyContainerFont();
    void applyFont(IUnknown* font);
    std::vector<ComPtr<IUnknown>> containers() const;
    HWND containerWindow() const;
    void connectEvents();

    void ambientFontChanged() override;
    void dpiChanged() override;
    void closing() noexcept override;

    long titleId_;
    ComPtr<AppDialogEvents> events_;
    bool ready_ = false;
    bool submitting_ = false;
    bool ended_ = false;
    /// Whether the dialog ends as cancelled, once its command has been submitted.
    std::optional<bool> cancelled_;
};

/// A dialog for one command class.
template <class Class, class Command>
class Dialog : public Object<Class, AppDialog, IDialogControl, IAppDialog, IOleObject, IOleInPlaceObject,
                             IOleInPlaceActiveObject, IOleControl, IViewObject2, IPersistStreamInit,
                             IPersistPropertyBag, IProvideClassInfo2>
{
protected:
    Dialog(long titleId, float width, float height)
        : Dialog::Object(*Class::classId(), titleId, width, height)
    {
    }

    /// The command that the dialog edits. Throws E_POINTER as long as there is none.
    Command& command() const { return *notNull(command_.get()); }
    bool hasCommand() const noexcept { return static_cast<bool>(command_); }

private:
    void storeCommand(IDispatch* value) override
    {
        // The command's class id answers with the C++ object, and only within this module: a command of another
        // class, or of another apartment, is refused here.
        void* object = nullptr;
        if (value && FAILED(value->QueryInterface(*Command::classId(), &object)))
            throw Failure(DISP_E_TYPEMISMATCH);
        command_ = ComPtr<Command>::adopt(static_cast<Command*>(object));
    }

    ComPtr<IAppCommand> commandView() const override { return command_ ? command_->asCommand() : nullptr; }

    ComPtr<Command> command_;
};

/// The frame with OK and Cancel that every dialog ends with.
class CommandFrame : public Frame
{
public:
    /// @param place of the frame; the buttons stand at its right end. @param further twips at that end that are left
    /// to further buttons.
    CommandFrame(AppDialog& dialog, const Place& place, float further = 0);

    Button cmdOk;
    Button cmdCancel;
};

/// A step of reading in the data layer: closed at the end of the step, also when the step fails.
class DataScope
{
public:
    DataScope(const ComPtr<IRoot>& root, std::wstring_view source);
    DataScope(const DataScope&) = delete;
    DataScope& operator=(const DataScope&) = delete;
    ~DataScope();

    /// Ends the step, and throws the failure of the data layer when it cannot.
    void Close();

private:
    ComPtr<IScope> scope_;
};

} // namespace korvane
