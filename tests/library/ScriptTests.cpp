// The library in the hands of a script: late bound, by ProgID, with VBScript's conversions and errors.
#include "tests/support/ComRules.h"
#include "tests/support/Registry.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;

std::wstring temporaryFile(const wchar_t* extension)
{
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    return std::wstring(folder) + L"korvane script " + std::to_wstring(GetCurrentProcessId()) + extension;
}

/// What the system says about an error; some systems say nothing.
std::string systemText(HRESULT number)
{
    wchar_t buffer[512];
    const std::wstring text(buffer, FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                                   nullptr, static_cast<DWORD>(number), 0, buffer,
                                                   ARRAYSIZE(buffer), nullptr));
    return narrow(text.substr(0, text.find(L'\r')));
}

/// A file that is gone after the test.
class TemporaryFile
{
public:
    explicit TemporaryFile(const wchar_t* extension) : path(temporaryFile(extension))
    {
        DeleteFileW(path.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { DeleteFileW(path.c_str()); }

    std::string content() const
    {
        const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            return {};
        std::string bytes(GetFileSize(file, nullptr), '\0');
        DWORD read = 0;
        EXPECT_TRUE(ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr));
        CloseHandle(file);
        return bytes;
    }

    const std::wstring path;
};

/// A DLL beside the test program, registered while it lives.
class Registered
{
public:
    explicit Registered(const wchar_t* fileName)
        : module_(LoadLibraryW((folderOfTests() + L'\\' + fileName).c_str()))
    {
        EXPECT_EQ(call("DllRegisterServer"), S_OK);
    }
    Registered(const Registered&) = delete;
    Registered& operator=(const Registered&) = delete;
    ~Registered()
    {
        EXPECT_EQ(call("DllUnregisterServer"), S_OK);
        FreeLibrary(module_);
    }

private:
    HRESULT call(const char* entryPoint) const
    {
        const auto function = reinterpret_cast<HRESULT(WINAPI*)()>(
            reinterpret_cast<void*>(GetProcAddress(module_, entryPoint)));
        return function ? function() : E_UNEXPECTED;
    }

    HMODULE module_;
};

class ScriptTests : public testing::Test
{
protected:
    /// The lines that a part of the script prints, without its end marker, which must be there.
    static std::vector<std::string> run(const std::wstring& part,
                                        const std::vector<std::wstring>& arguments = {})
    {
        const TemporaryFile output(L".txt");
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        const HANDLE file =
            CreateFileW(output.path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                        CREATE_ALWAYS, 0, nullptr);
        EXPECT_NE(file, INVALID_HANDLE_VALUE);

        std::wstring commandLine =
            L"cscript.exe //nologo \"" + folderOfTests() + L"\\ScriptTests.vbs\" \"" + part + L'"';
        for (const std::wstring& argument : arguments)
            commandLine += L" \"" + argument + L'"';
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = file;
        startup.hStdError = file;
        PROCESS_INFORMATION process{};
        EXPECT_TRUE(CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                   &startup, &process));
        if (WaitForSingleObject(process.hProcess, 60000) != WAIT_OBJECT_0)
        {
            ADD_FAILURE() << "the script does not end";
            TerminateProcess(process.hProcess, EXIT_FAILURE);
        }
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        CloseHandle(file);

        std::vector<std::string> lines;
        std::istringstream stream(output.content());
        for (std::string line; std::getline(stream, line);)
            lines.push_back(line.substr(0, line.find('\r')));
        EXPECT_THAT(lines, testing::Contains("end of script")) << output.content();
        std::erase(lines, "end of script");
        return lines;
    }

    RegistryGuard guard;
    Registered dialogs{L"KorvaneDlg.dll"};
};

} // namespace

