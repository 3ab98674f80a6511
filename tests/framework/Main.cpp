#include "framework/com/Apartment.h"
#include "framework/com/MemberTable.h"
#include "framework/control/ActivationContext.h"
#include "framework/modKorvaneDlg.h"

#include <gtest/gtest.h>

namespace
{

/// What DllCanUnloadNow does, after each test: nothing may be alive, and the next test starts anew.
class NothingStaysAlive final : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo&) override
    {
        SetErrorInfo(0, nullptr);
        EXPECT_EQ(korvane::liveObjects(), 0) << "an object is still alive";
        korvane::releaseApartment();
        korvane::releaseMemberTables();
        korvane::releaseControlsContext();
    }
};

} // namespace

int main(int count, char** arguments)
{
    testing::InitGoogleTest(&count, arguments);
    if (FAILED(OleInitialize(nullptr)))
        return EXIT_FAILURE;
    testing::UnitTest::GetInstance()->listeners().Append(new NothingStaysAlive);
    const int result = RUN_ALL_TESTS();
    OleUninitialize();
    return result;
}
