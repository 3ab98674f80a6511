// Imports of a module, replaced for a while: what the library asks the platform for can be counted and refused.
#pragma once

#include "framework/com/Platform.h"

#include <algorithm>
#include <string>

namespace korvane::test
{

/// The name of a function, as an argument of a template.
template <std::size_t size> struct FunctionName
{
    consteval FunctionName(const char (&literal)[size]) { std::copy_n(literal, size, text); }

    char text[size]{};
};

/// Where a module keeps the address of a function that it imports; null when it does not import it.
void** importSlot(HMODULE module, const char* function);

/// Puts a function in place of another one wherever a module of the process imports that, under whatever name. Modules
/// that are loaded later need another call.
void replaceEverywhere(const void* function, void* replacement);

/// Puts a function in place of an imported one. Nothing happens where the module does not import it.
class ImportPatch
{
public:
    ImportPatch(HMODULE module, const char* function, void* replacement);
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;
    ~ImportPatch();

    bool isInPlace() const noexcept { return slot_ != nullptr; }

private:
    void** slot_;
    void* former_ = nullptr;
};

/// While it lives, allocations of the library on this thread are counted, and some of them fail.
class FailingAllocation
{
public:
    enum class Extent
    {
        one,    ///< only that allocation fails
        onwards ///< and so does every later one
    };

    /// @param failing the allocation that fails, counted from 1; 0 for none.
    explicit FailingAllocation(int failing, Extent extent = Extent::one);
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();

    /// Lets everything succeed again.
    void end() noexcept;

    /// Has any allocation failed?
    bool hasFailed() const noexcept { return !refused_.empty(); }
    /// The first function that was refused memory.
    const std::string& refused() const noexcept { return refused_; }

    // For the replaced functions.
    bool refuses(const char* function);

private:
    int failing_;
    Extent extent_;
    int made_ = 0;
    std::string refused_;
};

} // namespace korvane::test
