// What each role permits with resources, activity types, logins and activities.
#include "tests/demo/datalayer/Office.h"

#include <gmock/gmock.h>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;
using testing::ElementsAre;

namespace
{

/// Anna, the manager, is in group 4 with the users Bert and Carla. The van is in group 5, and Dora in none.
class Roles : public OfficeTest
{
protected:
    /// The operations (1 add, 2 remove, 3 change) that an account may perform on an item.
    template <class Collection>
    static Lines rights(const ComPtr<Collection>& items, const std::vector<long>& ids)
    {
        Lines result;
        for (const long id : ids)
        {
            std::wstring line = std::to_wstring(id) + L':';
            for (const long operation : {1L, 2L, 3L})
                if (Office::may(items, operation, id))
                    line += std::to_wstring(operation);
            result.push_back(line);
        }
        return result;
    }

    const long dora = office->addName(L"Dora");
};

} // namespace

TEST_F(Roles, OfAnAdministratorCoverEverythingButWhatIsBuiltIn)
{
    EXPECT_THAT(rights(office->names, {0, 1, anna, bert, van, dora, unknown}),
                ElementsAre(L"0:123", L"1:", L"2:123", L"3:123", L"5:123", L"6:123", L"4711:"));
    EXPECT_THAT(rights(office->types, {0, meetings, unknown}), ElementsAre(L"0:1", L"1:123", L"4711:"));
}

TEST_F(Roles, OfAManagerCoverHisGroupsAndWhoIsInNone)
{
    EXPECT_THAT(rights(manager->names, {0, 1, anna, bert, van, dora, unknown}),
                ElementsAre(L"0:123", L"1:", L"2:123", L"3:123", L"5:", L"6:123", L"4711:"));
    office->addToGroup(office->names, van, staff);
    EXPECT_THAT(rights(manager->names, {van}), ElementsAre(L"5:123"));
}

TEST_F(Roles, OfAUserCoverHimself)
{
    EXPECT_THAT(rights(user->names, {0, 1, anna, bert, van, dora, unknown}),
                ElementsAre(L"0:3", L"1:", L"2:", L"3:3", L"5:", L"6:", L"4711:"));
    EXPECT_THAT(rights(user->types, {0, meetings}), ElementsAre(L"0:", L"1:"));
}

TEST_F(Roles, OfNobodyCoverNothing)
{
    office->setRole(bert, -1);
    EXPECT_THAT(rights(user->names, {0, bert, dora}), ElementsAre(L"0:", L"3:", L"6:"));
    EXPECT_REFUSED(Desk(user->root).add(meeting(at(2026, 3, 2, 9), bert)), Code::mayNotCreateForOthers,
                   L"Events");
    EXPECT_KEPT(user->setInfo(bert, L"Mobile", 0, L"1"), Code::mayNotEditName, L"Names");
    EXPECT_EQ(L"Bert", user->fetchName(bert).text);
    EXPECT_THAT(user->members(user->names, staff), ElementsAre(anna, bert, carla));
}

TEST_F(Roles, FollowTheResourceThatTheLoginIsAttachedTo)
{
    office->attach(van, L"manager");
    EXPECT_THAT(rights(manager->names, {anna, van}), ElementsAre(L"2:", L"5:123"));
    office->detach(van);
    EXPECT_THAT(rights(manager->names, {0, anna, van, dora}), ElementsAre(L"0:", L"2:", L"5:", L"6:"));
}

TEST_F(Roles, AreNoUseToAManagerWithoutAGroup)
{
    office->removeFromGroup(office->names, anna, staff);
    EXPECT_THAT(rights(manager->names, {0, anna, bert, dora}), ElementsAre(L"0:3", L"2:3", L"3:", L"6:"));
    EXPECT_THAT(rights(manager->types, {0, meetings}), ElementsAre(L"0:", L"1:"));
}

