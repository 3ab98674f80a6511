// A table of rows of cells. A child is known by its place among its siblings, from 1; in the events of the window, which
// name a child of the table, a cell is known by a number below 0.
#include "framework/control/Grid.h"

#include "framework/com/Decimal.h"
#include "framework/com/Object.h"

#include <algorithm>

namespace korvane
{

// What is told is asked for through the interface: nothing is found by the names of its members.
template <> inline constexpr bool isDual<IAccessible> = false;
template <> inline bool alsoAnswersFor<IAccessible>(REFIID iid) noexcept
{
    return iid == IID_IDispatch;
}

namespace
{

/// A function of the platform's support for assistive technology, which is loaded where there is any.
template <class Function> Function* support(const char* name) noexcept
{
    static const HMODULE library = LoadLibraryExW(L"oleacc.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return library ? reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)))
                   : nullptr;
}

constexpr int whole = GridLayout::none; ///< the row of the table, and the column of a row

/// The table, one of its rows or one of its cells. All of them may outlive the grid; the table knows whether it is there.
class GridAccessible final : public Object<GridAccessible, Inherits<IAccessible>, IAccessible>
{
public:
    explicit GridAccessible(Grid& grid) : grid_(&grid) {}
    GridAccessible(ComPtr<GridAccessible> table, Cell element) : table_(std::move(table)), element_(element)
    {
    }

    void forgetGrid() noexcept { grid_ = nullptr; }

    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override
    {
        return E_NOTIMPL;
    }

    STDMETHODIMP get_accParent(IDispatch** parent) override;
    STDMETHODIMP get_accChildCount(long* count) override
    {
        return returns(count, [&] { return childCount(); });
    }
    STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override
    {
        return returns(object, [&] { return objectOf(elementOf(child)); });
    }
    STDMETHODIMP get_accName(VARIANT child, BSTR* name) override
    {
        return returns(name, [&] { return nameOf(elementOf(child)); });
    }
    STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override
    {
        return returns(value, [&] {
            const Cell element = elementOf(child);
            return element.column == whole ? Bstr() : Bstr(grid().textOf(element));
        });
    }
    STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override
    {
        return returns(role, [&] { return Variant(roleOf(elementOf(child))); });
    }
    STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override
    {
        return returns(state, [&] { return Variant(stateOf(elementOf(child))); });
    }
    STDMETHODIMP get_accFocus(VARIANT* focus) override
    {
        return returns(focus, [&] { return grid().hasFocus() ? currentBelow() : Variant(); });
    }
    STDMETHODIMP get_accSelection(VARIANT* selection) override
    {
        return returns(selection, [&] { return currentBelow(); });
    }
    STDMETHODIMP accDoDefaultAction(VARIANT child) override;
    STDMETHODIMP accSelect(long flags, VARIANT child) override;
    STDMETHODIMP accLocation(long* left, long* top, long* width, long* height, VARIANT child) override;
    STDMETHODIMP accNavigate(long direction, VARIANT start, VARIANT* end) override;
    STDMETHODIMP accHitTest(long x, long y, VARIANT* found) override;

    // A grid has none of these. What a cell does by default is done where it is asked for, and has no name: the grid
    // knows no language.
    STDMETHODIMP get_accDefaultAction(VARIANT, BSTR* action) override { return none(action); }
    STDMETHODIMP get_accDescription(VARIANT, BSTR* text) override { return none(text); }
    STDMETHODIMP get_accHelp(VARIANT, BSTR* text) override { return none(text); }
    STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT, long*) override { return none(file); }
    STDMETHODIMP get_accKeyboardShortcut(VARIANT, BSTR* keys) override { return none(keys); }
    STDMETHODIMP put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP put_accValue(VARIANT, BSTR) override { return E_NOTIMPL; }

private:
    static HRESULT none(BSTR* text) noexcept
    {
        if (text)
            *text = nullptr;
        return S_FALSE;
    }

    Grid& grid() const;
    Grid& usableGrid() const;
    ComPtr<GridAccessible> table() { return table_ ? table_ : ComPtr<GridAccessible>(this); }
    const GridLayout& layout() const { return grid().settledLayout(); }
    long childCount() const;
    Cell elementOf(const VARIANT& child) const;
    Cell cellOf(const VARIANT& child) const;
    ComPtr<IDispatch> objectOf(Cell element);
    std::optional<Cell> childOf(Cell element, bool first) const;
    std::optional<Cell> neighbourOf(Cell element, long direction) const;
    Variant currentBelow();
    Bstr nameOf(Cell element) const;
    long roleOf(Cell element) const;
    long stateOf(Cell element) const;
    RECT placeOf(Cell element) const; ///< on the window

    ComPtr<GridAccessible> table_; ///< that the element is of; null in the table itself
    Grid* grid_ = nullptr;         ///< of the table
    Cell element_{whole, whole};
};

/// Throws when the window has gone, or the row.
Grid& GridAccessible::grid() const
{
    Grid* const shown = table_ ? table_->grid_ : grid_;
    if (!shown || element_.row >= shown->Rows())
        throw Failure(CO_E_OBJNOTCONNECTED);
    return *shown;
}

/// The same for what is done to it. Throws where the user could not do it either: in a dialog that is frozen, on a page
/// that is not seen, behind a message box of the host's.
Grid& GridAccessible::usableGrid() const
{
    Grid& shown = grid();
    bool usable = IsWindowVisible(shown.window()) != FALSE;
    for (HWND window = shown.window(); window && usable; window = GetAncestor(window, GA_PARENT))
        usable = IsWindowEnabled(window) != FALSE;
    if (!usable)
        throw Failure(E_ACCESSDENIED);
    return shown;
}

long GridAccessible::childCount() const
{
    return element_.column != whole ? 0 : element_.row != whole ? grid().Cols() : grid().Rows();
}

Cell GridAccessible::elementOf(const VARIANT& child) const
{
    const int columns = grid().Cols();
    if (child.vt != VT_I4)
        throw Failure(E_INVALIDARG);
    if (child.lVal == CHILDID_SELF)
        return element_;
    if (child.lVal > 0 && child.lVal <= childCount())
        return element_.row == whole ? Cell{static_cast<int>(child.lVal) - 1, whole}
                                     : Cell{element_.row, static_cast<int>(child.lVal) - 1};
    const long cell = -(child.lVal + 1);
    if (child.lVal > 0 || element_.row != whole || cell / columns >= grid().Rows())
        throw Failure(E_INVALIDARG);
    return {static_cast<int>(cell) / columns, static_cast<int>(cell) % columns};
}

/// The cell that a call is about. Throws for what is none that can be the current one.
Cell GridAccessible::cellOf(const VARIANT& child) const
{
    const Cell element = elementOf(child);
    const Cell cell{element.row, element.column == whole ? grid().current().column : element.column};
    if (element.row == whole || layout().isFixed(cell))
        throw Failure(E_INVALIDARG);
    return cell;
}

ComPtr<IDispatch> GridAccessible::objectOf(Cell element)
{
    return ComPtr<IDispatch>(element.row == whole ? table().get()
                                                  : make<GridAccessible>(table(), element).get());
}

/// The current cell, or the row that it is in, as a child of this element; Empty where it is none.
Variant GridAccessible::currentBelow()
{
    const Cell current = grid().current();
    if (element_.row == whole)
        return Variant(objectOf(current));
    return element_.row == current.row && element_.column == whole ? Variant(long{current.column} + 1)
                                                                   : Variant();
}

/// A cell is called by its headings, and its text is its value; a heading is called what it says.
Bstr GridAccessible::nameOf(Cell element) const
{
    Grid& shown = grid();
    if (element.row == whole)
    {
        std::wstring name = shown.Caption();
        std::erase(name, L'&');
        return Bstr(name);
    }
    if (element.column == whole)
        return Bstr(shown.textOf({element.row, shown.FixedCols()}));
    if (element.row < shown.FixedRows())
        return Bstr(shown.textOf(element));
    if (element.column < shown.FixedCols())
        return Bstr(decimal(element.row - shown.FixedRows() + 1));
    return Bstr(shown.FixedRows() > 0 ? shown.textOf({0, element.column}) : std::wstring_view());
}

long GridAccessible::roleOf(Cell element) const
{
    if (element.row == whole)
        return ROLE_SYSTEM_TABLE;
    if (element.column == whole)
        return ROLE_SYSTEM_ROW;
    if (element.row < grid().FixedRows())
        return ROLE_SYSTEM_COLUMNHEADER;
    return element.column < grid().FixedCols() ? ROLE_SYSTEM_ROWHEADER : ROLE_SYSTEM_CELL;
}

long GridAccessible::stateOf(Cell element) const
{
    Grid& shown = grid();
    long state = IsWindowEnabled(shown.window()) ? 0 : STATE_SYSTEM_UNAVAILABLE;
    if (!IsWindowVisible(shown.window()))
        state |= STATE_SYSTEM_INVISIBLE;
    if (element.row == whole)
        return state | STATE_SYSTEM_FOCUSABLE;
    RECT client{};
    GetClientRect(shown.window(), &client);
    if (element.row >= shown.FixedRows())
        client.top = layout().fixedHeight();
    RECT seen{};
    const RECT place = placeOf(element);
    if (!IntersectRect(&seen, &place, &client))
        state |= STATE_SYSTEM_OFFSCREEN;
    if (element.column == whole || layout().isFixed(element))
        return state;
    state |= STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_SELECTABLE;
    if (element == shown.current())
        state |= STATE_SYSTEM_SELECTED | (shown.hasFocus() ? STATE_SYSTEM_FOCUSED : 0);
    return state;
}

RECT GridAccessible::placeOf(Cell element) const
{
    RECT place{};
    GetClientRect(grid().window(), &place);
    if (element.row == whole)
        return place;
    const RECT cell = layout().place({element.row, std::max(element.column, 0)});
    return element.column == whole ? RECT{0, cell.top, place.right, cell.bottom} : cell;
}

STDMETHODIMP GridAccessible::get_accParent(IDispatch** parent)
{
    return returns(parent, [&] {
        if (element_.row != whole)
            return objectOf(element_.column != whole ? Cell{element_.row, whole} : Cell{whole, whole});
        ComPtr<IDispatch> window;
        if (const auto fromWindow =
                support<decltype(AccessibleObjectFromWindow)>("AccessibleObjectFromWindow"))
            require(fromWindow(grid().window(), static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                               window.putVoid()));
        return window;
    });
}

STDMETHODIMP GridAccessible::accDoDefaultAction(VARIANT child)
{
    return guard([&] { usableGrid().click(cellOf(child)); });
}

STDMETHODIMP GridAccessible::accSelect(long flags, VARIANT child)
{
    return guard([&] {
        if ((flags & (SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION)) == 0 ||
            (flags & ~(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION)) != 0)
            throw Failure(E_INVALIDARG); // one cell is the current one, and only one
        const Cell element = elementOf(child);
        Grid& shown = usableGrid();
        if ((flags & SELFLAG_TAKEFOCUS) != 0)
            shown.setFocus();
        if (element.row != whole)
            grid().choose(cellOf(child));
    });
}

STDMETHODIMP GridAccessible::accLocation(long* left, long* top, long* width, long* height, VARIANT child)
{
    if (!left || !top || !width || !height)
        return E_POINTER;
    *left = *top = *width = *height = 0;
    return guard([&] {
        RECT place = placeOf(elementOf(child));
        MapWindowPoints(grid().window(), nullptr, reinterpret_cast<POINT*>(&place),
                        2); // also from right to left
        *left = place.left;
        *top = place.top;
        *width = place.right - place.left;
        *height = place.bottom - place.top;
    });
}

STDMETHODIMP GridAccessible::accNavigate(long direction, VARIANT start, VARIANT* end)
{
    return returns(end, [&] {
        const Cell from = elementOf(start);
        const bool isFirst = direction == NAVDIR_FIRSTCHILD;
        const auto to =
            isFirst || direction == NAVDIR_LASTCHILD ? childOf(from, isFirst) : neighbourOf(from, direction);
        return to ? Variant(objectOf(*to)) : Variant();
    });
}

/// The first or the last part of an element; none of a cell.
std::optional<Cell> GridAccessible::childOf(Cell element, bool first) const
{
    if (element.row != whole && element.column != whole)
        return std::nullopt;
    int& part = element.row == whole ? element.row : element.column;
    part = first ? 0 : (element.row == whole ? grid().Rows() : grid().Cols()) - 1;
    return element;
}

/// What stands beside a row or a cell; none beyond the table's edges.
std::optional<Cell> GridAccessible::neighbourOf(Cell element, long direction) const
{
    const bool isCell = element.column != whole;
    const bool isBack = direction == NAVDIR_PREVIOUS || direction == NAVDIR_UP || direction == NAVDIR_LEFT;
    const bool isAcross = isCell && direction != NAVDIR_UP && direction != NAVDIR_DOWN;
    if (element.row == whole || (!isCell && (direction == NAVDIR_LEFT || direction == NAVDIR_RIGHT)))
        return std::nullopt;
    int& place = isAcross ? element.column : element.row;
    place += isBack ? -1 : 1;
    return place >= 0 && place < (isAcross ? grid().Cols() : grid().Rows()) ? std::optional(element)
                                                                            : std::nullopt;
}

STDMETHODIMP GridAccessible::accHitTest(long x, long y, VARIANT* found)
{
    return returns(found, [&] {
        POINT point{x, y};
        ScreenToClient(grid().window(), &point);
        const RECT own = placeOf(element_);
        if (!PtInRect(&own, point))
            return Variant();
        const Cell cell = layout().at(point);
        if (element_.column != whole || cell.row == GridLayout::none || cell.column == GridLayout::none)
            return Variant(long{CHILDID_SELF});
        return Variant(objectOf(element_.row == whole ? Cell{cell.row, whole} : cell));
    });
}

} // namespace

LRESULT Grid::answer(WPARAM request)
{
    const auto toResult = support<decltype(LresultFromObject)>("LresultFromObject");
    if (!toResult)
        return 0;
    if (!accessible_)
        accessible_ = ComPtr<IAccessible>(make<GridAccessible>(*this).get());
    return toResult(__uuidof(IAccessible), request, accessible_.get());
}

void Grid::closing() noexcept
{
    if (const auto table = std::exchange(accessible_, nullptr))
        static_cast<GridAccessible*>(table.get())->forgetGrid();
}

void Grid::tell(DWORD event, Cell cell) const noexcept
{
    if (window())
        NotifyWinEvent(event, window(), OBJID_CLIENT, -(cell.row * Cols() + cell.column + 1));
}

void Grid::tellOfOrder() const noexcept
{
    if (window())
        NotifyWinEvent(EVENT_OBJECT_REORDER, window(), OBJID_CLIENT, CHILDID_SELF);
}

} // namespace korvane
