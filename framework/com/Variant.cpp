#include "framework/com/Variant.h"

#include "framework/com/Failure.h"

namespace korvane
{

namespace
{

/// The platform's variant functions do not change their source, although some of its headers say so.
VARIANT* source(const VARIANT& value) noexcept
{
    return const_cast<VARIANT*>(&value);
}

} // namespace

Variant::Variant(long number) noexcept : Variant()
{
    value_.vt = VT_I4;
    value_.lVal = number;
}

Variant::Variant(bool flag) noexcept : Variant()
{
    value_.vt = VT_BOOL;
    value_.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(OleDate date) noexcept : Variant()
{
    value_.vt = VT_DATE;
    value_.date = date.days;
}

Variant::Variant(Bstr text) : Variant()
{
    value_.bstrVal = text.detach();
    value_.vt = VT_BSTR;
}

Variant::Variant(const ComPtr<IDispatch>& object) noexcept : Variant()
{
    value_.vt = VT_DISPATCH;
    value_.pdispVal = ComPtr(object).detach();
}

Variant::Variant(const Variant& other) : Variant()
{
    require(VariantCopy(&value_, source(other.value_)));
}

Variant Variant::valueOf(const VARIANT& reference)
{
    Variant result;
    require(VariantCopyInd(&result.value_, source(reference)));
    return result;
}

namespace
{

Variant converted(const VARIANT& value, VARTYPE type, USHORT flags = 0)
{
    // The indirection is followed first: a reference to a VARIANT is not accepted by the conversion.
    const Variant direct = Variant::valueOf(value);
    Variant result;
    require(VariantChangeTypeEx(result.put(), source(direct.get()), LOCALE_USER_DEFAULT, flags, type));
    return result;
}

} // namespace

long convertedToLong(const VARIANT& value)
{
    return converted(value, VT_I4).get().lVal;
}

long toLong(std::wstring_view text)
{
    LONG number = 0;
    require(VarI4FromStr(Bstr(text).get(), LOCALE_USER_DEFAULT, 0, &number));
    return number;
}

std::optional<long> numberIn(std::wstring_view text)
{
    LONG number = 0;
    const bool isNumber =
        !text.empty() && SUCCEEDED(VarI4FromStr(Bstr(text).get(), LOCALE_USER_DEFAULT, 0, &number));
    return isNumber ? std::optional<long>(number) : std::nullopt;
}

bool toBool(const VARIANT& value)
{
    const VARIANT_BOOL flag = value.vt == VT_BOOL ? value.boolVal : converted(value, VT_BOOL).get().boolVal;
    return flag != VARIANT_FALSE;
}

OleDate toDate(const VARIANT& value)
{
    return {converted(value, VT_DATE).get().date};
}

Bstr toText(const VARIANT& value)
{
    return value.vt == VT_BSTR ? Bstr(view(value.bstrVal))
                               : Bstr::adopt(converted(value, VT_BSTR, VARIANT_ALPHABOOL).detach().bstrVal);
}

ComPtr<IUnknown> toObject(const VARIANT& value)
{
    const Variant direct = Variant::valueOf(value);
    // VT_DISPATCH and VT_UNKNOWN share their storage, as IDispatch is an IUnknown.
    if (direct.type() != VT_DISPATCH && direct.type() != VT_UNKNOWN)
        throw Failure(DISP_E_TYPEMISMATCH);
    return ComPtr<IUnknown>(direct.get().punkVal);
}

} // namespace korvane
