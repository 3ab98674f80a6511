// What every write of activities checks first. Each check throws the error that the caller is to see.
#pragma once

#include "demo/datalayer/Errors.h"
#include "demo/datalayer/EventRows.h"
#include "demo/datalayer/Store.h"

namespace korvane::store
{

class EventChecks
{
public:
    /// The errors have the class name in their source.
    EventChecks(Store& store, const wchar_t* className)
        : store_(store), rows_(store.connection()), className_(className)
    {
    }

    // The rights to others' activities come first: without them nothing else is told.
    void requireMayCreate(long name) const;
    void requireMayEdit(long name) const;

    /// An activity that there is and that may be edited, or one occurrence of it.
    Activity requireEditable(long event, long instance) const;

    void requireEvent(long event) const;
    void requireName(long name) const;
    void requireValid(const Activity& activity) const;
    void requireValid(const std::optional<Rule>& rule) const;

    Failure refusal(Code code, std::wstring_view detail = {}) const
    {
        return error(code, className_, detail);
    }

    /// The error for an activity, or an occurrence of it, that there is not.
    Failure missing(long event, long instance) const;

private:
    bool exists(const char* query, long id) const;

    Store& store_;
    EventRows rows_;
    const wchar_t* className_;
};

} // namespace korvane::store
