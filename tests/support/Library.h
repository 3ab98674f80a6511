// The library under test: KorvaneDlg.dll from beside the test program, used without registration.
#pragma once

#include "framework/com/Call.h"

#include <string>

namespace korvane::test
{

/// The loaded DLL. It is loaded once, on first use.
HMODULE library();

/// Creates a class through the DLL's class object.
HRESULT create(REFCLSID classId, REFIID iid, void** object);

template <class Interface> ComPtr<Interface> create(REFCLSID classId)
{
    ComPtr<Interface> object;
    require(create(classId, __uuidof(Interface), object.putVoid()));
    return object;
}

/// What DllCanUnloadNow says.
HRESULT canUnload();

/// Number, source and description of the error that a call left behind.
struct ErrorInfo
{
    HRESULT number = S_OK;
    std::wstring source;
    std::wstring description;
    friend bool operator==(const ErrorInfo&, const ErrorInfo&) = default;
};

/// Takes the thread's COM error object; it is there once only.
ErrorInfo errorOf(HRESULT number);

std::wstring folderOfTests();

} // namespace korvane::test
