#include "tests/support/RecordingData.h"

#include "tests/support/EmptyData.h"
#include "tests/support/RecordedAccounts.h"
#include "tests/support/RecordedEventLinks.h"
#include "tests/support/RecordedEvents.h"
#include "tests/support/RecordedGroups.h"
#include "tests/support/RecordedMessages.h"
#include "tests/support/RecordedNames.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::test
{

namespace
{

class RecordedScope final : public Object<RecordedScope, Inherits<IScope>, IScope>
{
public:
    explicit RecordedScope(RecordingData& data) : data_(data) { ++data_.openScopes; }
    ~RecordedScope() { --data_.openScopes; }

    STDMETHODIMP Close(long flags, long reason) override
    {
        const HRESULT outcome = data_.record("Scope.Close", shown(flags) + ", " + shown(reason));
        if (SUCCEEDED(outcome) && std::exchange(closed_, true))
            return Failure(E_UNEXPECTED, L"KorvaneData.Scope", L"The scope is closed already.").report();
        return outcome;
    }

private:
    bool closed_ = false;
    RecordingData& data_;
};

class RecordedRoot final : public Object<RecordedRoot, Inherits<EmptyRoot>, IRoot>
{
public:
    explicit RecordedRoot(RecordingData& data) : data_(data) {}

    STDMETHODIMP get_Groups(IGroups** collection) override { return give("Root.Groups", groups, collection); }
    STDMETHODIMP get_Names(INames** collection) override { return give("Root.Names", names, collection); }
    STDMETHODIMP get_Types(ITypes** collection) override { return give("Root.Types", types, collection); }
    STDMETHODIMP get_Accounts(IAccounts** collection) override
    {
        return give("Root.Accounts", accounts, collection);
    }
    STDMETHODIMP get_Events(IEvents** collection) override { return give("Root.Events", events, collection); }
    STDMETHODIMP get_EventLinks(IEventLinks** collection) override
    {
        return give("Root.EventLinks", links, collection);
    }
    STDMETHODIMP get_Messages(IMessages** collection) override
    {
        return give("Root.Messages", messages, collection);
    }

    STDMETHODIMP NewRecurrence(long kind, IRecurrence** rule) override
    {
        *rule = nullptr;
        const HRESULT outcome = data_.record("Root.NewRecurrence", shown(kind));
        if (outcome != S_OK) // also where it is to give Nothing without failing
            return outcome;
        Rule values = data_.newRule;
        values.kind = kind;
        *rule = ComPtr<IRecurrence>(make<RecordedRecurrence>(data_, values).get()).detach();
        return S_OK;
    }

    STDMETHODIMP OpenScope(long flags, BSTR source, IScope** scope) override
    {
        *scope = nullptr;
        const HRESULT outcome = data_.record("Root.OpenScope", shown(flags) + ", " + quoted(view(source)));
        if (SUCCEEDED(outcome))
            *scope = ComPtr<IScope>(make<RecordedScope>(data_).get()).detach();
        return outcome;
    }

private:
    template <class Collection, class Interface>
    HRESULT give(const char* call, const ComPtr<Collection>& collection, Interface** result)
    {
        *result = nullptr;
        const HRESULT outcome = data_.record(call, "");
        if (SUCCEEDED(outcome))
            *result = ComPtr<Interface>(collection.get()).detach();
        return outcome;
    }

    RecordingData& data_;

public:
    ComPtr<RecordedGroups> groups = make<RecordedGroups>(data_);
    ComPtr<RecordedNames> names = make<RecordedNames>(data_);
    ComPtr<RecordedTypes> types = make<RecordedTypes>(data_);
    ComPtr<RecordedAccounts> accounts = make<RecordedAccounts>(data_);
    ComPtr<RecordedEvents> events = make<RecordedEvents>(data_);
    ComPtr<RecordedEventLinks> links = make<RecordedEventLinks>(data_);
    ComPtr<RecordedMessages> messages = make<RecordedMessages>(data_);
};

RecordedRoot& rootOf(const RecordingData& data)
{
    return *static_cast<RecordedRoot*>(data.root.get());
}

/// Calls a function with the collection that raises these events.
template <class Function> auto with(const RecordingData& data, EventsOf source, Function function)
{
    const RecordedRoot& root = rootOf(data);
    switch (source)
    {
    case EventsOf::names:
        return function(*root.names);
    case EventsOf::types:
        return function(*root.types);
    case EventsOf::accounts:
        return function(*root.accounts);
    case EventsOf::events:
        return function(*root.events);
    case EventsOf::links:
        return function(*root.links);
    case EventsOf::messages:
        return function(*root.messages);
    default:
        return function(*root.groups);
    }
}

} // namespace

void Event::write(long instance, long name, const ActivityValues& written)
{
    if (instance != 0)
    {
        edited.insert_or_assign(instance, Occurrence{name, written});
        return;
    }
    nameId = name;
    typeId = written.typeId;
    t0 = written.t0;
    t1 = written.t1;
    text = written.text;
}

void Event::removeOccurrence(long instance)
{
    edited.erase(instance);
    removed.insert(instance);
}

std::string shownOccurrences(const Event& event)
{
    std::string result;
    for (const auto& [instance, occurrence] : event.edited)
        result += " #" + shown(instance) + '=' + shownValues(occurrence.nameId, occurrence.values);
    for (const long instance : event.removed)
        result += " -" + shown(instance);
    return result;
}

std::string shownValues(long nameId, const ActivityValues& values)
{
    return listed(nameId, values.typeId, values.t0, values.t1, values.text);
}

RecordingData::RecordingData() : root(ComPtr<IRoot>(make<RecordedRoot>(*this).get())) {}

RecordingData::~RecordingData()
{
    EXPECT_EQ(openScopes, 0) << "a scope is left";
    EXPECT_EQ(rulesAlive, 0) << "a rule is still held";
    EXPECT_FALSE(hasSubscribers()) << "somebody still listens";
    EXPECT_EQ(rootOf(*this).referenceCount(), 1U) << "the root is still held";
}

std::vector<std::string> RecordingData::content() const
{
    std::vector<std::string> lines;
    const auto line = [&](const char* kind, const std::string& values) {
        lines.push_back(kind + (' ' + values));
    };
    for (const Group& group : groups)
        line("group", listed(group.id, group.name, group.flags, group.position));
    for (const Name& name : names)
        line("resource",
             listed(name.id, name.text, name.group, name.position, name.color, name.flags, name.mailbox));
    for (const Type& type : types)
        line("type", listed(type.id, type.text, type.group, type.position, type.color, type.flags));
    for (const Account& account : accounts)
        line("account", listed(account.id, account.login, account.role, account.nameId));
    for (const Event& event : events)
        line("activity", listed(event.id, event.nameId, event.typeId, event.t0, event.t1, event.text,
                                event.link.value_or(0)) +
                             ' ' + shownRule(event.rule) + ' ' + shown(event.exception) +
                             shownOccurrences(event));
    for (const Info& row : info)
        line("info", listed(row.nameId, row.position, row.label, row.value));
    for (const Message& message : messages)
        line("message", listed(message.id, message.nameId, message.from, message.dtg, message.tlf,
                               message.contact, message.about, message.kind, long{message.read}));
    return lines;
}

std::vector<std::string> RecordingData::takeCalls()
{
    return std::exchange(calls, {});
}

void RecordingData::failAfter(const std::string& call, int passed, const ErrorInfo& error)
{
    failures[call] = {passed, error};
}

HRESULT RecordingData::record(const std::string& call, const std::string& arguments)
{
    calls.push_back(call + "(" + arguments + ")");
    if (during)
        during(call);
    const auto planned = failures.find(call);
    if (planned == failures.end() || planned->second.passed-- > 0)
        return S_OK;
    const ErrorInfo error = planned->second.error;
    failures.erase(planned);
    return SUCCEEDED(error.number) ? error.number
                                   : Failure(error.number, error.source, error.description).report();
}

Event* RecordingData::event(long id)
{
    const auto found =
        std::find_if(events.begin(), events.end(), [&](const Event& event) { return event.id == id; });
    return found == events.end() ? nullptr : &*found;
}

bool RecordingData::hasSubscribers(EventsOf source) const
{
    return with(*this, source, [](auto& collection) { return collection.hasSubscribers(); });
}

bool RecordingData::hasSubscribers() const
{
    return hasSubscribers(EventsOf::groups) || hasSubscribers(EventsOf::names) ||
           hasSubscribers(EventsOf::types) || hasSubscribers(EventsOf::accounts) ||
           hasSubscribers(EventsOf::events) || hasSubscribers(EventsOf::links) ||
           hasSubscribers(EventsOf::messages);
}

void RecordingData::announceGroup(const Group& group) const
{
    rootOf(*this).groups->announce(group);
}

void RecordingData::announceName(const Name& name) const
{
    rootOf(*this).names->announce(name);
}

void RecordingData::announceType(const Type& type) const
{
    rootOf(*this).types->announce(type);
}

void RecordingData::announceAccount(const Account& account) const
{
    rootOf(*this).accounts->announce(account);
}

void RecordingData::announceMessage(const Message& message) const
{
    rootOf(*this).messages->announce(message);
}

void RecordingData::announceEvent(const Event& event, long instance) const
{
    rootOf(*this).events->announce(event, instance);
}

void RecordingData::announceClear(EventsOf source) const
{
    with(*this, source, [](auto& collection) { collection.raise(1); });
}

} // namespace korvane::test
