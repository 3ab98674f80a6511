// The library under measurement: the registered one, created as hosts do.
#pragma once

#include "tests/support/Container.h"

namespace korvane::bench
{

constexpr const wchar_t* commandProgId = L"KorvaneDlg.EditGroups";
constexpr const wchar_t* dialogProgId = L"KorvaneDlg.ctlEditGroups";
constexpr const wchar_t* resourcesProgId = L"KorvaneDlg.Resources";

/// A class of the platform's own that is in its process too, and that knows late binding.
constexpr const wchar_t* platformProgId = L"Scripting.Dictionary";

CLSID classIdOf(const wchar_t* progId);

/// Creates an object the way a script does: its class is looked up by name each time.
template <class Interface> ComPtr<Interface> create(const wchar_t* progId)
{
    ComPtr<Interface> object;
    require(CoCreateInstance(classIdOf(progId), nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface),
                             object.putVoid()));
    return object;
}

/// What a host does to show a dialog: creates it by name, places it, gives it its command, and reads Ready.
void open(test::Container& container, const wchar_t* dialogClass, IUnknown* command);
/// Reads Ready, of a dialog that stands or of a new one.
void readReady(test::Container& container);

std::wstring libraryPath();

} // namespace korvane::bench
