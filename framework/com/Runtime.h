// What the compiler's static runtime keeps for a DLL of ours, and would leave behind.
#pragma once

namespace korvane::runtime
{

/// A thread ends: gives back what its exceptions had set up.
void threadEnds() noexcept;

/// The module goes: gives back what the process's had.
void moduleGoes() noexcept;

} // namespace korvane::runtime
