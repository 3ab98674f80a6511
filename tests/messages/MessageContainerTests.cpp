// The information rows in a container of the platform's own, which hears nothing of what the dialog tells, executes
// nothing, and leaves it to the host's message loop to offer the keys.
#include "tests/messages/InfoDialog.h"
#include "tests/support/AtlContainer.h"
#include "tests/support/ComRules.h"
#include "tests/support/Messages.h"

namespace korvane::test
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class MessageContainerTests : public InfoDialogTest
{
protected:
    void SetUp() override
    {
        call(command, &IAppCommand::put_Operation, 1L);
        let(L"NameID", Variant(van)); // it opens on the rows
        container.dialog = create<IAppDialog>(__uuidof(::ctlInfoMessage));
        plain.attach(container.dialog.as<IUnknown>().get());
        call(container.dialog, &IAppDialog::putref_Command, command.as<IDispatch>().get());
        ASSERT_TRUE(container.ready());
        SetFocus(gridWindow());
        pumpMessages();
        data.takeCalls();
    }

    /// A key that the host's loop offers the dialog first.
    void press(WORD key) const
    {
        const auto dialog = container.dialog.as<IOleInPlaceActiveObject>();
        PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
        pumpMessages([&](MSG& message) { return dialog->TranslateAccelerator(&message) == S_OK; });
    }

    AtlContainer plain{{416, 304}};
};

TEST_F(MessageContainerTests, TheRowsAreSeenAndRead)
{
    EXPECT_TRUE(IsChild(plain.window(), gridWindow()));
    EXPECT_TRUE(isOnInfo());
    EXPECT_EQ(Element::ofWindow(gridWindow()).role(), ROLE_SYSTEM_TABLE);
    EXPECT_THAT(grid().texts(), ElementsAre(Pair(L"Plate", L"KD 1234"), Pair(L"", L"")));
    EXPECT_EQ(grid().current(), std::pair(1, 1));
}

TEST_F(MessageContainerTests, ARowIsEditedByMouseAndKeys)
{
    grid().click(1, 2);
    pumpMessages();
    EXPECT_EQ(GetFocus(), editor());
    AtlContainer::type(L"KD 4321");
    press(VK_DOWN);
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(grid().text(1, 2), L"KD 4321");
    EXPECT_EQ(grid().current(), std::pair(2, 2));
    press(VK_LEFT);
    AtlContainer::type(L"Boat"); // into the blank row
    press(VK_TAB);
    EXPECT_THAT(grid().texts(), ElementsAre(Pair(L"Plate", L"KD 4321"), Pair(L"Boat", L""), Pair(L"", L"")));
    press(VK_TAB);
    grid().click(1, 2);
    AtlContainer::type(L"nonsense");
    press(VK_ESCAPE);
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(grid().text(1, 2), L"KD 4321");
}

TEST_F(MessageContainerTests, TheWheelScrollsAndWhatIsBeingTypedIsTakenOver)
{
    for (int row = 0; row < 20; ++row)
    {
        press(VK_NEXT); // to the blank row
        press(VK_LEFT);
        AtlContainer::type(L"more");
        press(VK_RIGHT);
    }
    grid().click(21, 1);
    AtlContainer::type(L"last");
    const LONG before = grid().place(21, 1).top;
    PostMessageW(gridWindow(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(120)), 0);
    pumpMessages();
    EXPECT_GT(grid().place(21, 1).top, before);
    EXPECT_EQ(grid().text(21, 1), L"last");
    EXPECT_EQ(grid().rows(), 23);
}

TEST_F(MessageContainerTests, OkLeavesTheRowsToTheHost)
{
    grid().click(1, 2);
    AtlContainer::type(L"KD 4321");
    Container::click(container.button(L"OK"));
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    EXPECT_TRUE(container.visible(gridWindow()));
    fetch(command, &IAppCommand::Execute);
    EXPECT_THAT(data.takeCalls(), Contains("Names.SetInfo(8, \"Plate\", 0, \"KD 4321\")"));
}

TEST_F(MessageContainerTests, TheEndOfTheContainersWindowReleasesEverythingAlsoAmidAnEdit)
{
    const Element cell = grid().cell(1, 2);
    grid().click(1, 2);
    AtlContainer::type(L"KD 4321");
    DestroyWindow(plain.window());
    pumpMessages();
    VARIANT role{};
    EXPECT_TRUE(FAILED(cell.object->get_accRole(Variant(0L).get(), &role)));
    container.dialog.reset();
    command.reset();
    info.reset();
    EXPECT_FALSE(data.hasSubscribers());
    EXPECT_EQ(references(data.root.get()), 1U);
}

} // namespace korvane::test
