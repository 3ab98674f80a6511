// Where the cells of a grid are, without a window.
#include "framework/control/GridLayout.h"

#include <gmock/gmock.h>

#include <numeric>
#include <random>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;

constexpr int none = GridLayout::none;

/// A heading of 10, a fixed column of 20, and two columns that share 300 as 1 to 2; five rows of 15 in sight of 40.
GridLayout fiveRows()
{
    GridLayout layout(1, 1, {1, 2});
    layout.setSize({320, 50}, 20);
    layout.setRows(6, 15);
    layout.setHeight(0, 10);
    return layout;
}

std::vector<int> tops(const GridLayout& layout)
{
    std::vector<int> all;
    for (int row = 0; row <= layout.rows(); ++row)
        all.push_back(layout.top(row));
    return all;
}

std::vector<int> edges(const GridLayout& layout)
{
    std::vector<int> all;
    for (int column = 0; column <= layout.columns(); ++column)
        all.push_back(layout.left(column));
    return all;
}

} // namespace

TEST(GridLayoutTests, RowsFollowEachOtherWhateverTheirHeights)
{
    GridLayout layout = fiveRows();
    EXPECT_THAT(tops(layout), ElementsAre(0, 10, 25, 40, 55, 70, 85));
    layout.setHeight(2, 30);
    EXPECT_THAT(tops(layout), ElementsAre(0, 10, 25, 55, 70, 85, 100));
    layout.setRows(3, 15);
    EXPECT_THAT(tops(layout), ElementsAre(0, 10, 25, 55));
    layout.setRows(4, 7);
    EXPECT_THAT(tops(layout), ElementsAre(0, 10, 25, 55, 62));
}

TEST(GridLayoutTests, ColumnsShareTheWidthToTheLastPixel)
{
    GridLayout layout = fiveRows();
    EXPECT_THAT(edges(layout), ElementsAre(0, 20, 120, 320));
    layout.setSize({111, 50}, 20);
    EXPECT_THAT(edges(layout), ElementsAre(0, 20, 50, 111));
}

TEST(GridLayoutTests, ADraggedEdgeSharesAnewBetweenItsColumnsAndNoMore)
{
    GridLayout layout(0, 1, {1, 1, 1});
    layout.setSize({320, 50}, 20);
    EXPECT_THAT(edges(layout), ElementsAre(0, 20, 120, 220, 320));
    layout.dragDivider(1, 90, 30);
    EXPECT_THAT(edges(layout), ElementsAre(0, 20, 90, 220, 320));
    layout.dragDivider(1, -1000, 30);
    EXPECT_THAT(edges(layout), ElementsAre(0, 20, 50, 220, 320));
    layout.dragDivider(1, 1000, 30);
    EXPECT_THAT(edges(layout), ElementsAre(0, 20, 190, 220, 320));
    layout.setSize({620, 50}, 20); // the shares stay what they are
    EXPECT_THAT(edges(layout), ElementsAre(0, 20, 360, 420, 620));
}

TEST(GridLayoutTests, OnlyEdgesBetweenColumnsThatShareAreDragged)
{
    const GridLayout layout = fiveRows();
    EXPECT_EQ(layout.dividerAt(119, 3), 1);
    EXPECT_EQ(layout.dividerAt(123, 3), 1);
    for (const int x : {0, 20, 116, 124, 320})
        EXPECT_EQ(layout.dividerAt(x, 3), none) << x;
}

TEST(GridLayoutTests, APointIsInTheCellThatIsSeenThere)
{
    GridLayout layout = fiveRows();
    EXPECT_EQ(layout.at({0, 0}), (Cell{0, 0}));
    EXPECT_EQ(layout.at({119, 10}), (Cell{1, 1}));
    EXPECT_EQ(layout.at({120, 24}), (Cell{1, 2}));
    layout.scrollTo(20);
    EXPECT_EQ(layout.at({120, 9}), (Cell{0, 2}));
    EXPECT_EQ(layout.at({120, 10}), (Cell{2, 2}));
    EXPECT_EQ(layout.at({320, 10}), (Cell{2, none}));
    EXPECT_EQ(layout.at({-1, 300}), (Cell{none, none}));
}

TEST(GridLayoutTests, ScrollingEndsWithTheLastRow)
{
    GridLayout layout = fiveRows();
    EXPECT_EQ(layout.page(), 40);
    EXPECT_EQ(layout.range(), 75);
    layout.scrollTo(1000);
    EXPECT_EQ(layout.position(), 35);
    layout.scrollTo(-1);
    EXPECT_EQ(layout.position(), 0);
    layout.setSize({320, 500}, 20);
    layout.scrollTo(10);
    EXPECT_EQ(layout.position(), 0);
}

TEST(GridLayoutTests, ARowIsShownWithAsLittleScrollingAsPossible)
{
    GridLayout layout = fiveRows();
    EXPECT_EQ(layout.positionFor(1), 0);
    EXPECT_EQ(layout.positionFor(3), 5);
    EXPECT_EQ(layout.positionFor(5), 35);
    layout.scrollTo(35);
    EXPECT_EQ(layout.positionFor(5), 35);
    EXPECT_EQ(layout.positionFor(2), 15);
    layout.setHeight(3, 100);
    EXPECT_EQ(layout.positionFor(3), 30); // its upper part
}

TEST(GridLayoutTests, APageLeadsAtLeastToTheNextRow)
{
    GridLayout layout = fiveRows();
    EXPECT_EQ(layout.pageFrom(1, false), 3);
    EXPECT_EQ(layout.pageFrom(5, true), 3);
    layout.setHeight(3, 100);
    EXPECT_EQ(layout.pageFrom(3, false), 4);
    EXPECT_EQ(layout.pageFrom(4, true), 3);
}

TEST(GridLayoutTests, TheNearestCellIsNoneOfTheFixedOnes)
{
    const GridLayout layout = fiveRows();
    EXPECT_EQ(layout.nearest({0, 0}), (Cell{1, 1}));
    EXPECT_EQ(layout.nearest({99, 99}), (Cell{5, 2}));
    EXPECT_EQ(GridLayout(1, 1, {1}).nearest({3, 3}), (Cell{1, 1}));
}

TEST(GridLayoutTests, WhateverHeightsChangeTheRowsStayOneBelowTheOther)
{
    std::mt19937 random(20261122);
    const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    GridLayout layout(1, 0, {1});
    layout.setHeight(0, 10);
    std::vector<int> heights(1, 10);
    for (int step = 0; step < 20000; ++step)
    {
        if (below(50) == 0)
        {
            heights.resize(static_cast<std::size_t>(1 + below(60)), 12);
            layout.setRows(static_cast<int>(heights.size()), 12);
        }
        const int row = below(layout.rows());
        heights[static_cast<std::size_t>(row)] = 1 + below(40);
        layout.setHeight(row, heights[static_cast<std::size_t>(row)]);
        const int asked = below(layout.rows() + 1);
        ASSERT_EQ(layout.top(asked), std::accumulate(heights.begin(), heights.begin() + asked, 0));
    }
}

} // namespace korvane::test
