// Arrays of OLE Automation.
#pragma once

#include "framework/com/Variant.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace korvane
{

/// An array of VARIANTs that hold Longs, in a VARIANT of its own.
Variant arrayOf(const std::vector<long>& numbers);

/// A table of texts, rows by columns, as OLE Automation passes it: an array of two dimensions of BSTRs. The first index
/// is the row; both count from 0 in what is made here, and from anywhere in what comes in.
class TextTable
{
public:
    TextTable(std::size_t rows, std::size_t columns) : columns_(columns), texts_(rows * columns) {}

    /// Of an array of two dimensions, of BSTRs or VARIANTs. Throws DISP_E_TYPEMISMATCH for any other value, and
    /// DISP_E_BADINDEX for an array of another number of dimensions.
    explicit TextTable(const VARIANT& array);

    std::size_t rows() const noexcept { return columns_ == 0 ? 0 : texts_.size() / columns_; }
    std::size_t columns() const noexcept { return columns_; }
    const Bstr& at(std::size_t row, std::size_t column) const { return texts_.at(row * columns_ + column); }
    Bstr& at(std::size_t row, std::size_t column) { return texts_.at(row * columns_ + column); }

    /// The table as an array of BSTRs, in a VARIANT of its own.
    Variant toArray() const;

private:
    std::size_t columns_ = 0;
    std::vector<Bstr> texts_; // row by row
};

} // namespace korvane
