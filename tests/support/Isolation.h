// A program's tests in one process: each of them begins as if it were the only one.
#pragma once

namespace korvane::test
{

/// Runs the tests of the program and proves after each that it left nothing behind.
/// @param libraryIsIdle whether nothing of the library is alive; then the library also lets go of what it keeps for
/// later use.
int runTests(int count, char** arguments, bool (*libraryIsIdle)());

} // namespace korvane::test
