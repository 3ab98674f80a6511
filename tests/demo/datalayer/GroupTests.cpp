#include "tests/demo/datalayer/DataLayer.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Groups : public DataLayerTest
{
protected:
    const wchar_t* source = L"KorvaneData.Groups";
};

} // namespace

TEST_F(Groups, AreLoadedInTheirStoredOrder)
{
    const auto groups = openGroups();
    add(groups, L"One");
    add(groups, L"Two");
    add(groups, L"Three");
    sql("UPDATE groups SET position = -position WHERE id > 3");
    EXPECT_EQ((std::vector<std::wstring>{L"Three", L"Two", L"One"}), names(groups));
}

TEST_F(Groups, AreAddedAtTheEndWithAnIdAndFlagsOfTheirOwn)
{
    const auto groups = openGroups();
    const long first = add(groups, L"Staff", 3);
    const long second = add(groups, L"Rooms", -7);
    EXPECT_GT(first, 3);
    EXPECT_GT(second, first);
    const auto all = load(groups);
    ASSERT_EQ(5u, all.size());
    EXPECT_EQ((Listed{first, L"Staff", 3}), all[3]);
    EXPECT_EQ((Listed{second, L"Rooms", -7}), all[4]);
}

TEST_F(Groups, KeepTheirPlaceWhenUpdated)
{
    const auto groups = openGroups();
    const long id = add(groups, L"Staff");
    add(groups, L"Rooms");
    update(groups, id, L"Zebras");
    EXPECT_EQ((std::vector<std::wstring>{L"Zebras", L"Rooms"}), names(groups));
}

TEST_F(Groups, AreRemovedAndLeaveNoId)
{
    const auto groups = openGroups();
    const long id = add(groups, L"Staff");
    add(groups, L"Rooms");
    EXPECT_EQ(0, remove(groups, id));
    EXPECT_EQ(std::nullopt, fetch(groups, id));
    EXPECT_EQ(std::vector<std::wstring>{L"Rooms"}, names(groups));
}

TEST_F(Groups, NeedAName)
{
    const auto groups = openGroups();
    const long id = add(groups, L"Staff");
    // Tab and line end, no-break space, ideographic space.
    for (const wchar_t* blank : {L"", L" ", L"\t\r\n", L"\u00A0", L"\u3000 "})
    {
        EXPECT_ERROR(add(groups, blank), Code::groupNeedsName, L"Groups");
        EXPECT_ERROR(update(groups, id, blank), Code::groupNeedsName, L"Groups");
    }
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(groups));
}

TEST_F(Groups, NeedANameWhereNoTextIsGiven)
{
    long id = -1;
    const auto groups = openGroups();
    EXPECT_ERROR(call(groups, &IGroups::Add, BSTR(nullptr), 3L, &id), Code::groupNeedsName, L"Groups");
    EXPECT_EQ(0, id);
}

TEST_F(Groups, NeedANameOfTheirOwnInAnyCase)
{
    const auto groups = openGroups();
    const long id = add(groups, L"Äpfel");
    add(groups, L"Rooms");
    EXPECT_ERROR(add(groups, L"Äpfel"), Code::groupNameTaken, L"Groups", L"Äpfel");
    EXPECT_ERROR(add(groups, L"äPFEL"), Code::groupNameTaken, L"Groups", L"Äpfel");
    EXPECT_ERROR(update(groups, id, L"rOOMS"), Code::groupNameTaken, L"Groups", L"Rooms");
    EXPECT_ERROR(add(groups, L"system"), Code::groupNameTaken, L"Groups", L"System");
    EXPECT_EQ((std::vector<std::wstring>{L"Äpfel", L"Rooms"}), names(groups));
}

TEST_F(Groups, MayChangeTheCaseOfTheirOwnName)
{
    const auto groups = openGroups();
    const long id = add(groups, L"staff");
    update(groups, id, L"STAFF");
    EXPECT_EQ((Listed{id, L"STAFF", 3}), fetch(groups, id));
}

