// What a DLL of ours takes in place of parts of the compiler's static runtime, linked into the DLL itself so that
// the runtime's own parts stay out. Together they would be a third of the DLL's code.
#ifdef __MINGW32__

#include "framework/com/Failure.h"

#include <cstdlib>
#include <functional>
#include <new>

#include <pthread.h>

// NOLINTBEGIN(bugprone-reserved-identifier): these are the names under which the runtime looks for its own parts

namespace __gnu_cxx
{

[[noreturn]] void __verbose_terminate_handler();

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

extern "C"
{

int __real_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes);
int __wrap_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes);

/// Linked in between the runtime and the threads library. A mutex there takes its memory on its first use, and that of
/// the runtime's reserve for exceptions is first used when memory is short: so it is used at once.
int __wrap_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes)
{
    const int result = __real_pthread_mutex_init(mutex, attributes);
    if (result == 0 && pthread_mutex_lock(mutex) == 0)
        pthread_mutex_unlock(mutex);
    return result;
}

} // extern "C"

// NOLINTEND(bugprone-reserved-identifier)

#endif
