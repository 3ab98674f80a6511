#include "framework/control/DialogWindow.h"
#include "framework/control/Grid.h"
#include "framework/control/Keys.h"
#include "framework/control/TextContext.h"

#include "framework/com/Boundary.h"
#include "framework/com/Module.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

namespace korvane
{

namespace
{

constexpr const wchar_t* className = L"KorvaneGrid";

// In twips.
constexpr float narrowest = 300; ///< of the columns whose edge is dragged
constexpr float reach = 60;      ///< of an edge that can be dragged

} // namespace

/// The last grid takes the window class away, which would otherwise outlive the module.
Grid::~Grid()
{
    UnregisterClassW(className, module::instance()); // refused while another grid has a window
}

HWND Grid::createWindow(HWND parent, int id)
{
    WNDCLASSEXW kind{};
    kind.cbSize = sizeof kind;
    kind.lpfnWndProc = &procedure;
    kind.hInstance = module::instance();
    kind.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    kind.lpszClassName = className;
    RegisterClassExW(&kind); // or it is there already
    const HWND window =
        makeWindow(parent, id, className, WS_TABSTOP | WS_VSCROLL | WS_CLIPSIBLINGS, WS_EX_CLIENTEDGE);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    return window;
}

LRESULT CALLBACK Grid::procedure(HWND window, UINT message, WPARAM first, LPARAM second) noexcept
{
    auto* const grid = reinterpret_cast<Grid*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    std::optional<LRESULT> result;
    if (grid && grid->window())
    {
        // The container may end the dialog and let go of it in whatever the message leads to.
        const ComPtr<IUnknown> alive(grid->dialog_.identity());
        const auto handle = [&] { result = grid->handle(message, first, second); };
        grid->dialog_.run(std::cref(handle));
    }
    return result ? *result : DefWindowProcW(window, message, first, second);
}

std::optional<LRESULT> Grid::handle(UINT message, WPARAM first, LPARAM second)
{
    const POINT point{GET_X_LPARAM(second), GET_Y_LPARAM(second)};
    switch (message)
    {
    case WM_SIZE:
        sizeChanged();
        return 0;
    case WM_SETFONT:
        setFont(reinterpret_cast<HFONT>(first));
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(font_);
    case WM_PAINT:
    {
        settle(); // may add to what is to be drawn
        PAINTSTRUCT painting;
        if (const HDC context = BeginPaint(window(), &painting))
            paint(context, painting.rcPaint);
        EndPaint(window(), &painting);
        return 0;
    }
    case WM_PRINTCLIENT:
    {
        settle();
        RECT client{};
        GetClientRect(window(), &client);
        paint(reinterpret_cast<HDC>(first), client);
        return 0;
    }
    case WM_ERASEBKGND:
        return 1; // every pixel is painted
    case WM_ENABLE:
        InvalidateRect(window(), nullptr, FALSE);
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        invalidateRow(current_.row);
        focusNotified(message == WM_SETFOCUS);
        if (message == WM_SETFOCUS)
            tell(EVENT_OBJECT_FOCUS, current_);
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_KEYDOWN:
        keyDown(static_cast<WORD>(first));
        return 0;
    case WM_LBUTTONDOWN:
        pressed(point);
        return 0;
    case WM_MOUSEMOVE:
        if (dragged_ != GridLayout::none)
            dragged(point.x);
        return 0;
    case WM_LBUTTONUP:
        released(point);
        return 0;
    case WM_CAPTURECHANGED:
        dragged_ = GridLayout::none;
        return 0;
    case WM_SETCURSOR:
        if (LOWORD(second) != HTCLIENT || !showsDivider())
            return std::nullopt;
        SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
        return TRUE;
    case WM_VSCROLL:
        scrollBarMoved(LOWORD(first));
        return 0;
    case WM_MOUSEWHEEL:
        wheelTurned(GET_WHEEL_DELTA_WPARAM(first));
        return 0;
    case WM_GETOBJECT:
        if (static_cast<LONG>(second) != OBJID_CLIENT)
            return std::nullopt;
        return answer(first);
    default:
        return std::nullopt;
    }
}

void Grid::sizeChanged()
{
    RECT client{};
    GetClientRect(window(), &client);
    layout_.setSize({client.right, client.bottom}, toPixels(fixedWidth_, dialog_.dpi()));
    measureAll();
    layout_.scrollTo(layout_.position());
    showScrolling();
    InvalidateRect(window(), nullptr, FALSE);
}

void Grid::setFont(HFONT font)
{
    font_ = font;
    TEXTMETRICW metrics{};
    GetTextMetricsW(TextContext(font_), &metrics);
    lineHeight_ = std::max(1, static_cast<int>(metrics.tmHeight));
    sizeChanged();
}

void Grid::keyDown(WORD key)
{
    settle();
    if (const auto cell = cellAfter(key))
        choose(*cell);
}

/// Where a key leads from the current cell, maybe beyond the edges; none for a key that leads nowhere.
std::optional<Cell> Grid::cellAfter(WORD key) const
{
    const auto [row, column] = current_;
    const int right = (GetWindowLongW(window(), GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0 ? -1 : 1;
    const bool isControlDown = (keyModifiers() & controlKey) != 0;
    switch (key)
    {
    case VK_LEFT:
        return Cell{row, column - right};
    case VK_RIGHT:
        return Cell{row, column + right};
    case VK_UP:
        return Cell{row - 1, column};
    case VK_DOWN:
        return Cell{row + 1, column};
    case VK_PRIOR:
    case VK_NEXT:
        return Cell{layout_.pageFrom(row, key == VK_PRIOR), column};
    case VK_HOME:
        return isControlDown ? Cell{0, column} : Cell{row, 0};
    case VK_END:
        return isControlDown ? Cell{Rows(), column} : Cell{row, Cols()};
    default:
        return std::nullopt;
    }
}

void Grid::choose(Cell cell)
{
    const ComPtr<IUnknown> alive(dialog_.identity()); // assistive technology does not hold the dialog
    cell = layout_.nearest(cell);
    if (cell != current_)
        raise(onLeaveCell);
    setCurrent(cell);
}

void Grid::click(Cell cell)
{
    const ComPtr<IUnknown> alive(dialog_.identity());
    setFocus();
    choose(cell);
    if (!layout_.isFixed(cell))
        raise(onClick);
}

void Grid::pressed(POINT point)
{
    settle();
    // What the user sees there: when the focus comes, rows may move, for an edit that is taken over.
    const Cell cell = layout_.at(point);
    const bool isRow = cell.row >= FixedRows();
    const bool isCell = isRow && cell.column >= FixedCols();
    if (isCell)
        pressed_ = layout_.place(cell);
    setFocus();
    SetCapture(window());
    const bool isHeading = cell.row != GridLayout::none && !isRow;
    dragged_ = isHeading ? layout_.dividerAt(point.x, toPixels(reach, dialog_.dpi())) : GridLayout::none;
    if (dragged_ != GridLayout::none)
        raise(onLeaveCell);
    else if (isRow && cell.column != GridLayout::none)
        choose({cell.row, isCell ? cell.column : current_.column}); // the fixed cell stands for its row
}

void Grid::dragged(int x)
{
    const int before = layout_.left(dragged_ + 1);
    layout_.dragDivider(dragged_, x, toPixels(narrowest, dialog_.dpi()));
    if (layout_.left(dragged_ + 1) == before)
        return;
    measureAll();
    InvalidateRect(window(), nullptr, FALSE);
}

void Grid::released(POINT point)
{
    const RECT pressed = std::exchange(pressed_, {});
    dragged_ = GridLayout::none;
    if (GetCapture() == window())
        ReleaseCapture();
    if (PtInRect(&pressed, point))
        raise(onClick);
}

bool Grid::showsDivider() const
{
    if (dragged_ != GridLayout::none)
        return true;
    const DWORD position = GetMessagePos();
    POINT point{GET_X_LPARAM(position), GET_Y_LPARAM(position)};
    ScreenToClient(window(), &point);
    const int row = layout_.at(point).row;
    return row != GridLayout::none && row < FixedRows() &&
           layout_.dividerAt(point.x, toPixels(reach, dialog_.dpi())) != GridLayout::none;
}

void Grid::scrollBarMoved(WORD code)
{
    settle();
    const auto position = positionAfter(code);
    if (!position)
        return;
    raise(onLeaveCell);
    scroll(*position);
}

std::optional<int> Grid::positionAfter(WORD scrollCode) const
{
    const int position = layout_.position();
    switch (scrollCode)
    {
    case SB_LINEUP:
        return position - heightOf(1);
    case SB_LINEDOWN:
        return position + heightOf(1);
    case SB_PAGEUP:
        return position - layout_.page();
    case SB_PAGEDOWN:
        return position + layout_.page();
    case SB_TOP:
        return 0;
    case SB_BOTTOM:
        return layout_.range();
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
    {
        SCROLLINFO bar{};
        bar.cbSize = sizeof bar;
        bar.fMask = SIF_TRACKPOS; // in the message it has 16 bits
        GetScrollInfo(window(), SB_VERT, &bar);
        return bar.nTrackPos;
    }
    default:
        return std::nullopt;
    }
}

/// Parts of a notch, as some mice send them, are added up.
void Grid::wheelTurned(short delta)
{
    settle();
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const int notch = lines == WHEEL_PAGESCROLL ? layout_.page() : static_cast<int>(lines) * heightOf(1);
    wheel_ += delta * notch;
    const int step = wheel_ / WHEEL_DELTA;
    wheel_ -= step * WHEEL_DELTA;
    raise(onLeaveCell);
    scroll(layout_.position() - step);
}

/// Only what comes into sight is drawn.
void Grid::scroll(int position)
{
    const int before = layout_.position();
    layout_.scrollTo(position);
    if (layout_.position() == before || !window())
        return;
    RECT scrolled{};
    GetClientRect(window(), &scrolled);
    scrolled.top = layout_.fixedHeight();
    ScrollWindowEx(window(), 0, before - layout_.position(), &scrolled, &scrolled, nullptr, nullptr,
                   SW_INVALIDATE);
    showScrolling();
}

void Grid::showScrolling() const noexcept
{
    SCROLLINFO bar{};
    bar.cbSize = sizeof bar;
    // The bar stays where it is not needed: the columns keep their widths.
    bar.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    bar.nMax = std::max(0, layout_.range() - 1);
    bar.nPage = static_cast<UINT>(layout_.page());
    bar.nPos = layout_.position();
    SetScrollInfo(window(), SB_VERT, &bar, TRUE);
}

} // namespace korvane
