#include "demo/host/AccountMenu.h"

#include "demo/host/CommandMenu.h"
#include "framework/com/Boundary.h"
#include "framework/com/ConnectionPoint.h"
#include "framework/com/EventConnection.h"
#include "tests/support/EmptyData.h"

#include <gtest/gtest.h>

namespace korvane::host
{

namespace
{

class Accounts final
    : public Object<Accounts, Inherits<korvane::test::EmptyAccounts, EventSource<IAccountsEvents>>, IAccounts,
                    IConnectionPointContainer>
{
public:
    std::vector<std::wstring> logins;
    HRESULT outcome = S_OK;

    STDMETHODIMP Load(VARIANT_BOOL*) override
    {
        raise(eventClear);
        long id = 0;
        for (const std::wstring& login : logins)
            raise(eventAdd, {Variant(++id), Variant(Bstr(login))});
        return outcome;
    }
};

class Root final : public Object<Root, Inherits<korvane::test::EmptyRoot>, IRoot>
{
public:
    ComPtr<Accounts> accounts = make<Accounts>();

    STDMETHODIMP get_Accounts(IAccounts** collection) override
    {
        return returns(collection, [&] { return ComPtr<IAccounts>(accounts.get()); });
    }
};

class AccountMenuTest : public testing::Test
{
public:
    AccountMenuTest() = default;
    AccountMenuTest(const AccountMenuTest&) = delete;
    AccountMenuTest& operator=(const AccountMenuTest&) = delete;
    ~AccountMenuTest() override { DestroyMenu(menu); }

protected:
    void fill(const std::wstring& current) { accounts.fill(menu, ComPtr<IRoot>(root.get()), current); }

    /// The items, with a star before the one that is marked.
    std::vector<std::wstring> items() const
    {
        std::vector<std::wstring> found;
        for (int at = 0; at < GetMenuItemCount(menu); ++at)
        {
            wchar_t text[64];
            const auto position = static_cast<UINT>(at);
            GetMenuStringW(menu, position, text, ARRAYSIZE(text), MF_BYPOSITION);
            const bool isMarked = (GetMenuState(menu, position, MF_BYPOSITION) & MF_CHECKED) != 0;
            found.push_back((isMarked ? L"*" : L"") + std::wstring(text));
        }
        return found;
    }

    ComPtr<Root> root = make<Root>();
    HMENU menu = CreatePopupMenu();
    AccountMenu accounts;
};

TEST_F(AccountMenuTest, OffersTheAccountsAndMarksTheOneThatIsLoggedIn)
{
    root->accounts->logins = {L"admin", L"r&d"};
    fill(L"admin");
    EXPECT_EQ(items(), (std::vector<std::wstring>{L"*&1 admin", L"&2 r&&d"}));
    for (const std::wstring& login : root->accounts->logins)
    {
        const auto at = static_cast<int>(&login - root->accounts->logins.data());
        const std::wstring* told = accounts.loginOf(static_cast<int>(GetMenuItemID(menu, at)));
        ASSERT_NE(told, nullptr);
        EXPECT_EQ(*told, login);
    }
    EXPECT_EQ(accounts.loginOf(menuFirstAccount + 2), nullptr);
    EXPECT_EQ(accounts.loginOf(menuExit), nullptr);
}

TEST_F(AccountMenuTest, IsFilledAnew)
{
    root->accounts->logins = {L"admin", L"emily"};
    fill(L"admin");
    root->accounts->logins = {L"emily"};
    fill(L"emily");
    EXPECT_EQ(items(), std::vector<std::wstring>{L"*&1 emily"});
}

TEST_F(AccountMenuTest, HasAccessKeysForTheFirstNine)
{
    root->accounts->logins.assign(10, L"emily");
    fill(L"");
    EXPECT_EQ(items()[8], L"&9 emily");
    EXPECT_EQ(items()[9], L"emily");
}

TEST_F(AccountMenuTest, StaysAsItIsWhenTheAccountsCannotBeRead)
{
    root->accounts->logins = {L"admin"};
    fill(L"admin");
    root->accounts->outcome = E_ABORT;
    EXPECT_TRUE(attempt([&] { fill(L"admin"); }));
    EXPECT_EQ(items(), std::vector<std::wstring>{L"*&1 admin"});
    EXPECT_NE(accounts.loginOf(menuFirstAccount), nullptr);
}

} // namespace

} // namespace korvane::host
