// Texts that are longer than those that the layout was designed with.
#include "tests/framework/TestDialog.h"

#include "framework/control/CheckBox.h"
#include "framework/control/Swatch.h"

namespace korvane::test
{

namespace
{

constexpr const wchar_t* longText = L"A caption that takes its room";

/// Fields behind labels, a list below them, a frame at the right, and the buttons.
class WordyDialog final : public Dialog<WordyDialog, TestDialogCommand>
{
public:
    static const GUID* classId() noexcept
    {
        static constexpr GUID id{
            0x6E2A5B10, 0x2C41, 0x4F0E, {0x9B, 0x51, 0x0D, 0x7A, 0x31, 0x5E, 0x88, 0x0A}};
        return &id;
    }

    WordyDialog() : Dialog(22000, width, 3000) {}

    static constexpr float width = 6000;

    using AppDialog::run;
    using DialogWindow::controls;
    using OleControl::Height;
    using OleControl::setSize;
    using OleControl::Width;

    bool laysItselfOut = false;

    Label lblName{*this, {.name = L"lblName", .place = {120, 165, 900, 210}, .text = L"Name"}};
    TextBox txtName{*this, {.name = L"txtName", .place = {1080, 120, 2400, 315}}};
    Label lblKind{*this, {.name = L"lblKind", .place = {120, 525, 900, 210}, .text = L"Kind"}};
    Swatch shpKind{*this, {.name = L"shpKind", .place = {1080, 480, 315, 315}}};
    CheckBox chkKind{*this, {.name = L"chkKind", .place = {1500, 525, 900, 225}, .text = L"All"}};
    Button cmdKind{*this, {.name = L"cmdKind", .place = {120, 900, 900, 345}, .text = L"More"}};
    ListBox lstAll{*this, {.name = L"lstAll", .place = {120, 1380, 3360, 900}}};

    Frame fraMore{*this, {.name = L"fraMore", .place = {3600, 0, 2400, 2300}}};
    Label lblMore{fraMore, {.name = L"lblMore", .place = {0, 165, 600, 210}, .text = L"More"}};
    TextBox txtMore{fraMore, {.name = L"txtMore", .place = {660, 120, 1620, 315}}};

    CommandFrame fraCommands{*this, {0, 2385, width, 615}};

private:
    bool load() override { return true; }
    void takeValues() override {}
    bool resizable() const noexcept override { return laysItselfOut; }
};

class TextRoomTests : public DialogTestOf<WordyDialog>
{
protected:
    /// Places of all controls on the dialog.
    std::vector<Place> places() const
    {
        std::vector<Place> found;
        for (const Control* control : dialog->controls())
            found.push_back(control->placeOnDialog());
        return found;
    }

    static float leftOf(const Control& control) { return control.placeOnDialog().left; }

    void expectReadable(const Control& control) const
    {
        EXPECT_GE(control.Width(), control.captionWidth()) << control.name();
    }

