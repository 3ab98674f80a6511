// An owning BSTR. An allocation that fails is std::bad_alloc.
#pragma once

#include "framework/com/Platform.h"

#include <string_view>
#include <utility>

namespace korvane
{

/// The characters of a BSTR that somebody else owns; a null BSTR is the empty text.
inline std::wstring_view view(BSTR text) noexcept
{
    return {text ? text : L"", SysStringLen(text)};
}

class Bstr
{
public:
    Bstr() noexcept = default;
    explicit Bstr(std::wstring_view text);
    explicit Bstr(const wchar_t* text) : Bstr(std::wstring_view(text)) {}

    Bstr(const Bstr& other)
    {
        if (other.text_)
            *this = Bstr(other.view());
    }
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    ~Bstr() { SysFreeString(text_); }

    Bstr& operator=(Bstr other) noexcept
    {
        std::swap(text_, other.text_);
        return *this;
    }

    /// Takes over a BSTR that the caller owns.
    static Bstr adopt(BSTR owned) noexcept
    {
        Bstr result;
        result.text_ = owned;
        return result;
    }

    BSTR get() const noexcept { return text_; }
    std::wstring_view view() const noexcept { return korvane::view(text_); }
    const wchar_t* c_str() const noexcept { return text_ ? text_ : L""; }
    bool empty() const noexcept { return SysStringLen(text_) == 0; }

    /// The address for an out parameter; what was held is freed.
    BSTR* put() noexcept
    {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }

    /// The address for an in-out parameter.
    BSTR* inOut() noexcept { return &text_; }

    /// Gives the BSTR away; never null, as callers outside of C++ tell null from empty.
    BSTR detach();

    friend bool operator==(const Bstr& left, std::wstring_view right) noexcept
    {
        return left.view() == right;
    }

private:
    BSTR text_ = nullptr;
};

} // namespace korvane
