// The entry points of the in-process server.
#include "demo/datalayer/Catalogue.h"

#include "framework/com/Boundary.h"
#include "framework/com/MemberTable.h"

#include <sqlite3.h>

using namespace korvane;

namespace
{

HRESULT changeRegistration(bool add, Scope scope) noexcept
{
    const auto change = add ? &registerModule : &unregisterModule;
    return guard([&] { change(store::libraryRegistration, classCatalogue(), scope); });
}

} // namespace

extern "C"
{

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* processEnds)
{
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(instance);
    if (reason == DLL_PROCESS_DETACH && !processEnds)
        sqlite3_shutdown();
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, void** object)
{
    return classObject(classId, iid, object);
}

STDAPI DllCanUnloadNow()
{
    if (module::lockCount() != 0)
        return S_FALSE;
    releaseMemberTables();
    return S_OK;
}

STDAPI DllRegisterServer()
{
    return changeRegistration(true, writableScope());
}

STDAPI DllUnregisterServer()
{
    return changeRegistration(false, writableScope());
}

STDAPI DllInstall(BOOL install, LPCWSTR commandLine)
{
    return changeRegistration(install, scopeOf(commandLine));
}

} // extern "C"
