#include "framework/AppDialog.h"

#include "framework/DialogEvents.h"
#include "framework/com/Apartment.h"
#include "framework/com/LateBound.h"
#include "framework/control/TextRoom.h"

#include <string>

namespace korvane
{

namespace
{

/// The designs of all dialogs have these two buttons, with these texts.
constexpr const wchar_t* textOk = L"1002";
constexpr const wchar_t* textCancel = L"1003";

} // namespace

AppDialog::AppDialog(REFCLSID classId, long titleId, float width, float height)
    : OleControl(classId, width, height), titleId_(titleId), events_(make<AppDialogEvents>())
{
}

STDMETHODIMP AppDialog::get_Name(BSTR* title)
{
    return returns(title, [&] { return resourceText(titleId()); });
}

STDMETHODIMP AppDialog::get_Ready(VARIANT_BOOL* result)
{
    const ComPtr<IUnknown> alive(identity());
    return returns(result, [&] {
        const Batch batch(*this);
        bool loaded = false;
        beginAnew();
        undoOnFailure([&] { loaded = prepare(); },
                      [&] { beginAnew(); }); // also where another Ready has succeeded within
        if (state_ == State::made)
            state_ = State::ready;
        toBeShown_ = true;
        if (IsWindowVisible(window()))
            postToDialog();
        return loaded;
    });
}

/// The steps of Ready; what it returns is its result.
bool AppDialog::prepare()
{
    requireResources();
    requireWindow();
    LocalizeCaptions();
    ApplyContainerFont();
    createControls();
    connectEvents();
    localized_ = true;
    const IAppCommand* const command = commandView().get(); // to compare: it is not let go of meanwhile
    const bool loaded = load();
    makeRoomForTexts();
    controlInfoChanged();
    if (commandView().get() != command)
        throw Failure(E_ABORT); // what is shown may be of either
    return loaded;
}

/// While the container executes a command, another Ready brings the dialog up to date and no more.
void AppDialog::beginAnew()
{
    if (!isExecuting())
        state_ = State::made;
    toBeShown_ = false;
    rememberFocus(nullptr);
    freeze(false);
}

STDMETHODIMP AppDialog::get_Changed(VARIANT_BOOL* result)
{
    return returns(result, [] { return true; });
}

STDMETHODIMP AppDialog::putref_Command(IDispatch* value)
{
    return held([&] { // the former command may be the last to hold the host that holds the dialog
        storeCommand(value);
        state_ = State::made;
    });
}

void AppDialog::commandGivesWay()
{
    if (isHandling())
        former_.push_back(commandView());
}

void AppDialog::handled() noexcept
{
    const auto former = std::exchange(former_, {}); // the container is called as they go
}

STDMETHODIMP AppDialog::get_Command(IAppCommand** value)
{
    return returns(value, [&] { return commandView(); });
}

STDMETHODIMP AppDialog::get_Notifier(IXtExecuteEvents** value)
{
    return returns(value, [] { return ComPtr<IXtExecuteEvents>(); });
}

STDMETHODIMP AppDialog::putref_Resources(IResources* value)
{
    return guard([&] { setCurrentResources(ComPtr<IResources>(value)); });
}

STDMETHODIMP AppDialog::get_Resources(IResources** value)
{
    return returns(value, [] { return CurrentResources(); });
}

STDMETHODIMP AppDialog::GetGUID(DWORD kind, GUID* guid)
{
    if (!guid)
        return E_POINTER;
    const bool known = kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID;
    *guid = known ? __uuidof(IDialogEvents) : GUID_NULL;
    return known ? S_OK : E_INVALIDARG;
}

STDMETHODIMP AppDialog::get_Font(IFontDisp** value)
{
    return returns(value, [&] { return font().copy(); });
}

STDMETHODIMP AppDialog::putref_Font(IFontDisp* value)
{
    return held([&] {
        const Batch batch(*this);
        applyFont(notNull(value));
        if (localized_)
            makeRoomForTexts();
    });
}

STDMETHODIMP AppDialog::get_Enabled(VARIANT_BOOL* value)
{
    return returns(value, [&] { return enabled(); });
}

STDMETHODIMP AppDialog::put_Enabled(VARIANT_BOOL value)
{
    setEnabled(value != VARIANT_FALSE);
    return S_OK;
}

STDMETHODIMP AppDialog::get_hWnd(long* value)
{
    // A window handle has 32 significant bits on every platform.
    return returns(value, [&] { return static_cast<long>(reinterpret_cast<INT_PTR>(window())); });
}

/// Every caption, text and tooltip that the layout gives as a number becomes the text with that id. What fails
/// is left as designed.
void AppDialog::LocalizeCaptions()
{
    for (Control* control : controls())
    {
        attempt([&] {
            if (const auto id = numberIn(control->textValue()))
                control->setTextValue(resourceText(*id).view());
        });
        attempt([&] {
            if (const auto id = numberIn(control->ToolTipText()))
                control->setToolTipText(resourceText(*id).view());
        });
    }
}

/// A language may need more room than the layout was designed with: it becomes as wide as its texts need, and stays
/// so.
/// @return whether the dialog has another size.
bool AppDialog::makeRoomForTexts()
{
    takeTextsChanged();
    const float wider = TextRoom(controls(), Width(), resizable()).make();
    if (wider > 0)
        setSize(fitToPixels(Width() + wider, dpi()), Height());
    return wider > 0;
}

void AppDialog::ApplyContainerFont()
{
    ComPtr<IUnknown> containerFont;
    for (const auto& container : containers())
        if (!containerFont)
            containerFont = objectIn(getIfAny(container.as<IDispatch>(), L"Font"));
    if (!containerFont)
        containerFont = objectIn(ambientProperty(DISPID_AMBIENT_FONT));
    if (containerFont.as<IFont>())
        applyFont(containerFont.get());
}

/// Sets the dialog's font and rescales the layout by how much larger the font is than the former one.
void AppDialog::applyFont(IUnknown* newFont)
{
    const auto [fx, fy] = font().set(newFont, dpi());
    for (Control* control : controls())
    {
        const Place& place = control->place();
        control->setPlace({place.left * fx, place.top * fy, place.width * fx, place.height * fy});
    }
    setSize(fitToPixels(Width() * fx, dpi()), fitToPixels(Height() * fy, dpi()));
    DialogWindow::applyFont();
}

/// What the control stands on, best first: the object on which the host placed it, as the host itself calls it,
/// the container of the site, and the site.
std::vector<ComPtr<IUnknown>> AppDialog::containers() const
{
    std::vector<ComPtr<IUnknown>> found;
    const auto site = clientSite();
    if (!site)
        return found;
    const auto extended = fetchIfAny(site.as<IOleControlSite>(), &IOleControlSite::GetExtendedControl);
    for (const wchar_t* const name : {L"Container", L"Parent"}) // programs differ in what they call it
        if (auto named = objectIn(getIfAny(extended, name)))
            found.push_back(std::move(named));
    if (const auto container = fetchIfAny(site, &IOleClientSite::GetContainer))
        found.push_back(container.as<IUnknown>());
    found.push_back(site.as<IUnknown>());
    return found;
}

/// Gives the relay the container's sink. A container without one hears the dialog's events, if it subscribes to them:
/// never both, so that nothing is executed twice.
void AppDialog::connectEvents()
{
    ComPtr<IAppDialogSink> sink;
    for (const auto& container : containers())
        if (!sink)
            sink = container.as<IAppDialogSink>();
    if (!window())
        throw Failure(E_ABORT); // the container has ended the dialog meanwhile
    if (!sink)
        sink = ComPtr<IAppDialogSink>(make<DialogEvents>(point(), [this] { return pixelSize(); }).get());
    events_->putref_Sink(sink.get());
}

void AppDialog::ambientFontChanged()
{
    if (!localized_)
        return;
    const Batch batch(*this);
    ApplyContainerFont();
    makeRoomForTexts();
}

void AppDialog::dpiChanged()
{
    const Batch batch(*this);
    layoutChanged();
    setSize(fitToPixels(Width(), dpi()), fitToPixels(Height(), dpi()));
    extentChanged();
    DialogWindow::applyFont();
    if (localized_)
        makeRoomForTexts();
}

void AppDialog::closing() noexcept
{
    events_->putref_Sink(nullptr);
}

void AppDialog::ok()
{
    if (isReady())
    {
        for (Control* control : controls())
            control->completeEdit();
        takeValues();
    }
    confirm();
}

void AppDialog::cancel()
{
    if (state_ == State::submitted)
        close(cancelled_);
    else if (state_ == State::made || state_ == State::ready)
        close(true);
}

void AppDialog::confirm()
{
    if (state_ == State::submitted) // nothing is to be executed twice
        return close(cancelled_);
    if (!isReady())
        return;
    const auto failure = attempt([&] {
        const bool executed = submit();
        if (isExecuting()) // else the container has begun anew with another command
            submitted(executed);
    });
    if (isExecuting())
        state_ = State::ready;
    if (failure)
        throw *failure;
}

/// Hands the command to the container and gives its answer.
bool AppDialog::submit()
{
    state_ = State::submitting;
    const auto events = events_; // the container may let go of the dialog in the call
    return fetch(events, &IAppDialogEvents::SubmitCommand, commandView().get());
}

void AppDialog::submitted(bool)
{
    close(false);
}

void AppDialog::close(bool cancelled)
{
    // Set before the call: the container may destroy the dialog in it.
    const State before = std::exchange(state_, State::ended);
    const auto events = events_;
    undoOnFailure(
        [&] { call(events, &IAppDialogEvents::RaiseDone, cancelled ? VARIANT_TRUE : VARIANT_FALSE); },
        [&] {
            if (state_ != State::ended)
                return; // the container has begun anew
            // The dialog still stands, and every way out of it is to work.
            state_ = before;
            if (before != State::submitting && before != State::submitted)
                return;
            state_ = State::submitted;
            cancelled_ = cancelled;
            freeze(true);
        });
}

/// Where the container shows its own window last, the focus is what tells that the dialog is seen.
void AppDialog::focusArrived() noexcept
{
    OleControl::focusArrived();
    windowShown();
}

/// Posted, so that the dialog is seen, and the container's call over, before anything comes of it.
void AppDialog::windowShown() noexcept
{
    if (toBeShown_)
        postToDialog();
}

void AppDialog::postedToDialog()
{
    if (std::exchange(toBeShown_, false))
        shown();
}

void AppDialog::raiseResize()
{
    const auto events = events_;
    call(events, &IAppDialogEvents::RaiseResize);
}

int AppDialog::ask(long textId, UINT style, long captionId) const
{
    const Bstr text = resourceText(textId);
    const Bstr caption = resourceText(captionId != 0 ? captionId : titleId());
    int answer = 0;
    runModal([&] { answer = MessageBoxW(containerWindow(), text.c_str(), caption.c_str(), style); });
    return answer;
}

/// The host's window that the dialog stands in; null for none.
HWND AppDialog::containerWindow() const
{
    const HWND container = fetchIfAny(clientSite().as<IOleInPlaceSite>(), &IOleWindow::GetWindow);
    return container ? GetAncestor(container, GA_ROOT) : nullptr;
}

void AppDialog::run(const std::function<void()>& handler) noexcept
{
    const ComPtr<IUnknown> alive(identity()); // the container may let go of the dialog in the handler
    const Batch batch(*this);
    if (const auto failure = attempt(handler))
        raiseError(*failure);
    if (!takeTextsChanged() || !isLoaded() || !window())
        return;
    attempt([this] {
        if (makeRoomForTexts())
            raiseResize();
    });
}

HICON AppDialog::loadIcon(long id, int size) const noexcept
{
    HICON icon = nullptr;
    attempt([&] { icon = resourceIcon(id, size); });
    return icon;
}

void AppDialog::raiseError(const Failure& failure) noexcept
{
    attempt([&] {
        apartment().currentError = failure;
        events_->RaiseError();
        apartment().currentError.reset();
    });
}

CommandFrame::CommandFrame(AppDialog& dialog, const Place& place, float further)
    : Frame(dialog, {.name = L"fraCommands", .place = place}),
      cmdOk(*this, {.name = L"cmdOk",
                    .place = {place.width - 2490 - further, 120, 1125, 345},
                    .text = textOk,
                    .id = IDOK}),
      cmdCancel(*this, {.name = L"cmdCancel",
                        .place = {place.width - 1245 - further, 120, 1125, 345},
                        .text = textCancel,
                        .id = IDCANCEL})
{
    cmdOk.onClick = [&dialog] { dialog.ok(); };
    cmdCancel.onClick = [&dialog] { dialog.cancel(); };
}

} // namespace korvane
