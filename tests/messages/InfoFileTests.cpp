// The labels of the info file, as a resource without rows gets them: real files, found through settings that the test
// registers, read by the platform's own file system object. That of Wine 8 does not implement AtEndOfLine, by which an
// empty line is told on Windows before it is read: here it is told by what was read. Both ends lead to the same rows.
#include "framework/com/Object.h"
#include "tests/messages/InfoTable.h"
#include "tests/support/CommandTest.h"
#include "tests/support/Container.h"
#include "tests/support/GridView.h"
#include "tests/support/PlainObject.h"
#include "tests/support/Registry.h"

#include <filesystem>
#include <fstream>

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr const wchar_t* settingsId = L"{5C0B2C9E-0E39-4E0B-93B2-6C1E50C3B9A4}";

constexpr const wchar_t* settingsProgId = L"Software\\Classes\\KorvaneData.Registry";

/// For the machine too, where it may: Wine looks nowhere else.
void registerSettings()
{
    const std::wstring server =
        std::wstring(L"Software\\Classes\\CLSID\\") + settingsId + L"\\InprocServer32";
    const auto set = [](HKEY hive, const std::wstring& key, std::wstring_view value) {
        const std::size_t bytes = (value.size() + 1) * sizeof(wchar_t);
        RegSetKeyValueW(hive, key.c_str(), nullptr, REG_SZ, value.data(), static_cast<DWORD>(bytes));
    };
    for (const HKEY hive : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER})
    {
        set(hive, settingsProgId + std::wstring(L"\\CLSID"), settingsId);
        set(hive, server, L"none.dll");
    }
}

/// What "KorvaneData.Registry" tells, and what it was asked.
struct Settings
{
    std::wstring sharedFolder;
    std::vector<std::wstring> asked;
    bool fails = false;
    int alive = 0;
};

/// The settings object, known by the name of its member only.
class SettingsObject final : public PlainObject<>
{
public:
    explicit SettingsObject(Settings& settings) : settings_(settings) { ++settings_.alive; }
    ~SettingsObject() override { --settings_.alive; }

    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* id) override
    {
        *id = getValue;
        return std::wstring_view(*names) == L"GetValue" ? S_OK : DISP_E_UNKNOWNNAME;
    }

    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT*) override
    {
        if (id != getValue || parameters->cArgs != 2)
            return DISP_E_BADPARAMCOUNT;
        settings_.asked.emplace_back(std::wstring(toText(parameters->rgvarg[1]).view()) + L'|' +
                                     std::wstring(toText(parameters->rgvarg[0]).view()));
        if (settings_.fails)
        {
            exception->scode = locked.number;
            exception->bstrSource = Bstr(locked.source).detach();
            exception->bstrDescription = Bstr(locked.description).detach();
            return DISP_E_EXCEPTION;
        }
        *result = Variant(Bstr(settings_.sharedFolder)).detach();
        return S_OK;
    }

private:
    static constexpr DISPID getValue = 1;

    Settings& settings_;
};

class SettingsFactory final : public Object<SettingsFactory, Inherits<IClassFactory>, IClassFactory>
{
public:
    explicit SettingsFactory(Settings& settings) : settings_(settings) {}

    STDMETHODIMP CreateInstance(IUnknown*, REFIID iid, void** object) override
    {
        const ComPtr<SettingsObject> made(new SettingsObject(settings_));
        return made->QueryInterface(iid, object);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

private:
    Settings& settings_;
};

/// Texts of a host's own: what it calls its language.
class LanguageTexts final : public Object<LanguageTexts, Inherits<IResources>, IResources>
{
public:
    explicit LanguageTexts(std::wstring language) : language_(std::move(language)) {}

    STDMETHODIMP GetIcon(long, IPictureDisp**) override { return E_NOTIMPL; }
    STDMETHODIMP GetBitmap(long, IPictureDisp**) override { return E_NOTIMPL; }
    STDMETHODIMP GetCursor(long, IPictureDisp**) override { return E_NOTIMPL; }
    STDMETHODIMP GetString(long id, BSTR* text) override
    {
        *text = Bstr(id == 0 ? language_ : L"text").detach();
        return S_OK;
    }
    STDMETHODIMP get_LocaleID(long*) override { return E_NOTIMPL; }

private:
    std::wstring language_;
};

} // namespace

class InfoFileTests : public CommandTest
{
protected:
    static void SetUpTestSuite() { registrations_.emplace(); }
    static void TearDownTestSuite() { registrations_.reset(); }

    InfoFileTests() : CommandTest(__uuidof(::InfoMessage))
    {
        registerSettings();
        CLSID classId{};
        require(CLSIDFromString(settingsId, &classId));
        require(CoRegisterClassObject(classId, make<SettingsFactory>(settings).as<IUnknown>().get(),
                                      CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registration_));
        std::filesystem::create_directories(shared);
        std::filesystem::create_directories(current);
        std::filesystem::current_path(current);
        settings.sharedFolder = shared.wstring();
        let(L"NameID", Variant(7L));
        call(command, &IAppCommand::put_Operation, 3L);
    }

