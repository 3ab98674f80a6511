// What an arrange command holds, without the command.
#include "masterdata/Arrangement.h"

#include <gtest/gtest.h>

namespace korvane::test
{

TEST(ItemTableTests, ItGrowsBySoMuchThatItSeldomMovesWhatItHolds)
{
    ItemTable table;
    table.clear();
    const ItemTable::Item* first = &table.at(0);
    int moves = 0;
    constexpr long many = 100'000;
    for (long id = 1; id <= many; ++id)
    {
        table.add(id, Bstr());
        const ItemTable::Item* const now = &table.at(0);
        moves += now != first;
        first = now;
    }
    EXPECT_EQ(table.count(), many);
    EXPECT_LE(moves, 40); // more than twice the powers of two until there
}

} // namespace korvane::test
