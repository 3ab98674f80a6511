// The information rows while they are edited, without a window.
#include "messages/InfoRows.h"

#include "framework/com/Failure.h"
#include "tests/messages/InfoTable.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;
using Texts = InfoTexts;

InfoRows rowsOf(const Texts& texts)
{
    InfoRows rows;
    rows.assign(infoOf(texts));
    return rows;
}

Texts textsOf(const InfoRows& rows)
{
    Texts texts;
    for (int row = 0; row < rows.count(); ++row)
        texts.emplace_back(rows.text(row, InfoRows::labels), rows.text(row, InfoRows::values));
    return texts;
}

/// The labels alone, the last one too.
std::vector<std::wstring> labelsOf(const InfoRows& rows)
{
    std::vector<std::wstring> labels;
    for (const auto& [label, value] : textsOf(rows))
        labels.push_back(label);
    return labels;
}

} // namespace

TEST(InfoRowsTests, WithoutRowsThereIsOneToAddTo)
{
    InfoRows rows;
    EXPECT_THAT(textsOf(rows), ElementsAre(std::pair(L"", L"")));
    rows.assign(Variant());
    EXPECT_THAT(textsOf(rows), ElementsAre(std::pair(L"", L"")));
}

TEST(InfoRowsTests, RowsAreTakenWithABlankOneBehind)
{
    EXPECT_THAT(textsOf(rowsOf({{L"Home", L"1"}, {L"Fax", L"2\r\n3"}})),
                ElementsAre(std::pair(L"Home", L"1"), std::pair(L"Fax", L"2\r\n3"), std::pair(L"", L"")));
}

TEST(InfoRowsTests, WhatIsNoTableIsRefusedAndLeavesTheRows)
{
    InfoRows rows = rowsOf({{L"Home", L"1"}});
    EXPECT_THROW(rows.assign(Variant(5L)), Failure);
    EXPECT_THAT(labelsOf(rows), ElementsAre(L"Home", L""));
}

TEST(InfoRowsTests, TheArrayHasTheBlankRowToo)
{
    const TextTable table(rowsOf({{L"Home", L"1"}}).toArray().get());
    ASSERT_EQ(table.rows(), 2U);
    ASSERT_EQ(table.columns(), 2U);
    EXPECT_EQ(table.at(0, 0), L"Home");
    EXPECT_EQ(table.at(1, 0), L"1");
    EXPECT_EQ(table.at(0, 1), L"");
    EXPECT_EQ(table.at(1, 1), L"");
}

TEST(InfoRowsTests, WritingIntoTheLastRowAddsAnother)
{
    InfoRows rows = rowsOf({{L"Home", L"1"}});
    rows.setText(0, InfoRows::values, L"2");
    EXPECT_EQ(rows.count(), 2);
    rows.setText(1, InfoRows::labels, L"Fax");
    EXPECT_THAT(textsOf(rows),
                ElementsAre(std::pair(L"Home", L"2"), std::pair(L"Fax", L""), std::pair(L"", L"")));
    rows.setText(2, InfoRows::values, L""); // also an empty text
    EXPECT_EQ(rows.count(), 4);
}

TEST(InfoRowsTests, ARowMovesAndTheOthersKeepTheirOrder)
{
    InfoRows rows = rowsOf({{L"a", L""}, {L"b", L""}, {L"c", L""}, {L"d", L""}});
    EXPECT_EQ(rows.move(0, 2), 2);
    EXPECT_THAT(labelsOf(rows), ElementsAre(L"b", L"c", L"a", L"d", L""));
    EXPECT_EQ(rows.move(3, 0), 0);
    EXPECT_THAT(labelsOf(rows), ElementsAre(L"d", L"b", L"c", L"a", L""));
    EXPECT_EQ(rows.move(1, 1), 1);
    EXPECT_THAT(labelsOf(rows), ElementsAre(L"d", L"b", L"c", L"a", L""));
}

TEST(InfoRowsTests, ARowMovesNoFurtherThanToTheEnds)
{
    InfoRows rows = rowsOf({{L"a", L""}, {L"b", L""}, {L"c", L""}});
    EXPECT_EQ(rows.move(0, -1), 0);
    EXPECT_EQ(rows.move(1, 3), 2); // to the blank row: before it
    EXPECT_THAT(labelsOf(rows), ElementsAre(L"a", L"c", L"b", L""));
    EXPECT_EQ(rows.move(0, 4711), 2);
    EXPECT_EQ(rows.move(2, -4711), 0);
    EXPECT_THAT(labelsOf(rows), ElementsAre(L"a", L"c", L"b", L""));
}

TEST(InfoRowsTests, TheBlankRowStaysTheLast)
{
    InfoRows rows = rowsOf({{L"a", L""}, {L"b", L""}});
    for (const int target : {0, 1, 2, 3})
        EXPECT_EQ(rows.move(2, target), 2);
    EXPECT_THAT(labelsOf(rows), ElementsAre(L"a", L"b", L""));
    InfoRows alone;
    EXPECT_EQ(alone.move(0, 0), 0);
    EXPECT_EQ(alone.move(0, 1), 0);
    EXPECT_EQ(alone.count(), 1);
}

// Edits and moves at random against a plain vector, in which a row is taken out and put in.
TEST(InfoRowsTests, WhateverIsEditedAndMovedTheRowsAreThoseOfAVector)
{
    std::mt19937 random(20261122);
    const auto below = [&](std::size_t end) { return static_cast<int>(random() % end); };
    InfoRows rows;
    Texts model(1);
    for (int step = 0; step < 100000; ++step)
    {
        if (model.size() > 200)
        {
            model.assign(1, {});
            rows.assign(Variant());
        }
        const int row = below(model.size());
        auto& entry = model[static_cast<std::size_t>(row)];
        if (below(3) == 0)
        {
            const std::wstring text = std::to_wstring(below(1000));
            const bool isLabel = below(2) == 0;
            (isLabel ? entry.first : entry.second) = text;
            rows.setText(row, isLabel ? InfoRows::labels : InfoRows::values, text);
            if (row + 1 == static_cast<int>(model.size()))
                model.emplace_back();
        }
        else
        {
            const int target = below(model.size() + 4) - 2;
            int landed = row;
            if (row + 1 < static_cast<int>(model.size()))
            {
                landed = std::clamp(target, 0, static_cast<int>(model.size()) - 2);
                const auto taken = entry;
                model.erase(model.begin() + row);
                model.insert(model.begin() + landed, taken);
            }
            ASSERT_EQ(rows.move(row, target), landed);
        }
        ASSERT_EQ(rows.count(), static_cast<int>(model.size()));
        if (step % 100 == 0)
        {
            ASSERT_EQ(textsOf(rows), model) << step;
        }
        const int asked = below(model.size());
        ASSERT_EQ(rows.text(asked, InfoRows::labels), model[static_cast<std::size_t>(asked)].first);
        ASSERT_EQ(rows.text(asked, InfoRows::values), model[static_cast<std::size_t>(asked)].second);
    }
}

} // namespace korvane::test
