// The dialogs that arrange, which differ in their command, their texts and the source of their scope.
#include "framework/com/Call.h"
#include "framework/com/Variant.h"
#include "tests/support/Container.h"
#include "tests/support/RecordingData.h"

#include <gmock/gmock.h>

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

struct Arranged
{
    const char* name;
    CLSID dialogClass;
    CLSID commandClass;
    const wchar_t* title;
    const wchar_t* label;
    const char* collection;
    const char* load;
    const char* scope;
    std::string (*store)(long id, long index);
};

std::string storeName(long id, long index)
{
    return "Names.AddToGroup(" + listed(id, 4L, index + 1) + ")";
}

std::string storeType(long id, long index)
{
    return "Types.AddToGroup(" + listed(id, 4L, index + 1) + ")";
}

std::string storeGroup(long id, long index)
{
    return "Groups.SetPosition(" + listed(id, index + 3) + ")";
}

class ctlArrangeTests : public testing::TestWithParam<Arranged>
{
protected:
    void SetUp() override
    {
        const std::pair<long, const wchar_t*> all[] = {
            {7, L"ash"}, {5, L"birch"}, {9, L"cedar"}, {6, L"elm"}};
        for (const auto& [id, text] : all)
        {
            data.groups.push_back({id, text, 3});
            data.names.push_back({id, text, 4});
            data.types.push_back({id, text, 0, 4});
        }
    }

    bool show(long operation = 3)
    {
        call(command, &IAppCommand::put_Operation, operation);
        call(command, &IAppCommand::put_Operand, Bstr(L"Root").get(),
             Variant(data.root.as<IDispatch>()).get());
        call(command, &IAppCommand::put_Operand, Bstr(L"GroupID").get(), Variant(4L).get());
        return container.show(GetParam().dialogClass, command.get());
    }

    /// As show, and lets the user see it.
    void showed()
    {
        ASSERT_TRUE(show());
        container.site->activateUi();
        container.pump();
        data.takeCalls();
    }

    void clear()
    {
        data.groups.clear();
        data.names.clear();
        data.types.clear();
    }

    /// As many entries as the list cannot show at once.
    void fillUp()
    {
        for (long id = 10; id < 60; ++id)
        {
            data.groups.push_back({id, L"tree", 3});
            data.names.push_back({id, L"tree", 4});
            data.types.push_back({id, L"tree", 0, 4});
        }
    }

    HWND list() const { return container.control(L"ListBox"); }
    int selected() const { return static_cast<int>(SendMessageW(list(), LB_GETCURSEL, 0, 0)); }
    void select(int index) const { SendMessageW(list(), LB_SETCURSEL, static_cast<WPARAM>(index), 0); }
    HWND button(int index) const { return container.control(L"Button", index); }
    void alt(WORD key) { container.press(key, false, true); }

    std::vector<long> ids() const
    {
        std::vector<long> all(static_cast<std::size_t>(SendMessageW(list(), LB_GETCOUNT, 0, 0)));
        for (std::size_t index = 0; index < all.size(); ++index)
            all[index] = static_cast<long>(SendMessageW(list(), LB_GETITEMDATA, index, 0));
        return all;
    }

    int rowHeight() const { return static_cast<int>(SendMessageW(list(), LB_GETITEMHEIGHT, 0, 0)); }
    /// The middle of a row that may be beyond the list's edges.
    POINT row(int index) const { return {10, index * rowHeight() + rowHeight() / 2}; }
    /// The pointer goes along: while keys are handled, the platform may tell where it is.
    void mouse(UINT message, int index, WPARAM keys = MK_LBUTTON) const
    {
        const POINT place = row(index);
        Container::point(list(), place);
        SendMessageW(list(), message, keys, MAKELPARAM(place.x, place.y));
    }
    void drag(int from, std::initializer_list<int> over) const
    {
        mouse(WM_LBUTTONDOWN, from);
        for (const int index : over)
            mouse(WM_MOUSEMOVE, index);
    }
    void drop() const { mouse(WM_LBUTTONUP, 0, 0); }

    /// What OK stores.
    std::vector<std::string> confirmed()
    {
        data.takeCalls();
        container.press(VK_RETURN);
        EXPECT_EQ(container.submitted, 1);
        EXPECT_THAT(container.done, ElementsAre(false));
        return data.takeCalls();
    }
    std::vector<std::string> stored(std::initializer_list<long> wanted) const
    {
        std::vector<std::string> calls{GetParam().collection};
        for (const long id : wanted)
            calls.push_back(GetParam().store(id, static_cast<long>(calls.size()) - 1));
        return calls;
    }

