// The combo box whose text can be typed.
#include "tests/framework/ControlDialog.h"

#include "framework/control/ComboBox.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

struct ComboLayout
{
    explicit ComboLayout(DialogWindow& dialog)
        : cboNames{dialog, {.name = L"cboNames", .place = {120, 120, 1500, 315}}, ComboBox::Kind::edit}
    {
        cboNames.onKeyDown = [this](WORD key, DWORD) {
            keys.push_back(key);
            return key == VK_F2;
        };
    }

    ComboBox cboNames;
    std::vector<WORD> keys;
};

class ComboBoxTests : public ControlTest<ComboLayout>
{
protected:
    void SetUp() override
    {
        ControlTest::SetUp();
        combo().AddItem(Bstr(L"ann").get(), 1);
        combo().AddItem(Bstr(L"bob").get(), 2);
        combo().onChange = [this] { changes.push_back(combo().Text()); };
        combo().onClick = [this] { clicks.push_back(combo().List(combo().ListIndex())); };
        combo().setFocus();
    }

    ComboBox& combo() const { return layout().cboNames; }

    std::vector<std::wstring> changes;
    std::vector<std::wstring> clicks;
};

} // namespace

TEST_F(ComboBoxTests, AnItemIsFoundByItsDataOrItsText)
{
    EXPECT_EQ(combo().indexOf(2), 1);
    EXPECT_EQ(combo().indexOf(3), -1);
    EXPECT_EQ(combo().indexOf(L"ann"), 0);
    EXPECT_EQ(combo().indexOf(L"Ann"), -1);
    EXPECT_EQ(combo().ListIndex(), -1); // it is not chosen by that
}

TEST_F(ComboBoxTests, ATextThatIsTypedIsTold)
{
    container.type(L"al");
    EXPECT_THAT(changes, ElementsAre(L"a", L"al"));
    EXPECT_EQ(combo().ListIndex(), -1);
    EXPECT_THAT(clicks, IsEmpty());
}

TEST_F(ComboBoxTests, WhatTheOwnerSetsIsNotTold)
{
    combo().setText(L"carl");
    EXPECT_EQ(combo().Text(), L"carl");
    EXPECT_EQ(combo().ListIndex(), -1);
    combo().setListIndex(1);
    EXPECT_EQ(combo().Text(), L"bob");
    combo().Clear();
    EXPECT_THAT(changes, IsEmpty());
    EXPECT_THAT(clicks, IsEmpty());
}

TEST_F(ComboBoxTests, WhatIsTypedAndWhereStaysWhenTheListIsCleared)
{
    container.type(L"anton");
    SendMessageW(GetFocus(), EM_SETSEL, 1, 3);
    changes.clear();
    combo().ClearList();
    EXPECT_EQ(combo().ListCount(), 0);
    EXPECT_EQ(combo().Text(), L"anton");
    EXPECT_THAT(changes, IsEmpty());
    container.type(L"x");
    EXPECT_EQ(combo().Text(), L"axon");
}

TEST_F(ComboBoxTests, AnItemThatTheUserChoosesIsTold)
{
    container.press(VK_DOWN);
    EXPECT_THAT(clicks, ElementsAre(L"ann"));
    EXPECT_EQ(combo().Text(), L"ann");
}

TEST_F(ComboBoxTests, TheFocusInItsBoxIsItsOwn)
{
    EXPECT_NE(GetFocus(), combo().window());
    EXPECT_TRUE(combo().hasFocus());
}

TEST_F(ComboBoxTests, ItsOwnerSeesTheKeysFirst)
{
    container.press(VK_F2);
    container.press('A');
    EXPECT_THAT(layout().keys, ElementsAre(VK_F2, 'A'));
    EXPECT_EQ(combo().Text(), L"a");
}

} // namespace korvane::test
