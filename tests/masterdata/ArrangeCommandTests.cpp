// The commands that arrange, which differ in what they load and how they store a place.
#include "tests/masterdata/CommandFixture.h"

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

struct Item
{
    long id;
    const wchar_t* text;
};

struct OfNames
{
    using Interface = IArrangeNames;
    static constexpr auto count = &IArrangeNames::get_NameCount;
    static constexpr auto key = &IArrangeNames::get_NameKey;
    static constexpr auto text = &IArrangeNames::get_NameText;
    static constexpr const char* collection = "Root.Names()";
    static constexpr const char* load = "Names.Load(4)";
    static constexpr auto source = EventsOf::names;

    static REFCLSID classId() { return __uuidof(::ArrangeNames); }
    static void add(RecordingData& data, const Item& item) { data.names.push_back({item.id, item.text, 4}); }
    static void addOther(RecordingData& data) { data.names.push_back({50, L"of another group", 5}); }
    static void clear(RecordingData& data) { data.names.clear(); }
    static std::string store(long id, int index)
    {
        return "Names.AddToGroup(" + listed(id, 4L, index + 1L) + ")";
    }
};

struct OfTypes
{
    using Interface = IArrangeTypes;
    static constexpr auto count = &IArrangeTypes::get_TypeCount;
    static constexpr auto key = &IArrangeTypes::get_TypeKey;
    static constexpr auto text = &IArrangeTypes::get_TypeText;
    static constexpr const char* collection = "Root.Types()";
    static constexpr const char* load = "Types.Load(4)";
    static constexpr auto source = EventsOf::types;

    static REFCLSID classId() { return __uuidof(::ArrangeTypes); }
    static void add(RecordingData& data, const Item& item)
    {
        data.types.push_back({item.id, item.text, 0, 4});
    }
    static void addOther(RecordingData& data) { data.types.push_back({50, L"of another group", 0, 5}); }
    static void clear(RecordingData& data) { data.types.clear(); }
    static std::string store(long id, int index)
    {
        return "Types.AddToGroup(" + listed(id, 4L, index + 1L) + ")";
    }
};

struct OfGroups
{
    using Interface = IArrangeGroups;
    static constexpr auto count = &IArrangeGroups::get_GroupCount;
    static constexpr auto key = &IArrangeGroups::get_GroupKey;
    static constexpr auto text = &IArrangeGroups::get_GroupText;
    static constexpr const char* collection = "Root.Groups()";
    static constexpr const char* load = "Groups.Load()";
    static constexpr auto source = EventsOf::groups;

    static REFCLSID classId() { return __uuidof(::ArrangeGroups); }
    static void add(RecordingData& data, const Item& item) { data.groups.push_back({item.id, item.text, 3}); }
    static void addOther(RecordingData& data) { data.groups.push_back({50, L"with the flags 1", 1}); }
    static void clear(RecordingData& data) { data.groups.clear(); }
    static std::string store(long id, int index)
    {
        return "Groups.SetPosition(" + listed(id, index + 3L) + ")"; // after those that are built in
    }
};

template <class Kind> class ArrangeCommandTests : public CommandFixture
{
protected:
    ArrangeCommandTests() : CommandFixture(Kind::classId()), own(command.as<typename Kind::Interface>())
    {
        Kind::addOther(data);
        for (const Item& item : {Item{7, L"Cleo"}, {5, L"Anna"}, {9, L"Ben"}, {6, L""}})
            Kind::add(data, item);
    }

    long count() const { return fetch(own, Kind::count); }

    std::vector<std::wstring> items() const
    {
        std::vector<std::wstring> all;
        all.reserve(static_cast<std::size_t>(count()));
        for (long index = 0; index < count(); ++index)
            all.push_back(std::to_wstring(fetch(own, Kind::key, index)) + L' ' +
                          std::wstring(fetch(own, Kind::text, index).view()));
        return all;
    }

    void arrange(std::initializer_list<long> ids) const
    {
        long index = 0;
        for (const long id : ids)
            call(own, &Kind::Interface::put_Pos, index++, id);
    }

    void expectNoIndex(long index) const
    {
        long id = 4711;
        EXPECT_EQ((own.get()->*Kind::key)(index, &id), DISP_E_BADINDEX);
        EXPECT_EQ(id, 0);
        Bstr text;
        EXPECT_EQ((own.get()->*Kind::text)(index, text.put()), DISP_E_BADINDEX);
        EXPECT_EQ(own->put_Pos(index, 5), DISP_E_BADINDEX);
        SetErrorInfo(0, nullptr);
    }

    std::vector<std::string> stored(std::initializer_list<long> ids) const
    {
        std::vector<std::string> calls{Kind::collection};
        for (const long id : ids)
            calls.push_back(Kind::store(id, static_cast<int>(calls.size()) - 1));
        return calls;
    }

    ComPtr<typename Kind::Interface> own;
};

using Kinds = testing::Types<OfNames, OfTypes, OfGroups>;
TYPED_TEST_SUITE(ArrangeCommandTests, Kinds);

} // namespace

TYPED_TEST(ArrangeCommandTests, PrepareLoadsTheItemsInTheirOrder)
{
    for (const long operation : {0L, 2L, 3L, 4L, -1L})
    {
        EXPECT_TRUE(this->prepare(operation));
        EXPECT_THAT(this->data.takeCalls(), ElementsAre(TypeParam::collection, TypeParam::load));
        EXPECT_THAT(this->items(), ElementsAre(L"7 Cleo", L"5 Anna", L"9 Ben", L"6 "));
    }
    EXPECT_FALSE(this->data.hasSubscribers());
}