    RecordingData data;
    Container container;
    ComPtr<IAppCommand> command = create<IAppCommand>(GetParam().commandClass);
};

INSTANTIATE_TEST_SUITE_P(
    All, ctlArrangeTests,
    testing::Values(
        Arranged{"Names", __uuidof(::ctlArrangeNames), __uuidof(::ArrangeNames), L"Resource", L"Res&ources:",
                 "Root.Names()", "Names.Load(4)", "ctlEditNames.Prepare", storeName},
        Arranged{"Types", __uuidof(::ctlArrangeTypes), __uuidof(::ArrangeTypes), L"Activity Types",
                 L"Activity &types:", "Root.Types()", "Types.Load(4)", "ctlEditTypes.Prepare", storeType},
        Arranged{"Groups", __uuidof(::ctlArrangeGroups), __uuidof(::ArrangeGroups), L"Group", L"&Groups:",
                 "Root.Groups()", "Groups.Load()", "ctlEditNames.Prepare", storeGroup}),
    [](const auto& tested) { return tested.param.name; });

} // namespace

TEST_P(ctlArrangeTests, ReadyLoadsWithinAScopeOfTheEditDialog)
{
    EXPECT_TRUE(show());
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.OpenScope(0, \"" + std::string(GetParam().scope) + "\")",
                                              GetParam().collection, GetParam().load, "Scope.Close(0, 0)"));
    EXPECT_THAT(items(list()), ElementsAre(L"ash", L"birch", L"cedar", L"elm"));
    EXPECT_THAT(ids(), ElementsAre(7, 5, 9, 6));
    EXPECT_FALSE(data.hasSubscribers());
}

TEST_P(ctlArrangeTests, WhatItShowsAndIsCalled)
{
    showed();
    EXPECT_EQ(fetch(container.dialog, &IAppDialog::get_Name).view(), GetParam().title);
    // The label before a list is what screen readers call it.
    const HWND label = GetWindow(list(), GW_HWNDPREV);
    EXPECT_EQ(Container::text(label), GetParam().label);
    EXPECT_TRUE(container.visible(label));
    const wchar_t* texts[] = {L"Move to the top (Alt+Home)", L"Move up (Alt+Up)", L"Move down (Alt+Down)",
                              L"Move to the bottom (Alt+End)"};
    for (int index = 0; index < 4; ++index)
    {
        EXPECT_EQ(accessibleName(button(index)), texts[index]);
        EXPECT_NE(SendMessageW(button(index), BM_GETIMAGE, IMAGE_ICON, 0), 0);
        EXPECT_TRUE(IsWindowEnabled(button(index)));
    }
}

TEST_P(ctlArrangeTests, TheFirstEntryIsSelectedAndHasTheFocusOnceTheDialogIsSeen)
{
    ASSERT_TRUE(show());
    EXPECT_EQ(selected(), -1);
    container.site->activateUi();
    container.pump();
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(GetFocus(), list());
}

TEST_P(ctlArrangeTests, AnyOtherOperationShowsNothingAndItsCommandWritesNothing)
{
    for (const long operation : {1L, 2L, 0L, 4L})
    {
        EXPECT_FALSE(show(operation));
        EXPECT_THAT(items(list()), IsEmpty());
        container.site->activateUi();
        container.pump();
        data.takeCalls();
        container.press(VK_RETURN);
        EXPECT_EQ(std::exchange(container.submitted, 0), 1);
        EXPECT_THAT(data.takeCalls(), ElementsAre(GetParam().collection));
        EXPECT_THAT(container.errors, IsEmpty());
        container.close();
    }
}

TEST_P(ctlArrangeTests, ButtonsMoveTheSelectedEntry)
{
    showed();
    select(2);
    Container::click(button(1)); // up
    EXPECT_THAT(ids(), ElementsAre(7, 9, 5, 6));
    EXPECT_EQ(selected(), 1);
    Container::click(button(3)); // to the bottom
    EXPECT_THAT(ids(), ElementsAre(7, 5, 6, 9));
    EXPECT_EQ(selected(), 3);
    Container::click(button(0)); // to the top
    EXPECT_THAT(ids(), ElementsAre(9, 7, 5, 6));
    EXPECT_EQ(selected(), 0);
    Container::click(button(2)); // down
    EXPECT_THAT(ids(), ElementsAre(7, 9, 5, 6));
    EXPECT_EQ(selected(), 1);
    EXPECT_THAT(items(list()), ElementsAre(L"ash", L"cedar", L"birch", L"elm"));
    EXPECT_THAT(data.takeCalls(), IsEmpty()); // nothing is stored before OK
}

