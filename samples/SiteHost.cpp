// The group dialog on a site of the program's own: the dialog finds IAppDialogSink and IAppCommandSite there, and needs
// no events. How to build and start it: README.md beside this file.
#include <windows.h>
#include <ole2.h>

#include "KorvaneDlg.h"
#include "KorvaneStore.h"

#include <cstdio>
#include <cstdlib>

#define METHOD HRESULT STDMETHODCALLTYPE

static void check(HRESULT result, const char* step)
{
    if (SUCCEEDED(result))
        return;
    std::printf("%s: 0x%08lX\n", step, static_cast<unsigned long>(result));
    std::exit(EXIT_FAILURE);
}

template <class Interface> static Interface* as(IUnknown* object)
{
    void* face = nullptr;
    check(object->QueryInterface(__uuidof(Interface), &face), "interface");
    return static_cast<Interface*>(face);
}

template <class Interface> static Interface* create(const wchar_t* progId)
{
    CLSID id;
    IUnknown* object = nullptr;
    check(CLSIDFromProgID(progId, &id), "class");
    check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), "object");
    return as<Interface>(object);
}

/// Lives as long as the program: nobody counts its references.
class Site final : public IAppDialogSink,
                   public IAppCommandSite,
                   public IOleClientSite,
                   public IOleInPlaceSite
{
public:
    HWND frame = nullptr;
    IOleInPlaceObject* control = nullptr;

    void fit(RECT place)
    {
        RECT all = place;
        AdjustWindowRect(&all, WS_OVERLAPPEDWINDOW, FALSE);
        SetWindowPos(frame, nullptr, 0, 0, all.right - all.left, all.bottom - all.top,
                     SWP_NOMOVE | SWP_NOZORDER);
        control->SetObjectRects(&place, &place);
    }

    METHOD QueryInterface(REFIID iid, void** object) override
    {
        *object = nullptr;
        if (iid == IID_IUnknown || iid == IID_IDispatch || iid == IID_IAppDialogSink)
            *object = static_cast<IAppDialogSink*>(this);
        else if (iid == IID_IAppCommandSite)
            *object = static_cast<IAppCommandSite*>(this);
        else if (iid == IID_IOleClientSite)
            *object = static_cast<IOleClientSite*>(this);
        else if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite)
            *object = static_cast<IOleInPlaceSite*>(this);
        return *object ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    // what the dialog tells
    METHOD Done(VARIANT_BOOL cancelled) override
    {
        std::printf("Done: %s\n", cancelled ? "cancelled" : "OK");
        PostQuitMessage(0);
        return S_OK;
    }
    METHOD Error(long number, BSTR source, BSTR description) override
    {
        std::printf("Error: 0x%08lX, %ls, %ls\n", static_cast<unsigned long>(number), source, description);
        return S_OK;
    }
    METHOD Resize() override { return S_OK; } // OnPosRectChange has told the size already

    // what the dialog asks for; an error is passed on as Execute leaves it
    METHOD Accepts(IAppCommand*, VARIANT_BOOL* result) override { return *result = VARIANT_TRUE, S_OK; }
    METHOD Offer(IAppCommand*, VARIANT_BOOL* result) override { return *result = VARIANT_FALSE, S_OK; }
    METHOD Submit(IAppCommand* command, VARIANT_BOOL* executed) override
    {
        VARIANT_BOOL ignored;
        const HRESULT outcome = command->Execute(&ignored);
        *executed = SUCCEEDED(outcome) ? VARIANT_TRUE : VARIANT_FALSE;
        std::printf("Submit: %s\n", *executed ? "executed" : "failed");
        return outcome;
    }

    // IDispatch: called through the vtable only
    METHOD GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    METHOD GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    METHOD GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    METHOD Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override
    {
        return E_NOTIMPL;
    }

    // IOleClientSite
    METHOD SaveObject() override { return E_NOTIMPL; }
    METHOD GetMoniker(DWORD, DWORD, IMoniker** moniker) override { return *moniker = nullptr, E_NOTIMPL; }
    METHOD GetContainer(IOleContainer** container) override { return *container = nullptr, E_NOINTERFACE; }
    METHOD ShowObject() override { return S_OK; }
    METHOD OnShowWindow(BOOL) override { return S_OK; }
    METHOD RequestNewObjectLayout() override { return E_NOTIMPL; }

    // IOleInPlaceSite: a window, in which the dialog has all the room, and no toolbars to share
    METHOD GetWindow(HWND* window) override { return *window = frame, S_OK; }
    METHOD ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    METHOD CanInPlaceActivate() override { return S_OK; }
    METHOD OnInPlaceActivate() override { return S_OK; }
    METHOD OnUIActivate() override { return S_OK; }
    METHOD GetWindowContext(IOleInPlaceFrame** shared, IOleInPlaceUIWindow** document, LPRECT place,
                            LPRECT clip, LPOLEINPLACEFRAMEINFO information) override
    {
        *shared = nullptr;
        *document = nullptr;
        GetClientRect(frame, place);
        *clip = *place;
        *information = {sizeof *information, FALSE, frame, nullptr, 0};
        return S_OK;
    }
    METHOD Scroll(SIZE) override { return S_FALSE; }
    METHOD OnUIDeactivate(BOOL) override { return S_OK; }
    METHOD OnInPlaceDeactivate() override { return S_OK; }
    METHOD DiscardUndoState() override { return S_OK; }
    METHOD DeactivateAndUndo() override { return S_OK; }
    METHOD OnPosRectChange(LPCRECT place) override { return fit(*place), S_OK; }
};

