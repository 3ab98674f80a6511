// The activity dialog with many resources, and the activity command, against the platform's tree and against the
// calls on the data layer themselves.
//
// Ready is read a second time on a dialog that stands: the tree is emptied and filled from the data layer's events,
// each resource with its check. The platform's side empties a tree of the same style and font on the same window and
// inserts the same nodes, parents first, with redraw off.
#include "bench/ActivityData.h"
#include "bench/Benchmarks.h"
#include "bench/Deaf.h"
#include "bench/Library.h"

#include "framework/com/SafeArray.h"
#include "tests/support/Messages.h"
#include "tests/support/ModuleControls.h"

#include <commctrl.h>

namespace korvane::bench
{

namespace
{

constexpr const wchar_t* activityCommand = L"KorvaneDlg.EditEvents";
constexpr const wchar_t* activityDialog = L"KorvaneDlg.ctlEditEvents";
constexpr long operationChange = 3;
constexpr int perGroup = 100;

void let(const ComPtr<IAppCommand>& command, const wchar_t* name, const Variant& value)
{
    call(command, &IAppCommand::put_Operand, Bstr(name).get(), value.get());
}

ComPtr<IAppCommand> commandFor(const ActivityData& data)
{
    auto command = create<IAppCommand>(activityCommand);
    call(command, &IAppCommand::put_Operation, operationChange);
    let(command, L"Root", Variant(queryFor<IDispatch>(data.root())));
    let(command, L"GroupID", Variant(ActivityData::firstGroup));
    let(command, L"EventID", Variant(1L));
    return command;
}

HWND treeOf(const test::Container& container)
{
    const HWND tree = container.control(WC_TREEVIEWW);
    demand(tree != nullptr, "the dialog has no tree");
    return tree;
}

LRESULT nodesOf(HWND tree)
{
    return SendMessageW(tree, TVM_GETCOUNT, 0, 0);
}

HTREEITEM next(HWND tree, WPARAM relation, HTREEITEM from = nullptr)
{
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(tree, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(from)));
}

bool isChecked(HWND tree, HTREEITEM node)
{
    const LRESULT state =
        SendMessageW(tree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(node), TVIS_STATEIMAGEMASK);
    return (state & TVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2);
}

/// A tree like that of the dialog.
class BareTree
{
public:
    BareTree(HWND model, HWND parent)
    {
        const test::ModuleControls controls(libraryPath());
        const auto style = static_cast<DWORD>(GetWindowLongW(model, GWL_STYLE));
        window_ = CreateWindowExW(static_cast<DWORD>(GetWindowLongW(model, GWL_EXSTYLE)), WC_TREEVIEWW, L"",
                                  style & ~static_cast<DWORD>(TVS_CHECKBOXES), 0, 0, 280, 130, parent,
                                  nullptr, nullptr, nullptr);
        demand(window_ != nullptr, "the bare tree is not made");
        SetWindowLongPtrW(window_, GWL_STYLE, GetWindowLongPtrW(window_, GWL_STYLE) | TVS_CHECKBOXES);
        SendMessageW(window_, WM_SETFONT, static_cast<WPARAM>(SendMessageW(model, WM_GETFONT, 0, 0)), FALSE);
    }
    BareTree(const BareTree&) = delete;
    BareTree& operator=(const BareTree&) = delete;
    ~BareTree() { DestroyWindow(window_); }

    HWND window() const noexcept { return window_; }

    enum class Selected
    {
        none,
        firstResource
    };

