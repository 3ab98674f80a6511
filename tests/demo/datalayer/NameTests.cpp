#include "tests/demo/datalayer/Office.h"

#include <gmock/gmock.h>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;
using testing::ElementsAre;

namespace
{

class EditedResources : public OfficeTest
{
};

} // namespace

TEST_F(EditedResources, MayHaveTheNameOfAnother)
{
    EXPECT_NE(office->addName(L"Anna"), office->addName(L"Anna"));
}

TEST_F(EditedResources, NeedAName)
{
    for (const wchar_t* blank : {L"", L" \t"})
    {
        EXPECT_KEPT(office->addName(blank), Code::nameNeedsText, L"Names");
        EXPECT_KEPT(office->updateName(bert, blank), Code::nameNeedsText, L"Names");
    }
}

TEST_F(EditedResources, ThatAreUnknownAreTold)
{
    EXPECT_ERROR(office->fetchName(unknown), Code::unknownName, L"Names");
    EXPECT_ERROR(office->role(unknown), Code::unknownName, L"Names");
    EXPECT_ERROR(office->mailbox(unknown), Code::unknownName, L"Names");
    EXPECT_ERROR(office->info(unknown), Code::unknownName, L"Names");
    EXPECT_KEPT(office->updateName(unknown, L""), Code::unknownName, L"Names");
    EXPECT_KEPT(office->addToGroup(office->names, unknown, staff), Code::unknownName, L"Names");
    EXPECT_KEPT(office->removeFromGroup(office->names, unknown, staff), Code::unknownName, L"Names");
    EXPECT_KEPT(office->setRole(unknown, 3), Code::unknownName, L"Names");
    EXPECT_KEPT(office->setSyncLogin(unknown, L"x"), Code::unknownName, L"Names");
    EXPECT_KEPT(office->setInfo(unknown, L"Mobile", 0, L"x"), Code::unknownName, L"Names");
    EXPECT_KEPT(office->updateName(0, L"x"), Code::unknownName, L"Names");
}

TEST_F(EditedResources, AreInSeveralGroups)
{
    office->addToGroup(office->names, bert, vehicles);
    EXPECT_THAT(office->members(office->names, staff), ElementsAre(anna, bert, carla));
    EXPECT_THAT(office->members(office->names, vehicles), ElementsAre(van, bert));
    EXPECT_THAT(office->members(office->names, 0), ElementsAre(anna, bert, carla, van, bert));
    office->removeFromGroup(office->names, bert, staff);
    EXPECT_THAT(office->members(office->names, 0), ElementsAre(anna, carla, van, bert));
}

TEST_F(EditedResources, ComeLastAndStayWhereTheyAre)
{
    const long dora = office->addName(L"Dora");
    office->addToGroup(office->names, dora, staff);
    office->addToGroup(office->names, anna, staff);
    EXPECT_THAT(office->members(office->names, staff), ElementsAre(anna, bert, carla, dora));
}

TEST_F(EditedResources, HaveAnOrderOfTheirOwnInEachGroup)
{
    office->addToGroup(office->names, anna, vehicles);
    long position = 0;
    for (const long name : {carla, anna, bert})
        office->addToGroup(office->names, name, staff, ++position);
    EXPECT_THAT(office->members(office->names, staff), ElementsAre(carla, anna, bert));
    EXPECT_THAT(office->members(office->names, vehicles), ElementsAre(van, anna));
    office->addToGroup(office->names, bert, vehicles, 1);
    EXPECT_THAT(office->members(office->names, vehicles), ElementsAre(bert, van, anna));
}

TEST_F(EditedResources, OfAnEmptyGroupAreArrangedWithoutAnEffect)
{
    const std::wstring before = masterData();
    office->addToGroup(office->names, 0, vehicles, 1);
    EXPECT_EQ(before, masterData());
    EXPECT_KEPT(office->addToGroup(office->names, 0, vehicles), Code::unknownName, L"Names");
}

TEST_F(EditedResources, ThatLeaveTheirLastGroupStayWithTheirActivitiesAndAreUnassigned)
{
    const long event = desk->add(meeting());
    office->removeFromGroup(office->names, anna, staff);
    EXPECT_EQ(anna, desk->fetch(event).name);
    EXPECT_EQ(L"Anna", office->fetchName(anna).text);
    EXPECT_THAT(office->members(office->names, 3), ElementsAre(anna));
    EXPECT_THAT(office->members(office->names, 0), ElementsAre(anna, bert, carla, van));
    office->addToGroup(office->names, anna, vehicles);
    EXPECT_THAT(office->members(office->names, 3), ElementsAre());
}

TEST_F(EditedResources, ThatAreNewAreUnassignedUntilTheyAreInAGroup)
{
    const long dora = office->addName(L"Dora");
    EXPECT_THAT(office->members(office->names, 3), ElementsAre(dora));
}

TEST_F(EditedResources, AreRemovedFromAGroupThatTheyAreNotInWithoutAnEffect)
{
    const std::wstring before = masterData();
    office->removeFromGroup(office->names, van, staff);
    EXPECT_EQ(before, masterData());
}

TEST_F(EditedResources, NeedAGroupThatExists)
{
    EXPECT_KEPT(office->addToGroup(office->names, anna, unknown), Code::unknownGroup, L"Names");
    EXPECT_KEPT(office->removeFromGroup(office->names, anna, unknown), Code::unknownGroup, L"Names");
}

TEST_F(EditedResources, AreNotMembersOfBuiltInGroups)
{
    for (const long group : {1L, 2L, 3L})
    {
        EXPECT_KEPT(office->addToGroup(office->names, anna, group), Code::mayNotAddNames, L"Names");
        EXPECT_KEPT(office->addToGroup(office->names, anna, group, 1), Code::mayNotArrangeNames, L"Names");
        EXPECT_KEPT(office->removeFromGroup(office->names, anna, group), Code::mayNotRemoveName, L"Names");
    }
}

