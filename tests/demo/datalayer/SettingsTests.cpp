#include "tests/demo/datalayer/DataLayer.h"

#include <future>
#include <thread>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Settings : public DataLayerTest
{
protected:
    Variant value(const wchar_t* key, const Variant& otherwise = Variant(Bstr(L"otherwise"))) const
    {
        return korvane::fetch(layer.makeRegistry(), &IRegistry::GetValue, Bstr(key).get(), otherwise.get());
    }

    std::wstring text(const wchar_t* key) const { return toText(value(key).get()).c_str(); }
};

} // namespace

TEST_F(Settings, AreTheCallersDefaultsWhileNoDatabaseIsOpen)
{
    EXPECT_EQ(L"otherwise", text(L"SharedFolder"));
    EXPECT_EQ(42, toLong(value(L"Anything", Variant(42L)).get()));
    EXPECT_TRUE(value(L"Anything", Variant()).isEmpty());
}

TEST_F(Settings, HaveTheDatabaseFolderAsSharedFolder)
{
    const auto root = open();
    EXPECT_EQ(folder.path(), text(L"SharedFolder"));
    EXPECT_EQ(folder.path(), text(L"SHAREDFOLDER"));
    EXPECT_EQ(VT_BSTR, value(L"SharedFolder").type());
}

TEST_F(Settings, AreReadFromTheDatabase)
{
    const auto root = open();
    sql("INSERT INTO settings VALUES ('SharedFolder', 'S:\\Shared'), ('Empty', '')");
    EXPECT_EQ(L"S:\\Shared", text(L"SharedFolder"));
    EXPECT_EQ(L"S:\\Shared", text(L"SHAREDFOLDER"));
    EXPECT_EQ(L"", text(L"Empty"));
}

TEST_F(Settings, AreTheCallersDefaultsWhereNothingIsStored)
{
    const auto root = open();
    EXPECT_EQ(L"otherwise", text(L"Unknown"));
    EXPECT_EQ(L"otherwise", text(L""));
    EXPECT_EQ(VT_I4, value(L"Unknown", Variant(7L)).type());
}

TEST_F(Settings, FollowReferencesToTheDefault)
{
    long number = 7;
    VARIANT reference{};
    reference.vt = VT_I4 | VT_BYREF;
    reference.plVal = &number;
    const Variant result =
        korvane::fetch(layer.makeRegistry(), &IRegistry::GetValue, Bstr(L"Unknown").get(), reference);
    EXPECT_EQ(VT_I4, result.type());
    EXPECT_EQ(7, result.get().lVal);
}

TEST_F(Settings, ComeFromTheDatabaseOpenedLastThatIsStillOpen)
{
    const auto first = open();
    sql("INSERT INTO settings VALUES ('SharedFolder', 'first')");
    {
        const auto second = openFile(folder.path() + L"\\second.db");
        EXPECT_EQ(folder.path(), text(L"SharedFolder"));
    }
    EXPECT_EQ(L"first", text(L"SharedFolder"));
}

TEST_F(Settings, AreNotThoseOfAnotherApartment)
{
    std::promise<void> opened;
    std::promise<void> asked;
    std::thread other([&] {
        const Apartment own;
        const auto root =
            korvane::fetch(layer.makeDatabase(), &IDatabase::Open, Bstr(file).get(), BSTR(nullptr));
        opened.set_value();
        asked.get_future().wait();
    });
    opened.get_future().wait();
    EXPECT_EQ(L"otherwise", text(L"SharedFolder"));
    asked.set_value();
    other.join();
}
