// The interfaces of the data layer, answered for by nothing: a stand-in writes only the members that it needs.
#pragma once

#include "framework/com/Platform.h"

#include <KorvaneData.h>

namespace korvane::test
{

template <class Result> HRESULT lacks(Result** result)
{
    *result = nullptr;
    return E_NOTIMPL;
}

class EmptyRoot : public IRoot
{
public:
    STDMETHODIMP get_Groups(IGroups** collection) override { return lacks(collection); }
    STDMETHODIMP get_Names(INames** collection) override { return lacks(collection); }
    STDMETHODIMP get_Types(ITypes** collection) override { return lacks(collection); }
    STDMETHODIMP get_Accounts(IAccounts** collection) override { return lacks(collection); }
    STDMETHODIMP get_Events(IEvents** collection) override { return lacks(collection); }
    STDMETHODIMP get_EventLinks(IEventLinks** collection) override { return lacks(collection); }
    STDMETHODIMP get_Messages(IMessages** collection) override { return lacks(collection); }
    STDMETHODIMP NewRecurrence(long, IRecurrence** rule) override { return lacks(rule); }
    STDMETHODIMP OpenScope(long, BSTR, IScope** scope) override { return lacks(scope); }
};

class EmptyGroups : public IGroups
{
public:
    STDMETHODIMP Load(VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP Fetch(long, BSTR*, long*, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP HasAccess(long, long, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP Add(BSTR, long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP Remove(long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP Update(long, BSTR, long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP SetPosition(long, long) override { return E_NOTIMPL; }
};

class EmptyNames : public INames
{
public:
    STDMETHODIMP Load(long, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP Fetch(long, BSTR*, long*, long*, BSTR*, long*, long*) override { return E_NOTIMPL; }
    STDMETHODIMP HasAccess(long, long, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP GetRole(long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP GetMailbox(long, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP Add(BSTR, long, long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP Update(long, BSTR, long, long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP AddToGroup(long, long, long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP RemoveFromGroup(long, long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP SetSyncLogin(long, BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP SetRole(long, long) override { return E_NOTIMPL; }
    STDMETHODIMP LoadInfo(long, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP SetInfo(long, BSTR, long, BSTR) override { return E_NOTIMPL; }
};

class EmptyTypes : public ITypes
{
public:
    STDMETHODIMP Load(long, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP Fetch(long, BSTR*, long*, long*, long*) override { return E_NOTIMPL; }
    STDMETHODIMP HasAccess(long, long, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP Add(BSTR, long, long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP Update(long, BSTR, long, long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP AddToGroup(long, long, long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP RemoveFromGroup(long, long, long*) override { return E_NOTIMPL; }
};

class EmptyAccounts : public IAccounts
{
public:
    STDMETHODIMP Load(VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP Lookup(BSTR, long*, long*, long*) override { return E_NOTIMPL; }
    STDMETHODIMP Add(BSTR, long, VARIANT, long*) override { return E_NOTIMPL; }
    STDMETHODIMP Attach(long, BSTR, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP Detach(long, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP Remove(BSTR, VARIANT_BOOL*) override { return E_NOTIMPL; }
};

class EmptyMessages : public IMessages
{
public:
    STDMETHODIMP LoadFor(long, long, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP Fetch(long, BSTR*, DATE*, BSTR*, BSTR*, BSTR*, long*, VARIANT_BOOL*) override
    {
        return E_NOTIMPL;
    }
    STDMETHODIMP Add(long, DATE, BSTR, BSTR, BSTR, long, long*) override { return E_NOTIMPL; }
    STDMETHODIMP Remove(long) override { return E_NOTIMPL; }
};

class EmptyEvents : public IEvents
{
public:
    STDMETHODIMP Add(long, long, DATE, DATE, BSTR, long*) override { return E_NOTIMPL; }
    STDMETHODIMP Update(long, long, long, long, DATE, DATE, BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP Remove(long, long) override { return E_NOTIMPL; }
    STDMETHODIMP Fetch(long, long, long*, long*, DATE*, DATE*, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP GetRecurrence(long, IRecurrence** rule) override { return lacks(rule); }
    STDMETHODIMP SetRecurrence(long, IRecurrence*) override { return E_NOTIMPL; }
    STDMETHODIMP IsException(long, long*) override { return E_NOTIMPL; }
};

class EmptyEventLinks : public IEventLinks
{
public:
    STDMETHODIMP Load(long, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP Create(long, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP AddNames(VARIANT, VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP RemoveNames(VARIANT, VARIANT, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP RemoveOccurrence(VARIANT, long) override { return E_NOTIMPL; }
    STDMETHODIMP RemoveAll(VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP UpdateLinked(VARIANT, long, long, DATE, DATE, BSTR, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP Detach(VARIANT, long) override { return E_NOTIMPL; }
    STDMETHODIMP SetRecurrence(VARIANT, IRecurrence*) override { return E_NOTIMPL; }
    STDMETHODIMP HasAccess(long, long, VARIANT_BOOL*) override { return E_NOTIMPL; }
};

} // namespace korvane::test
