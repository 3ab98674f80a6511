// The library's own texts and pictures, and its calendar contract.
#pragma once

#include "framework/com/Object.h"

#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>

namespace korvane
{

class Resources final : public Object<Resources, Inherits<IResourceLibrary, IResources, ICalendar>,
                                      IResourceLibrary, IResources, ICalendar>
{
public:
    /// Throws a Failure when string 0, the locale of the texts, is missing or no number.
    Resources();

    /// The class id: the frame recognises the library's own resources by it.
    static const GUID* privateId() noexcept { return &__uuidof(::Resources); }

    // IResources: no member raises, what is missing is empty. (Resources.cpp, Pictures.cpp)
    STDMETHODIMP GetIcon(long id, IPictureDisp** picture) override;
    STDMETHODIMP GetBitmap(long id, IPictureDisp** picture) override;
    STDMETHODIMP GetCursor(long id, IPictureDisp** picture) override;
    STDMETHODIMP GetString(long id, BSTR* text) override;
    STDMETHODIMP get_LocaleID(long* locale) override;

    // IResourceLibrary (Resources.cpp, Export.cpp)
    STDMETHODIMP GetString(VARIANT id, BSTR* text) override;
    STDMETHODIMP Export(VARIANT resourceType, VARIANT resourceId, BSTR fileName,
                        VARIANT_BOOL* written) override;

    // ICalendar (Calendar.cpp)
    STDMETHODIMP GetFirst(VARIANT rule, DATE start, VARIANT_BOOL* found) override;
    STDMETHODIMP GetNext(DATE previous, VARIANT_BOOL* found) override;
    STDMETHODIMP Easter(long year, DATE* sunday) override;
    STDMETHODIMP IsLeapYear(long year, VARIANT_BOOL* result) override;
    STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

private:
    long locale_;
};

} // namespace korvane
