#include "tests/demo/datalayer/Office.h"

#include <gmock/gmock.h>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;
using testing::ElementsAre;

namespace
{

class Messages : public OfficeTest
{
protected:
    static Note note(const wchar_t* about = L"The brochures", long kind = 2)
    {
        return {L"", at(2026, 11, 22, 9, 30), L"555 0190", L"Ms Ortega", about, kind};
    }
};

} // namespace

TEST_F(Messages, SayWhoWroteThemDown)
{
    Note expected = note();
    expected.from = L"Anna";
    EXPECT_EQ(expected, user->read(manager->leave(bert, note())));
    expected.from = L"SuperUser";
    EXPECT_EQ(expected, user->read(office->leave(bert, note())));
    office->detach(anna); // and the manager has no resource any more
    expected.from = L"manager";
    EXPECT_EQ(expected, user->read(manager->leave(bert, note())));
}

TEST_F(Messages, AreAnnouncedInTheOrderOfTheirArrival)
{
    Note earlier = note(L"Second");
    earlier.time -= 1;
    office->leave(bert, note(L"First"));
    const long second = office->leave(bert, earlier);
    office->leave(anna, note(L"For somebody else"));
    user->read(second);
    EXPECT_THAT(user->messagesFor(bert),
                ElementsAre(L"OnClear",
                            L"OnAdd 1, SuperUser, 2026-11-22 09:30, 555 0190, Ms Ortega, First, False",
                            L"OnAdd 2, SuperUser, 2026-11-21 09:30, 555 0190, Ms Ortega, Second, True"));
}

TEST_F(Messages, AreReadOnce)
{
    const long id = office->leave(bert, note());
    EXPECT_FALSE(user->read(id).wasRead);
    EXPECT_TRUE(user->read(id).wasRead);
}

TEST_F(Messages, ThatWereReadCanBeReadWhereNothingCanBeWritten)
{
    const long id = office->leave(bert, note());
    const long second = office->leave(bert, note());
    user->read(id);
    user.reset();
    office.reset();
    manager.reset();
    desk.reset();
    const WriteProtection protection(file);
    const Office reader = officeOf(L"user");
    EXPECT_TRUE(reader.read(id).wasRead);
    EXPECT_ERROR(reader.read(second), Code::readOnly, L"Database");
}

TEST_F(Messages, KeepEachKind)
{
    for (const long kind : {1L, 2L, 3L, 4L})
        EXPECT_EQ(kind, user->read(office->leave(bert, note(L"", kind))).kind);
    for (const long kind : {0L, 5L, -1L})
        EXPECT_KEPT(office->leave(bert, note(L"", kind)), Code::unknownMessageKind, L"Messages",
                    std::to_wstring(kind));
}

TEST_F(Messages, AreLeftForResourcesWithALogin)
{
    EXPECT_KEPT(office->leave(van, note()), Code::nobodyReads, L"Messages");
    EXPECT_KEPT(office->leave(unknown, note()), Code::unknownName, L"Messages");
    EXPECT_GT(user->leave(carla, note()), 0);
}

TEST_F(Messages, AreNotLeftByWhoMayOnlyRead)
{
    office->setRole(bert, -1);
    EXPECT_KEPT(user->leave(anna, note()), Code::mayNotLeaveMessages, L"Messages");
}

TEST_F(Messages, AreReadAndRemovedByWhomTheyAreForAndByAdministrators)
{
    const long id = manager->leave(bert, note());
    EXPECT_KEPT(manager->read(id), Code::mayNotReadMessages, L"Messages");
    EXPECT_KEPT(call(manager->messages, &IMessages::Remove, id), Code::mayNotReadMessages, L"Messages");
    EXPECT_KEPT(manager->messagesFor(bert), Code::mayNotReadMessages, L"Messages");
    EXPECT_KEPT(manager->messagesFor(unknown), Code::mayNotReadMessages, L"Messages");
    EXPECT_EQ(2u, office->messagesFor(bert).size());
    call(office->messages, &IMessages::Remove, id);
    const long second = manager->leave(bert, note());
    call(user->messages, &IMessages::Remove, second);
    EXPECT_EQ(Lines{L"OnClear"}, user->messagesFor(bert));
}

TEST_F(Messages, ThatAreUnknownAreTold)
{
    EXPECT_ERROR(office->read(unknown), Code::unknownMessage, L"Messages");
    EXPECT_ERROR(call(office->messages, &IMessages::Remove, unknown), Code::unknownMessage, L"Messages");
    EXPECT_ERROR(office->messagesFor(unknown), Code::unknownName, L"Messages");
}

TEST_F(Messages, LeaveEverythingAloneWhereTheyCannotBeRead)
{
    Bstr text(L"before");
    Bstr other(L"before");
    DATE time = 71;
    long kind = 72;
    VARIANT_BOOL wasRead = 73;
    EXPECT_TRUE(FAILED(office->messages->Fetch(unknown, text.inOut(), &time, other.inOut(), text.inOut(),
                                               other.inOut(), &kind, &wasRead)));
    EXPECT_EQ(L"before", std::wstring(text.c_str()));
    EXPECT_EQ(71, time);
    EXPECT_EQ(72, kind);
    EXPECT_EQ(73, wasRead);
}

TEST_F(Messages, AreAnnouncedToWhoHasLoadedThoseOfTheResource)
{
    office->leave(bert, note(L"Before"));
    const Listener::Subscription listener(office->messages, DIID_IMessagesEvents);
    const long unheard = office->leave(bert, note(L"Nobody has loaded yet"));
    EXPECT_EQ(Lines{}, listener->events());
    korvane::fetch(office->messages, &IMessages::LoadFor, bert, -1L);
    listener->forget();
    office->leave(anna, note(L"For somebody else"));
    EXPECT_EQ(Lines{}, listener->events());
    office->leave(bert, note(L"New"));
    EXPECT_EQ(Lines{L"OnAdd 4, SuperUser, 2026-11-22 09:30, 555 0190, Ms Ortega, New, False"},
              listener->events());
    // The messages shown are not taken away from the viewer that removes one, or reads it.
    listener->forget();
    office->read(unheard);
    call(office->messages, &IMessages::Remove, unheard);
    EXPECT_EQ(Lines{}, listener->events());
}

TEST_F(Messages, OfAnotherUserAreAnnouncedWhenTheHostHasSeenTheChange)
{
    user->messagesFor(bert);
    const Listener::Subscription listener(user->messages, DIID_IMessagesEvents);
    office->leave(bert, note(L"New"));
    EXPECT_EQ(Lines{}, listener->events());
    call(user->session(), &ISession::AnnounceAll);
    call(user->session(), &ISession::AnnounceAll);
    EXPECT_EQ(Lines{L"OnAdd 1, SuperUser, 2026-11-22 09:30, 555 0190, Ms Ortega, New, False"},
              listener->events());
}

TEST_F(Messages, GoWithNobodysLogin)
{
    office->leave(bert, note());
    office->detach(bert);
    EXPECT_KEPT(user->messagesFor(bert), Code::mayNotReadMessages, L"Messages");
    office->attach(bert, L"employee");
    EXPECT_EQ(2u, officeOf(L"employee").messagesFor(bert).size());
}
