// The keyboard, between a dialog and the container that it stands in.
#include "tests/framework/ControlDialog.h"
#include "tests/support/Allocation.h"

#include <commctrl.h>
#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// Access keys on controls, on a label, and on what is hidden or disabled.
struct KeyboardLayout
{
    explicit KeyboardLayout(DialogWindow& on) : dialog(on)
    {
        cmdApply.onClick = [this] { ++applied; };
        cmdOff.onClick = cmdHidden.onClick = [this] { ++forbidden; };
        cmdOff.setEnabled(false);
        cmdHidden.setVisible(false);
    }

    int applied = 0;
    int forbidden = 0;

    DialogWindow& dialog;
    Label lblFirst{dialog, {.name = L"lblFirst", .place = {120, 120, 900, 240}, .text = L"&First"}};
    TextBox txtFirst{dialog, {.name = L"txtFirst", .place = {1200, 120, 1500, 315}}};
    Label lblList{dialog, {.name = L"lblList", .place = {120, 500, 900, 240}, .text = L"Tom && &Jerry"}};
    ListBox lstList{dialog, {.name = L"lstList", .place = {1200, 500, 1500, 600}}};
    Button cmdApply{dialog, {.name = L"cmdApply", .place = {2850, 120, 1200, 345}, .text = L"&Apply"}};
    Button cmdOff{dialog, {.name = L"cmdOff", .place = {2850, 480, 1200, 345}, .text = L"&Unable"}};
    Button cmdHidden{dialog, {.name = L"cmdHidden", .place = {2850, 840, 1200, 345}, .text = L"&Hidden"}};
};

/// In a language with letters of its own.
struct ForeignLayout
{
    explicit ForeignLayout(DialogWindow& on) : dialog(on)
    {
        cmdChange.onClick = [this] { ++changed; };
        cmdUndo.onClick = [this] { ++undone; };
        cmdOther.onClick = [this] { ++other; };
    }

    int other = 0;
    int changed = 0;
    int undone = 0;

    DialogWindow& dialog;
    TextBox txtName{dialog, {.name = L"txtName", .place = {120, 120, 1500, 315}}};
    Button cmdChange{dialog, {.name = L"cmdChange", .place = {120, 600, 1200, 345}, .text = L"&\u00C6ndre"}};
    Button cmdUndo{dialog, {.name = L"cmdUndo", .place = {1500, 600, 1200, 345}, .text = L"Fortr&\u00F8d"}};
    Button cmdOther{dialog, {.name = L"cmdOther", .place = {1500, 120, 1200, 345}, .text = L"&\u0160koda"}};
};

class ForeignKeyTests : public ControlTest<ForeignLayout>
{
protected:
    static MSG pressed(UINT message, WPARAM key, HWND window)
    {
        return {window, message, key, 0x20000001, 0, {}};
    }

    CONTROLINFO keys()
    {
        CONTROLINFO info{};
        info.cb = sizeof info;
        EXPECT_EQ(dialog->GetControlInfo(&info), S_OK);
        return info;
    }
};

/// A keyboard that has the letter AE on a key of its own.
SHORT WINAPI danishKeyOf(WCHAR character)
{
    return character == 0xE6 ? VK_OEM_3 : SHORT{-1};
}

/// A key, held down for this thread.
class HeldKey
{
public:
    explicit HeldKey(int key, bool held = true)
    {
        GetKeyboardState(former_);
        BYTE state[256];
        GetKeyboardState(state);
        state[key] = held ? 0x80 : 0;
        SetKeyboardState(state);
    }
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;
    ~HeldKey() { SetKeyboardState(former_); }

private:
    BYTE former_[256]{};
};

LRESULT CALLBACK noteUiState(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR,
                             DWORD_PTR changes)
{
    if (message == WM_CHANGEUISTATE)
        reinterpret_cast<std::vector<WPARAM>*>(changes)->push_back(first);
    return DefSubclassProc(window, message, first, second);
}

