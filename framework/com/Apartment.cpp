#include "framework/com/Apartment.h"

#include "framework/com/Module.h"
#include "framework/com/Object.h"

#include <new>

namespace korvane
{

namespace
{

/// The state, and the watch on COM that ends it. As an object of the module it keeps the module loaded, for COM is
/// going to call it.
class WatchedState final : public Object<WatchedState, Inherits<IInitializeSpy>, IInitializeSpy>
{
public:
    void watch() { require(CoRegisterInitializeSpy(this, &cookie_)); }
    void stopWatching() noexcept { CoRevokeInitializeSpy(cookie_); }

    STDMETHODIMP PreInitialize(DWORD, DWORD) override { return S_OK; }
    STDMETHODIMP PostInitialize(HRESULT result, DWORD, DWORD) override { return result; }

    STDMETHODIMP PreUninitialize(DWORD initializations) override
    {
        // The last one: COM still works. When it is done it may have unloaded the module, whatever is still alive, so
        // that nothing may be left for it to call.
        if (initializations == 1)
            releaseApartment();
        return S_OK;
    }

    STDMETHODIMP PostUninitialize(DWORD) override { return S_OK; }

    ApartmentState state;

private:
    ULARGE_INTEGER cookie_{};
};

/// The thread's slot, reserved when the module is loaded. Storage without destructors: a thread-local object with
/// one would keep the module loaded for as long as the thread lives.
const DWORD slot = TlsAlloc();

WatchedState* watchedState() noexcept
{
    return static_cast<WatchedState*>(TlsGetValue(slot));
}

} // namespace

ApartmentState& apartment()
{
    if (auto* existing = watchedState())
        return existing->state;
    auto made = make<WatchedState>();
    made->watch();
    if (!TlsSetValue(slot, made.get()))
    {
        made->stopWatching();
        throw std::bad_alloc();
    }
    return made.detach()->state;
}

ApartmentState* existingApartment() noexcept
{
    auto* existing = watchedState();
    return existing ? &existing->state : nullptr;
}

void releaseApartment() noexcept
{
    // What is released may belong to the host, and call back so that the state is made anew.
    while (const auto ended = ComPtr<WatchedState>::adopt(watchedState()))
    {
        TlsSetValue(slot, nullptr);
        ended->stopWatching();
        // Within a call of the watch it is for COM to say when the watch ends: where that is later, COM still calls it
        // after it has unloaded the module. Wine ends it at once.
        if (ended->referenceCount() > 1)
            module::stay();
    }
}

void forgetApartments() noexcept
{
    TlsFree(slot);
}

} // namespace korvane
