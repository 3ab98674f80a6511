#include "framework/control/ActivationContext.h"

#include "framework/com/Module.h"

#include <commctrl.h>

#include <atomic>

namespace korvane
{

namespace
{

std::atomic<HANDLE> shared = INVALID_HANDLE_VALUE;

HANDLE sharedContext() noexcept
{
    if (shared != INVALID_HANDLE_VALUE)
        return shared;
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(module::instance(), path, MAX_PATH);
    ACTCTXW request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
    request.lpSource = path;
    request.hModule = module::instance();
    request.lpResourceName = ISOLATIONAWARE_MANIFEST_RESOURCE_ID;
    const HANDLE made = CreateActCtxW(&request);
    HANDLE expected = INVALID_HANDLE_VALUE;
    if (made != INVALID_HANDLE_VALUE && !shared.compare_exchange_strong(expected, made))
        ReleaseActCtx(made);
    return shared;
}

} // namespace

ControlsContext::ControlsContext() noexcept
{
    // Without the context the dialogs work with the host's common controls.
    if (const HANDLE context = sharedContext(); context != INVALID_HANDLE_VALUE)
        ActivateActCtx(context, &cookie_);
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_TREEVIEW_CLASSES |
                                                           ICC_DATE_CLASSES | ICC_UPDOWN_CLASS |
                                                           ICC_BAR_CLASSES | ICC_TAB_CLASSES};
    InitCommonControlsEx(&classes);
}

ControlsContext::~ControlsContext()
{
    if (cookie_ != 0)
        DeactivateActCtx(0, cookie_);
}

void releaseControlsContext() noexcept
{
    if (const HANDLE made = shared.exchange(INVALID_HANDLE_VALUE); made != INVALID_HANDLE_VALUE)
        ReleaseActCtx(made);
}

} // namespace korvane
