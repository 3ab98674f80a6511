// What the user meets when the data layer refuses: the reason, and a dialog that has kept everything.
#include "tests/activities/Story.h"

namespace korvane::test
{

using store::Connection;
using testing::ElementsAre;
using testing::IsEmpty;

class RefusalStoryTests : public StoryTests
{
protected:
    /// Opens the database again, to wait no longer than a test can.
    void openImpatiently()
    {
        call(database, &IDatabase::put_LockTimeout, 50L);
        open();
    }

    void open()
    {
        root = StoryTests::open();
        call(root, &IRoot::get_Events, events.put());
    }
};

class SharedActivityRefusalStoryTests : public SharedActivityStoryTests
{
};

TEST_F(RefusalStoryTests, ALockedDatabaseKeepsTheDialogAndOkWorksWhenTheLockIsGone)
{
    openImpatiently();
    openNew(10);
    retype(textBox(), L"Patience");
    toggleByKey(node(L"B", L"Crew"));
    {
        Connection other(file, 0);
        other.execute("BEGIN IMMEDIATE");
        container.press(VK_RETURN);
        EXPECT_THAT(container.done, IsEmpty());
        ASSERT_EQ(container.errors.size(), 1U);
        EXPECT_EQ(container.errors[0].description,
                  L"The database is locked by another user. Try again in a moment.");
        EXPECT_EQ(Container::text(textBox()), L"Patience");
        EXPECT_TRUE(nodeChecked(node(L"B", L"Crew")));
        other.execute("ROLLBACK");
    }
    container.errors.clear();
    confirm();
    EXPECT_THAT(schedule(),
                testing::UnorderedElementsAre(L"A 11-23 09:00 Patience", L"B 11-23 09:00 Patience"));
}

TEST_F(RefusalStoryTests, AnActivityIsGivenToAnotherResourceWhenTheLockIsGone)
{
    openImpatiently();
    openNew(10);
    confirm();
    const long event = operandNumber(L"EventID");
    openStored(event, 0, 'Y');
    toggleByKey(node(L"A", L"Crew"));
    toggleByKey(node(L"B", L"Crew"));
    {
        Connection other(file, 0);
        other.execute("BEGIN IMMEDIATE");
        container.press(VK_RETURN);
        container.press(VK_RETURN);
        EXPECT_THAT(container.done, IsEmpty());
        EXPECT_EQ(container.errors.size(), 2U);
        other.execute("ROLLBACK");
    }
    container.errors.clear();
    confirm();
    EXPECT_THAT(schedule(), ElementsAre(L"B 11-23 09:00 "));
    EXPECT_EQ(operandNumber(L"EventID"), event);
}

TEST_F(RefusalStoryTests, AReadOnlyDatabaseKeepsTheDialog)
{
    root.reset();
    events.reset();
    const store::test::WriteProtection protection(file);
    open();
    openNew(10);
    retype(textBox(), L"In vain");
    toggleByKey(node(L"B", L"Crew"));
    container.press(VK_RETURN);
    EXPECT_THAT(container.done, IsEmpty());
    ASSERT_EQ(container.errors.size(), 1U);
    EXPECT_EQ(container.errors[0].description, L"The database is read-only.");
    EXPECT_EQ(Container::text(textBox()), L"In vain");
    EXPECT_TRUE(nodeChecked(node(L"B", L"Crew")));
    container.press(VK_ESCAPE);
    EXPECT_THAT(container.done, ElementsAre(true));
    EXPECT_THAT(schedule(), IsEmpty());
}

TEST_F(SharedActivityRefusalStoryTests, AnActivityWithoutAnyResourceIsRefusedAndNothingIsLost)
{
    openStored(ofA, 0, 'Y');
    const auto before = schedule();
    toggleByKey(node(L"A", L"Crew"));
    toggleByKey(node(L"C", L"Crew"));
    container.press(VK_RETURN);
    EXPECT_THAT(container.done, IsEmpty());
    ASSERT_EQ(container.errors.size(), 1U);
    EXPECT_EQ(container.errors[0].description,
              L"An activity needs a resource. Delete it to take it from all of them.");
    EXPECT_EQ(schedule(), before);
    container.errors.clear();
    toggleByKey(node(L"A", L"Crew"));
    confirm();
    EXPECT_THAT(schedule(), ElementsAre(L"A 11-23 09:00 Lift"));
}

} // namespace korvane::test
