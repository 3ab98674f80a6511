#include "framework/AppDialog.h"

#include "framework/com/Apartment.h"

#include <string>

namespace korvane
{

namespace
{

/// The designs of all dialogs have these two buttons, with these texts.
constexpr const wchar_t* textOk = L"1002";
constexpr const wchar_t* textCancel = L"1003";

ComPtr<IUnknown> objectIn(const Variant& value)
{
    return value.type() == VT_DISPATCH || value.type() == VT_UNKNOWN ? toObject(value.get()) : nullptr;
}

/// An object that a property of another object holds; empty when there is no such property.
ComPtr<IUnknown> objectProperty(const ComPtr<IUnknown>& owner, std::wstring_view name)
{
    const auto properties = owner.as<IDispatch>();
    Bstr text(name);
    LPOLESTR names[] = {text.get()};
    DISPID id = DISPID_UNKNOWN;
    if (!properties || FAILED(properties->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id)))
        return nullptr;
    DISPPARAMS none{};
    Variant value;
    properties->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value.put(), nullptr,
                       nullptr);
    return objectIn(value);
}
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
        submitting_ = ended_ = false;
        cancelled_.reset();
        requireResources();
        requireWindow();
        LocalizeCaptions();
        ApplyContainerFont();
        createControls();
        connectEvents();
        ready_ = true;
        const bool loaded = load();
        controlInfoChanged();
        return loaded;
    });
}

STDMETHODIMP AppDialog::get_Changed(VARIANT_BOOL* result)
{
    return returns(result, [] { return true; });
}

STDMETHODIMP AppDialog::putref_Command(IDispatch* value)
{
    return guard([&] { storeCommand(value); });
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

STDMETHODIMP AppDialog::get_Font(IFontDisp** value)
{
    return returns(value, [&] { return font().copy(); });
}

STDMETHODIMP AppDialog::putref_Font(IFontDisp* value)
{
    return guard([&] {
        const Batch batch(*this);
        applyFont(notNull(value));
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

void AppDialog::ApplyContainerFont()
{
    ComPtr<IUnknown> containerFont;
    for (const auto& container : containers())
        if (!containerFont)
            containerFont = objectProperty(container, L"Font").as<IUnknown>();
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
    ComPtr<IDispatch> extended;
    if (const auto controlSite = site.as<IOleControlSite>())
        controlSite->GetExtendedControl(extended.put());
    if (auto named = objectProperty(extended.as<IUnknown>(), L"Container"))
        found.push_back(std::move(named));
    ComPtr<IOleContainer> container;
    site->GetContainer(container.put());
    if (container)
        found.push_back(container.as<IUnknown>());
    found.push_back(site.as<IUnknown>());
    return found;
}

/// Gives the relay the container's sink. A container without one gets no news, and the dialog works without.
void AppDialog::connectEvents()
{
    ComPtr<IAppDialogSink> sink;
    for (const auto& container : containers())
        if (!sink)
            sink = container.as<IAppDialogSink>();
    if (!window())
        throw Failure(E_ABORT); // the container has ended the dialog meanwhile
    events_->putref_Sink(sink.get());
}

void AppDialog::ambientFontChanged()
{
    if (!ready_)
        return;
    const Batch batch(*this);
    ApplyContainerFont();
}

void AppDialog::dpiChanged()
{
    const Batch batch(*this);
    layoutChanged();
    setSize(fitToPixels(Width(), dpi()), fitToPixels(Height(), dpi()));
    extentChanged();
    DialogWindow::applyFont();
}

void AppDialog::closing() noexcept
{
    events_->putref_Sink(nullptr);
}

void AppDialog::ok()
{
    if (isOver())
        return;
    for (Control* control : controls())
        control->completeEdit();
    takeValues();
    confirm();
}

void AppDialog::cancel()
{
    if (!isOver())
        end(true);
}

void AppDialog::confirm()
{
    if (isOver())
        return;
    if (!cancelled_) // else only the container's end of it has failed: nothing is to be booked twice
    {
        submitting_ = true;
        const auto events = events_;
        VARIANT_BOOL executed = VARIANT_FALSE;
        const auto failure =
            attempt([&] { call(events, &IAppDialogEvents::SubmitCommand, commandView().get(), &executed); });
        submitting_ = false;
        if (failure)
            throw *failure;
        cancelled_ = cancelledAfter(executed != VARIANT_FALSE);
    }
    end(*cancelled_);
}

void AppDialog::end(bool cancelled)
{
    // Set before the call: the container may destroy the dialog in it.
    ended_ = true;
    const auto events = events_;
    const bool toldAsCancelled = cancelled_.value_or(cancelled);
    const auto failure = attempt(
        [&] { call(events, &IAppDialogEvents::RaiseDone, toldAsCancelled ? VARIANT_TRUE : VARIANT_FALSE); });
    if (!failure)
        return;
    ended_ = false; // the dialog still stands, and every way out of it is to work
    throw *failure;
}

/// The dialog has done its part, whatever the container answered.
bool AppDialog::cancelledAfter(bool) const
{
    return false;
}

void AppDialog::raiseResize()
{
    const auto events = events_;
    call(events, &IAppDialogEvents::RaiseResize);
}

int AppDialog::ask(long textId, UINT style) const
{
    return MessageBoxW(containerWindow(), resourceText(textId).c_str(), resourceText(titleId()).c_str(),
                       style);
}

/// The host's window that the dialog stands in; null for none.
HWND AppDialog::containerWindow() const
{
    HWND container = nullptr;
    if (const auto site = clientSite().as<IOleInPlaceSite>())
        site->GetWindow(&container);
    return container ? GetAncestor(container, GA_ROOT) : nullptr;
}

void AppDialog::run(const std::function<void()>& handler) noexcept
{
    const ComPtr<IUnknown> alive(identity()); // the container may let go of the dialog in the handler
    const Batch batch(*this);
    if (const auto failure = attempt(handler))
        raiseError(*failure);
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

DataScope::DataScope(const ComPtr<IRoot>& root, std::wstring_view source)
{
    call(root, &IRoot::OpenScope, 0L, Bstr(source).get(), scope_.put());
}

DataScope::~DataScope()
{
    // Reached with an open scope only when the step has failed: that failure is the one to tell.
    if (const auto open = std::move(scope_))
        open->Close(0, 0);
}

void DataScope::Close()
{
    const auto open = std::move(scope_);
    call(open, &IScope::Close, 0L, 0L);
}

} // namespace korvane