TEST_F(Roles, LetAManagerSetUpHisGroup)
{
    const long emil = manager->addName(L"Emil");
    manager->addAccount(L"emil", emil);
    manager->setSyncLogin(emil, L"emil");
    manager->setRole(emil, 2);
    manager->addToGroup(manager->names, emil, staff);
    manager->addToGroup(manager->names, emil, staff, 1);
    manager->updateName(emil, L"Emilio");
    manager->setInfo(emil, L"Mobile", 0, L"1");
    manager->removeFromGroup(manager->names, bert, staff);
    EXPECT_THAT(office->members(office->names, staff), ElementsAre(anna, emil, carla));
    EXPECT_TRUE(manager->detach(emil));
    EXPECT_TRUE(manager->removeAccount(L"emil"));
}

TEST_F(Roles, KeepAManagerToHisGroups)
{
    EXPECT_KEPT(manager->updateName(van, L"Mine"), Code::mayNotEditName, L"Names");
    EXPECT_KEPT(manager->setRole(van, 3), Code::mayNotEditName, L"Names");
    EXPECT_KEPT(manager->setSyncLogin(van, L"x"), Code::mayNotEditName, L"Names");
    EXPECT_KEPT(manager->setInfo(van, L"x", 0, L"x"), Code::mayNotEditName, L"Names");
    EXPECT_KEPT(manager->addAccount(L"x", van), Code::mayNotEditName, L"Accounts");
    EXPECT_KEPT(manager->attach(van, L"user"), Code::mayNotEditName, L"Accounts");
    EXPECT_KEPT(manager->detach(van), Code::mayNotEditName, L"Accounts");
    // Neither another group, nor the resources of another group for his own.
    EXPECT_KEPT(manager->addToGroup(manager->names, bert, vehicles), Code::mayNotAddNames, L"Names");
    EXPECT_KEPT(manager->addToGroup(manager->names, van, staff), Code::mayNotAddNames, L"Names");
    EXPECT_KEPT(manager->addToGroup(manager->names, van, vehicles, 1), Code::mayNotArrangeNames, L"Names");
    EXPECT_KEPT(manager->removeFromGroup(manager->names, van, vehicles), Code::mayNotRemoveName, L"Names");
}

TEST_F(Roles, LetNobodyTakeOrGiveMoreThanHeHas)
{
    office->addAccount(L"admin2", carla, 1);
    EXPECT_KEPT(manager->setRole(bert, 1), Code::mayNotGiveRole, L"Names");
    EXPECT_KEPT(manager->setRole(carla, 3), Code::mayNotGiveRole, L"Names");
    EXPECT_KEPT(manager->addAccount(L"x", dora, 1), Code::mayNotGiveRole, L"Accounts");
    EXPECT_KEPT(manager->addAccount(L"x", carla), Code::mayNotChangeLogin, L"Accounts", L"admin2");
    EXPECT_KEPT(manager->attach(bert, L"admin2"), Code::mayNotChangeLogin, L"Accounts", L"admin2");
    EXPECT_KEPT(manager->attach(carla, L"user"), Code::mayNotChangeLogin, L"Accounts", L"admin2");
    EXPECT_KEPT(manager->detach(carla), Code::mayNotChangeLogin, L"Accounts", L"admin2");
    EXPECT_KEPT(manager->removeAccount(L"admin2"), Code::mayNotChangeLogin, L"Accounts", L"admin2");
    manager->setRole(carla, 1); // as it is
    manager->updateName(carla, L"Caroline");
}

TEST_F(Roles, KeepAManagerFromLoginsOfOtherGroups)
{
    office->addAccount(L"driver", van);
    EXPECT_KEPT(manager->attach(bert, L"driver"), Code::mayNotChangeLogin, L"Accounts", L"driver");
    EXPECT_KEPT(manager->removeAccount(L"driver"), Code::mayNotChangeLogin, L"Accounts", L"driver");
    office->detach(van);
    manager->attach(bert, L"driver");
}