    ~InfoFileTests() override
    {
        setTexts(nullptr);
        CoRevokeClassObject(registration_);
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(folder_);
    }

    /// The host's own texts; null for the library's.
    static void setTexts(IResources* texts)
    {
        call(create<IAppDialog>(__uuidof(::ctlShowMessage)), &IAppDialog::putref_Resources, texts);
    }
    static void speak(const wchar_t* language) { setTexts(make<LanguageTexts>(language).get()); }

    static void write(const std::filesystem::path& path, const std::string& bytes)
    {
        std::ofstream(path, std::ios::binary) << bytes;
    }

    ErrorInfo prepare()
    {
        VARIANT_BOOL result = VARIANT_FALSE;
        const HRESULT outcome = command->Prepare(&result);
        return FAILED(outcome) ? errorOf(outcome) : ErrorInfo();
    }

    /// The labels that a resource without rows gets; each comes with an empty value.
    std::vector<std::wstring> labels()
    {
        EXPECT_EQ(prepare(), ErrorInfo());
        EXPECT_EQ(settings.alive, 0);
        std::vector<std::wstring> result;
        for (const auto& [label, value] : rowsIn(fetch(info, &IInfoMessage::get_Info)))
        {
            result.push_back(label);
            EXPECT_EQ(value, L"");
        }
        return result;
    }

    const std::filesystem::path folder_ = std::filesystem::temp_directory_path() / L"KorvaneInfoFile";
    const std::filesystem::path shared = folder_ / L"Shared folder";
    const std::filesystem::path current = folder_ / L"Current";
    const std::filesystem::path file = shared / L"Info1033.txt";
    Settings settings;
    ComPtr<IInfoMessage> info = command.as<IInfoMessage>();

private:
    inline static std::optional<RegistryGuard> registrations_;

    const std::filesystem::path before_ = std::filesystem::current_path();
    DWORD registration_ = 0;
};

TEST_F(InfoFileTests, EachLineIsALabel)
{
    write(file, "Mobile\r\nHome phone\r\nCar\r\n");
    EXPECT_THAT(labels(), ElementsAre(L"Mobile", L"Home phone", L"Car"));
    EXPECT_THAT(settings.asked, ElementsAre(L"SharedFolder|"));
}

TEST_F(InfoFileTests, TheLastLineNeedsNoEnd)
{
    write(file, "Mobile\r\nHome phone");
    EXPECT_THAT(labels(), ElementsAre(L"Mobile", L"Home phone"));
}

TEST_F(InfoFileTests, ReadingStopsAtTheFirstEmptyLine)
{
    write(file, "Mobile\r\n\r\nHome phone\r\n");
    EXPECT_THAT(labels(), ElementsAre(L"Mobile"));
    write(file, "\r\nMobile\r\n");
    EXPECT_THAT(labels(), IsEmpty());
    write(file, "Mobile\r\n \r\nHome phone\r\n"); // a blank is no empty line
    EXPECT_THAT(labels(), ElementsAre(L"Mobile", L" ", L"Home phone"));
}

TEST_F(InfoFileTests, AnEmptyFileGivesNothing)
{
    write(file, "");
    EXPECT_EQ(prepare(), ErrorInfo());
    EXPECT_TRUE(fetch(info, &IInfoMessage::get_Info).isEmpty());
}

TEST_F(InfoFileTests, AMissingFileIsNoError)
{
    EXPECT_EQ(prepare(), ErrorInfo());
    EXPECT_TRUE(fetch(info, &IInfoMessage::get_Info).isEmpty());
}

TEST_F(InfoFileTests, WithoutItTheFileInTheCurrentDirectoryIsRead)
{
    write(current / L"Info1033.txt", "Here\r\n");
    EXPECT_THAT(labels(), ElementsAre(L"Here"));
    write(file, "There\r\n");
    EXPECT_THAT(labels(), ElementsAre(L"There"));
}

TEST_F(InfoFileTests, TheLanguageOfTheTextsNamesTheFile)
{
    write(shared / L"Info1030.txt", "Mobiltelefon\r\n");
    write(file, "Mobile\r\n");
    speak(L"1030");
    EXPECT_THAT(labels(), ElementsAre(L"Mobiltelefon"));
}

TEST_F(InfoFileTests, TheFileOfLastResortIsTheEnglishOneInTheCurrentDirectoryAlone)
{
    write(file, "There\r\n");
    write(current / L"Info1030.txt", "Her\r\n");
    speak(L"1030");
    EXPECT_THAT(labels(), IsEmpty());
    write(current / L"Info1033.txt", "Here\r\n");
    EXPECT_THAT(labels(), ElementsAre(L"Here"));
}