/// Counts how often it is told of other access keys.
class CountingSite final : public host::ControlSite
{
public:
    using ControlSite::ControlSite;

    int told = 0;

    STDMETHODIMP OnControlInfoChanged() override
    {
        ++told;
        return S_OK;
    }
};

class KeyboardTests : public ControlTest<KeyboardLayout>
{
protected:
    void SetUp() override
    {
        ControlTest::SetUp();
        neighbour = CreateWindowExW(0, L"Edit", nullptr, WS_CHILD | WS_VISIBLE | WS_TABSTOP, 400, 300, 60, 20,
                                    container.window(), nullptr, nullptr, nullptr);
    }

    HWND first() const { return layout().txtFirst.window(); }
    HWND last() const { return dialog->fraCommands.cmdCancel.window(); }
    HWND okButton() const { return dialog->fraCommands.cmdOk.window(); }

    /// Moves the focus as the dialog manager does.
    void focus(HWND control) const
    {
        SendMessageW(dialog->window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
        ASSERT_EQ(GetFocus(), control);
    }

    /// Lets the container take the focus on to the neighbour, and notes the direction.
    void letTabOut()
    {
        container.site->onTabOut = [this](bool backwards) {
            tabsOut.push_back(backwards);
            SetFocus(neighbour);
            return true;
        };
    }

    HRESULT translate(HWND window, UINT message, WPARAM key) const
    {
        const bool alt = message == WM_SYSCHAR || message == WM_SYSKEYDOWN;
        MSG translated{window, message, key, alt ? 0x20000001 : 1, 0, {}};
        return dialog->TranslateAccelerator(&translated);
    }

    HRESULT mnemonic(UINT message, WPARAM key) const
    {
        MSG pressed{neighbour, message, key, 0x20000001, 0, {}};
        const HRESULT result = dialog->OnMnemonic(&pressed);
        container.pump();
        return result;
    }

    void enterByTab(bool backwards)
    {
        SetFocus(neighbour);
        const HeldKey shift(VK_SHIFT, backwards);
        MSG tab{neighbour, WM_KEYDOWN, VK_TAB, 0, 0, {}};
        const RECT place{0, 0, container.site->extent().cx, container.site->extent().cy};
        EXPECT_EQ(
            dialog->DoVerb(OLEIVERB_UIACTIVATE, &tab, container.site.get(), 0, container.window(), &place),
            S_OK);
    }

    std::vector<char> accessKeys() const
    {
        CONTROLINFO info{};
        info.cb = sizeof info;
        EXPECT_EQ(dialog->GetControlInfo(&info), S_OK);
        EXPECT_EQ(info.dwFlags, static_cast<DWORD>(CTRLINFO_EATS_RETURN | CTRLINFO_EATS_ESCAPE));
        std::vector<ACCEL> table(
            static_cast<std::size_t>(info.hAccel ? CopyAcceleratorTableW(info.hAccel, nullptr, 0) : 0));
        EXPECT_EQ(table.size(), info.cAccel);
        if (!table.empty())
            CopyAcceleratorTableW(info.hAccel, table.data(), static_cast<int>(table.size()));
        std::vector<char> keys;
        for (const ACCEL& entry : table)
        {
            EXPECT_TRUE((entry.fVirt & FALT) != 0);
            keys.push_back(static_cast<char>(entry.key));
        }
        return keys;
    }

    HWND neighbour = nullptr;
    std::vector<bool> tabsOut;
};

} // namespace

TEST_F(KeyboardTests, TabAtTheLastControlLeavesTheDialog)
{
    letTabOut();
    focus(last());
    container.press(VK_TAB);
    EXPECT_THAT(tabsOut, ElementsAre(false));
    EXPECT_EQ(GetFocus(), neighbour);
}