TEST_P(ctlArrangeTests, AltWithTheArrowKeysMovesTheSelectedEntry)
{
    showed();
    alt(VK_DOWN);
    EXPECT_THAT(ids(), ElementsAre(5, 7, 9, 6));
    alt(VK_END);
    EXPECT_THAT(ids(), ElementsAre(5, 9, 6, 7));
    EXPECT_EQ(selected(), 3);
    alt(VK_UP);
    EXPECT_THAT(ids(), ElementsAre(5, 9, 7, 6));
    alt(VK_HOME);
    EXPECT_THAT(ids(), ElementsAre(7, 5, 9, 6));
    EXPECT_EQ(selected(), 0);
}

TEST_P(ctlArrangeTests, WithoutAltTheKeysOnlySelect)
{
    showed();
    for (const auto& [key, expected] : {std::pair{VK_DOWN, 1}, {VK_END, 3}, {VK_UP, 2}, {VK_HOME, 0}})
    {
        container.press(static_cast<WORD>(key));
        EXPECT_EQ(selected(), expected);
    }
    EXPECT_THAT(ids(), ElementsAre(7, 5, 9, 6));
}

TEST_P(ctlArrangeTests, AtTheEndsNothingMoves)
{
    showed();
    for (const int index : {0, 1})
        Container::click(button(index));
    EXPECT_EQ(selected(), 0);
    select(3);
    for (const int index : {2, 3})
        Container::click(button(index));
    EXPECT_EQ(selected(), 3);
    EXPECT_THAT(ids(), ElementsAre(7, 5, 9, 6));
}

TEST_P(ctlArrangeTests, WithoutASelectionNothingMovesAndNothingIsLost)
{
    showed();
    select(-1);
    for (const int index : {0, 1, 2, 3})
        Container::click(button(index));
    SetFocus(list());
    for (const int key : {VK_UP, VK_DOWN, VK_HOME, VK_END})
        alt(static_cast<WORD>(key));
    EXPECT_THAT(ids(), ElementsAre(7, 5, 9, 6));
    EXPECT_EQ(selected(), -1);
    EXPECT_THAT(container.errors, IsEmpty());
}

TEST_P(ctlArrangeTests, OkStoresTheOrderThatTheListShows)
{
    showed();
    alt(VK_END);
    EXPECT_EQ(confirmed(), stored({5, 9, 6, 7}));
}

