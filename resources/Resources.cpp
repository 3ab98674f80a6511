#include "resources/Resources.h"

#include <limits>

namespace korvane
{

namespace
{

/// A text of the string table where it stands in the module; nothing is copied.
std::wstring_view storedText(long id)
{
    // The platform would take a larger id modulo the size of its table and find another text.
    if (id < 0 || id > std::numeric_limits<WORD>::max())
        return {};
    const wchar_t* text = nullptr;
    const int length =
        LoadStringW(module::instance(), static_cast<UINT>(id), reinterpret_cast<wchar_t*>(&text), 0);
    return length > 0 ? std::wstring_view(text, static_cast<std::size_t>(length)) : std::wstring_view();
}

} // namespace

Resources::Resources() : locale_(toLong(storedText(0))) {}

STDMETHODIMP Resources::GetString(long id, BSTR* text)
{
    return returns(text, [&] { return Bstr(storedText(id)); });
}

STDMETHODIMP Resources::GetString(VARIANT id, BSTR* text)
{
    return returns(text, [&] {
        long number = -1;
        attempt([&] { number = toLong(id); });
        return Bstr(storedText(number));
    });
}

STDMETHODIMP Resources::get_LocaleID(long* locale)
{
    return returns(locale, [&] { return locale_; });
}

} // namespace korvane
