// Arranging groups: moving an entry of a long list that is seen, against the platform's own messages, and storing the
// order, against the same calls on the data layer.
//
// The library's side of a move is what a click on a button of the dialog leads to, painting included. The platform's
// side moves an entry of a list of the same style, font and size on the same window, and paints too.
#include "bench/Benchmarks.h"
#include "bench/Library.h"
#include "bench/MemoryData.h"
#include "framework/com/Variant.h"
#include "tests/support/Messages.h"
#include "tests/support/ModuleControls.h"

namespace korvane::bench
{

namespace
{

constexpr int entries = 10000;
constexpr int middle = entries / 2;

ComPtr<IArrangeGroups> arrangeCommand(const MemoryData& data)
{
    constexpr long operationChange = 3;
    auto command = create<IArrangeGroups>(L"KorvaneDlg.ArrangeGroups");
    const Variant root(queryFor<IDispatch>(data.root()));
    call(command.as<IAppCommand>(), &IAppCommand::put_Operation, operationChange);
    call(command.as<IAppCommand>(), &IAppCommand::put_Operand, Bstr(L"Root").get(), root.get());
    return command;
}

/// A list like that of the dialog, beside it.
HWND makeBareList(HWND model, HWND parent, const MemoryData& data)
{
    const test::ModuleControls controls(libraryPath());
    RECT place{};
    GetWindowRect(model, &place);
    const HWND list = CreateWindowExW(static_cast<DWORD>(GetWindowLongW(model, GWL_EXSTYLE)), L"ListBox", L"",
                                      static_cast<DWORD>(GetWindowLongW(model, GWL_STYLE)), 300, 0,
                                      place.right - place.left, place.bottom - place.top, parent, nullptr,
                                      nullptr, nullptr);
    demand(list != nullptr, "the bare list is not made");
    SendMessageW(list, WM_SETFONT, static_cast<WPARAM>(SendMessageW(model, WM_GETFONT, 0, 0)), FALSE);
    for (const Bstr& name : data.texts())
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.get()));
    return list;
}

void moveBare(HWND list, int from, int to, const Bstr& text)
{
    SendMessageW(list, LB_DELETESTRING, static_cast<WPARAM>(from), 0);
    SendMessageW(list, LB_INSERTSTRING, static_cast<WPARAM>(to), reinterpret_cast<LPARAM>(text.get()));
    SendMessageW(list, LB_SETITEMDATA, static_cast<WPARAM>(to), from);
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(to), 0);
    UpdateWindow(list);
}

void measureMove(Report& report, const Effort& effort)
{
    test::Container container;
    MemoryData data;
    data.resize(entries);
    open(container, L"KorvaneDlg.ctlArrangeGroups", arrangeCommand(data).get());
    const HWND list = container.control(L"ListBox");
    const HWND bare = makeBareList(list, container.window(), data);
    test::pumpMessages();
    for (const HWND each : {list, bare})
    {
        SendMessageW(each, LB_SETTOPINDEX, middle - 3, 0);
        SendMessageW(each, LB_SETCURSEL, middle, 0);
        UpdateWindow(each);
    }
    const auto press = [&](const wchar_t* button) {
        SendMessageW(container.dialogWindow(), WM_COMMAND, MAKEWPARAM(0, BN_CLICKED),
                     reinterpret_cast<LPARAM>(container.button(button)));
        UpdateWindow(list);
    };
    const Bstr& text = data.texts()[middle];
    constexpr int runs = 20;
    report.add("Moving an entry of a list", "10,000 entries, one down and up again",
               "LB_DELETESTRING, LB_INSERTSTRING",
               compare(
                   effort.samples(51),
                   [&] {
                       const double seconds = perRun(runs, [&] {
                           press(L"Move down (Alt+Down)");
                           demand(SendMessageW(list, LB_GETCURSEL, 0, 0) == middle + 1,
                                  "the entry is not moved");
                           press(L"Move up (Alt+Up)");
                       });
                       return seconds;
                   },
                   [&] {
                       return perRun(runs, [&] {
                           moveBare(bare, middle, middle + 1, text);
                           moveBare(bare, middle + 1, middle, text);
                       });
                   }),
               1.5);
    DestroyWindow(bare);
}

