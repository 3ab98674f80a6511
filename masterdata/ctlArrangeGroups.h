// The dialog of the command that arranges the groups.
#pragma once

#include "masterdata/ArrangeDialog.h"
#include "masterdata/ArrangeGroups.h"

namespace korvane
{

class ctlArrangeGroups final : public Dialog<ctlArrangeGroups, ArrangeGroups, ArrangeDialog>
{
public:
    static const GUID* classId() noexcept { return &__uuidof(::ctlArrangeGroups); }

    ctlArrangeGroups() : Dialog(21000, designWidth, designHeight, L"40000", L"ctlEditNames.Prepare") {}

private:
    Arrangement& arrangement() const override { return command(); }
};

} // namespace korvane