    void fill(const ActivityData& data, Selected selected = Selected::none) const
    {
        SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
        SendMessageW(window_, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
        std::vector<HTREEITEM> groups;
        for (const Bstr& name : data.groups())
            groups.push_back(insert(TVI_ROOT, name));
        std::size_t index = 0;
        for (const Bstr& name : data.names())
            insert(groups[index++ / static_cast<std::size_t>(data.perGroup())], name);
        if (selected == Selected::firstResource)
            SendMessageW(window_, TVM_SELECTITEM, TVGN_CARET,
                         reinterpret_cast<LPARAM>(next(window_, TVGN_CHILD, next(window_, TVGN_ROOT))));
        SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(window_, nullptr, TRUE);
    }

    void checkAll(bool checked) const
    {
        const HTREEITEM group = next(window_, TVGN_ROOT);
        check(group, checked);
        for (HTREEITEM node = next(window_, TVGN_CHILD, group); node; node = next(window_, TVGN_NEXT, node))
            check(node, checked);
    }

private:
    HTREEITEM insert(HTREEITEM parent, const Bstr& text) const
    {
        TVINSERTSTRUCTW insertion{};
        insertion.hParent = parent;
        insertion.hInsertAfter = TVI_LAST;
        insertion.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_STATE;
        insertion.item.pszText = text.get();
        insertion.item.stateMask = TVIS_STATEIMAGEMASK;
        insertion.item.state = INDEXTOSTATEIMAGEMASK(1);
        return reinterpret_cast<HTREEITEM>(
            SendMessageW(window_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insertion)));
    }

