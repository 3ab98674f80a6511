// The login accounts as the database holds them, and the rules for changing them.
#pragma once

#include "demo/datalayer/Errors.h"
#include "demo/datalayer/Rights.h"

#include <optional>
#include <string>
#include <vector>

namespace korvane::store
{

struct Account
{
    long id;
    std::wstring login;
    long role;
    long name; ///< the resource that it is attached to; 0 for none
};

class AccountTable
{
public:
    explicit AccountTable(Store& store) : store_(store), connection_(store.connection()), rights_(store) {}

    /// All accounts by their logins.
    static std::vector<Account> all(const Connection& connection);
    /// Logins are told apart without regard to case.
    static std::optional<Account> find(const Connection& connection, std::wstring_view login);

    std::vector<Account> all() const { return all(connection_); }
    std::optional<Account> find(std::wstring_view login) const { return find(connection_, login); }
    /// The account that works in the database; empty when it has been removed.
    std::optional<Account> current() const;

    // Each is one transaction, and checks the rights by itself.
    /// The account that the resource had stays, attached to none; with attach too.
    long add(std::wstring_view login, long role, long name);
    void attach(long name, std::wstring_view login);
    bool detach(long name); ///< false where there is nothing to detach
    bool remove(std::wstring_view login);

private:
    void requireMayChangeLoginOf(long name) const;
    void requireMayTake(const Account& account) const;
    void require(bool granted, Code otherwise, std::wstring_view detail = {}) const
    {
        if (!granted)
            throw error(otherwise, L"Accounts", detail);
    }

    Store& store_;
    Connection& connection_;
    Rights rights_;
};

} // namespace korvane::store
