#include "demo/datalayer/Sample.h"

#include "demo/datalayer/Errors.h"
#include "demo/datalayer/Rights.h"

namespace korvane::store
{

namespace
{

// Colors are 0xBBGGRR. The employee's account is Emily's.
constexpr const char* script = R"(
    INSERT INTO groups (name, flags, position)
        SELECT column1, 3, column2 + (SELECT max(position) FROM groups)
          FROM (VALUES ('Staff', 1), ('Vehicles', 2), ('Rooms', 3)) WHERE true
        ON CONFLICT (name) DO NOTHING;

    INSERT INTO types (name, color) VALUES
        ('Meeting', 0xD59B5B),
        ('Training', 0x47AD70),
        ('Holiday', 0x3CC2F5),
        ('Service', 0x5F5FD9),
        ('Travel', 0xC37C8E)
        ON CONFLICT (name) DO NOTHING;

    INSERT INTO names (name, color) VALUES
        ('Andrea Lindner', 0xC8A078), ('Ben Carter', 0x7FB77E), ('Emily Stone', 0x7A9FE0),
        ('Jonas Weber', 0xB48CC8), ('Maria Costa', 0x8FC1D4), ('Paul Martin', 0),
        ('Van', 0), ('Estate car', 0), ('Forklift', 0),
        ('Conference room', 0), ('Training room', 0), ('Workshop', 0);
    UPDATE names SET account = (SELECT id FROM accounts WHERE login = 'employee') WHERE name = 'Emily Stone';

    -- Paul drives, and is booked with the vehicles too.
    INSERT INTO group_names (group_id, name_id, position)
        SELECT groups.id, names.id, names.id
          FROM (VALUES
                    ('Staff', 'Andrea Lindner'), ('Staff', 'Ben Carter'), ('Staff', 'Emily Stone'),
                    ('Staff', 'Jonas Weber'), ('Staff', 'Maria Costa'), ('Staff', 'Paul Martin'),
                    ('Vehicles', 'Van'), ('Vehicles', 'Estate car'), ('Vehicles', 'Forklift'),
                    ('Vehicles', 'Paul Martin'),
                    ('Rooms', 'Conference room'), ('Rooms', 'Training room'), ('Rooms', 'Workshop'))
          JOIN groups ON groups.name = column1
          JOIN names ON names.name = column2;

    -- The staff has all types.
    INSERT INTO group_types (group_id, type_id, position)
        SELECT groups.id, types.id, types.id
          FROM (VALUES
                    ('Vehicles', 'Service'), ('Vehicles', 'Travel'),
                    ('Rooms', 'Meeting'), ('Rooms', 'Training'), ('Rooms', 'Service'))
          JOIN groups ON groups.name = column1
          JOIN types ON types.name = column2
         WHERE true
        ON CONFLICT DO NOTHING;
)";

Failure refusal(Code code)
{
    return error(code, L"Database");
}

} // namespace

void addSample(Store& store)
{
    Connection& connection = store.connection();
    Transaction transaction(connection);
    if (!rightsTo(0, store.account(), connection).add)
        throw refusal(Code::mayNotAddGroups);
    if (Statement(connection, "SELECT 1 FROM names WHERE id > 1").next())
        throw refusal(Code::hasNamesAlready);
    connection.execute(script);
    transaction.commit();
}

} // namespace korvane::store