TEST_P(ctlArrangeTests, CancelStoresNothing)
{
    showed();
    alt(VK_END);
    container.press(VK_ESCAPE);
    EXPECT_THAT(container.done, ElementsAre(true));
    EXPECT_EQ(container.submitted, 0);
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_P(ctlArrangeTests, WithoutItemsThereIsOneEmptyEntryWhosePlaceIsStored)
{
    clear();
    showed();
    EXPECT_THAT(items(list()), ElementsAre(L""));
    alt(VK_END);
    EXPECT_EQ(confirmed(), stored({0}));
}

TEST_P(ctlArrangeTests, AFailureOfTheHostLeavesTheListAsItIs)
{
    showed();
    alt(VK_DOWN);
    container.onSubmit = [](IAppCommand&) -> bool {
        throw Failure(locked.number, locked.source, locked.description);
    };
    container.press(VK_RETURN);
    EXPECT_THAT(container.errors, ElementsAre(locked));
    EXPECT_THAT(container.done, IsEmpty());
    EXPECT_THAT(ids(), ElementsAre(5, 7, 9, 6));
    EXPECT_EQ(selected(), 1);
}

TEST_P(ctlArrangeTests, AFailureOfALaterLoadLeavesTheListAsItIsAndNothingIsStored)
{
    showed();
    alt(VK_DOWN);
    data.fail("Root.OpenScope", locked);
    EXPECT_FALSE(container.ready());
    EXPECT_THAT(container.errors, ElementsAre(locked));
    EXPECT_THAT(ids(), ElementsAre(5, 7, 9, 6));

    const std::string loading = GetParam().load;
    data.groups.push_back({10, L"fir", 3});
    data.names.push_back({10, L"fir", 4});
    data.types.push_back({10, L"fir", 0, 4});
    data.fail(loading.substr(0, loading.find('(')), locked);
    EXPECT_FALSE(container.ready());
    container.press(VK_RETURN);
    EXPECT_EQ(container.errors, std::vector(3, locked));
    EXPECT_EQ(container.submitted, 0);
    EXPECT_THAT(ids(), ElementsAre(5, 7, 9, 6));

    EXPECT_TRUE(container.ready());
    EXPECT_EQ(confirmed(), stored({7, 5, 9, 6, 10}));
}

TEST_P(ctlArrangeTests, TheHostMayEndTheDialogWhenItIsToldThatItCouldNotLoad)
{
    container.place(GetParam().dialogClass, command.get());
    const auto dialog = container.dialog;
    container.site->onError = [this](HRESULT, std::wstring_view, std::wstring_view) { container.close(); };
    VARIANT_BOOL ready = VARIANT_TRUE;
    dialog->get_Ready(&ready); // the command has no data layer
    EXPECT_EQ(ready, VARIANT_FALSE);
    EXPECT_FALSE(container.dialog);
}

TEST_P(ctlArrangeTests, WhatTheHostHasLoadedMeanwhileIsNotStored)
{
    showed();
    const auto exchange = [](auto& rows) { rows.back().id = 10; };
    const std::function<void()> changes[] = {[&] {
                                                 exchange(data.groups);
                                                 exchange(data.names);
                                                 exchange(data.types);
                                             },
                                             [this] { fillUp(); }, [this] { clear(); }};
    for (const auto& change : changes)
    {
        change();
        fetch(command, &IAppCommand::Prepare);
        data.takeCalls();
        container.press(VK_RETURN);
        ASSERT_EQ(container.errors.size(), 1U);
        EXPECT_EQ(std::exchange(container.errors, {}).front().number, DISP_E_BADINDEX);
        EXPECT_EQ(container.submitted, 0);
        EXPECT_THAT(ids(), ElementsAre(7, 5, 9, 6));
    }
}

TEST_P(ctlArrangeTests, AnEntryGoesAlongWithTheMouse)
{
    showed();
    drag(0, {1, 2});
    EXPECT_THAT(ids(), ElementsAre(5, 9, 7, 6)); // before it is dropped
    EXPECT_EQ(GetCapture(), list());
    mouse(WM_MOUSEMOVE, 1);
    EXPECT_THAT(ids(), ElementsAre(5, 7, 9, 6));
    drop();
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(selected(), 1);
    mouse(WM_MOUSEMOVE, 3, 0);
    EXPECT_THAT(ids(), ElementsAre(5, 7, 9, 6));
    EXPECT_EQ(confirmed(), stored({5, 7, 9, 6}));
}

TEST_P(ctlArrangeTests, AClickIsNoDrag)
{
    showed();
    mouse(WM_LBUTTONDOWN, 2);
    const LPARAM near2 = MAKELPARAM(14, 2 * rowHeight() + rowHeight() / 2 + 1);
    SendMessageW(list(), WM_MOUSEMOVE, MK_LBUTTON, near2);
    drop();
    EXPECT_EQ(selected(), 2);
    EXPECT_THAT(ids(), ElementsAre(7, 5, 9, 6));
}

TEST_P(ctlArrangeTests, NothingIsDraggedFromBelowTheEntries)
{
    showed();
    drag(5, {1, 0});
    drop();
    EXPECT_THAT(ids(), ElementsAre(7, 5, 9, 6));
}

TEST_P(ctlArrangeTests, EscTakesADragBack)
{
    showed();
    drag(0, {1, 3});
    EXPECT_THAT(ids(), ElementsAre(5, 9, 6, 7));
    container.press(VK_ESCAPE);
    EXPECT_THAT(ids(), ElementsAre(7, 5, 9, 6));
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_THAT(container.done, IsEmpty()); // of the drag alone
    container.press(VK_ESCAPE);
    EXPECT_THAT(container.done, ElementsAre(true));
}

TEST_P(ctlArrangeTests, NoKeyConfirmsDuringADrag)
{
    showed();
    drag(0, {1});
    for (const int key : {VK_RETURN, VK_TAB, VK_END})
        container.press(static_cast<WORD>(key));
    EXPECT_EQ(container.submitted, 0);
    EXPECT_EQ(GetFocus(), list());
    drop();
    EXPECT_THAT(ids(), ElementsAre(5, 7, 9, 6));
}

TEST_P(ctlArrangeTests, ADragEndsWhereTheMouseIsTakenAway)
{
    showed();
    drag(0, {1});
    ReleaseCapture();
    mouse(WM_MOUSEMOVE, 3);
    EXPECT_THAT(ids(), ElementsAre(5, 7, 9, 6));
}

TEST_P(ctlArrangeTests, BeyondTheEdgesTheListScrollsWithTheEntry)
{
    fillUp();
    showed();
    drag(0, {1, 40});
    const int first = selected();
    EXPECT_GT(first, 5);
    for (int tick = 0; tick < 10; ++tick)
        SendMessageW(list(), WM_TIMER, 1, 0);
    EXPECT_EQ(selected(), first + 10);
    EXPECT_EQ(ids()[static_cast<std::size_t>(first) + 10], 7);
    EXPECT_GT(SendMessageW(list(), LB_GETTOPINDEX, 0, 0), 5);
    mouse(WM_MOUSEMOVE, -3);
    for (int tick = 0; tick < 60; ++tick)
        SendMessageW(list(), WM_TIMER, 1, 0);
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(ids().front(), 7);
    drop();
}

TEST_P(ctlArrangeTests, TheHostMayEndTheDialogDuringADrag)
{
    showed();
    drag(0, {1});
    container.close();
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_FALSE(data.hasSubscribers());
}

TEST_P(ctlArrangeTests, ListAndButtonsFollowTheSizeOfTheDialog)
{
    showed();
    RECT designed{};
    GetClientRect(container.dialogWindow(), &designed);
    const auto lists = container.place(list());
    const auto buttons = container.place(button(0));
    const auto cancels = container.place(container.button(L"Cancel"));
    for (const SIZE grown : {SIZE{200, 150}, SIZE{-20, -40}})
    {
        const RECT place{0, 0, designed.right + grown.cx, designed.bottom + grown.cy};
        call(container.dialog.as<IOleInPlaceObject>(), &IOleInPlaceObject::SetObjectRects, &place, &place);
        EXPECT_NEAR(container.place(list()).right - lists.right, grown.cx, 1);
        EXPECT_NEAR(container.place(list()).bottom - lists.bottom, grown.cy, 1);
        EXPECT_NEAR(container.place(button(0)).left - buttons.left, grown.cx, 1);
        EXPECT_EQ(container.place(button(0)).top, buttons.top);
        EXPECT_NEAR(container.place(container.button(L"Cancel")).right - cancels.right, grown.cx, 1);
        EXPECT_NEAR(container.place(container.button(L"Cancel")).bottom - cancels.bottom, grown.cy, 1);
    }
}

TEST_P(ctlArrangeTests, NoSizeIsTooSmallForItsButtons)
{
    showed();
    const RECT tiny{0, 0, 10, 10};
    call(container.dialog.as<IOleInPlaceObject>(), &IOleInPlaceObject::SetObjectRects, &tiny, &tiny);
    RECT whole{};
    GetClientRect(container.dialogWindow(), &whole);
    const RECT lists = container.place(list());
    const RECT bottom = container.place(button(3));
    const RECT ok = container.place(container.button(L"OK"));
    EXPECT_GE(ok.left, 0);
    EXPECT_LE(ok.bottom, whole.bottom);
    EXPECT_GE(ok.top, bottom.bottom);
    EXPECT_GT(lists.right, lists.left + 50);
    EXPECT_LE(lists.bottom, ok.top);
}

TEST_P(ctlArrangeTests, ReadyRestoresTheDesignedSize)
{
    showed();
    RECT designed{};
    GetClientRect(container.dialogWindow(), &designed);
    const RECT large{0, 0, 900, 700};
    call(container.dialog.as<IOleInPlaceObject>(), &IOleInPlaceObject::SetObjectRects, &large, &large);
    EXPECT_TRUE(container.ready());
    RECT now{};
    GetClientRect(container.dialogWindow(), &now);
    EXPECT_TRUE(EqualRect(&now, &designed)) << now.right << " x " << now.bottom;
}

} // namespace korvane::test
