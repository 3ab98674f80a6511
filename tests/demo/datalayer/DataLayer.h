// A test with a database file of its own and the data layer's DLL.
#pragma once

#include "demo/datalayer/Errors.h"
#include "demo/datalayer/Sqlite.h"
#include "framework/com/Boundary.h"
#include "framework/com/Bstr.h"
#include "framework/com/ComPtr.h"
#include "tests/support/TemporaryFolder.h"

#include <KorvaneStore.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace korvane::store::test
{

/// KorvaneData.dll from beside the program.
class DataLayer
{
public:
    DataLayer() { load(); }
    DataLayer(const DataLayer&) = delete;
    DataLayer& operator=(const DataLayer&) = delete;
    ~DataLayer() { unload(); }

    void load();
    void unload() { FreeLibrary(std::exchange(module_, nullptr)); }

    template <class Function> Function* entry(const char* name) const
    {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }

    ComPtr<IClassFactory> factory(REFCLSID classId) const;
    ComPtr<IDatabase> makeDatabase() const { return create<IDatabase>(__uuidof(::Database)); }
    ComPtr<IRegistry> makeRegistry() const { return create<IRegistry>(__uuidof(::Registry)); }

    /// Whether nothing of the module is in use.
    bool isIdle() const;

    static std::wstring folder();

private:
    template <class Interface> ComPtr<Interface> create(REFCLSID classId) const
    {
        ComPtr<Interface> object;
        require(factory(classId)->CreateInstance(nullptr, __uuidof(Interface), object.putVoid()));
        return object;
    }

    HMODULE module_ = nullptr;
};

using korvane::test::TemporaryFolder;

/// A file that others may read but not write while it lives.
class WriteProtection
{
public:
    explicit WriteProtection(const std::wstring& file)
        : handle_(
              CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr))
    {
        EXPECT_NE(INVALID_HANDLE_VALUE, handle_);
    }
    WriteProtection(const WriteProtection&) = delete;
    WriteProtection& operator=(const WriteProtection&) = delete;
    ~WriteProtection() { CloseHandle(handle_); }

private:
    HANDLE handle_;
};

struct Listed
{
    long id;
    std::wstring name;
    long flags;
    friend bool operator==(const Listed&, const Listed&) = default;
};

void PrintTo(const Listed& group, std::ostream* stream);

/// Each test ends with the proof that everything was released.
class DataLayerTest : public testing::Test
{
protected:
    DataLayerTest() : database(layer.makeDatabase()) {}

    void TearDown() override;

    /// Opens the test's own database file.
    ComPtr<IRoot> open(const wchar_t* account = L"") const { return openFile(file, account); }
    ComPtr<IRoot> openFile(const std::wstring& path, const wchar_t* account = L"") const;
    ComPtr<IGroups> openGroups(const wchar_t* account = L"") const { return groupsOf(open(account)); }

    static ComPtr<IGroups> groupsOf(const ComPtr<IRoot>& root)
    {
        return korvane::fetch(root, &IRoot::get_Groups);
    }
    static ComPtr<IConnectionPoint> eventsOf(const ComPtr<IGroups>& groups);

    static long add(const ComPtr<IGroups>& groups, std::wstring_view name, long flags = 3);
    static long remove(const ComPtr<IGroups>& groups, long id);
    static long update(const ComPtr<IGroups>& groups, long id, std::wstring_view name, long flags = 3);
    static bool hasAccess(const ComPtr<IGroups>& groups, long operation, long id);
    static std::optional<Listed> fetch(const ComPtr<IGroups>& groups, long id);

    /// What Load announces.
    static std::vector<Listed> load(const ComPtr<IGroups>& groups);

    /// As load, without the built-in groups.
    static std::vector<std::wstring> names(const ComPtr<IGroups>& groups);

    /// Works on the file past the data layer, as an administrator's tool would.
    void sql(const char* statements) const { Connection(file, 0).execute(statements); }
    std::wstring sqlText(const char* query) const;

    void ignoreTrace() const { database->ClearTrace(); }
    std::wstring trace() const;

    struct Apartment
    {
        Apartment() { require(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)); }
        Apartment(const Apartment&) = delete;
        Apartment& operator=(const Apartment&) = delete;
        ~Apartment() { CoUninitialize(); }
    };

    Apartment apartment;
    TemporaryFolder folder;
    std::wstring file = folder.path() + L"\\korvane.db";
    DataLayer layer;
    ComPtr<IDatabase> database;
};

/// Expects a call to fail with an error of a class of the data layer, complete with its text, in which a detail may
/// have a place.
testing::AssertionResult failsWith(const std::optional<Failure>& failure, Code code,
                                   std::wstring_view className, std::wstring_view detail = {});

} // namespace korvane::store::test

/// EXPECT_ERROR(remove(groups, 1), Code::builtInGroup, L"Groups");
#define EXPECT_ERROR(statement, ...)                                                                         \
    EXPECT_TRUE(::korvane::store::test::failsWith(::korvane::attempt([&] { statement; }), __VA_ARGS__))
