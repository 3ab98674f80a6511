// What the library keeps per apartment, that is per thread: released before COM goes away.
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/com/Failure.h"

#include <array>
#include <optional>

namespace korvane
{

/// Per-apartment state. It goes when the apartment ends or, for the thread that asks, when the module is about to be
/// unloaded. As long as it is there it counts once among what keeps the module loaded.
struct ApartmentState
{
    ComPtr<IUnknown> resources;          ///< the texts and pictures of all dialogs of the apartment
    std::optional<Failure> currentError; ///< the last error that a dialog's action met
    std::array<COLORREF, 16> customColors =
        white(); ///< those that the user has put together in the colour dialog
    /// The error object that the library has set last. Held: another one is not to be found in its place.
    ComPtr<IErrorInfo> reported;
    HRESULT reportedNumber = S_OK; ///< the number that went with it

private:
    static std::array<COLORREF, 16> white() noexcept
    {
        std::array<COLORREF, 16> colors{};
        colors.fill(RGB(255, 255, 255));
        return colors;
    }
};

/// The state of the calling thread's apartment, made on first use. Throws when COM refuses.
ApartmentState& apartment();

/// Releases the state of the calling thread's apartment; it is made again when needed.
void releaseApartment() noexcept;

/// The state of the calling thread's apartment, or null when there is none yet.
ApartmentState* existingApartment() noexcept;

/// The module goes: gives back what every thread's state was found by.
void forgetApartments() noexcept;

} // namespace korvane