TYPED_TEST(ArrangeCommandTests, PrepareForAdditionLoadsNothing)
{
    EXPECT_TRUE(this->prepare(1));
    EXPECT_THAT(this->data.takeCalls(), IsEmpty());
    EXPECT_EQ(this->count(), 0);
    this->expectNoIndex(0);
}

TYPED_TEST(ArrangeCommandTests, AnEmptyLoadLeavesOneEmptyItem)
{
    TypeParam::clear(this->data);
    TypeParam::addOther(this->data);
    this->prepare(3);
    EXPECT_EQ(this->count(), 1);
    EXPECT_THAT(this->items(), ElementsAre(L"0 "));
    this->expectNoIndex(1);
    this->arrange({0});
    EXPECT_EQ(this->executed(3), this->stored({0}));
}

TYPED_TEST(ArrangeCommandTests, AnIndexThatIsNotInTheTableIsTold)
{
    this->prepare(3);
    for (const long index : {-1L, 4L, 4711L, LONG_MAX, LONG_MIN})
        this->expectNoIndex(index);
}

TYPED_TEST(ArrangeCommandTests, ExecuteStoresThePlacesInTheChosenOrder)
{
    this->prepare(3);
    this->arrange({9, 7, 6, 5});
    EXPECT_EQ(this->executed(3), this->stored({9, 7, 6, 5}));
    EXPECT_THAT(this->items(), ElementsAre(L"7 Cleo", L"5 Anna", L"9 Ben", L"6 ")); // as it was loaded
    this->prepare(3);
    EXPECT_THAT(this->items(), ElementsAre(L"9 Ben", L"7 Cleo", L"6 ", L"5 Anna"));
}

TYPED_TEST(ArrangeCommandTests, APlaceThatNothingIsChosenForIsStoredWithTheId0)
{
    this->prepare(3);
    call(this->own, &TypeParam::Interface::put_Pos, 2L, 5L);
    EXPECT_EQ(this->executed(3), this->stored({0, 0, 5, 0}));
}

TYPED_TEST(ArrangeCommandTests, OnlyAChangeWrites)
{
    this->prepare(3);
    this->arrange({9, 7, 6, 5});
    const auto before = this->data.content();
    for (const long operation : {0L, 1L, 2L, 4L, -1L})
        EXPECT_THAT(this->executed(operation), ElementsAre(TypeParam::collection));
    EXPECT_EQ(this->data.content(), before);
}

TYPED_TEST(ArrangeCommandTests, PlacesThatAreStoredStayStoredWhenOneFails)
{
    this->prepare(3);
    this->arrange({9, 7, 6, 5});
    const std::string last = TypeParam::store(6, 2);
    this->data.failAfter(last.substr(0, last.find('(')), 2, locked);
    EXPECT_EQ(this->failed(3, locked), this->stored({9, 7, 6}));
}

TYPED_TEST(ArrangeCommandTests, AFailedLoadLeavesTheTableAsItWas)
{
    this->prepare(3);
    this->arrange({9, 7, 6, 5});
    const std::string load = TypeParam::load;
    this->data.fail(load.substr(0, load.find('(')), locked);
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(errorOf(this->command->Prepare(&result)), locked);
    EXPECT_EQ(result, VARIANT_FALSE);
    EXPECT_EQ(this->count(), 4);
    EXPECT_EQ(this->executed(3), this->stored({9, 7, 6, 5}));
}

TYPED_TEST(ArrangeCommandTests, WhatIsAnnouncedAfterwardsIsNotArranged)
{
    this->data.announcesWrites = true;
    this->prepare(3);
    this->arrange({9, 7, 6, 5});
    this->data.announceClear(TypeParam::source);
    EXPECT_EQ(this->executed(3), this->stored({9, 7, 6, 5}));
    EXPECT_THAT(this->items(), ElementsAre(L"7 Cleo", L"5 Anna", L"9 Ben", L"6 "));
}

TYPED_TEST(ArrangeCommandTests, AHostMayGoOnToAnotherGroupWhileThePlacesAreStored)
{
    this->prepare(3);
    this->arrange({9, 7, 6, 5});
    bool again = true;
    this->data.during = [&](const std::string& call) {
        if (TypeParam::store(9, 0).starts_with(call) && std::exchange(again, false))
        {
            TypeParam::clear(this->data);
            this->prepare(3);
            this->let(L"GroupID", Variant(5L));
        }
    };
    this->execute(3);
    this->data.during = nullptr;
    auto calls = this->data.takeCalls();
    std::erase(calls, TypeParam::load);
    EXPECT_EQ(calls.size(), 7U); // two loads and four places
    EXPECT_EQ(calls.back(), TypeParam::store(5, 3));
}

TYPED_TEST(ArrangeCommandTests, ManyItemsAreHeld)
{
    constexpr long many = 100'000;
    TypeParam::clear(this->data);
    for (long id = 1; id <= many; ++id)
        TypeParam::add(this->data, {id, L"one of many"});
    this->prepare(3);
    EXPECT_EQ(this->count(), many);
    EXPECT_EQ(fetch(this->own, TypeParam::key, many - 1), many);
    this->expectNoIndex(many);
}

} // namespace korvane::test
