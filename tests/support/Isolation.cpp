#include "tests/support/Isolation.h"

#include "framework/com/Platform.h"
#include "tests/support/Messages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>
#include <vector>

namespace korvane::test
{

namespace
{

BOOL CALLBACK note(HWND window, LPARAM parameter)
{
    wchar_t name[32];
    GetClassNameW(window, name, 32);
    if (std::wcscmp(name, L"IME") != 0) // the platform's own, which comes with a thread's first window
        reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(window);
    return TRUE;
}

std::vector<HWND> windows()
{
    std::vector<HWND> found;
    EnumThreadWindows(GetCurrentThreadId(), note, reinterpret_cast<LPARAM>(&found));
    std::sort(found.begin(), found.end());
    return found;
}

HANDLE activationContext()
{
    HANDLE current = nullptr;
    GetCurrentActCtx(&current);
    if (current)
        ReleaseActCtx(current);
    return current;
}

bool anyKeyIsDown()
{
    BYTE keys[256]{};
    GetKeyboardState(keys);
    return std::any_of(std::begin(keys), std::end(keys), [](BYTE key) { return (key & 0x80) != 0; });
}

class NothingIsLeft final : public testing::EmptyTestEventListener
{
public:
    explicit NothingIsLeft(bool (*libraryIsIdle)()) : libraryIsIdle_(libraryIsIdle) {}

private:
    void OnTestStart(const testing::TestInfo&) override
    {
        windows_ = windows();
        context_ = activationContext();
    }

    void OnTestEnd(const testing::TestInfo&) override
    {
        SetErrorInfo(0, nullptr); // calls that were to fail leave one
        pumpMessages();
        EXPECT_TRUE(libraryIsIdle_()) << "an object of the library is still alive";
        EXPECT_EQ(windows(), windows_) << "a window is left";
        EXPECT_EQ(activationContext(), context_) << "an activation context is left";
        EXPECT_EQ(GetCapture(), nullptr) << "a window still has the mouse";
        EXPECT_FALSE(anyKeyIsDown()) << "a key is still held down";
    }

    bool (*libraryIsIdle_)();
    std::vector<HWND> windows_;
    HANDLE context_ = nullptr;
};

} // namespace

int runTests(int count, char** arguments, bool (*libraryIsIdle)())
{
    testing::InitGoogleTest(&count, arguments);
    if (FAILED(OleInitialize(nullptr)))
        return EXIT_FAILURE;
    testing::UnitTest::GetInstance()->listeners().Append(new NothingIsLeft(libraryIsIdle));
    const int result = RUN_ALL_TESTS();
    OleUninitialize();
    return result;
}

} // namespace korvane::test
