#include "tests/demo/datalayer/ChildProcess.h"

#include <gtest/gtest.h>

int wmain(int count, wchar_t** arguments)
{
    if (count > 1 && std::wstring(arguments[1]) == L"--child")
        return korvane::store::test::ChildProcess::run({arguments + 2, arguments + count});
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
