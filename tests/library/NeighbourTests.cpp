// The library and a data layer side by side: they bring the same contract along, and either may come and go first.
#include "tests/support/ComRules.h"
#include "tests/support/RecordingData.h"
#include "tests/support/Registry.h"

#include <KorvaneData.h>
#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>
#include <KorvaneLib.h>
#include <KorvaneStore.h>

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

using testing::IsEmpty;

/// A registrable DLL beside the test program.
class Neighbour
{
public:
    Neighbour(const wchar_t* file, std::vector<GUID> needed)
        : needed_(std::move(needed)), module_(LoadLibraryW((folderOfTests() + L'\\' + file).c_str()))
    {
    }
    Neighbour(const Neighbour&) = delete;
    Neighbour& operator=(const Neighbour&) = delete;
    ~Neighbour() { FreeLibrary(module_); }

    HRESULT install(bool add, bool forUser) const
    {
        const auto entry = reinterpret_cast<HRESULT(WINAPI*)(BOOL, LPCWSTR)>(
            reinterpret_cast<void*>(GetProcAddress(module_, "DllInstall")));
        return entry ? entry(add, forUser ? L"user" : L"") : E_UNEXPECTED;
    }

    /// Its type libraries are found by their ids, and so is what describes the contract's interfaces. Windows shows the
    /// user's part and the machine's in one, Wine the machine's only: both are read here.
    void expectToWork() const
    {
        for (const GUID& id : needed_)
        {
            const std::wstring file =
                registered(L"\\TypeLib\\" + wideText(id) +
                           (sizeof(void*) == 8 ? L"\\1.0\\0\\win64" : L"\\1.0\\0\\win32"));
            ComPtr<ITypeLib> described;
            EXPECT_EQ(LoadTypeLibEx(file.c_str(), REGKIND_NONE, described.put()), S_OK) << text(id);
        }
        for (const IID& iid : {__uuidof(IRoot), __uuidof(IGroups), __uuidof(IRegistry)})
            EXPECT_EQ(registered(L"\\Interface\\" + wideText(iid) + L"\\TypeLib"),
                      wideText(LIBID_KorvaneData));
    }

private:
    static std::wstring registered(const std::wstring& path)
    {
        return registryText(userClasses + path)
            .value_or(registryText(machineClasses + path).value_or(L"(none)"));
    }
    static std::wstring wideText(const GUID& id)
    {
        wchar_t buffer[40];
        StringFromGUID2(id, buffer, ARRAYSIZE(buffer));
        return buffer;
    }
    static std::string text(const GUID& id) { return narrow(wideText(id)); }

    std::vector<GUID> needed_;
    HMODULE module_;
};

/// The contract's type library as a file is out of reach while it lives: the platform looks for a reference by its file
/// name, too, beside the program for example.
class WithoutFile
{
public:
    WithoutFile() { EXPECT_TRUE(MoveFileW(file_.c_str(), away_.c_str())); }
    WithoutFile(const WithoutFile&) = delete;
    WithoutFile& operator=(const WithoutFile&) = delete;
    ~WithoutFile() { EXPECT_TRUE(MoveFileW(away_.c_str(), file_.c_str())); }

private:
    const std::wstring file_ = folderOfTests() + L"\\KorvaneData.tlb";
    const std::wstring away_ = file_ + L".away";
};

/// Sets "Root" as a script does, by name.
HRESULT setRoot(const ComPtr<IDispatch>& command, const ComPtr<IRoot>& root)
{
    wchar_t name[] = L"Root";
    LPOLESTR names[] = {name};
    DISPID id = DISPID_UNKNOWN;
    if (const HRESULT found = command->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
        FAILED(found))
        return found;
    VARIANT value{};
    value.vt = VT_DISPATCH;
    value.pdispVal = root.get();
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{&value, &put, 1, 1};
    return command->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUTREF, &parameters, nullptr,
                           nullptr, nullptr);
}

