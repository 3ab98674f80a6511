// The keys of a control, before the control sees them.
#include "framework/control/Keys.h"
#include "tests/framework/ControlDialog.h"

#include <commctrl.h>
#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// A control with two tabs, as their captions are all that matters.
class Tabs final : public Control
{
public:
    using Control::Control;

    std::wstring captions[2] = {L"&Message", L"&Info"};
    std::vector<std::size_t> pressed;

    const std::wstring* accessCaption(std::size_t index) const noexcept override
    {
        return index < 2 ? &captions[index] : nullptr;
    }
    bool accessKeyPressed(std::size_t index) override
    {
        pressed.push_back(index);
        return true;
    }

private:
    HWND createWindow(HWND parent, int id) override { return makeWindow(parent, id, L"Static", 0, 0); }
};

struct KeysLayout
{
    explicit KeysLayout(DialogWindow& dialog)
        : lstWatched{dialog, {.name = L"lstWatched", .place = {120, 120, 1500, 600}}},
          txtWatched{dialog, {.name = L"txtWatched", .place = {1800, 120, 1500, 315}}},
          txtPlain{dialog, {.name = L"txtPlain", .place = {1800, 500, 1500, 315}}},
          cmdApply{dialog, {.name = L"cmdApply", .place = {120, 900, 1500, 345}, .text = L"&Apply"}},
          tabs{dialog, {.name = L"tabs", .place = {1800, 900, 1500, 345}}}
    {
        lstWatched.onKeyDown = txtWatched.onKeyDown = [this](WORD key, DWORD modifiers) {
            keys.emplace_back(key, modifiers);
            return onKey && onKey(key, modifiers);
        };
        txtWatched.onKeyPress = [this](wchar_t character) {
            characters += character;
            return character == L'x';
        };
        cmdApply.onClick = [this] { ++applied; };
    }

    ListBox lstWatched;
    TextBox txtWatched;
    TextBox txtPlain;
    Button cmdApply;
    Tabs tabs;
    std::vector<std::pair<WORD, DWORD>> keys;
    std::function<bool(WORD, DWORD)> onKey;
    std::wstring characters;
    int applied = 0;
};

/// How often the platform opens the menu.
LRESULT CALLBACK countMenus(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR count)
{
    if (message != WM_SYSCOMMAND || (first & 0xFFF0) != SC_KEYMENU)
        return DefSubclassProc(window, message, first, second);
    ++*reinterpret_cast<int*>(count);
    return 0;
}

class KeysTests : public ControlTest<KeysLayout>
{
protected:
    void SetUp() override
    {
        ControlTest::SetUp();
        for (const wchar_t* text : {L"one", L"two", L"three"})
            layout().lstWatched.InsertItem(-1, text, 0);
        layout().lstWatched.setListIndex(1);
        layout().lstWatched.setFocus();
    }

    std::vector<std::pair<WORD, DWORD>> takeKeys() { return std::exchange(layout().keys, {}); }
};

} // namespace

TEST_F(KeysTests, AKeyThatIsNotTakenGoesToTheControl)
{
    container.press(VK_DOWN);
    EXPECT_THAT(takeKeys(), ElementsAre(std::pair(VK_DOWN, 0)));
    EXPECT_EQ(layout().lstWatched.ListIndex(), 2);
}

TEST_F(KeysTests, AKeyThatIsTakenDoesNot)
{
    layout().onKey = [](WORD, DWORD) { return true; };
    container.press(VK_DOWN);
    EXPECT_EQ(layout().lstWatched.ListIndex(), 1);
}

TEST_F(KeysTests, KeysComeWithWhatIsHeldDown)
{
    container.press(VK_F2, true);
    container.press(VK_HOME, false, false, true);
    EXPECT_THAT(takeKeys(), ElementsAre(std::pair(VK_F2, shiftKey), std::pair(VK_HOME, controlKey)));
    for (const WORD key : std::initializer_list<WORD>{VK_UP, VK_DOWN, VK_HOME, VK_END})
    {
        container.press(key, false, true);
        EXPECT_THAT(takeKeys(), ElementsAre(std::pair(key, altKey))) << key;
    }
}

