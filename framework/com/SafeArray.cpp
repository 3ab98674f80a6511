#include "framework/com/SafeArray.h"

#include "framework/com/Failure.h"

#include <new>

namespace korvane
{

namespace
{

/// The elements of an array, for as long as it lives.
template <class Element> class Elements
{
public:
    explicit Elements(SAFEARRAY* array) : array_(array)
    {
        void* data = nullptr;
        require(SafeArrayAccessData(array_, &data));
        first_ = static_cast<Element*>(data);
    }
    Elements(const Elements&) = delete;
    Elements& operator=(const Elements&) = delete;
    ~Elements() { SafeArrayUnaccessData(array_); }

    Element& operator[](std::size_t index) const noexcept { return first_[index]; }

private:
    SAFEARRAY* array_;
    Element* first_ = nullptr;
};

/// Puts a new array into a VARIANT.
Variant owning(SAFEARRAY* array, VARTYPE element)
{
    if (!array)
        throw std::bad_alloc();
    VARIANT value{};
    value.vt = static_cast<VARTYPE>(VT_ARRAY | element);
    value.parray = array;
    return Variant::adopt(value);
}

} // namespace

Variant arrayOf(const std::vector<long>& numbers)
{
    Variant result =
        owning(SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(numbers.size())), VT_VARIANT);
    const Elements<VARIANT> elements(result.get().parray);
    for (std::size_t index = 0; index < numbers.size(); ++index)
        elements[index] = Variant(numbers[index]).detach();
    return result;
}

TextTable::TextTable(const VARIANT& array)
{
    const Variant direct = Variant::valueOf(array);
    const VARTYPE type = direct.type();
    if (type != (VT_ARRAY | VT_BSTR) && type != (VT_ARRAY | VT_VARIANT))
        throw Failure(DISP_E_TYPEMISMATCH);
    SAFEARRAY* const source = direct.get().parray;
    if (!source || SafeArrayGetDim(source) != 2)
        throw Failure(DISP_E_BADINDEX);

    // The bounds are kept last dimension first.
    const std::size_t rows = source->rgsabound[1].cElements;
    columns_ = source->rgsabound[0].cElements;
    texts_.resize(rows * columns_);
    const auto copy = [&](const auto& textAt) {
        for (std::size_t row = 0; row < rows; ++row)
            for (std::size_t column = 0; column < columns_; ++column)
                at(row, column) = textAt(row + column * rows); // the first index runs fastest
    };
    if (type == (VT_ARRAY | VT_BSTR))
        copy([texts = Elements<BSTR>(source)](std::size_t index) { return Bstr(view(texts[index])); });
    else
        copy([values = Elements<VARIANT>(source)](std::size_t index) { return toText(values[index]); });
}

Variant TextTable::toArray() const
{
    SAFEARRAYBOUND bounds[] = {{static_cast<ULONG>(rows()), 0}, {static_cast<ULONG>(columns_), 0}};
    Variant result = owning(SafeArrayCreate(VT_BSTR, 2, bounds), VT_BSTR);
    const Elements<BSTR> elements(result.get().parray);
    for (std::size_t row = 0; row < rows(); ++row)
        for (std::size_t column = 0; column < columns_; ++column)
            elements[row + column * rows()] = Bstr(at(row, column)).detach();
    return result;
}

} // namespace korvane
