#include "tests/support/Allocation.h"

#include "framework/com/ComPtr.h"
#include "tests/support/Library.h"

#include <psapi.h>

#include <cstring>
#include <span>

namespace korvane::test
{

namespace
{

// Not thread-local: the storage of such an object is itself allocated, on its first use.
FailingAllocation* armed = nullptr;
DWORD armedThread = 0;

bool refuses(const char* function)
{
    return armed && GetCurrentThreadId() == armedThread && armed->refuses(function);
}

/// What a function that allocates answers with when there is no memory.
template <class Result> Result refusal() noexcept
{
    if constexpr (std::is_pointer_v<Result>)
        return nullptr;
    else
        return E_OUTOFMEMORY;
}

/// Stands between the library and a function that answers with a pointer, null for a lack of memory, or with an
/// HRESULT.
template <FunctionName name, class Function> struct Allocator;

template <FunctionName name, class Result, class... Parameters>
struct Allocator<name, Result __cdecl(Parameters...)>
{
    static inline Result(__cdecl* original)(Parameters...) = nullptr;

    static Result __cdecl stand(Parameters... parameters)
    {
        return refuses(name.text) ? refusal<Result>() : original(parameters...);
    }
};

#ifndef _WIN64
template <FunctionName name, class Result, class... Parameters>
struct Allocator<name, Result __stdcall(Parameters...)>
{
    static inline Result(__stdcall* original)(Parameters...) = nullptr;

    static Result __stdcall stand(Parameters... parameters)
    {
        return refuses(name.text) ? refusal<Result>() : original(parameters...);
    }
};
#endif

template <FunctionName name, class Function> void place()
{
    using Stand = Allocator<name, Function>;
    void** slot = importSlot(library(), name.text);
    if (!slot || Stand::original)
        return;
    Stand::original = reinterpret_cast<decltype(Stand::original)>(*slot);
    // Never taken back: memory may be asked for as long as the library is loaded.
    static const ImportPatch patch(library(), name.text, reinterpret_cast<void*>(&Stand::stand));
}

void placeAll()
{
    place<"malloc", decltype(malloc)>();
    place<"calloc", decltype(calloc)>();
    place<"realloc", decltype(realloc)>();
    place<"SysAllocString", decltype(SysAllocString)>();
    place<"SysAllocStringLen", decltype(SysAllocStringLen)>();
    place<"SysAllocStringByteLen", decltype(SysAllocStringByteLen)>();
    place<"CoTaskMemAlloc", decltype(CoTaskMemAlloc)>();
    place<"VariantCopy", decltype(VariantCopy)>();
    place<"VariantCopyInd", decltype(VariantCopyInd)>();
    place<"VariantChangeTypeEx", decltype(VariantChangeTypeEx)>();
    place<"CreateErrorInfo", decltype(CreateErrorInfo)>();
    place<"CreateOleAdviseHolder", decltype(CreateOleAdviseHolder)>();
    place<"OleCreateFontIndirect", decltype(OleCreateFontIndirect)>();
    place<"CoRegisterInitializeSpy", decltype(CoRegisterInitializeSpy)>();
}

/// Goes through what a module imports by name until it is told to stop.
/// @param visit gets the name and where the address is kept, and says whether to go on.
/// @returns where it was stopped, null at the end.
template <class Visit> void** visitImports(HMODULE module, Visit&& visit)
{
    auto* const base = reinterpret_cast<BYTE*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (directory.VirtualAddress == 0)
        return nullptr;
    const auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; from->Name != 0; ++from)
    {
        if (from->OriginalFirstThunk == 0) // some linkers leave the addresses only
            continue;
        const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + from->OriginalFirstThunk);
        auto* slots = reinterpret_cast<void**>(base + from->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++slots)
        {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal))
                continue;
            const auto* entry = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (!visit(reinterpret_cast<const char*>(entry->Name), slots))
                return slots;
        }
    }
    return nullptr;
}

void* store(void** slot, void* value)
{
    DWORD protection = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
    void* const former = std::exchange(*slot, value);
    VirtualProtect(slot, sizeof *slot, protection, &protection);
    return former;
}

} // namespace

void** importSlot(HMODULE module, const char* function)
{
    return visitImports(module, [&](const char* name, void**) { return std::strcmp(name, function) != 0; });
}

void replaceEverywhere(const void* function, void* replacement)
{
    HMODULE modules[512];
    DWORD size = 0;
    if (!K32EnumProcessModules(GetCurrentProcess(), modules, sizeof modules, &size))
        return;
    for (const HMODULE module :
         std::span(modules, std::min<std::size_t>(size, sizeof modules) / sizeof *modules))
        visitImports(module, [&](const char*, void** slot) {
            if (*slot == function)
                store(slot, replacement);
            return true;
        });
}

ImportPatch::ImportPatch(HMODULE module, const char* function, void* replacement)
    : slot_(importSlot(module, function))
{
    if (slot_)
        former_ = store(slot_, replacement);
}

ImportPatch::~ImportPatch()
{
    if (slot_)
        store(slot_, former_);
}

FailingAllocation::FailingAllocation(int failing, Extent extent) : failing_(failing), extent_(extent)
{
    placeAll();
    armedThread = GetCurrentThreadId();
    armed = this;
}

FailingAllocation::~FailingAllocation()
{
    end();
}

void FailingAllocation::end() noexcept
{
    armed = nullptr;
}

bool FailingAllocation::refuses(const char* function)
{
    ++made_;
    const bool refused = failing_ != 0 && (extent_ == Extent::one ? made_ == failing_ : made_ >= failing_);
    if (refused && refused_.empty())
        refused_ = function;
    return refused;
}

} // namespace korvane::test