TEST_F(KeysTests, TheCharacterOfAKeyThatIsTakenGoesWithIt)
{
    layout().txtWatched.setFocus();
    layout().onKey = [](WORD key, DWORD) { return key == 'A'; };
    container.press('A');
    container.press('B');
    EXPECT_EQ(layout().characters, L"b");
    EXPECT_EQ(layout().txtWatched.Text(), L"b");
    container.press('A', false, true); // is no access key any more
    EXPECT_EQ(layout().applied, 0);
    layout().onKey = nullptr;
    container.press('A', false, true);
    EXPECT_EQ(layout().applied, 1);
}

TEST_F(KeysTests, ACharacterThatIsTakenIsNotTyped)
{
    layout().txtWatched.setFocus();
    container.type(L"axb");
    EXPECT_EQ(layout().characters, L"axb");
    EXPECT_EQ(layout().txtWatched.Text(), L"ab");
}

TEST_F(KeysTests, AKeyThatIsTakenWithAltLeavesTheMenuClosed)
{
    int menus = 0;
    SetWindowSubclass(container.window(), &countMenus, 0, reinterpret_cast<DWORD_PTR>(&menus));
    const auto alone = [&](UINT message, LPARAM down) { SendMessageW(GetFocus(), message, VK_MENU, down); };
    layout().onKey = [](WORD key, DWORD) { return key == VK_DOWN; };
    alone(WM_SYSKEYDOWN, 0x20000001);
    SendMessageW(GetFocus(), WM_SYSKEYDOWN, VK_DOWN, 0x20000001);
    alone(WM_KEYUP, static_cast<LPARAM>(0xC0000001)); // Alt goes up first
    EXPECT_EQ(menus, 0);
    alone(WM_SYSKEYDOWN, 0x20000001);
    alone(WM_KEYUP, static_cast<LPARAM>(0xC0000001));
    EXPECT_EQ(menus, 1);
}

TEST_F(KeysTests, EachTabHasItsAccessKey)
{
    container.press('I', false, true);
    container.press('M', false, true);
    EXPECT_THAT(layout().tabs.pressed, ElementsAre(1, 0));
    layout().tabs.setEnabled(false);
    container.press('I', false, true);
    EXPECT_EQ(layout().tabs.pressed.size(), 2u);
}

TEST_F(KeysTests, KeysOfTheDialogAreLeftToIt)
{
    container.press(VK_TAB);
    EXPECT_EQ(GetFocus(), layout().txtWatched.window());
    container.press(VK_ESCAPE);
    EXPECT_THAT(container.done, ElementsAre(true));
    EXPECT_THAT(takeKeys(), IsEmpty());
}

TEST_F(KeysTests, AKeyWhoseHandlerFailsIsToldAndTaken)
{
    layout().onKey = [](WORD, DWORD) -> bool { throw Failure(E_FAIL, L"key", L"no"); };
    container.press(VK_DOWN);
    EXPECT_THAT(container.errors, ElementsAre(ErrorInfo{E_FAIL, L"key", L"no"}));
    EXPECT_EQ(layout().lstWatched.ListIndex(), 1);
}

TEST_F(KeysTests, AHandlerMayEndTheDialog)
{
    const HWND list = layout().lstWatched.window();
    for (const bool taken : {true, false})
    {
        layout().onKey = [this, taken](WORD, DWORD) {
            container.close();
            dialog.reset();
            return taken;
        };
        SendMessageW(GetFocus(), WM_KEYDOWN, VK_DOWN, 1);
        EXPECT_FALSE(IsWindow(list));
        if (!taken)
            break;
        dialog = make<ControlDialog<KeysLayout>>();
        SetUp();
    }
}

} // namespace korvane::test
