// What only the dialog of activity types does.
#include "tests/masterdata/ListEditor.h"

namespace korvane::test
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class ctlEditTypesTests : public ListEditorTest
{
protected:
    ctlEditTypesTests() : ListEditorTest(activityTypes()) {}

    /// As on a system where also the second click of a double click selects.
    void secondClickOn(int index) const
    {
        SendMessageW(list(), LB_SETCURSEL, static_cast<WPARAM>(index), 0);
        SendMessageW(container.dialogWindow(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list()), LBN_DBLCLK),
                     reinterpret_cast<LPARAM>(list()));
    }

    void doubleClickBeside() const
    {
        RECT client{};
        GetClientRect(list(), &client);
        Container::clickAt(list(), 5, client.bottom - 3, true);
    }
};

} // namespace

TEST_F(ctlEditTypesTests, ReadyMakesTheseCalls)
{
    EXPECT_TRUE(show(3));
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.OpenScope(0, \"ctlEditTypes.Prepare\")", "Scope.Close(0, 0)",
                            "Root.Types()", "Root.OpenScope(0, \"ctlEditTypes.FetchData\")", "Types.Load(4)",
                            "Types.HasAccess(3, 5)", "Types.HasAccess(3, 6)", "Types.HasAccess(3, 9)",
                            "Types.HasAccess(3, 8)", "Scope.Close(0, 0)"));
}

TEST_F(ctlEditTypesTests, OkMakesTheseCalls)
{
    showed(1);
    enterName(L"Frida");
    confirm();
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Types()", "Types.Add(\"Frida\", " + shown(colorOf(swatch(0))) + ", 3)",
                            "Types.AddToGroup(100, 4, 0)", "Root.OpenScope(-1, \"EditTypes.Next\")",
                            "Scope.Close(-1, 0)"));
}

/// Deliberately unlike the dialog of resources.
TEST_F(ctlEditTypesTests, ATypeWithoutANameIsSaved)
{
    showed(1);
    confirm();
    EXPECT_THAT(container.errors, IsEmpty());
    EXPECT_THAT(data.calls, Contains("Types.Add(\"\", " + shown(colorOf(swatch(0))) + ", 3)"));
}

TEST_F(ctlEditTypesTests, ADoubleClickSavesAtOnceInEveryOperation)
{
    const std::pair<long, const char*> writes[] = {{1, "Types.AddToGroup(7, 4, 0)"},
                                                   {2, "Types.RemoveFromGroup(5, 4)"},
                                                   {3, "Types.Update(6, \"Ben\", 0, 3)"}};
    for (const auto& [operation, write] : writes)
    {
        command = create<IAppCommand>(kind.command);
        showed(operation);
        clickItem(list(), 0, true);
        EXPECT_THAT(data.takeCalls(), Contains(write));
        EXPECT_EQ(id(), 0);
        EXPECT_EQ(Container::text(nameBox()), L"");
        EXPECT_THAT(container.done, IsEmpty());
        container.close();
    }
}

TEST_F(ctlEditTypesTests, ADoubleClickOnATypeThatCannotBeReadDoesNothingToAnother)
{
    data.types.push_back({10, L"Fritz", 0, 5});
    for (const long operation : {1L, 2L, 3L})
        for (const bool another : {false, true})
        {
            command = create<IAppCommand>(kind.command);
            showed(operation);
            if (another)
                select(0);
            data.fail("Types.Fetch", locked);
            clickItem(list(), 1, true);
            EXPECT_THAT(container.errors, ElementsAre(locked));
            EXPECT_EQ(container.submitted, 0);
            EXPECT_EQ(selected(), another ? 0 : -1);
            secondClickOn(1);
            EXPECT_EQ(container.submitted, 0);
            EXPECT_EQ(selected(), another ? 0 : -1);
            container.errors.clear();
            container.close();
        }
}

TEST_F(ctlEditTypesTests, ADoubleClickIsForTheTypeThatIsAtHandAndMarked)
{
    showed(2);
    select(0);
    data.takeCalls();
    secondClickOn(1); // another one stands there now
    EXPECT_EQ(container.submitted, 0);
    EXPECT_EQ(selected(), 0);
    doubleClickBeside();
    EXPECT_THAT(data.takeCalls(), Contains("Types.RemoveFromGroup(5, 4)"));
}

TEST_F(ctlEditTypesTests, ADoubleClickBesideTheTypesIsOkToo)
{
    showed(2);
    doubleClickBeside();
    EXPECT_EQ(container.submitted, 0); // nothing is selected to remove
}

} // namespace korvane::test
