// The runtime's handler for an exception that nobody catches prints the exception's type, and brings a demangler
// and formatted output along for it: a sixth of the DLL, for a text that a program with windows never shows.
#ifdef __MINGW32__

#include <cstdlib>

namespace __gnu_cxx // NOLINT(bugprone-reserved-identifier): the name under which the runtime looks for its handler
{

[[noreturn]] void __verbose_terminate_handler();

void __verbose_terminate_handler() // NOLINT(bugprone-reserved-identifier)
{
    std::abort();
}

} // namespace __gnu_cxx

#endif
