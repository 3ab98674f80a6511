#include "framework/com/Variant.h"
#include "resources/pictures/PictureIds.h"
#include "tests/support/Library.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variants.h"

#include <KorvaneDlg.h>

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

std::string contentOf(const std::wstring& path)
{
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE);
    std::string content(GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    EXPECT_TRUE(ReadFile(file, content.data(), static_cast<DWORD>(content.size()), &read, nullptr));
    CloseHandle(file);
    return content;
}

void write(const std::wstring& path, const std::string& content)
{
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    EXPECT_TRUE(WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr));
    CloseHandle(file);
}

std::string storedTemplate()
{
    const HRSRC place = FindResourceW(library(), MAKEINTRESOURCEW(TEMPLATE_INFO_LABELS), L"TEMPLATE");
    EXPECT_NE(place, nullptr);
    return {static_cast<const char*>(LockResource(LoadResource(library(), place))),
            SizeofResource(library(), place)};
}

class ExportTests : public testing::Test
{
protected:
    bool exports(const VARIANT& type, const VARIANT& id, const std::wstring& path)
    {
        VARIANT_BOOL written = 0x55;
        EXPECT_EQ(resources->Export(type, id, Bstr(path).get(), &written), S_OK);
        EXPECT_TRUE(written == VARIANT_TRUE || written == VARIANT_FALSE);
        return written == VARIANT_TRUE;
    }

    bool exports(const Variant& type, const Variant& id) { return exports(type.get(), id.get(), file); }

    bool fileExists() const { return GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES; }

    const TemporaryFolder folder;
    const std::wstring file = folder.path() + L"\\export.bin";
    const Variant templates{Bstr(L"TEMPLATE")};
    const Variant labels{static_cast<long>(TEMPLATE_INFO_LABELS)};
    ComPtr<IResourceLibrary> resources = create<IResourceLibrary>(__uuidof(::Resources));
};

} // namespace

TEST_F(ExportTests, TheBytesOfTheResourceAreWritten)
{
    EXPECT_TRUE(exports(templates, labels));
    EXPECT_EQ(contentOf(file), storedTemplate());
    EXPECT_FALSE(storedTemplate().empty());
}

TEST_F(ExportTests, TypeAndIdAreNumbersOrNames)
{
    // A type by its number: the version information of the library.
    EXPECT_TRUE(exports(Variant(16L), Variant(1L)));
    EXPECT_GT(contentOf(file).size(), 100U);
    EXPECT_TRUE(exports(Variant(Bstr(L"#16")), Variant(Bstr(L"#1"))));
    EXPECT_TRUE(exports(Variant(Bstr(L"template")), labels)); // the platform does not mind case
    EXPECT_TRUE(exports(templates, Variant(Bstr(L"#1"))));
}

TEST_F(ExportTests, ArgumentsMayBeReferences)
{
    long number = TEMPLATE_INFO_LABELS;
    VARIANT type = templates.get();
    EXPECT_TRUE(exports(variant(VT_VARIANT | VT_BYREF, &VARIANT::pvarVal, &type),
                        variant(VT_I4 | VT_BYREF, &VARIANT::plVal, &number), file));
    EXPECT_EQ(contentOf(file), storedTemplate());
}

TEST_F(ExportTests, AnUnknownResourceIsFalseAndMakesNoFile)
{
    EXPECT_FALSE(exports(templates, Variant(4711L)));
    EXPECT_FALSE(exports(Variant(Bstr(L"NOSUCHTYPE")), labels));
    EXPECT_FALSE(exports(templates, Variant(Bstr(L"NOSUCHNAME"))));
    EXPECT_FALSE(fileExists());
}

TEST_F(ExportTests, AnIdThatIsNoneIsFalse)
{
    EXPECT_FALSE(exports(templates, Variant(-1L)));
    EXPECT_FALSE(exports(templates, Variant(65536L + TEMPLATE_INFO_LABELS)));
    EXPECT_FALSE(exports(Variant(ComPtr<IDispatch>()), labels));
    EXPECT_FALSE(exports(templates.get(), variant(VT_NULL), file));
    EXPECT_FALSE(exports(variant(VT_NULL), labels.get(), file));
    EXPECT_FALSE(fileExists());
}

TEST_F(ExportTests, AnUnknownResourceLeavesAnExistingFileAsItIs)
{
    write(file, "kept");
    EXPECT_FALSE(exports(templates, Variant(4711L)));
    EXPECT_EQ(contentOf(file), "kept");
}

TEST_F(ExportTests, AnExistingLongerFileKeepsItsTail)
{
    const std::string stored = storedTemplate();
    write(file, std::string(stored.size(), 'x') + "the tail");
    EXPECT_TRUE(exports(templates, labels));
    EXPECT_EQ(contentOf(file), stored + "the tail");
}

TEST_F(ExportTests, AnExistingShorterFileIsExtended)
{
    write(file, "x");
    EXPECT_TRUE(exports(templates, labels));
    EXPECT_EQ(contentOf(file), storedTemplate());
}

TEST_F(ExportTests, AFileThatCannotBeWrittenIsFalse)
{
    EXPECT_FALSE(exports(templates.get(), labels.get(), L""));
    EXPECT_FALSE(exports(templates.get(), labels.get(), file + L"\\no such folder\\file.bin"));
    EXPECT_FALSE(exports(templates.get(), labels.get(), L"Q:\\no such drive\\file.bin"));
    CreateDirectoryW(file.c_str(), nullptr);
    EXPECT_FALSE(exports(templates, labels));
    RemoveDirectoryW(file.c_str());
}

TEST_F(ExportTests, AFileInUseIsFalse)
{
    write(file, "kept");
    const HANDLE used = CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(used, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(exports(templates, labels));
    CloseHandle(used);
    EXPECT_EQ(contentOf(file), "kept");
}

TEST_F(ExportTests, AMissingFileNameIsFalse)
{
    VARIANT_BOOL written = VARIANT_TRUE;
    EXPECT_EQ(resources->Export(templates.get(), labels.get(), nullptr, &written), S_OK);
    EXPECT_EQ(written, VARIANT_FALSE);
}

TEST_F(ExportTests, TheFileIsClosedAfterwards)
{
    EXPECT_TRUE(exports(templates, labels));
    EXPECT_TRUE(DeleteFileW(file.c_str()));
}

} // namespace korvane::test
