#include "demo/host/ControlSite.h"

#include "demo/host/Display.h"

#include <cstdlib>
#include <cwchar>

namespace korvane::host
{

namespace
{

/// An out parameter that the site has nothing for.
template <class Interface> HRESULT nothing(Interface** object, HRESULT result = E_NOTIMPL) noexcept
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    return result;
}

RECT rectangle(SIZE extent) noexcept
{
    return {0, 0, extent.cx, extent.cy};
}

} // namespace

void ControlSite::host(const ComPtr<IUnknown>& control)
{
    control_ = control.as<IOleObject>();
    call(control_, &IOleObject::SetClientSite, static_cast<IOleClientSite*>(this));
    if (const auto persistence = control_.as<IPersistStreamInit>())
        call(persistence, &IPersistStreamInit::InitNew);
    const RECT place = rectangle(extent());
    call(control_, &IOleObject::DoVerb, static_cast<LONG>(OLEIVERB_SHOW), nullptr,
         static_cast<IOleClientSite*>(this), 0L, window_, &place);
}

void ControlSite::close() noexcept
{
    const ComPtr<IUnknown> alive(static_cast<IAppDialogSink*>(this));
    if (const auto closed = std::move(control_))
    {
        closed->Close(OLECLOSE_NOSAVE);
        closed->SetClientSite(nullptr);
    }
    active_.reset();
    inPlace_.reset();
}

SIZE ControlSite::extent() const
{
    SIZEL measured{};
    call(control_, &IOleObject::GetExtent, static_cast<DWORD>(DVASPECT_CONTENT), &measured);
    const HDC screen = GetDC(nullptr);
    const SIZE pixels{MulDiv(measured.cx, GetDeviceCaps(screen, LOGPIXELSX), 2540),
                      MulDiv(measured.cy, GetDeviceCaps(screen, LOGPIXELSY), 2540)};
    ReleaseDC(nullptr, screen);
    return pixels;
}

void ControlSite::resize(SIZE size) const
{
    const RECT place = rectangle(size);
    if (const auto object = inPlace_)
        call(object, &IOleInPlaceObject::SetObjectRects, &place, &place);
}

void ControlSite::activateUi()
{
    const RECT place = rectangle(extent());
    call(control_, &IOleObject::DoVerb, static_cast<LONG>(OLEIVERB_UIACTIVATE), nullptr,
         static_cast<IOleClientSite*>(this), 0L, window_, &place);
}

void ControlSite::frameActivated(bool active) const
{
    if (const auto object = active_)
        object->OnFrameWindowActivate(active);
}

bool ControlSite::translate(MSG& message) const
{
    const auto active = active_; // the control may be closed by what it translates
    return active && active->TranslateAccelerator(&message) == S_OK;
}

STDMETHODIMP ControlSite::QueryInterface(REFIID iid, void** object)
{
    const bool hidden = (iid == __uuidof(IAppDialogSink) && !offersSink) ||
                        (iid == __uuidof(IAppCommandSite) && !offersCommandSite);
    if (!hidden)
        return Object::QueryInterface(iid, object);
    return nothing(object, E_NOINTERFACE);
}

STDMETHODIMP ControlSite::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids)
{
    if (!names || !ids || count == 0)
        return E_INVALIDARG;
    const bool known = font && std::wcscmp(names[0], L"Font") == 0;
    ids[0] = known ? DISPID_AMBIENT_FONT : DISPID_UNKNOWN;
    return known ? S_OK : DISP_E_UNKNOWNNAME;
}

STDMETHODIMP ControlSite::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                 UINT*)
{
    if (id != DISPID_AMBIENT_FONT || !font || !result)
        return DISP_E_MEMBERNOTFOUND;
    *result = Variant(font.as<IDispatch>()).detach();
    return S_OK;
}

STDMETHODIMP ControlSite::Done(VARIANT_BOOL cancelled)
{
    return guard([&] {
        if (const auto handler = onDone)
            handler(cancelled != VARIANT_FALSE);
    });
}

STDMETHODIMP ControlSite::Error(long number, BSTR source, BSTR description)
{
    return guard([&] {
        if (const auto handler = onError)
            handler(number, view(source), view(description));
    });
}

STDMETHODIMP ControlSite::Resize()
{
    return guard([&] {
        if (const auto handler = onResize)
            handler();
    });
}

