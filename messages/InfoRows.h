// The information rows of a resource as they are edited: labels and values, and always one row at the end to add to.
#pragma once

#include "framework/com/Variant.h"

#include <string>
#include <vector>

namespace korvane
{

class InfoRows
{
public:
    enum Column : std::size_t
    {
        labels,
        values
    };

    /// Takes the rows of an array of texts, labels at (0, row) and values at (1, row); Empty has none.
    void assign(const Variant& info);
    /// All rows in such an array, the last one too.
    Variant toArray() const;

    /// The last row counts.
    int count() const noexcept { return static_cast<int>(rows_.size()); }
    std::wstring_view text(int row, std::size_t column) const;
    /// Whoever writes into the last row gets another one behind it, whatever he writes.
    void setText(int row, std::size_t column, std::wstring_view text);

    /// Moves a row to a place, or as near to it as there are rows to be moved: the last one stays where it is.
    /// @return where the row is now.
    int move(int row, int target);

private:
    struct Row
    {
        std::wstring texts[2];
    };

    std::vector<Row> rows_ = std::vector<Row>(1);
};

} // namespace korvane
