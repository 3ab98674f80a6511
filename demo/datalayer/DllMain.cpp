// The entry points of the in-process server.
#include "demo/datalayer/Catalogue.h"

#include "framework/com/Boundary.h"
#include "framework/com/MemberTable.h"

#include <sqlite3.h>

using namespace korvane;

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
    return guard([] { registerModule(store::libraryRegistration, classCatalogue(), writableScope()); });
}

STDAPI DllUnregisterServer()
{
    return guard([] { unregisterModule(store::libraryRegistration, classCatalogue(), writableScope()); });
}

} // extern "C"
