#include "framework/com/Boundary.h"

#include <new>

#ifdef __MINGW32__
#include <cxxabi.h>
#endif

namespace korvane
{

void prepareForFailures() noexcept
{
#ifdef __MINGW32__
    [[maybe_unused]] const void* volatile made =
        abi::__cxa_get_globals(); // volatile, lest the call be left out
    // The process's first exception has the runtime set up what all later ones find.
    [[maybe_unused]] static const bool thrown = [] {
        try
        {
            throw std::bad_alloc();
        }
        catch (const std::bad_alloc&)
        {
            return true;
        }
    }();
#endif
}

Failure currentFailure() noexcept
{
    try
    {
        throw;
    }
    catch (const Failure& failure)
    {
        return failure;
    }
    catch (const std::bad_alloc&)
    {
        return Failure(E_OUTOFMEMORY);
    }
    catch (...)
    {
        return Failure(E_UNEXPECTED);
    }
}

} // namespace korvane
