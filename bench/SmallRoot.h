// The root object of a data layer with one collection or two, and scopes that cost nothing.
#pragma once

#include "framework/com/Object.h"
#include "tests/support/EmptyData.h"

namespace korvane::bench
{

class SmallRoot final : public Object<SmallRoot, Inherits<test::EmptyRoot>, IRoot>
{
public:
    STDMETHODIMP get_Names(INames** collection) override { return read(collection, names); }
    STDMETHODIMP get_Messages(IMessages** collection) override { return read(collection, messages); }
    STDMETHODIMP OpenScope(long, BSTR, IScope** scope) override
    {
        return returns(scope, [] { return make<Scope>().as<IScope>(); });
    }

    ComPtr<INames> names;
    ComPtr<IMessages> messages;

private:
    class Scope final : public Object<Scope, Inherits<IScope>, IScope>
    {
    public:
        STDMETHODIMP Close(long, long) override { return S_OK; }
    };
};

} // namespace korvane::bench
