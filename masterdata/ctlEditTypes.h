// The dialog of the activity type command.
#pragma once

#include "masterdata/EditTypes.h"
#include "masterdata/ListEditor.h"

namespace korvane
{

class ctlEditTypes final : public ListEditorOf<ctlEditTypes, EditTypes, ITypes>
{
public:
    static const GUID* classId() noexcept { return &__uuidof(::ctlEditTypes); }

    ctlEditTypes();

private:
    long builtIn() const override { return 0; }
    // A type without a name is handed to the command, unlike a resource without one: the agreed behaviour.
    void validate() const override {}

    CommandFrame fraCommands{*this, {0, bottom, editorWidth, 615}};
};

} // namespace korvane