TEST_F(KeyboardTests, ShiftTabAtTheFirstControlLeavesTheDialog)
{
    letTabOut();
    focus(first());
    container.press(VK_TAB, true);
    EXPECT_THAT(tabsOut, ElementsAre(true));
    EXPECT_EQ(GetFocus(), neighbour);
}

TEST_F(KeyboardTests, TabWithinTheDialogIsTheDialogsOwn)
{
    letTabOut();
    focus(first());
    const HWND order[] = {layout().lstList.window(), layout().cmdApply.window(), okButton(), last()};
    for (const HWND next : order) // what is hidden or disabled is passed over
    {
        container.press(VK_TAB);
        EXPECT_EQ(GetFocus(), next);
    }
    container.press(VK_TAB, true);
    EXPECT_EQ(GetFocus(), okButton());
    EXPECT_THAT(tabsOut, IsEmpty());
}

TEST_F(KeyboardTests, TabGoesRoundWhenTheContainerDeclines)
{
    int asked = 0;
    container.site->onTabOut = [&](bool) {
        ++asked;
        return false;
    };
    focus(last());
    container.press(VK_TAB);
    EXPECT_EQ(GetFocus(), first());
    container.press(VK_TAB, true);
    EXPECT_EQ(GetFocus(), last());
    EXPECT_EQ(asked, 2);
}

TEST_F(KeyboardTests, WhoComesByTabMeetsTheFirstControl)
{
    enterByTab(false);
    EXPECT_EQ(GetFocus(), first());
    EXPECT_TRUE(container.site->isUiActive());
}

TEST_F(KeyboardTests, WhoComesByShiftTabMeetsTheLastControl)
{
    enterByTab(true);
    EXPECT_EQ(GetFocus(), last()) << testing::PrintToString(Container::text(GetFocus()));
}

TEST_F(KeyboardTests, WhoComesByTabAgainStartsAnewEachTime)
{
    letTabOut();
    focus(last());
    container.press(VK_TAB);
    enterByTab(false);
    EXPECT_EQ(GetFocus(), first());
    container.press(VK_TAB, true);
    enterByTab(true);
    EXPECT_EQ(GetFocus(), last());
    EXPECT_THAT(tabsOut, ElementsAre(false, true));
}

TEST_F(KeyboardTests, WhoComesBackFromElsewhereGoesOnWhereHeWas)
{
    SetWindowTextW(first(), L"abc");
    focus(first());
    SendMessageW(first(), EM_SETSEL, 1, 2);
    const auto expectThere = [&] {
        EXPECT_EQ(GetFocus(), first());
        EXPECT_EQ(SendMessageW(first(), EM_GETSEL, 0, 0), MAKELRESULT(1, 2));
    };
    SetFocus(neighbour);
    SetFocus(dialog->window());
    expectThere();
    SetFocus(neighbour);
    container.site->activateUi();
    expectThere();
    SetFocus(neighbour);
    dialog->UIDeactivate();
    SetFocus(dialog->window());
    expectThere();

    focus(okButton());
    SetFocus(neighbour);
    SetFocus(dialog->window());
    EXPECT_EQ(GetFocus(), okButton());
    enterByTab(false);
    EXPECT_EQ(GetFocus(), first());
}

TEST_F(KeyboardTests, WhoCannotGoOnWhereHeWasBeginsAtTheFirstControl)
{
    const auto comeBack = [&](const std::function<void()>& meanwhile) {
        focus(layout().lstList.window());
        SetFocus(neighbour);
        meanwhile();
        SetFocus(dialog->window());
        EXPECT_EQ(GetFocus(), first());
    };
    comeBack([&] { layout().lstList.setEnabled(false); });
    layout().lstList.setEnabled(true);
    comeBack([&] { layout().lstList.setVisible(false); });
    layout().lstList.setVisible(true);
    comeBack([&] { container.ready(); });
    letTabOut();
    focus(last());
    container.press(VK_TAB);
    SetFocus(dialog->window()); // as some containers do at the next Tab
    EXPECT_EQ(GetFocus(), first());
}

