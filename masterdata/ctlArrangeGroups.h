// The dialog of the command that arranges the groups.
#pragma once

#include "masterdata/ArrangeDialog.h"
#include "masterdata/ArrangeGroups.h"

namespace korvane
{

class ctlArrangeGroups final : public ArrangeDialogOf<ctlArrangeGroups, ArrangeGroups>
{
public:
    static const GUID* classId() noexcept { return &__uuidof(::ctlArrangeGroups); }

    ctlArrangeGroups() : ArrangeDialogOf(21000, L"21005", L"ctlEditNames.Prepare") {}
};

} // namespace korvane
