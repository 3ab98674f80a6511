// The message viewer, driven by a user.
#include "tests/support/CommandTest.h"
#include "tests/support/Container.h"

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr long anna = 7;

Message message(long id, bool read)
{
    const std::wstring number = std::to_wstring(id);
    return {id,
            anna,
            L"Writer " + number,
            dateOf("2026-11-20 09:30:00") + static_cast<double>(id),
            L"555 010" + number,
            L"Caller " + number,
            L"Concern " + number,
            id,
            read};
}

std::wstring generalDate(DATE time)
{
    Bstr text;
    require(VarBstrFromDate(time, LOCALE_USER_DEFAULT, 0, text.put()));
    return std::wstring(text.view());
}

} // namespace

class ctlShowMessageTests : public CommandTest
{
protected:
    ctlShowMessageTests() : CommandTest(__uuidof(::ShowMessage)) { let(L"NameID", Variant(anna)); }

    bool show() { return container.show(__uuidof(::ctlShowMessage), command.get()); }

    /// Shows these messages and gives the dialog the focus.
    void showed(std::vector<Message> messages)
    {
        data.messages = std::move(messages);
        ASSERT_TRUE(show());
        container.site->activateUi();
        container.pump();
        data.takeCalls();
    }

    /// What a text box holds: writer, time, caller, number, concern.
    HWND box(int index) const { return container.control(L"Edit", index); }
    std::wstring shown(int index) const { return Container::text(box(index)); }
    /// The concern is another one in each message.
    std::wstring shownMessage() const { return shown(4); }
    HWND button(const wchar_t* caption) const { return container.button(caption); }
    HWND previous() const { return button(L"&Previous"); }
    HWND next() const { return button(L"&Next"); }
    HWND remove() const { return button(L"Dele&te"); }
    HWND close() const { return button(L"C&lose"); }

    /// A key that is held down comes again and again.
    void hold(UINT message, WPARAM key, LPARAM context = 0) const
    {
        for (const LPARAM repeated : {0L, 1L << 30, 1L << 30})
        {
            PostMessageW(GetFocus(), message, key, 1 | context | repeated);
            container.pump();
        }
    }

    /// Place, all, read and unread, as the labels show them.
    std::wstring counts() const
    {
        std::wstring result;
        for (const int label : {1, 3, 5, 7})
            result += Container::text(container.control(L"Static", label)) + L' ';
        result.pop_back();
        return result;
    }

    /// The option that is chosen, from 1; 0 for none.
    int kind() const
    {
        const wchar_t* const options[] = {L"Has phoned", L"Wants to be phoned back", L"Will phone again",
                                          L"Other message"};
        int result = 0;
        for (int index = 0; index < 4; ++index)
            if (SendMessageW(button(options[index]), BM_GETCHECK, 0, 0) == BST_CHECKED)
                result = result * 10 + index + 1;
        return result;
    }

    std::wstring usableButtons() const
    {
        std::wstring result;
        for (const auto& [window, letter] :
             {std::pair(previous(), L'P'), {next(), L'N'}, {remove(), L'D'}, {close(), L'C'}})
            if (IsWindowEnabled(window))
                result += letter;
        return result;
    }

    Container container;
};

// --- start

TEST_F(ctlShowMessageTests, ReadyReadsTheListAndTheFirstUnreadMessageWithinScopes)
{
    data.messages = {message(1, true), message(2, false), message(3, false)};
    EXPECT_TRUE(show());
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.OpenScope(0, \"ctlShowMessage.Init\")", "Root.Messages()",
                                              "Messages.LoadFor(7, -1)", "Scope.Close(0, 0)",
                                              "Root.OpenScope(0, \"ctlShowMessage.Fetch\")",
                                              "Messages.Fetch(2)", "Scope.Close(0, 0)"));
    EXPECT_EQ(shownMessage(), L"Concern 2");
    EXPECT_EQ(counts(), L"2 3 2 1");
}

TEST_F(ctlShowMessageTests, WithoutMessagesItIsNotReady)
{
    EXPECT_FALSE(show());
    EXPECT_THAT(data.takeCalls(), testing::Not(testing::Contains(testing::HasSubstr("Fetch"))));
    EXPECT_EQ(counts(), L" 0 0 0");
    EXPECT_EQ(usableButtons(), L"C");
    Container::click(remove());
    EXPECT_EQ(container.submitted, 0);
    EXPECT_THAT(container.errors, IsEmpty());
}