TEST_F(KeyboardTests, AltShowsTheAccessKeys)
{
    // Wine keeps no such state: that the window is told of it is all that can be seen there.
    std::vector<WPARAM> changes;
    SetWindowSubclass(dialog->window(), &noteUiState, 0, reinterpret_cast<DWORD_PTR>(&changes));
    EXPECT_EQ(translate(first(), WM_SYSKEYDOWN, VK_MENU), S_FALSE);
    EXPECT_THAT(changes, ElementsAre(MAKEWPARAM(UIS_CLEAR, UISF_HIDEACCEL | UISF_HIDEFOCUS)));
}

TEST_F(KeyboardTests, CtrlTabIsLeftToTheContainerWhereThereAreNoTabs)
{
    const HeldKey control(VK_CONTROL);
    EXPECT_EQ(translate(first(), WM_KEYDOWN, VK_TAB), S_FALSE);
    EXPECT_EQ(GetFocus(), first());
}

TEST_F(KeyboardTests, AnAccessKeyFromOutsideOfALabelFocusesWhatItNames)
{
    for (const auto& [message, key] : {std::pair{WM_SYSCHAR, 'f'}, std::pair{WM_SYSKEYDOWN, 'F'}})
    {
        SetFocus(neighbour);
        EXPECT_EQ(mnemonic(static_cast<UINT>(message), static_cast<WPARAM>(key)), S_OK);
        EXPECT_EQ(GetFocus(), first());
    }
    SetFocus(neighbour);
    mnemonic(WM_SYSCHAR, 'j');
    EXPECT_EQ(GetFocus(), layout().lstList.window());
}

TEST_F(KeyboardTests, AnAccessKeyFromOutsideClicksAButton)
{
    SetFocus(neighbour);
    EXPECT_EQ(mnemonic(WM_SYSCHAR, 'a'), S_OK);
    EXPECT_EQ(layout().applied, 1);
    SetFocus(neighbour);
    EXPECT_EQ(mnemonic(WM_SYSKEYDOWN, 'A'), S_OK);
    EXPECT_EQ(layout().applied, 2);
}

TEST_F(KeyboardTests, AnAccessKeyFromOutsideDoesNothingWhereItIsNotInForce)
{
    mnemonic(WM_SYSCHAR, 'u');
    mnemonic(WM_SYSCHAR, 'h');
    EXPECT_EQ(layout().forbidden, 0);
    EXPECT_EQ(dialog->OnMnemonic(nullptr), E_POINTER);
}

TEST_F(KeyboardTests, TheContainerIsToldTheAccessKeysInForce)
{
    EXPECT_THAT(accessKeys(), UnorderedElementsAre('F', 'J', 'A'));
    layout().cmdOff.setEnabled(true);
    EXPECT_THAT(accessKeys(), UnorderedElementsAre('F', 'J', 'A', 'U'));
    layout().cmdHidden.setVisible(true);
    layout().cmdApply.setVisible(false);
    EXPECT_THAT(accessKeys(), UnorderedElementsAre('F', 'J', 'U', 'H'));
    EXPECT_EQ(dialog->GetControlInfo(nullptr), E_POINTER);
}

TEST_F(KeyboardTests, TheContainerIsToldWhenTheAccessKeysChange)
{
    container.close();
    const auto site = make<CountingSite>(container.window());
    container.site = ComPtr<host::ControlSite>(site.get());
    dialog = make<ControlDialog<KeyboardLayout>>();
    SetUp();
    EXPECT_EQ(site->told, 1);
    layout().cmdApply.onClick = [&] {
        layout().cmdHidden.setVisible(true);
        layout().cmdOff.setEnabled(true);
    };
    Container::click(layout().cmdApply.window());
    EXPECT_EQ(site->told, 2);
    Container::click(layout().cmdApply.window());
    layout().cmdApply.onClick = [&] { layout().lstList.setVisible(false); };
    Container::click(layout().cmdApply.window()); // the label still has the key
    EXPECT_EQ(site->told, 2);
}

