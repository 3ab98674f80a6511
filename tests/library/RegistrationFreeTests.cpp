// The library in use without registration: this program's manifest names it, and it stands beside the program.
#include "framework/com/LateBound.h"
#include "tests/support/ComRules.h"
#include "tests/support/Registry.h"

#include <KorvaneData.h>
#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>
#include <KorvaneLib.h>

#include <gmock/gmock.h>

#include <algorithm>

namespace korvane::test
{

namespace
{

using testing::Contains;

/// An object as scripts and hosts create it, by its name alone.
ComPtr<IDispatch> createByName(const std::wstring& name)
{
    CLSID id{};
    EXPECT_EQ(CLSIDFromProgID((L"KorvaneDlg." + name).c_str(), &id), S_OK) << narrow(name);
    ComPtr<IDispatch> object;
    EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.putVoid()), S_OK)
        << narrow(name);
    return object;
}

/// Gives a property a value; further arguments come before it.
void let(const ComPtr<IDispatch>& object, std::wstring name, const std::vector<Variant>& arguments,
         WORD kind = DISPATCH_PROPERTYPUT)
{
    auto* characters = name.data();
    DISPID id = DISPID_UNKNOWN;
    call(object, &IDispatch::GetIDsOfNames, IID_NULL, &characters, 1U, LOCALE_USER_DEFAULT, &id);
    std::vector<VARIANT> backwards;
    for (const Variant& argument : arguments)
        backwards.insert(backwards.begin(), argument.get());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{backwards.data(), &put, static_cast<UINT>(backwards.size()), 1};
    EXPECT_EQ(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, nullptr, nullptr, nullptr),
              S_OK)
        << narrow(name);
}

ComPtr<ITypeInfo> typeNamed(ITypeLib* described, const wchar_t* name)
{
    std::wstring wanted = name;
    ComPtr<ITypeInfo> information;
    MEMBERID member = MEMBERID_NIL;
    USHORT count = 1;
    EXPECT_EQ(described->FindName(wanted.data(), 0, information.put(), &member, &count), S_OK);
    EXPECT_EQ(count, 1);
    return information;
}

/// What another thread sees of a command that lives in this one.
struct OtherApartment
{
    IStream* stream = nullptr;
    HRESULT result = E_UNEXPECTED;
    long operation = 0;

    static DWORD WINAPI run(void* parameter)
    {
        auto& self = *static_cast<OtherApartment*>(parameter);
        CoInitialize(nullptr);
        {
            ComPtr<IAppCommand> command;
            self.result =
                CoGetInterfaceAndReleaseStream(self.stream, __uuidof(IAppCommand), command.putVoid());
            if (SUCCEEDED(self.result))
                self.result = command->get_Operation(&self.operation);
        }
        CoUninitialize();
        return 0;
    }
};

bool isLoaded()
{
    return GetModuleHandleW(L"KorvaneDlg.dll") != nullptr;
}

/// After each test the library must have gone: nothing is alive, and COM lets go of it.
class LibraryGoes final : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo&) override
    {
        SetErrorInfo(0, nullptr);
        CoFreeUnusedLibrariesEx(0, 0);
        EXPECT_FALSE(isLoaded());
    }
};

} // namespace

TEST(RegistrationFreeTests, NothingIsRegistered)
{
    forgetTypeLibraries();
    for (const PublicClass& publicClass : publicClasses())
        for (const wchar_t* classes : {machineClasses, userClasses})
            EXPECT_FALSE(registryKeyExists(classes + (L"\\KorvaneDlg." + publicClass.name)));
    for (const wchar_t* classes : {machineClasses, userClasses})
        for (const wchar_t* typeLibrary :
             {L"{50D53A66-6176-4034-8EAC-6856CA28C47C}", L"{179A7A50-B2AB-47F7-AC0A-60EC71829A26}"})
            EXPECT_FALSE(registryKeyExists(classes + std::wstring(L"\\TypeLib\\") + typeLibrary));
}

