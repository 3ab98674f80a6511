// The tabs, by which the pages of a dialog are turned.
#include "framework/control/TabStrip.h"
#include "tests/framework/ControlDialog.h"

#include <commctrl.h>
#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

struct TabLayout
{
    explicit TabLayout(DialogWindow& dialog)
        : tabPages{dialog,
                   {.name = L"tabPages", .place = {120, 120, 4000, 360}},
                   {{L"ONE", L"&One"}, {L"TWO", L"&Two"}, {L"THREE", L"Thre&e"}}},
          txtOne{dialog, {.name = L"txtOne", .place = {120, 600, 1500, 315}}}
    {
        tabPages.onClick = [this] { chosen.push_back(tabPages.SelectedKey()); };
    }

    TabStrip tabPages;
    TextBox txtOne;
    std::vector<std::wstring> chosen;
};

class TabStripTests : public ControlTest<TabLayout>
{
protected:
    TabStrip& tabs() const { return layout().tabPages; }
    const std::vector<std::wstring>& chosen() const { return layout().chosen; }
    LRESULT shown() const { return SendMessageW(tabs().window(), TCM_GETCURSEL, 0, 0); }

    std::wstring caption(WPARAM index) const
    {
        wchar_t text[64]{};
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = 64;
        SendMessageW(tabs().window(), TCM_GETITEMW, index, reinterpret_cast<LPARAM>(&item));
        return text;
    }

    void clickTab(WPARAM index) const
    {
        RECT tab{};
        SendMessageW(tabs().window(), TCM_GETITEMRECT, index, reinterpret_cast<LPARAM>(&tab));
        Container::clickAt(tabs().window(), (tab.left + tab.right) / 2, (tab.top + tab.bottom) / 2);
    }
};

LRESULT CALLBACK countColourChanges(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR,
                                    DWORD_PTR count)
{
    *reinterpret_cast<int*>(count) += message == WM_SYSCOLORCHANGE ? 1 : 0;
    return DefSubclassProc(window, message, first, second);
}

} // namespace

TEST_F(TabStripTests, TheFirstTabIsChosenToBeginWith)
{
    EXPECT_EQ(tabs().SelectedKey(), L"ONE");
    EXPECT_EQ(shown(), 0);
    EXPECT_THAT(chosen(), IsEmpty());
}

TEST_F(TabStripTests, ATabIsChosenByAClickAndGetsTheFocus)
{
    layout().txtOne.setFocus();
    clickTab(1);
    EXPECT_THAT(chosen(), ElementsAre(L"TWO"));
    EXPECT_EQ(GetFocus(), tabs().window());
}

TEST_F(TabStripTests, TheArrowKeysChoose)
{
    tabs().setFocus();
    container.press(VK_RIGHT);
    container.press(VK_RIGHT);
    container.press(VK_LEFT);
    EXPECT_THAT(chosen(), ElementsAre(L"TWO", L"THREE", L"TWO"));
}

TEST_F(TabStripTests, AnAccessKeyChoosesItsTab)
{
    layout().txtOne.setFocus();
    PostMessageW(GetFocus(), WM_SYSCHAR, 't', 1 << 29);
    container.pump();
    EXPECT_THAT(chosen(), ElementsAre(L"TWO"));
    EXPECT_EQ(shown(), 1);
    EXPECT_EQ(GetFocus(), tabs().window());
}

TEST_F(TabStripTests, ControlTabTurnsThePagesFromAnywhereAndGoesRound)
{
    layout().txtOne.setFocus();
    container.press(VK_TAB, false, false, true);
    container.press(VK_TAB, false, false, true);
    container.press(VK_TAB, false, false, true);
    container.press(VK_TAB, true, false, true);
    EXPECT_THAT(chosen(), ElementsAre(L"TWO", L"THREE", L"ONE", L"THREE"));
    EXPECT_EQ(shown(), 2);
}

TEST_F(TabStripTests, WhatTheOwnerChoosesIsNoClick)
{
    tabs().select(L"THREE");
    EXPECT_EQ(tabs().SelectedKey(), L"THREE");
    EXPECT_EQ(shown(), 2);
    EXPECT_THAT(chosen(), IsEmpty());
    EXPECT_THROW(tabs().select(L"FOUR"), Failure);
}

TEST_F(TabStripTests, ATabIsCaptionedAnewWithItsAccessKey)
{
    tabs().setTabCaption(L"TWO", L"&Pages");
    EXPECT_EQ(caption(1), L"&Pages");
    PostMessageW(GetFocus(), WM_SYSCHAR, 'p', 1 << 29);
    container.pump();
    EXPECT_THAT(chosen(), ElementsAre(L"TWO"));
}

TEST_F(TabStripTests, TheTabsAreAsHighAsTheStrip)
{
    RECT client{};
    GetClientRect(tabs().window(), &client);
    RECT tab{};
    SendMessageW(tabs().window(), TCM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&tab));
    EXPECT_LE(tab.bottom, client.bottom);
    EXPECT_GE(tab.bottom, client.bottom - 6);
}

// The platform's tabs keep the colours that they draw with, and are told of others by who has been told.
TEST_F(TabStripTests, OtherColoursOfTheSystemAreHandedOn)
{
    int told = 0;
    SetWindowSubclass(tabs().window(), &countColourChanges, 7, reinterpret_cast<DWORD_PTR>(&told));
    SendMessageW(container.dialogWindow(), WM_SYSCOLORCHANGE, 0, 0);
    RemoveWindowSubclass(tabs().window(), &countColourChanges, 7);
    EXPECT_EQ(told, 1);
}

TEST_F(TabStripTests, ADisabledStripIsPassedBy)
{
    tabs().setEnabled(false);
    layout().txtOne.setFocus();
    container.press(VK_TAB, false, false, true);
    PostMessageW(GetFocus(), WM_SYSCHAR, 't', 1 << 29);
    container.pump();
    EXPECT_THAT(chosen(), IsEmpty());
}

} // namespace korvane::test
