#include "demo/host/tour/User.h"

#include "framework/com/Boundary.h"

#include <gtest/gtest.h>

namespace korvane::host
{

namespace
{

bool isKey(const INPUT& input, WORD key, bool up)
{
    return input.type == INPUT_KEYBOARD && input.ki.wVk == key &&
           ((input.ki.dwFlags & KEYEVENTF_KEYUP) != 0) == up;
}

TEST(Keystrokes, PressAndReleaseEachKey)
{
    const auto inputs = keystrokesFor(L"a ");
    ASSERT_EQ(inputs.size(), 4U);
    EXPECT_TRUE(isKey(inputs[0], 'A', false));
    EXPECT_TRUE(isKey(inputs[1], 'A', true));
    EXPECT_TRUE(isKey(inputs[2], VK_SPACE, false));
    EXPECT_TRUE(isKey(inputs[3], VK_SPACE, true));
    EXPECT_NE(inputs[0].ki.wScan, 0);
}

TEST(Keystrokes, HoldShiftForACapital)
{
    const auto inputs = keystrokesFor(L"B");
    ASSERT_EQ(inputs.size(), 4U);
    EXPECT_TRUE(isKey(inputs[0], VK_SHIFT, false));
    EXPECT_TRUE(isKey(inputs[1], 'B', false));
    EXPECT_TRUE(isKey(inputs[2], 'B', true));
    EXPECT_TRUE(isKey(inputs[3], VK_SHIFT, true));
}

TEST(Keystrokes, SendACharacterThatNoKeyGives)
{
    const auto inputs = keystrokesFor(L"\x0434"); // a Cyrillic letter
    ASSERT_EQ(inputs.size(), 2U);
    EXPECT_EQ(inputs[0].ki.wScan, 0x0434);
    EXPECT_EQ(inputs[0].ki.dwFlags, static_cast<DWORD>(KEYEVENTF_UNICODE));
    EXPECT_EQ(inputs[1].ki.dwFlags, static_cast<DWORD>(KEYEVENTF_UNICODE | KEYEVENTF_KEYUP));
}

TEST(Keystrokes, AreNoneForNothing)
{
    EXPECT_TRUE(keystrokesFor(L"").empty());
}

TEST(Keys, AreToldByTheirNames)
{
    EXPECT_EQ(keysNamed(L"X"), (std::vector<WORD>{'X'}));
    EXPECT_EQ(keysNamed(L"Page Down"), (std::vector<WORD>{VK_NEXT}));
    EXPECT_EQ(keysNamed(L"Ctrl+Shift+M"), (std::vector<WORD>{VK_CONTROL, VK_SHIFT, 'M'}));
    for (const wchar_t* unknown : {L"", L"x", L"Ctrl+", L"+M", L"Any"})
        EXPECT_TRUE(attempt([&] { keysNamed(unknown); })) << unknown;
}

class UserTest : public testing::Test
{
protected:
    static bool isDown(int key) { return GetAsyncKeyState(key) < 0; }

    /// What the user does while the program takes none of its input.
    template <class Deed> static void fails(Deed&& deed) { EXPECT_TRUE(attempt(deed)); }

    bool taken = false;
    int rests = 0;
    User user{[this] {
                  if (!taken)
                      throw Failure(E_ABORT);
              },
              [this] { ++rests; }};
};

TEST_F(UserTest, HoldsAKeyDownOnlyOnceAllIsAtRest)
{
    taken = true;
    user.press(L"F20");
    user.type(L"all small");
    EXPECT_EQ(rests, 0);
    user.press(L"Ctrl+F20");
    EXPECT_EQ(rests, 1);
    user.type(L"One Capital And More");
    EXPECT_EQ(rests, 2) << "typing moves nothing";
    user.hold(L"Shift");
    EXPECT_EQ(rests, 3);
}

TEST_F(UserTest, LetsGoOfWhatADeedLeftDown)
{
    fails([&] { user.press(L"Shift+F20"); });
    fails([&] { user.pressButton({5, 5}); });
    EXPECT_TRUE(isDown(VK_SHIFT));
    EXPECT_TRUE(isDown(VK_LBUTTON));
    user.letGo();
    EXPECT_FALSE(isDown(VK_SHIFT));
    EXPECT_FALSE(isDown(VK_LBUTTON));
}

TEST_F(UserTest, KeepsHoldingWhatItHoldsUntilItIsReleased)
{
    taken = true;
    user.hold(L"Shift");
    user.press(L"F20");
    EXPECT_TRUE(isDown(VK_SHIFT));
    user.release(L"Shift");
    EXPECT_FALSE(isDown(VK_SHIFT));
}

TEST_F(UserTest, HoldsNothingAtItsEnd)
{
    {
        const User other([] {}, [] {});
        other.hold(L"Shift");
        EXPECT_TRUE(isDown(VK_SHIFT));
    }
    EXPECT_FALSE(isDown(VK_SHIFT));
}

} // namespace

} // namespace korvane::host