TEST_F(EditedResources, HaveABuiltInOneThatNobodyChanges)
{
    EXPECT_EQ((Resource{L"SuperUser", 0, 1, L"admin", 2, 1}), office->fetchName(1));
    for (const long operation : {1L, 2L, 3L})
        EXPECT_FALSE(office->may(office->names, operation, 1));
    EXPECT_KEPT(office->addToGroup(office->names, 1, staff), Code::superUserInGroup, L"Names");
    EXPECT_KEPT(office->removeFromGroup(office->names, 1, staff), Code::mayNotRemoveName, L"Names");
    EXPECT_KEPT(office->updateName(1, L"Me"), Code::mayNotEditName, L"Names");
    EXPECT_KEPT(office->setRole(1, 3), Code::mayNotEditName, L"Names");
    EXPECT_KEPT(office->setSyncLogin(1, L"admin"), Code::mayNotEditName, L"Names");
    EXPECT_KEPT(office->setInfo(1, L"Mobile", 0, L"1"), Code::mayNotEditName, L"Names");
}

TEST_F(EditedResources, HaveTheRoleOfTheirLogin)
{
    EXPECT_EQ(2, office->role(anna));
    office->setRole(anna, 3);
    EXPECT_EQ(3, office->role(anna));
    EXPECT_EQ(3, office->fetchName(anna).role);
    EXPECT_THAT(office->lookup(L"manager"), ElementsAre(3, 3, anna));
    office->setRole(anna, -1);
    EXPECT_EQ(-1, office->role(anna));
}

TEST_F(EditedResources, KeepARoleWithoutALogin)
{
    office->setRole(van, 2);
    EXPECT_EQ(2, office->role(van));
    // The login that comes later brings its own.
    office->addAccount(L"driver", van);
    EXPECT_EQ(3, office->role(van));
    office->detach(van);
    EXPECT_EQ(2, office->role(van));
}

TEST_F(EditedResources, RefuseRolesThatThereAreNot)
{
    for (const long role : {0L, 4L, -2L})
        EXPECT_KEPT(office->setRole(anna, role), Code::unknownRole, L"Names", std::to_wstring(role));
}

TEST_F(EditedResources, AreToldAfterEachWrite)
{
    const Listener::Subscription listener(office->names, DIID_INamesEvents);
    const auto told = [&](auto&& write) {
        listener->forget();
        write();
        return listener->events();
    };
    const Lines cleared{L"OnClear"};
    EXPECT_EQ(cleared, told([&] { office->addName(L"Dora"); }));
    EXPECT_EQ(cleared, told([&] { office->updateName(anna, L"Ann"); }));
    EXPECT_EQ(cleared, told([&] { office->addToGroup(office->names, anna, vehicles); }));
    EXPECT_EQ(cleared, told([&] { office->removeFromGroup(office->names, anna, vehicles); }));
    EXPECT_EQ(cleared, told([&] { office->setRole(anna, 3); }));
    EXPECT_EQ(cleared, told([&] { office->setSyncLogin(anna, L"x"); }));
    EXPECT_EQ(Lines{}, told([&] { attempt([&] { office->updateName(anna, L""); }); }));
}

TEST_F(EditedResources, HaveInformationRowsInTheirOrder)
{
    EXPECT_EQ(Lines{L"OnInfoClear"}, office->info(anna));
    office->setInfo(anna, L"Mobile", 1, L"555 0142");
    office->setInfo(anna, L"Office", 0, L"Room 114\r\nsecond floor");
    office->setInfo(bert, L"Mobile", 0, L"555 0177");
    EXPECT_THAT(office->info(anna),
                ElementsAre(L"OnInfoClear", L"OnInfoAdd 2, Office, Room 114\r\nsecond floor",
                            L"OnInfoAdd 2, Mobile, 555 0142"));
    // A row is known by its label.
    office->setInfo(anna, L"Office", 2, L"Room 7");
    EXPECT_THAT(office->info(anna), ElementsAre(L"OnInfoClear", L"OnInfoAdd 2, Mobile, 555 0142",
                                                L"OnInfoAdd 2, Office, Room 7"));
}

TEST_F(EditedResources, LoseInformationRowsThatArePutBeforeTheFirstOne)
{
    office->setInfo(anna, L"Mobile", 0, L"555 0142");
    office->setInfo(anna, L"Mobile", -1, L"");
    office->setInfo(anna, L"Never there", -1, L"");
    EXPECT_EQ(Lines{L"OnInfoClear"}, office->info(anna));
}

TEST_F(EditedResources, KeepNoEmptyInformationRow)
{
    office->setInfo(anna, L"", 0, L"without a label");
    office->setInfo(anna, L"Without a value", 1, L"");
    office->setInfo(anna, L"", 2, L"");
    EXPECT_THAT(office->info(anna), ElementsAre(L"OnInfoClear", L"OnInfoAdd 2, , without a label",
                                                L"OnInfoAdd 2, Without a value, "));
    office->setInfo(anna, L"", -1, L"");
    EXPECT_EQ(2u, office->info(anna).size());
}

TEST_F(EditedResources, AnnounceNothingWhileTheirInformationIsReplacedRowByRow)
{
    office->setInfo(anna, L"Mobile", 0, L"1");
    const Listener::Subscription listener(office->names, DIID_INamesEvents);
    office->setInfo(anna, L"Mobile", -1, L"");
    office->setInfo(anna, L"Mobile", 0, L"2");
    EXPECT_EQ(Lines{}, listener->events());
}
