// The common controls of a module's manifest, for windows that are made outside the module.
#pragma once

#include "framework/com/Failure.h"

#include <string>

namespace korvane::test
{

/// While it lives, windows are created with the common controls that the module's manifest asks for.
class ModuleControls
{
public:
    explicit ModuleControls(const std::wstring& modulePath)
    {
        ACTCTXW request{};
        request.cbSize = sizeof request;
        request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
        request.lpSource = modulePath.c_str();
        request.lpResourceName = ISOLATIONAWARE_MANIFEST_RESOURCE_ID;
        context_ = CreateActCtxW(&request);
        if (context_ == INVALID_HANDLE_VALUE || !ActivateActCtx(context_, &cookie_))
            throw Failure(E_FAIL, modulePath, L"it has no activation context");
    }
    ModuleControls(const ModuleControls&) = delete;
    ModuleControls& operator=(const ModuleControls&) = delete;
    ~ModuleControls()
    {
        DeactivateActCtx(0, cookie_);
        ReleaseActCtx(context_);
    }

private:
    HANDLE context_ = INVALID_HANDLE_VALUE;
    ULONG_PTR cookie_ = 0;
};

} // namespace korvane::test
