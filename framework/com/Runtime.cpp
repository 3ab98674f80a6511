// What a DLL of ours takes in place of parts of the compiler's static runtime, linked into the DLL itself so that
// the runtime's own parts stay out. Together they would be a third of the DLL's code.
#ifdef __MINGW32__

#include "framework/com/Failure.h"

#include <cstdlib>
#include <functional>
#include <new>

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

// NOLINTEND(bugprone-reserved-identifier)

#endif
