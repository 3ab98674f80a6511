#include "tests/support/Leaks.h"

#include "tests/support/Allocation.h"
#include "tests/support/Library.h"

#include <atomic>
#include <ostream>
#include <stdexcept>
#include <unordered_set>

namespace korvane::test
{

namespace
{

std::atomic<long> handles = 0;
std::atomic<long> libraryBlocks = 0;
std::atomic<long> taskBlocks = 0;

/// What a call means for the number of handles that the library owns.
enum class Effect
{
    makes,
    ends,
    givesAway ///< its second argument, when there is one and the call succeeds
};

template <FunctionName name, class Function, Effect effect> struct Counter;

template <FunctionName name, class Result, class... Parameters, Effect effect>
struct Counter<name, Result WINAPI(Parameters...), effect>
{
    static inline Result(WINAPI* original)(Parameters...) = nullptr;

    static Result WINAPI stand(Parameters... parameters)
    {
        if constexpr (effect == Effect::ends && std::is_void_v<Result>)
        {
            original(parameters...);
            --handles;
        }
        else
        {
            const Result result = original(parameters...);
            if constexpr (effect == Effect::makes)
            {
                if (isHandle(result))
                    ++handles;
            }
            else if constexpr (effect == Effect::ends)
            {
                if (result)
                    --handles;
            }
            else if (result && second(parameters...))
                --handles;
            return result;
        }
    }

    static bool isHandle(const void* handle) { return handle && handle != INVALID_HANDLE_VALUE; }

    template <class First, class Second, class... Others>
    static Second second(First, Second argument, Others...)
    {
        return argument;
    }
};

template <FunctionName name, class Function, Effect effect> void count()
{
    using Stand = Counter<name, Function, effect>;
    if (void** slot = importSlot(library(), name.text))
    {
        Stand::original = reinterpret_cast<decltype(Stand::original)>(*slot);
        static const ImportPatch patch(library(), name.text, reinterpret_cast<void*>(&Stand::stand));
    }
}

struct Blocks
{
    static inline decltype(&std::malloc) originalMalloc = nullptr;
    static inline decltype(&std::calloc) originalCalloc = nullptr;
    static inline decltype(&std::realloc) originalRealloc = nullptr;
    static inline decltype(&std::free) originalFree = nullptr;

    static void* __cdecl allocate(std::size_t size)
    {
        void* const block = originalMalloc(size);
        libraryBlocks += block != nullptr;
        return block;
    }

    static void* __cdecl allocateCleared(std::size_t number, std::size_t size)
    {
        void* const block = originalCalloc(number, size);
        libraryBlocks += block != nullptr;
        return block;
    }

    static void* __cdecl reallocate(void* former, std::size_t size)
    {
        void* const block = originalRealloc(former, size);
        libraryBlocks += !former && block;
        return block;
    }

    static void __cdecl release(void* block)
    {
        libraryBlocks -= block != nullptr;
        originalFree(block);
    }
};

template <class Function> void countBlocks(const char* name, Function& original, Function replacement)
{
    if (void** slot = importSlot(library(), name))
    {
        original = reinterpret_cast<Function>(*slot);
        new ImportPatch(library(), name, reinterpret_cast<void*>(replacement)); // stays
    }
}

/// What the modules of the process have taken from its heaps. Walking the heaps would not tell: one implementation of
/// the platform keeps many small blocks in one that it shows.
class HeapBlocks
{
public:
    /// In every module that is loaded by now.
    static void watch()
    {
        replace<"RtlAllocateHeap">(originalAllocate, &allocate);
        replace<"RtlReAllocateHeap">(originalReallocate, &reallocate);
        replace<"RtlFreeHeap">(originalFree, &release);
    }

    static long number()
    {
        const Lock lock;
        return static_cast<long>(taken.size());
    }

private:
    /// Of the blocks taken; what the thread that holds it takes for them is none of them.
    class Lock
    {
    public:
        Lock()
        {
            AcquireSRWLockExclusive(&lock);
            holder = GetCurrentThreadId();
        }
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;
        ~Lock()
        {
            holder = 0;
            ReleaseSRWLockExclusive(&lock);
        }

        static bool isHeld() { return holder == GetCurrentThreadId(); }

    private:
        static inline SRWLOCK lock = SRWLOCK_INIT;
        static inline std::atomic<DWORD> holder = 0;
    };

    // The functions of any other name end in these.
    template <FunctionName name, class Function> static void replace(Function& original, Function replacement)
    {
        auto* const function =
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), name.text));
        original = reinterpret_cast<Function>(function);
        replaceEverywhere(function, reinterpret_cast<void*>(replacement));
    }

    static void* add(void* block)
    {
        if (block && !Lock::isHeld())
        {
            const Lock lock;
            taken.insert(block);
        }
        return block;
    }

    /// Whether it is one; the platform's lowest module takes blocks unseen that others give back.
    static bool remove(void* block)
    {
        if (!block || Lock::isHeld())
            return false;
        const Lock lock;
        return taken.erase(block) != 0;
    }

    static void* WINAPI allocate(HANDLE heap, DWORD flags, SIZE_T size)
    {
        return add(originalAllocate(heap, flags, size));
    }

    static void* WINAPI reallocate(HANDLE heap, DWORD flags, void* block, SIZE_T size)
    {
        const bool isTaken = remove(block);
        void* const moved = originalReallocate(heap, flags, block, size);
        if (isTaken)
            add(moved ? moved : block);
        return moved;
    }

    static BOOL WINAPI release(HANDLE heap, DWORD flags, void* block)
    {
        remove(block);
        return originalFree(heap, flags, block);
    }

    static inline auto& taken = *new std::unordered_set<void*>; // modules give blocks back to the very end
    static inline void*(WINAPI* originalAllocate)(HANDLE, DWORD, SIZE_T) = nullptr;
    static inline void*(WINAPI* originalReallocate)(HANDLE, DWORD, void*, SIZE_T) = nullptr;
    static inline BOOL(WINAPI* originalFree)(HANDLE, DWORD, void*) = nullptr;
};

