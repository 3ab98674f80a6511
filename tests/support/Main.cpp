#include "tests/support/Isolation.h"
#include "tests/support/Library.h"

#include <cstdlib>

int main(int count, char** arguments)
{
    using namespace korvane::test;
    return library() ? runTests(count, arguments, [] { return canUnload() == S_OK; }) : EXIT_FAILURE;
}
