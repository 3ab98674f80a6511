// Captions, texts and tooltips: what a layout gives as a number becomes a text.
#include "tests/framework/Fakes.h"
#include "tests/framework/TestDialog.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

class DialogTextTests : public DialogTest
{
};

} // namespace

TEST_F(DialogTextTests, ACaptionThatIsNoNumberStays)
{
    ASSERT_TRUE(show());
    EXPECT_EQ(text(dialog->lblWord), L"Name");
}

TEST_F(DialogTextTests, ANumberWithoutTextBecomesEmpty)
{
    ASSERT_TRUE(show());
    EXPECT_EQ(text(dialog->lblMissing), L"");
}

TEST_F(DialogTextTests, ATextThatTheDialogSetsIsNoChangeOfTheUsers)
{
    ASSERT_TRUE(show());
    int changes = 0;
    dialog->txtName.onChange = [&] { ++changes; };
    dialog->txtName.setText(L"Vans");
    EXPECT_EQ(changes, 0);
    SetFocus(dialog->txtName.window());
    container.type(L"x");
    EXPECT_EQ(changes, 1);
}

TEST_F(DialogTextTests, ATextThatIsSetAgainLeavesTheSelectionInTheBox)
{
    ASSERT_TRUE(show());
    dialog->txtName.setText(L"Vans");
    SendMessageW(dialog->txtName.window(), EM_SETSEL, 1, 3);
    dialog->txtName.setText(L"Vans");
    EXPECT_EQ(SendMessageW(dialog->txtName.window(), EM_GETSEL, 0, 0), MAKELRESULT(1, 3));
}

TEST_F(DialogTextTests, ANumberBecomesItsText)
{
    ASSERT_TRUE(show());
    EXPECT_EQ(text(dialog->lblNumber), L"&New group:");
    EXPECT_EQ(text(dialog->txtName), L"Group");
    EXPECT_EQ(text(dialog->cmdPlain), L"&Print");
    EXPECT_EQ(text(dialog->fraCommands.cmdOk), resourceText(1002).view());
    EXPECT_EQ(text(dialog->fraCommands.cmdCancel), resourceText(1003).view());
}

TEST_F(DialogTextTests, TooltipsFollowTheSameRule)
{
    ASSERT_TRUE(show());
    EXPECT_EQ(dialog->txtName.ToolTipText(), resourceText(1003).view());
    EXPECT_EQ(dialog->cmdPlain.ToolTipText(), L"Plain");
    EXPECT_EQ(dialog->txtInner.ToolTipText(), L"");
    EXPECT_EQ(dialog->lblWord.ToolTipText(), L"");
}

TEST_F(DialogTextTests, ATextThatIsTypedIsKeptWhenTheDialogIsReadiedAgain)
{
    ASSERT_TRUE(show());
    SetWindowTextW(dialog->txtName.window(), L"Drivers");
    ASSERT_TRUE(container.ready());
    EXPECT_EQ(text(dialog->txtName), L"Drivers");
    EXPECT_EQ(text(dialog->lblNumber), L"&New group:");
    EXPECT_EQ(dialog->loads, 2);
}

TEST_F(DialogTextTests, TheHostsOwnTextsAreUsed)
{
    setCurrentResources(ComPtr<IResources>(make<HostResources>().get()));
    ASSERT_TRUE(show());
    EXPECT_EQ(text(dialog->lblNumber), L"host text 21001");
    EXPECT_EQ(text(dialog->lblMissing), L"host text 99999");
    EXPECT_EQ(text(dialog->lblWord), L"Name");
    Bstr title;
    EXPECT_EQ(container.dialog->get_Name(title.put()), S_OK);
    EXPECT_EQ(title, L"host text 22000");
}

TEST_F(DialogTextTests, AHostWhoseTextsFailLeavesTheLayoutAsDesigned)
{
    const auto resources = make<HostResources>();
    resources->failing = 21001;
    setCurrentResources(ComPtr<IResources>(resources.get()));
    ASSERT_TRUE(show());
    EXPECT_EQ(text(dialog->lblNumber), L"21001");
    EXPECT_EQ(text(dialog->lblMissing), L"host text 99999");
    EXPECT_FALSE(errorIsLeft());
}

TEST_F(DialogTextTests, TheTitleIsThereBeforeTheDialogIsReady)
{
    Bstr title;
    EXPECT_EQ(dialog->get_Name(title.put()), S_OK);
    EXPECT_EQ(title, L"Resource");
}

} // namespace korvane::test
