// The grid of the information rows against the platform's list in its report view, which has one height for all rows.
//
// Ready is read a second time on a dialog that stands, for a resource without a login: the rows are announced, taken into
// the command, handed to the grid and measured. The platform's side empties a list of the same size and font on the same
// window and inserts as many items with two texts each, with redraw off. The row on painting draws one cell anew, and one
// item of the list.
#include "bench/Announcer.h"
#include "bench/Benchmarks.h"
#include "bench/Library.h"
#include "bench/SmallRoot.h"
#include "framework/com/Decimal.h"
#include "framework/com/Variant.h"
#include "tests/support/Messages.h"
#include "tests/support/ModuleControls.h"

#include <commctrl.h>

namespace korvane::bench
{

namespace
{

constexpr const char* group = "The grid of the information rows";
constexpr DISPID eventInfoClear = 3;
constexpr DISPID eventInfoAdd = 4;

struct Row
{
    Bstr label;
    Bstr value; ///< of one to three lines
};

std::vector<Row> makeRows(int count)
{
    constexpr const wchar_t* values[] = {L"555 0100", L"555 0100\r\nafter six",
                                         L"555 0100\r\nask for Mr\r\nHansen"};
    std::vector<Row> rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row)
        rows.push_back({Bstr(L"Number " + decimal(row)), Bstr(values[row % 3])});
    return rows;
}

/// Resources of which none has a login, and all have the same rows.
class Names final : public Announcer<Names, INames, INamesEvents, test::EmptyNames>
{
public:
    std::vector<Row> rows;

    STDMETHODIMP Fetch(long, BSTR*, long*, long*, BSTR*, long*, long*) override { return S_OK; }
    STDMETHODIMP LoadInfo(long nameId, VARIANT_BOOL* result) override
    {
        raise(eventInfoClear);
        for (const Row& row : rows)
        {
            VARIANT arguments[] = {of(row.value.get()), of(row.label.get()), of(nameId)};
            raise(eventInfoAdd, arguments, 3);
        }
        *result = VARIANT_TRUE;
        return S_OK;
    }
};

/// The info dialog on the page with the rows.
class InfoPage
{
public:
    explicit InfoPage(int rows)
    {
        names_->rows = makeRows(rows);
        root_->names = names_.as<INames>();
        call(command_, &IAppCommand::put_Operation, 1L);
        call(command_, &IAppCommand::put_Operand, Bstr(L"Root").get(), Variant(root_.as<IDispatch>()).get());
        open(container, L"KorvaneDlg.ctlInfoMessage", command_.get());
        demand(container.visible(grid()), "the dialog does not show the rows");
    }

    HWND grid() const { return container.control(L"KorvaneGrid"); }
    const std::vector<Row>& rows() const { return names_->rows; }

    test::Container container;

private:
    ComPtr<Names> names_ = make<Names>();
    ComPtr<SmallRoot> root_ = make<SmallRoot>();
    ComPtr<IAppCommand> command_ = create<IAppCommand>(L"KorvaneDlg.InfoMessage");
};

/// A list of two columns beside a grid, of the same size.
class BareList
{
public:
    explicit BareList(const InfoPage& page)
    {
        const test::ModuleControls controls(libraryPath());
        const HWND parent = page.container.window();
        RECT place = page.container.place(page.grid());
        SetWindowPos(parent, nullptr, 0, 0, 3 * place.right, 2 * place.bottom, SWP_NOMOVE | SWP_NOZORDER);
        OffsetRect(&place, 3 * place.right / 2, 0);
        window_ = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT,
                                  place.left, place.top, place.right - place.left, place.bottom - place.top,
                                  parent, nullptr, nullptr, nullptr);
        demand(window_ != nullptr, "the bare list is not made");
        SendMessageW(window_, WM_SETFONT, static_cast<WPARAM>(SendMessageW(page.grid(), WM_GETFONT, 0, 0)),
                     FALSE);
        for (const WPARAM column : {0U, 1U})
        {
            LVCOLUMNW heading{};
            heading.mask = LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
            heading.cx = (place.right - place.left) / 2 - 20;
            wchar_t text[] = L"Heading";
            heading.pszText = text;
            SendMessageW(window_, LVM_INSERTCOLUMNW, column, reinterpret_cast<LPARAM>(&heading));
        }
    }
    BareList(const BareList&) = delete;
    BareList& operator=(const BareList&) = delete;
    ~BareList() { DestroyWindow(window_); }

