// A dialog with the controls that a test puts on it.
#pragma once

#include "framework/control/Frame.h"
#include "tests/framework/TestDialog.h"

namespace korvane::test
{

/// @tparam Layout the controls, as members; made of the dialog.
template <class Layout> class ControlDialog final : public Dialog<ControlDialog<Layout>, TestDialogCommand>
{
public:
    static const GUID* classId() noexcept
    {
        static constexpr GUID id{
            0x6E2A5B10, 0x2C41, 0x4F0E, {0x9B, 0x51, 0x0D, 0x7A, 0x31, 0x5E, 0x88, 0x05}};
        return &id;
    }

    ControlDialog() : ControlDialog::Dialog(22000, 4500, 2400) {}

    using DialogWindow::dpi;

    std::function<void()> onTake;
    Layout layout{*this};
    CommandFrame fraCommands{*this, {0, 1785, 4500, 615}};

private:
    bool load() override { return true; }
    void takeValues() override
    {
        if (onTake)
            onTake();
    }
};

template <class Layout> class ControlTest : public DialogTestOf<ControlDialog<Layout>>
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(this->show());
        this->container.site->activateUi();
        this->container.pump();
    }

    Layout& layout() const { return this->dialog->layout; }
};

} // namespace korvane::test