TEST_F(ctlShowMessageTests, WithReadMessagesOnlyItStartsAtTheFirst)
{
    showed({message(3, true), message(1, true)});
    EXPECT_EQ(shownMessage(), L"Concern 3");
    EXPECT_EQ(counts(), L"1 2 2 0");
}

TEST_F(ctlShowMessageTests, MessagesOfOthersAreNotShown)
{
    Message other = message(9, false);
    other.nameId = 8;
    showed({other, message(1, true)});
    EXPECT_EQ(counts(), L"1 1 1 0");
}

TEST_F(ctlShowMessageTests, EveryFieldOfTheMessageIsShown)
{
    showed({message(3, false)});
    EXPECT_EQ(shown(0), L"Writer 3");
    EXPECT_EQ(shown(1), generalDate(data.messages.front().dtg));
    EXPECT_EQ(shown(2), L"Caller 3");
    EXPECT_EQ(shown(3), L"555 0103");
    EXPECT_EQ(shown(4), L"Concern 3");
    EXPECT_EQ(kind(), 3);
}

TEST_F(ctlShowMessageTests, ATimeThatIsNoneIsLeftOut)
{
    Message odd = message(1, true);
    odd.dtg = 1e9;
    showed({odd});
    EXPECT_EQ(shown(1), L"");
    EXPECT_EQ(shownMessage(), L"Concern 1");
}

TEST_F(ctlShowMessageTests, TheLowFifteenBitsOfTheKindCount)
{
    const std::pair<long, int> kinds[] = {{1, 1},          {4, 4}, {0x8002, 2}, {0x7FFF0003, 3},
                                          {0x70008001, 1}, {0, 0}, {5, 0},      {-1, 0}};
    for (const auto& [stored, expected] : kinds)
    {
        Message odd = message(1, true);
        odd.kind = stored;
        showed({odd});
        EXPECT_EQ(kind(), expected) << stored;
        container.close();
    }
}

// --- from one to the other

TEST_F(ctlShowMessageTests, NextAndPreviousLeadThroughTheList)
{
    showed({message(1, true), message(2, true), message(3, true)});
    EXPECT_EQ(usableButtons(), L"NDC");
    Container::click(next());
    EXPECT_EQ(shownMessage(), L"Concern 2");
    EXPECT_EQ(counts(), L"2 3 3 0");
    EXPECT_EQ(usableButtons(), L"PNDC");
    Container::click(next());
    EXPECT_EQ(shownMessage(), L"Concern 3");
    EXPECT_EQ(usableButtons(), L"PDC");
    Container::click(previous());
    EXPECT_EQ(shownMessage(), L"Concern 2");
    EXPECT_THAT(data.takeCalls(),
                testing::IsSupersetOf({"Messages.Fetch(2)", "Messages.Fetch(3)", "Messages.Fetch(2)"}));
}

TEST_F(ctlShowMessageTests, AnUnreadMessageBecomesReadAndAReadOneLeavesTheCounts)
{
    showed({message(1, true), message(2, false), message(3, false)});
    EXPECT_EQ(counts(), L"2 3 2 1");
    Container::click(next());
    EXPECT_EQ(counts(), L"3 3 3 0");
    Container::click(previous());
    EXPECT_EQ(counts(), L"2 3 3 0");
    Container::click(previous());
    EXPECT_EQ(counts(), L"1 3 3 0");
}

TEST_F(ctlShowMessageTests, AMessageThatCannotBeReadIsToldAndPassed)
{
    showed({message(1, true), message(2, true), message(3, true)});
    data.messages.erase(data.messages.begin() + 1); // somebody else has deleted it
    Container::click(next());
    ASSERT_EQ(container.errors.size(), 1U);
    EXPECT_EQ(shownMessage(), L"");
    EXPECT_EQ(kind(), 0);
    EXPECT_EQ(counts(), L"2 3 3 0");
    EXPECT_EQ(usableButtons(), L"PNC");
    Container::click(next());
    EXPECT_EQ(shownMessage(), L"Concern 3");
    EXPECT_EQ(container.errors.size(), 1U);
}

TEST_F(ctlShowMessageTests, AMessageThatCouldNotBeReadCanBeTriedAgain)
{
    showed({message(1, true), message(2, false)});
    data.fail("Messages.Fetch", locked);
    Container::click(previous());
    EXPECT_THAT(container.errors, ElementsAre(locked));
    EXPECT_EQ(counts(), L"1 2 2 0");
    EXPECT_EQ(usableButtons(), L"NC");
    Container::click(next());
    EXPECT_EQ(shownMessage(), L"Concern 2");
    Container::click(previous());
    EXPECT_EQ(shownMessage(), L"Concern 1");
}

