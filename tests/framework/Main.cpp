#include "framework/com/Apartment.h"
#include "framework/com/MemberTable.h"
#include "framework/control/ActivationContext.h"
#include "framework/modKorvaneDlg.h"
#include "tests/support/Isolation.h"

namespace
{

/// As DllCanUnloadNow.
bool isIdle()
{
    const bool idle = korvane::liveObjects() == 0;
    korvane::releaseApartment();
    korvane::releaseMemberTables();
    korvane::releaseControlsContext();
    return idle;
}

} // namespace

int main(int count, char** arguments)
{
    return korvane::test::runTests(count, arguments, isIdle);
}
