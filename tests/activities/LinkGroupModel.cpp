#include "tests/activities/LinkGroupModel.h"

#include <algorithm>

namespace korvane::test
{

namespace
{

using Names = std::vector<long>;

bool isIn(const Names& names, long id)
{
    return std::find(names.begin(), names.end(), id) != names.end();
}

Event booked(long nameId, const ActivityValues& values)
{
    return {0, nameId, values.typeId, values.t0, values.t1, values.text};
}

Names without(const Names& names, const Names& others)
{
    Names result;
    std::copy_if(names.begin(), names.end(), std::back_inserter(result),
                 [&](long id) { return !isIn(others, id); });
    return result;
}

} // namespace

std::set<long> LinkGroupModel::Group::names() const
{
    std::set<long> result;
    for (const Event& member : members)
        result.insert(member.nameId);
    return result;
}

Ending LinkGroupModel::run(const Steps& steps, int failing)
{
    Ending ending = Ending::done;
    for (const auto& step : steps)
    {
        if (failing-- == 0)
            ending = Ending::failed;
        else if (!step())
            ending = Ending::refused;
        if (ending != Ending::done)
            break;
    }
    std::erase_if(groups, [](const Group& group) { return group.members.empty(); });
    return ending;
}

bool LinkGroupModel::writeRule(Group& group, const std::optional<Rule>& rule)
{
    for (Event& member : group.members)
        member.rule = rule;
    return !group.members.empty();
}

// Whoever is chosen ends up booked, with one activity each, linked when they are several. Two habits of the command
// stand out: where the resource that was chosen last has been taken back, nobody is added; and a single activity
// goes over to another resource without a link group.
void LinkGroupModel::synchronise(Steps& steps, Group& group, const Edit& edit)
{
    const bool primaryLost = !edit.chosen.empty() && !isIn(edit.chosen, edit.primary);
    const Names added = primaryLost ? Names() : without(edit.chosen, edit.booked);
    const Names removed = without(edit.booked, edit.chosen);
    const bool becomesLinked = edit.booked.size() < 2 && edit.chosen.size() > 1;

    if (becomesLinked)
        steps.emplace_back([&group] {
            group.linked = true;
            return true;
        });
    if (!added.empty())
        steps.emplace_back([&group, added] {
            for (const long id : added)
                if (group.linked)
                {
                    group.members.push_back(group.members.front());
                    group.members.back().nameId = id;
                }
            return true;
        });
    if ((group.linked || becomesLinked) && !removed.empty())
        steps.emplace_back([&group, removed] {
            std::erase_if(group.members, [&](const Event& member) { return isIn(removed, member.nameId); });
            if (group.members.empty())
                group.linked = false;
            return true;
        });
    if (edit.chosen.size() == 1 && edit.booked.size() > 1)
        steps.emplace_back([&group] {
            group.linked = false;
            return !group.members.empty();
        });
}

Ending LinkGroupModel::add(const Edit& edit, int failing)
{
    Group& group = groups.emplace_back();
    Edit addition = edit;
    addition.instance = 0;
    addition.booked = {edit.primary}; // it is booked first, whatever is chosen

    Steps steps{[&] {
        group.members.push_back(booked(edit.primary, edit.values));
        return true;
    }};
    synchronise(steps, group, addition);
    const auto rule = [&] { return writeRule(group, edit.rule); };
    steps.emplace_back(rule);
    if (edit.rule)
        steps.emplace_back(rule);
    return run(steps, failing);
}

Ending LinkGroupModel::change(Group& group, const Edit& edit, int failing)
{
    // A primary resource that is no longer chosen gives way to the first that is.
    const bool primaryLost = !edit.chosen.empty() && !isIn(edit.chosen, edit.primary);
    const long primary = primaryLost ? edit.chosen.front() : edit.primary;

    Steps steps;
    synchronise(steps, group, edit);
    steps.emplace_back([&, primary] {
        for (Event& member : group.members)
            member.write(edit.instance, group.linked ? member.nameId : primary, edit.values);
        return !group.members.empty();
    });
    // The rule of a single activity does not change with one of its occurrences; that of linked ones is written anew.
    const bool endsLinked =
        (group.linked || edit.chosen.size() > 1) && (edit.chosen.size() != 1 || edit.booked.size() <= 1);
    if (endsLinked || edit.instance == 0)
        steps.emplace_back([&] { return writeRule(group, edit.rule); });
    return run(steps, failing);
}

Ending LinkGroupModel::remove(Group& group, long instance, int failing)
{
    return run({[&] {
                   if (instance == 0)
                       group.members.clear();
                   for (Event& member : group.members)
                       member.removeOccurrence(instance);
                   return true;
               }},
               failing);
}

Ending LinkGroupModel::move(Group& group, const Move& move, int failing)
{
    const auto isSource = [&](const Event& member) { return member.nameId == move.source; };
    if (group.linked && move.all)
        return run({[&] {
                       for (Event& member : group.members)
                           member.write(move.instance, member.nameId, move.values);
                       return true;
                   }},
                   failing);

    Group* moved = &group;
    Steps steps;
    if (group.linked && move.instance == 0)
        steps.emplace_back([&] {
            const auto member = std::find_if(group.members.begin(), group.members.end(), isSource);
            moved = &groups.emplace_back(Group{false, {*member}});
            group.members.erase(member);
            group.linked = group.members.size() > 1; // one that is left alone is single, too
            return true;
        });
    steps.emplace_back([&] {
        std::find_if(moved->members.begin(), moved->members.end(), isSource)
            ->write(move.instance, move.target, move.values);
        return true;
    });
    return run(steps, failing);
}

Ending LinkGroupModel::copy(const Move& move, int failing)
{
    return run({[&] {
                   groups.push_back({false, {booked(move.target, move.values)}});
                   return true;
               }},
               failing);
}

std::vector<std::string> LinkGroupModel::shown() const
{
    std::vector<std::string> result;
    for (const Group& group : groups)
        result.push_back(shownGroup(group.linked, group.members));
    std::sort(result.begin(), result.end());
    return result;
}

std::string shownGroup(bool linked, const std::vector<Event>& members)
{
    std::vector<std::string> activities;
    activities.reserve(members.size());
    for (const Event& member : members)
        activities.push_back(shownValues(member.nameId, member.values()) + ' ' + shownRule(member.rule) +
                             shownOccurrences(member));
    std::sort(activities.begin(), activities.end());
    std::string result = linked ? "linked" : "single";
    for (const std::string& activity : activities)
        result += " [" + activity + ']';
    return result;
}

} // namespace korvane::test
