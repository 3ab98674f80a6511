// An object that a test hands to what it tests: counted, and without a description of its type.
#pragma once

#include "framework/com/Platform.h"

namespace korvane::test
{

/// @tparam Interface what its IDispatch belongs to.
template <class Interface = IDispatch, class... Further>
class PlainObject : public Interface, public Further...
{
public:
    PlainObject(const PlainObject&) = delete;
    PlainObject& operator=(const PlainObject&) = delete;
    virtual ~PlainObject() = default;

    ULONG references() const noexcept { return references_; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(Interface);
        *object = known ? static_cast<Interface*>(this) : find(iid);
        static_cast<void>(((iid == __uuidof(Further) && (*object = static_cast<Further*>(this))) || ...));
        if (!*object)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override
    {
        const ULONG remaining = --references_;
        if (remaining == 0)
            delete this;
        return remaining;
    }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override
    {
        return DISP_E_MEMBERNOTFOUND;
    }

protected:
    PlainObject() = default;

    /// What else the object is.
    virtual void* find(REFIID) { return nullptr; }

private:
    ULONG references_ = 0;
};

} // namespace korvane::test
