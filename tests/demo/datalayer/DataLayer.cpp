#include "tests/demo/datalayer/DataLayer.h"

#include "tests/demo/datalayer/Subscriber.h"

#include <filesystem>

namespace korvane::store::test
{

namespace
{

std::string narrow(std::wstring_view text)
{
    const std::u8string utf8 = std::filesystem::path(text).u8string();
    return std::string(utf8.begin(), utf8.end());
}

} // namespace

void DataLayer::load()
{
    module_ = LoadLibraryW((folder() + L"\\KorvaneData.dll").c_str());
    if (!module_)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
}

ComPtr<IClassFactory> DataLayer::factory(REFCLSID classId) const
{
    ComPtr<IClassFactory> result;
    require(entry<decltype(DllGetClassObject)>("DllGetClassObject")(classId, IID_IClassFactory,
                                                                    result.putVoid()));
    return result;
}

bool DataLayer::isIdle() const
{
    return entry<decltype(DllCanUnloadNow)>("DllCanUnloadNow")() == S_OK;
}

std::wstring DataLayer::folder()
{
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).parent_path().wstring();
}

TemporaryFolder::TemporaryFolder()
{
    static int count = 0;
    const auto name =
        L"korvane data " + std::to_wstring(GetCurrentProcessId()) + L'-' + std::to_wstring(++count);
    const auto path = std::filesystem::temp_directory_path() / name;
    std::filesystem::remove_all(path); // what a program left that had the same id and was killed
    std::filesystem::create_directories(path);
    path_ = path.wstring();
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void PrintTo(const Listed& group, std::ostream* stream)
{
    *stream << group.id << " \"" << narrow(group.name) << "\" " << group.flags;
}

void DataLayerTest::TearDown()
{
    database.reset();
    EXPECT_TRUE(layer.isIdle());
}

ComPtr<IRoot> DataLayerTest::openFile(const std::wstring& path, const wchar_t* account) const
{
    ComPtr<IRoot> root;
    call(database, &IDatabase::Open, Bstr(path).get(), Bstr(account).get(), root.put());
    return root;
}

ComPtr<IGroups> DataLayerTest::groupsOf(const ComPtr<IRoot>& root)
{
    ComPtr<IGroups> groups;
    call(root, &IRoot::get_Groups, groups.put());
    return groups;
}

long DataLayerTest::add(const ComPtr<IGroups>& groups, std::wstring_view name, long flags)
{
    long id = -1;
    call(groups, &IGroups::Add, Bstr(name).get(), flags, &id);
    return id;
}

long DataLayerTest::remove(const ComPtr<IGroups>& groups, long id)
{
    long result = -1;
    call(groups, &IGroups::Remove, id, &result);
    return result;
}

long DataLayerTest::update(const ComPtr<IGroups>& groups, long id, std::wstring_view name, long flags)
{
    long result = -1;
    call(groups, &IGroups::Update, id, Bstr(name).get(), flags, &result);
    return result;
}

bool DataLayerTest::hasAccess(const ComPtr<IGroups>& groups, long operation, long id)
{
    VARIANT_BOOL result = VARIANT_FALSE;
    call(groups, &IGroups::HasAccess, operation, id, &result);
    return result != VARIANT_FALSE;
}

std::optional<Listed> DataLayerTest::fetch(const ComPtr<IGroups>& groups, long id)
{
    Bstr name;
    long flags = 0;
    VARIANT_BOOL result = VARIANT_FALSE;
    call(groups, &IGroups::Fetch, id, name.inOut(), &flags, &result);
    return result ? std::optional(Listed{id, name.c_str(), flags}) : std::nullopt;
}

std::vector<Listed> DataLayerTest::load(const ComPtr<IGroups>& groups)
{
    const auto subscriber = Subscriber::subscribedTo(groups);
    VARIANT_BOOL result = VARIANT_FALSE;
    call(groups, &IGroups::Load, &result);
    return subscriber->list();
}

std::vector<std::wstring> DataLayerTest::names(const ComPtr<IGroups>& groups)
{
    std::vector<std::wstring> result;
    for (const Listed& group : load(groups))
        if (group.id > 3)
            result.push_back(group.name);
    return result;
}

std::wstring DataLayerTest::sqlText(const char* query) const
{
    const Connection connection(file, 0);
    Statement statement(connection, query);
    return statement.next() ? statement.text(0) : L"(no row)";
}

std::wstring DataLayerTest::trace() const
{
    Bstr text;
    call(database, &IDatabase::get_Trace, text.put());
    return text.c_str();
}

testing::AssertionResult failsWith(const std::optional<Failure>& failure, Code code, std::wstring_view source,
                                   std::wstring_view description)
{
    if (!failure)
        return testing::AssertionFailure() << "the call succeeded";
    const auto number = static_cast<HRESULT>(0x80040000u + static_cast<unsigned long>(code));
    if (failure->number() == number && failure->source() == source && failure->description() == description)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << std::hex << "0x" << static_cast<unsigned long>(failure->number()) << ", "
           << narrow(failure->source().view()) << ": " << narrow(failure->description().view());
}

} // namespace korvane::store::test
