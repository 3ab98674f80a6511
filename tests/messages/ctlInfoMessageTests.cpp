#include "tests/messages/InfoDialog.h"

#include <commctrl.h>

namespace korvane::test
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;

namespace
{

constexpr HRESULT aboutRequired = static_cast<HRESULT>(0x8004583E);
constexpr HRESULT noLogin = static_cast<HRESULT>(0x8004583F);

/// Counts how often it is told of other access keys.
class CountingSite final : public host::ControlSite
{
public:
    using ControlSite::ControlSite;

    STDMETHODIMP OnControlInfoChanged() override
    {
        ++told;
        return S_OK;
    }

    int told = 0;
};

} // namespace

class ctlInfoMessageTests : public InfoDialogTest
{
protected:
    void typeInto(HWND box, const wchar_t* text)
    {
        SetFocus(box);
        container.type(text);
    }

    LRESULT shownTab() const { return SendMessageW(tabs(), TCM_GETCURSEL, 0, 0); }

    void clickTab(WPARAM index) const
    {
        RECT tab{};
        SendMessageW(tabs(), TCM_GETITEMRECT, index, reinterpret_cast<LPARAM>(&tab));
        Container::clickAt(tabs(), (tab.left + tab.right) / 2, (tab.top + tab.bottom) / 2);
    }

    bool isChosen(int index) const { return SendMessageW(type(index), BM_GETCHECK, 0, 0) == BST_CHECKED; }
    void ok() { container.press(VK_RETURN); }

    std::wstring header() const { return Container::text(container.control(L"Static")); }

    std::vector<std::string> calls() { return data.takeCalls(); }

    /// Turns to the rows; while they are read, the first time, something happens.
    template <class Happens> void turnPageAnd(Happens&& happens)
    {
        bool once = true;
        data.during = [&](const std::string& call) {
            if (call == "Names.LoadInfo" && std::exchange(once, false))
                happens();
        };
        turnPage();
        data.during = nullptr;
    }
};

TEST_F(ctlInfoMessageTests, ReadyForAMessagePreparesAndReadsTheLogin)
{
    EXPECT_TRUE(show());
    EXPECT_THAT(calls(), ElementsAre("Root.OpenScope(0, \"ctlInfoMessage.Prepare\")", "Root.Names()",
                                     "Scope.Close(0, 0)", "Root.OpenScope(0, \"ctlInfoMessage.Prepare\")",
                                     "Root.Names()", "Names.Fetch(7)", "Scope.Close(0, 0)"));
    EXPECT_EQ(data.openScopes, 0);
}

TEST_F(ctlInfoMessageTests, ReadyForInformationPreparesAndDoesNotAskForTheLogin)
{
    EXPECT_TRUE(show(3, van));
    EXPECT_THAT(calls(), ElementsAre("Root.OpenScope(0, \"ctlInfoMessage.Prepare\")", "Root.Names()",
                                     "Root.Names()", "Names.LoadInfo(8)", "Scope.Close(0, 0)"));
    EXPECT_FALSE(isOnInfo()); // the first page is the first one here too
    turnPage();
    turnPage();
    EXPECT_FALSE(isOnInfo());
    EXPECT_THAT(container.errors, IsEmpty());
}

TEST_F(ctlInfoMessageTests, ReadySaysWhetherTheOperationIsOneOfThem)
{
    for (const auto& [operation, isReady] : {std::pair(1L, true), std::pair(2L, true), std::pair(3L, true),
                                             std::pair(0L, false), std::pair(4L, false)})
    {
        EXPECT_EQ(show(operation), isReady) << operation;
        container.close();
    }
}

TEST_F(ctlInfoMessageTests, AResourceWithALoginOpensOnTheMessage)
{
    let(L"Name", Variant(Bstr(L"Anna & Sons")));
    EXPECT_TRUE(show());
    EXPECT_FALSE(isOnInfo());
    EXPECT_EQ(shownTab(), 0);
    EXPECT_TRUE(container.visible(about()));
    EXPECT_EQ(header(), L"Phone message \x2013 Anna && Sons");
    EXPECT_EQ(fetch(container.dialog, &IAppDialog::get_Name), L"&Message");
}

