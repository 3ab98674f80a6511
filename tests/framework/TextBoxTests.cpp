// The box to type a text in, as its owner uses it.
#include "tests/framework/ControlDialog.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

struct TextLayout
{
    explicit TextLayout(DialogWindow& dialog)
        : txtLine{dialog, {.name = L"txtLine", .place = {120, 120, 1500, 315}}},
          txtLines{dialog, {.name = L"txtLines", .place = {120, 500, 1500, 800}}, TextBox::Kind::lines}
    {
    }

    TextBox txtLine;
    TextBox txtLines;
};

class TextBoxTests : public ControlTest<TextLayout>
{
protected:
    void SetUp() override
    {
        ControlTest::SetUp();
        layout().txtLines.onChange = [this] { changes.push_back(layout().txtLines.Text()); };
    }

    /// As assistive technology does. Windows sends no notification to the owner of a box of several lines; where a
    /// platform does, it is the same change, told at once.
    void setFromOutside(const wchar_t* text) { SetWindowTextW(layout().txtLines.window(), text); }

    std::vector<std::wstring> changes;
};

} // namespace

TEST_F(TextBoxTests, ATextThatIsSetFromOutsideIsToldWhenTheBoxIsLeft)
{
    layout().txtLines.setFocus();
    setFromOutside(L"spoken");
    layout().txtLine.setFocus();
    EXPECT_THAT(changes, ElementsAre(L"spoken"));
    layout().txtLines.setFocus();
    layout().txtLine.setFocus();
    EXPECT_THAT(changes, ElementsAre(L"spoken"));
}

TEST_F(TextBoxTests, ATextThatIsSetFromOutsideIsToldBeforeOk)
{
    std::vector<std::wstring> known;
    dialog->onTake = [&] { known = changes; };
    setFromOutside(L"spoken");
    Container::click(dialog->fraCommands.cmdOk.window());
    EXPECT_THAT(known, ElementsAre(L"spoken"));
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(TextBoxTests, WhatTheOwnerSetsIsNotToldWhenTheBoxIsLeft)
{
    layout().txtLines.setFocus();
    layout().txtLines.setText(L"set");
    layout().txtLine.setFocus();
    EXPECT_THAT(changes, IsEmpty());
    layout().txtLines.setFocus();
    SendMessageW(layout().txtLines.window(), EM_SETSEL, 9, 9);
    container.type(L"x");
    layout().txtLine.setFocus();
    EXPECT_THAT(changes, ElementsAre(L"setx"));
}

TEST_F(TextBoxTests, TheFocusIsTold)
{
    int arrivals = 0;
    layout().txtLine.onGotFocus = [&] {
        ++arrivals;
        layout().txtLine.selectAll();
    };
    layout().txtLine.setText(L"name");
    layout().txtLines.setFocus();
    layout().txtLine.setFocus();
    EXPECT_EQ(arrivals, 1);
    EXPECT_EQ(layout().txtLine.SelLength(), 4);
}

TEST_F(TextBoxTests, TheSelectionIsTheOwnersToo)
{
    TextBox& box = layout().txtLine;
    box.setText(L"weekday");
    box.select(2, 3);
    EXPECT_EQ(box.SelStart(), 2);
    EXPECT_EQ(box.SelLength(), 3);
    box.select(7, 0);
    EXPECT_EQ(box.SelStart(), 7);
    EXPECT_EQ(box.SelLength(), 0);
}

TEST_F(TextBoxTests, ALockedBoxTakesNoKeysButItsOwnersText)
{
    TextBox& box = layout().txtLine;
    box.setText(L"kept");
    box.setLocked(true);
    box.setFocus();
    container.type(L"x");
    EXPECT_EQ(box.Text(), L"kept");
    box.setText(L"new");
    EXPECT_EQ(box.Text(), L"new");
    box.setLocked(false);
    box.selectAll();
    container.type(L"x");
    EXPECT_EQ(box.Text(), L"x");
}

TEST_F(TextBoxTests, ATextIsAsHighAsItsLines)
{
    const TextBox& box = layout().txtLine;
    const float line = box.textHeight(L"one", 9000);
    EXPECT_GT(line, 0);
    EXPECT_EQ(box.textHeight(L"", 9000), line);
    EXPECT_EQ(box.textHeight(L"one\r\ntwo", 9000), 2 * line);
    EXPECT_EQ(box.textHeight(L"one\r\n", 9000), 2 * line);
    EXPECT_GT(box.textHeight(L"one two three four five six", 500), 2 * line);
    EXPECT_EQ(box.textHeight(L"one & two", 9000), line);
}

} // namespace korvane::test
