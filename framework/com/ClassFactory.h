// The classes of a module, and their factories.
#pragma once

#include "framework/com/Object.h"

#include <span>

namespace korvane
{

/// One class of a module. Factories and registration both follow from this.
struct ClassEntry
{
    const CLSID* classId = nullptr;
    const wchar_t* name = nullptr;        ///< the part of the ProgID after the library's name
    const wchar_t* description = nullptr; ///< what registry viewers show
    HRESULT (*create)(REFIID iid, void** object) noexcept = nullptr;
    int toolboxBitmap = 0; ///< resource id of a control's 16 by 16 bitmap; 0 for a class that is no control
};

/// The catalogue, defined once by each module.
std::span<const ClassEntry> classCatalogue() noexcept;

/// What a catalogue entry creates: an object of the class, asked for an interface.
template <class Class> HRESULT createInstance(REFIID iid, void** object) noexcept
{
    return guard([&] { return make<Class>()->QueryInterface(iid, object); });
}

/// What DllGetClassObject does.
HRESULT classObject(REFCLSID classId, REFIID iid, void** object) noexcept;

} // namespace korvane