TEST(RegistrationFreeTests, EveryClassIsCreatedByItsName)
{
    EXPECT_GE(publicClasses().size(), 4U);
    for (const PublicClass& publicClass : publicClasses())
    {
        const auto object = createByName(publicClass.name);
        ASSERT_TRUE(object) << narrow(publicClass.name);
        for (const IID& iid : publicClass.interfaces)
        {
            ComPtr<IUnknown> found;
            EXPECT_EQ(object->QueryInterface(iid, found.putVoid()), S_OK) << narrow(publicClass.name);
        }
        EXPECT_TRUE(isLoaded());
    }
}

TEST(RegistrationFreeTests, TheLibraryIsTheOneBesideTheProgram)
{
    const auto object = createByName(L"Resources");
    wchar_t path[MAX_PATH];
    const std::wstring loaded(path, GetModuleFileNameW(GetModuleHandleW(L"KorvaneDlg.dll"), path, MAX_PATH));
    EXPECT_EQ(loaded, folderOfTests() + L"\\KorvaneDlg.dll");
}

TEST(RegistrationFreeTests, EveryMemberIsReachedByItsName)
{
    for (const PublicClass& publicClass : publicClasses())
        expectLateBindingAgrees(createByName(publicClass.name).get());
}

TEST(RegistrationFreeTests, ACommandAnswersToTheNamesOfItsContract)
{
    const auto command = createByName(L"EditGroups");
    EXPECT_EQ(toText(get(command, L"DialogClass").get()), L"KorvaneDlg.ctlEditGroups");
    EXPECT_TRUE(toBool(get(command, L"Granted").get()));
    let(command, L"Operation", {Variant(2L)});
    EXPECT_EQ(toLong(get(command, L"Operation").get()), 2);
    let(command, L"Operand", {Variant(Bstr(L"GroupID")), Variant(Bstr(L"17"))});
    EXPECT_EQ(toLong(get(command, L"GroupID").get()), 17);
    EXPECT_EQ(toLong(get(command, L"Operand", {Variant(Bstr(L"GroupID"))}).get()), 17);
    EXPECT_TRUE(get(command, L"Operand", {Variant(Bstr(L"groupid"))}).isEmpty());
}

TEST(RegistrationFreeTests, TheDialogOfACommandIsCreatedByTheNameThatTheCommandTells)
{
    const auto command = createByName(L"EditGroups");
    const std::wstring progId(toText(get(command, L"DialogClass").get()).view());
    const auto dialog = createByName(progId.substr(progId.find(L'.') + 1));
    EXPECT_EQ(toText(get(dialog, L"Name").get()), L"Group");
    let(dialog, L"Command", {Variant(command)}, DISPATCH_PROPERTYPUTREF);
    EXPECT_EQ(get(dialog, L"Command").type(), VT_DISPATCH);
}

TEST(RegistrationFreeTests, ResourcesAnswerToTheNamesOfTheirContracts)
{
    const auto resources = createByName(L"Resources");
    EXPECT_EQ(toText(invoke(resources, L"GetString", {Variant(21000L)}).get()), L"Group");
    EXPECT_EQ(toLong(get(resources, L"LocaleID").get()), 1033);
    EXPECT_TRUE(toBool(invoke(resources, L"IsLeapYear", {Variant(2023L)}).get()));
    EXPECT_EQ(invoke(resources, L"GetBitmap", {Variant(21000L)}).type(), VT_DISPATCH);
}

TEST(RegistrationFreeTests, AControlsStatusIsTheOneThatItTellsItself)
{
    for (const PublicClass& publicClass : publicClasses())
    {
        if (!publicClass.control)
            continue;
        DWORD told = 0;
        ASSERT_EQ(createByName(publicClass.name).as<IOleObject>()->GetMiscStatus(DVASPECT_CONTENT, &told),
                  S_OK);
        DWORD declared = 0;
        EXPECT_EQ(OleRegGetMiscStatus(publicClass.id, DVASPECT_CONTENT, &declared), S_OK);
        EXPECT_EQ(declared, told) << narrow(publicClass.name);
    }
}