TEST_F(Groups, KeepBlanksAndMarksInTheirNames)
{
    const auto groups = openGroups();
    for (const wchar_t* name :
         {L" Staff ", L"Robert'); DROP TABLE groups;--", L"a#b", L"\"quoted\"", L"a;b\tc"})
    {
        const long id = add(groups, name);
        EXPECT_EQ((Listed{id, name, 3}), fetch(groups, id));
    }
    EXPECT_EQ(5u, names(groups).size());
}

TEST_F(Groups, TakeLongNames)
{
    const auto groups = openGroups();
    const std::wstring name(20000, L'x');
    EXPECT_EQ(name, fetch(groups, add(groups, name))->name);
}

TEST_F(Groups, RefuseToLoseABuiltInOne)
{
    const auto groups = openGroups();
    for (long id = 1; id <= 3; ++id)
        EXPECT_ERROR(remove(groups, id), Code::builtInGroup, L"Groups");
    EXPECT_EQ(3u, load(groups).size());
}

TEST_F(Groups, RefuseToRenameABuiltInOne)
{
    const auto groups = openGroups();
    EXPECT_ERROR(update(groups, 2, L"Mine"), Code::mayNotChangeGroup, L"Groups");
    EXPECT_EQ((Listed{2, L"All resources", 1}), fetch(groups, 2));
}

TEST_F(Groups, RefuseToLoseTheLastOneBesidesTheBuiltIn)
{
    const auto groups = openGroups();
    const long id = add(groups, L"Staff");
    EXPECT_ERROR(remove(groups, id), Code::lastGroup, L"Groups");
    const long second = add(groups, L"Rooms");
    remove(groups, id);
    EXPECT_ERROR(remove(groups, second), Code::lastGroup, L"Groups");
    EXPECT_EQ(std::vector<std::wstring>{L"Rooms"}, names(groups));
}

TEST_F(Groups, RefuseChangesOfUnknownOnes)
{
    const auto groups = openGroups();
    add(groups, L"Staff");
    for (const long id : {0L, -1L, 4711L})
    {
        EXPECT_ERROR(remove(groups, id), Code::unknownGroup, L"Groups");
        EXPECT_ERROR(update(groups, id, L"Rooms"), Code::unknownGroup, L"Groups");
    }
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(groups));
}

TEST_F(Groups, ClearTheirResultsOnFailure)
{
    const auto groups = openGroups();
    long id = 4711;
    EXPECT_TRUE(FAILED(groups->Remove(1, &id)));
    EXPECT_EQ(0, id);
    id = 4711;
    EXPECT_TRUE(FAILED(groups->Update(1, Bstr(L"x").get(), 0, &id)));
    EXPECT_EQ(0, id);
}

TEST_F(Groups, AnswerLateBoundCalls)
{
    const auto groups = openGroups().as<IDispatch>();
    wchar_t memberName[] = L"Add";
    LPOLESTR memberNames = memberName;
    DISPID member = DISPID_UNKNOWN;
    ASSERT_EQ(S_OK, groups->GetIDsOfNames(IID_NULL, &memberNames, 1, LOCALE_USER_DEFAULT, &member));

    const Bstr name(L"Staff");
    long id = 0;
    VARIANT arguments[3]{}; // the last one first
    arguments[0].vt = VT_I4 | VT_BYREF;
    arguments[0].plVal = &id;
    arguments[1].vt = VT_I4;
    arguments[1].lVal = 3;
    arguments[2].vt = VT_BSTR;
    arguments[2].bstrVal = name.get();
    DISPPARAMS parameters{arguments, nullptr, 3, 0};
    EXPECT_EQ(S_OK, groups->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                   nullptr, nullptr, nullptr));
    EXPECT_GT(id, 3);

    EXCEPINFO exception{};
    EXPECT_EQ(DISP_E_EXCEPTION, groups->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                               &parameters, nullptr, &exception, nullptr));
    const Bstr exceptionSource = Bstr::adopt(exception.bstrSource);
    const Bstr description = Bstr::adopt(exception.bstrDescription);
    const Bstr help = Bstr::adopt(exception.bstrHelpFile);
    EXPECT_EQ(L"There is a group named \"Staff\" already.", std::wstring(description.c_str()));
    EXPECT_EQ(source, std::wstring(exceptionSource.c_str()));
}
