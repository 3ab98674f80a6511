// The order of the steps of Ready, as a container can see it.
#include "tests/framework/TestDialog.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;

/// Looks at the dialog whenever it is asked for its font and its sink.
class LookingSite final : public host::ControlSite
{
public:
    LookingSite(HWND window, std::function<void(const char* call)> look)
        : ControlSite(window), look_(std::move(look))
    {
    }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        if (iid == __uuidof(IAppDialogSink))
            look_("the sink is asked for");
        return ControlSite::QueryInterface(iid, object);
    }
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override
    {
        look_("the font is asked for");
        return ControlSite::Invoke(id, iid, locale, flags, arguments, result, exception, badArgument);
    }

private:
    std::function<void(const char* call)> look_;
};

class ReadyTests : public DialogTest
{
protected:
    ReadyTests()
    {
        const auto site = make<LookingSite>(container.window(), [this](const char* call) { look(call); });
        site->font = host::makeFont(L"MS Shell Dlg", 12);
        site->onResize = [this] { ++resizes; };
        container.site = ComPtr<host::ControlSite>(site.get());
    }

    /// Notes what has become true meanwhile, and what happens now.
    void look(const char* now)
    {
        if (CurrentResources())
            note("resources");
        if (dialog->lblNumber.Caption() != L"21001")
            note("captions");
        if (dialog->Width() != TestDialog::designWidth)
            note("font");
        note(now);
    }

    void note(const char* step)
    {
        if (std::find(steps.begin(), steps.end(), step) == steps.end())
            steps.emplace_back(step);
    }

    std::vector<std::string> steps;
    int resizes = 0;
};

} // namespace

TEST_F(ReadyTests, ResourcesCaptionsFontSinkAndLoadComeInThisOrder)
{
    place();
    steps.clear(); // the dialog has been placed, and is still as it was designed
    EXPECT_FALSE(CurrentResources());
    dialog->onLoad = [this] {
        look("load");
        dialog->raiseResize();
        return true;
    };
    ASSERT_TRUE(container.ready());
    EXPECT_THAT(steps, ElementsAre("resources", "captions", "the font is asked for", "font",
                                   "the sink is asked for", "load"));
    EXPECT_EQ(resizes, 1) << "the sink is there when the dialog loads";
}

} // namespace korvane::test
