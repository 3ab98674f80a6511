#include "activities/ctlMoveEvents.h"

namespace korvane
{

namespace
{

enum TextId : long
{
    textMove = 25500,
    textCopy = 25501,
    textUpdateAll = 25502
};

} // namespace

ctlMoveEvents::ctlMoveEvents() : Dialog(textMove, 4800, 570) {}

long ctlMoveEvents::titleId() const
{
    return hasCommand() && command().operation == MoveEvents::operationMove ? textMove : textCopy;
}

bool ctlMoveEvents::load()
{
    prepared_ = false;
    const bool prepared = prepareCommand();
    const bool wanted = decideUpdateAll();
    prepared_ = prepared && wanted;
    return prepared_;
}

bool ctlMoveEvents::prepareCommand()
{
    DataScope scope(command().Root, L"ctlMoveEvents.Prepare");
    VARIANT_BOOL prepared = VARIANT_FALSE;
    const long operation = command().operation;
    if (operation == MoveEvents::operationMove || operation == MoveEvents::operationCopy)
        call(command().asCommand(), &IAppCommand::Prepare, &prepared);
    scope.Close();
    return prepared != VARIANT_FALSE;
}

/// Are the activities of all linked resources to move? Only a move in time leaves that open. False when the user
/// does not want to move at all.
bool ctlMoveEvents::decideUpdateAll()
{
    int answer = IDNO;
    if (command().NameCount() > 1 && command().operation == MoveEvents::operationMove &&
        command().SourceName == command().TargetName)
        answer = ask(textUpdateAll, MB_YESNOCANCEL | MB_ICONQUESTION);
    command().UpdateAll = answer == IDYES;
    return answer != IDCANCEL;
}

/// Executed once the message is over: the label is seen meanwhile, and the container may destroy the dialog.
void ctlMoveEvents::windowFocused() noexcept
{
    if (prepared_)
        postToDialog();
}

void ctlMoveEvents::postedToDialog()
{
    if (!std::exchange(prepared_, false))
        return;
    UpdateWindow(lblPromptWait.window());
    if (const auto failure = attempt([&] { confirm(); }))
    {
        // There is nothing to correct here: the user is told, and the dialog ends.
        raiseError(*failure);
        cancel();
    }
}

} // namespace korvane
