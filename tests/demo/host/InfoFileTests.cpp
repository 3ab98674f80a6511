#include "demo/host/InfoFile.h"

#include "framework/com/Boundary.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace korvane::host
{

namespace
{

class InfoFile : public testing::Test
{
protected:
    std::vector<std::string> lines() const
    {
        std::ifstream file(folder / infoFile);
        std::vector<std::string> found;
        for (std::string line; std::getline(file, line);)
            found.push_back(line);
        return found;
    }

    korvane::test::TemporaryFolder temporary;
    std::filesystem::path folder = temporary.path();
};

TEST_F(InfoFile, HasALabelOnEachLine)
{
    addInfoFile(folder.wstring());
    const auto labels = lines();
    ASSERT_FALSE(labels.empty());
    EXPECT_EQ(labels.front(), "Mobile phone");
    for (const std::string& label : labels)
        EXPECT_FALSE(label.empty()) << "reading would end here";
}

TEST_F(InfoFile, IsLeftAsTheUserHasMadeIt)
{
    std::ofstream(folder / infoFile) << "Locker\n";
    addInfoFile(folder.wstring() + L"\\");
    EXPECT_EQ(lines(), std::vector<std::string>{"Locker"});
}

TEST_F(InfoFile, OfALanguageIsCopiedWhereThereIsNoneYet)
{
    const auto languages = folder / L"languages";
    std::filesystem::create_directories(languages / L"labels");
    std::ofstream(languages / L"labels" / infoFile) << "Mobiltelefon\n";
    addInfoFilesOf(languages.wstring(), folder.wstring());
    EXPECT_EQ(lines(), std::vector<std::string>{"Mobiltelefon"});
    std::ofstream(folder / infoFile) << "Skab\n";
    addInfoFilesOf(languages.wstring(), folder.wstring());
    EXPECT_EQ(lines(), std::vector<std::string>{"Skab"});
    addInfoFilesOf((folder / L"nowhere").wstring(), folder.wstring());
}

TEST_F(InfoFile, TellsWhenItCannotBeMade)
{
    const auto failure = attempt([&] { addInfoFile((folder / L"nowhere").wstring()); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number(), HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND));
}

} // namespace

} // namespace korvane::host