class MallocSpy final : public IMallocSpy
{
public:
    virtual ~MallocSpy() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        *object = iid == IID_IUnknown || iid == IID_IMallocSpy ? this : nullptr;
        return *object ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }

    STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size; }
    STDMETHODIMP_(void*) PostAlloc(void* block) override
    {
        taskBlocks += block != nullptr;
        return block;
    }
    STDMETHODIMP_(void*) PreFree(void* block, BOOL spied) override
    {
        taskBlocks -= block && spied;
        return block;
    }
    STDMETHODIMP_(void) PostFree(BOOL) override {}
    STDMETHODIMP_(SIZE_T) PreRealloc(void* block, SIZE_T size, void** actual, BOOL) override
    {
        *actual = block;
        isNew_ = !block;
        return size;
    }
    STDMETHODIMP_(void*) PostRealloc(void* block, BOOL) override
    {
        taskBlocks += isNew_ && block;
        return block;
    }
    STDMETHODIMP_(void*) PreGetSize(void* block, BOOL) override { return block; }
    STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
    STDMETHODIMP_(void*) PreDidAlloc(void* block, BOOL) override { return block; }
    STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int actual) override { return actual; }
    STDMETHODIMP_(void) PreHeapMinimize() override {}
    STDMETHODIMP_(void) PostHeapMinimize() override {}

private:
    bool isNew_ = false;
};

BOOL CALLBACK countChild(HWND, LPARAM parameter)
{
    ++*reinterpret_cast<long*>(parameter);
    return TRUE;
}

BOOL CALLBACK countWithChildren(HWND window, LPARAM parameter)
{
    ++*reinterpret_cast<long*>(parameter);
    EnumChildWindows(window, countChild, parameter);
    return TRUE;
}

long windows()
{
    long number = 0;
    EnumThreadWindows(GetCurrentThreadId(), countWithChildren, reinterpret_cast<LPARAM>(&number));
    for (HWND window = FindWindowExW(HWND_MESSAGE, nullptr, nullptr, nullptr); window;
         window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr))
        number += GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId();
    return number;
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const Living& living)
{
    return stream << living.windows << " windows, " << living.handles << " handles, " << living.libraryBlocks
                  << " blocks of the library, " << living.heapBlocks << " heap blocks, " << living.taskBlocks
                  << " strings and task blocks, " << (living.objects ? "objects" : "no objects");
}

LeakWatch& LeakWatch::instance()
{
    static auto* const watch = new LeakWatch;
    return *watch;
}

LeakWatch::LeakWatch()
{
    // That is decided when the program starts.
    if (GetEnvironmentVariableW(L"OANOCACHE", nullptr, 0) == 0)
        throw std::runtime_error("run this with OANOCACHE=1 in the environment");
    count<"CreateCompatibleDC", decltype(CreateCompatibleDC), Effect::makes>();
    count<"CreateCompatibleBitmap", decltype(CreateCompatibleBitmap), Effect::makes>();
    count<"CreateFontIndirectW", decltype(CreateFontIndirectW), Effect::makes>();
    count<"CreateSolidBrush", decltype(CreateSolidBrush), Effect::makes>();
    count<"CreateRectRgn", decltype(CreateRectRgn), Effect::makes>();
    count<"CreateRectRgnIndirect", decltype(CreateRectRgnIndirect), Effect::makes>();
    count<"CreateAcceleratorTableW", decltype(CreateAcceleratorTableW), Effect::makes>();
    count<"CreateActCtxW", decltype(CreateActCtxW), Effect::makes>();
    count<"GetDC", decltype(GetDC), Effect::makes>();
    count<"DeleteDC", decltype(DeleteDC), Effect::ends>();
    count<"DeleteObject", decltype(DeleteObject), Effect::ends>();
    count<"DestroyAcceleratorTable", decltype(DestroyAcceleratorTable), Effect::ends>();
    count<"ReleaseActCtx", decltype(ReleaseActCtx), Effect::ends>();
    count<"ReleaseDC", decltype(ReleaseDC), Effect::ends>();
    count<"SetWindowRgn", decltype(SetWindowRgn), Effect::givesAway>();
    countBlocks("malloc", Blocks::originalMalloc, &Blocks::allocate);
    countBlocks("calloc", Blocks::originalCalloc, &Blocks::allocateCleared);
    countBlocks("realloc", Blocks::originalRealloc, &Blocks::reallocate);
    countBlocks("free", Blocks::originalFree, &Blocks::release);
    HeapBlocks::watch();
    require(CoRegisterMallocSpy(new MallocSpy));
    // One implementation of the platform sets its own records up with the first block only.
    CoTaskMemFree(CoTaskMemAlloc(1));
}

Living LeakWatch::living()
{
    SetErrorInfo(0, nullptr);
    HeapBlocks::watch();
    Living now;
    now.objects = canUnload() != S_OK;
    now.windows = windows();
    now.handles = handles;
    now.libraryBlocks = libraryBlocks;
    now.taskBlocks = taskBlocks;
    now.heapBlocks = HeapBlocks::number();
    return now;
}

} // namespace korvane::test
