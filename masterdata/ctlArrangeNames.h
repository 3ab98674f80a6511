// The dialog of the command that arranges the resources of a group.
#pragma once

#include "masterdata/ArrangeDialog.h"
#include "masterdata/ArrangeNames.h"

namespace korvane
{

class ctlArrangeNames final : public ArrangeDialogOf<ctlArrangeNames, ArrangeNames>
{
public:
    static const GUID* classId() noexcept { return &__uuidof(::ctlArrangeNames); }

    ctlArrangeNames() : ArrangeDialogOf(22000, L"22009", L"ctlEditNames.Prepare") {}
};

} // namespace korvane