/// A command that adds a group.
static IEditGroups* addition(IRoot* root)
{
    const auto command = create<IEditGroups>(L"KorvaneDlg.EditGroups");
    VARIANT_BOOL ignored;
    command->put_Operation(1);
    check(command->putref_Root(root), "Root");
    check(command->Prepare(&ignored), "Prepare");
    return command;
}

/// The window around the dialog has the focus for it, and ends the program when the user closes it.
static LRESULT CALLBACK frameProcedure(HWND window, UINT message, WPARAM first, LPARAM second)
{
    if (message == WM_SETFOCUS)
        SetFocus(GetWindow(window, GW_CHILD));
    else if (message == WM_DESTROY)
        PostQuitMessage(0);
    return DefWindowProcW(window, message, first, second);
}

static HWND createFrame()
{
    WNDCLASSW description{};
    description.lpfnWndProc = frameProcedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = LoadCursor(nullptr, IDC_ARROW);
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszClassName = L"SiteHost";
    RegisterClassW(&description);
    return CreateWindowExW(WS_EX_CONTROLPARENT, description.lpszClassName, nullptr, WS_OVERLAPPEDWINDOW, 40,
                           40, 300, 300, nullptr, nullptr, description.hInstance, nullptr);
}

int main()
{
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    check(OleInitialize(nullptr), "OLE");
    IRoot* root = nullptr;
    const auto database = create<IDatabase>(L"KorvaneData.Database");
    check(database->Open(SysAllocString(L"sample.sqlite"), nullptr, &root), "database");
    database->AddSample(root); // refused where it is there already
    const auto command = addition(root);

    static Site site;
    BSTR text = nullptr;
    VARIANT_BOOL ready;
    SIZEL size;
    check(command->get_DialogClass(&text), "DialogClass");
    const auto dialog = create<IDialogControl>(text);
    const auto object = as<IOleObject>(dialog);
    site.control = as<IOleInPlaceObject>(dialog);
    site.frame = createFrame();
    check(object->SetClientSite(&site), "site");
    check(object->DoVerb(OLEIVERB_SHOW, nullptr, &site, 0, site.frame, nullptr), "Show");

    check(dialog->putref_Command(command), "Command");
    check(dialog->get_Name(&text), "Name");
    check(dialog->get_Ready(&ready), "Ready");
    SetWindowTextW(site.frame, text);
    object->GetExtent(DVASPECT_CONTENT, &size); // this program does not know finer screens than of 96 dots
    site.fit({0, 0, MulDiv(size.cx, 96, 2540), MulDiv(size.cy, 96, 2540)});
    ShowWindow(site.frame, SW_SHOW);
    object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &site, 0, site.frame, nullptr);

    const auto keyboard = as<IOleInPlaceActiveObject>(dialog);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        if (keyboard->TranslateAccelerator(&message) != S_OK)
        {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    object->Close(OLECLOSE_NOSAVE);
    object->SetClientSite(nullptr);
}
