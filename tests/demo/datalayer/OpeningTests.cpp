#include "tests/demo/datalayer/ChildProcess.h"
#include "tests/demo/datalayer/DataLayer.h"

#include <filesystem>
#include <fstream>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Opening : public DataLayerTest
{
};

} // namespace

TEST_F(Opening, MakesTheDatabaseOnFirstUse)
{
    ASSERT_FALSE(std::filesystem::exists(file));
    const std::vector<Listed> builtIn{{1, L"System", 1}, {2, L"All resources", 1}, {3, L"Unassigned", 1}};
    EXPECT_EQ(builtIn, load(openGroups()));
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_EQ(L"ok", sqlText("PRAGMA integrity_check"));
}

TEST_F(Opening, KeepsWhatWasWritten)
{
    const long id = add(openGroups(), L"Staff", 5);
    EXPECT_EQ((Listed{id, L"Staff", 5}), fetch(openGroups(), id));
}

TEST_F(Opening, SeedsAnEmptyFile)
{
    std::ofstream(std::filesystem::path(file)).close();
    EXPECT_EQ(3u, load(openGroups()).size());
}

TEST_F(Opening, TakesPathsAndNamesInAnyScript)
{
    const std::wstring inside = folder.path() + L"\\Grüße 日本 \U0001F4C5";
    std::filesystem::create_directory(inside);
    const std::wstring path = inside + L"\\Дані.db";
    const std::wstring name = L"Ærø Ünïcode 日本 \U0001F600";
    const long id = add(groupsOf(openFile(path)), name);
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ((Listed{id, name, 3}), fetch(groupsOf(openFile(path)), id));
}

TEST_F(Opening, TakesARelativePath)
{
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    add(groupsOf(openFile(L"korvane.db")), L"Staff");
    std::filesystem::current_path(before);
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(openGroups()));
}

TEST_F(Opening, RefusesAnEmptyPath)
{
    EXPECT_ERROR(openFile(L""), Code::cannotOpen, L"Database", L"");
}

TEST_F(Opening, RefusesAFolderThatDoesNotExist)
{
    const std::wstring path = folder.path() + L"\\missing\\korvane.db";
    EXPECT_ERROR(openFile(path), Code::cannotOpen, L"Database", path);
}

TEST_F(Opening, RefusesAFileThatIsNoDatabase)
{
    std::ofstream(std::filesystem::path(file)) << std::string(5000, 'x');
    EXPECT_ERROR(open(), Code::damaged, L"Database");
    EXPECT_EQ(5000u, std::filesystem::file_size(file));
}

TEST_F(Opening, RefusesTheDatabaseOfAnotherProgram)
{
    sql("CREATE TABLE recipes (name TEXT)");
    EXPECT_ERROR(open(), Code::foreignDatabase, L"Database");
    EXPECT_EQ(L"1", sqlText("SELECT count(*) FROM sqlite_schema"));
}

TEST_F(Opening, RefusesTheDatabaseOfANewerVersion)
{
    open();
    sql("PRAGMA user_version = 4");
    EXPECT_ERROR(open(), Code::newerDatabase, L"Database");
}

TEST_F(Opening, RefusesAnUnknownAccount)
{
    EXPECT_ERROR(open(L"nobody"), Code::unknownAccount, L"Database");
}

TEST_F(Opening, TakesALoginInAnyCase)
{
    EXPECT_TRUE(open(L"EMPLOYEE"));
}

TEST_F(Opening, LeavesTheResultEmptyOnFailure)
{
    auto* root = reinterpret_cast<IRoot*>(0xdeadbeef);
    EXPECT_TRUE(FAILED(database->Open(Bstr(L"").get(), Bstr(L"").get(), &root)));
    EXPECT_EQ(nullptr, root);
    EXPECT_EQ(E_POINTER, database->Open(Bstr(file).get(), nullptr, nullptr));
}

TEST_F(Opening, GivesSeparateRootsOnOneFile)
{
    const auto first = openGroups();
    const auto second = openGroups();
    EXPECT_NE(first.get(), second.get());
    add(first, L"Staff");
    add(second, L"Rooms");
    EXPECT_EQ((std::vector<std::wstring>{L"Staff", L"Rooms"}), names(first));
    EXPECT_EQ((std::vector<std::wstring>{L"Staff", L"Rooms"}), names(second));
}

TEST_F(Opening, ClosesTheFileWithTheLastObject)
{
    auto root = open();
    auto groups = groupsOf(root);
    root.reset();
    EXPECT_FALSE(DeleteFileW(file.c_str()));
    EXPECT_EQ(3u, load(groups).size());
    groups.reset();
    EXPECT_TRUE(DeleteFileW(file.c_str()));
}

TEST_F(Opening, SharesTheFileWithOtherProcesses)
{
    const auto groups = openGroups();
    EXPECT_EQ(0u, ChildProcess::adding(file, L"From the other process").exitCode());
    EXPECT_EQ(std::vector<std::wstring>{L"From the other process"}, names(groups));
}

TEST_F(Opening, SurvivesAFirstUseByManyProcessesAtOnce)
{
    std::vector<ChildProcess> children;
    for (const wchar_t* group : {L"a", L"b", L"c", L"d"})
        children.push_back(ChildProcess::adding(file, group));
    for (const ChildProcess& child : children)
        EXPECT_EQ(0u, child.exitCode());
    EXPECT_EQ(L"ok", sqlText("PRAGMA integrity_check"));
    EXPECT_EQ(L"abcd", sqlText("SELECT group_concat(name, '' ORDER BY name) FROM groups WHERE id > 3"));
    EXPECT_EQ(L"7", sqlText("SELECT count(*) FROM groups"));
}