TEST_F(KeyboardTests, AccessKeysWorkWithinTheDialog)
{
    focus(last());
    container.press('F', false, true);
    EXPECT_EQ(GetFocus(), first());
    container.press('A', false, true);
    EXPECT_EQ(layout().applied, 1);
}

TEST_F(KeyboardTests, HiddenAndDisabledControlsHaveNoAccessKey)
{
    for (const wchar_t key : {L'u', L'h', L't'}) // the ampersand that is doubled is no access key either
        EXPECT_EQ(translate(first(), WM_SYSCHAR, key), S_FALSE) << static_cast<char>(key);
    EXPECT_EQ(layout().forbidden, 0);
    EXPECT_EQ(GetFocus(), first());
}

TEST_F(KeyboardTests, ALetterAloneIsAnAccessKeyOnlyWhereNothingIsTyped)
{
    focus(first());
    container.type(L"a");
    EXPECT_EQ(layout().applied, 0);
    EXPECT_EQ(Container::text(first()), L"a");
    focus(last());
    container.type(L"a");
    EXPECT_EQ(layout().applied, 1);
}

TEST_F(ForeignKeyTests, AnAccessKeyOfAnyAlphabetWorksWithinTheDialog)
{
    for (const wchar_t key : {L'\u00E6', L'\u00C6'})
    {
        MSG message = pressed(WM_SYSCHAR, key, layout().txtName.window());
        EXPECT_EQ(dialog->TranslateAccelerator(&message), S_OK);
    }
    MSG message = pressed(WM_SYSCHAR, L'\u00D8', layout().txtName.window());
    EXPECT_EQ(dialog->TranslateAccelerator(&message), S_OK);
    container.pump();
    EXPECT_EQ(layout().changed, 2);
    EXPECT_EQ(layout().undone, 1);
}

TEST_F(ForeignKeyTests, AHostWithoutUnicodeTellsItsCharacterInTheCodePage)
{
    char narrow = 0;
    ASSERT_EQ(WideCharToMultiByte(CP_ACP, 0, L"\u0160", 1, &narrow, 1, nullptr, nullptr), 1);
    MSG message = pressed(WM_SYSCHAR, static_cast<BYTE>(narrow), layout().txtName.window());
    EXPECT_EQ(dialog->TranslateAccelerator(&message), S_OK);
    container.pump();
    EXPECT_EQ(layout().other, 1);
}

TEST_F(ForeignKeyTests, TheContainerKnowsItByItsCharacter)
{
    const CONTROLINFO info = keys();
    for (const wchar_t key : {L'\u00E6', L'\u00C6', L'\u00F8', L'\u00D8'})
    {
        MSG message = pressed(WM_SYSCHAR, key, container.window());
        EXPECT_TRUE(IsAccelerator(info.hAccel, info.cAccel, &message, nullptr)) << static_cast<int>(key);
        EXPECT_EQ(dialog->OnMnemonic(&message), S_OK);
        container.pump();
    }
    EXPECT_EQ(layout().changed, 2);
    EXPECT_EQ(layout().undone, 2);
}

TEST_F(ForeignKeyTests, TheContainerKnowsItByItsKeyWhereTheKeyboardHasOne)
{
    const ImportPatch keyboard(GetModuleHandleW(nullptr), "VkKeyScanW",
                               reinterpret_cast<void*>(&danishKeyOf));
    const CONTROLINFO info = keys();
    std::vector<ACCEL> table(info.cAccel);
    CopyAcceleratorTableW(info.hAccel, table.data(), info.cAccel);
    std::vector<WORD> byKey;
    for (const ACCEL& entry : table)
        if (entry.fVirt == (FVIRTKEY | FALT))
            byKey.push_back(entry.key);
    EXPECT_THAT(byKey, ElementsAre(VK_OEM_3)); // the other letter is on no key
    MSG message = pressed(WM_SYSKEYDOWN, VK_OEM_3, container.window());
    EXPECT_EQ(dialog->OnMnemonic(&message), S_OK);
    container.pump();
    EXPECT_EQ(layout().changed, 1);
}

