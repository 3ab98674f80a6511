// A command on the recording data layer, as a host uses it.
#pragma once

#include "framework/com/Call.h"
#include "framework/com/Variant.h"
#include "tests/support/ComRules.h"
#include "tests/support/Library.h"
#include "tests/support/RecordingData.h"

#include <KorvaneDlg.h>

#include <gmock/gmock.h>

namespace korvane::test
{

class CommandTest : public testing::Test
{
protected:
    explicit CommandTest(REFCLSID classId) : command(create<IAppCommand>(classId))
    {
        let(L"Root", Variant(data.root.as<IDispatch>()));
    }

    void let(const wchar_t* name, const Variant& value) const
    {
        call(command, &IAppCommand::put_Operand, Bstr(name).get(), value.get());
    }
    void let(const wchar_t* name, const wchar_t* text) const { let(name, Variant(Bstr(text))); }

    Variant get(const wchar_t* name) const
    {
        Variant value;
        call(command, &IAppCommand::get_Operand, Bstr(name).get(), value.put());
        return value;
    }
    long number(const wchar_t* name) const { return toLong(get(name).get()); }
    std::wstring text(const wchar_t* name) const { return std::wstring(toText(get(name).get()).view()); }

    bool prepare(long operation) const { return run(operation, &IAppCommand::Prepare); }
    bool execute(long operation) const { return run(operation, &IAppCommand::Execute); }

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

    RecordingData data;
    ComPtr<IAppCommand> command;

private:
    bool run(long operation, HRESULT (STDMETHODCALLTYPE IAppCommand::*method)(VARIANT_BOOL*)) const
    {
        call(command, &IAppCommand::put_Operation, operation);
        return fetch(command, method);
    }
};

} // namespace korvane::test
