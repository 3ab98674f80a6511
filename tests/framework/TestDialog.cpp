#include "tests/framework/TestDialog.h"

namespace korvane::test
{

const GUID* TestDialogCommand::classId() noexcept
{
    static constexpr GUID id{0x6E2A5B10, 0x2C41, 0x4F0E, {0x9B, 0x51, 0x0D, 0x7A, 0x31, 0x5E, 0x88, 0x01}};
    return &id;
}

const GUID* TestDialog::classId() noexcept
{
    static constexpr GUID id{0x6E2A5B10, 0x2C41, 0x4F0E, {0x9B, 0x51, 0x0D, 0x7A, 0x31, 0x5E, 0x88, 0x02}};
    return &id;
}

} // namespace korvane::test