TEST_F(ctlShowMessageTests, AccessKeysDoTheSame)
{
    showed({message(1, true), message(2, true)});
    container.press('N', false, true);
    EXPECT_EQ(counts(), L"2 2 2 0");
    container.press('P', false, true);
    EXPECT_EQ(counts(), L"1 2 2 0");
    container.press('T', false, true);
    EXPECT_EQ(counts(), L"1 1 1 0");
    container.press('L', false, true);
    EXPECT_THAT(container.done, ElementsAre(true));
}

TEST_F(ctlShowMessageTests, TheKeyboardNeverStaysOnAButtonThatLeadsNowhere)
{
    showed({message(1, true), message(2, true)});
    SendMessageW(container.dialogWindow(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next()), TRUE);
    container.press(VK_RETURN);
    EXPECT_EQ(counts(), L"2 2 2 0");
    EXPECT_EQ(GetFocus(), previous());
    container.press(VK_RETURN);
    EXPECT_EQ(counts(), L"1 2 2 0");
    EXPECT_EQ(GetFocus(), next());
    container.press(VK_SPACE);
    EXPECT_EQ(GetFocus(), previous());
}

TEST_F(ctlShowMessageTests, EnterInAFieldDoesNothing)
{
    showed({message(1, true), message(2, true)});
    for (int index = 0; index < 5; ++index)
    {
        SetFocus(box(index));
        container.press(VK_RETURN);
    }
    EXPECT_EQ(counts(), L"1 2 2 0");
    EXPECT_THAT(container.done, IsEmpty());
    EXPECT_EQ(container.submitted, 0);
}

TEST_F(ctlShowMessageTests, EachOfTwoQuickClicksLeadsOn)
{
    showed({message(1, true), message(2, true), message(3, true)});
    Container::clickAt(next(), 5, 5, true);
    EXPECT_EQ(shownMessage(), L"Concern 3");
    Container::clickAt(previous(), 5, 5, true);
    EXPECT_EQ(shownMessage(), L"Concern 1");
}

// --- what can be done with a message

TEST_F(ctlShowMessageTests, FieldsCanBeSelectedAndCopiedAndNotChanged)
{
    showed({message(1, true)});
    for (int index = 0; index < 5; ++index)
    {
        const std::wstring before = shown(index);
        EXPECT_NE(GetWindowLongW(box(index), GWL_STYLE) & ES_READONLY, 0);
        EXPECT_TRUE(IsWindowEnabled(box(index)));
        SetFocus(box(index));
        container.type(L"x");
        container.press(VK_DELETE);
        EXPECT_EQ(shown(index), before);
        SendMessageW(box(index), EM_SETSEL, 0, -1);
        SendMessageW(box(index), WM_COPY, 0, 0);
        ASSERT_TRUE(OpenClipboard(container.window()));
        const auto* copied = static_cast<const wchar_t*>(GlobalLock(GetClipboardData(CF_UNICODETEXT)));
        EXPECT_EQ(std::wstring(copied ? copied : L""), before);
        CloseClipboard();
    }
}

TEST_F(ctlShowMessageTests, TheKindCannotBeChanged)
{
    showed({message(2, true)});
    for (const wchar_t* other : {L"Has phoned", L"Will phone again", L"Other message"})
        EXPECT_FALSE(IsWindowEnabled(button(other)));
    SetFocus(button(L"Wants to be phoned back")); // it can be come to, and read
    Container::click(GetFocus());
    for (const int key : {VK_DOWN, VK_UP, VK_LEFT, VK_RIGHT, VK_SPACE})
        container.press(static_cast<WORD>(key));
    EXPECT_EQ(kind(), 2);
    EXPECT_EQ(GetFocus(), button(L"Wants to be phoned back"));
}

