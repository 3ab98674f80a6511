// The library's one exception: a COM error, with its error information intact.
#pragma once

#include "framework/com/Bstr.h"
#include "framework/com/ComPtr.h"
#include "framework/com/Platform.h"

#include <string_view>
#include <utility>

namespace korvane
{

class Failure
{
public:
    /// An error of the platform: its source is the running program, and the system's own text describes it.
    explicit Failure(HRESULT number) noexcept : number_(number) {}

    /// An error with its own source and description.
    Failure(HRESULT number, std::wstring_view source, std::wstring_view description);

    /// The failure of a call on an object: what the object told about it is taken along unchanged.
    static Failure ofCall(HRESULT number, IUnknown* object, REFIID calledInterface) noexcept;

    /// The failure of a call on an object of the host's, which may set error information and forget to say so: what was
    /// set during the call is taken along, unless it belongs to another failure. The caller has cleared what was there
    /// before.
    static Failure ofHost(HRESULT number) noexcept;

    HRESULT number() const noexcept { return number_; }
    Bstr source() const;
    Bstr description() const;

    /// Makes this failure the thread's COM error object and returns its number.
    HRESULT report() const noexcept;

private:
    bool isOfPlatform() const noexcept { return !information_ && !ofCall_; }

    HRESULT number_;
    bool ofCall_ = false;
    ComPtr<IErrorInfo> information_;
};

// Out of line: what hardly ever happens is not to stand in the way of what always does.
[[noreturn]] void throwFailure(HRESULT number);
[[noreturn]] void throwFailureOfCall(HRESULT number, IUnknown* object, REFIID calledInterface);

/// Throws a Failure for a failed platform call.
inline HRESULT require(HRESULT result)
{
    if (FAILED(result))
        throwFailure(result);
    return result;
}

} // namespace korvane
