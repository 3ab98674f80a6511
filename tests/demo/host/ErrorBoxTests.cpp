#include "demo/host/ErrorBox.h"

#include <gtest/gtest.h>

namespace korvane::host
{

namespace
{

TEST(ErrorBox, ShowsDescriptionSourceAndNumber)
{
    EXPECT_EQ(errorText(static_cast<HRESULT>(0x8004105E), L"KorvaneData.Groups", L"Not you."),
              L"Not you.\n\nSource: KorvaneData.Groups\nNumber: 0x8004105E");
}

TEST(ErrorBox, LeavesOutWhatIsNotThere)
{
    EXPECT_EQ(errorText(E_FAIL, L"", L"It failed."), L"It failed.\n\nNumber: 0x80004005");
    EXPECT_EQ(errorText(E_FAIL, L"", L""), L"Number: 0x80004005");
}

} // namespace

} // namespace korvane::host
