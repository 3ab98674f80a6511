// The rows of activities and of their occurrences. Nothing is checked here.
#pragma once

#include "demo/datalayer/Activity.h"
#include "demo/datalayer/Sqlite.h"

#include <optional>

namespace korvane::store
{

/// The columns of an activity, as Statement gives them from a column on.
inline constexpr int activityColumns = 5; ///< name_id, type_id, t0, t1, text
Activity activityOf(const Statement& row, int column);

/// The columns kind, interval, count and anchor; empty without a kind.
std::optional<Rule> ruleOf(const Statement& row, int column);

class EventRows
{
public:
    explicit EventRows(const Connection& connection) : connection_(connection) {}

    std::optional<Activity> find(long event) const;

    /// One occurrence, or the activity as a whole for instance 0. An occurrence that was edited by itself counts
    /// as long as the rule has its number, wherever the series is by now.
    std::optional<Activity> occurrence(long event, long instance) const;

    std::optional<Rule> rule(long event) const;

    long insert(const Activity& activity);
    void write(long event, const Activity& activity);
    void writeRule(long event, const std::optional<Rule>& rule);

    // An occurrence by itself; what is written stays when the series changes.
    void writeOccurrence(long event, long instance, const Activity& activity);
    void removeOccurrence(long event, long instance);

    void erase(long event);

private:
    const Connection& connection_;
};

} // namespace korvane::store
