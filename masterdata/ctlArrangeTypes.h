// The dialog of the command that arranges the activity types of a group.
#pragma once

#include "masterdata/ArrangeDialog.h"
#include "masterdata/ArrangeTypes.h"

namespace korvane
{

class ctlArrangeTypes final : public ArrangeDialogOf<ctlArrangeTypes, ArrangeTypes>
{
public:
    static const GUID* classId() noexcept { return &__uuidof(::ctlArrangeTypes); }

    ctlArrangeTypes() : ArrangeDialogOf(23000, L"23006", L"ctlEditTypes.Prepare") {}
};

} // namespace korvane
