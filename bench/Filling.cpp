// The list of the group dialog, and that of the resource dialog, filled by the events of the data layer, against the bare
// loop.
//
// The library's side is timed by the data layer: from the moment at which the dialog opens its step of filling to
// the moment at which it closes it. The step connects the dialog to the events, empties the list, takes one event
// for each item, asks for the right to each, and adds it. The platform's side adds the same strings with their
// item data to a list box of the same style, font and parent, as hidden as the dialog's list is while it fills.
#include "bench/Benchmarks.h"
#include "bench/Library.h"
#include "bench/MemoryData.h"
#include "tests/support/Messages.h"
#include "tests/support/ModuleControls.h"

#include <span>

namespace korvane::bench
{

namespace
{

struct Size
{
    int items = 0;
    int samples = 0;
    const char* name = "";
    std::optional<double> aim;
};

constexpr Size sizes[] = {
    {100, 101, "100 items", {}},
    {1000, 101, "1,000 items", {}},
    {10000, 51, "10,000 items", 1.2},
    {100000, 15, "100,000 items", {}},
};

constexpr Size resourceSizes[] = {
    {1000, 101, "1,000 items", 1.45},
    {10000, 51, "10,000 items", 1.45},
};

/// A list box like that of the dialog.
class BareList
{
public:
    BareList(HWND model, HWND parent)
    {
        const test::ModuleControls controls(libraryPath());
        // The platform takes the scroll bar off a list that needs none yet.
        const DWORD style = (static_cast<DWORD>(GetWindowLongW(model, GWL_STYLE)) | WS_VSCROLL) &
                            ~static_cast<DWORD>(WS_VISIBLE);
        window_ = CreateWindowExW(static_cast<DWORD>(GetWindowLongW(model, GWL_EXSTYLE)), L"ListBox", L"",
                                  style, 0, 0, 0, 0, parent, nullptr, nullptr, nullptr);
        demand(window_ != nullptr, "the bare list is not made");
        SendMessageW(window_, WM_SETFONT, static_cast<WPARAM>(SendMessageW(model, WM_GETFONT, 0, 0)), FALSE);
    }
    BareList(const BareList&) = delete;
    BareList& operator=(const BareList&) = delete;
    ~BareList() { DestroyWindow(window_); }

    double fill(const std::vector<Bstr>& texts) const
    {
        return perRun(1, [&] {
            SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
            SendMessageW(window_, LB_RESETCONTENT, 0, 0);
            LPARAM data = 0;
            for (const Bstr& text : texts)
            {
                const LRESULT index =
                    SendMessageW(window_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.get()));
                SendMessageW(window_, LB_SETITEMDATA, static_cast<WPARAM>(index), ++data);
            }
            SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
            InvalidateRect(window_, nullptr, TRUE);
        });
    }

    LRESULT count() const { return SendMessageW(window_, LB_GETCOUNT, 0, 0); }

private:
    HWND window_;
};

template <class MakeCommand>
void measureFillingOf(const wchar_t* dialog, const MakeCommand& makeCommand, const char* group,
                      std::span<const Size> sizesOfList, Report& report, const Effort& effort)
{
    test::Container container;
    MemoryData data;
    const auto command = makeCommand(data);

    test::Container modelContainer;
    MemoryData noItems;
    open(modelContainer, dialog, makeCommand(noItems).get());
    const HWND model = modelContainer.control(L"ListBox");

    std::vector<double> itemCounts;
    std::vector<double> times;
    std::vector<double> bareTimes;
    for (const Size& size : sizesOfList)
    {
        data.resize(size.items);
        const Sample ofLibrary = [&] {
            test::pumpMessages();
            open(container, dialog, command.get());
            const double seconds = data.lastStep();
            demand(SendMessageW(container.control(L"ListBox"), LB_GETCOUNT, 0, 0) == size.items,
                   "the list has not all items");
            container.close();
            return seconds;
        };
        const Sample ofPlatform = [&] {
            test::pumpMessages();
            const BareList list(model, container.window());
            const double seconds = list.fill(data.texts());
            demand(list.count() == size.items, "the bare list has not all strings");
            return seconds;
        };
        const Comparison comparison = compare(effort.samples(size.samples), ofLibrary, ofPlatform);
        report.add(group, size.name, "LB_ADDSTRING, LB_SETITEMDATA", comparison, size.aim);
        itemCounts.push_back(size.items);
        times.push_back(comparison.library.median);
        bareTimes.push_back(comparison.platform.median);
    }
    report.add(group, "growth with the number of items", growthExponent(itemCounts, times), "exponent", 1.1);
    report.add(group, "growth of the bare loop", growthExponent(itemCounts, bareTimes), "exponent");
}

} // namespace

void measureFilling(Report& report, const Effort& effort)
{
    measureFillingOf(dialogProgId, &commandFor, "Filling the list of the group dialog", sizes, report,
                     effort);
    measureFillingOf(L"KorvaneDlg.ctlEditNames", &resourceCommandFor,
                     "Filling the list of the resource dialog", resourceSizes, report, effort);
}

} // namespace korvane::bench