TEST_F(ctlShowMessageTests, ALongTextIsThereWhole)
{
    Message tall = message(1, true);
    tall.about = L"The first line";
    for (int line = 0; line < 500; ++line)
        tall.about += L"\r\nand one more";
    tall.contact = std::wstring(4000, L'x');
    showed({tall});
    EXPECT_EQ(GetWindowTextLengthW(box(4)), static_cast<int>(tall.about.size()));
    EXPECT_EQ(GetWindowTextLengthW(box(2)), static_cast<int>(tall.contact.size()));
    EXPECT_NE(GetWindowLongW(box(4), GWL_STYLE) & WS_VSCROLL, 0);
    SetFocus(box(4));
    container.press(VK_NEXT);
    EXPECT_GT(SendMessageW(box(4), EM_GETFIRSTVISIBLELINE, 0, 0), 0);
}

// --- deletion

TEST_F(ctlShowMessageTests, DeleteIsExecutedAtOnceAndTheNextOneIsShown)
{
    showed({message(1, true), message(2, true), message(3, true)});
    Container::click(next());
    data.takeCalls();
    Container::click(remove());
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Messages()", "Messages.Remove(2)",
                                              "Root.OpenScope(0, \"ctlShowMessage.Fetch\")",
                                              "Messages.Fetch(3)", "Scope.Close(0, 0)"));
    EXPECT_EQ(container.submitted, 1);
    EXPECT_EQ(fetch(command.as<IShowMessage>(), &IShowMessage::get_MsgID), 2);
    EXPECT_EQ(fetch(command, &IAppCommand::get_Operation), 2);
    EXPECT_EQ(shownMessage(), L"Concern 3");
    EXPECT_EQ(counts(), L"2 2 2 0");
    EXPECT_THAT(container.done, IsEmpty());
    EXPECT_EQ(usableButtons(), L"PDC");
}

TEST_F(ctlShowMessageTests, DeletingTheLastOneShowsTheOneBeforeIt)
{
    showed({message(1, true), message(2, true)});
    Container::click(next());
    Container::click(remove());
    EXPECT_EQ(shownMessage(), L"Concern 1");
    EXPECT_EQ(counts(), L"1 1 1 0");
    EXPECT_EQ(usableButtons(), L"DC");
}

TEST_F(ctlShowMessageTests, DeletingTheFirstOneShowsTheOneThatFollowedIt)
{
    showed({message(1, true), message(2, true), message(3, true)});
    Container::click(remove());
    EXPECT_EQ(shownMessage(), L"Concern 2");
    EXPECT_EQ(counts(), L"1 2 2 0");
}

TEST_F(ctlShowMessageTests, TheMessageThatTakesItsPlaceBecomesRead)
{
    showed({message(1, false), message(2, false)});
    EXPECT_EQ(counts(), L"1 2 1 1");
    Container::click(remove());
    EXPECT_EQ(counts(), L"1 1 1 0");
}

TEST_F(ctlShowMessageTests, ADoubleClickDeletesOneMessage)
{
    showed({message(1, true), message(2, false)});
    Container::click(previous());
    Container::clickAt(remove(), 5, 5, true);
    EXPECT_EQ(container.submitted, 1);
    EXPECT_EQ(shownMessage(), L"Concern 2");
    EXPECT_EQ(counts(), L"1 1 1 0");
}

