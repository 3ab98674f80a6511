#include "demo/datalayer/Arguments.h"

#include "demo/datalayer/Errors.h"
#include "demo/datalayer/Trace.h"
#include "framework/com/Variant.h"

namespace korvane::store
{

namespace
{

Failure notNames()
{
    return error(Code::namesExpected, L"EventLinks");
}

const VARIANT& followed(const VARIANT& value) noexcept
{
    return value.vt == (VT_BYREF | VT_VARIANT) && value.pvarVal ? *value.pvarVal : value;
}

/// Whether a value is of a type, by reference or not.
bool is(const VARIANT& value, int type) noexcept
{
    return (followed(value).vt | VT_BYREF) == (type | VT_BYREF);
}

bool isNumber(const VARIANT& value) noexcept
{
    return is(value, VT_I4) || is(value, VT_I2);
}

/// The elements of an array, locked as long as this lives.
class Elements
{
public:
    explicit Elements(SAFEARRAY* array) : array_(array)
    {
        void* data = nullptr;
        require(SafeArrayAccessData(array_, &data));
        first_ = static_cast<const VARIANT*>(data);
    }
    Elements(const Elements&) = delete;
    Elements& operator=(const Elements&) = delete;
    ~Elements() { SafeArrayUnaccessData(array_); }

    const VARIANT* begin() const noexcept { return first_; }
    const VARIANT* end() const noexcept { return first_ + array_->rgsabound[0].cElements; }

private:
    SAFEARRAY* array_;
    const VARIANT* first_;
};

} // namespace

bool isEmpty(const VARIANT& value) noexcept
{
    return is(value, VT_EMPTY);
}

std::optional<long> longIn(const VARIANT& value)
{
    return isNumber(value) ? std::optional(toLong(value)) : std::nullopt;
}

long linkIn(const VARIANT& value)
{
    return longIn(value).value_or(0);
}

std::vector<long> namesIn(const VARIANT& value)
{
    if (!is(value, VT_ARRAY | VT_VARIANT))
        throw notNames();
    const VARIANT& direct = followed(value);
    SAFEARRAY* array = direct.vt & VT_BYREF ? *direct.pparray : direct.parray;
    std::vector<long> names;
    if (!array) // one that was never given a size
        return names;
    if (SafeArrayGetDim(array) != 1)
        throw notNames();
    for (const VARIANT& element : Elements(array))
    {
        if (!isNumber(element))
            throw notNames();
        names.push_back(toLong(element));
    }
    return names;
}

std::wstring shown(const Argument& argument)
{
    const VARIANT& value = followed(argument.value);
    if (value.vt == VT_EMPTY)
        return L"Empty";
    std::wstring result = L"?";
    attempt([&] {
        if (!(value.vt & VT_ARRAY))
        {
            result = toText(value).c_str();
            return;
        }
        std::wstring list;
        for (const long name : namesIn(value))
            list += (list.empty() ? L"" : L", ") + shown(name);
        result = L'(' + list + L')';
    });
    return result;
}

} // namespace korvane::store
