#include "tests/support/LeakCycles.h"

#include "demo/host/ControlSite.h"
#include "tests/support/Library.h"
#include "tests/support/ModuleControls.h"

#include <gtest/gtest.h>

namespace korvane::test
{

namespace
{

constexpr int warmUp = 10;

/// What the platform's own controls and fonts leave behind in its heap.
double heapBlocksOfThePlatform(int rounds, const std::vector<std::wstring>& classes)
{
    auto& watch = LeakWatch::instance();
    long before = 0;
    for (int round = 0; round < rounds; ++round)
    {
        if (round == warmUp)
            before = watch.living().heapBlocks;
        const HWND parent = CreateWindowExW(0, L"Static", nullptr, WS_POPUP | WS_VISIBLE, 0, 0, 300, 200,
                                            nullptr, nullptr, nullptr, nullptr);
        // The one that the layout is designed in, and the container's.
        const ComPtr<IFont> fonts[] = {host::makeFont(L"MS Shell Dlg", 8).as<IFont>(),
                                       host::makeFont(L"MS Shell Dlg", 8).as<IFont>()};
        HFONT handle = nullptr;
        for (const auto& font : fonts)
        {
            call(font, &IFont::SetRatio, 96L, 2540L);
            call(font, &IFont::get_hFont, &handle);
        }
        const ModuleControls controls(folderOfTests() + L"\\KorvaneDlg.dll");
        for (const std::wstring& windowClass : classes)
        {
            const HWND control = CreateWindowExW(0, windowClass.c_str(), L"x", WS_CHILD | WS_VISIBLE, 0, 0,
                                                 80, 20, parent, nullptr, nullptr, nullptr);
            // One implementation of the platform keeps a block for each label that is given a font.
            SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(handle), FALSE);
        }
        DestroyWindow(parent);
    }
    return static_cast<double>(watch.living().heapBlocks - before);
}

} // namespace

void expectNothingLeftBehind(int rounds, const std::vector<std::wstring>& controls,
                             const std::function<void(int round)>& use)
{
    const double ofThePlatform = heapBlocksOfThePlatform(rounds, controls);
    auto& watch = LeakWatch::instance();
    Living before;
    for (int round = 0; round < rounds; ++round)
    {
        if (round == warmUp)
            before = watch.living();
        ASSERT_NO_FATAL_FAILURE(use(round)) << "round " << round;
    }
    Living after = watch.living();
    // Blocks of the library are counted exactly, below; the heap is shared with the platform.
    const auto left = static_cast<double>(after.heapBlocks - before.heapBlocks);
    testing::Test::RecordProperty("heapBlocks", static_cast<int>(left));
    testing::Test::RecordProperty("heapBlocksOfThePlatform", static_cast<int>(ofThePlatform));
    EXPECT_LE(left, ofThePlatform + 20);
    after.heapBlocks = before.heapBlocks;
    EXPECT_EQ(after, before);
}

} // namespace korvane::test
