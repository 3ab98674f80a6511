// A command on an item of a group.
#pragma once

#include "tests/support/CommandTest.h"

namespace korvane::test
{

class CommandFixture : public CommandTest
{
protected:
    explicit CommandFixture(REFCLSID classId) : CommandTest(classId) { let(L"GroupID", Variant(4L)); }
};

} // namespace korvane::test
