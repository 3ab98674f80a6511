// Self-registration of a module's classes and type libraries.
#pragma once

#include "framework/com/ClassFactory.h"
#include "framework/com/Platform.h"

#include <span>

namespace korvane
{

/// What a module registers besides its classes.
struct LibraryRegistration
{
    const wchar_t* name; ///< first part of every ProgID
    const GUID* typeLibrary;
    /// Type libraries in the module's resources, 1 (its own) to this number. The others describe contracts that other
    /// modules bring along, too: a contract stays registered as long as one of them does. What a host has registered
    /// itself is left alone.
    int typeLibraries;
    DWORD controlStatus; ///< OLEMISC flags of the module's controls
};

enum class Scope
{
    machine,
    user
};

// Throw a Failure when the registry refuses. A registration that fails halfway is undone, unless the module was registered
// before. Classes that another copy of the module has registered are left to it.
void registerModule(const LibraryRegistration& library, std::span<const ClassEntry> classes, Scope scope);
void unregisterModule(const LibraryRegistration& library, std::span<const ClassEntry> classes, Scope scope);

/// The machine where its part of the registry can be written, else the user.
Scope writableScope() noexcept;

/// What the command line of DllInstall asks for: "user" for the user alone, whatever the rights.
Scope scopeOf(LPCWSTR commandLine) noexcept;

} // namespace korvane