STDMETHODIMP ControlSite::Accepts(IAppCommand*, VARIANT_BOOL* result)
{
    return returns(result, [&] { return static_cast<bool>(onSubmit); });
}

STDMETHODIMP ControlSite::Offer(IAppCommand*, VARIANT_BOOL* result)
{
    return returns(result, [] { return false; });
}

STDMETHODIMP ControlSite::Submit(IAppCommand* candidate, VARIANT_BOOL* result)
{
    return returns(result, [&] {
        const auto handler = onSubmit;
        return handler && handler(*notNull(candidate));
    });
}

STDMETHODIMP ControlSite::GetMoniker(DWORD, DWORD, IMoniker** moniker)
{
    return nothing(moniker);
}

STDMETHODIMP ControlSite::GetContainer(IOleContainer** container)
{
    return returns(container, [&] { return ComPtr<IOleContainer>(this); });
}

STDMETHODIMP ControlSite::GetWindow(HWND* window)
{
    if (!window)
        return E_POINTER;
    *window = window_;
    return S_OK;
}

STDMETHODIMP ControlSite::OnInPlaceActivate()
{
    inPlace_ = control_.as<IOleInPlaceObject>();
    return S_OK;
}

STDMETHODIMP ControlSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                           LPRECT place, LPRECT clip, LPOLEINPLACEFRAMEINFO information)
{
    if (!frame || !document || !place || !clip || !information)
        return E_POINTER;
    *document = nullptr;
    return returns(frame, [&] {
        *place = *clip = rectangle(extent());
        information->fMDIApp = FALSE;
        information->hwndFrame = window_;
        information->haccel = nullptr;
        information->cAccelEntries = 0;
        return ComPtr<IOleInPlaceFrame>(this);
    });
}

STDMETHODIMP ControlSite::OnInPlaceDeactivate()
{
    inPlace_.reset();
    return S_OK;
}

STDMETHODIMP ControlSite::OnPosRectChange(LPCRECT place)
{
    return guard([&] {
        notNull(place);
        if (const auto handler = onExtent)
            handler({place->right - place->left, place->bottom - place->top});
        const RECT granted{0, 0, place->right - place->left, place->bottom - place->top};
        if (const auto object = inPlace_)
            call(object, &IOleInPlaceObject::SetObjectRects, &granted, &granted);
    });
}

STDMETHODIMP ControlSite::GetBorder(LPRECT border)
{
    if (!border)
        return E_POINTER;
    *border = {};
    return INPLACE_E_NOTOOLSPACE;
}

STDMETHODIMP ControlSite::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR)
{
    active_ = ComPtr<IOleInPlaceActiveObject>(object);
    return S_OK;
}

STDMETHODIMP ControlSite::GetExtendedControl(IDispatch** extended)
{
    return nothing(extended);
}

STDMETHODIMP ControlSite::TranslateAccelerator(MSG* message, DWORD)
{
    if (!message)
        return E_POINTER;
    const bool byTab = message->message == WM_KEYDOWN && message->wParam == VK_TAB;
    return byTab && onTabOut && onTabOut(GetKeyState(VK_SHIFT) < 0) ? S_OK : S_FALSE;
}

STDMETHODIMP ControlSite::ParseDisplayName(IBindCtx*, LPOLESTR, ULONG*, IMoniker** moniker)
{
    return nothing(moniker);
}

STDMETHODIMP ControlSite::EnumObjects(DWORD, IEnumUnknown** objects)
{
    return nothing(objects);
}

ComPtr<IFontDisp> makeFont(const wchar_t* face, int points)
{
    std::wstring name(face);
    FONTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.lpstrName = name.data();
    description.cySize.int64 = points * 10000LL;
    description.sWeight = FW_NORMAL;
    description.sCharset = DEFAULT_CHARSET;
    ComPtr<IFontDisp> font;
    require(OleCreateFontIndirect(&description, __uuidof(IFontDisp), font.putVoid()));
    return font;
}

ComPtr<IFontDisp> makeMessageFont()
{
    const LOGFONTW design = messageFont();
    return makeFont(design.lfFaceName, MulDiv(std::abs(design.lfHeight), 72, screenDpi()));
}

} // namespace korvane::host
