#include "demo/datalayer/Schema.h"

#include "demo/datalayer/Errors.h"

namespace korvane::store
{

namespace
{

constexpr long applicationId = 0x4B525644; // as in the script
constexpr long version = 3;

// Identifiers are 32-bit for all callers, and are not used again after a deletion.
constexpr const char* script = R"(
    PRAGMA application_id = 0x4B525644;

    CREATE TABLE roles (
        id INTEGER PRIMARY KEY,
        name TEXT NOT NULL COLLATE NOCASE UNIQUE,
        may_add INTEGER NOT NULL DEFAULT 0 CHECK (may_add IN (0, 1)),
        may_delete INTEGER NOT NULL DEFAULT 0 CHECK (may_delete IN (0, 1)),
        may_change INTEGER NOT NULL DEFAULT 0 CHECK (may_change IN (0, 1))
    );

    CREATE TABLE accounts (
        id INTEGER PRIMARY KEY AUTOINCREMENT CHECK (id BETWEEN 1 AND 2147483647),
        login TEXT NOT NULL COLLATE NOCASE UNIQUE,
        role INTEGER NOT NULL REFERENCES roles
    );

    CREATE TABLE groups (
        id INTEGER PRIMARY KEY AUTOINCREMENT CHECK (id BETWEEN 1 AND 2147483647),
        name TEXT NOT NULL COLLATE NOCASE UNIQUE CHECK (trim(name) <> ''),
        flags INTEGER NOT NULL,
        position INTEGER NOT NULL
    );

    CREATE TABLE role_groups (
        role INTEGER NOT NULL REFERENCES roles ON DELETE CASCADE,
        group_id INTEGER NOT NULL REFERENCES groups ON DELETE CASCADE,
        may_delete INTEGER NOT NULL DEFAULT 0 CHECK (may_delete IN (0, 1)),
        may_change INTEGER NOT NULL DEFAULT 0 CHECK (may_change IN (0, 1)),
        PRIMARY KEY (role, group_id)
    ) WITHOUT ROWID;

    CREATE TABLE settings (
        name TEXT NOT NULL COLLATE NOCASE PRIMARY KEY,
        value TEXT NOT NULL
    ) WITHOUT ROWID;

    INSERT INTO roles (id, name, may_add, may_delete, may_change) VALUES
        (1, 'Administrators', 1, 1, 1),
        (2, 'Employees', 0, 0, 0);
    INSERT INTO accounts (id, login, role) VALUES
        (1, 'admin', 1),
        (2, 'employee', 2);
    INSERT INTO groups (id, name, flags, position) VALUES
        (1, 'System', 1, 1),
        (2, 'All resources', 1, 2),
        (3, 'Unassigned', 1, 3);
)";

/// What the second version has besides.
constexpr const char* activities = R"(
    PRAGMA user_version = 2;

    ALTER TABLE roles ADD COLUMN
        may_create_for_others INTEGER NOT NULL DEFAULT 0 CHECK (may_create_for_others IN (0, 1));
    ALTER TABLE roles ADD COLUMN
        may_edit_for_others INTEGER NOT NULL DEFAULT 0 CHECK (may_edit_for_others IN (0, 1));
    UPDATE roles SET may_create_for_others = 1, may_edit_for_others = 1 WHERE id = 1;

    CREATE TABLE names (
        id INTEGER PRIMARY KEY AUTOINCREMENT CHECK (id BETWEEN 1 AND 2147483647),
        name TEXT NOT NULL CHECK (trim(name) <> ''),
        color INTEGER NOT NULL DEFAULT 0,
        account INTEGER UNIQUE REFERENCES accounts ON DELETE SET NULL
    );

    CREATE TABLE group_names (
        group_id INTEGER NOT NULL REFERENCES groups ON DELETE CASCADE,
        name_id INTEGER NOT NULL REFERENCES names ON DELETE CASCADE CHECK (name_id <> 1),
        position INTEGER NOT NULL,
        PRIMARY KEY (group_id, name_id)
    ) WITHOUT ROWID;

    CREATE TABLE types (
        id INTEGER PRIMARY KEY AUTOINCREMENT CHECK (id BETWEEN 0 AND 2147483647),
        name TEXT NOT NULL COLLATE NOCASE UNIQUE CHECK (trim(name) <> ''),
        color INTEGER NOT NULL DEFAULT 0
    );

    CREATE TABLE group_types (
        group_id INTEGER NOT NULL REFERENCES groups ON DELETE CASCADE,
        type_id INTEGER NOT NULL REFERENCES types ON DELETE CASCADE,
        position INTEGER NOT NULL,
        PRIMARY KEY (group_id, type_id)
    ) WITHOUT ROWID;

    -- The activities that are linked have the id of one of them as their link. Without a kind there is no rule.
    CREATE TABLE events (
        id INTEGER PRIMARY KEY AUTOINCREMENT CHECK (id BETWEEN 1 AND 2147483647),
        name_id INTEGER NOT NULL REFERENCES names,
        type_id INTEGER NOT NULL REFERENCES types,
        t0 REAL NOT NULL,
        t1 REAL NOT NULL CHECK (t1 >= t0),
        text TEXT NOT NULL,
        link INTEGER REFERENCES events,
        kind INTEGER CHECK (kind BETWEEN 1 AND 5),
        interval INTEGER CHECK (interval >= 0),
        count INTEGER CHECK (count >= 1),
        anchor INTEGER
    );
    CREATE INDEX events_by_time ON events (t0, t1);
    CREATE INDEX events_by_link ON events (link);

