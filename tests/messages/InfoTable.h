// Information rows as the array that they travel in.
#pragma once

#include "framework/com/SafeArray.h"

#include <string>
#include <utility>
#include <vector>

namespace korvane::test
{

using InfoTexts = std::vector<std::pair<std::wstring, std::wstring>>; ///< labels and values

inline Variant infoOf(const InfoTexts& rows)
{
    TextTable table(2, rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row)
    {
        table.at(0, row) = Bstr(rows[row].first);
        table.at(1, row) = Bstr(rows[row].second);
    }
    return table.toArray();
}

/// The rows in an array; none in Empty.
inline InfoTexts rowsIn(const Variant& info)
{
    InfoTexts rows;
    if (info.isEmpty())
        return rows;
    const TextTable table(info.get());
    for (std::size_t row = 0; row < table.columns(); ++row)
        rows.emplace_back(table.at(0, row).view(), table.at(1, row).view());
    return rows;
}

} // namespace korvane::test
