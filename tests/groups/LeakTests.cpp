// A dialog that is opened a thousand times leaves nothing behind.
#include "framework/com/Variant.h"
#include "tests/support/Allocation.h"
#include "tests/support/Container.h"
#include "tests/support/LeakCycles.h"
#include "tests/support/RecordingData.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

constexpr int rounds = 1000;

class LeakTests : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(LeakWatch::seesEveryString()) << "run this with OANOCACHE=1 in the environment";
        for (long id = 1; id <= 12; ++id)
            groups.push_back({id, L"Group " + std::to_wstring(id), id});
    }

    /// Opens the dialog, fills it, types and clicks as the layout allows, and closes it through OK or Cancel.
    void useDialog(long operation, bool confirm)
    {
        RecordingData data;
        data.groups = groups;
        {
            Container container;
            const auto command = create<IAppCommand>(__uuidof(::EditGroups));
            call(command, &IAppCommand::put_Operation, operation);
            call(command, &IAppCommand::put_Operand, Bstr(L"Root").get(),
                 Variant(data.root.as<IDispatch>()).get());
            call(command, &IAppCommand::put_Operand, Bstr(L"GroupID").get(), Variant(4L).get());
            if (!container.show(__uuidof(::ctlEditGroups), command.get()))
                throw Failure(E_FAIL, L"dialog", L"not ready");
            container.site->activateUi();
            container.pump();
            CONTROLINFO info{};
            info.cb = sizeof info;
            call(container.dialog.as<IOleControl>(), &IOleControl::GetControlInfo, &info);
            if (operation != 1)
                clickItem(container.control(L"ListBox"), 2);
            if (operation != 2)
                container.type(L"abc");
            container.press(static_cast<WORD>(confirm ? VK_RETURN : VK_ESCAPE));
            ASSERT_THAT(container.done, testing::ElementsAre(!confirm));
            ASSERT_THAT(container.errors, testing::IsEmpty());
            container.close();
        }
        ASSERT_EQ(data.openScopes, 0);
        ASSERT_FALSE(data.hasSubscribers());
        ASSERT_EQ(references(data.root.get()), 1U);
    }

    static ULONG references(IUnknown* object)
    {
        object->AddRef();
        return object->Release();
    }

    void expectNothingLeftBehindWhen(bool confirm)
    {
        expectNothingLeftBehind(rounds, {L"Static", L"Static", L"Edit", L"ListBox", L"Button", L"Button"},
                                [&](int round) { useDialog(round % 3 + 1, confirm); });
    }

    std::vector<Group> groups;
};

/// Each check is worth what it notices: one thing left behind is one thing told.
class LeakCheckTests : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(LeakWatch::seesEveryString()) << "run this with OANOCACHE=1 in the environment";
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

TEST_F(LeakTests, AThousandCancelledDialogsLeaveNothingBehind)
{
    expectNothingLeftBehindWhen(false);
}

TEST_F(LeakTests, AThousandConfirmedDialogsLeaveNothingBehind)
{
    expectNothingLeftBehindWhen(true);
}

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

TEST_F(LeakCheckTests, ASmallHeapBlockPerRoundIsMoreThanTheTolerance)
{
    std::vector<void*> left;
    left.reserve(rounds);
    const long blocks = watch.living().heapBlocks;
    for (int round = 0; round < rounds; ++round)
        left.push_back(HeapAlloc(GetProcessHeap(), 0, 24));
    EXPECT_GT(watch.living().heapBlocks, blocks + 20);
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