    float by() const { return dialog->Width() - WordyDialog::width; }
};

} // namespace

TEST_F(TextRoomTests, TextsThatFitLeaveTheLayoutAsItIsDesigned)
{
    const auto designed = places();
    ASSERT_TRUE(show());
    const auto shown = places();
    for (std::size_t index = 0; index < designed.size(); ++index)
    {
        EXPECT_EQ(shown[index].left, designed[index].left) << index;
        EXPECT_EQ(shown[index].width, designed[index].width) << index;
    }
    EXPECT_EQ(by(), 0);
}

TEST_F(TextRoomTests, TheRoomBesideAControlIsTakenFirst)
{
    dialog->cmdKind.setTextValue(longText);
    ASSERT_TRUE(show());
    expectReadable(dialog->cmdKind);
    EXPECT_EQ(by(), 0);
    EXPECT_EQ(leftOf(dialog->lstAll), 120);
    EXPECT_EQ(dialog->lstAll.Width(), 3360);
}

TEST_F(TextRoomTests, WhatStandsToTheRightOfALabelMovesOn)
{
    dialog->lblName.setCaption(longText);
    ASSERT_TRUE(show());
    expectReadable(dialog->lblName);
    ASSERT_GT(by(), 900);
    EXPECT_NEAR(leftOf(dialog->txtName), 1080 + by(), 15);
    EXPECT_GE(leftOf(dialog->txtName), dialog->lblName.right());
    EXPECT_EQ(dialog->txtName.Width(), 2400);
    for (const auto& [control, designed] : {std::pair<const Control*, float>{&dialog->shpKind, 1080.0f},
                                            {&dialog->chkKind, 1500.0f},
                                            {&dialog->lblMore, 3600.0f},
                                            {&dialog->txtMore, 4260.0f},
                                            {&dialog->fraCommands.cmdOk, 3510.0f}})
        EXPECT_NEAR(leftOf(*control), designed + by(), 15) << control->name();
}

TEST_F(TextRoomTests, BetweenACaptionThatJustFitsAndWhatFollowsIsAGap)
{
    dialog->lblName.setCaption(longText);
    dialog->run([this] {
        dialog->lblName.setWidth(dialog->lblName.captionWidth());
        dialog->txtName.setLeft(dialog->lblName.right());
    });
    ASSERT_TRUE(show());
    expectReadable(dialog->lblName);
    EXPECT_NEAR(leftOf(dialog->txtName) - 120 - dialog->lblName.captionWidth(), 60, 15);
}

TEST_F(TextRoomTests, WhatSpansThePlaceBecomesWider)
{
    dialog->lblName.setCaption(longText);
    ASSERT_TRUE(show());
    EXPECT_EQ(leftOf(dialog->lstAll), 120);
    EXPECT_NEAR(dialog->lstAll.Width(), 3360 + by(), 15);
    EXPECT_NEAR(dialog->fraCommands.Width(), WordyDialog::width + by(), 15);
    EXPECT_EQ(dialog->fraMore.Width(), 2400);
    EXPECT_EQ(dialog->cmdKind.Width(), 900) << "a button is as wide as its caption needs";
}

TEST_F(TextRoomTests, InAFrameTheFrameBecomesWider)
{
    dialog->lblMore.setCaption(longText);
    ASSERT_TRUE(show());
    expectReadable(dialog->lblMore);
    ASSERT_GT(by(), 900);
    EXPECT_EQ(leftOf(dialog->lblMore), 3600);
    EXPECT_NEAR(leftOf(dialog->txtMore), 4260 + by(), 15);
    EXPECT_NEAR(dialog->fraMore.Width(), 2400 + by(), 15);
    EXPECT_EQ(leftOf(dialog->txtName), 1080);
    EXPECT_EQ(dialog->lstAll.Width(), 3360);
}

TEST_F(TextRoomTests, ACheckBoxAndASwatchAreNotStretched)
{
    dialog->lblMore.setCaption(longText);
    dialog->chkKind.setTextValue(longText);
    ASSERT_TRUE(show());
    expectReadable(dialog->chkKind);
    EXPECT_EQ(dialog->shpKind.Width(), 315);
    EXPECT_LE(dialog->chkKind.right(), leftOf(dialog->fraMore));
}

TEST_F(TextRoomTests, TheLastButtonsGrowToTheLeft)
{
    dialog->fraCommands.cmdCancel.setTextValue(longText);
    ASSERT_TRUE(show());
    expectReadable(dialog->fraCommands.cmdCancel);
    EXPECT_EQ(by(), 0);
    EXPECT_EQ(dialog->fraCommands.cmdCancel.right(), WordyDialog::width - 120);
    EXPECT_EQ(dialog->fraCommands.cmdOk.Width(), 1125);
    EXPECT_EQ(dialog->fraCommands.cmdCancel.Left() - dialog->fraCommands.cmdOk.right(), 120);
}

TEST_F(TextRoomTests, WhereTheLastButtonsHaveNoMoreRoomTheDialogBecomesWider)
{
    const std::wstring twice = std::wstring(longText) + L". " + longText;
    dialog->fraCommands.cmdOk.setTextValue(twice);
    dialog->fraCommands.cmdCancel.setTextValue(twice);
    ASSERT_TRUE(show());
    expectReadable(dialog->fraCommands.cmdOk);
    expectReadable(dialog->fraCommands.cmdCancel);
    EXPECT_GT(by(), 0);
    EXPECT_NEAR(leftOf(dialog->fraCommands.cmdOk), 120, 15);
    EXPECT_NEAR(dialog->fraCommands.cmdCancel.right(), dialog->Width() - 120, 15);
    EXPECT_EQ(leftOf(dialog->txtMore), 4260);
}

TEST_F(TextRoomTests, ADialogThatLaysItselfOutKeepsItsPlacesAndBecomesWider)
{
    dialog->laysItselfOut = true;
    const std::wstring twice = std::wstring(longText) + L". " + longText;
    dialog->lblName.setCaption(longText);
    dialog->fraCommands.cmdOk.setTextValue(twice);
    dialog->fraCommands.cmdCancel.setTextValue(twice);
    ASSERT_TRUE(show());
    EXPECT_EQ(dialog->lblName.Width(), 900);
    EXPECT_EQ(leftOf(dialog->txtName), 1080);
    EXPECT_EQ(dialog->fraCommands.Width(), WordyDialog::width);
    const float wide = by();
    EXPECT_GT(wide, 0);

    dialog->setSize(WordyDialog::width, dialog->Height());
    ASSERT_TRUE(container.ready());
    EXPECT_NEAR(by(), wide, 15) << "it is to be so wide each time";
}

TEST_F(TextRoomTests, WhatDoesNotShowTogetherIsInNobodysWay)
{
    dialog->txtName.setVisible(false);
    dialog->lblName.setCaption(longText);
    ASSERT_TRUE(show());
    expectReadable(dialog->lblName);
    EXPECT_EQ(by(), 0);
}

TEST_F(TextRoomTests, WhatReachesBeyondTheDialogStaysWhereItWasPut)
{
    dialog->run([this] {
        dialog->txtMore.setLeft(2200);
        dialog->lblMore.setLeft(2280);
    });
    ASSERT_TRUE(show());
    EXPECT_EQ(leftOf(dialog->lblMore), 3600 + 2280);
    EXPECT_EQ(leftOf(dialog->txtMore), 3600 + 2200);
    EXPECT_NEAR(dialog->fraMore.Width(), 2400 + by(), 15);
    EXPECT_NEAR(dialog->lblMore.placeOnDialog().left + dialog->lblMore.Width(), dialog->Width() - 120, 15);
    EXPECT_NEAR(dialog->fraCommands.cmdCancel.right(), dialog->Width() - 120, 15);
}

TEST_F(TextRoomTests, TheAccessKeysMarkTakesNoRoom)
{
    dialog->lblName.setCaption(L"Name");
    const float plain = dialog->lblName.captionWidth();
    dialog->lblName.setCaption(L"N&ame");
    EXPECT_EQ(dialog->lblName.captionWidth(), plain);
    dialog->lblName.setCaption(L"N&&ame");
    EXPECT_GT(dialog->lblName.captionWidth(), plain);
}

TEST_F(TextRoomTests, ATextThatChangesLaterMakesRoomAndTheContainerIsTold)
{
    ASSERT_TRUE(show());
    const int told = container.resizes;
    dialog->run([this] { dialog->lblName.setCaption(L"Names"); });
    EXPECT_EQ(container.resizes, told);
    dialog->run([this] { dialog->lblName.setCaption(longText); });
    expectReadable(dialog->lblName);
    EXPECT_EQ(container.resizes, told + 1);
    EXPECT_GT(by(), 0);
    const float wide = dialog->Width();
    dialog->run([this] { dialog->lblName.setCaption(L"Name"); });
    EXPECT_EQ(dialog->Width(), wide) << "a dialog that changes its size all the time is a nuisance";
    EXPECT_EQ(container.resizes, told + 1);
}

TEST_F(TextRoomTests, ALargerFontKeepsTheTextsReadable)
{
    dialog->lblName.setCaption(longText);
    ASSERT_TRUE(show());
    ASSERT_EQ(dialog->putref_Font(host::makeFont(L"MS Shell Dlg", 16).get()), S_OK);
    expectReadable(dialog->lblName);
    EXPECT_GE(leftOf(dialog->txtName), dialog->lblName.right());
    EXPECT_NEAR(dialog->fraCommands.cmdCancel.right(), dialog->Width() - 240, 60);
}

} // namespace korvane::test
