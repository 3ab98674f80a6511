#include "framework/com/Apartment.h"

#include "framework/com/Platform.h"

#include <memory>
#include <new>

namespace korvane
{

namespace
{

/// The state, and the watch on COM that ends it. It does not count as a lock of the module.
class WatchedState final : public IInitializeSpy
{
public:
    WatchedState() { require(CoRegisterInitializeSpy(this, &cookie_)); }

    WatchedState(const WatchedState&) = delete;
    WatchedState& operator=(const WatchedState&) = delete;
    virtual ~WatchedState() = default;

    void stopWatching() noexcept { CoRevokeInitializeSpy(cookie_); }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        if (!object)
            return E_POINTER;
        *object = iid == IID_IUnknown || iid == IID_IInitializeSpy ? this : nullptr;
        return *object ? S_OK : E_NOINTERFACE;
    }

    // The thread's slot owns it.
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }

    STDMETHODIMP PreInitialize(DWORD, DWORD) override { return S_OK; }
    STDMETHODIMP PostInitialize(HRESULT result, DWORD, DWORD) override { return result; }

    STDMETHODIMP PreUninitialize(DWORD initializations) override
    {
        if (initializations == 1) // the last one: COM still works, and is gone when this returns
        {
            state.resources.reset();
            state.currentError.reset();
        }
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
    auto made = std::make_unique<WatchedState>();
    if (!TlsSetValue(slot, made.get()))
    {
        made->stopWatching();
        throw std::bad_alloc();
    }
    return made.release()->state;
}

ApartmentState* existingApartment() noexcept
{
    auto* existing = watchedState();
    return existing ? &existing->state : nullptr;
}

void releaseApartment() noexcept
{
    const std::unique_ptr<WatchedState> ended(watchedState());
    if (!ended)
        return;
    TlsSetValue(slot, nullptr);
    ended->stopWatching();
}

void forgetApartments() noexcept
{
    TlsFree(slot);
}

} // namespace korvane