TEST_F(ScriptTests, EveryCommandIsOneForScripts)
{
    std::vector<std::wstring> names;
    std::vector<std::string> expected;
    for (const PublicClass& publicClass : publicClasses())
    {
        if (publicClass.control || publicClass.name == L"AppDialogEvents" || publicClass.name == L"Resources")
            continue;
        names.push_back(publicClass.name);
        for (const char* line :
             {" begins with operation: Long 0", " has operation: Long 3", " is granted: Boolean True",
              " is undone: Boolean False", " is redone: Boolean False", " has an unknown operand: Empty ",
              " has a dialog: String KorvaneDlg.ctl", " has a dialog with a title: Boolean True",
              " is the dialog's: Long 3"})
            expected.push_back(narrow(publicClass.name) + line);
    }
    EXPECT_FALSE(names.empty());
    EXPECT_EQ(run(L"commands", names), expected);
}

TEST_F(ScriptTests, OperandsAreReadAndWrittenByName)
{
    EXPECT_THAT(run(L"operands"),
                ElementsAre("DialogClass: String KorvaneDlg.ctlEditGroups", "an integer: Long 5",
                            "a text: Long 17", "a fraction: Long 4", "a flag: Long -1",
                            "nothing given: Long 0", "another case: Empty ", "is another name: Long 0",
                            "the property: Long 8", "is the operand: Long 8", "a name: String Blue",
                            "a name from a number: String 12", "is the property: String 12",
                            "no database: Boolean True", "still none: Boolean True",
                            "and still none: Boolean True", "Command: Long 8"));
}

TEST_F(ScriptTests, ErrorsArriveWithTheirNumberSourceAndText)
{
    const auto platformError = [](HRESULT number, const std::string& ownText) {
        const std::string text = systemText(number);
        return ": " + std::to_string(number) + " | cscript | " + (text.empty() ? ownText : text);
    };
    const std::string mismatch =
        platformError(DISP_E_TYPEMISMATCH, "The value is of a type that cannot be converted.");
    EXPECT_THAT(run(L"errors"),
                ElementsAre("a number: no error", "a text that is no number" + mismatch,
                            "a number that is too large" +
                                platformError(DISP_E_OVERFLOW, "The value is out of range."),
                            "an object of another class" + mismatch, "a number for an object" + mismatch,
                            "the operand after the errors: Long 5",
                            "Easter: -2147221503 | cscript | The recurrence type Easter is not implemented"));
}

TEST_F(ScriptTests, TextsAndPicturesAreThere)
{
    const TemporaryFile exported(L".bin");
    EXPECT_THAT(run(L"texts", {exported.path}),
                ElementsAre("a number: String Group", "a text: String Group", "no number: String ",
                            "an unknown one: String ", "LocaleID: Long 1033", "2023: Boolean True",
                            "2024: Boolean False", "no icon: Boolean True", "no bitmap: Boolean False",
                            "exported: Boolean True", "nothing exported: Boolean False"));
    EXPECT_FALSE(exported.content().empty());
}

TEST_F(ScriptTests, TheRelayDoesNothingWithoutASink)
{
    EXPECT_THAT(run(L"relay"),
                ElementsAre("no sink: Boolean True", "submitted: Boolean False", "offered: Boolean False"));
}

#ifdef KORVANE_HAS_DATA_LAYER
TEST_F(ScriptTests, ACommandWritesAndTheDataLayersErrorsArriveUnchanged)
{
    const Registered dataLayer(L"KorvaneData.dll");
    const TemporaryFile database(L".db");
    EXPECT_THAT(
        run(L"data", {database.path}),
        ElementsAre(
            "the database: Boolean True", "prepared: Boolean False", "added: Boolean False",
            "has an id: Boolean True", "read: String Blue", "keeps its id: Boolean True",
            R"(the same name: -2147212501 | KorvaneData.Groups | There is a group named "Green" already.)",
            "no group: Long 0", "no name: -2147212502 | KorvaneData.Groups | The group needs a name.",
            "another name: no error", "deleted: no error", "is gone: Long 0",
            "a group of the data layer's own: -2147217309 | KorvaneData.Groups | "
            "You must not delete a built-in group.",
            "is still it: Long 1"));
    EXPECT_FALSE(database.content().empty());
}
#endif

} // namespace korvane::test