TEST_F(KeyboardTests, EnterConfirmsWhereverTheFocusIs)
{
    for (const HWND control : {first(), layout().lstList.window(), okButton()})
    {
        container.done.clear();
        ASSERT_TRUE(container.ready()); // a dialog that has ended begins anew
        focus(control);
        container.press(VK_RETURN);
        EXPECT_THAT(container.done, ElementsAre(false));
    }
}

TEST_F(KeyboardTests, EnterOnAnotherButtonPressesThatButton)
{
    focus(layout().cmdApply.window());
    container.press(VK_RETURN);
    EXPECT_EQ(layout().applied, 1);
    EXPECT_THAT(container.done, IsEmpty());
    focus(first());
    container.press(VK_RETURN);
    EXPECT_EQ(layout().applied, 1);
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(KeyboardTests, EnterOnCancelCancels)
{
    focus(last());
    container.press(VK_RETURN);
    EXPECT_THAT(container.done, ElementsAre(true));
    EXPECT_EQ(container.submitted, 0);
}

TEST_F(KeyboardTests, EscapeCancelsWhereverTheFocusIs)
{
    for (const HWND control :
         {first(), layout().lstList.window(), layout().cmdApply.window(), okButton(), last()})
    {
        container.done.clear();
        ASSERT_TRUE(container.ready());
        focus(control);
        container.press(VK_ESCAPE);
        EXPECT_THAT(container.done, ElementsAre(true));
    }
    EXPECT_EQ(layout().applied, 0);
    EXPECT_EQ(container.submitted, 0);
}

TEST_F(KeyboardTests, KeysThatAreNoneOfTheDialogsAreLeftToTheContainer)
{
    EXPECT_EQ(translate(first(), WM_SYSCHAR, L'z'), S_FALSE);
    EXPECT_EQ(translate(first(), WM_SYSKEYDOWN, 'Z'), S_FALSE);
    EXPECT_EQ(translate(first(), WM_SYSKEYDOWN, VK_F4), S_FALSE);
    for (const int key : {VK_F1, VK_F5, VK_F10, VK_F12})
        EXPECT_EQ(translate(first(), WM_KEYDOWN, static_cast<WPARAM>(key)), S_FALSE) << key;
    EXPECT_EQ(GetFocus(), first());
    EXPECT_THAT(container.done, IsEmpty());
}

TEST_F(KeyboardTests, OtherMessagesAreNotTranslated)
{
    EXPECT_EQ(translate(first(), WM_LBUTTONDOWN, MK_LBUTTON), S_FALSE);
    EXPECT_EQ(translate(first(), WM_TIMER, 1), S_FALSE);
    EXPECT_EQ(dialog->TranslateAccelerator(static_cast<LPMSG>(nullptr)), E_POINTER);
}

TEST_F(KeyboardTests, KeysOfForeignWindowsAreNotTranslated)
{
    SetFocus(neighbour);
    for (const HWND foreign : {neighbour, container.window(), static_cast<HWND>(nullptr)})
    {
        for (const int key : {VK_TAB, VK_RETURN, VK_ESCAPE, VK_DOWN})
            EXPECT_EQ(translate(foreign, WM_KEYDOWN, static_cast<WPARAM>(key)), S_FALSE) << key;
        EXPECT_EQ(translate(foreign, WM_SYSCHAR, L'a'), S_FALSE);
    }
    EXPECT_EQ(GetFocus(), neighbour);
    EXPECT_EQ(layout().applied, 0);
    EXPECT_THAT(container.done, IsEmpty());
}

} // namespace korvane::test
