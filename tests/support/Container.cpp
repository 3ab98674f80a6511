#include "tests/support/Container.h"

#include "framework/com/Variant.h"
#include "tests/support/Messages.h"

#include <commctrl.h>
#include <oleacc.h>
#include <windowsx.h>

#include <cwchar>

namespace korvane::test
{

namespace
{

struct Search
{
    const wchar_t* windowClass;
    const wchar_t* caption;
    int index;
    HWND found;
};

BOOL CALLBACK visit(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<Search*>(parameter);
    wchar_t name[64];
    GetClassNameW(window, name, 64);
    if (_wcsicmp(name, search.windowClass) != 0)
        return TRUE;
    if (search.caption && Container::text(window) != search.caption)
        return TRUE;
    if (search.index-- != 0)
        return TRUE;
    search.found = window;
    return FALSE;
}

HWND find(HWND parent, const wchar_t* windowClass, const wchar_t* caption, int index)
{
    Search search{windowClass, caption, index, nullptr};
    EnumChildWindows(parent, visit, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

/// Holds modifier keys down for this thread.
class Modifiers
{
public:
    Modifiers(bool shift, bool alt, bool control)
    {
        GetKeyboardState(former_);
        BYTE state[256];
        GetKeyboardState(state);
        state[VK_SHIFT] = shift ? 0x80 : 0;
        state[VK_MENU] = alt ? 0x80 : 0;
        state[VK_CONTROL] = control ? 0x80 : 0;
        SetKeyboardState(state);
    }
    Modifiers(const Modifiers&) = delete;
    Modifiers& operator=(const Modifiers&) = delete;
    ~Modifiers() { SetKeyboardState(former_); }

private:
    BYTE former_[256]{};
};

/// Tells of what the dialog asks its frame for.
class FrameSite final : public host::ControlSite
{
public:
    FrameSite(HWND window, const std::function<void(bool)>& onModeless)
        : ControlSite(window), onModeless_(onModeless)
    {
    }

    STDMETHODIMP EnableModeless(BOOL enable) override
    {
        onModeless_(enable != FALSE);
        return S_OK;
    }

private:
    const std::function<void(bool)>& onModeless_;
};

} // namespace

Container::Container(Offer offer)
{
    window_ = CreateWindowExW(WS_EX_CONTROLPARENT, L"Static", L"Container", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                              40, 40, 500, 400, nullptr, nullptr, nullptr, nullptr);
    site = ComPtr<host::ControlSite>(make<FrameSite>(window_, onModeless).get());
    if (offer.font)
        site->font = host::makeFont(L"MS Shell Dlg", 8);
    site->offersSink = offer.sink;
    site->offersCommandSite = offer.commandSite;
    site->onDone = [this](bool cancelled) { done.push_back(cancelled); };
    site->onError = [this](HRESULT number, std::wstring_view source, std::wstring_view description) {
        errors.push_back({number, std::wstring(source), std::wstring(description)});
    };
    site->onResize = [this] { ++resizes; };
    site->onExtent = [this](SIZE wanted) { extent = wanted; };
    site->onSubmit = [this](IAppCommand& command) {
        ++submitted;
        return onSubmit(command);
    };
    onSubmit = [](IAppCommand& command) {
        // The host lets a failure out of the submission as the COM error that it is.
        fetch(ComPtr<IAppCommand>(&command), &IAppCommand::Execute);
        return true;
    };
}

Container::~Container()
{
    close();
    DestroyWindow(window_);
}

void Container::place(ComPtr<IAppDialog> created, IUnknown* command)
{
    dialog = std::move(created);
    site->host(dialog.as<IUnknown>());
    if (command)
        call(dialog, &IAppDialog::putref_Command, queryFor<IDispatch>(command).get());
}

bool Container::ready()
{
    return fetch(dialog, &IAppDialog::get_Ready);
}

void Container::close()
{
    site->close();
    dialog.reset();
}

HWND Container::dialogWindow() const
{
    const long handle = fetch(dialog.as<IDialogControl>(), &IDialogControl::get_hWnd);
    return reinterpret_cast<HWND>(static_cast<UINT_PTR>(static_cast<ULONG>(handle)));
}

HWND Container::control(const wchar_t* windowClass, int index) const
{
    return find(dialogWindow(), windowClass, nullptr, index);
}

HWND Container::button(const wchar_t* caption) const
{
    return find(dialogWindow(), L"Button", caption, 0);
}

std::wstring Container::text(HWND window)
{
    wchar_t buffer[512];
    return {buffer, static_cast<std::size_t>(
                        SendMessageW(window, WM_GETTEXT, 512, reinterpret_cast<LPARAM>(buffer)))};
}

RECT Container::place(HWND control) const
{
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, dialogWindow(), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

bool Container::visible(HWND control) const
{
    return IsWindowVisible(control) != FALSE;
}

std::vector<HWND> Container::toolTips() const
{
    std::vector<HWND> found;
    for (HWND tips = nullptr; (tips = FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr)) != nullptr;)
        if (GetWindow(tips, GW_OWNER) == window_)
            found.push_back(tips);
    return found;
}

void Container::press(WORD key, bool shift, bool alt, bool control)
{
    // Another program may have taken the focus; a host gives it back to the dialog when it is activated again.
    if (site->isUiActive() && !IsChild(dialogWindow(), GetFocus()))
        site->activateUi();
    const Modifiers held(shift, alt, control);
    const HWND focus = GetFocus() ? GetFocus() : dialogWindow();
    const auto scan = static_cast<LPARAM>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC)) << 16;
    const LPARAM context = alt ? 1L << 29 : 0;
    PostMessageW(focus, alt ? WM_SYSKEYDOWN : WM_KEYDOWN, key, 1 | scan | context);
    pump();
    const HWND now = GetFocus() ? GetFocus() : window_;
    PostMessageW(now, alt ? WM_SYSKEYUP : WM_KEYUP, key, static_cast<LPARAM>(0xC0000001UL) | scan | context);
    pump();
}

void Container::type(const wchar_t* text)
{
    for (; *text; ++text)
        PostMessageW(GetFocus(), WM_CHAR, *text, 1);
    pump();
}

void Container::click(HWND control)
{
    clickAt(control, 5, 5);
}

void Container::point(HWND control, POINT place)
{
    ClientToScreen(control, &place);
    SetCursorPos(place.x, place.y);
}

void Container::clickAt(HWND control, int x, int y, bool twice)
{
    const LPARAM at = MAKELPARAM(x, y);
    SendMessageW(control, WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(GetAncestor(control, GA_ROOT)),
                 MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN));
    SendMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, at);
    SendMessageW(control, WM_LBUTTONUP, 0, at);
    if (twice)
    {
        SendMessageW(control, WM_LBUTTONDBLCLK, MK_LBUTTON, at);
        SendMessageW(control, WM_LBUTTONUP, 0, at);
    }
}

void Container::pump() const
{
    pumpMessages([this](MSG& message) { return site && site->translate(message); });
}

std::wstring accessibleName(HWND window)
{
    ComPtr<IAccessible> accessible;
    require(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                       accessible.putVoid()));
    Bstr name;
    accessible->get_accName(Variant(static_cast<long>(CHILDID_SELF)).get(), name.put());
    return std::wstring(name.view());
}

std::vector<std::wstring> items(HWND listBox)
{
    std::vector<std::wstring> result;
    for (int index = 0; index < ListBox_GetCount(listBox); ++index)
    {
        std::wstring item(static_cast<std::size_t>(ListBox_GetTextLen(listBox, index)), L'\0');
        SendMessageW(listBox, LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(item.data()));
        result.push_back(std::move(item));
    }
    return result;
}

void clickItem(HWND listBox, int index, bool twice)
{
    RECT item{};
    SendMessageW(listBox, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    Container::clickAt(listBox, item.left + 5, (item.top + item.bottom) / 2, twice);
}

} // namespace korvane::test
