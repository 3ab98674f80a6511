#include "demo/datalayer/Text.h"

#include <algorithm>

namespace korvane::store
{

bool sameText(std::wstring_view left, std::wstring_view right) noexcept
{
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

bool isBlank(std::wstring_view text) noexcept
{
    return std::all_of(text.begin(), text.end(), [](wchar_t character) {
        WORD type = 0;
        return GetStringTypeW(CT_CTYPE1, &character, 1, &type) && (type & (C1_SPACE | C1_BLANK)) != 0;
    });
}

} // namespace korvane::store
