// What is alive: windows, handles, heap blocks, task memory and objects of the library, as numbers to compare.
#pragma once

#include "framework/com/Platform.h"

#include <iosfwd>

namespace korvane::test
{

/// How many there are.
struct Living
{
    long windows = 0;       ///< of this thread, with children and message-only windows
    long handles = 0;       ///< made and not destroyed by the library: GDI objects, DCs, key tables, contexts
    long libraryBlocks = 0; ///< allocated and not freed by the library's own C++ code
    long heapBlocks = 0;    ///< taken from the heaps of the process by all its modules and not given back
    long taskBlocks = 0;    ///< strings of OLE Automation and task memory
    bool objects = false;   ///< any object of the library

    friend bool operator==(const Living&, const Living&) = default;
};

std::ostream& operator<<(std::ostream& stream, const Living& living);

/// Watches the library from its first use on; there is one watch in a program, and it stays.
class LeakWatch
{
public:
    /// Throws where the platform would keep strings for later use instead of freeing them.
    static LeakWatch& instance();
    LeakWatch(const LeakWatch&) = delete;
    LeakWatch& operator=(const LeakWatch&) = delete;

    /// What is alive now, when the library has let go of all that it keeps for later use.
    Living living();

private:
    LeakWatch();
};

} // namespace korvane::test
