// What activities and link groups are to be after an edit or a move, told step by step: where a step fails, what came
// before it stays.
#pragma once

#include "tests/support/RecordingData.h"

#include <functional>
#include <list>

namespace korvane::test
{

enum class Ending
{
    done,
    failed, ///< by a failure of the data layer
    refused ///< the activity is no longer there
};

class LinkGroupModel
{
public:
    struct Group
    {
        bool linked = false;
        std::vector<Event> members; ///< without ids

        std::set<long> names() const;
    };

    /// What the user has chosen in the activity dialog.
    struct Edit
    {
        long instance;
        std::vector<long> booked;
        std::vector<long> chosen;
        long primary;
        ActivityValues values;
        std::optional<Rule> rule;
    };

    /// What the user has done with the mouse.
    struct Move
    {
        long instance = 0;
        long source = 0;
        long target = 0;
        bool all = false;
        ActivityValues values;
    };

    /// @param failing the step that fails, counted from 0; -1 for none.
    Ending add(const Edit& edit, int failing);
    Ending change(Group& group, const Edit& edit, int failing);
    Ending remove(Group& group, long instance, int failing);
    Ending move(Group& group, const Move& move, int failing);
    Ending copy(const Move& move, int failing);

    /// Each group as a text, in no particular order of meaning.
    std::vector<std::string> shown() const;

    std::list<Group> groups;

private:
    using Steps = std::vector<std::function<bool()>>;

    static void synchronise(Steps& steps, Group& group, const Edit& edit);
    static bool writeRule(Group& group, const std::optional<Rule>& rule);
    Ending run(const Steps& steps, int failing);
};

/// One or more activities that belong together, as a text without ids.
std::string shownGroup(bool linked, const std::vector<Event>& members);

} // namespace korvane::test