TEST_F(ctlShowMessageTests, AKeyThatIsHeldDownDeletesOneMessage)
{
    showed({message(1, true), message(2, true), message(3, true), message(4, true)});
    SetFocus(box(0));
    hold(WM_SYSCHAR, 't', 1L << 29);
    EXPECT_EQ(container.submitted, 1);
    EXPECT_EQ(shownMessage(), L"Concern 2");
    SendMessageW(container.dialogWindow(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(remove()), TRUE);
    hold(WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ(container.submitted, 2);
    EXPECT_EQ(shownMessage(), L"Concern 3");
    EXPECT_EQ(counts(), L"1 2 2 0");
}

TEST_F(ctlShowMessageTests, AKeyThatIsHeldDownLeadsThroughTheList)
{
    showed({message(1, true), message(2, true), message(3, true), message(4, true)});
    hold(WM_SYSCHAR, 'n', 1L << 29);
    EXPECT_EQ(shownMessage(), L"Concern 4");
}

TEST_F(ctlShowMessageTests, DeletingTheOnlyOneEndsTheDialog)
{
    showed({message(1, false)});
    Container::click(remove());
    EXPECT_TRUE(data.messages.empty());
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Messages()", "Messages.Remove(1)"));
}

TEST_F(ctlShowMessageTests, WhatTheHostDidNotExecuteStays)
{
    showed({message(1, true), message(2, false)});
    container.onSubmit = [](IAppCommand&) { return false; };
    Container::click(remove());
    EXPECT_EQ(shownMessage(), L"Concern 2");
    EXPECT_EQ(counts(), L"2 2 2 0");
    EXPECT_THAT(container.done, IsEmpty());
    EXPECT_THAT(container.errors, IsEmpty());
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    Container::click(previous());
    EXPECT_EQ(shownMessage(), L"Concern 1");
}

TEST_F(ctlShowMessageTests, WhatFailedStaysAndCanBeTriedAgain)
{
    for (const std::size_t messages : {1U, 2U})
    {
        std::vector<Message> list{message(1, true)};
        if (messages == 2)
            list.push_back(message(2, true));
        showed(list);
        const std::wstring before = counts();
        data.fail("Messages.Remove", locked);
        Container::click(remove());
        EXPECT_EQ(shownMessage(), L"Concern 1");
        EXPECT_EQ(counts(), before);
        EXPECT_THAT(container.errors, ElementsAre(locked));
        EXPECT_THAT(container.done, IsEmpty());
        Container::click(remove());
        EXPECT_EQ(data.messages.size(), messages - 1);
        EXPECT_EQ(container.done.size(), messages == 1 ? 1U : 0U);
        container.close();
        container.errors.clear();
        container.done.clear();
    }
}

TEST_F(ctlShowMessageTests, WhenWhatFollowsCannotBeReadNothingIsShownAndNothingCanBeDeleted)
{
    showed({message(1, true), message(2, true)});
    data.fail("Messages.Fetch", locked);
    Container::click(remove());
    EXPECT_THAT(container.errors, ElementsAre(locked));
    for (int index = 0; index < 5; ++index)
        EXPECT_EQ(shown(index), L"");
    EXPECT_EQ(kind(), 0);
    EXPECT_EQ(counts(), L"1 1 1 0");
    EXPECT_EQ(usableButtons(), L"NC");
    Container::click(remove());
    EXPECT_EQ(container.submitted, 1);
    Container::click(next()); // there is no other
    EXPECT_EQ(shownMessage(), L"Concern 2");
    EXPECT_EQ(counts(), L"1 1 1 0");
    EXPECT_EQ(usableButtons(), L"DC");
}

TEST_F(ctlShowMessageTests, WhileTheHostExecutesNothingElseHappens)
{
    showed({message(1, true), message(2, true), message(3, true)});
    container.onSubmit = [&](IAppCommand& submitted) {
        Container::click(next());
        Container::click(remove());
        container.press(VK_ESCAPE);
        VARIANT_BOOL result = VARIANT_FALSE;
        require(submitted.Execute(&result));
        return true;
    };
    Container::click(remove());
    EXPECT_EQ(container.submitted, 1);
    EXPECT_EQ(shownMessage(), L"Concern 2");
    EXPECT_EQ(data.messages.size(), 2U);
    EXPECT_THAT(container.done, IsEmpty());
}

TEST_F(ctlShowMessageTests, AHostThatHasTheListReadAnewMeanwhileLosesNoMessage)
{
    showed({message(1, true), message(2, true), message(3, true)});
    container.onSubmit = [&](IAppCommand& submitted) {
        VARIANT_BOOL result = VARIANT_FALSE;
        require(submitted.Execute(&result));
        return container.ready();
    };
    Container::click(remove());
    EXPECT_EQ(shownMessage(), L"Concern 2");
    EXPECT_EQ(counts(), L"1 2 2 0");
    Container::click(remove());
    EXPECT_EQ(counts(), L"1 1 1 0");
    EXPECT_EQ(data.messages.size(), 1U);
}

TEST_F(ctlShowMessageTests, ADialogThatIsClosedMeanwhileReadsNoFurtherMessage)
{
    showed({message(1, true), message(2, false)});
    Container::click(previous());
    data.messages[1].read = false;
    container.onSubmit = [&](IAppCommand& submitted) {
        VARIANT_BOOL result = VARIANT_FALSE;
        require(submitted.Execute(&result));
        container.close();
        return true;
    };
    Container::click(remove());
    ASSERT_EQ(data.messages.size(), 1U);
    EXPECT_FALSE(data.messages.front().read);
}

TEST_F(ctlShowMessageTests, TheHostCannotMakeItForgetAnotherMessageThanTheOneDeleted)
{
    showed({message(1, true), message(2, true)});
    container.onSubmit = [&](IAppCommand& submitted) {
        VARIANT_BOOL result = VARIANT_FALSE;
        require(submitted.Execute(&result));
        call(command.as<IShowMessage>(), &IShowMessage::put_MsgID, 2L);
        return true;
    };
    Container::click(remove());
    EXPECT_EQ(shownMessage(), L"Concern 2");
    EXPECT_EQ(counts(), L"1 1 1 0");
}

// --- while it is open

TEST_F(ctlShowMessageTests, ANewMessageIsAppendedAndTheOneShownStays)
{
    showed({message(1, true)});
    EXPECT_EQ(usableButtons(), L"DC");
    data.messages.push_back(message(2, false));
    data.announceMessage(data.messages.back());
    EXPECT_EQ(shownMessage(), L"Concern 1");
    EXPECT_EQ(counts(), L"1 2 1 1");
    EXPECT_EQ(usableButtons(), L"NDC");
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    Container::click(next());
    EXPECT_EQ(shownMessage(), L"Concern 2");
    EXPECT_EQ(counts(), L"2 2 2 0");
}

TEST_F(ctlShowMessageTests, WhatSomebodyElseLoadsBringsOnlyWhatIsNew)
{
    showed({message(1, true), message(2, false)});
    data.messages.push_back(message(3, false));
    const auto messages = fetch(data.root, &IRoot::get_Messages);
    fetch(messages, &IMessages::LoadFor, anna, -1L);
    EXPECT_EQ(shownMessage(), L"Concern 2");
    EXPECT_EQ(counts(), L"2 3 2 1");
}

TEST_F(ctlShowMessageTests, ADataLayerMayAnnounceAllAnewWhenOneIsDeleted)
{
    showed({message(1, true), message(2, true), message(3, true)});
    data.announcesWrites = true;
    Container::click(next());
    Container::click(remove());
    EXPECT_EQ(shownMessage(), L"Concern 3");
    EXPECT_EQ(counts(), L"2 2 2 0");
}

TEST_F(ctlShowMessageTests, AMessageThatArrivesWhileTheOnlyOneIsDeletedIsShown)
{
    showed({message(1, true)});
    container.onSubmit = [&](IAppCommand& submitted) {
        VARIANT_BOOL result = VARIANT_FALSE;
        require(submitted.Execute(&result));
        data.messages.push_back(message(2, false));
        data.announceMessage(data.messages.back());
        return true;
    };
    Container::click(remove());
    EXPECT_EQ(shownMessage(), L"Concern 2");
    EXPECT_EQ(counts(), L"1 1 1 0");
    EXPECT_THAT(container.done, IsEmpty());
}

// --- the end

TEST_F(ctlShowMessageTests, CloseAndEscapeEndItAsCancelled)
{
    for (const bool byKey : {false, true})
    {
        showed({message(1, true)});
        byKey ? container.press(VK_ESCAPE) : Container::click(close());
        EXPECT_THAT(container.done, ElementsAre(true));
        EXPECT_EQ(container.submitted, 0);
        EXPECT_THAT(data.takeCalls(), IsEmpty());
        container.close();
        container.done.clear();
    }
}

TEST_F(ctlShowMessageTests, ReadAnewItStartsOver)
{
    showed({message(1, true), message(2, true)});
    Container::click(next());
    data.messages = {message(3, false)};
    EXPECT_TRUE(container.ready());
    EXPECT_EQ(shownMessage(), L"Concern 3");
    EXPECT_EQ(counts(), L"1 1 1 0");
    data.messages.clear();
    EXPECT_FALSE(container.ready());
    EXPECT_EQ(shownMessage(), L"");
    EXPECT_EQ(usableButtons(), L"C");
}

TEST_F(ctlShowMessageTests, ReadAnewItLeavesTheKeyboardOnWhatCanBeReached)
{
    showed({message(1, true)});
    SetFocus(button(L"Has phoned"));
    data.messages = {message(2, true)};
    EXPECT_TRUE(container.ready());
    EXPECT_EQ(kind(), 2);
    EXPECT_TRUE(IsWindowEnabled(GetFocus()));
    EXPECT_TRUE(IsChild(container.dialogWindow(), GetFocus()));
}

TEST_F(ctlShowMessageTests, ManyMessagesAreListed)
{
    std::vector<Message> many;
    for (long id = 1; id <= 10'000; ++id)
        many.push_back(message(id, id != 9'000));
    showed(std::move(many));
    EXPECT_EQ(counts(), L"9000 10000 10000 0");
}

} // namespace korvane::test
