// What holds for every dialog in a host's own language: its texts can be read, and nothing is in the way of anything.
#include "demo/host/Language.h"
#include "demo/host/tour/Captions.h"
#include "tests/classes/Cases.h"
#include "tests/framework/Fakes.h"
#include "tests/support/ComRules.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

namespace korvane::test
{

namespace
{

struct SpokenLanguage
{
    std::string name;
    ComPtr<IResources> (*resources)();
};

ComPtr<IResources> english()
{
    return create<IResources>(__uuidof(::Resources));
}

ComPtr<IResources> danish()
{
    return ComPtr<IResources>(
        make<host::Language>(host::readTextFile(host::languageFolder() + L"\\Dansk.txt"), english()).get());
}

/// Texts that are longer than those of any language.
ComPtr<IResources> longWinded()
{
    const auto texts = make<HostResources>();
    texts->word = L"A very long-winded";
    return ComPtr<IResources>(texts.get());
}

const SpokenLanguage languages[] = {{"English", english}, {"Danish", danish}, {"LongWinded", longWinded}};

/// The library's texts; notes which were asked for.
class NotedTexts final : public Object<NotedTexts, Inherits<IResources>, IResources>
{
public:
    STDMETHODIMP GetIcon(long id, IPictureDisp** picture) override { return own_->GetIcon(id, picture); }
    STDMETHODIMP GetBitmap(long id, IPictureDisp** picture) override { return own_->GetBitmap(id, picture); }
    STDMETHODIMP GetCursor(long id, IPictureDisp** picture) override { return own_->GetCursor(id, picture); }
    STDMETHODIMP get_LocaleID(long* locale) override { return own_->get_LocaleID(locale); }
    STDMETHODIMP GetString(long id, BSTR* text) override
    {
        asked.insert(id);
        return own_->GetString(id, text);
    }

    std::set<long> asked;

private:
    ComPtr<IResources> own_ = english();
};

/// The ids that the papers name as those that a host's table needs: in the rows with a third column.
std::set<long> listedTexts()
{
    std::ifstream page(std::filesystem::path(host::languageFolder()).parent_path() / L"texts.md");
    std::set<long> ids;
    for (std::string line; std::getline(page, line);)
        if (line.starts_with("| ") && !line.ends_with("` |"))
            ids.insert(std::atol(line.c_str() + 2));
    return ids;
}

class TextListTests : public testing::TestWithParam<DialogCase>, public DialogOnCase
{
protected:
    TextListTests() : DialogOnCase(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(EveryDialog, TextListTests, testing::ValuesIn(dialogCases()),
                         [](const auto& tested) { return tested.param.name; });

class LanguageTests : public testing::TestWithParam<std::tuple<DialogCase, SpokenLanguage>>,
                      public DialogOnCase
{
public:
    LanguageTests() : DialogOnCase(std::get<0>(GetParam())) {}
    LanguageTests(const LanguageTests&) = delete;
    LanguageTests& operator=(const LanguageTests&) = delete;
    ~LanguageTests() override
    {
        if (container.dialog)
            container.dialog->putref_Resources(nullptr);
    }

protected:
    void showIn(const ComPtr<IResources>& resources)
    {
        place();
        call(container.dialog, &IAppDialog::putref_Resources, resources.get());
        ASSERT_TRUE(container.ready());
        ShowWindow(container.window(), SW_SHOWNA);
    }

    void expectToBeReadable() const
    {
        RECT all{};
        GetClientRect(container.dialogWindow(), &all);
        EXPECT_EQ(all.right, container.site->extent().cx);
        EXPECT_THAT(host::unreadableOn(container.dialogWindow()), testing::IsEmpty());
    }

    /// What is there to be checked now, in tab order.
    std::vector<HWND> checkable() const
    {
        auto parts = host::partsOf(container.dialogWindow());
        std::erase_if(parts, [](HWND part) { return !host::isCheckable(part) || !IsWindowEnabled(part); });
        return parts;
    }
};

INSTANTIATE_TEST_SUITE_P(EveryDialog, LanguageTests,
                         testing::Combine(testing::ValuesIn(dialogCases()), testing::ValuesIn(languages)),
                         [](const auto& tested) {
                             return std::get<0>(tested.param).name + std::get<1>(tested.param).name;
                         });

} // namespace

TEST_P(TextListTests, OnlyTextsThatAreListedAreAskedFor)
{
    const auto listed = listedTexts();
    ASSERT_GT(listed.size(), 50U);
    const auto texts = make<NotedTexts>();
    place();
    call(container.dialog, &IAppDialog::putref_Resources, texts.get());
    ASSERT_TRUE(container.ready());
    Bstr title;
    call(container.dialog, &IAppDialog::get_Name, title.put());
    if (!tested.runsByItself())
    {
        container.site->activateUi();
        container.pump();
        tested.use(container);
    }
    confirm();
    EXPECT_GT(texts->asked.size(), 1U);
    for (const long id : texts->asked)
        EXPECT_TRUE(listed.contains(id)) << id;
    if (container.dialog)
        container.dialog->putref_Resources(nullptr);
}

TEST_P(LanguageTests, EveryCaptionCanBeReadAndCoversNothing)
{
    showIn(std::get<1>(GetParam()).resources());
    expectToBeReadable();
    if (tested.runsByItself())
        return;
    container.site->activateUi();
    container.pump();
    // What is checked may bring further controls, with texts of their own.
    for (const HWND part : checkable())
    {
        Container::click(part);
        expectToBeReadable();
        for (const HWND further : checkable())
            if (further != part)
            {
                Container::click(further);
                expectToBeReadable();
            }
    }
    EXPECT_TRUE(container.errors.empty());
}

TEST_P(LanguageTests, ReadAgainItKeepsItsSize)
{
    showIn(std::get<1>(GetParam()).resources());
    const auto before = look();
    const SIZE size = container.site->extent();
    ASSERT_TRUE(container.ready());
    EXPECT_EQ(container.site->extent().cx, size.cx);
    EXPECT_EQ(look(), before);
}

TEST_P(LanguageTests, NoTwoCaptionsShareAnAccessKey)
{
    showIn(std::get<1>(GetParam()).resources());
    std::set<wchar_t> keys;
    for (const HWND part : host::partsOf(container.dialogWindow()))
    {
        const std::wstring text = Container::text(part);
        const wchar_t key = host::isCaption(part) ? host::accessKeyOf(text) : L'\0';
        if (key != 0 && tested.sharedKeys.find(key) == std::wstring::npos)
        {
            EXPECT_TRUE(keys.insert(key).second) << narrow(text);
        }
    }
}

} // namespace korvane::test
