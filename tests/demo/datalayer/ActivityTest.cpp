#include "tests/demo/datalayer/ActivityTest.h"

namespace korvane::store::test
{

namespace
{

constexpr const char* setUp =
    "INSERT INTO groups (id, name, flags, position) VALUES (4, 'Staff', 3, 4), (5, 'Vehicles', 3, 5);"
    "INSERT INTO names (id, name, color, account) VALUES"
    " (2, 'Anna', 255, NULL), (3, 'Bert', 0, NULL), (4, 'Carla', 0, 2), (5, 'Van', 65280, NULL);"
    "INSERT INTO group_names (group_id, name_id, position) VALUES (4, 2, 1), (4, 3, 2), (4, 4, 3), (5, 5, 1);"
    "INSERT INTO types (id, name, color) VALUES (1, 'Meeting', 16711680), (2, 'Travel', 0)";

} // namespace

ActivityTest::ActivityTest()
{
    open();
    sql(setUp);
    desk.emplace(open());
    ignoreTrace();
}

void ActivityTest::TearDown()
{
    desk.reset();
    DataLayerTest::TearDown();
}

Link ActivityTest::three() const
{
    const Link link = desk->create(desk->add(meeting()));
    desk->addNames(link, {bert, van});
    return link;
}

std::wstring ActivityTest::content() const
{
    return sqlText(
        "SELECT group_concat(line, x'0a') FROM ("
        " SELECT concat_ws(',', id, name_id, type_id, t0, t1, text, 'link', link, 'rule', kind, interval,"
        "                  count, anchor) AS line FROM events"
        " UNION ALL"
        " SELECT concat_ws(',', event_id, instance, removed, name_id, type_id, t0, t1, text)"
        "   FROM exceptions)");
}

} // namespace korvane::store::test
