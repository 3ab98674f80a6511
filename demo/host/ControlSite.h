// The container's side of one dialog control: what a host written in C++ implements to show a dialog.
#pragma once

#include "framework/com/Object.h"

#include <KorvaneInterfaces.h>

#include <functional>
#include <string>

namespace korvane::host
{

class ControlSite : public Object<ControlSite,
                                  Inherits<IAppDialogSink, IAppCommandSite, IOleClientSite, IOleInPlaceSite,
                                           IOleInPlaceFrame, IOleControlSite, IOleContainer>,
                                  IAppDialogSink, IAppCommandSite, IOleClientSite, IOleInPlaceSite,
                                  IOleInPlaceFrame, IOleControlSite, IOleContainer>
{
public:
    /// @param window the window that the control appears in, at its top left.
    explicit ControlSite(HWND window) : window_(window) {}
    virtual ~ControlSite() = default;

    // What the dialog tells. A handler may throw a Failure: it reaches the dialog as a COM error.
    std::function<void(bool cancelled)> onDone;
    std::function<void(HRESULT number, std::wstring_view source, std::wstring_view description)> onError;
    std::function<void()> onResize;
    std::function<bool(IAppCommand& command)> onSubmit;
    /// The control asks for this extent, in pixels.
    std::function<void(SIZE extent)> onExtent;
    /// Tab has reached an end of the dialog. True when the focus went elsewhere.
    std::function<bool(bool backwards)> onTabOut;

    // What the site offers; a plain container may have none of it.
    ComPtr<IFontDisp> font;
    bool offersSink = true;
    bool offersCommandSite = true;

    /// Places a control on the site and activates it in the window. Throws the failure of the control.
    void host(const ComPtr<IUnknown>& control);
    /// Takes the control off the site; it is closed.
    void close() noexcept;

    IOleObject* control() const noexcept { return control_.get(); }
    SIZE extent() const;
    /// Gives the control a size, in pixels. One that does not take it asks for the right one.
    void resize(SIZE size) const;
    void activateUi();
    bool isUiActive() const noexcept { return static_cast<bool>(active_); }
    /// Tells the active control that the window became the active one, or is no longer.
    void frameActivated(bool active) const;

    /// For the message loop: true when the control has consumed the message.
    bool translate(MSG& message) const;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;

    // IDispatch: the ambient properties, which are the properties of the container too.
    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                               DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

    // IAppDialogSink
    STDMETHODIMP Done(VARIANT_BOOL cancelled) override;
    STDMETHODIMP Error(long number, BSTR source, BSTR description) override;
    STDMETHODIMP Resize() override;

    // IAppCommandSite
    STDMETHODIMP Accepts(IAppCommand* candidate, VARIANT_BOOL* result) override;
    STDMETHODIMP Offer(IAppCommand* candidate, VARIANT_BOOL* result) override;
    STDMETHODIMP Submit(IAppCommand* candidate, VARIANT_BOOL* result) override;

    // IOleClientSite
    STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker** moniker) override;
    STDMETHODIMP GetContainer(IOleContainer** container) override;
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

    // IOleWindow, IOleInPlaceSite
    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnInPlaceActivate() override;
    STDMETHODIMP OnUIActivate() override { return S_OK; }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place,
                                  LPRECT clip, LPOLEINPLACEFRAMEINFO information) override;
    STDMETHODIMP Scroll(SIZE) override { return S_FALSE; }
    STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
    STDMETHODIMP OnInPlaceDeactivate() override;
    STDMETHODIMP DiscardUndoState() override { return S_OK; }
    STDMETHODIMP DeactivateAndUndo() override { return S_OK; }
    STDMETHODIMP OnPosRectChange(LPCRECT place) override;

    // IOleInPlaceUIWindow, IOleInPlaceFrame
    STDMETHODIMP GetBorder(LPRECT border) override;
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR name) override;
    STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    STDMETHODIMP RemoveMenus(HMENU) override { return E_NOTIMPL; }
    STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
    STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

    // IOleControlSite
    STDMETHODIMP OnControlInfoChanged() override { return S_OK; }
    STDMETHODIMP LockInPlaceActive(BOOL) override { return S_OK; }
    STDMETHODIMP GetExtendedControl(IDispatch** extended) override;
    STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(MSG* message, DWORD modifiers) override;
    STDMETHODIMP OnFocus(BOOL) override { return S_OK; }
    STDMETHODIMP ShowPropertyFrame() override { return E_NOTIMPL; }

    // IParseDisplayName, IOleContainer
    STDMETHODIMP ParseDisplayName(IBindCtx*, LPOLESTR, ULONG*, IMoniker** moniker) override;
    STDMETHODIMP EnumObjects(DWORD, IEnumUnknown** objects) override;
    STDMETHODIMP LockContainer(BOOL) override { return S_OK; }

private:
    HWND window_;
    ComPtr<IOleObject> control_;
    ComPtr<IOleInPlaceObject> inPlace_;
    ComPtr<IOleInPlaceActiveObject> active_;
};

/// A font of the platform, as containers hand it to their controls.
ComPtr<IFontDisp> makeFont(const wchar_t* face, int points);

/// The font that the user has chosen for dialogs and messages.
ComPtr<IFontDisp> makeMessageFont();

} // namespace korvane::host
