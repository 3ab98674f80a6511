// What every data layer is to the library, and so both the demo's, which keeps its data in a database, and the one that
// records for the tests of the library what it was asked.
#include "tests/demo/datalayer/Office.h"
#include "tests/support/ComRules.h"
#include "tests/support/RecordingData.h"

#include <gmock/gmock.h>

namespace korvane::store::test
{

namespace
{

using testing::ElementsAre;

/// Groups 4 and 5 with the resources 2 to 5, the activity types 0 to 2, and Carla's login.
class Recorded : public testing::Test
{
protected:
    Recorded()
    {
        data.groups = {{1, L"System", 1, false}, {4, L"Staff", 3}, {5, L"Vehicles", 3}};
        data.names = {{2, L"Anna", 4, 255}, {3, L"Bert", 4}, {4, L"Carla", 4}, {5, L"Van", 5, 65280}};
        data.types = {{0, L"Activity", 12566463}, {1, L"Meeting", 16711680}, {2, L"Travel", 0}};
        data.accounts = {{1, L"admin", 1, 1}, {2, L"employee", 3, 4}};
        desk.emplace(data.root);
    }

    void TearDown() override { desk.reset(); }

    korvane::test::RecordingData data;
    std::optional<Desk> desk;
};

/// The calls of the demo's tests, on any data layer.
struct Calls : DataLayerTest
{
    using DataLayerTest::add;
    using DataLayerTest::fetch;
    using DataLayerTest::hasAccess;
    using DataLayerTest::remove;
    using DataLayerTest::update;
};

class Stored : public ActivityTest
{
};

/// As one of them offers it.
template <class DataLayer> class Contract : public DataLayer
{
protected:
    static constexpr long anna = 2;
    static constexpr long bert = 3;
    static constexpr long carla = 4;
    static constexpr long van = 5;
    static constexpr long unknown = 4711;

    const ComPtr<IRoot>& root() const { return this->desk->root; }
    Office office() const { return Office(root()); }

    template <class Collection>
    ComPtr<Collection> get(HRESULT (STDMETHODCALLTYPE IRoot::*member)(Collection**)) const
    {
        return korvane::fetch(root(), member);
    }
    ComPtr<IGroups> groups() const { return get(&IRoot::get_Groups); }

    /// What Load of a collection announces.
    template <class Collection, class... Arguments>
    static Lines announced(const ComPtr<Collection>& collection, REFIID events, Arguments... arguments)
    {
        const Listener::Subscription listener(collection, events);
        EXPECT_TRUE(listener->events().empty()); // nothing by subscribing
        EXPECT_TRUE(korvane::fetch(collection, &Collection::Load, arguments...));
        return listener->events();
    }
    Lines announcedGroups() const { return announced(groups(), DIID_IGroupsEvents); }

    ComPtr<IScope> openScope() const
    {
        return korvane::fetch(root(), &IRoot::OpenScope, 0L, Bstr(L"Contract.Test").get());
    }

    Booking meeting(long name = anna, const wchar_t* text = L"Budget") const
    {
        return {name, 1, at(2026, 3, 2, 9), at(2026, 3, 2, 10), text};
    }

    /// Activities of Anna, Bert and the van in one link group; that of Anna.
    long three()
    {
        const long event = this->desk->add(meeting());
        this->desk->addNames(this->desk->create(event), {bert, van});
        return event;
    }

    /// The resources of an activity's link group.
    std::vector<long> resources(long event) const
    {
        std::vector<long> result;
        for (const std::wstring& line : this->desk->members(event))
            result.push_back(std::stol(line.substr(line.find(L", ") + 2)));
        return result;
    }
    /// The activity of a resource in it.
    long activityOf(long event, long name) const
    {
        for (const std::wstring& line : this->desk->members(event))
            if (std::stol(line.substr(line.find(L", ") + 2)) == name)
                return std::stol(line);
        return 0;
    }

    /// Expects a failed call to have left its error information, as the object promises for its interface.
    template <class Interface>
    static void expectTold(const ComPtr<Interface>& object, const std::function<void()>& call)
    {
        EXPECT_EQ(S_OK,
                  object.template as<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(__uuidof(Interface)));
        const auto failure = attempt(call);
        ASSERT_TRUE(failure);
        EXPECT_FALSE(failure->source().empty());
        EXPECT_FALSE(failure->description().empty());
    }
};

using DataLayers = testing::Types<Recorded, Stored>;
TYPED_TEST_SUITE(Contract, DataLayers);

} // namespace

// A check that came later would be met by another failure: nothing is unknown, and no text is given.
TEST_F(Stored, RefusesMissingPlacesForResultsBeforeAnythingElse)
{
    const auto& root = desk->root;
    const ComPtr<IUnknown> objects[] = {root.as<IUnknown>(),
                                        korvane::fetch(root, &IRoot::get_Groups).as<IUnknown>(),
                                        korvane::fetch(root, &IRoot::get_Names).as<IUnknown>(),
                                        korvane::fetch(root, &IRoot::get_Types).as<IUnknown>(),
                                        korvane::fetch(root, &IRoot::get_Accounts).as<IUnknown>(),
                                        korvane::fetch(root, &IRoot::get_Messages).as<IUnknown>(),
                                        korvane::fetch(root, &IRoot::NewRecurrence, 1L).as<IUnknown>(),
                                        desk->events.as<IUnknown>(),
                                        desk->links.as<IUnknown>(),
                                        layer.makeRegistry().as<IUnknown>()};
    const std::wstring before = content();
    for (const auto& object : objects)
        korvane::test::expectNullResultsRefused(object.get());
    EXPECT_EQ(before, content());
}

TYPED_TEST(Contract, EachCollectionIsOneObject)
{
    EXPECT_EQ(this->get(&IRoot::get_Accounts).get(), this->get(&IRoot::get_Accounts).get());
    EXPECT_EQ(this->get(&IRoot::get_Messages).get(), this->get(&IRoot::get_Messages).get());
    EXPECT_EQ(this->groups().get(), this->groups().get());
    EXPECT_EQ(this->get(&IRoot::get_Names).get(), this->get(&IRoot::get_Names).get());
    EXPECT_EQ(this->get(&IRoot::get_Types).get(), this->get(&IRoot::get_Types).get());
    EXPECT_EQ(this->get(&IRoot::get_Events).get(), this->desk->events.get());
    EXPECT_EQ(this->get(&IRoot::get_EventLinks).get(), this->desk->links.get());
}

TYPED_TEST(Contract, LoadClearsAndThenAnnouncesInOrder)
{
    const Lines groups = this->announcedGroups();
    EXPECT_EQ(L"OnClear", groups.front());
    EXPECT_THAT(Lines(groups.end() - 2, groups.end()),
                ElementsAre(L"OnAdd 4, Staff, 3", L"OnAdd 5, Vehicles, 3"));

    const auto names = this->get(&IRoot::get_Names);
    EXPECT_THAT(
        this->announced(names, DIID_INamesEvents, 4L),
        ElementsAre(L"OnClear", L"OnAdd 2, Anna, 4, 255", L"OnAdd 3, Bert, 4, 0", L"OnAdd 4, Carla, 4, 0"));
    EXPECT_THAT(this->announced(names, DIID_INamesEvents, 0L),
                ElementsAre(L"OnClear", L"OnAdd 2, Anna, 4, 255", L"OnAdd 3, Bert, 4, 0",
                            L"OnAdd 4, Carla, 4, 0", L"OnAdd 5, Van, 5, 65280"));
    const auto types = this->get(&IRoot::get_Types);
    for (const long group : {0L, 4L})
        EXPECT_THAT(this->announced(types, DIID_ITypesEvents, group),
                    ElementsAre(L"OnClear", L"OnAdd 0, Activity, 12566463", L"OnAdd 1, Meeting, 16711680",
                                L"OnAdd 2, Travel, 0"));
}

TYPED_TEST(Contract, AnUnknownGroupHasNoResources)
{
    for (const long group : {1L, this->unknown})
        EXPECT_THAT(this->announced(this->get(&IRoot::get_Names), DIID_INamesEvents, group),
                    ElementsAre(L"OnClear"));
}

TYPED_TEST(Contract, LoadNeedsNobodyWhoListens)
{
    EXPECT_TRUE(korvane::fetch(this->groups(), &IGroups::Load));
}

TYPED_TEST(Contract, CallsAreAllowedWhileGroupsAreAnnounced)
{
    const auto groups = this->groups();
    const Listener::Subscription listener(groups, DIID_IGroupsEvents);
    std::vector<bool> access;
    listener->onEvent = [&] { access.push_back(Calls::hasAccess(groups, 3, 4)); };
    korvane::fetch(groups, &IGroups::Load);
    EXPECT_EQ(access, std::vector<bool>(listener->events().size(), true));
}

TYPED_TEST(Contract, AGroupIsFetchedAndAnUnknownOneLeavesEverythingAlone)
{
    const auto groups = this->groups();
    Bstr name(L"before");
    long flags = 77;
    VARIANT_BOOL found = VARIANT_TRUE;
    for (const long id : {0L, -1L, this->unknown})
    {
        const BSTR text = name.get();
        EXPECT_EQ(S_OK, groups->Fetch(id, name.inOut(), &flags, &found));
        EXPECT_EQ(VARIANT_FALSE, found);
        EXPECT_EQ(text, name.get());
        EXPECT_EQ(L"before", std::wstring(name.c_str()));
        EXPECT_EQ(77, flags);
    }
    EXPECT_EQ(S_OK, groups->Fetch(4, name.inOut(), &flags, &found));
    EXPECT_EQ(VARIANT_TRUE, found);
    EXPECT_EQ(L"Staff", std::wstring(name.c_str()));
    EXPECT_EQ(3, flags);
}

TYPED_TEST(Contract, GroupsAreAddedChangedAndRemoved)
{
    const auto groups = this->groups();
    const long id = Calls::add(groups, L"Rooms", -7);
    EXPECT_GT(id, 5);
    EXPECT_EQ((Listed{id, L"Rooms", -7}), Calls::fetch(groups, id));
    EXPECT_EQ(L"OnAdd " + std::to_wstring(id) + L", Rooms, -7", this->announcedGroups().back());
    EXPECT_TRUE(Calls::hasAccess(groups, 3, id));

    EXPECT_EQ(id, Calls::update(groups, id, L"Halls", 9));
    EXPECT_EQ((Listed{id, L"Halls", 9}), Calls::fetch(groups, id));

    EXPECT_EQ(0, Calls::remove(groups, id));
    EXPECT_EQ(std::nullopt, Calls::fetch(groups, id));
    EXPECT_GT(Calls::add(groups, L"Rooms"), id);
}

TYPED_TEST(Contract, NobodyMayChangeBuiltInOrUnknownGroups)
{
    EXPECT_TRUE(Calls::hasAccess(this->groups(), 3, 4));
    for (const long id : {0L, 1L, this->unknown})
        EXPECT_FALSE(Calls::hasAccess(this->groups(), 3, id));
}

TYPED_TEST(Contract, GroupsHaveAnOrder)
{
    call(this->groups(), &IGroups::SetPosition, 5L, 3L);
    call(this->groups(), &IGroups::SetPosition, 4L, 4L);
    const Lines groups = this->announcedGroups();
    EXPECT_THAT(Lines(groups.end() - 2, groups.end()),
                ElementsAre(L"OnAdd 5, Vehicles, 3", L"OnAdd 4, Staff, 3"));
}

TYPED_TEST(Contract, ResourcesAreAddedAndChanged)
{
    const Office office = this->office();
    const long dora = office.addName(L"Dora", 255);
    EXPECT_GT(dora, this->van);
    EXPECT_EQ((Resource{L"Dora", 255, 0, L"", 2, -1}), office.fetchName(dora));
    EXPECT_THAT(Office::members(office.names, 4), ElementsAre(this->anna, this->bert, this->carla));
    EXPECT_EQ(dora, korvane::fetch(office.names, &INames::Update, dora, Bstr(L"Theodora").get(), -1L, 17L));
    EXPECT_EQ((Resource{L"Theodora", -1, 0, L"", 17, -1}), office.fetchName(dora));
    EXPECT_EQ((Resource{L"Carla", 0, 2, L"employee", 2, 3}), office.fetchName(this->carla));
}

TYPED_TEST(Contract, AResourceThatIsNoneLeavesEverythingAlone)
{
    const Office office = this->office();
    EXPECT_EQ((Resource{L"before", 71, 72, L"before", 73, 74}), office.fetchName(0));
    EXPECT_EQ(-1, office.role(0));
    EXPECT_EQ(L"", office.mailbox(0));
}

TYPED_TEST(Contract, AccessIsToSomeOrToAnyResourcesAndTypes)
{
    const Office office = this->office();
    for (const long operation : {1L, 2L, 3L})
    {
        EXPECT_TRUE(Office::may(office.names, operation, this->anna));
        EXPECT_TRUE(Office::may(office.names, operation, 0));
        EXPECT_FALSE(Office::may(office.names, operation, this->unknown));
        EXPECT_TRUE(Office::may(office.types, operation, 1));
        EXPECT_FALSE(Office::may(office.types, operation, this->unknown));
    }
    EXPECT_TRUE(Office::may(office.types, 1, 0));
}

TYPED_TEST(Contract, ResourcesAreMembersOfGroups)
{
    const Office office = this->office();
    const long dora = office.addName(L"Dora");
    Office::addToGroup(office.names, dora, 4);
    Office::addToGroup(office.names, this->anna, 5);
    EXPECT_THAT(Office::members(office.names, 4), ElementsAre(this->anna, this->bert, this->carla, dora));
    EXPECT_THAT(Office::members(office.names, 5), ElementsAre(this->van, this->anna));
    Office::removeFromGroup(office.names, this->anna, 4);
    EXPECT_THAT(Office::members(office.names, 4), ElementsAre(this->bert, this->carla, dora));
    EXPECT_THAT(Office::members(office.names, 5), ElementsAre(this->van, this->anna));
}

TYPED_TEST(Contract, ResourcesKeepTheirPlaceUnlessTheyGetAnother)
{
    const Office office = this->office();
    long position = 0;
    for (const long name : {this->carla, this->anna, this->bert})
        Office::addToGroup(office.names, name, 4, ++position);
    Office::addToGroup(office.names, this->carla, 4);
    EXPECT_THAT(Office::members(office.names, 4), ElementsAre(this->carla, this->anna, this->bert));
}

TYPED_TEST(Contract, TypesAreAddedChangedAndMembersOfGroups)
{
    const Office office = this->office();
    const long holiday = office.addType(L"Holiday", 255);
    Bstr text(L"before");
    long color = 71;
    long flags = 72;
    long groups = 73;
    const auto read = [&] {
        call(office.types, &ITypes::Fetch, holiday, text.inOut(), &color, &flags, &groups);
        return std::wstring(text.c_str()) + L' ' + std::to_wstring(color) + L' ' + std::to_wstring(flags) +
               L' ' + std::to_wstring(groups);
    };
    EXPECT_EQ(L"Holiday 255 3 0", read());
    office.updateType(holiday, L"Leave", -1);
    Office::addToGroup(office.types, holiday, 4);
    EXPECT_EQ(L"Leave -1 3 1", read());
    EXPECT_THAT(Office::members(office.types, 4), ElementsAre(0, 1, 2, holiday));
    long position = 0;
    for (const long type : {holiday, 2L, 0L, 1L})
        Office::addToGroup(office.types, type, 4, ++position);
    EXPECT_THAT(Office::members(office.types, 4), ElementsAre(holiday, 2, 0, 1));
    Office::removeFromGroup(office.types, holiday, 4);
    EXPECT_THAT(Office::members(office.types, 4), ElementsAre(2, 0, 1));
}

TYPED_TEST(Contract, AccountsAreFoundAddedAndRemoved)
{
    const Office office = this->office();
    EXPECT_THAT(office.lookup(L"EMPLOYEE"), ElementsAre(2, 3, this->carla));
    EXPECT_THAT(office.lookup(L"zoe"), ElementsAre(0, -1, 0));
    const long zoe = office.addAccount(L"zoe", this->van);
    EXPECT_THAT(office.lookup(L"Zoe"), ElementsAre(zoe, 3, this->van));
    EXPECT_THAT(office.logins(), ElementsAre(L"OnClear", L"OnAdd 1, admin", L"OnAdd 2, employee",
                                             L"OnAdd " + std::to_wstring(zoe) + L", zoe"));
    EXPECT_TRUE(office.removeAccount(L"ZOE"));
    EXPECT_FALSE(office.removeAccount(L"zoe"));
    EXPECT_EQ(L"", office.fetchName(this->van).login);
}

TYPED_TEST(Contract, AnAccountIsAttachedToOneResourceAndAResourceHasOneAccount)
{
    const Office office = this->office();
    office.addAccount(L"zoe", this->van);
    office.attach(this->van, L"employee");
    EXPECT_EQ(L"employee", office.fetchName(this->van).login);
    EXPECT_EQ(L"", office.fetchName(this->carla).login);
    EXPECT_EQ(0, office.lookup(L"zoe").back());
    EXPECT_TRUE(office.detach(this->van));
    EXPECT_FALSE(office.detach(this->van));
    EXPECT_THAT(office.lookup(L"employee"), ElementsAre(2, 3, 0));
}

TYPED_TEST(Contract, ARoleIsThatOfTheLogin)
{
    const Office office = this->office();
    EXPECT_EQ(3, office.role(this->carla));
    EXPECT_EQ(-1, office.role(this->van));
    office.setRole(this->carla, 2);
    EXPECT_EQ(2, office.fetchName(this->carla).role);
    EXPECT_THAT(office.lookup(L"employee"), ElementsAre(2, 2, this->carla));
}

TYPED_TEST(Contract, TheMailboxIsTheLoginThatIsSynchronised)
{
    const Office office = this->office();
    EXPECT_EQ(L"", office.mailbox(this->carla));
    office.setSyncLogin(this->carla, L"employee");
    EXPECT_EQ(L"employee", office.mailbox(this->carla));
    EXPECT_EQ(L"", office.mailbox(this->anna));
    office.setSyncLogin(this->carla, L"");
    EXPECT_EQ(L"", office.mailbox(this->carla));
}

TYPED_TEST(Contract, InformationIsReplacedLabelByLabelWithoutAnAnnouncement)
{
    const Office office = this->office();
    const Listener::Subscription listener(office.names, DIID_INamesEvents);
    office.setInfo(this->anna, L"Mobile", 1, L"1");
    office.setInfo(this->anna, L"Office", 0, L"2");
    office.setInfo(this->bert, L"Mobile", 0, L"3");
    office.setInfo(this->anna, L"Never there", -1, L"");
    EXPECT_EQ(Lines{}, listener->events());
    EXPECT_THAT(office.info(this->anna),
                ElementsAre(L"OnInfoClear", L"OnInfoAdd 2, Office, 2", L"OnInfoAdd 2, Mobile, 1"));
    office.setInfo(this->anna, L"Office", 2, L"4");
    office.setInfo(this->anna, L"Mobile", -1, L"");
    EXPECT_THAT(office.info(this->anna), ElementsAre(L"OnInfoClear", L"OnInfoAdd 2, Office, 4"));
}

TYPED_TEST(Contract, MessagesAreLeftReadAndRemoved)
{
    const Office office = this->office();
    const Note note{L"", at(2026, 11, 22, 9, 30), L"555", L"Mr Hale", L"Training", 3};
    const long first = office.leave(this->carla, note);
    const long second = office.leave(this->carla, note);
    const auto listed = [&] {
        Lines result;
        for (const std::wstring& line : office.messagesFor(this->carla))
            if (const auto last = line.rfind(L','); last != std::wstring::npos)
                result.push_back(line.substr(0, line.find(L',')) + line.substr(last + 1));
        return result;
    };
    const auto added = [](long id, const wchar_t* read) { return L"OnAdd " + std::to_wstring(id) + read; };
    EXPECT_THAT(listed(), ElementsAre(added(first, L" False"), added(second, L" False")));
    Note read = office.read(first);
    EXPECT_FALSE(read.from.empty());
    read.from.clear();
    EXPECT_EQ(note, read);
    EXPECT_TRUE(office.read(first).wasRead);
    EXPECT_THAT(listed(), ElementsAre(added(first, L" True"), added(second, L" False")));
    call(office.messages, &IMessages::Remove, first);
    EXPECT_THAT(listed(), ElementsAre(added(second, L" False")));
    this->expectTold(office.messages, [&] { office.read(first); });
    EXPECT_THAT(office.messagesFor(this->anna), ElementsAre(L"OnClear"));
}

TYPED_TEST(Contract, ActivitiesAreAddedChangedAndRemoved)
{
    const long event = this->desk->add(this->meeting());
    const long other = this->desk->add(this->meeting());
    EXPECT_GT(event, 0);
    EXPECT_GT(other, event);
    EXPECT_EQ(this->meeting(), this->desk->fetch(event));
    const Booking changed{this->van, 2, at(2027, 1, 1), at(2027, 1, 3), L"Holiday trip"};
    this->desk->update(event, 0, changed);
    EXPECT_EQ(changed, this->desk->fetch(event));
    EXPECT_EQ(this->meeting(), this->desk->fetch(other));
    this->desk->remove(event);
    EXPECT_FALSE(this->desk->has(event));
    EXPECT_TRUE(this->desk->has(other));
}

TYPED_TEST(Contract, AnUnknownActivityIsTold)
{
    this->expectTold(this->desk->events, [&] { this->desk->fetch(this->unknown); });
    this->expectTold(this->desk->events, [&] { this->desk->update(this->unknown, 0, this->meeting()); });
}

TYPED_TEST(Contract, AFetchThatFailsLeavesTheArgumentsAlone)
{
    long name = 71;
    long type = 72;
    DATE t0 = 73;
    DATE t1 = 74;
    Bstr text(L"before");
    EXPECT_TRUE(FAILED(this->desk->events->Fetch(this->unknown, 0, &name, &type, &t0, &t1, text.inOut())));
    EXPECT_EQ(71, name);
    EXPECT_EQ(72, type);
    EXPECT_EQ(73, t0);
    EXPECT_EQ(74, t1);
    EXPECT_EQ(L"before", std::wstring(text.c_str()));
}

TYPED_TEST(Contract, ARuleBelongsToItsHolderUntilItIsStored)
{
    const long event = this->desk->add(this->meeting());
    EXPECT_EQ(std::nullopt, this->desk->repetition(event));
    const auto rule = this->desk->rule(Repetition{2, 1, 4, 7});
    call(this->desk->events, &IEvents::SetRecurrence, event, rule.get());
    rule->put_Count(99);
    EXPECT_EQ((Repetition{2, 1, 4, 7}), this->desk->repetition(event));
    const auto stored = korvane::fetch(this->desk->events, &IEvents::GetRecurrence, event);
    stored->put_Count(98);
    EXPECT_EQ((Repetition{2, 1, 4, 7}), this->desk->repetition(event));
    EXPECT_EQ(this->meeting(), this->desk->fetch(event));
    this->desk->repeat(event, std::nullopt);
    EXPECT_EQ(std::nullopt, this->desk->repetition(event));
}

TYPED_TEST(Contract, AnActivityIsNoExceptionByItself)
{
    EXPECT_EQ(0, korvane::fetch(this->desk->events, &IEvents::IsException, this->desk->add(this->meeting())));
}

TYPED_TEST(Contract, ASingleActivityIsItsOwnLinkGroup)
{
    const long event = this->desk->add(this->meeting());
    EXPECT_EQ(std::nullopt, this->desk->linkOf(event));
    EXPECT_THAT(this->resources(event), ElementsAre(this->anna));
    EXPECT_EQ(event, this->activityOf(event, this->anna));
}

TYPED_TEST(Contract, ALinkGroupBeginsWithOneActivityAndIsSeenFromTheSecondOn)
{
    this->desk->add(this->meeting());
    const long event = this->desk->add(this->meeting());
    EXPECT_EQ(Link(event), this->desk->create(event));
    EXPECT_EQ(Link(event), this->desk->create(event));
    EXPECT_EQ(std::nullopt, this->desk->linkOf(event));
    this->desk->addNames(event, {this->bert});
    EXPECT_EQ(Link(event), this->desk->linkOf(event));
    EXPECT_EQ(this->meeting(), this->desk->fetch(event));
}

TYPED_TEST(Contract, ALinkGroupBooksTheActivityForMoreResourcesAndNobodyTwice)
{
    const long event = this->three();
    const Link link = this->desk->linkOf(event);
    EXPECT_THAT(this->resources(event), ElementsAre(this->anna, this->bert, this->van));
    const long ofVan = this->activityOf(event, this->van);
    EXPECT_EQ(link, this->desk->linkOf(ofVan));
    EXPECT_EQ(link, this->desk->create(ofVan));
    EXPECT_EQ(this->meeting(this->van), this->desk->fetch(ofVan));
    this->desk->addNames(link, {this->anna, this->carla, this->carla, this->van});
    EXPECT_THAT(this->resources(event), ElementsAre(this->anna, this->bert, this->van, this->carla));
}

TYPED_TEST(Contract, ResourcesLeaveALinkGroupWithTheirActivities)
{
    const long event = this->three();
    const long ofVan = this->activityOf(event, this->van);
    const long ofBert = this->activityOf(event, this->bert);
    const Link link = this->desk->linkOf(event);
    EXPECT_EQ(link, this->desk->removeNames(link, {this->bert, this->carla}));
    EXPECT_THAT(this->resources(event), ElementsAre(this->anna, this->van));
    EXPECT_FALSE(this->desk->has(ofBert));
    // The id of the group is that of the first activity left.
    EXPECT_EQ(Link(ofVan), this->desk->removeNames(link, {this->anna}));
    EXPECT_EQ(std::nullopt, this->desk->linkOf(ofVan));
}

TYPED_TEST(Contract, ADetachedActivityIsASingleOne)
{
    const long event = this->three();
    const long ofBert = this->activityOf(event, this->bert);
    this->desk->detach(this->desk->linkOf(event), this->bert);
    EXPECT_EQ(std::nullopt, this->desk->linkOf(ofBert));
    EXPECT_EQ(this->meeting(this->bert), this->desk->fetch(ofBert));
    EXPECT_THAT(this->resources(event), ElementsAre(this->anna, this->van));
    // What is left of a group of two is a single activity as well.
    this->desk->detach(this->desk->linkOf(event), this->van);
    EXPECT_EQ(std::nullopt, this->desk->linkOf(event));
}

TYPED_TEST(Contract, ALinkGroupIsWrittenRepeatedAndRemovedAsAWhole)
{
    const long event = this->three();
    const Link link = this->desk->linkOf(event);
    Booking changed = this->meeting(this->anna, L"Moved");
    changed.t0 += 1;
    changed.t1 += 1;
    EXPECT_EQ(link, this->desk->updateLinked(link, 0, changed));
    this->desk->repeatLinked(link, Repetition{2, 0, 4, 7});
    std::vector<long> all;
    for (const long name : {this->anna, this->bert, this->van})
    {
        all.push_back(this->activityOf(event, name));
        changed.name = name;
        EXPECT_EQ(changed, this->desk->fetch(all.back()));
        EXPECT_EQ((Repetition{2, 0, 4, 7}), this->desk->repetition(all.back()));
    }
    this->desk->removeAll(link);
    for (const long each : all)
        EXPECT_FALSE(this->desk->has(each));
}

TYPED_TEST(Contract, ActivitiesOfOthersAreAskedForByLevel)
{
    EXPECT_TRUE(this->desk->hasAccess(1, 0));
    EXPECT_TRUE(this->desk->hasAccess(3, this->three()));
    EXPECT_FALSE(this->desk->hasAccess(17, 0));
}

TYPED_TEST(Contract, ScopesNestEndInAnyOrderAndAreClosedOnce)
{
    const auto first = this->openScope();
    const auto second = this->openScope();
    EXPECT_NE(first.get(), second.get());
    this->announcedGroups();
    EXPECT_EQ(S_OK, first->Close(0, 0));
    EXPECT_EQ(S_OK, second->Close(0, 0));
    this->expectTold(first, [&] { call(first, &IScope::Close, 0L, 0L); });
}

} // namespace korvane::store::test