    HWND window() const { return window_; }
    LRESULT count() const { return SendMessageW(window_, LVM_GETITEMCOUNT, 0, 0); }

    double fill(const std::vector<Row>& rows) const
    {
        return perRun(1, [&] {
            SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
            SendMessageW(window_, LVM_DELETEALLITEMS, 0, 0);
            LVITEMW item{};
            item.mask = LVIF_TEXT;
            for (const Row& row : rows)
            {
                item.iSubItem = 0;
                item.pszText = row.label.get();
                SendMessageW(window_, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
                item.iSubItem = 1;
                item.pszText = row.value.get();
                SendMessageW(window_, LVM_SETITEMTEXTW, static_cast<WPARAM>(item.iItem),
                             reinterpret_cast<LPARAM>(&item));
                ++item.iItem;
            }
            SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
            InvalidateRect(window_, nullptr, TRUE);
        });
    }

private:
    HWND window_ = nullptr;
};

void measureRowsOf(int rows, int samples, const char* name, Report& report, std::vector<double>& times)
{
    InfoPage page(rows);
    const Sample ready = [&] {
        test::pumpMessages();
        return perRun(1, [&] { readReady(page.container); });
    };
    const BareList list(page);
    const Sample items = [&] {
        test::pumpMessages();
        const double seconds = list.fill(page.rows());
        demand(list.count() == rows, "the bare list has not all rows");
        return seconds;
    };
    const Comparison comparison = compare(samples, ready, items);
    report.add(group, name, "LVM_INSERTITEM, LVM_SETITEMTEXT", comparison, 1.5);
    times.push_back(comparison.library.median);
}

void measurePainting(int samples, Report& report)
{
    constexpr int runs = 20;
    InfoPage page(1000);
    readReady(page.container);
    const HWND grid = page.grid();
    RECT client{};
    GetClientRect(grid, &client);
    // Within the first value: what is drawn is the cell.
    const RECT cell{client.right - 30, client.bottom / 8, client.right - 20, client.bottom / 8 + 4};
    UpdateWindow(grid);
    const Sample ofCell = [&] {
        return perRun(runs, [&] {
            InvalidateRect(grid, &cell, FALSE);
            UpdateWindow(grid);
            GdiFlush();
        });
    };
    const BareList list(page);
    list.fill(page.rows());
    UpdateWindow(list.window());
    InvalidateRect(grid, &cell, FALSE);
    demand(GetUpdateRect(grid, nullptr, FALSE) != FALSE, "the cell is not in sight");
    const Sample ofItem = [&] {
        return perRun(runs, [&] {
            SendMessageW(list.window(), LVM_REDRAWITEMS, 0, 0);
            UpdateWindow(list.window());
            GdiFlush();
        });
    };
    report.add(group, "painting a cell", "LVM_REDRAWITEMS of one item", compare(samples, ofCell, ofItem),
               1.5);
}

} // namespace

void measureInfoRows(Report& report, const Effort& effort)
{
    std::vector<double> times;
    measureRowsOf(1000, effort.samples(101), "1,000 rows", report, times);
    measureRowsOf(10000, effort.samples(31), "10,000 rows", report, times);
    report.add(group, "growth with the number of rows", growthExponent({1000, 10000}, times), "exponent",
               1.1);
    measurePainting(effort.samples(101), report);
}

} // namespace korvane::bench
