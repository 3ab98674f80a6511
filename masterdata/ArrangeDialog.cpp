#include "masterdata/ArrangeDialog.h"

#include "framework/AppCommand.h"
#include "framework/control/Keys.h"

#include <algorithm>

namespace korvane
{

ArrangeDialog::ArrangeDialog(REFCLSID classId, long titleId, float width, float height, const wchar_t* list,
                             const wchar_t* scope)
    : AppDialog(classId, titleId, width, height), scope_(scope),
      lblArrange(*this, {.name = L"lblArrange", .place = {120, 120, 3465, 210}, .text = list})
{
    lstArrange.onKeyDown = [this](WORD key, DWORD modifiers) { return moveByKey(key, modifiers); };
    lstArrange.onDrag = [this](int target) { moveEntry(target); };
    cmdMove.onMove = [this](OrderButtons::Move to) { move(to); };
}

bool ArrangeDialog::load()
{
    const auto command = commandView(); // the host may take it away in a call
    const Arrangement& arranged = arrangement();
    const ItemTable none;
    bool arranges = false;
    failure_ = attempt([&] {
        inScope(arranged.Root, scope_, [&] { fetch(command, &IAppCommand::Prepare); });
        arranges = fetch(command, &IAppCommand::get_Operation) == operationChange;
        fill(arranges ? arranged.items() : none);
    });
    // The designed size, in the font that the dialog has by now.
    setSize(fitToPixels(designWidth * fraCommands.Width() / commandsWidth, dpi()),
            fitToPixels(designHeight * fraCommands.Height() / commandsHeight, dpi()));
    if (failure_) // is told to the container, while Ready has succeeded: the agreed behaviour
        raiseError(*failure_);
    return arranges && !failure_;
}

void ArrangeDialog::fill(const ItemTable& items)
{
    const ListBox::Filling filling(lstArrange);
    lstArrange.Clear();
    for (long index = 0; index < items.count(); ++index)
        lstArrange.AddItem(items.at(index).text.get(), items.at(index).id);
}

/// Whether the list has the items that the command holds, in whatever order.
bool ArrangeDialog::showsAll() const
{
    const auto sorted = [](auto count, const auto& idAt) {
        std::vector<long> ids;
        ids.reserve(static_cast<std::size_t>(count));
        for (decltype(count) index = 0; index < count; ++index)
            ids.push_back(idAt(index));
        std::sort(ids.begin(), ids.end());
        return ids;
    };
    const ItemTable& held = arrangement().items();
    return sorted(lstArrange.ListCount(), [&](int index) { return lstArrange.ItemData(index); }) ==
           sorted(held.count(), [&](long index) { return held.at(index).id; });
}

/// What the user has not seen is not stored.
void ArrangeDialog::takeValues()
{
    if (failure_)
        throw *failure_;
    const bool arranges = fetch(commandView(), &IAppCommand::get_Operation) == operationChange;
    if (arranges && !showsAll())
        throw Failure(DISP_E_BADINDEX); // the host has loaded anew
    for (int index = 0; index < lstArrange.ListCount(); ++index)
        arrangement().setPos(index, lstArrange.ItemData(index));
}

void ArrangeDialog::shown()
{
    if (lstArrange.ListCount() <= 0)
        return;
    lstArrange.setListIndex(0);
    lstArrange.setFocus();
}

/// The list takes what the buttons leave.
void ArrangeDialog::resized()
{
    const float margin = lstArrange.Left();
    const float right = Width() - margin - cmdMove.Width();
    cmdMove.setLeft(right);
    fraCommands.setLeft(Width() - fraCommands.Width());
    fraCommands.setTop(Height() - fraCommands.Height());
    lblArrange.setWidth(right - 2 * margin);
    lstArrange.setPlace({margin, lstArrange.Top(), right - 2 * margin, fraCommands.Top() - lstArrange.Top()});
}

Extent ArrangeDialog::minimumSize() const noexcept
{
    return {fraCommands.Width() + lstArrange.Left(), cmdMove.bottom() + fraCommands.Height()};
}

bool ArrangeDialog::moveByKey(WORD key, DWORD modifiers)
{
    const auto to = OrderButtons::moveOf(key);
    if ((modifiers & altKey) == 0 || !to)
        return false;
    move(*to);
    return true;
}

void ArrangeDialog::move(OrderButtons::Move to)
{
    moveEntry(OrderButtons::target(to, lstArrange.ListIndex(), lstArrange.ListCount()));
}

/// Moves the selected entry, if there is one, as near to a place as the list has one.
void ArrangeDialog::moveEntry(int target)
{
    const int selected = lstArrange.ListIndex();
    if (selected >= 0)
        lstArrange.MoveItem(selected, std::clamp(target, 0, lstArrange.ListCount() - 1));
}

} // namespace korvane
