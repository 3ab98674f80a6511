// What resources and activity types have alike in the database: they are members of groups, in an order of the users'
// own.
#pragma once

#include "demo/datalayer/Errors.h"
#include "demo/datalayer/Rights.h"

#include <string>

namespace korvane::store
{

/// What they have not alike.
struct MemberKind
{
    const wchar_t* className;
    const char* items;   ///< their table
    const char* members; ///< the table of the groups' members
    const char* id;      ///< its column with their id
    Code mayNotAdd;
    Code mayNotEdit;
    Code mayNotRemove;
    Code mayNotArrange;
    Code unknown;
    Code needsText;
};

class GroupMembers
{
public:
    GroupMembers(const GroupMembers&) = delete;
    GroupMembers& operator=(const GroupMembers&) = delete;

    const wchar_t* className() const noexcept { return kind_.className; }

    /// Whether the account may perform an operation (1 add, 2 remove from a group, 3 change) on an item.
    bool mayPerform(long operation, long id) const;

    // Each is one transaction, and checks the rights by itself: callers need not have asked.
    long add(std::wstring_view text, long color, long flags);
    void update(long id, std::wstring_view text, long color, long flags);
    /// @param position from 1. Without one a new member comes behind all others, and any other stays where it is.
    void addToGroup(long id, long group, long position);
    /// What is no member stays none.
    void removeFromGroup(long id, long group);

protected:
    GroupMembers(Store& store, const MemberKind& kind)
        : connection_(store.connection()), rights_(store), kind_(kind)
    {
    }
    ~GroupMembers() = default;

    /// Whether the role permits an operation on an item, which need not exist.
    virtual bool permits(long operation, long id) const = 0;
    virtual void requireMayJoin(long id, long group) const = 0;
    virtual void requireFreeText(std::wstring_view text, long exceptItem) const = 0;
    /// Called before the members of a group are written.
    virtual void prepareGroup(long group) = 0;

    void requireExisting(long id) const;
    void require(bool granted, Code otherwise) const
    {
        if (!granted)
            throw refusal(otherwise);
    }
    Failure refusal(Code code, std::wstring_view detail = {}) const
    {
        return error(code, kind_.className, detail);
    }

    Connection& connection_;
    Rights rights_;

private:
    template <class... Parameters> Statement statement(const char* sql, const Parameters&... parameters) const
    {
        return Statement(connection_, named(sql).c_str(), parameters...);
    }
    std::string named(std::string sql) const;
    bool exists(long id) const;
    void requireGroup(long group) const;
    void requireText(std::wstring_view text, long exceptItem) const;

    const MemberKind& kind_;
};

} // namespace korvane::store
