#include "demo/host/tour/GroupSights.h"

namespace korvane::host
{

GroupRow& rowOf(std::vector<GroupRow>& rows, std::wstring_view name)
{
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const GroupRow& row) { return row.name == name; });
    expect(found != rows.end(), L"a group " + quoted(std::wstring(name)) + L" in the database");
    return *found;
}

void selectGroup(Visitor& visitor, Text name)
{
    auto rows = visitor.groups();
    const GroupRow& wanted = rowOf(rows, name);
    const auto row = static_cast<int>(&wanted - rows.data());
    waitFor(quoted(name) + L" is in the window's list",
            [&] { return itemOf(visitor.list(), row, 0) == name; });
    visitor.clickAt(visitor.list(), middleOf(visitor.list(), placeOfRow(visitor.list(), row)),
                    quoted(name) + L" in the window's list");
    waitFor(L"the row is selected", [&] {
        long selected = 0;
        visitor.window().invoke([&] { selected = visitor.window().content().selected(); });
        return selected == wanted.id;
    });
}

} // namespace korvane::host
