// The collections of master data and messages, as tests call them.
#pragma once

#include "tests/demo/datalayer/ActivityTest.h"

namespace korvane::store::test
{

/// What Names.Fetch gives.
struct Resource
{
    std::wstring text;
    long color = 0;
    long loginId = 0;
    std::wstring login;
    long flags = 0;
    long role = 0;
    friend bool operator==(const Resource&, const Resource&) = default;
};

void PrintTo(const Resource& resource, std::ostream* stream);

/// What Messages.Fetch gives.
struct Note
{
    std::wstring from;
    DATE time = 0;
    std::wstring phone;
    std::wstring contact;
    std::wstring about;
    long kind = 1;
    bool wasRead = false;
    friend bool operator==(const Note&, const Note&) = default;
};

/// Everything one account keeps a department in order with.
struct Office
{
    explicit Office(const ComPtr<IRoot>& opened);

    long addName(const wchar_t* name, long color = 0) const;
    void updateName(long id, const wchar_t* name, long color = 0) const;
    Resource fetchName(long id) const;
    long role(long name) const { return korvane::fetch(names, &INames::GetRole, name); }
    void setRole(long name, long role) const { call(names, &INames::SetRole, name, role); }
    std::wstring mailbox(long name) const;
    void setSyncLogin(long name, const wchar_t* login) const;
    Lines info(long name) const; ///< as announced
    void setInfo(long name, const wchar_t* label, long position, const wchar_t* value) const;

    long addType(const wchar_t* type, long color = 0) const;
    void updateType(long id, const wchar_t* type, long color = 0) const;

    // Of resources and activity types alike.
    template <class Collection>
    static void addToGroup(const ComPtr<Collection>& items, long id, long group, long position = 0)
    {
        EXPECT_EQ(position, korvane::fetch(items, &Collection::AddToGroup, id, group, position));
    }
    template <class Collection>
    static void removeFromGroup(const ComPtr<Collection>& items, long id, long group)
    {
        EXPECT_EQ(id, korvane::fetch(items, &Collection::RemoveFromGroup, id, group));
    }
    template <class Collection> static bool may(const ComPtr<Collection>& items, long operation, long id)
    {
        return korvane::fetch(items, &Collection::HasAccess, operation, id);
    }
    /// The ids that Load announces.
    static std::vector<long> members(const ComPtr<INames>& items, long group);
    static std::vector<long> members(const ComPtr<ITypes>& items, long group);

    Lines logins() const;                                 ///< as announced
    std::vector<long> lookup(const wchar_t* login) const; ///< id, role and resource
    long addAccount(const wchar_t* login, long name, long role = 3) const;
    void attach(long name, const wchar_t* login) const;
    bool detach(long name) const { return korvane::fetch(accounts, &IAccounts::Detach, name); }
    bool removeAccount(const wchar_t* login) const;

    long leave(long name, const Note& note) const;
    Note read(long message) const;
    Lines messagesFor(long name) const; ///< as announced

    ComPtr<ISession> session() const { return root.as<ISession>(); }

    ComPtr<IRoot> root;
    ComPtr<IGroups> groups;
    ComPtr<INames> names;
    ComPtr<ITypes> types;
    ComPtr<IAccounts> accounts;
    ComPtr<IMessages> messages;
};

/// The database of ActivityTest with two more logins: Anna is a manager, Bert a user, as the employee Carla is.
class OfficeTest : public ActivityTest
{
protected:
    static constexpr long staff = 4;
    static constexpr long vehicles = 5;
    static constexpr long meetings = 1;
    static constexpr long travel = 2;
    static constexpr long unknown = 4711;

    OfficeTest();
    void TearDown() override;

    Office officeOf(const wchar_t* account) const { return Office(open(account)); }

    /// All rows of master data and messages, to see that nothing changed.
    std::wstring masterData() const;

    std::optional<Office> office; ///< the administrator's
    std::optional<Office> manager;
    std::optional<Office> user;
};

} // namespace korvane::store::test

/// Expects a call to fail with an error of a class, and to leave master data and messages alone.
#define EXPECT_KEPT(statement, ...)                                                                          \
    do                                                                                                       \
    {                                                                                                        \
        const std::wstring kept = masterData();                                                              \
        EXPECT_ERROR(statement, __VA_ARGS__);                                                                \
        EXPECT_EQ(kept, masterData());                                                                       \
    } while (false)
