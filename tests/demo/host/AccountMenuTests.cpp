#include "demo/host/AccountMenu.h"

#include "demo/host/CommandMenu.h"
#include "framework/com/Boundary.h"
#include "tests/support/RecordingData.h"

#include <gtest/gtest.h>

namespace korvane::host
{

namespace
{

class AccountMenuTest : public testing::Test
{
public:
    AccountMenuTest() = default;
    AccountMenuTest(const AccountMenuTest&) = delete;
    AccountMenuTest& operator=(const AccountMenuTest&) = delete;
    ~AccountMenuTest() override { DestroyMenu(menu); }

protected:
    void fill(const std::wstring& current) { accounts.fill(menu, data.root, current); }

    void haveLogins(const std::vector<std::wstring>& logins)
    {
        data.accounts.clear();
        for (const std::wstring& login : logins)
            data.accounts.push_back({static_cast<long>(data.accounts.size()) + 1, login});
    }

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

    korvane::test::RecordingData data;
    HMENU menu = CreatePopupMenu();
    AccountMenu accounts;
};

TEST_F(AccountMenuTest, OffersTheAccountsAndMarksTheOneThatIsLoggedIn)
{
    haveLogins({L"admin", L"r&d"});
    fill(L"admin");
    EXPECT_EQ(items(), (std::vector<std::wstring>{L"*&1 admin", L"&2 r&&d"}));
    for (int at = 0; at < 2; ++at)
    {
        const std::wstring* told = accounts.loginOf(static_cast<int>(GetMenuItemID(menu, at)));
        ASSERT_NE(told, nullptr);
        EXPECT_EQ(*told, data.accounts[static_cast<std::size_t>(at)].login);
    }
    EXPECT_EQ(accounts.loginOf(menuFirstAccount + 2), nullptr);
    EXPECT_EQ(accounts.loginOf(menuExit), nullptr);
}

TEST_F(AccountMenuTest, IsFilledAnew)
{
    haveLogins({L"admin", L"emily"});
    fill(L"admin");
    haveLogins({L"emily"});
    fill(L"emily");
    EXPECT_EQ(items(), std::vector<std::wstring>{L"*&1 emily"});
}

TEST_F(AccountMenuTest, HasAccessKeysForTheFirstNine)
{
    haveLogins(std::vector<std::wstring>(10, L"emily"));
    fill(L"");
    EXPECT_EQ(items()[8], L"&9 emily");
    EXPECT_EQ(items()[9], L"emily");
}

TEST_F(AccountMenuTest, StaysAsItIsWhenTheAccountsCannotBeRead)
{
    haveLogins({L"admin"});
    fill(L"admin");
    data.fail("Accounts.Load", korvane::test::locked);
    data.during = [this](const std::string&) {
        data.announceClear(korvane::test::EventsOf::accounts); // as much as had been told by then
    };
    EXPECT_TRUE(attempt([&] { fill(L"admin"); }));
    EXPECT_EQ(items(), std::vector<std::wstring>{L"*&1 admin"});
    EXPECT_NE(accounts.loginOf(menuFirstAccount), nullptr);
}

} // namespace

} // namespace korvane::host
