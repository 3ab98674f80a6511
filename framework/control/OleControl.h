// A full OLE control around a dialog's window. One source file per facet:
//
//   OleObject.cpp        IOleObject: client site, verbs, extent, advises
//   InPlaceObject.cpp    IOleInPlaceObject and activation in the container's window
//   Keyboard.cpp         IOleInPlaceActiveObject and IOleControl: tab order, access keys, default and cancel keys
//   ViewObject.cpp       IViewObject2: drawing where the control is not active
//   Persistence.cpp      IPersistStreamInit and IPersistPropertyBag
//   QuickActivation.cpp  IQuickActivate
//   OleControl.cpp       IProvideClassInfo2, size and ambient properties
#pragma once

#include "framework/com/Boundary.h"
#include "framework/com/Object.h"
#include "framework/control/DialogWindow.h"

#include <memory>

namespace korvane
{

class OleControl : public IOleObject,
                   public IOleInPlaceObject,
                   public IOleInPlaceActiveObject,
                   public IOleControl,
                   public IViewObject2,
                   public IPersistStreamInit,
                   public IPersistPropertyBag,
                   public IProvideClassInfo2,
                   public IQuickActivate,
                   public DialogWindow
{
public:
    /// What the registry says of every control of this kind.
    static constexpr DWORD miscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE |
                                        OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
                                        OLEMISC_SETCLIENTSITEFIRST;

    // IOleObject
    STDMETHODIMP SetClientSite(IOleClientSite* site) override;
    STDMETHODIMP GetClientSite(IOleClientSite** site) override;
    STDMETHODIMP SetHostNames(LPCOLESTR program, LPCOLESTR document) override;
    STDMETHODIMP Close(DWORD saveOption) override;
    STDMETHODIMP SetMoniker(DWORD which, IMoniker* moniker) override;
    STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
    STDMETHODIMP InitFromData(IDataObject* data, BOOL creation, DWORD reserved) override;
    STDMETHODIMP GetClipboardData(DWORD reserved, IDataObject** data) override;
    STDMETHODIMP DoVerb(LONG verb, LPMSG message, IOleClientSite* site, LONG index, HWND parent,
                        LPCRECT place) override;
    STDMETHODIMP EnumVerbs(IEnumOLEVERB** verbs) override;
    STDMETHODIMP Update() override;
    STDMETHODIMP IsUpToDate() override;
    STDMETHODIMP GetUserClassID(CLSID* classId) override;
    STDMETHODIMP GetUserType(DWORD form, LPOLESTR* type) override;
    STDMETHODIMP SetExtent(DWORD aspect, SIZEL* extent) override;
    STDMETHODIMP GetExtent(DWORD aspect, SIZEL* extent) override;
    STDMETHODIMP Advise(IAdviseSink* sink, DWORD* connection) override;
    STDMETHODIMP Unadvise(DWORD connection) override;
    STDMETHODIMP EnumAdvise(IEnumSTATDATA** advises) override;
    STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* status) override;
    STDMETHODIMP SetColorScheme(LOGPALETTE* palette) override;

    // IOleWindow, IOleInPlaceObject
    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;
    STDMETHODIMP InPlaceDeactivate() override;
    STDMETHODIMP UIDeactivate() override;
    STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT clip) override;
    STDMETHODIMP ReactivateAndUndo() override;

    // IOleInPlaceActiveObject
    STDMETHODIMP TranslateAccelerator(LPMSG message) override;
    STDMETHODIMP OnFrameWindowActivate(BOOL activate) override;
    STDMETHODIMP OnDocWindowActivate(BOOL activate) override;
    STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL frame) override;
    STDMETHODIMP EnableModeless(BOOL enable) override;

    // IOleControl
    STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
    STDMETHODIMP OnMnemonic(LPMSG message) override;
    STDMETHODIMP OnAmbientPropertyChange(DISPID property) override;
    STDMETHODIMP FreezeEvents(BOOL freeze) override;

    // IViewObject2
    STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device, HDC targetContext,
                      HDC context, LPCRECTL bounds, LPCRECTL windowBounds, BOOL(CALLBACK* goOn)(ULONG_PTR),
                      ULONG_PTR goOnArgument) override;
    STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                             HDC targetContext, LOGPALETTE** colors) override;
    STDMETHODIMP Freeze(DWORD aspect, LONG index, void* aspectInfo, DWORD* freeze) override;
    STDMETHODIMP Unfreeze(DWORD freeze) override;
    STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL extent) override;

    // IPersist, IPersistStreamInit, IPersistPropertyBag
    STDMETHODIMP GetClassID(CLSID* classId) override;
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP Load(IStream* stream) override;
    STDMETHODIMP Save(IStream* stream, BOOL clearDirty) override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;
    STDMETHODIMP InitNew() override;
    STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) override;
    STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL allProperties) override;

    // IProvideClassInfo2
    STDMETHODIMP GetClassInfo(ITypeInfo** information) override;

    // IQuickActivate
    STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* control) override;
    STDMETHODIMP SetContentExtent(LPSIZEL extent) override;
    STDMETHODIMP GetContentExtent(LPSIZEL extent) override;

    IUnknown* identity() noexcept override { return static_cast<IOleObject*>(this); }
    void runModal(const std::function<void()>& box) const override;

    /// The container has let go of the dialog, maybe without an end: its window goes while its controls are there.
    void lastReleased() noexcept;

