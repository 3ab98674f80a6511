// A data layer that records every call with its arguments, in order, and in which any call can be told to fail.
#pragma once

#include "framework/com/ComPtr.h"
#include "tests/support/Library.h"

#include <KorvaneData.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace korvane::test
{

struct Group
{
    long id;
    std::wstring name;
    long flags = 1;
    bool editable = true;
};

/// What the data layer holds and what it was asked. Shared by the COM objects that stand for it, which may
/// live longer than a test's own reference.
struct RecordingData
{
    RecordingData();

    /// The calls so far, for example `Groups.Fetch(4, "", 0)`, and forgets them.
    std::vector<std::string> takeCalls();

    /// Lets the next call with this name, for example "Groups.Fetch", fail with this error.
    void fail(const std::string& call, const ErrorInfo& error) { failAfter(call, 0, error); }
    /// The same after some calls of that name that still succeed.
    void failAfter(const std::string& call, int passed, const ErrorInfo& error);

    /// Records a call; answers with the failure that it was told, if any.
    HRESULT record(const std::string& call, const std::string& arguments);

    std::vector<Group> groups;
    long nextId = 100;
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

    /// The data layer's root object.
    ComPtr<IRoot> root;

    /// Is anybody connected to the events of the groups?
    bool hasSubscribers() const;
    void announceGroup(const Group& group) const;
    void announceClear() const;
};

std::string quoted(std::wstring_view text);

} // namespace korvane::test
