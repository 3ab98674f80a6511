#include "framework/control/DialogWindow.h"
#include "framework/control/Grid.h"
#include "framework/control/Keys.h"

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
    const HDC context = GetDC(window());
    const HGDIOBJ former = SelectObject(context, font_);
    TEXTMETRICW metrics{};
    GetTextMetricsW(context, &metrics);
    SelectObject(context, former);
    ReleaseDC(window(), context);
    lineHeight_ = std::max(1, static_cast<int>(metrics.tmHeight));
    sizeChanged();
}

void Grid::keyDown(WORD key)
{
    settle();
    const bool isControlDown = (keyModifiers() & controlKey) != 0;
    const bool isMirrored = (GetWindowLongW(window(), GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
    Cell to = current_;
    switch (key)
    {
    case VK_LEFT:
        to.column += isMirrored ? 1 : -1;
        break;
    case VK_RIGHT:
        to.column += isMirrored ? -1 : 1;
        break;
    case VK_UP:
        --to.row;
        break;
    case VK_DOWN:
        ++to.row;
        break;
    case VK_PRIOR:
    case VK_NEXT:
        to.row = layout_.pageFrom(current_.row, key == VK_PRIOR);
        break;
    case VK_HOME:
        (isControlDown ? to.row : to.column) = 0;
        break;
    case VK_END:
        (isControlDown ? to.row : to.column) = isControlDown ? Rows() : Cols();
        break;
    default:
        return;
    }
    choose(to);
}

void Grid::choose(Cell cell)
{
    cell = layout_.nearest(cell);
    if (cell != current_)
        raise(onLeaveCell);
    setCurrent(cell);
}

void Grid::click(Cell cell)
{
    setFocus();
    choose(cell);
    if (!layout_.isFixed(cell))
        raise(onClick);
}

void Grid::pressed(POINT point)
{
    setFocus();
    settle();
    const Cell cell = layout_.at(point);
    SetCapture(window());
    const int divider = cell.row < FixedRows() ? layout_.dividerAt(point.x, toPixels(reach, dialog_.dpi()))
                                               : GridLayout::none;
    if (cell.row != GridLayout::none && divider != GridLayout::none)
    {
        raise(onLeaveCell);
        dragged_ = divider;
        return;
    }
    pressed_ = cell;
    // The fixed cell before a row stands for the row.
    if (cell.row >= FixedRows() && cell.column != GridLayout::none)
        choose({cell.row, cell.column < FixedCols() ? current_.column : cell.column});
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
    const bool wasDragged = std::exchange(dragged_, GridLayout::none) != GridLayout::none;
    if (GetCapture() == window())
        ReleaseCapture();
    const Cell cell = layout_.at(point);
    const Cell pressed = std::exchange(pressed_, {GridLayout::none, GridLayout::none});
    const bool isCell = cell.row != GridLayout::none && cell.column != GridLayout::none;
    if (!wasDragged && isCell && cell == pressed && !layout_.isFixed(cell))
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
    SCROLLINFO bar{};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_TRACKPOS; // in the message it has 16 bits
    GetScrollInfo(window(), SB_VERT, &bar);
    int position = layout_.position();
    switch (code)
    {
    case SB_LINEUP:
        position -= heightOf(1);
        break;
    case SB_LINEDOWN:
        position += heightOf(1);
        break;
    case SB_PAGEUP:
        position -= layout_.page();
        break;
    case SB_PAGEDOWN:
        position += layout_.page();
        break;
    case SB_TOP:
        position = 0;
        break;
    case SB_BOTTOM:
        position = layout_.range();
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        position = bar.nTrackPos;
        break;
    default:
        return;
    }
    raise(onLeaveCell);
    scroll(position);
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
