#include "demo/datalayer/Sample.h"

#include "demo/datalayer/Errors.h"
#include "demo/datalayer/Rights.h"

namespace korvane::store
{

namespace
{

// Colors are 0xBBGGRR. The employee's account is Emily's. Dates count from 30 December 1899.
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
    INSERT INTO accounts (login, role) VALUES ('andrea', 2), ('ben', 3) ON CONFLICT DO NOTHING;
    UPDATE names SET account = accounts.id
      FROM (VALUES ('Andrea Lindner', 'andrea'), ('Ben Carter', 'ben'), ('Emily Stone', 'employee'))
      JOIN accounts ON accounts.login = column2
     WHERE names.name = column1;
    UPDATE names SET sync_login = 'andrea' WHERE name = 'Andrea Lindner';

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

    INSERT INTO info (name_id, label, position, value)
        SELECT names.id, column2, column3, column4
          FROM (VALUES
                    ('Andrea Lindner', 'Mobile', 0, '555 0142'),
                    ('Andrea Lindner', 'Office', 1, 'Building 2, room 114'),
                    ('Emily Stone', 'Mobile', 0, '555 0177'),
                    ('Van', 'Number plate', 0, 'KV 471'),
                    ('Van', 'Key', 1, 'Reception,' || char(13, 10) || 'second drawer'))
          JOIN names ON names.name = column1;

    INSERT INTO messages (name_id, writer, time, phone, contact, about, kind)
        SELECT names.id, 'Ben Carter', julianday(date('now', 'localtime')) - julianday('1899-12-30') + column2,
               column3, column4, column5, column6
          FROM (VALUES
                    ('Emily Stone', 0.37, '555 0190', 'Ms Ortega, Northside Print',
                     'The brochures are ready to be picked up.', 2),
                    ('Emily Stone', 0.41, '', 'Reception', 'A parcel has come for you.', 4),
                    ('Andrea Lindner', 0.39, '555 0113', 'Mr Hale', 'The training on Thursday', 3))
          JOIN names ON names.name = column1;
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
    if (!Rights(store).toGroup(0).add)
        throw refusal(Code::mayNotAddGroups);
    if (Statement(connection, "SELECT 1 FROM names WHERE id > 1").next())
        throw refusal(Code::hasNamesAlready);
    connection.execute(script);
    transaction.commit();
}

} // namespace korvane::store