protected:
    OleControl(REFCLSID classId, float width, float height);

    /// Size of the dialog in twips. A dialog is of fixed size, and what a container gives it is given back, unless the
    /// dialog is resizable: then it takes what it is given, and lays itself out in it.
    virtual bool resizable() const noexcept { return false; }
    /// A resizable dialog has another size: it puts its controls where they belong.
    virtual void resized() {}
    /// What a resizable dialog needs at least; it insists on that.
    virtual Extent minimumSize() const noexcept { return {}; }
    float Width() const noexcept { return width_; }
    float Height() const noexcept { return height_; }
    SIZE pixelSize() const noexcept { return {toPixels(width_, dpi()), toPixels(height_, dpi())}; }
    void setSize(float width, float height);
    /// The same size has become another one in pixels.
    void extentChanged();

    bool enabled() const noexcept { return enabled_; }
    void setEnabled(bool enabled) noexcept;

    /// The container's site; empty without one. The caller holds it: the container may take it away in any call.
    ComPtr<IOleClientSite> clientSite() const noexcept { return clientSite_; }

    /// Runs a method of the control that calls the container, which may let go of the dialog within.
    template <class Body> HRESULT held(Body&& body) noexcept
    {
        const ComPtr<IUnknown> alive(identity());
        return guard(body);
    }

    /// An ambient property of the container; Empty when it has none.
    Variant ambientProperty(DISPID property) const;

    /// Tells the container that access keys may have changed.
    void controlInfoChanged() noexcept;
    /// Tells it where they have, since it was told last.
    void accessKeysChanged() noexcept override;

    /// The container has changed its font.
    virtual void ambientFontChanged() = 0;

    /// The dialog is over: the last chance to let go of other objects before the container does.
    virtual void closing() noexcept = 0;

    void focusArrived() noexcept override;
    void focusLeft(const Control& control) noexcept override;

private:
    /// What is being changed between the dialog and its container. The container may deactivate the dialog, or end it,
    /// in any call of the change, and so call off an activation; an activation from within a change is refused.
    enum class Change
    {
        none,
        activation,
        deactivation
    };

    /// A change for as long as it takes.
    class Changing
    {
    public:
        Changing(OleControl& control, Change change) noexcept;
        Changing(const Changing&) = delete;
        Changing& operator=(const Changing&) = delete;
        ~Changing();

    private:
        OleControl& control_;
        Change after_;
    };

    HRESULT activateInPlace();
    void enterContainer();
    void requireActivation() const;
    HRESULT activateUi(const MSG* message);
    /// Tells the container of the user interface's activation, unless it has turned that round meanwhile.
    template <class Told, class Interface, class... Parameters, class... Arguments>
    void tellUi(bool active, const ComPtr<Told>& listener,
                HRESULT (STDMETHODCALLTYPE Interface::*method)(Parameters...), Arguments... arguments)
    {
        const ComPtr<Told> told(listener.get()); // held: the container may take it away in the call
        if (told && uiActive_ == active)
            (told.get()->*method)(arguments...);
    }
    void hide() noexcept;
    void end() noexcept;
    void takePosition(const RECT& place) noexcept;
    void takeSize(float width, float height) noexcept;
    RECT placeInContainer() const noexcept;
    void moveWindow(const RECT& clip) noexcept;
    void insistOnSize() noexcept;
    void viewChanged() noexcept;
    bool leavesByTab(bool backwards) const noexcept;
    bool containerTranslates(LPMSG message) noexcept;
    bool translates(LPMSG message) noexcept;

    const CLSID& classId_;
    float width_;
    float height_;
    bool enabled_ = true;
    bool dirty_ = false;

    ComPtr<IOleClientSite> clientSite_;
    ComPtr<IOleInPlaceSite> inPlaceSite_;
    ComPtr<IOleInPlaceFrame> frame_;
    ComPtr<IOleInPlaceUIWindow> document_;
    ComPtr<IOleAdviseHolder> advises_;
    ComPtr<IAdviseSink> viewSink_;
    DWORD viewAspects_ = 0;
    DWORD viewFlags_ = 0;

    POINT position_{}; ///< in the container's window
    Change change_ = Change::none;
    bool uiActive_ = false;
    bool clipped_ = false; ///< the container shows a part of the window only
    bool insisting_ = false;
    bool focused_ = false;
    std::wstring toldKeys_; ///< the access keys that the container was last told of
    struct DestroyAccelerators
    {
        void operator()(HACCEL table) const noexcept { DestroyAcceleratorTable(table); }
    };
    std::unique_ptr<std::remove_pointer_t<HACCEL>, DestroyAccelerators> acceleratorTable_;
};

} // namespace korvane
