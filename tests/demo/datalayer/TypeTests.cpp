#include "tests/demo/datalayer/Office.h"

#include <gmock/gmock.h>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;
using testing::ElementsAre;

namespace
{

class EditedTypes : public OfficeTest
{
protected:
    struct Fetched
    {
        std::wstring text;
        long color = 71;
        long flags = 72;
        long groups = 73;
        friend bool operator==(const Fetched&, const Fetched&) = default;
    };

    Fetched fetched(long id) const
    {
        Fetched result;
        Bstr text(L"before");
        call(office->types, &ITypes::Fetch, id, text.inOut(), &result.color, &result.flags, &result.groups);
        result.text = text.c_str();
        return result;
    }
};

} // namespace

TEST_F(EditedTypes, AreAddedAndChanged)
{
    const long id = office->addType(L"Holiday", 255);
    EXPECT_EQ((Fetched{L"Holiday", 255, 3, 0}), fetched(id));
    EXPECT_EQ(id, korvane::fetch(office->types, &ITypes::Update, id, Bstr(L"Leave").get(), -1L, 17L));
    EXPECT_EQ((Fetched{L"Leave", -1, 17, 0}), fetched(id));
}

TEST_F(EditedTypes, TellInHowManyGroupsTheyAre)
{
    office->addToGroup(office->types, travel, vehicles);
    office->removeFromGroup(office->types, meetings, vehicles);
    EXPECT_EQ(1, fetched(travel).groups);
    EXPECT_EQ(0, fetched(meetings).groups);
}

TEST_F(EditedTypes, NeedANameOfTheirOwnInAnyCase)
{
    const long id = office->addType(L"Ölwechsel");
    EXPECT_KEPT(office->addType(L"ÖLWECHSEL"), Code::typeTextTaken, L"Types", L"Ölwechsel");
    EXPECT_KEPT(office->updateType(travel, L"ölwechsel"), Code::typeTextTaken, L"Types", L"Ölwechsel");
    EXPECT_KEPT(office->addType(L"activity"), Code::typeTextTaken, L"Types", L"Activity");
    EXPECT_KEPT(office->addType(L" "), Code::typeNeedsText, L"Types");
    EXPECT_KEPT(office->updateType(id, L""), Code::typeNeedsText, L"Types");
    office->updateType(id, L"ölwechsel");
    EXPECT_EQ(L"ölwechsel", fetched(id).text);
}

TEST_F(EditedTypes, ThatAreUnknownAreTold)
{
    EXPECT_ERROR(fetched(unknown), Code::unknownType, L"Types");
    EXPECT_KEPT(office->updateType(unknown, L"x"), Code::unknownType, L"Types");
    EXPECT_KEPT(office->addToGroup(office->types, unknown, staff), Code::unknownType, L"Types");
    EXPECT_KEPT(office->removeFromGroup(office->types, unknown, staff), Code::unknownType, L"Types");
}

TEST_F(EditedTypes, HaveABuiltInOneThatIsInEveryGroupAndIsNotChanged)
{
    for (const long operation : {2L, 3L})
        EXPECT_FALSE(office->may(office->types, operation, 0));
    EXPECT_TRUE(office->may(office->types, 1, 0)); // a new one
    EXPECT_KEPT(office->updateType(0, L"Mine"), Code::mayNotEditType, L"Types");
    EXPECT_KEPT(office->removeFromGroup(office->types, 0, staff), Code::mayNotRemoveType, L"Types");
}

TEST_F(EditedTypes, OfAGroupThatHadAllAreAllThoseStillWhenOneIsAdded)
{
    const long holiday = office->addType(L"Holiday");
    office->addToGroup(office->types, holiday, staff);
    EXPECT_THAT(office->members(office->types, staff), ElementsAre(0, meetings, travel, holiday));
    // From now on the list is the group's own.
    office->addType(L"Service");
    EXPECT_THAT(office->members(office->types, staff), ElementsAre(0, meetings, travel, holiday));
}

TEST_F(EditedTypes, OfAGroupThatHadAllAreTheOthersWhenOneIsRemoved)
{
    office->removeFromGroup(office->types, meetings, staff);
    EXPECT_THAT(office->members(office->types, staff), ElementsAre(0, travel));
    EXPECT_THAT(office->members(office->types, vehicles), ElementsAre(0, meetings, travel));
    // Without any left the group would have nothing to book.
    office->removeFromGroup(office->types, travel, staff);
    EXPECT_THAT(office->members(office->types, staff), ElementsAre(0, meetings, travel));
}

TEST_F(EditedTypes, HaveAnOrderOfTheirOwnInEachGroup)
{
    long position = 0;
    for (const long type : {travel, 0L, meetings})
        office->addToGroup(office->types, type, staff, ++position);
    EXPECT_THAT(office->members(office->types, staff), ElementsAre(travel, 0, meetings));
    EXPECT_THAT(office->members(office->types, vehicles), ElementsAre(0, meetings, travel));
    // Those that are there already stay where they are, the built-in one too.
    office->addToGroup(office->types, 0, staff);
    office->addToGroup(office->types, travel, staff);
    EXPECT_THAT(office->members(office->types, staff), ElementsAre(travel, 0, meetings));
}

TEST_F(EditedTypes, KeepThePlaceOfTheBuiltInOneWhereItHasNone)
{
    sql("INSERT INTO group_types (group_id, type_id, position) VALUES (4, 2, 1)");
    office->addToGroup(office->types, 0, staff);
    EXPECT_THAT(office->members(office->types, staff), ElementsAre(0, travel));
}

TEST_F(EditedTypes, AreNotMembersOfBuiltInGroups)
{
    EXPECT_KEPT(office->addToGroup(office->types, travel, 2), Code::mayNotAddTypes, L"Types");
    EXPECT_KEPT(office->addToGroup(office->types, travel, 2, 1), Code::mayNotArrangeTypes, L"Types");
    EXPECT_KEPT(office->removeFromGroup(office->types, travel, 2), Code::mayNotRemoveType, L"Types");
    EXPECT_KEPT(office->addToGroup(office->types, travel, unknown), Code::unknownGroup, L"Types");
}

TEST_F(EditedTypes, AreToldAfterEachWrite)
{
    const Listener::Subscription listener(office->types, DIID_ITypesEvents);
    const long id = office->addType(L"Holiday");
    office->updateType(id, L"Leave");
    office->addToGroup(office->types, id, staff);
    office->removeFromGroup(office->types, id, staff);
    EXPECT_EQ(Lines(4, L"OnClear"), listener->events());
}

TEST_F(EditedTypes, AndGroupsAreArrangedByAdministrators)
{
    call(office->groups, &IGroups::SetPosition, vehicles, 3L);
    call(office->groups, &IGroups::SetPosition, staff, 4L);
    EXPECT_THAT(DataLayerTest::names(office->groups), ElementsAre(L"Vehicles", L"Staff"));
    for (const long group : {1L, 2L, 3L})
        EXPECT_KEPT(call(office->groups, &IGroups::SetPosition, group, 9L), Code::mayNotArrangeGroups,
                    L"Groups");
    EXPECT_KEPT(call(office->groups, &IGroups::SetPosition, unknown, 9L), Code::unknownGroup, L"Groups");
    for (const auto* account : {&*manager, &*user})
        EXPECT_KEPT(call(account->groups, &IGroups::SetPosition, staff, 9L), Code::mayNotArrangeGroups,
                    L"Groups");
    // A list without groups has nothing but an empty entry.
    const std::wstring before = masterData();
    call(office->groups, &IGroups::SetPosition, 0L, 3L);
    EXPECT_EQ(before, masterData());
}
