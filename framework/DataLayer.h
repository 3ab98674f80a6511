// The data layer, as commands and dialogs use it: its collections, their announcements, and scopes around steps of
// reading.
#pragma once

#include "framework/com/EventConnection.h"

#include <KorvaneData.h>

#include <string_view>

namespace korvane
{

/// Where a collection of the root object is found, and what it announces.
template <class Collection> struct CollectionTraits;

template <class Interface, class EventsInterface, HRESULT (STDMETHODCALLTYPE IRoot::*property)(Interface**)>
struct CollectionOf
{
    static constexpr auto ofRoot = property;
    static const IID& events() noexcept { return __uuidof(EventsInterface); }
};

template <> struct CollectionTraits<IGroups> : CollectionOf<IGroups, IGroupsEvents, &IRoot::get_Groups>
{
};
template <> struct CollectionTraits<INames> : CollectionOf<INames, INamesEvents, &IRoot::get_Names>
{
};
template <> struct CollectionTraits<ITypes> : CollectionOf<ITypes, ITypesEvents, &IRoot::get_Types>
{
};
template <>
struct CollectionTraits<IAccounts> : CollectionOf<IAccounts, IAccountsEvents, &IRoot::get_Accounts>
{
};
template <>
struct CollectionTraits<IMessages> : CollectionOf<IMessages, IMessagesEvents, &IRoot::get_Messages>
{
};
template <> struct CollectionTraits<IEvents> : CollectionOf<IEvents, IEventsEvents, &IRoot::get_Events>
{
};
template <>
struct CollectionTraits<IEventLinks> : CollectionOf<IEventLinks, IEventLinksEvents, &IRoot::get_EventLinks>
{
};

/// A collection of the root object, taken for one step.
template <class Collection> ComPtr<Collection> collection(const ComPtr<IRoot>& root)
{
    return fetch(root, CollectionTraits<Collection>::ofRoot);
}

/// A collection of the data layer that is listened to: m<Collection> in the commands and dialogs.
template <class Collection> class Subscription
{
public:
    explicit Subscription(EventOwner* owner = nullptr) noexcept : connection_(owner) {}

    /// Takes the collection of a database and hears its announcements from now on.
    void connect(const ComPtr<IRoot>& root, const EventHandlers& handlers)
    {
        collection_ = collection<Collection>(root);
        connection_.connect(collection_.get(), CollectionTraits<Collection>::events(), handlers);
    }

    const ComPtr<Collection>& get() const noexcept { return collection_; }

    /// Makes a call during which the collection announces its items, and returns its result.
    template <class... Parameters, class... Arguments>
    auto load(HRESULT (STDMETHODCALLTYPE Collection::*method)(Parameters...), Arguments... arguments)
    {
        decltype(fetch(collection_, method, arguments...)) result{};
        connection_.during([&] { result = fetch(collection_, method, arguments...); });
        return result;
    }

    /// What is announced now answers to load().
    bool isLoading() const noexcept { return connection_.isInCall(); }

private:
    ComPtr<Collection> collection_;
    EventConnection connection_;
};

/// A scope of the data layer. Without end() it is closed in silence: the step has failed, and that failure is the one
/// to tell.
class DataScope
{
public:
    DataScope(const ComPtr<IRoot>& root, std::wstring_view source, long flags);
    DataScope(const DataScope&) = delete;
    DataScope& operator=(const DataScope&) = delete;
    ~DataScope();

    void end();

private:
    ComPtr<IScope> scope_;
    long flags_;
};

/// Runs a step of reading within a scope of the data layer and returns its result. The scope is closed at the end of
/// the step, also when the step fails.
/// @param source names class and step. @param flags the first argument of opening and closing.
template <class Step>
auto inScope(const ComPtr<IRoot>& root, std::wstring_view source, Step&& step, long flags = 0)
{
    DataScope scope(root, source, flags);
    if constexpr (std::is_void_v<decltype(step())>)
    {
        step();
        scope.end();
    }
    else
    {
        auto result = step();
        scope.end();
        return result;
    }
}

} // namespace korvane
