#include "framework/control/ItemControl.h"

#include <new>

namespace korvane
{

void ItemControl::InsertItem(int index, const wchar_t* text, long itemData)
{
    const LRESULT made =
        sendItem(messages_.insert, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text ? text : L""));
    if (made < 0)
        throw std::bad_alloc();
    sendItem(messages_.setData, static_cast<WPARAM>(made), itemData);
}

int ItemControl::ListCount() const noexcept
{
    return static_cast<int>(send(messages_.count));
}

int ItemControl::ListIndex() const noexcept
{
    return window() ? static_cast<int>(send(messages_.selected)) : -1;
}

long ItemControl::ItemData(int index) const noexcept
{
    return static_cast<long>(sendItem(messages_.data, static_cast<WPARAM>(index)));
}

std::wstring ItemControl::List(int index) const
{
    const auto item = static_cast<WPARAM>(index);
    const LRESULT length = sendItem(messages_.textLength, item);
    std::wstring text(length > 0 ? static_cast<std::size_t>(length) : 0, L'\0');
    if (!text.empty())
        sendItem(messages_.text, item, reinterpret_cast<LPARAM>(text.data()));
    return text;
}

int ItemControl::indexOf(long itemData) const noexcept
{
    int index = ListCount() - 1;
    while (index >= 0 && ItemData(index) != itemData)
        --index;
    return index;
}

int ItemControl::indexOf(std::wstring_view text) const
{
    int index = ListCount() - 1;
    while (index >= 0 && List(index) != text)
        --index;
    return index;
}

} // namespace korvane
