// What a DLL of ours takes in place of parts of the compiler's static runtime, linked into the DLL itself so that
// the runtime's own parts stay out. Together they would be a third of the DLL's code.
#include "framework/com/Runtime.h"

#ifdef __MINGW32__

#include "framework/com/Failure.h"

#include <cstdlib>
#include <exception>
#include <functional>
#include <new>

#include <pthread.h>

// NOLINTBEGIN(bugprone-reserved-identifier): these are the names under which the runtime looks for its own parts

namespace __gnu_cxx
{

void __freeres(); // frees the reserve for exceptions; declared nowhere

/// The runtime's handler prints the type of an exception that nobody catches, and brings a demangler and formatted
/// output along for a text that a program with windows never shows.
void __verbose_terminate_handler()
{
    std::abort();
}

} // namespace __gnu_cxx

namespace std
{

// The exceptions of the standard library's containers. Each ends at the boundary, where their texts, and with
// them the runtime's second set of strings, would be dropped anyway.

void __throw_bad_alloc()
{
    throw bad_alloc();
}

void __throw_bad_array_new_length()
{
    throw bad_alloc();
}

void __throw_length_error(const char*)
{
    throw bad_alloc();
}

void __throw_logic_error(const char*)
{
    throw korvane::Failure(E_UNEXPECTED);
}

void __throw_out_of_range(const char*)
{
    throw korvane::Failure(E_UNEXPECTED);
}

void __throw_out_of_range_fmt(const char*, ...)
{
    throw korvane::Failure(E_UNEXPECTED);
}

void __throw_bad_function_call()
{
    throw korvane::Failure(E_UNEXPECTED);
}

} // namespace std

namespace
{

/// What the C++ ABI keeps of a thread's exceptions.
struct ThreadsExceptions
{
    void* caught;
    unsigned int uncaught;
};

/// The runtime's own thread-local storage sets up a good dozen of blocks that it never frees. Without a destructor: the
/// last exceptions may come after all destructors.
const DWORD slot = TlsAlloc();

static_assert(sizeof(pthread_mutex_t) == sizeof(SRWLOCK));

/// What stands in a mutex. One that is initialised statically is marked as such until it is first locked.
SRWLOCK* lockOf(pthread_mutex_t* mutex) noexcept
{
    InterlockedCompareExchangePointer(reinterpret_cast<void**>(mutex), nullptr,
                                      reinterpret_cast<void*>(PTHREAD_MUTEX_INITIALIZER));
    return reinterpret_cast<SRWLOCK*>(mutex);
}

} // namespace

extern "C"
{

ThreadsExceptions* __cxa_get_globals_fast() noexcept;
ThreadsExceptions* __cxa_get_globals() noexcept;

ThreadsExceptions* __cxa_get_globals_fast() noexcept
{
    return static_cast<ThreadsExceptions*>(TlsGetValue(slot));
}

ThreadsExceptions* __cxa_get_globals() noexcept
{
    if (auto* existing = __cxa_get_globals_fast())
        return existing;
    // Plain memory: an allocation that throws would come back here.
    auto* const made = static_cast<ThreadsExceptions*>(
        std::calloc(1, sizeof(ThreadsExceptions))); // NOLINT(cppcoreguidelines-no-malloc)
    if (!made || !TlsSetValue(slot, made))
        std::abort();
    return made;
}

// Linked in between the runtime and the threads library: what the runtime locks, and does once, without the memory that
// the library would take, on its first use when memory is short already, and never give back.

int __wrap_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes);
int __wrap_pthread_mutex_destroy(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex);
int __wrap_pthread_once(pthread_once_t* once, void (*initialize)());

int __wrap_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t*)
{
    InitializeSRWLock(lockOf(mutex));
    return 0;
}

int __wrap_pthread_mutex_destroy(pthread_mutex_t*)
{
    return 0;
}

int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex)
{
    AcquireSRWLockExclusive(lockOf(mutex));
    return 0;
}

int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex)
{
    ReleaseSRWLockExclusive(lockOf(mutex));
    return 0;
}

/// The module raises its first exception itself, while it is loaded: there is no other thread yet.
int __wrap_pthread_once(pthread_once_t* once, void (*initialize)())
{
    if (*once == PTHREAD_ONCE_INIT)
    {
        *once = PTHREAD_ONCE_INIT + 1;
        initialize();
    }
    return 0;
}

} // extern "C"

// NOLINTEND(bugprone-reserved-identifier)

namespace korvane::runtime
{

void threadEnds() noexcept
{
    std::free(TlsGetValue(slot)); // NOLINT(cppcoreguidelines-no-malloc)
    TlsSetValue(slot, nullptr);
}

void moduleGoes() noexcept
{
    __gnu_cxx::__freeres();
    threadEnds();
    TlsFree(slot);
}

} // namespace korvane::runtime

#else

void korvane::runtime::threadEnds() noexcept {}
void korvane::runtime::moduleGoes() noexcept {}

#endif
