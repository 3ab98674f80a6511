// The dialog of the command that arranges the resources of a group.
#pragma once

#include "masterdata/ArrangeDialog.h"
#include "masterdata/ArrangeNames.h"

namespace korvane
{

class ctlArrangeNames final : public Dialog<ctlArrangeNames, ArrangeNames, ArrangeDialog>
{
public:
    static const GUID* classId() noexcept { return &__uuidof(::ctlArrangeNames); }

    ctlArrangeNames() : Dialog(22000, designWidth, designHeight, L"22009", L"ctlEditNames.Prepare") {}

private:
    Arrangement& arrangement() const override { return command(); }
};

} // namespace korvane