TEST(RegistrationFreeTests, TheTypeLibrariesAreFoundByTheirIds)
{
    const std::pair<const GUID&, const wchar_t*> expected[] = {
        {LIBID_KorvaneDlg, L"KorvaneDlg"},
        {LIBID_KorvaneLib, L"KorvaneLib"},
        {LIBID_KorvaneInterfaces, L"KorvaneInterfaces"},
        {LIBID_KorvaneData, L"KorvaneData"}};
    for (const auto& [id, name] : expected)
    {
        ComPtr<ITypeLib> described;
        ASSERT_EQ(LoadRegTypeLib(id, 1, 0, 0, described.put()), S_OK) << narrow(name);
        Bstr found;
        EXPECT_EQ(described->GetDocumentation(-1, found.put(), nullptr, nullptr, nullptr), S_OK);
        EXPECT_EQ(found, name);
    }
}

TEST(RegistrationFreeTests, TypesLeadFromOneLibraryToTheNext)
{
    ComPtr<ITypeLib> described;
    ASSERT_EQ(LoadRegTypeLib(LIBID_KorvaneDlg, 1, 0, 0, described.put()), S_OK);
    std::vector<std::wstring> declarations;
    for (const Member& member : membersOf(typeNamed(described.get(), L"IEditGroups").get()))
        declarations.push_back(member.declaration);
    EXPECT_THAT(declarations, Contains(testing::HasSubstr(L"IRoot*")));       // of KorvaneData
    EXPECT_THAT(declarations, Contains(testing::HasSubstr(L"IAppCommand*"))); // of KorvaneLib
}

TEST(RegistrationFreeTests, EveryContractHasItsProxy)
{
    constexpr CLSID automationsProxy{0x00020424, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    constexpr CLSID eventsProxy{0x00020420, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    int contracts = 0;
    int events = 0;
    for (const GUID* id :
         {&LIBID_KorvaneDlg, &LIBID_KorvaneLib, &LIBID_KorvaneInterfaces, &LIBID_KorvaneData})
    {
        ComPtr<ITypeLib> described;
        ASSERT_EQ(LoadRegTypeLib(*id, 1, 0, 0, described.put()), S_OK);
        for (const auto& information : typesOf(described))
        {
            const TypeAttributes attributes(information.get());
            const bool dual = (attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0;
            if (!dual && attributes->typekind != TKIND_DISPATCH)
                continue;
            ++(dual ? contracts : events);
            CLSID proxy{};
            const std::string name = narrow(nameOf(information.get()));
            EXPECT_EQ(CoGetPSClsid(attributes->guid, &proxy), S_OK) << name;
            EXPECT_EQ(proxy, dual ? automationsProxy : eventsProxy) << name;
        }
    }
    EXPECT_GE(contracts, 22);
    EXPECT_GE(events, 8);
}

TEST(RegistrationFreeTests, AContractReachesAnotherApartment)
{
    const RegistryGuard guard; // a system may register the contract when it makes a proxy from it
    const auto command = createByName(L"EditGroups").as<IAppCommand>();
    ASSERT_TRUE(command);
    ASSERT_EQ(command->put_Operation(3), S_OK);
    OtherApartment other{};
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(__uuidof(IAppCommand), command.get(), &other.stream),
              S_OK);
    HANDLE thread = CreateThread(nullptr, 0, &OtherApartment::run, &other, 0, nullptr);
    ASSERT_NE(thread, nullptr);
    DWORD index = 0;
    EXPECT_EQ(CoWaitForMultipleHandles(0, 20000, 1, &thread, &index), S_OK);
    CloseHandle(thread);
    EXPECT_EQ(other.result, S_OK);
    EXPECT_EQ(other.operation, 3);
}

TEST(RegistrationFreeTests, TheLibraryGoesOnlyWhenItsLastObjectHasGone)
{
    auto first = createByName(L"EditGroups");
    auto second = createByName(L"ctlEditGroups");
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_TRUE(isLoaded());
    first.reset();
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_TRUE(isLoaded());
    second.reset();
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_FALSE(isLoaded());
    EXPECT_TRUE(createByName(L"Resources"));
}

} // namespace korvane::test

int main(int count, char** arguments)
{
    testing::InitGoogleTest(&count, arguments);
    if (FAILED(OleInitialize(nullptr)))
        return EXIT_FAILURE;
    testing::UnitTest::GetInstance()->listeners().Append(new korvane::test::LibraryGoes);
    const int result = RUN_ALL_TESTS();
    OleUninitialize();
    return result;
}
