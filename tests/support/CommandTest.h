// A command on the recording data layer, as a host uses it.
#pragma once

#include "tests/support/ComRules.h"
#include "tests/support/CommandUser.h"

#include <KorvaneDlg.h>

#include <gmock/gmock.h>

namespace korvane::test
{

class CommandTest : public testing::Test, public CommandUser
{
protected:
    explicit CommandTest(REFCLSID classId) : CommandUser(create<IAppCommand>(classId)) { letRoot(); }

    /// Executes and returns the calls that it made.
    std::vector<std::string> executed(long operation)
    {
        data.takeCalls();
        EXPECT_FALSE(execute(operation)); // never a result, whatever was written
        return data.takeCalls();
    }
    /// The same where it fails.
    std::vector<std::string> failed(long operation, const ErrorInfo& error)
    {
        data.takeCalls();
        call(command, &IAppCommand::put_Operation, operation);
        VARIANT_BOOL result = VARIANT_TRUE;
        EXPECT_EQ(errorOf(command->Execute(&result)), error);
        EXPECT_EQ(result, VARIANT_FALSE);
        return data.takeCalls();
    }
};

} // namespace korvane::test
