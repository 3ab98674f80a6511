// A data layer that records every call with its arguments, in order, and in which any call can be told to fail.
//
// It stores what it is given as a simple data layer would, so that tests can look at the outcome too.
#pragma once

#include "framework/com/ComPtr.h"
#include "tests/support/Library.h"
#include "tests/support/RecordedValues.h"

#include <KorvaneData.h>

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace korvane::test
{

/// A failure as the data layer raises it.
inline const ErrorInfo locked{static_cast<HRESULT>(0x80041234), L"KorvaneData", L"The database is locked."};

struct Group
{
    long id;
    std::wstring name;
    long flags = 1;
    bool editable = true;
    long position = 0;
};

/// A resource or an activity type that stands in no group.
constexpr long inNoGroup = -2;

/// A resource as a member of a group. One in several groups has a row in each.
struct Name
{
    /// It is announced by id and text alone.
    static constexpr long withoutGroup = -1;

    long id = 0;
    std::wstring text;
    long group = 1;
    long color = 0;
    long flags = 2;
    std::wstring mailbox = {};
    std::set<long> refused = {}; ///< the operations that the current user may not perform
    long position = 0;           ///< in the group
};

struct Type
{
    long id = 0;
    std::wstring text;
    long color = 0;
    long group = 0; ///< 0 for a type of every group
    long flags = 3;
    std::set<long> refused = {};
    long position = 0;
};

struct Account
{
    long id = 0;
    std::wstring login;
    long role = 3;
    long nameId = 0; ///< the resource that it is attached to
};

/// An information row of a resource.
struct Info
{
    long nameId;
    std::wstring label;
    std::wstring value;
    long position = 0;
};

/// A message that was left for a resource.
struct Message
{
    long id;
    long nameId;
    std::wstring from;
    DATE dtg;
    std::wstring tlf;
    std::wstring contact;
    std::wstring about;
    long kind = 4;
    bool read = false;
};

/// What is booked, whoever it is for.
struct ActivityValues
{
    long typeId = 0;
    DATE t0 = 0;
    DATE t1 = 0;
    std::wstring text;
};

/// An activity, booked for one resource.
struct Event
{
    struct Occurrence
    {
        long nameId = 0;
        ActivityValues values;
    };

    long id;
    long nameId;
    long typeId;
    DATE t0;
    DATE t1;
    std::wstring text;
    std::optional<long> link = std::nullopt;
    std::optional<Rule> rule = std::nullopt;
    long exception = 0; ///< not 0 for an occurrence that was edited by itself
    std::map<long, Occurrence> edited = {};
    std::set<long> removed = {};

    ActivityValues values() const { return {typeId, t0, t1, text}; }
    /// The whole of it for instance 0, else one occurrence.
    void write(long instance, long name, const ActivityValues& written);
    void removeOccurrence(long instance);
};

std::string shownValues(long nameId, const ActivityValues& values);
/// What is different from the whole: those that were edited, and those that were removed.
std::string shownOccurrences(const Event& event);

/// The data layer's sources of events.
enum class EventsOf
{
    groups,
    names,
    types,
    accounts,
    events,
    links,
    messages
};

/// What the data layer holds and what it was asked. Shared by the COM objects that stand for it, which may
/// live longer than a test's own reference.
struct RecordingData
{
    RecordingData();
    RecordingData(const RecordingData&) = delete;
    RecordingData& operator=(const RecordingData&) = delete;
    /// Whoever used it has let go of all that it gave out.
    ~RecordingData();

    /// All that it holds, without the calls.
    std::vector<std::string> content() const;

    /// The calls so far, for example `Groups.Fetch(4)`, and forgets them.
    std::vector<std::string> takeCalls();

    /// Lets the next call with this name, for example "Groups.Fetch", fail with this error.
    void fail(const std::string& call, const ErrorInfo& error) { failAfter(call, 0, error); }
    /// The same after some calls of that name that still succeed.
    void failAfter(const std::string& call, int passed, const ErrorInfo& error);

    /// Records a call; answers with the failure that it was told, if any.
    HRESULT record(const std::string& call, const std::string& arguments);
    /// Records a call, and lets it take place unless it was told to fail.
    template <class Body, class... Arguments>
    HRESULT answer(const std::string& call, const Body& body, const Arguments&... arguments)
    {
        const HRESULT outcome = record(call, listed(arguments...));
        if (FAILED(outcome))
            return outcome;
        if constexpr (!std::is_void_v<decltype(body())>)
            return body();
        body();
        return outcome;
    }

    std::vector<Group> groups;
    std::vector<Name> names;
    std::vector<Type> types;
    std::vector<Account> accounts;
    std::vector<Event> events;
    std::vector<Info> info;
    std::vector<Message> messages;
    /// Groups, resources, types, accounts and messages are announced anew after each change of them.
    bool announcesWrites = false;
    bool fetchFillsNothing = false; ///< Events.Fetch leaves the values as they are
    bool exactGroups = false; ///< a link group of one activity is told by its id, and one of none is refused
    bool mayCreateForOthers = true; ///< the access to link groups of level 1
    bool mayEditForOthers = true;   ///< and of level 3
    /// The id that the next UpdateLinked gives the link group, where it is not to stay the same.
    std::optional<long> nextLink;
    /// The id that the next change of a group returns, where it is not the group's own.
    std::optional<long> nextUpdatedGroup;
    /// The same for a resource or a type that is changed or removed from a group.
    std::optional<long> nextUpdatedItem;
    Rule newRule{0}; ///< what a new rule holds; its kind is the one asked for
    long nextId = 100;
    /// Records the reading and writing of rules too, for example `Recurrence.put_Count(10)`.
    bool recordRules = false;
    /// Called while a call is being answered, for tests of what happens in between.
    std::function<void(const std::string& call)> during;

    std::vector<std::string> calls;
    struct Planned
    {
        int passed = 0;
        ErrorInfo error;
    };
    std::map<std::string, Planned> failures;
    int openScopes = 0;
    int rulesAlive = 0;

    /// The data layer's root object.
    ComPtr<IRoot> root;

    /// The activity with this id; null when there is none.
    Event* event(long id);

    /// Is anybody connected to these events, or to any?
    bool hasSubscribers(EventsOf source) const;
    bool hasSubscribers() const;

    void announceGroup(const Group& group) const;
    void announceName(const Name& name) const;
    void announceType(const Type& type) const;
    void announceAccount(const Account& account) const;
    void announceMessage(const Message& message) const;
    void announceEvent(const Event& event, long instance = 0) const;
    void announceClear(EventsOf source = EventsOf::groups) const;
};

} // namespace korvane::test
