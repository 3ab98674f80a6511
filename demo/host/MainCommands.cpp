// The host's window: the commands of its menus, from the choice to the end of their dialog.
#include "demo/host/ErrorBox.h"
#include "demo/host/MainWindow.h"
#include "demo/host/Notice.h"
#include "demo/host/Orders.h"
#include "demo/host/SharedActivity.h"
#include "framework/com/Boundary.h"

namespace korvane::host
{

void MainWindow::chosen(int id)
{
    if (const CommandEntry* entry = entryOf(id))
    {
        run(*entry);
        return;
    }
    if (const std::wstring* login = accounts_.loginOf(id))
    {
        logIn(std::wstring(*login)); // the menu may be filled anew meanwhile
        return;
    }
    if (const std::wstring* language = languages_.languageOf(id))
    {
        speak(std::wstring(*language));
        return;
    }
    switch (id)
    {
    case menuExit:
        SendMessageW(handle(), WM_CLOSE, 0, 0);
        break;
    case menuZoomIn:
        schedule_->zoom(1);
        break;
    case menuZoomOut:
        schedule_->zoom(-1);
        break;
    case menuToday:
        schedule_->showToday();
        break;
    case menuOtherPart:
        goToOtherPart();
        break;
    default:
        break;
    }
}

void MainWindow::run(const CommandEntry& entry)
{
    if (dialog_)
        return;
    const long group = schedule_->group();
    const Bar* bar = schedule_->selectedBar();
    const auto slot = schedule_->selectedSlot();
    switch (entry.target)
    {
    case Target::group:
    case Target::members:
    case Target::order:
        start(entry, orderForGroup(entry, content_->selected()));
        break;
    case Target::resource:
        start(entry, orderForMember(entry, group, slot ? resourceOf(*slot).id : 0));
        break;
    case Target::addressee:
        if (slot)
            start(entry, orderForResource(entry, resourceOf(*slot)));
        break;
    case Target::reader:
        start(entry, orderForReader(entry, database_.reader()));
        break;
    case Target::slot:
        if (slot)
            start(entry, orderForSlot(entry, group, resourceOf(*slot).id, *slot));
        break;
    case Target::bar:
        if (bar)
            start(entry, orderForBar(entry, group, *bar));
        else
            run(entryNamed(newActivity));
        break;
    case Target::lostBar:
        if (bar)
            remove(*bar, orderForBar(entry, group, *bar));
        break;
    case Target::movingBar:
        SetFocus(schedule_->handle());
        schedule_->beginMove(entry.name == std::wstring_view(copyActivity));
        break;
    }
}

void MainWindow::drop(const Bar& bar, const Slot& landing, bool copies)
{
    if (dialog_)
        return;
    const CommandEntry& entry = entryNamed(copies ? copyActivity : moveActivity);
    start(entry, orderForLanding(entry, schedule_->group(), bar, resourceOf(landing).id, landing));
}

const Resource& MainWindow::resourceOf(const Slot& slot) const
{
    return schedule_->content().rows().at(slot.row).resource;
}

ComPtr<IAppCommand> MainWindow::prepared(const Order& order) const
{
    if (onOrder)
        onOrder(order);
    return prepareCommand(order, database_.root());
}

/// There is nothing to enter: the question is all there is of a dialog.
void MainWindow::remove(const Bar& bar, const Order& order)
{
    const std::wstring question = questionBeforeDeletion(bar, isShared(database_.root(), bar.id.event));
    if (MessageBoxW(handle(), question.c_str(), L"Delete activity", MB_YESNO | MB_ICONQUESTION) != IDYES)
        return;
    const auto command = prepared(order);
    VARIANT_BOOL ignored = VARIANT_FALSE; // False also after a write
    const auto failure = attempt([&] { call(command, &IAppCommand::Execute, &ignored); });
    showChanges(true);
    if (failure)
        throw *failure;
}

void MainWindow::start(const CommandEntry& entry, const Order& order)
{
    bool shown = false;
    const auto failure = attempt([&] {
        command_ = prepared(order);
        entry_ = &entry;
        dialog_ = std::make_unique<CommandDialog>(handle(), resources_, entry.isResizable());
        dialog_->onEnd = [this](bool cancelled) { PostMessageW(handle(), messageDialogEnded, cancelled, 0); };
        // What cannot be read now is read later: the command has been executed all the same.
        dialog_->onExecuted = [this] { attempt([this] { showChanges(true); }); };
        shown = dialog_->open(command_);
    });
    if (!shown)
        closeDialog();
    if (failure)
        throw *failure;
    if (!shown && entry.target == Target::reader)
        MessageBoxW(handle(), messageNotice(resources_, 0).c_str(), L"Korvane", MB_OK | MB_ICONINFORMATION);
}

void MainWindow::closeDialog()
{
    const bool hadDialog = static_cast<bool>(dialog_);
    dialog_.reset();
    command_.reset();
    // A question before the dialog may have taken the activation along.
    if (hadDialog && GetActiveWindow() != handle())
        SetActiveWindow(handle());
}

void MainWindow::dialogEnded(bool cancelled)
{
    if (!dialog_)
        return;
    const auto command = command_;
    closeDialog();
    if (cancelled)
        return;
    // What the command worked on is what the user wants to see now.
    if (entry_->target == Target::group)
        content_->select(numberOf(command, L"GroupID"));
    else if (entry_->worksOnActivity())
        schedule_->select({numberOf(command, L"EventID"), numberOf(command, L"Instance")});
}

} // namespace korvane::host
