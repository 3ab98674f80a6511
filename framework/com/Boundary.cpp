#include "framework/com/Boundary.h"

#include <new>

namespace korvane
{

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
