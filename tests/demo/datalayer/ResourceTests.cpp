#include "tests/demo/datalayer/ActivityTest.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Lists : public ActivityTest
{
protected:
    void TearDown() override
    {
        names.reset();
        types.reset();
        ActivityTest::TearDown();
    }

    template <class Collection>
    static Lines announced(const ComPtr<Collection>& collection, REFIID events, long group)
    {
        const Listener::Subscription listener(collection, events);
        EXPECT_TRUE(korvane::fetch(collection, &Collection::Load, group));
        return listener->events();
    }
    Lines namesOf(long group) const { return announced(names, DIID_INamesEvents, group); }
    Lines typesOf(long group) const { return announced(types, DIID_ITypesEvents, group); }

    ComPtr<INames> names = korvane::fetch(desk->root, &IRoot::get_Names);
    ComPtr<ITypes> types = korvane::fetch(desk->root, &IRoot::get_Types);
    const std::wstring activity = L"OnAdd 0, Activity, 12566463";
    const std::wstring meetings = L"OnAdd 1, Meeting, 16711680";
    const std::wstring travel = L"OnAdd 2, Travel, 0";
};

class Resources : public Lists
{
};

class ActivityTypes : public Lists
{
};

} // namespace

TEST_F(Resources, OfAGroupAreAnnouncedInTheirOrder)
{
    sql("UPDATE group_names SET position = -position");
    EXPECT_EQ((Lines{L"OnClear", L"OnAdd 4, Carla, 4, 0", L"OnAdd 3, Bert, 4, 0", L"OnAdd 2, Anna, 4, 255"}),
              namesOf(4));
    EXPECT_EQ((Lines{L"OnClear", L"OnAdd 5, Van, 5, 65280"}), namesOf(5));
}

TEST_F(Resources, OfAllGroupsAreAnnouncedGroupByGroup)
{
    sql("INSERT INTO group_names (group_id, name_id, position) VALUES (5, 2, 2);"
        "UPDATE groups SET position = 0 WHERE id = 5");
    EXPECT_EQ((Lines{L"OnClear", L"OnAdd 5, Van, 5, 65280", L"OnAdd 2, Anna, 5, 255",
                     L"OnAdd 2, Anna, 4, 255", L"OnAdd 3, Bert, 4, 0", L"OnAdd 4, Carla, 4, 0"}),
              namesOf(0));
}

TEST_F(Resources, HaveABuiltInOneThatIsInNoGroup)
{
    EXPECT_EQ(L"SuperUser", sqlText("SELECT name FROM names WHERE id = 1"));
    EXPECT_TRUE(
        attempt([&] { sql("INSERT INTO group_names (group_id, name_id, position) VALUES (4, 1, 9)"); }));
}

TEST_F(Resources, LeaveTheirGroupsWithTheGroupAndAreUnassignedThen)
{
    remove(groupsOf(desk->root), 5);
    EXPECT_EQ((Lines{L"OnClear", L"OnAdd 5, Van, 3, 65280", L"OnAdd 2, Anna, 4, 255", L"OnAdd 3, Bert, 4, 0",
                     L"OnAdd 4, Carla, 4, 0"}),
              namesOf(0));
    EXPECT_EQ((Lines{L"OnClear", L"OnAdd 5, Van, 3, 65280"}), namesOf(3));
}

TEST_F(ActivityTypes, OfAGroupWithoutItsOwnAreAll)
{
    EXPECT_EQ((Lines{L"OnClear", activity, meetings, travel}), typesOf(4));
    EXPECT_EQ((Lines{L"OnClear", activity, meetings, travel}), typesOf(0));
}

TEST_F(ActivityTypes, OfAGroupAreAnnouncedInTheirOrderAfterTheBuiltInOne)
{
    sql("INSERT INTO group_types (group_id, type_id, position) VALUES (4, 1, 2), (4, 2, 1), (5, 2, 1)");
    EXPECT_EQ((Lines{L"OnClear", activity, travel, meetings}), typesOf(4));
    EXPECT_EQ((Lines{L"OnClear", activity, travel}), typesOf(5));
    EXPECT_EQ((Lines{L"OnClear", activity, meetings, travel}), typesOf(0));
}

TEST_F(ActivityTypes, HaveTheBuiltInOneInTheirOrderWhereItWasGivenAPlace)
{
    sql("INSERT INTO group_types (group_id, type_id, position) VALUES (4, 1, 1), (4, 0, 9), (5, 0, 1)");
    EXPECT_EQ((Lines{L"OnClear", meetings, activity}), typesOf(4));
    EXPECT_EQ((Lines{L"OnClear", activity, meetings, travel}), typesOf(5));
}