TEST_F(ctlInfoMessageTests, WithoutANameTheHeadingStandsAlone)
{
    EXPECT_TRUE(show());
    EXPECT_EQ(header(), L"Phone message");
}

TEST_F(ctlInfoMessageTests, ALongNameLeavesTheDialogAsWideAsItIs)
{
    EXPECT_TRUE(show());
    const LONG width = container.site->extent().cx;
    let(L"Name", Variant(Bstr(std::wstring(250, L'W'))));
    EXPECT_TRUE(container.ready());
    EXPECT_EQ(container.site->extent().cx, width);
    EXPECT_EQ(header().size(), 250U + 16U);
}

TEST_F(ctlInfoMessageTests, AResourceWithoutOpensOnItsInformation)
{
    EXPECT_TRUE(show(1, van));
    EXPECT_TRUE(isOnInfo());
    EXPECT_EQ(shownTab(), 1);
    EXPECT_FALSE(container.visible(about()));
    EXPECT_THAT(grid().texts(), ElementsAre(Pair(L"Plate", L"KD 1234"), Pair(L"", L"")));
    EXPECT_THAT(container.errors, IsEmpty());
}

TEST_F(ctlInfoMessageTests, EveryWayBackToTheMessageOfAResourceWithoutLoginIsRefused)
{
    EXPECT_TRUE(show(1, van));
    const std::function<void()> ways[] = {
        [&] { clickTab(0); },
        [&] { accessKey('m'); },
        [&] { turnPage(); },
        [&] { container.press(VK_TAB, true, false, true); },
        [&] {
            SetFocus(tabs());
            container.press(VK_LEFT);
        },
    };
    for (const auto& way : ways)
    {
        container.errors.clear();
        way();
        ASSERT_EQ(container.errors.size(), 1U);
        EXPECT_EQ(container.errors[0].number, noLogin);
        EXPECT_EQ(container.errors[0].description,
                  L"This ressource has no login name attached and cannot receive messages.");
        EXPECT_TRUE(isOnInfo());
        EXPECT_EQ(shownTab(), 1);
        EXPECT_FALSE(container.visible(about()));
    }
}