TEST_F(Roles, LetAUserChangeWhatIsHisOwn)
{
    user->updateName(bert, L"Bertram", 255);
    user->setSyncLogin(bert, L"user");
    user->setRole(bert, 3); // as it is
    user->setInfo(bert, L"Mobile", 0, L"1");
    EXPECT_KEPT(user->setRole(bert, 1), Code::mayNotGiveRole, L"Names");
    EXPECT_KEPT(user->setRole(bert, -1), Code::mayNotGiveRole, L"Names");
    EXPECT_KEPT(user->addName(L"Mine"), Code::mayNotAddNames, L"Names");
    EXPECT_KEPT(user->addToGroup(user->names, bert, vehicles), Code::mayNotAddNames, L"Names");
    EXPECT_KEPT(user->removeFromGroup(user->names, bert, staff), Code::mayNotRemoveName, L"Names");
    EXPECT_KEPT(user->addAccount(L"x", bert), Code::mayNotEditName, L"Accounts");
    EXPECT_KEPT(user->attach(bert, L"employee"), Code::mayNotEditName, L"Accounts");
    EXPECT_KEPT(user->detach(bert), Code::mayNotEditName, L"Accounts");
    EXPECT_KEPT(user->removeAccount(L"nobody"), Code::mayNotChangeLogin, L"Accounts", L"nobody");
    EXPECT_KEPT(user->addType(L"Nap"), Code::mayNotAddTypes, L"Types");
}

TEST_F(Roles, LetAManagerChangeTypesThatNoOtherGroupHas)
{
    const long own = manager->addType(L"Inventory");
    EXPECT_THAT(rights(manager->types, {0, own, meetings}), ElementsAre(L"0:1", L"3:123", L"1:123"));
    manager->addToGroup(manager->types, own, staff);
    manager->updateType(own, L"Stocktaking");
    office->addToGroup(office->types, own, vehicles);
    EXPECT_THAT(rights(manager->types, {own}), ElementsAre(L"3:12"));
    EXPECT_KEPT(manager->updateType(own, L"Mine"), Code::mayNotEditType, L"Types");
    EXPECT_KEPT(manager->addToGroup(manager->types, own, vehicles, 1), Code::mayNotArrangeTypes, L"Types");
    manager->removeFromGroup(manager->types, own, staff);
    EXPECT_KEPT(manager->removeFromGroup(manager->types, own, vehicles), Code::mayNotRemoveType, L"Types");
}

TEST_F(Roles, LetAManagerRenameHisGroups)
{
    EXPECT_TRUE(hasAccess(manager->groups, 3, staff));
    EXPECT_FALSE(hasAccess(manager->groups, 3, vehicles));
    EXPECT_FALSE(hasAccess(manager->groups, 2, staff));
    EXPECT_FALSE(hasAccess(manager->groups, 1, 0));
    update(manager->groups, staff, L"Team");
}

TEST_F(Roles, LetAManagerBookForHisGroups)
{
    const Desk planner(manager->root);
    const long event = planner.add(meeting(at(2026, 3, 2, 9), bert));
    planner.update(event, 0, meeting(at(2026, 3, 3, 9), carla));
    const long foreign = desk->add(meeting(at(2026, 3, 2, 9), van));
    EXPECT_TRUE(planner.hasAccess(1, 0));
    EXPECT_TRUE(planner.hasAccess(3, 0));
    EXPECT_TRUE(planner.hasAccess(3, event));
    EXPECT_FALSE(planner.hasAccess(3, foreign));
    EXPECT_REFUSED(planner.add(meeting(at(2026, 3, 2, 9), van)), Code::mayNotCreateForOthers, L"Events");
    EXPECT_REFUSED(planner.update(event, 0, meeting(at(2026, 3, 2, 9), van)), Code::mayNotEditForOthers,
                   L"Events");
    EXPECT_REFUSED(planner.remove(foreign), Code::mayNotEditForOthers, L"Events");
    planner.remove(event);
}
