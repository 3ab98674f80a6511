// A command on the recording data layer, as a host uses it.
#pragma once

#include "framework/com/Call.h"
#include "framework/com/Variant.h"
#include "tests/support/RecordingData.h"

#include <KorvaneLib.h>

namespace korvane::test
{

inline void letOperand(const ComPtr<IAppCommand>& command, std::wstring_view name, const Variant& value)
{
    call(command, &IAppCommand::put_Operand, Bstr(name).get(), value.get());
}

inline Variant getOperand(const ComPtr<IAppCommand>& command, std::wstring_view name)
{
    return fetch(command, &IAppCommand::get_Operand, Bstr(name).get());
}

class CommandUser
{
protected:
    CommandUser() = default;
    explicit CommandUser(ComPtr<IAppCommand> used) : command(std::move(used)) {}

    void let(const wchar_t* name, const Variant& value) const { letOperand(command, name, value); }
    void let(const wchar_t* name, const wchar_t* text) const { let(name, Variant(Bstr(text))); }
    void let(const wchar_t* name, long number) const { let(name, Variant(number)); }
    void let(const wchar_t* name, DATE time) const { let(name, Variant(OleDate{time})); }
    void letRoot() const { let(L"Root", Variant(data.root.as<IDispatch>())); }

    Variant get(const wchar_t* name) const { return getOperand(command, name); }
    long number(const wchar_t* name) const { return toLong(get(name).get()); }
    DATE time(const wchar_t* name) const { return toDate(get(name).get()).days; }
    std::wstring text(const wchar_t* name) const { return std::wstring(toText(get(name).get()).view()); }

    bool prepare(long operation) const { return run(operation, &IAppCommand::Prepare); }
    bool execute(long operation) const { return run(operation, &IAppCommand::Execute); }

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
