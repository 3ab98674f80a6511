// An owning VARIANT, and the conversions of OLE Automation as C++ functions that throw a Failure.
#pragma once

#include "framework/com/Bstr.h"
#include "framework/com/ComPtr.h"
#include "framework/com/Platform.h"

#include <optional>

namespace korvane
{

/// An OLE date: days since 30 December 1899.
struct OleDate
{
    DATE days = 0;
    friend bool operator==(OleDate, OleDate) = default;
};

class Variant
{
public:
    Variant() noexcept = default;
    explicit Variant(long number) noexcept;
    explicit Variant(bool flag) noexcept;
    explicit Variant(OleDate date) noexcept;
    explicit Variant(Bstr text);
    explicit Variant(const ComPtr<IDispatch>& object) noexcept;

    Variant(const Variant& other);
    Variant(Variant&& other) noexcept : value_(std::exchange(other.value_, VARIANT{})) {}
    ~Variant() { VariantClear(&value_); }

    Variant& operator=(Variant other) noexcept
    {
        std::swap(value_, other.value_);
        return *this;
    }

    /// Takes over a value that the caller owns.
    static Variant adopt(const VARIANT& owned) noexcept
    {
        Variant result;
        result.value_ = owned;
        return result;
    }

    /// A copy of a value that somebody else owns, with references followed to what they refer to.
    static Variant valueOf(const VARIANT& reference);

    const VARIANT& get() const noexcept { return value_; }
    VARTYPE type() const noexcept { return value_.vt; }
    bool isEmpty() const noexcept { return value_.vt == VT_EMPTY; }

    /// The address for an out parameter; what was held is cleared.
    VARIANT* put() noexcept
    {
        VariantClear(&value_);
        return &value_;
    }

    /// The address for a parameter that takes a value and gives one back.
    VARIANT* inOut() noexcept { return &value_; }

    /// Gives the value away.
    VARIANT detach() noexcept { return std::exchange(value_, VARIANT{}); }

private:
    VARIANT value_{}; // VT_EMPTY
};

// Conversions by OLE Automation's rules for the user's locale. They follow references and the default
// property of objects, and throw DISP_E_TYPEMISMATCH or DISP_E_OVERFLOW for what cannot be converted.
long convertedToLong(const VARIANT& value); ///< of what is no long already
inline long toLong(const VARIANT& value)
{
    return value.vt == VT_I4 ? value.lVal : convertedToLong(value);
}
long toLong(std::wstring_view text);
/// The same for a text that may well be no number.
std::optional<long> numberIn(std::wstring_view text);
bool toBool(const VARIANT& value);
OleDate toDate(const VARIANT& value);
Bstr toText(const VARIANT& value);

/// The text of a value that stays: lent where the value is a text, a converted copy otherwise. Its BSTR is never null.
class LentText
{
public:
    explicit LentText(const VARIANT& value)
        : converted_(isText(value) ? Bstr() : toText(value)),
          text_(isText(value) ? value.bstrVal : converted_.get())
    {
    }
    LentText(const LentText&) = delete;
    LentText& operator=(const LentText&) = delete;

    BSTR get() const noexcept { return text_; }
    std::wstring_view view() const noexcept { return korvane::view(text_); }

private:
    static bool isText(const VARIANT& value) noexcept { return value.vt == VT_BSTR && value.bstrVal; }

    Bstr converted_;
    BSTR text_;
};

/// The object that a value holds, by reference or not; empty for Nothing. Throws DISP_E_TYPEMISMATCH for
/// a value that holds no object.
ComPtr<IUnknown> toObject(const VARIANT& value);

} // namespace korvane
