#include "framework/com/Bstr.h"

#include <new>

namespace korvane
{

Bstr::Bstr(std::wstring_view text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())))
{
    if (!text_)
        throw std::bad_alloc();
}

BSTR Bstr::detach()
{
    if (!text_)
        *this = Bstr(std::wstring_view());
    return std::exchange(text_, nullptr);
}

} // namespace korvane