TEST_F(ctlInfoMessageTests, WhatTheMessageConcernsIsRequired)
{
    EXPECT_TRUE(show());
    typeInto(contact(), L"Mr Hansen");
    ok();
    ASSERT_EQ(container.errors.size(), 1U);
    EXPECT_EQ(container.errors[0].number, aboutRequired);
    EXPECT_EQ(container.errors[0].description, L"Text box 'Concerning' is required");
    EXPECT_EQ(container.submitted, 0);
    EXPECT_THAT(container.done, IsEmpty());
    EXPECT_EQ(Container::text(contact()), L"Mr Hansen");
    typeInto(about(), L"Tyres");
    ok();
    EXPECT_EQ(container.submitted, 1);
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(ctlInfoMessageTests, SpacesAreEnoughForWhatTheMessageConcerns)
{
    EXPECT_TRUE(show());
    typeInto(about(), L"  ");
    ok();
    EXPECT_THAT(container.done, ElementsAre(false));
    ASSERT_EQ(data.messages.size(), 1U);
    EXPECT_EQ(data.messages[0].about, L"  ");
}

TEST_F(ctlInfoMessageTests, OkSendsTheMessage)
{
    EXPECT_TRUE(show());
    calls();
    typeInto(contact(), L"Mr Hansen");
    typeInto(tlf(), L"555 0100");
    typeInto(about(), L"Tyres");
    EXPECT_THAT(calls(), IsEmpty());
    ok();
    EXPECT_THAT(calls(), ElementsAre("Root.Messages()", "Root.Names()", StartsWith("Messages.Add(7, ")));
    ASSERT_EQ(data.messages.size(), 1U);
    EXPECT_EQ(data.messages[0].contact, L"Mr Hansen");
    EXPECT_EQ(data.messages[0].tlf, L"555 0100");
    EXPECT_EQ(data.messages[0].about, L"Tyres");
    EXPECT_EQ(data.messages[0].kind, 1); // no kind was chosen
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(ctlInfoMessageTests, WhatIsTypedReachesTheCommandAtOnce)
{
    EXPECT_TRUE(show());
    typeInto(contact(), L"Mr");
    EXPECT_EQ(fetch(info, &IInfoMessage::get_Contact), L"Mr");
    typeInto(tlf(), L"55");
    EXPECT_EQ(fetch(info, &IInfoMessage::get_Tlf), L"55");
    typeInto(about(), L"Ty");
    EXPECT_EQ(fetch(info, &IInfoMessage::get_About), L"Ty");
}

TEST_F(ctlInfoMessageTests, TheFirstKindIsChosenToBeginWithAndEachByItsAccessKey)
{
    EXPECT_TRUE(show());
    EXPECT_TRUE(isChosen(0));
    EXPECT_EQ(fetch(info, &IInfoMessage::get_TypeIndex), 0);
    for (const auto& [key, index] :
         {std::pair('w', 1), std::pair('p', 2), std::pair('o', 3), std::pair('h', 0)})
    {
        accessKey(static_cast<wchar_t>(key));
        EXPECT_EQ(fetch(info, &IInfoMessage::get_TypeIndex), index);
        EXPECT_TRUE(isChosen(index));
    }
    Container::click(type(3));
    EXPECT_EQ(fetch(info, &IInfoMessage::get_TypeIndex), 3);
}

TEST_F(ctlInfoMessageTests, WhatTheHostHasSetIsShown)
{
    call(info, &IInfoMessage::put_TypeIndex, 2L);
    let(L"Contact", Variant(Bstr(L"Mrs Jensen")));
    let(L"Tlf", Variant(Bstr(L"22500"))); // not the text with that id
    let(L"About", Variant(Bstr(L"An offer")));
    EXPECT_TRUE(show());
    for (const bool again : {false, true})
    {
        EXPECT_TRUE(!again || container.ready());
        EXPECT_TRUE(isChosen(2));
        EXPECT_EQ(Container::text(contact()), L"Mrs Jensen");
        EXPECT_EQ(Container::text(tlf()), L"22500");
        EXPECT_EQ(Container::text(about()), L"An offer");
    }
    EXPECT_EQ(fetch(info, &IInfoMessage::get_Tlf), L"22500");
}

TEST_F(ctlInfoMessageTests, AKindThatIsNoneIsShownAsTheFirstAndLeftAsItIs)
{
    for (const long kind : {-1L, 4L, 4711L})
    {
        call(info, &IInfoMessage::put_TypeIndex, kind);
        EXPECT_TRUE(show());
        EXPECT_TRUE(isChosen(0));
        EXPECT_EQ(fetch(info, &IInfoMessage::get_TypeIndex), kind);
        container.close();
    }
}

TEST_F(ctlInfoMessageTests, TheRowsAreReadOnTheFirstVisitAndNotAgain)
{
    EXPECT_TRUE(show());
    calls();
    turnPage();
    EXPECT_TRUE(isOnInfo());
    EXPECT_THAT(calls(), ElementsAre("Root.OpenScope(0, \"InfoMessage.FetchInfo\")", "Root.Names()",
                                     "Names.LoadInfo(7)", "Scope.Close(0, 0)"));
    turnPage();
    turnPage();
    EXPECT_TRUE(isOnInfo());
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(ctlInfoMessageTests, OkWhileTheRowsAreReadStoresNone)
{
    EXPECT_TRUE(show());
    turnPageAnd([&] { Container::click(container.button(L"OK")); });
    ASSERT_EQ(container.errors.size(), 1U); // the page that was seen is the one with the message
    EXPECT_EQ(container.errors[0].number, aboutRequired);
    EXPECT_EQ(container.submitted, 0);
    EXPECT_TRUE(isOnInfo());
    EXPECT_EQ(labels().size(), 4U);
}

TEST_F(ctlInfoMessageTests, AHostMayBeginAnewWithAnotherResourceWhileTheRowsAreRead)
{
    EXPECT_TRUE(show());
    turnPageAnd([&] {
        let(L"NameID", Variant(van));
        EXPECT_TRUE(container.ready());
    });
    EXPECT_THAT(container.errors, IsEmpty());
    EXPECT_TRUE(isOnInfo());
    EXPECT_THAT(labels(), ElementsAre(L"Plate", L""));
    calls();
    ok();
    EXPECT_THAT(calls(),
                ElementsAre("Root.Messages()", "Root.Names()", "Names.SetInfo(8, \"Plate\", -1, \"\")",
                            "Names.SetInfo(8, \"Plate\", 0, \"KD 1234\")",
                            "Names.SetInfo(8, \"\", 1, \"\")"));
}

TEST_F(ctlInfoMessageTests, WhatIsEditedWhileTheRowsAreStillReadStays)
{
    EXPECT_TRUE(show());
    turnPageAnd([&] {
        turnPage();
        turnPage();
        grid().click(1, 2);
        container.type(L"1"); // replaces the selection
        grid().click(2, 0);
    });
    EXPECT_EQ(grid().text(1, 2), L"1");
    EXPECT_EQ(labels().size(), 4U);
    EXPECT_THAT(container.errors, IsEmpty());
}

TEST_F(ctlInfoMessageTests, RowsThatCouldNotBeReadToTheEndAreNotShown)
{
    EXPECT_TRUE(show());
    turnPageAnd([&] {
        turnPage();
        data.fail("Names.LoadInfo", locked);
        turnPage();
    });
    EXPECT_EQ(container.errors.size(), 2U); // of both attempts
    EXPECT_FALSE(isOnInfo());
    EXPECT_EQ(shownTab(), 0);
    turnPage();
    EXPECT_EQ(labels().size(), 4U);
}

TEST_F(ctlInfoMessageTests, WhoseRowsFailAfterTheHostHasBegunAnewTurnsNoPage)
{
    EXPECT_TRUE(show());
    turnPageAnd([&] {
        let(L"NameID", Variant(van));
        EXPECT_TRUE(container.ready());
        data.fail("Names.LoadInfo", locked);
    });
    EXPECT_THAT(container.errors, ElementsAre(locked));
    EXPECT_EQ(shownTab(), 1);
    EXPECT_TRUE(isOnInfo());
}

TEST_F(ctlInfoMessageTests, AHostThatBeginsAnewAmidAnEditSeesTheRowsAsTheyAre)
{
    showInfo();
    grid().click(1, 2);
    container.type(L"half");
    EXPECT_TRUE(container.ready());
    EXPECT_FALSE(isOnInfo());
    EXPECT_FALSE(isEditing());
    turnPage();
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(grid().text(1, 2), L"555 0102");
}

TEST_F(ctlInfoMessageTests, ACommandThatIsLetGoOfWhileItReadsItsRowsIsHeld)
{
    EXPECT_TRUE(show());
    data.during = [&](const std::string& call) {
        if (call != "Names.LoadInfo")
            return;
        korvane::call(container.dialog, &IAppDialog::putref_Command, static_cast<IDispatch*>(nullptr));
        command.reset();
        info.reset();
        EXPECT_TRUE(data.hasSubscribers(EventsOf::names));
    };
    turnPage();
    data.during = nullptr;
    EXPECT_FALSE(data.hasSubscribers(EventsOf::names));
}

TEST_F(ctlInfoMessageTests, OkOnTheInformationStoresAllRowsTheBlankOneToo)
{
    showInfo(van);
    ok();
    EXPECT_THAT(calls(),
                ElementsAre("Root.Messages()", "Root.Names()", "Names.SetInfo(8, \"Plate\", -1, \"\")",
                            "Names.SetInfo(8, \"Plate\", 0, \"KD 1234\")",
                            "Names.SetInfo(8, \"\", 1, \"\")"));
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(ctlInfoMessageTests, OkWithoutAnEditorOpenOrWithOneStoresTheSame)
{
    showInfo();
    grid().click(1, 2);
    container.type(L"1"); // replaces the selection
    Container::click(container.button(L"OK"));
    EXPECT_THAT(calls(), Contains("Names.SetInfo(7, \"Home\", 0, \"1\")"));
}

TEST_F(ctlInfoMessageTests, WhatWasTypedOnAPageIsThereAfterAVisitToTheOther)
{
    EXPECT_TRUE(show());
    typeInto(contact(), L"Mr Hansen");
    typeInto(about(), L"Tyres");
    clickTab(1);
    grid().click(1, 2);
    container.pump();
    container.type(L"555 9999");
    clickTab(0); // with the editor open
    EXPECT_EQ(Container::text(contact()), L"Mr Hansen");
    EXPECT_EQ(Container::text(about()), L"Tyres");
    clickTab(1);
    EXPECT_EQ(grid().text(1, 2), L"555 9999");
    EXPECT_FALSE(isEditing());
}

TEST_F(ctlInfoMessageTests, EachPageHasItsAccessKeys)
{
    EXPECT_TRUE(show());
    accessKey('f');
    EXPECT_EQ(GetFocus(), contact());
    accessKey('n');
    EXPECT_EQ(GetFocus(), tlf());
    accessKey('c');
    EXPECT_EQ(GetFocus(), about());
    accessKey('i');
    EXPECT_TRUE(isOnInfo());
    EXPECT_EQ(GetFocus(), tabs());
    accessKey('f'); // of what is not seen
    EXPECT_EQ(GetFocus(), tabs());
    accessKey('m');
    EXPECT_FALSE(isOnInfo());
}

TEST_F(ctlInfoMessageTests, TheContainerIsToldOfThePagesAccessKeys)
{
    auto* const site = make<CountingSite>(container.window()).detach();
    container.site = ComPtr<host::ControlSite>::adopt(site);
    EXPECT_TRUE(show());
    const int before = site->told;
    turnPage();
    EXPECT_GT(site->told, before);
}

TEST_F(ctlInfoMessageTests, WhenTheHostBeginsAnewTheKeyboardIsWhereItCanBeSeen)
{
    showInfo();
    EXPECT_TRUE(container.ready()); // with the first page
    EXPECT_EQ(GetFocus(), tabs());
    SetFocus(about());
    let(L"NameID", Variant(van));
    EXPECT_TRUE(container.ready());
    EXPECT_TRUE(isOnInfo());
    EXPECT_EQ(GetFocus(), tabs());
}

TEST_F(ctlInfoMessageTests, WithoutItsRowsThePageIsNotShown)
{
    EXPECT_TRUE(show());
    data.fail("Names.LoadInfo", locked);
    turnPage();
    ASSERT_EQ(container.errors.size(), 1U);
    EXPECT_EQ(container.errors[0].number, locked.number);
    EXPECT_FALSE(isOnInfo());
    EXPECT_EQ(shownTab(), 0);
    EXPECT_EQ(data.openScopes, 0);
    turnPage(); // it reads them the next time
    EXPECT_TRUE(isOnInfo());
    EXPECT_EQ(labels().size(), 4U);
}

TEST_F(ctlInfoMessageTests, AHostThatFailsToStoreLeavesTheDialogAsItIs)
{
    showInfo();
    data.fail("Names.SetInfo", locked);
    ok();
    ASSERT_EQ(container.errors.size(), 1U);
    EXPECT_EQ(container.errors[0].number, locked.number);
    EXPECT_THAT(container.done, IsEmpty());
    EXPECT_TRUE(isOnInfo());
    ok();
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(ctlInfoMessageTests, CancelTouchesNothing)
{
    EXPECT_TRUE(show());
    calls();
    typeInto(about(), L"Tyres");
    container.press(VK_ESCAPE);
    EXPECT_THAT(container.done, ElementsAre(true));
    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_EQ(container.submitted, 0);
}

TEST_F(ctlInfoMessageTests, ADialogThatCannotEndTakesNoMoreInput)
{
    showInfo();
    container.site->onDone = [](bool) { throw Failure(E_FAIL); };
    ok();
    EXPECT_FALSE(IsWindowEnabled(gridWindow()));
    EXPECT_FALSE(IsWindowEnabled(tabs()));
    accessKey('m');
    turnPage();
    EXPECT_TRUE(isOnInfo());
}

TEST_F(ctlInfoMessageTests, EnterInTheTextIsOkAndControlEnterBreaksTheLine)
{
    EXPECT_TRUE(show());
    typeInto(about(), L"one\ntwo");
    EXPECT_THAT(container.done, IsEmpty());
    EXPECT_EQ(fetch(info, &IInfoMessage::get_About), L"one\r\ntwo");
    ok();
    EXPECT_THAT(container.done, ElementsAre(false));
}

} // namespace korvane::test
