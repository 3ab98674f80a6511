// The checks for leaks are worth what they notice: one thing left behind is one thing told.
#include "tests/support/Allocation.h"
#include "tests/support/Leaks.h"
#include "tests/support/Library.h"

#include <KorvaneDlg.h>
#include <KorvaneLib.h>

#include <gtest/gtest.h>

#include <vector>

namespace korvane::test
{

namespace
{

constexpr int rounds = 60;

class LeakCheckTests : public testing::Test
{
protected:
    void SetUp() override
    {
        // A thread's first use of the library brings blocks along that stay with the thread.
        create<IAppCommand>(__uuidof(::EditGroups));
        // A thread's first window brings windows of the platform along.
        first =
            CreateWindowExW(0, L"Static", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
        watch.living();
        before = watch.living();
    }

    /// A function as the library calls it.
    template <class Function> static Function* imported(const char* name)
    {
        return reinterpret_cast<Function*>(*importSlot(library(), name));
    }

    void TearDown() override
    {
        Living after = watch.living();
        EXPECT_EQ(after.windows, before.windows);
        EXPECT_EQ(after.handles, before.handles);
        EXPECT_EQ(after.libraryBlocks, before.libraryBlocks);
        EXPECT_EQ(after.taskBlocks, before.taskBlocks);
        EXPECT_FALSE(after.objects);
        DestroyWindow(first);
    }

    LeakWatch& watch = LeakWatch::instance();
    Living before;
    HWND first = nullptr;
};

} // namespace

TEST_F(LeakCheckTests, NothingIsToldOfNothing)
{
    EXPECT_EQ(watch.living(), before);
}

TEST_F(LeakCheckTests, OneWindowIsTold)
{
    for (const HWND parent : {static_cast<HWND>(nullptr), HWND_MESSAGE})
    {
        const HWND left = CreateWindowExW(0, L"Static", nullptr, parent ? 0 : WS_POPUP, 0, 0, 0, 0, parent,
                                          nullptr, nullptr, nullptr);
        EXPECT_EQ(watch.living().windows, before.windows + 1);
        DestroyWindow(left);
    }
}

TEST_F(LeakCheckTests, OneChildWindowIsTold)
{
    const HWND parent =
        CreateWindowExW(0, L"Static", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    CreateWindowExW(0, L"Static", nullptr, WS_CHILD, 0, 0, 0, 0, parent, nullptr, nullptr, nullptr);
    EXPECT_EQ(watch.living().windows, before.windows + 2);
    DestroyWindow(parent);
}

TEST_F(LeakCheckTests, OneDeviceContextIsTold)
{
    const HDC left = imported<decltype(CreateCompatibleDC)>("CreateCompatibleDC")(nullptr);
    EXPECT_EQ(watch.living().handles, before.handles + 1);
    imported<decltype(DeleteDC)>("DeleteDC")(left);
}

TEST_F(LeakCheckTests, OneRegionIsToldUntilAWindowTakesIt)
{
    const RECT place{0, 0, 5, 5};
    const HRGN left = imported<decltype(CreateRectRgnIndirect)>("CreateRectRgnIndirect")(&place);
    EXPECT_EQ(watch.living().handles, before.handles + 1);
    const HWND window =
        CreateWindowExW(0, L"Static", nullptr, WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    imported<decltype(SetWindowRgn)>("SetWindowRgn")(window, left, FALSE);
    EXPECT_EQ(watch.living().handles, before.handles);
    DestroyWindow(window);
}

TEST_F(LeakCheckTests, OneKeyTableIsTold)
{
    ACCEL key{FVIRTKEY, 'A', 1};
    const HACCEL left = imported<decltype(CreateAcceleratorTableW)>("CreateAcceleratorTableW")(&key, 1);
    EXPECT_EQ(watch.living().handles, before.handles + 1);
    imported<decltype(DestroyAcceleratorTable)>("DestroyAcceleratorTable")(left);
}

TEST_F(LeakCheckTests, OneBlockOfTheLibraryIsTold)
{
    void* const left = imported<decltype(std::malloc)>("malloc")(24);
    EXPECT_EQ(watch.living().libraryBlocks, before.libraryBlocks + 1);
    imported<decltype(std::free)>("free")(left);
}

TEST_F(LeakCheckTests, OneHeapBlockIsTold)
{
    void* const left = HeapAlloc(GetProcessHeap(), 0, 50000);
    EXPECT_EQ(watch.living().heapBlocks, before.heapBlocks + 1);
    HeapFree(GetProcessHeap(), 0, left);
}

TEST_F(LeakCheckTests, EverySmallHeapBlockIsTold)
{
    std::vector<void*> left;
    left.reserve(rounds);
    const long blocks = watch.living().heapBlocks;
    for (int round = 0; round < rounds; ++round)
        left.push_back(HeapAlloc(GetProcessHeap(), 0, 24));
    EXPECT_EQ(watch.living().heapBlocks, blocks + rounds);
    for (void* block : left)
        HeapFree(GetProcessHeap(), 0, block);
}

TEST_F(LeakCheckTests, OneStringIsTold)
{
    const BSTR left = SysAllocString(L"left");
    EXPECT_EQ(watch.living().taskBlocks, before.taskBlocks + 1);
    SysFreeString(left);
}

TEST_F(LeakCheckTests, OneTaskBlockIsTold)
{
    void* const left = CoTaskMemAlloc(24);
    EXPECT_EQ(watch.living().taskBlocks, before.taskBlocks + 1);
    CoTaskMemFree(left);
}

TEST_F(LeakCheckTests, OneObjectIsTold)
{
    const auto left = create<IAppCommand>(__uuidof(::EditGroups));
    const Living now = watch.living();
    EXPECT_TRUE(now.objects);
    EXPECT_GT(now.libraryBlocks, before.libraryBlocks);
}

} // namespace korvane::test
