#include "tests/demo/datalayer/DataLayer.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Scopes : public DataLayerTest
{
protected:
    Scopes()
    {
        add(groups, L"Staff");
        ignoreTrace();
    }

    void TearDown() override
    {
        groups.reset();
        root.reset();
        DataLayerTest::TearDown();
    }

    ComPtr<IScope> openScope() const
    {
        return korvane::fetch(root, &IRoot::OpenScope, 0L, Bstr(L"ctlEditGroups.Init").get());
    }

    static void close(const ComPtr<IScope>& scope) { call(scope, &IScope::Close, 0L, 0L); }

    bool canOthersWrite() const
    {
        return !attempt([&] { sql("UPDATE groups SET flags = flags + 1"); });
    }

    ComPtr<IRoot> root = open();
    ComPtr<IGroups> groups = groupsOf(root);
};

} // namespace

TEST_F(Scopes, ReadOneState)
{
    const auto scope = openScope();
    EXPECT_EQ(3, fetch(groups, 4)->flags);
    EXPECT_FALSE(canOthersWrite());
    EXPECT_EQ(3, fetch(groups, 4)->flags);
    close(scope);
    EXPECT_TRUE(canOthersWrite());
    EXPECT_EQ(4, fetch(groups, 4)->flags);
}

TEST_F(Scopes, HoldNobodyUpBeforeTheFirstReading)
{
    const auto scope = openScope();
    EXPECT_TRUE(canOthersWrite());
    EXPECT_EQ(4, fetch(groups, 4)->flags);
    close(scope);
}

TEST_F(Scopes, ReadOneStateUntilTheOutermostEnds)
{
    const auto outer = openScope();
    const auto inner = openScope();
    fetch(groups, 4);
    close(inner);
    EXPECT_FALSE(canOthersWrite());
    close(outer);
    EXPECT_TRUE(canOthersWrite());
}

TEST_F(Scopes, MayEndInAnyOrder)
{
    const auto first = openScope();
    const auto second = openScope();
    fetch(groups, 4);
    close(first);
    EXPECT_FALSE(canOthersWrite());
    close(second);
    EXPECT_TRUE(canOthersWrite());
    fetch(groups, 4711);
    EXPECT_TRUE(trace().ends_with(L"\nGroups.Fetch 4711 = False\r\n"));
}

TEST_F(Scopes, SeeAWriteThatIsMadeWithin)
{
    const auto scope = openScope();
    fetch(groups, 4);
    update(groups, 4, L"People", 7);
    EXPECT_EQ((Listed{4, L"People", 7}), fetch(groups, 4));
    EXPECT_TRUE(canOthersWrite());
    EXPECT_EQ(8, fetch(groups, 4)->flags);
    close(scope);
    EXPECT_EQ(8, fetch(groups, 4)->flags);
}

TEST_F(Scopes, SurviveAWriteThatIsRefused)
{
    const auto scope = openScope();
    EXPECT_TRUE(attempt([&] { add(groups, L"staff"); }));
    EXPECT_EQ(3, fetch(groups, 4)->flags);
    EXPECT_TRUE(canOthersWrite());
    close(scope);
}

TEST_F(Scopes, AreClosedOnce)
{
    const auto scope = openScope();
    close(scope);
    ignoreTrace();
    EXPECT_ERROR(close(scope), Code::scopeClosed, L"Scope", L"ctlEditGroups.Init");
    fetch(groups, 4711);
    EXPECT_EQ(L"Groups.Fetch 4711 = False\r\n", trace());
}

TEST_F(Scopes, EndWithTheirLastReference)
{
    auto scope = openScope();
    fetch(groups, 4);
    ignoreTrace();
    scope.reset();
    EXPECT_TRUE(canOthersWrite());
    EXPECT_EQ(L"The scope \"ctlEditGroups.Init\" was left without Close\r\n", trace());
}

TEST_F(Scopes, OutliveTheRoot)
{
    const auto scope = openScope();
    groups.reset();
    root.reset();
    close(scope);
}