class NeighbourTests : public testing::Test
{
protected:
    NeighbourTests()
    {
        forgetTypeLibraries();
        for (const bool forUser : {false, true})
        {
            library.install(false, forUser);
            dataLayer.install(false, forUser);
        }
        before = Registrations::now();
    }

    std::vector<std::string> changes() const { return Registrations::now().since(before); }

    Neighbour library{L"KorvaneDlg.dll",
                      {LIBID_KorvaneDlg, LIBID_KorvaneLib, LIBID_KorvaneInterfaces, LIBID_KorvaneData}};
    Neighbour dataLayer{L"KorvaneData.dll", {LIBID_KorvaneStore, LIBID_KorvaneData}};
    RegistryGuard guard;
    Registrations before;
};

/// Who comes first, who goes first, and for whom each of them is registered.
struct Order
{
    bool libraryComesFirst, libraryGoesFirst, libraryForUser, dataLayerForUser;
};

void PrintTo(const Order& order, std::ostream* stream)
{
    *stream << (order.libraryComesFirst ? "library, data layer" : "data layer, library")
            << "; first to go: " << (order.libraryGoesFirst ? "library" : "data layer") << "; library for "
            << (order.libraryForUser ? "user" : "machine") << ", data layer for "
            << (order.dataLayerForUser ? "user" : "machine");
}

std::vector<Order> everyOrder()
{
    std::vector<Order> orders;
    orders.reserve(16);
    for (int bits = 0; bits < 16; ++bits)
        orders.push_back({(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0});
    return orders;
}

class OrderTests : public NeighbourTests, public testing::WithParamInterface<Order>
{
protected:
    HRESULT change(bool add, const Neighbour& one) const
    {
        return one.install(add, &one == &library ? GetParam().libraryForUser : GetParam().dataLayerForUser);
    }
};

} // namespace

// Who is left stands as if it had been alone all the time.
TEST_P(OrderTests, WhoeverIsLeftWorksAndNothingIsLeftBehind)
{
    const auto& [first, second] =
        GetParam().libraryComesFirst ? std::tie(library, dataLayer) : std::tie(dataLayer, library);
    const auto& [goes, stays] =
        GetParam().libraryGoesFirst ? std::tie(library, dataLayer) : std::tie(dataLayer, library);
    ASSERT_EQ(change(true, stays), S_OK);
    const auto alone = Registrations::now();
    ASSERT_EQ(change(false, stays), S_OK);

    ASSERT_EQ(change(true, first), S_OK);
    first.expectToWork();
    ASSERT_EQ(change(true, second), S_OK);
    first.expectToWork();
    second.expectToWork();
    ASSERT_EQ(change(false, goes), S_OK);
    stays.expectToWork();
    EXPECT_THAT(Registrations::now().since(alone), IsEmpty());
    ASSERT_EQ(change(false, stays), S_OK);
    EXPECT_THAT(changes(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Registration, OrderTests, testing::ValuesIn(everyOrder()));

TEST_F(NeighbourTests, OneThatIsRegisteredTwiceLeavesNothingToo)
{
    for (const Neighbour* each : {&library, &dataLayer, &library, &dataLayer})
        ASSERT_EQ(each->install(true, false), S_OK);
    ASSERT_EQ(library.install(false, false), S_OK);
    dataLayer.expectToWork();
    for (const Neighbour* each : {&library, &dataLayer, &dataLayer})
        ASSERT_EQ(each->install(false, false), S_OK);
    EXPECT_THAT(changes(), IsEmpty());
}

// Its type libraries refer to the contract of the data layer; the platform looks such references up in the registry.
TEST_F(NeighbourTests, ACommandTakesARootByNameWithoutAnyRegistration)
{
    RecordingData data;
    const WithoutFile file;
    const auto command = create<IDispatch>(__uuidof(::EditGroups));
    EXPECT_EQ(setRoot(command, data.root), S_OK);
    EXPECT_EQ(fetch(command.as<IEditGroups>(), &IEditGroups::get_Root).get(), data.root.get());
}

} // namespace korvane::test