TEST_F(InfoFileTests, ALanguageThatIsNoPlainNumberIsAsIfTheFileWereMissing)
{
    write(folder_ / L"Info1033.txt", "Outside\r\n");
    for (const wchar_t* name :
         {L"Info.txt", L"Infotext.txt", L"Info-1.txt", L"Info 1.txt", L"Info1.txt", L"Info1e1.txt"})
        write(shared / name, "Named otherwise\r\n");
    std::filesystem::create_directories(shared / L"Info");
    for (const wchar_t* language : {L"", L"text", L"-1", L" 1", L"1 ", L"1e1", L"\\..\\..\\Info1033",
                                    L"/../../Info1033", L"1.txt:", L"\x0661"})
    {
        speak(language);
        EXPECT_THAT(labels(), IsEmpty());
    }
    write(current / L"Info1033.txt", "Here\r\n");
    EXPECT_THAT(labels(), ElementsAre(L"Here"));
}

TEST_F(InfoFileTests, TheTextIsAnsi)
{
    const std::string bytes = "B\xFCro";
    wchar_t expected[8]{};
    MultiByteToWideChar(CP_ACP, 0, bytes.c_str(), -1, expected, 8);
    write(file, bytes + "\r\n");
    EXPECT_THAT(labels(), ElementsAre(expected));
}

TEST_F(InfoFileTests, TheFileIsClosedAgain)
{
    write(file, "Mobile\r\n");
    labels();
    EXPECT_TRUE(DeleteFileW(file.c_str()));
    EXPECT_THAT(labels(), IsEmpty());
}

TEST_F(InfoFileTests, AResourceWithRowsOfItsOwnNeedsNoFile)
{
    write(file, "Mobile\r\n");
    data.info = {{7, L"Home", L"555 0102"}};
    EXPECT_EQ(prepare(), ErrorInfo());
    EXPECT_THAT(settings.asked, IsEmpty());
    EXPECT_EQ(TextTable(fetch(info, &IInfoMessage::get_Info).get()).at(0, 0), L"Home");
}

TEST_F(InfoFileTests, StoringRemovesTheFilesLabelsToo)
{
    write(file, "Mobile\r\nHome\r\n");
    labels();
    data.takeCalls();
    fetch(command, &IAppCommand::Execute);
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Messages()", "Root.Names()", "Names.SetInfo(7, \"Mobile\", -1, \"\")",
                            "Names.SetInfo(7, \"Home\", -1, \"\")", "Names.SetInfo(7, \"Mobile\", 0, \"\")",
                            "Names.SetInfo(7, \"Home\", 1, \"\")"));
}

TEST_F(InfoFileTests, WithoutRowsAndFileTheEmptyLabelIsRemoved)
{
    labels();
    data.takeCalls();
    call(info, &IInfoMessage::put_Info, TextTable(2, 1).toArray().get());
    fetch(command, &IAppCommand::Execute);
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Messages()", "Root.Names()", "Names.SetInfo(7, \"\", -1, \"\")",
                            "Names.SetInfo(7, \"\", 0, \"\")"));
}

TEST_F(InfoFileTests, TheGridBeginsWithTheLabelsAndABlankRowAndAllOfThemAreStored)
{
    const std::pair<std::string, InfoTexts> files[] = {
        {"", {{L"", L""}}}, {"Mobile\r\n\r\nHome\r\n", {{L"Mobile", L""}, {L"", L""}}}};
    for (const auto& [lines, rows] : files)
    {
        write(file, lines);
        Container container;
        ASSERT_TRUE(container.show(__uuidof(::ctlInfoMessage), command.get()));
        container.site->activateUi();
        container.pump();
        container.press(VK_TAB, false, false, true);
        EXPECT_EQ(GridView(container.control(L"KorvaneGrid")).texts(), rows);
        container.press(VK_RETURN);
        EXPECT_EQ(rowsIn(fetch(info, &IInfoMessage::get_Info)), rows);
        EXPECT_EQ(data.info.size(), rows.size());
        data.info.clear();
    }
}

TEST_F(InfoFileTests, AFailureOfTheSettingsIsTold)
{
    write(file, "Mobile\r\n");
    settings.fails = true;
    EXPECT_EQ(prepare(), locked);
    settings.fails = false;
    EXPECT_THAT(labels(), ElementsAre(L"Mobile"));
}

TEST_F(InfoFileTests, WithoutSettingsTheCommandFails)
{
    for (const HKEY hive : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER})
        RegDeleteTreeW(hive, settingsProgId);
    EXPECT_EQ(prepare().number, CO_E_CLASSSTRING);
}

} // namespace korvane::test
