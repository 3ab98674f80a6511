// The library under measurement: the registered one, created as hosts do.
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/com/Failure.h"

#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>

#include <string>

namespace korvane::bench
{

constexpr const wchar_t* commandProgId = L"KorvaneDlg.EditGroups";
constexpr const wchar_t* dialogProgId = L"KorvaneDlg.ctlEditGroups";
constexpr const wchar_t* resourcesProgId = L"KorvaneDlg.Resources";

/// A class of the platform's own that is in its process too, and that knows late binding.
constexpr const wchar_t* platformProgId = L"Scripting.Dictionary";

CLSID classIdOf(const wchar_t* progId);

/// Creates an object the way a script does: its class is looked up by name each time.
void createByName(const wchar_t* progId, REFIID iid, void** object);

template <class Interface> ComPtr<Interface> create(const wchar_t* progId)
{
    ComPtr<Interface> object;
    createByName(progId, __uuidof(Interface), object.putVoid());
    return object;
}

/// The loaded DLL. Something of it must be alive.
HMODULE library();
std::wstring libraryPath();

} // namespace korvane::bench