    -- Occurrences that were edited or removed by themselves.
    CREATE TABLE exceptions (
        event_id INTEGER NOT NULL REFERENCES events ON DELETE CASCADE,
        instance INTEGER NOT NULL CHECK (instance >= 1),
        removed INTEGER NOT NULL CHECK (removed IN (0, 1)),
        name_id INTEGER REFERENCES names,
        type_id INTEGER REFERENCES types,
        t0 REAL,
        t1 REAL CHECK (t1 >= t0),
        text TEXT,
        PRIMARY KEY (event_id, instance),
        CHECK (removed OR (name_id IS NOT NULL AND type_id IS NOT NULL AND t0 IS NOT NULL AND t1 IS NOT NULL
                           AND text IS NOT NULL))
    ) WITHOUT ROWID;
    CREATE INDEX exceptions_by_time ON exceptions (t0, t1);

    INSERT INTO names (id, name, account) VALUES (1, 'SuperUser', 1);
    INSERT INTO types (id, name, color) VALUES (0, 'Activity', 0xBFBFBF);
)";

/// What the third version has besides. The numbers of the roles are those that resources' logins have: all but the
/// first one move on by one, to make room for the manager.
constexpr const char* masterData = R"(
    PRAGMA user_version = 3;
    PRAGMA defer_foreign_keys = ON;

    UPDATE roles SET id = -1 - id WHERE id > 1;
    UPDATE roles SET id = -id WHERE id < 0;
    UPDATE accounts SET role = role + 1 WHERE role > 1;
    UPDATE role_groups SET role = -1 - role WHERE role > 1;
    UPDATE role_groups SET role = -role WHERE role < 0;
    UPDATE roles SET name = name || ' ' || id WHERE name IN ('Administrator', 'Manager', 'User', 'No User');
    UPDATE roles SET name = 'Administrator' WHERE id = 1;
    UPDATE roles SET name = 'User' WHERE id = 3;
    INSERT INTO roles (id, name) VALUES (2, 'Manager'), (-1, 'No User');

    -- How far a role reaches: 0 nowhere, 1 to the own resource, 2 to the groups that it is in, 3 everywhere.
    ALTER TABLE roles ADD COLUMN reach INTEGER NOT NULL DEFAULT 1 CHECK (reach BETWEEN 0 AND 3);
    UPDATE roles SET reach = 3 WHERE id = 1;
    UPDATE roles SET reach = 2 WHERE id = 2;
    UPDATE roles SET reach = 0 WHERE id = -1;

    -- The role is that of the account; a resource without one keeps its own.
    ALTER TABLE names ADD COLUMN flags INTEGER NOT NULL DEFAULT 2;
    ALTER TABLE names ADD COLUMN role INTEGER REFERENCES roles;
    ALTER TABLE names ADD COLUMN sync_login TEXT NOT NULL DEFAULT '';
    ALTER TABLE types ADD COLUMN flags INTEGER NOT NULL DEFAULT 3;
    CREATE INDEX group_names_by_name ON group_names (name_id);
    CREATE INDEX group_types_by_type ON group_types (type_id);

    CREATE TABLE info (
        name_id INTEGER NOT NULL REFERENCES names ON DELETE CASCADE,
        label TEXT NOT NULL,
        position INTEGER NOT NULL,
        value TEXT NOT NULL,
        PRIMARY KEY (name_id, label)
    ) WITHOUT ROWID;

    CREATE TABLE messages (
        id INTEGER PRIMARY KEY AUTOINCREMENT CHECK (id BETWEEN 1 AND 2147483647),
        name_id INTEGER NOT NULL REFERENCES names ON DELETE CASCADE,
        writer TEXT NOT NULL,
        time REAL NOT NULL,
        phone TEXT NOT NULL,
        contact TEXT NOT NULL,
        about TEXT NOT NULL,
        kind INTEGER NOT NULL CHECK (kind BETWEEN 1 AND 4),
        was_read INTEGER NOT NULL DEFAULT 0 CHECK (was_read IN (0, 1))
    );
    CREATE INDEX messages_by_name ON messages (name_id);
)";

long number(const Connection& connection, const char* sql)
{
    Statement statement(connection, sql);
    statement.next();
    return statement.number(0);
}

/// The version of the tables; 0 for an empty database.
long versionOf(const Connection& connection)
{
    const long application = number(connection, "PRAGMA application_id");
    if (application == 0 && number(connection, "SELECT count(*) FROM sqlite_schema") == 0)
        return 0;
    if (application != applicationId)
        throw error(Code::foreignDatabase, L"Database");
    const long found = number(connection, "PRAGMA user_version");
    if (found > version)
        throw error(Code::newerDatabase, L"Database");
    return found;
}

} // namespace

void prepareSchema(Connection& connection)
{
    if (versionOf(connection) == version)
        return;
    Transaction transaction(connection);
    const long found = versionOf(connection); // another user may have been quicker
    if (found < 1)
        connection.execute(script);
    if (found < 2)
        connection.execute(activities);
    if (found < version)
        connection.execute(masterData);
    transaction.commit();
}

} // namespace korvane::store
