// What surrounds the frame: a host's own resources, a container's sink, an object with a default value.
#pragma once

#include "framework/com/Object.h"
#include "tests/support/EmptyData.h"
#include "tests/support/Library.h"
#include "tests/support/PlainObject.h"

#include <KorvaneInterfaces.h>

#include <functional>
#include <vector>

namespace korvane::test
{

/// A host's own resources: every text is "host text" and the id, or a failure.
class HostResources final : public Object<HostResources, Inherits<IResources>, IResources>
{
public:
    STDMETHODIMP GetIcon(long, IPictureDisp** picture) override { return nothing(picture); }
    STDMETHODIMP GetBitmap(long, IPictureDisp** picture) override { return nothing(picture); }
    STDMETHODIMP GetCursor(long, IPictureDisp** picture) override { return nothing(picture); }
    STDMETHODIMP GetString(long id, BSTR* text) override;
    STDMETHODIMP get_LocaleID(long* locale) override;

    long failing = -1;           ///< the text with this id fails
    std::wstring word = L"host"; ///< what every text begins with

private:
    static HRESULT nothing(IPictureDisp** picture);
};

/// A container's sink that has no command site.
class Sink final : public Object<Sink, Inherits<IAppDialogSink>, IAppDialogSink>
{
public:
    STDMETHODIMP Done(VARIANT_BOOL cancelled) override;
    STDMETHODIMP Error(long number, BSTR source, BSTR description) override;
    STDMETHODIMP Resize() override;

    std::vector<bool> done;
    std::vector<ErrorInfo> errors;
    int resizes = 0;
    /// What every member does besides.
    std::function<HRESULT()> answer = [] { return S_OK; };
};

/// A container's sink with its command site.
class CommandSink final
    : public Object<CommandSink, Inherits<IAppDialogSink, IAppCommandSite>, IAppDialogSink, IAppCommandSite>
{
public:
    STDMETHODIMP Done(VARIANT_BOOL) override { return S_OK; }
    STDMETHODIMP Error(long, BSTR, BSTR) override { return S_OK; }
    STDMETHODIMP Resize() override { return S_OK; }
    STDMETHODIMP Accepts(IAppCommand* candidate, VARIANT_BOOL* result) override;
    STDMETHODIMP Offer(IAppCommand* candidate, VARIANT_BOOL* result) override;
    STDMETHODIMP Submit(IAppCommand* candidate, VARIANT_BOOL* result) override;

    std::vector<std::pair<std::string, IAppCommand*>> calls;
    VARIANT_BOOL answer = VARIANT_TRUE;
    HRESULT outcome = S_OK;
    bool tellsOfErrors = true;          ///< by ISupportErrorInfo
    std::function<void()> beforeAnswer; ///< within the call

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID) override { return tellsOfErrors ? S_OK : S_FALSE; }

private:
    HRESULT noted(const char* call, IAppCommand* candidate, VARIANT_BOOL* result);
};

/// An object whose default property is a number.
class NumberObject final : public PlainObject<>
{
public:
    explicit NumberObject(long number) : number_(number) {}

    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                        UINT*) override;

private:
    long number_;
};

/// A data layer that is only there.
class BareRoot final : public Object<BareRoot, Inherits<EmptyRoot>, IRoot>
{
};

/// Leaves an error object on the thread, as a failing call does.
void leaveError(HRESULT number, const wchar_t* source, const wchar_t* description);

/// Whether there is an error object on the thread. Takes it.
bool errorIsLeft();

} // namespace korvane::test
