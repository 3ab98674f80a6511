// The entry points of the in-process server.
#include "library/Catalogue.h"

#include "framework/com/Apartment.h"
#include "framework/com/Boundary.h"
#include "framework/com/Runtime.h"
#include "framework/control/ActivationContext.h"
#include "framework/modKorvaneDlg.h"

using namespace korvane;

namespace
{

HRESULT changeRegistration(bool add, Scope scope) noexcept
{
    const auto change = add ? &registerModule : &unregisterModule;
    return guard([&] { change(libraryRegistration, classCatalogue(), scope); });
}

} // namespace

extern "C"
{

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* processEnds)
{
    if (reason == DLL_PROCESS_ATTACH)
    {
        prepareForFailures(); // while there is memory, or else there is no library
    }
    else if (reason == DLL_THREAD_DETACH)
        runtime::threadEnds();
    else if (reason == DLL_PROCESS_DETACH && !processEnds)
    {
        forgetApartments();
        runtime::moduleGoes();
    }
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, void** object)
{
    return classObject(classId, iid, object);
}

STDAPI DllCanUnloadNow()
{
    if (liveObjects() != 0)
        return S_FALSE;
    releaseApartment();
    releaseMemberTables();
    releaseControlsContext();
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

/// `regsvr32 /n /i:user` registers for the user alone, whatever the rights.
STDAPI DllInstall(BOOL install, LPCWSTR commandLine)
{
    return changeRegistration(install, scopeOf(commandLine));
}

} // extern "C"
