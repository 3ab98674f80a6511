// The frame of every dialog: the Ready sequence, texts, font, OK and Cancel, and the error trap.
//
// A dialog is made, gets ready, submits its command to the container, and ends. OK is two steps: submit() hands the
// command over and gives the container's answer, close() tells the container that the dialog is done with. What comes
// between them is the dialog's own: by default it ends, and one that edits item after item goes on.
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
#include "framework/DataLayer.h"
#include "framework/com/ConnectionPoint.h"
#include "framework/com/Object.h"
#include "framework/control/Button.h"
#include "framework/control/Frame.h"
#include "framework/control/OleControl.h"
#include "framework/modKorvaneDlg.h"

#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>

#include <vector>

namespace korvane
{

class AppDialog : public IDialogControl,
                  public OleControl,
                  public EventSource<IDialogEvents>,
                  public EventOwner
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

    // IProvideClassInfo2
    STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override;

    // IDialogControl
    STDMETHODIMP get_Font(IFontDisp** value) override;
    STDMETHODIMP putref_Font(IFontDisp* value) override;
    STDMETHODIMP get_Enabled(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Enabled(VARIANT_BOOL value) override;
    STDMETHODIMP get_hWnd(long* value) override;

    /// The OK button.
    void ok();
    void cancel();

    void run(const std::function<void()>& handler) noexcept override;
    HICON loadIcon(long id, int size) const noexcept override;

    // EventOwner
    ComPtr<IUnknown> keptAlive() noexcept override
    {
        return ComPtr<IUnknown>(static_cast<IDialogControl*>(this));
    }
    void announcementFailed(const Failure& failure) noexcept override { raiseError(failure); }

protected:
    /// @param titleId text id of the dialog's title; @param width and @param height its designed size in twips.
    AppDialog(REFCLSID classId, long titleId, float width, float height);

    /// Fills lists and fields from the command and the data layer. What it returns is the result of Ready.
    virtual bool load() = 0;
    /// Writes the controls' values into the command.
    virtual void takeValues() = 0;
    /// The container has been given the command, and has answered whether it executed it. By default the dialog has
    /// done its part, whatever the answer; one that does not close goes on, and submits again at the next OK.
    virtual void submitted(bool executed);
    /// The ready dialog is seen, or about to be. Comes once for each Ready.
    virtual void shown() {}

    /// Text id of the dialog's title.
    virtual long titleId() const { return titleId_; }

    virtual void storeCommand(IDispatch* command) = 0;
    virtual ComPtr<IAppCommand> commandView() const = 0;

    /// The command at hand gives way to another one. Whoever is using it does not lose it: it lives until what is being
    /// handled is over.
    void commandGivesWay();

    /// What OK does once the values are taken: submits the command, and then what submitted() says. Does nothing before
    /// a Ready has succeeded, while the container executes, and after the end.
    void confirm();
    /// Tells the container that the dialog is done with. Where that fails after a submission, nothing can be entered
    /// any more, for nothing would be stored; OK and Cancel tell it once more.
    void close(bool cancelled);
    /// A Ready has succeeded, and the dialog is neither at its end nor has it submitted what ends it.
    bool isReady() const noexcept { return state_ == State::ready; }
    /// The container executes the command: what it holds stays as it was confirmed, also where the container has the
    /// dialog loaded anew.
    bool isExecuting() const noexcept { return state_ == State::submitting; }
    /// A Ready has succeeded, and the dialog has not come to its end: it shows data.
    bool isLoaded() const noexcept { return isReady() || isExecuting(); }

    void raiseError(const Failure& failure) noexcept;
    /// Tells the container that the dialog has changed its size.
    void raiseResize();

    /// Asks the user a question in front of the container's window, with texts of the current resources.
    /// @param style buttons and icon of a message box; the answer is one of its ids. @param captionId the dialog's
    /// title where not given.
    int ask(long textId, UINT style, long captionId = 0) const;

private:
    enum class State
    {
        made,       ///< no Ready has succeeded: there is nothing to submit
        ready,      ///< the user works
        submitting, ///< the container executes the command, or the dialog does what follows
        submitted,  ///< the command was submitted, but the container has failed to end the dialog
        ended       ///< the container knows that the dialog is done with
    };

    bool submit();
    void beginAnew();
    bool prepare();
    void LocalizeCaptions();
    bool makeRoomForTexts();
    void ApplyContainerFont();
    void applyFont(IUnknown* font);
    std::vector<ComPtr<IUnknown>> containers() const;
    HWND containerWindow() const;
    void connectEvents();

    void ambientFontChanged() override;
    void dpiChanged() override;
    void focusArrived() noexcept override;
    void windowShown() noexcept override;
    void postedToDialog() override;
    void closing() noexcept override;
    void handled() noexcept override;

    long titleId_;
    ComPtr<AppDialogEvents> events_;
    std::vector<ComPtr<IAppCommand>> former_; ///< the commands that have given way to others meanwhile
    State state_ = State::made;
    bool cancelled_ = false; ///< what the container is still to be told when submitted
    bool localized_ = false; ///< the fonts of the container count from then on
    bool toBeShown_ = false; ///< the dialog is ready and has not been seen yet
};

/// The COM object of a dialog: its tables, and the steps from one interface to another, are there once for all dialogs
/// of a base.
template <class Base, class... Further>
class DialogObject
    : public Object<DialogObject<Base, Further...>, Base, IDialogControl, IAppDialog, Further..., IOleObject,
                    IOleInPlaceObject, IOleInPlaceActiveObject, IOleControl, IViewObject2, IPersistStreamInit,
                    IPersistPropertyBag, IProvideClassInfo2, IQuickActivate, IConnectionPointContainer>
{
protected:
    using DialogObject::Object::Object;
};

/// A dialog for one command class, on the frame or on a base between them, which may answer further interfaces.
template <class Class, class Command, class Base = AppDialog, class... Further>
class Dialog : public DialogObject<Base, Further...>
{
protected:
    template <class... More>
    Dialog(long titleId, float width, float height, More&&... more)
        : Dialog::DialogObject(*Class::classId(), titleId, width, height, std::forward<More>(more)...)
    {
    }

    /// The command that the dialog edits. Throws E_POINTER as long as there is none.
    Command& command() const { return *notNull(command_.get()); }
    bool hasCommand() const noexcept { return static_cast<bool>(command_); }

    /// Goes on with another command of the dialog's own making.
    void replaceCommand(ComPtr<Command> next)
    {
        this->commandGivesWay();
        command_ = std::move(next);
    }

private:
    void storeCommand(IDispatch* value) override
    {
        // The command's class id answers with the C++ object, and only within this module: a command of another
        // class, or of another apartment, is refused here.
        void* object = nullptr;
        if (value && FAILED(value->QueryInterface(*Command::classId(), &object)))
            throw Failure(DISP_E_TYPEMISMATCH);
        replaceCommand(ComPtr<Command>::adopt(static_cast<Command*>(object)));
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

    bool alignsRight() const noexcept override { return true; }

    Button cmdOk;
    Button cmdCancel;
};

} // namespace korvane
