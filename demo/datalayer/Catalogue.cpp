// The class catalogue: factories and registration follow from this table.
#include "demo/datalayer/Catalogue.h"

#include "demo/datalayer/Database.h"
#include "demo/datalayer/Registry.h"

namespace korvane
{

std::span<const ClassEntry> classCatalogue() noexcept
{
    static const ClassEntry classes[] = {
        {&__uuidof(::Database), L"Database", L"Korvane demo database", &createInstance<store::Database>},
        {&__uuidof(::Registry), L"Registry", L"Korvane demo settings", &createInstance<store::Registry>},
    };
    return classes;
}

namespace store
{

const LibraryRegistration libraryRegistration{
    .name = L"KorvaneData",
    .typeLibrary = &LIBID_KorvaneStore,
    .typeLibraries = 2,
    .controlStatus = 0,
};

} // namespace store

} // namespace korvane
