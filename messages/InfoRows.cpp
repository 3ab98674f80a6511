#include "messages/InfoRows.h"

#include "framework/com/SafeArray.h"

#include <algorithm>

namespace korvane
{

void InfoRows::assign(const Variant& info)
{
    std::vector<Row> rows;
    if (!info.isEmpty())
    {
        const TextTable table(info.get());
        rows.reserve(table.columns() + 1);
        for (std::size_t row = 0; row < table.columns(); ++row)
            rows.push_back(
                {{std::wstring(table.at(labels, row).view()), std::wstring(table.at(values, row).view())}});
    }
    rows.emplace_back();
    rows_ = std::move(rows);
}

Variant InfoRows::toArray() const
{
    TextTable table(2, rows_.size());
    for (std::size_t index = 0; index < rows_.size(); ++index) // the first index of the array is the column
        for (const std::size_t part : {labels, values})
            table.at(part, index) = Bstr(rows_[index].texts[part]);
    return table.toArray();
}

std::wstring_view InfoRows::text(int row, std::size_t column) const
{
    return rows_.at(static_cast<std::size_t>(row)).texts[column];
}

void InfoRows::setText(int row, std::size_t column, std::wstring_view text)
{
    std::wstring written(text);
    if (row + 1 == count())
        rows_.emplace_back();
    rows_.at(static_cast<std::size_t>(row)).texts[column] = std::move(written);
}

int InfoRows::move(int row, int target)
{
    const int last = count() - 1;
    if (row == last)
        return row;
    target = std::clamp(target, 0, last - 1);
    const auto at = [this](int index) { return rows_.begin() + index; };
    if (target < row)
        std::rotate(at(target), at(row), at(row + 1));
    else
        std::rotate(at(row), at(row + 1), at(target + 1));
    return target;
}

} // namespace korvane