    void check(HTREEITEM node, bool checked) const
    {
        TVITEMW item{};
        item.mask = TVIF_HANDLE | TVIF_STATE;
        item.hItem = node;
        item.stateMask = TVIS_STATEIMAGEMASK;
        item.state = INDEXTOSTATEIMAGEMASK(checked ? 2 : 1);
        SendMessageW(window_, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }

    HWND window_;
};

void measureReady(Report& report, const Effort& effort)
{
    constexpr const char* group = "The activity dialog, Ready";
    struct Size
    {
        int names = 0;
        int samples = 0;
        const char* name = "";
        std::optional<double> aim;
        std::optional<double> aimWithSelection;
    };
    constexpr Size sizes[] = {{100, 101, "100 resources", {}, 1.1},
                              {1000, 51, "1,000 resources", 1.5, {}},
                              {10000, 15, "10,000 resources", 1.5, {}}};
    std::vector<double> counts;
    std::vector<double> times;
    for (const Size& size : sizes)
    {
        test::Container container;
        ActivityData data;
        data.resize(size.names, perGroup);
        const auto nodes =
            static_cast<LRESULT>(data.names().size()) + static_cast<LRESULT>(data.groups().size());
        open(container, activityDialog, commandFor(data).get());
        const BareTree bare(treeOf(container), container.window());
        const auto timeOf = [&](HWND tree, const std::function<void()>& fill) {
            test::pumpMessages();
            const double seconds = perRun(1, fill);
            demand(nodesOf(tree) == nodes, "a tree has not all nodes");
            return seconds;
        };
        const Sample ready = [&] { return timeOf(treeOf(container), [&] { readReady(container); }); };
        const auto filled = [&](BareTree::Selected selected) -> Sample {
            return [&, selected] { return timeOf(bare.window(), [&] { bare.fill(data, selected); }); };
        };
        const int samples = effort.samples(size.samples);
        const Comparison comparison = compare(samples, ready, filled(BareTree::Selected::none));
        report.add(group, size.name, "TVM_INSERTITEM", comparison, size.aim);
        // Ready shows the activity's resource in its group: the scroll bar that this takes is part of it.
        report.add(group, std::string(size.name) + ", one selected", "TVM_INSERTITEM, TVM_SELECTITEM",
                   compare(samples, ready, filled(BareTree::Selected::firstResource)), size.aimWithSelection);
        counts.push_back(size.names);
        times.push_back(comparison.library.median);
    }
    report.add(group, "growth with the number of resources", growthExponent(counts, times), "exponent", 1.1);
}

void measureChecking(Report& report, const Effort& effort)
{
    constexpr int names = 10000;
    test::Container container;
    ActivityData data;
    data.resize(names, names);
    open(container, activityDialog, commandFor(data).get());
    const HWND tree = treeOf(container);
    const BareTree bare(tree, container.window());
    bare.fill(data);
    for (const HWND each : {tree, bare.window()})
    {
        SendMessageW(each, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(next(each, TVGN_ROOT)));
        SendMessageW(each, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(next(each, TVGN_ROOT)));
    }
    const auto lastOf = [](HWND each) { return next(each, TVGN_LASTVISIBLE); };
    bool checked = false;
    bool bareChecked = false;
    report.add("Checking a group of resources", "10,000 resources", "TVM_SETITEM",
               compare(
                   effort.samples(3), // each takes the better part of a minute where scroll bars are themed
                   [&] {
                       test::pumpMessages();
                       checked = !checked;
                       const double seconds = perRun(1, [&] {
                           SendMessageW(tree, WM_KEYDOWN, VK_SPACE, 1);
                           test::pumpMessages();
                       });
                       demand(isChecked(tree, lastOf(tree)) == checked,
                              "the resources do not follow the group");
                       return seconds;
                   },
                   [&] {
                       test::pumpMessages();
                       bareChecked = !bareChecked;
                       const double seconds = perRun(1, [&] {
                           bare.checkAll(bareChecked);
                           test::pumpMessages();
                       });
                       demand(isChecked(bare.window(), lastOf(bare.window())) == bareChecked,
                              "the bare nodes are not checked");
                       return seconds;
                   }),
               1.2);
}

/// A change of an activity that one resource has been booked for and all of a group are now.
void measureExecute(Report& report, const Effort& effort)
{
    constexpr std::pair<int, const char*> sizes[] = {
        {1, "1 resource"}, {10, "10 resources"}, {100, "100 resources"}, {1000, "1,000 resources"}};
    for (const auto& [names, name] : sizes)
    {
        test::Container container;
        ActivityData data;
        data.resize(names, names);
        const auto command = commandFor(data);
        VARIANT_BOOL ignored = VARIANT_FALSE;
        const Sample ofLibrary = [&, count = names] {
            open(container, activityDialog, command.get());
            const HWND tree = treeOf(container);
            const HTREEITEM group = next(tree, TVGN_ROOT);
            if (count > 1) // the one resource is checked already
            {
                SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(group));
                SendMessageW(tree, WM_KEYDOWN, VK_SPACE, 1);
                test::pumpMessages();
            }
            demand(isChecked(tree, group), "the group is not checked");
            const double seconds = perRun(1, [&] { command->Execute(&ignored); });
            container.close();
            return seconds;
        };
        const Sample ofDataLayer = [&, count = names] {
            std::vector<long> added;
            for (long id = 1; id < count; ++id)
                added.push_back(ActivityData::firstName + id);
            return perRun(1, [&] {
                ComPtr<IEvents> events;
                ComPtr<IEventLinks> links;
                require(data.root()->get_EventLinks(links.put()));
                Variant link;
                if (count == 1)
                {
                    require(data.root()->get_Events(events.put()));
                    require(events->Update(1, 0, ActivityData::firstName, 0, 46349, 46350, nullptr));
                    require(data.root()->get_Events(events.put()));
                    require(events->SetRecurrence(1, nullptr));
                    return;
                }
                require(links->Create(1, link.put()));
                require(links->AddNames(link.get(), arrayOf(added).get()));
                Variant updated;
                require(links->UpdateLinked(link.get(), 0, 0, 46349, 46350, nullptr, updated.put()));
                require(links->SetRecurrence(updated.get(), nullptr));
            });
        };
        report.add("Execute of the activity command", name, "the same calls",
                   compare(effort.samples(51), ofLibrary, ofDataLayer));
    }
}

void measureMembers(Report& report, const Effort& effort)
{
    ActivityData data;
    data.members = 10000;
    const auto command = commandFor(data);
    VARIANT_BOOL ignored = VARIANT_FALSE;

    ActivityData other;
    other.members = data.members;
    ComPtr<IEventLinks> links;
    require(other.root()->get_EventLinks(links.put()));
    const DeafSubscription<IEventLinksEvents> deaf(links);
    report.add("Events", "10,000 members of a link group, to the command's sets",
               "a subscriber that does nothing",
               compare(
                   effort.samples(51), [&] { return perRun(1, [&] { command->Prepare(&ignored); }); },
                   [&] {
                       Variant link;
                       return perRun(1, [&] { links->Load(1, link.put()); });
                   }));
}

} // namespace

void measureActivities(Report& report, const Effort& effort)
{
    measureReady(report, effort);
    measureChecking(report, effort);
    measureExecute(report, effort);
    measureMembers(report, effort);
}

} // namespace korvane::bench
