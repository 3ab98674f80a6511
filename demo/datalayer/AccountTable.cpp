#include "demo/datalayer/AccountTable.h"

#include "demo/datalayer/BuiltIn.h"
#include "demo/datalayer/Text.h"

#include <algorithm>

namespace korvane::store
{

namespace
{

template <class Condition>
std::optional<Account> firstOf(const Connection& connection, const Condition& condition)
{
    const auto accounts = AccountTable::all(connection);
    const auto found = std::find_if(accounts.begin(), accounts.end(), condition);
    return found == accounts.end() ? std::nullopt : std::optional(*found);
}

} // namespace

std::vector<Account> AccountTable::all(const Connection& connection)
{
    std::vector<Account> accounts;
    Statement row(connection, "SELECT accounts.id, login, accounts.role, coalesce(names.id, 0)"
                              "  FROM accounts LEFT JOIN names ON names.account = accounts.id"
                              " ORDER BY login");
    while (row.next())
        accounts.push_back({row.number(0), row.text(1), row.number(2), row.number(3)});
    return accounts;
}

std::optional<Account> AccountTable::find(const Connection& connection, std::wstring_view login)
{
    // The database knows the case of ASCII letters only.
    return firstOf(connection, [&](const Account& account) { return sameText(account.login, login); });
}

std::optional<Account> AccountTable::current() const
{
    return firstOf(connection_, [&](const Account& account) { return account.id == store_.account(); });
}

long AccountTable::add(std::wstring_view login, long role, long name)
{
    Transaction transaction(connection_);
    requireMayChangeLoginOf(name);
    require(!login.empty(), Code::loginNeedsText);
    if (const auto taken = find(login))
        throw error(Code::loginTaken, L"Accounts", taken->login);
    require(rights_.isRole(role), Code::unknownRole, std::to_wstring(role));
    require(rights_.coversRole(role), Code::mayNotGiveRole);
    Statement(connection_, "INSERT INTO accounts (login, role) VALUES (?, ?)", login, role).run();
    const long account = connection_.lastInsertedId();
    Statement(connection_, "UPDATE names SET account = ? WHERE id = ?", account, name).run();
    transaction.commit();
    return account;
}

void AccountTable::attach(long name, std::wstring_view login)
{
    Transaction transaction(connection_);
    const auto account = find(login);
    if (account && account->name == name && rights_.mayEditName(name))
        return; // the login is written with everything else, whatever was changed
    requireMayChangeLoginOf(name);
    require(account.has_value(), Code::unknownLogin, login);
    requireMayTake(*account);
    Statement(connection_, "UPDATE names SET account = NULL WHERE account = ?", account->id).run();
    Statement(connection_, "UPDATE names SET account = ? WHERE id = ?", account->id, name).run();
    transaction.commit();
}

bool AccountTable::detach(long name)
{
    Transaction transaction(connection_);
    requireMayChangeLoginOf(name);
    const bool attached =
        Statement(connection_, "SELECT 1 FROM names WHERE id = ? AND account IS NOT NULL", name).next();
    Statement(connection_, "UPDATE names SET account = NULL WHERE id = ?", name).run();
    transaction.commit();
    return attached;
}

bool AccountTable::remove(std::wstring_view login)
{
    Transaction transaction(connection_);
    const auto account = find(login);
    require(rights_.coversAnyGroup(), Code::mayNotChangeLogin, login);
    if (!account)
        return false;
    requireMayTake(*account);
    Statement(connection_, "DELETE FROM accounts WHERE id = ?", account->id).run();
    transaction.commit();
    return true;
}

/// Who decides on a resource decides on its login, unless that may do more than he.
void AccountTable::requireMayChangeLoginOf(long name) const
{
    require(rights_.coversName(name), Code::mayNotEditName);
    Statement row(connection_,
                  "SELECT accounts.role, accounts.login"
                  "  FROM names LEFT JOIN accounts ON accounts.id = account WHERE names.id = ?",
                  name);
    require(row.next(), Code::unknownName);
    const auto role = row.numberOrNull(0);
    require(!role || rights_.coversRole(*role), Code::mayNotChangeLogin, row.text(1));
}

/// An account that is taken from another resource, or removed.
void AccountTable::requireMayTake(const Account& account) const
{
    require(account.id != builtInAccount && rights_.coversRole(account.role) &&
                (account.name == 0 || rights_.coversName(account.name)),
            Code::mayNotChangeLogin, account.login);
}

} // namespace korvane::store
