#include "tests/support/GridView.h"

#include "framework/com/Call.h"
#include "tests/support/Container.h"

namespace korvane::test
{

namespace
{

VARIANT numberOf(long child)
{
    return Variant(child).detach();
}

} // namespace

Element Element::ofWindow(HWND window)
{
    Element element;
    require(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                       element.object.putVoid()));
    return element;
}

std::wstring Element::name() const
{
    return std::wstring(fetch(object, &IAccessible::get_accName, numberOf(child)).view());
}

std::wstring Element::value() const
{
    return std::wstring(fetch(object, &IAccessible::get_accValue, numberOf(child)).view());
}

long Element::role() const
{
    return toLong(fetch(object, &IAccessible::get_accRole, numberOf(child)).get());
}

long Element::state() const
{
    return toLong(fetch(object, &IAccessible::get_accState, numberOf(child)).get());
}

RECT Element::place() const
{
    long left = 0;
    long top = 0;
    long width = 0;
    long height = 0;
    call(object, &IAccessible::accLocation, &left, &top, &width, &height, numberOf(child));
    return {left, top, left + width, top + height};
}

std::vector<Element> Element::children() const
{
    const long count = fetch(object, &IAccessible::get_accChildCount);
    std::vector<VARIANT> found(static_cast<std::size_t>(count));
    long given = 0;
    require(AccessibleChildren(object.get(), 0, count, found.data(), &given));
    std::vector<Element> result;
    for (VARIANT& value : found)
    {
        const Variant owned = Variant::adopt(value);
        if (owned.type() == VT_DISPATCH)
            result.push_back({toObject(owned.get()).as<IAccessible>()});
        else
            result.push_back({object, toLong(owned.get())});
    }
    return result;
}

int GridView::rows() const
{
    return static_cast<int>(fetch(Element::ofWindow(window_).object, &IAccessible::get_accChildCount));
}

Element GridView::row(int row) const
{
    const auto table = Element::ofWindow(window_).object;
    return {fetch(table, &IAccessible::get_accChild, numberOf(row + 1)).as<IAccessible>()};
}

Element GridView::cell(int row, int column) const
{
    return {fetch(this->row(row).object, &IAccessible::get_accChild, numberOf(column + 1)).as<IAccessible>()};
}

std::vector<std::pair<std::wstring, std::wstring>> GridView::texts() const
{
    std::vector<std::pair<std::wstring, std::wstring>> all;
    for (int at = 1; at < rows(); ++at)
        all.emplace_back(text(at, 1), text(at, 2));
    return all;
}

std::pair<int, int> GridView::current() const
{
    for (int at = 0; at < rows(); ++at)
        for (int column = 0; const Element& found : row(at).children())
        {
            if ((found.state() & STATE_SYSTEM_SELECTED) != 0)
                return {at, column};
            ++column;
        }
    return {-1, -1};
}

RECT GridView::place(int row, int column) const
{
    RECT place = cell(row, column).place();
    MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

void GridView::click(int row, int column) const
{
    const RECT at = place(row, column);
    Container::clickAt(window_, at.left + 4, at.top + 4);
}

} // namespace korvane::test
