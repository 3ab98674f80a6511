// The dialog of the command that arranges the activity types of a group.
#pragma once

#include "masterdata/ArrangeDialog.h"
#include "masterdata/ArrangeTypes.h"

namespace korvane
{

class ctlArrangeTypes final : public Dialog<ctlArrangeTypes, ArrangeTypes, ArrangeDialog>
{
public:
    static const GUID* classId() noexcept { return &__uuidof(::ctlArrangeTypes); }

    ctlArrangeTypes() : Dialog(23000, designWidth, designHeight, L"23006", L"ctlEditTypes.Prepare") {}

private:
    Arrangement& arrangement() const override { return command(); }
};

} // namespace korvane
