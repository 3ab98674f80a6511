#include "tests/support/RecordingData.h"

#include "demo/datalayer/ConnectionPoint.h"
#include "framework/com/Decimal.h"
#include "framework/com/Object.h"

#include <algorithm>

namespace korvane::test
{

namespace
{

std::string text(long number)
{
    return std::to_string(number);
}

class RecordedGroups final : public Object<RecordedGroups, Inherits<IGroups, EventSource<IGroupsEvents>>,
                                           IGroups, IConnectionPointContainer>
{
public:
    explicit RecordedGroups(RecordingData& data) : data_(data) {}

    using EventSource<IGroupsEvents>::raise;
    using EventSource<IGroupsEvents>::hasSubscribers;

    STDMETHODIMP Load(VARIANT_BOOL* result) override
    {
        const HRESULT outcome = data_.record("Groups.Load", "");
        if (FAILED(outcome))
            return outcome;
        raise(1);
        for (const Group& group : data_.groups)
            raise(2, {Variant(group.id), Variant(Bstr(group.name)), Variant(group.flags)});
        *result = VARIANT_TRUE;
        return S_OK;
    }

    STDMETHODIMP Fetch(long id, BSTR* name, long* flags, VARIANT_BOOL* result) override
    {
        const HRESULT outcome = data_.record("Groups.Fetch", text(id));
        if (FAILED(outcome))
            return outcome;
        const auto found =
            std::find_if(data_.groups.begin(), data_.groups.end(), [&](auto& g) { return g.id == id; });
        *result = VARIANT_FALSE;
        if (found == data_.groups.end())
            return S_OK;
        SysReAllocStringLen(name, found->name.data(), static_cast<UINT>(found->name.size()));
        *flags = found->flags;
        *result = VARIANT_TRUE;
        return S_OK;
    }

    STDMETHODIMP HasAccess(long operation, long id, VARIANT_BOOL* result) override
    {
        const HRESULT outcome = data_.record("Groups.HasAccess", text(operation) + ", " + text(id));
        if (FAILED(outcome))
            return outcome;
        const auto found =
            std::find_if(data_.groups.begin(), data_.groups.end(), [&](auto& g) { return g.id == id; });
        *result = found != data_.groups.end() && found->editable ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }

    STDMETHODIMP Add(BSTR name, long flags, long* newId) override
    {
        const HRESULT outcome = data_.record("Groups.Add", quoted(view(name)) + ", " + text(flags));
        if (FAILED(outcome))
            return outcome;
        *newId = data_.nextId++;
        data_.groups.push_back({*newId, std::wstring(view(name)), flags, true});
        return S_OK;
    }

    STDMETHODIMP Remove(long id, long* removedId) override
    {
        const HRESULT outcome = data_.record("Groups.Remove", text(id));
        if (SUCCEEDED(outcome))
            *removedId = 0;
        return outcome;
    }

    STDMETHODIMP Update(long id, BSTR name, long flags, long* updatedId) override
    {
        const HRESULT outcome =
            data_.record("Groups.Update", text(id) + ", " + quoted(view(name)) + ", " + text(flags));
        if (SUCCEEDED(outcome))
            *updatedId = id;
        return outcome;
    }

private:
    RecordingData& data_;
};

class RecordedScope final : public Object<RecordedScope, Inherits<IScope>, IScope>
{
public:
    explicit RecordedScope(RecordingData& data) : data_(data) { ++data_.openScopes; }
    ~RecordedScope() { --data_.openScopes; }

    STDMETHODIMP Close(long flags, long reason) override
    {
        return data_.record("Scope.Close", text(flags) + ", " + text(reason));
    }

private:
    RecordingData& data_;
};

class RecordedRoot final : public Object<RecordedRoot, Inherits<IRoot>, IRoot>
{
public:
    explicit RecordedRoot(RecordingData& data) : data_(data), groups(make<RecordedGroups>(data)) {}

    STDMETHODIMP get_Groups(IGroups** collection) override
    {
        *collection = nullptr;
        const HRESULT outcome = data_.record("Root.Groups", "");
        if (SUCCEEDED(outcome))
            *collection = ComPtr<IGroups>(groups.get()).detach();
        return outcome;
    }

    STDMETHODIMP OpenScope(long flags, BSTR source, IScope** scope) override
    {
        *scope = nullptr;
        const HRESULT outcome = data_.record("Root.OpenScope", text(flags) + ", " + quoted(view(source)));
        if (SUCCEEDED(outcome))
            *scope = ComPtr<IScope>(make<RecordedScope>(data_).get()).detach();
        return outcome;
    }

private:
    RecordingData& data_;

public:
    ComPtr<RecordedGroups> groups;
};

RecordedGroups& groupsOf(const RecordingData& data)
{
    return *static_cast<RecordedRoot*>(data.root.get())->groups;
}

} // namespace

RecordingData::RecordingData() : root(ComPtr<IRoot>(make<RecordedRoot>(*this).get())) {}

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
    return Failure(error.number, error.source, error.description).report();
}

bool RecordingData::hasSubscribers() const
{
    return groupsOf(*this).hasSubscribers();
}

void RecordingData::announceGroup(const Group& group) const
{
    groupsOf(*this).raise(2, {Variant(group.id), Variant(Bstr(group.name)), Variant(group.flags)});
}

void RecordingData::announceClear() const
{
    groupsOf(*this).raise(1);
}

std::string quoted(std::wstring_view text)
{
    std::string result(1, '"');
    for (const wchar_t character : text)
        result += character < 0x80 ? static_cast<char>(character) : '?';
    return result + '"';
}

} // namespace korvane::test
