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
    if (isExecuting())
        return true; // nothing is left to be asked
    prepared_ = false;
    const bool prepared = prepareCommand();
    const bool wanted = decideUpdateAll();
    prepared_ = prepared && wanted;
    return prepared_;
}

bool ctlMoveEvents::prepareCommand()
{
    return inScope(command().Root, L"ctlMoveEvents.Prepare", [this] {
        const long operation = command().operation;
        return (operation == MoveEvents::operationMove || operation == MoveEvents::operationCopy) &&
               fetch(command().asCommand(), &IAppCommand::Prepare);
    });
}

/// Are the activities of all linked resources to move? Only a move in time leaves that open. False when the user
/// does not want to move at all.
bool ctlMoveEvents::decideUpdateAll()
{
    auto& moved = command(); // the container may set another one meanwhile
    int answer = IDNO;
    if (moved.NameCount() > 1 && moved.operation == MoveEvents::operationMove &&
        moved.SourceName == moved.TargetName)
        answer = ask(textUpdateAll, MB_YESNOCANCEL | MB_ICONQUESTION);
    moved.UpdateAll = answer == IDYES;
    return answer != IDCANCEL;
}

/// Executes the command, once, with the label to be seen meanwhile. There is nothing to correct here: of a failure the
/// user is told, and the dialog ends.
void ctlMoveEvents::move()
{
    if (!isReady() || !std::exchange(prepared_, false))
        return;
    lblPromptWait.showNow();
    if (const auto failure = attempt([&] { confirm(); }))
    {
        raiseError(*failure);
        if (isReady()) // else it is the end itself that has failed
            cancel();
    }
}

} // namespace korvane
