#include "tests/support/Library.h"

#include <gtest/gtest.h>

namespace
{

/// After each test nothing of the library may be alive.
class NothingStaysAlive final : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo&) override
    {
        SetErrorInfo(0, nullptr);
        EXPECT_EQ(korvane::test::canUnload(), S_OK) << "an object of the library is still alive";
    }
};

} // namespace

int main(int count, char** arguments)
{
    testing::InitGoogleTest(&count, arguments);
    if (FAILED(OleInitialize(nullptr)) || !korvane::test::library())
        return EXIT_FAILURE;
    testing::UnitTest::GetInstance()->listeners().Append(new NothingStaysAlive);
    const int result = RUN_ALL_TESTS();
    OleUninitialize();
    return result;
}