void measureStoring(Report& report, const Effort& effort)
{
    MemoryData data;
    data.resize(entries);
    const auto command = arrangeCommand(data);
    const auto host = command.as<IAppCommand>();
    VARIANT_BOOL ignored = VARIANT_FALSE;
    require(host->Prepare(&ignored));
    std::vector<long> order;
    for (long index = 0; index < entries; ++index)
    {
        order.push_back(fetch(command, &IArrangeGroups::get_GroupKey, entries - 1 - index));
        call(command, &IArrangeGroups::put_Pos, index, order.back());
    }
    constexpr int runs = 20;
    const Sample ofLibrary = [&] {
        const double seconds = perRun(runs, [&] { require(host->Execute(&ignored)); });
        demand(data.lastPosition() == entries + 2, "the positions are not stored");
        return seconds;
    };
    /// @param clean whether what an earlier call left cannot be taken for the error of this one.
    const auto ofDataLayer = [&](bool clean) -> Sample {
        return [&, clean] {
            return perRun(runs, [&] {
                ComPtr<IGroups> groups;
                require(data.root()->get_Groups(groups.put()));
                long position = 3;
                for (const long id : order)
                {
                    if (clean)
                        SetErrorInfo(0, nullptr);
                    require(groups->SetPosition(id, position++));
                }
            });
        };
    };
    constexpr const char* group = "Execute of an arrange command";
    const int samples = effort.samples(101);
    report.add(group, "10,000 positions", "the same calls", compare(samples, ofLibrary, ofDataLayer(false)),
               1.1);
    report.add(group, "10,000 positions, each error its own", "SetErrorInfo, the same calls",
               compare(samples, ofLibrary, ofDataLayer(true)), 1.1);
}

/// Loading many entries, choosing their order and storing it, against copies of their texts that are kept in the place
/// of the former ones: what the platform's memory makes of that is not the library's.
void measureGrowth(Report& report, const Effort& effort)
{
    constexpr const char* group = "Loading and arranging";
    const std::vector<double> counts{1000, 10000, 100000};
    std::vector<double> times;
    std::vector<double> bareTimes;
    for (const double count : counts)
    {
        MemoryData data;
        data.resize(static_cast<int>(count));
        const auto command = arrangeCommand(data);
        const auto host = command.as<IAppCommand>();
        const auto arrange = [&] {
            VARIANT_BOOL ignored = VARIANT_FALSE;
            require(host->Prepare(&ignored));
            const auto last = static_cast<long>(count) - 1;
            for (long index = 0; index <= last; ++index)
                call(command, &IArrangeGroups::put_Pos, index,
                     fetch(command, &IArrangeGroups::get_GroupKey, last - index));
            require(host->Execute(&ignored));
        };
        std::vector<Bstr> kept;
        const auto copy = [&] {
            std::vector<Bstr> copies;
            for (const Bstr& text : data.texts())
                copies.emplace_back(text.view());
            kept = std::move(copies);
        };
        const Comparison compared =
            compare(effort.samples(11), [&] { return perRun(1, arrange); }, [&] { return perRun(1, copy); });
        times.push_back(compared.library.median);
        bareTimes.push_back(compared.platform.median);
        report.add(group, std::to_string(data.texts().size()) + " entries", "copies of their texts",
                   compared);
    }
    report.add(group, "growth with the number of entries", growthExponent(counts, times), "exponent", 1.1);
    report.add(group, "growth of the copies", growthExponent(counts, bareTimes), "exponent");
}

} // namespace

void measureArranging(Report& report, const Effort& effort)
{
    measureMove(report, effort);
    measureStoring(report, effort);
    measureGrowth(report, effort);
}

} // namespace korvane::bench
