// The dialog of the move command: at most one question, and the command is executed as soon as the dialog is shown.
#pragma once

#include "activities/MoveEvents.h"
#include "framework/AppDialog.h"
#include "framework/control/Label.h"

namespace korvane
{

class ctlMoveEvents final : public Dialog<ctlMoveEvents, MoveEvents>
{
public:
    static const GUID* classId() noexcept { return &__uuidof(::ctlMoveEvents); }

    ctlMoveEvents();

private:
    bool load() override;
    void takeValues() override {} // there is nothing to enter
    void submitted(bool executed) override { close(!executed); }
    long titleId() const override;
    void shown() override { move(); }

    bool prepareCommand();
    bool decideUpdateAll();
    void move();

    bool prepared_ = false;

    Label lblPromptWait{*this, {.name = L"lblPromptWait", .place = {180, 180, 4440, 210}, .text = L"25510"}};
};

} // namespace korvane
