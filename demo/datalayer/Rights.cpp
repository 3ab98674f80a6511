#include "demo/datalayer/Rights.h"

#include "demo/datalayer/BuiltIn.h"

namespace korvane::store
{

Rights::Group Rights::toGroup(long group) const
{
    Statement row(store_.connection(),
                  "SELECT roles.may_add,"
                  "       roles.may_delete OR coalesce(role_groups.may_delete, 0),"
                  "       roles.may_change OR coalesce(role_groups.may_change, 0)"
                  "  FROM accounts"
                  "  JOIN roles ON roles.id = accounts.role"
                  "  LEFT JOIN role_groups ON role_groups.role = roles.id AND role_groups.group_id = ?2"
                  " WHERE accounts.id = ?1",
                  store_.account(), group);
    if (!row.next())
        return {}; // the account is gone
    return {row.flag(0), row.flag(1), row.flag(2) || coversGroup(group)};
}

bool Rights::coversGroup(long group) const
{
    if (isBuiltInGroup(group))
        return false;
    const long reached = reach();
    return reached == everything ||
           (reached == ownGroups && holds("SELECT 1 FROM names JOIN group_names ON name_id = names.id"
                                          " WHERE account = ?1 AND group_id = ?2",
                                          group));
}

bool Rights::coversAnyGroup() const
{
    const long reached = reach();
    return reached == everything ||
           (reached == ownGroups && holds("SELECT 1 FROM names JOIN group_names ON name_id = names.id"
                                          " WHERE account = ?1"));
}

bool Rights::coversName(long name) const
{
    if (name == builtInName)
        return false;
    const long reached = reach();
    return reached == everything ||
           (reached == ownGroups &&
            holds("SELECT 1 FROM names JOIN group_names AS own ON own.name_id = names.id"
                  " WHERE account = ?1"
                  "   AND (own.group_id IN (SELECT group_id FROM group_names WHERE name_id = ?2)"
                  "        OR NOT EXISTS (SELECT 1 FROM group_names WHERE name_id = ?2))",
                  name));
}

bool Rights::coversType(long type) const
{
    if (type == builtInType)
        return false;
    const long reached = reach();
    return reached == everything ||
           (reached == ownGroups && coversAnyGroup() &&
            !holds("SELECT 1 FROM group_types WHERE type_id = ?2 AND group_id NOT IN"
                   " (SELECT group_id FROM names JOIN group_names ON name_id = names.id WHERE account = ?1)",
                   type));
}

bool Rights::isRole(long role) const
{
    return Statement(store_.connection(), "SELECT 1 FROM roles WHERE id = ?", role).next();
}

bool Rights::coversRole(long role) const
{
    return holds("SELECT 1 FROM accounts JOIN roles AS own ON own.id = accounts.role"
                 "  JOIN roles AS other ON other.id = ?2"
                 " WHERE accounts.id = ?1 AND own.reach >= other.reach",
                 role);
}

bool Rights::mayEditName(long name) const
{
    return coversName(name) || (name != builtInName && reach() >= ownName &&
                                holds("SELECT 1 FROM names WHERE account = ?1 AND id = ?2", name));
}

bool Rights::mayEditAnyName() const
{
    return coversAnyGroup() || (reach() >= ownName && holds("SELECT 1 FROM names WHERE account = ?1"));
}

bool Rights::mayBookForAll() const
{
    return holds("SELECT 1 FROM accounts JOIN roles ON roles.id = accounts.role"
                 " WHERE accounts.id = ?1 AND may_create_for_others");
}

bool Rights::mayEditForAll() const
{
    return holds("SELECT 1 FROM accounts JOIN roles ON roles.id = accounts.role"
                 " WHERE accounts.id = ?1 AND may_edit_for_others");
}

long Rights::reach() const
{
    Statement row(store_.connection(),
                  "SELECT reach FROM accounts JOIN roles ON roles.id = accounts.role WHERE accounts.id = ?",
                  store_.account());
    return row.next() ? row.number(0) : 0; // the account may be gone
}

} // namespace korvane::store
