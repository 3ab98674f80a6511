// The list, as its owner uses it.
#include "tests/framework/ControlDialog.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;

struct ListLayout
{
    explicit ListLayout(DialogWindow& dialog)
        : lstThings{dialog, {.name = L"lstThings", .place = {120, 120, 1500, 1500}}}
    {
    }
    ListBox lstThings;
};

class ListBoxTests : public ControlTest<ListLayout>
{
protected:
    void SetUp() override
    {
        ControlTest::SetUp();
        for (const wchar_t* text : {L"ash", L"birch", L"cedar", L"elm", L"fir"})
            list().InsertItem(-1, text, list().ListCount() + 10);
        list().onClick = [this] { ++clicks; };
    }

    ListBox& list() const { return layout().lstThings; }
    std::vector<std::wstring> shown() const { return items(list().window()); }

    std::vector<long> data() const
    {
        std::vector<long> all;
        all.reserve(static_cast<std::size_t>(list().ListCount()));
        for (int index = 0; index < list().ListCount(); ++index)
            all.push_back(list().ItemData(index));
        return all;
    }

    RECT row(int index) const
    {
        RECT place{};
        SendMessageW(list().window(), LB_GETITEMRECT, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&place));
        return place;
    }

    int clicks = 0;
};

} // namespace

TEST_F(ListBoxTests, AnItemIsInsertedWhereItIsToStand)
{
    list().InsertItem(0, L"alder", 1);
    list().InsertItem(3, L"box", 2);
    list().InsertItem(-1, nullptr, 3);
    EXPECT_THAT(shown(), ElementsAre(L"alder", L"ash", L"birch", L"box", L"cedar", L"elm", L"fir", L""));
    EXPECT_THAT(data(), ElementsAre(1, 10, 11, 2, 12, 13, 14, 3));
}

TEST_F(ListBoxTests, AnItemIsRemovedWithItsData)
{
    list().RemoveItem(1);
    EXPECT_THAT(shown(), ElementsAre(L"ash", L"cedar", L"elm", L"fir"));
    EXPECT_THAT(data(), ElementsAre(10, 12, 13, 14));
}

TEST_F(ListBoxTests, AnItemIsFoundByItsDataOrItsText)
{
    EXPECT_EQ(list().indexOf(10), 0);
    EXPECT_EQ(list().indexOf(14), 4);
    EXPECT_EQ(list().indexOf(15), -1);
    EXPECT_EQ(list().indexOf(L"cedar"), 2);
    for (const wchar_t* other : {L"Cedar", L"ced", L""})
        EXPECT_EQ(list().indexOf(other), -1);
}

TEST_F(ListBoxTests, ASelectionThatTheOwnerMakesIsNoClick)
{
    list().setListIndex(2);
    EXPECT_EQ(list().ListIndex(), 2);
    list().setListIndex(-1);
    EXPECT_EQ(list().ListIndex(), -1);
    EXPECT_EQ(clicks, 0);
    clickItem(list().window(), 1);
    EXPECT_EQ(clicks, 1);
}

/// Platforms tell of it by a notification of its own.
TEST_F(ListBoxTests, ASelectionThatTheUserTakesBackIsAClick)
{
    SendMessageW(dialog->window(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list().window()), LBN_SELCANCEL),
                 reinterpret_cast<LPARAM>(list().window()));
    EXPECT_EQ(clicks, 1);
}

TEST_F(ListBoxTests, AnItemMovesUpAndDownWithItsDataAndIsSelected)
{
    list().MoveItem(3, 1);
    EXPECT_THAT(shown(), ElementsAre(L"ash", L"elm", L"birch", L"cedar", L"fir"));
    EXPECT_THAT(data(), ElementsAre(10, 13, 11, 12, 14));
    EXPECT_EQ(list().ListIndex(), 1);
    list().MoveItem(1, 4);
    EXPECT_THAT(shown(), ElementsAre(L"ash", L"birch", L"cedar", L"fir", L"elm"));
    EXPECT_THAT(data(), ElementsAre(10, 11, 12, 14, 13));
    EXPECT_EQ(list().ListIndex(), 4);
    EXPECT_EQ(clicks, 0);
}

TEST_F(ListBoxTests, AMoveDrawsTheRowsBetweenOnly)
{
    list().showNow();
    ASSERT_FALSE(GetUpdateRect(list().window(), nullptr, FALSE));
    list().MoveItem(1, 2);
    RECT stale{};
    GetUpdateRect(list().window(), &stale, FALSE);
    EXPECT_GE(stale.top, row(1).top);
    EXPECT_LE(stale.bottom, row(2).bottom);
    list().showNow();
    EXPECT_FALSE(GetUpdateRect(list().window(), nullptr, FALSE));
}

TEST_F(ListBoxTests, AMoveInALongListDoesNotScrollIt)
{
    for (int index = 0; index < 200; ++index)
        list().InsertItem(-1, L"more", index);
    SendMessageW(list().window(), LB_SETTOPINDEX, 500, 0);
    const LRESULT top = SendMessageW(list().window(), LB_GETTOPINDEX, 0, 0);
    ASSERT_GT(top, 100);
    list().MoveItem(204, 203);
    EXPECT_EQ(SendMessageW(list().window(), LB_GETTOPINDEX, 0, 0), top);
}

} // namespace korvane::test
