#include "demo/datalayer/Rights.h"

namespace korvane::store
{

Rights rightsTo(long group, long account, const Connection& connection)
{
    Statement statement(connection,
                        "SELECT roles.may_add,"
                        "       roles.may_delete OR coalesce(role_groups.may_delete, 0),"
                        "       roles.may_change OR coalesce(role_groups.may_change, 0)"
                        "  FROM accounts"
                        "  JOIN roles ON roles.id = accounts.role"
                        "  LEFT JOIN role_groups ON role_groups.role = roles.id AND role_groups.group_id = ?1"
                        " WHERE accounts.id = ?2",
                        group, account);
    if (!statement.next())
        return {}; // the account is gone
    return {statement.flag(0), statement.flag(1), statement.flag(2)};
}

BookingRights bookingRights(long account, const Connection& connection)
{
    Statement statement(connection,
                        "SELECT roles.may_create_for_others, roles.may_edit_for_others"
                        "  FROM accounts JOIN roles ON roles.id = accounts.role"
                        " WHERE accounts.id = ?",
                        account);
    if (!statement.next())
        return {}; // the account is gone
    return {statement.flag(0), statement.flag(1)};
}

bool isOwnName(long name, long account, const Connection& connection)
{
    return Statement(connection, "SELECT 1 FROM names WHERE id = ? AND account = ?", name, account).next();
}

} // namespace korvane::store
