#include "tests/demo/datalayer/DataLayer.h"
#include "tests/demo/datalayer/Subscriber.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Traces : public DataLayerTest
{
protected:
    static ComPtr<IScope> scope(const ComPtr<IRoot>& root, const wchar_t* source, long flags = 0)
    {
        ComPtr<IScope> result;
        call(root, &IRoot::OpenScope, flags, Bstr(source).get(), result.put());
        return result;
    }
};

} // namespace

TEST_F(Traces, ShowCallsWithArgumentsAndResults)
{
    const auto root = open(L"admin");
    const auto groups = groupsOf(root);
    const auto id = std::to_wstring(add(groups, L"Staff", 3));
    add(groups, L"Rooms", 3);
    fetch(groups, 4711);
    fetch(groups, 4);
    hasAccess(groups, 3, 4);
    update(groups, 4, L"People", 9);
    remove(groups, 4);
    EXPECT_EQ(L"Database.Open \"" + file +
                  L"\", \"admin\"\r\n"
                  L"Root.Groups\r\n"
                  L"Groups.Add \"Staff\", 3 = " +
                  id +
                  L"\r\n"
                  L"Groups.Add \"Rooms\", 3 = 5\r\n"
                  L"Groups.Fetch 4711 = False\r\n"
                  L"Groups.Fetch 4 = True, \"Staff\", 3\r\n"
                  L"Groups.HasAccess 3, 4 = True\r\n"
                  L"Groups.Update 4, \"People\", 9 = 4\r\n"
                  L"Groups.Remove 4 = 0\r\n",
              trace());
}

TEST_F(Traces, ShowFailuresWithNumberAndText)
{
    const auto groups = openGroups();
    ignoreTrace();
    EXPECT_TRUE(attempt([&] { remove(groups, 1); }));
    EXPECT_EQ(L"Groups.Remove 1 ! 0x80041063 You must not delete a built-in group.\r\n", trace());
}

TEST_F(Traces, NestByScope)
{
    const auto root = open();
    const auto groups = groupsOf(root);
    ignoreTrace();
    const auto outer = scope(root, L"ctlEditGroups.Prepare");
    const auto inner = scope(root, L"EditGroups.FetchEdit", -1);
    fetch(groups, 4711);
    call(inner, &IScope::Close, 0L, 0L);
    call(outer, &IScope::Close, -1L, 2L);
    EXPECT_EQ(L"Root.OpenScope 0, \"ctlEditGroups.Prepare\"\r\n"
              L"  Root.OpenScope -1, \"EditGroups.FetchEdit\"\r\n"
              L"    Groups.Fetch 4711 = False\r\n"
              L"  Scope.Close 0, 0\r\n"
              L"Scope.Close -1, 2\r\n",
              trace());
}

TEST_F(Traces, NestEventsAndWhatSubscribersCall)
{
    const auto groups = openGroups();
    const auto subscriber = Subscriber::subscribedTo(groups);
    subscriber->onEvent = [&] {
        if (subscriber->list().size() == 1)
            hasAccess(groups, 3, 1);
        return S_OK;
    };
    ignoreTrace();
    VARIANT_BOOL result = VARIANT_FALSE;
    call(groups, &IGroups::Load, &result);
    EXPECT_EQ(L"Groups.Load = True\r\n"
              L"  OnClear\r\n"
              L"  OnAdd 1, \"System\", 1\r\n"
              L"  Groups.HasAccess 3, 1 = False\r\n"
              L"  OnAdd 2, \"All resources\", 1\r\n"
              L"  OnAdd 3, \"Unassigned\", 1\r\n",
              trace());
}

TEST_F(Traces, TellOfAScopeThatWasNotClosed)
{
    const auto root = open();
    ignoreTrace();
    scope(root, L"ctlEditGroups.Init");
    EXPECT_EQ(L"Root.OpenScope 0, \"ctlEditGroups.Init\"\r\n"
              L"The scope \"ctlEditGroups.Init\" was left without Close\r\n",
              trace());
}

TEST_F(Traces, ShowSettings)
{
    const auto root = open();
    sql("INSERT INTO settings VALUES ('SharedFolder', 'S:\\')");
    ignoreTrace();
    Variant value;
    const auto registry = layer.makeRegistry();
    call(registry, &IRegistry::GetValue, Bstr(L"SharedFolder").get(), VARIANT{}, value.put());
    call(registry, &IRegistry::GetValue, Bstr(L"Other").get(), VARIANT{}, value.put());
    EXPECT_EQ(L"Registry.GetValue \"SharedFolder\" = \"S:\\\"\r\n"
              L"Registry.GetValue \"Other\" = the default\r\n",
              trace());
}

TEST_F(Traces, KeepTheLastLinesOnly)
{
    const auto groups = openGroups();
    ignoreTrace();
    for (long id = 1; id <= 1500; ++id)
        hasAccess(groups, 3, id + 1000);
    const std::wstring text = trace();
    EXPECT_TRUE(text.starts_with(L"Groups.HasAccess 3, 1501 = False\r\n"));
    EXPECT_TRUE(text.ends_with(L"Groups.HasAccess 3, 2500 = False\r\n"));
}

TEST_F(Traces, MayLoseTheLineOfACallThatRuns)
{
    const auto groups = openGroups();
    const auto subscriber = Subscriber::subscribedTo(groups);
    subscriber->onEvent = [&] { return ignoreTrace(), S_OK; };
    VARIANT_BOOL result = VARIANT_FALSE;
    call(groups, &IGroups::Load, &result);
    subscriber->onEvent = [] { return S_OK; };
    EXPECT_EQ(L"", trace());
    fetch(groups, 4711);
    EXPECT_EQ(L"Groups.Fetch 4711 = False\r\n", trace());
}

TEST_F(Traces, BelongToTheObjectThatOpenedTheDatabase)
{
    const auto other = layer.makeDatabase();
    const auto root = open();
    Bstr text;
    call(other, &IDatabase::get_Trace, text.put());
    EXPECT_EQ(L"", std::wstring(text.c_str()));
}

TEST_F(Traces, ShowWhatCouldNotBeOpened)
{
    EXPECT_TRUE(attempt([&] { open(L"nobody"); }));
    EXPECT_EQ(L"Database.Open \"" + file +
                  L"\", \"nobody\" ! 0x80040FFA Unknown username - cannot login.\r\n",
              trace());
}
