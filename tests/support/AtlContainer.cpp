#include "tests/support/AtlContainer.h"

#include "framework/com/Failure.h"
#include "tests/support/Messages.h"

namespace korvane::test
{

namespace
{

template <class Function> Function* entryPoint(HMODULE module, const char* name)
{
    auto* const found = reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    if (!found)
        throw Failure(E_NOTIMPL, L"atl.dll", L"the platform has no such container");
    return found;
}

} // namespace

AtlContainer::AtlContainer(SIZE size) : atl_(LoadLibraryW(L"atl.dll"))
{
    static const BOOL windowClassIsThere = entryPoint<BOOL WINAPI()>(atl_, "AtlAxWinInit")();
    if (windowClassIsThere)
        top_ = CreateWindowExW(WS_EX_CONTROLPARENT, L"Static", L"Container", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                               40, 40, 500, 480, nullptr, nullptr, nullptr, nullptr);
    window_ = CreateWindowExW(WS_EX_CONTROLPARENT, L"AtlAxWin", L"", WS_CHILD | WS_VISIBLE, 30, 20, size.cx,
                              size.cy, top_, nullptr, nullptr, nullptr);
    if (!window_)
        throw Failure(E_FAIL, L"AtlAxWin", L"it has no window");
}

AtlContainer::~AtlContainer()
{
    if (IsWindow(top_))
        DestroyWindow(top_);
}

void AtlContainer::attach(IUnknown* control)
{
    // Without a place for it, one implementation of the platform makes no container at all.
    ComPtr<IUnknown> container;
    require(entryPoint<HRESULT WINAPI(IUnknown*, HWND, IUnknown**)>(atl_, "AtlAxAttachControl")(
        control, window_, container.put()));
    if (!container)
        throw Failure(E_FAIL, L"AtlAxAttachControl", L"there is no container");
}

ComPtr<IUnknown> AtlContainer::create(const wchar_t* progId)
{
    ComPtr<IUnknown> container;
    ComPtr<IUnknown> control;
    require(entryPoint<HRESULT WINAPI(LPCOLESTR, HWND, IStream*, IUnknown**)>(atl_, "AtlAxCreateControl")(
        progId, window_, nullptr, container.put()));
    require(entryPoint<HRESULT WINAPI(HWND, IUnknown**)>(atl_, "AtlAxGetControl")(window_, control.put()));
    return control;
}

RECT AtlContainer::place(HWND control) const
{
    RECT result{};
    GetWindowRect(control, &result);
    MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&result), 2);
    return result;
}

void AtlContainer::type(const wchar_t* characters)
{
    for (; *characters; ++characters)
        PostMessageW(GetFocus(), WM_CHAR, *characters, 1);
    pumpMessages();
}

} // namespace korvane::test
