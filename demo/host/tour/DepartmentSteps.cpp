#include "demo/host/tour/DepartmentSteps.h"

#include "demo/host/tour/ActivityPage.h"
#include "demo/host/tour/ArrangePage.h"
#include "demo/host/tour/GroupSights.h"
#include "demo/host/tour/ItemPage.h"
#include "demo/host/tour/Roster.h"
#include "demo/host/tour/ScheduleSights.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

using Names = std::vector<std::wstring>;

constexpr Text workshop = L"Workshop";
constexpr Text yard = L"Yard";
constexpr Text anna = L"Anna Berg";
constexpr Text tom = L"Tom Field";
constexpr Text kim = L"Kim Long";
constexpr Text lathe = L"Lathe";
constexpr Text drill = L"Drill";       // another host's
constexpr Text activity = L"Activity"; // built in, in every group
constexpr Text repair = L"Repair";
constexpr Text inspection = L"Inspection";

constexpr Text resourcesMenu = L"&Resources";
constexpr Text typesMenu = L"Activity &types";
constexpr Text arrangeMenu = L"Arra&nge";
constexpr Text groupTitle = L"Group";

constexpr COLORREF amber = RGB(0xFF, 0xCC, 0x00); // of the palette
constexpr COLORREF rust = RGB(183, 65, 14);       // of one's own

enum Role : long
{
    manager = 2,
    user = 3,
    noUser = -1
};

Names namesOf(const std::vector<RosterItem>& items)
{
    Names names;
    for (const RosterItem& item : items)
        names.push_back(item.name);
    return names;
}

// Sooner or later, this is what stands in the database.
constexpr Word hasResources{[](Visitor& visitor, Text group, const Names& names) {
    waitFor(std::to_wstring(names.size()) + L" resources are in " + group,
            [&] { return namesOf(visitor.roster().resources(group)) == names; });
}};
constexpr Word hasTypes{[](Visitor& visitor, Text group, const Names& names) {
    waitFor(std::to_wstring(names.size()) + L" activity types are in " + group,
            [&] { return namesOf(visitor.roster().types(group)) == names; });
}};
constexpr Word hasGroups{[](Visitor& visitor, const Names& names) {
    waitFor(L"the groups have another order", [&] {
        Names found = visitor.roster().groups();
        found.erase(found.begin(), found.end() - static_cast<std::ptrdiff_t>(names.size()));
        return found == names;
    });
}};
/// A resource of the workshop, with its login and role.
constexpr Word isKnownAs{
    [](Visitor& visitor, Text name, const std::wstring& login, long role, bool isSynchronised) {
        waitFor(name + std::wstring(L" has login, role and synchronisation"), [&] {
            const auto all = visitor.roster().resources(workshop);
            return std::any_of(all.begin(), all.end(), [&](const RosterItem& each) {
                return each.name == name && each.login == login && each.role == role &&
                       each.isSynchronised == isSynchronised;
            });
        });
    }};
constexpr Word hasColor{[](Visitor& visitor, bool isType, Text name, COLORREF color) {
    waitFor(name + std::wstring(L" has its colour"), [&] {
        const auto all = isType ? visitor.roster().types(workshop) : visitor.roster().resources(workshop);
        return std::any_of(all.begin(), all.end(), [&](const RosterItem& each) {
            return each.name == name && each.color == static_cast<long>(color);
        });
    });
}};
constexpr Word somebodyElseAdds{
    [](Visitor& visitor, Text group, Text name) { visitor.roster().add(group, name); }};
constexpr Word somebodyElseRemoves{
    [](Visitor& visitor, Text group, Text name) { visitor.roster().remove(group, name); }};
/// The schedule shows the resources in their order at once, also while a dialog is open.
constexpr Word showsRows{[](Visitor& visitor, const Names& names) {
    waitFor(L"the schedule shows what is in the database", [&] { return rowsOfSchedule(visitor) == names; });
}};

std::vector<std::wstring> shownRoster(const Visitor& visitor)
{
    std::vector<std::wstring> lines;
    const Roster roster = visitor.roster();
    for (const GroupRow& group : visitor.groups())
    {
        lines.push_back(shown(group));
        for (const RosterItem& item : roster.resources(group.name))
            lines.push_back(L"  " + shown(item));
        for (const RosterItem& item : roster.types(group.name))
            lines.push_back(L"  type " + shown(item));
    }
    return lines;
}

} // namespace

Chapter departmentChapter()
{
    using namespace itemPage;
    const auto newGroup = [](Text text) {
        const Field groupName{L"the name", L"Edit"};
        return std::vector<Deed>{press(L"Ctrl+N"), opens(groupTitle), enter(groupName, text),
                                 press(L"Enter"),  endsInList(),      selects(text)};
    };
    // clang-format off
    return {L"Setting up a department", {
        {L"A group", newGroup(workshop)},
        {L"People with logins, and a role that is refused without one: the dialog stays open",
         {choose(resourcesMenu, L"&New..."), opens(resourceTitle), picture(L"resource-new-empty"),
          fill(name, anna), chooseIn(role, L"Manager"), fill(login, L"anna"), click(synchronise),
          picture(L"resource-new"), saves(), isKnownAs(anna, L"anna", manager, true), showsRows(Names{anna}),
          fill(name, tom), chooseIn(role, L"User"), click(okButton),
          tellsError(L"You have selected to give the user authorization. This is only possible, if you enter a valid "
                     L"Login name.", L"resource-refused"),
          shows(name, tom), shows(role, L"User"), hasResources(workshop, Names{anna}),
          fill(login, L"tom"), saves(), isKnownAs(tom, L"tom", user, false),
          fill(name, kim), press(L"Enter"), shows(name, L""), isKnownAs(kim, L"", noUser, false)}},
        {L"A machine with a colour",
         {fill(name, lathe), click(swatch(L"#FFCC00")), picture(L"resource-colour"), saves(),
          hasColor(false, lathe, amber), showsRows(Names{anna, tom, kim, lathe}),
          press(L"Esc"), endsInList(), picture(L"department-window")}},
        {L"Activity types, one in a colour of its own",
         {choose(typesMenu, L"&New..."), opens(typeTitle), fill(name, repair), click(swatch(L"#FF88AA")),
          picture(L"type-new"), saves(), fill(name, inspection), mixes(rust, L"type-colours"), saves(),
          fill(name, L"Nothing"), saves(), hasTypes(workshop, Names{activity, repair, inspection, L"Nothing"}),
          hasColor(true, inspection, rust), press(L"Esc"), endsInList()}},
        {L"Edit: what was entered stays when others write, and is not lost without a question",
         {choose(resourcesMenu, L"&Edit..."), opens(resourceTitle), clickItem(list, kim), shows(name, kim),
          fill(name, L"Kim Young"), somebodyElseAdds(workshop, drill),
          offers(list, Names{anna, tom, kim, lathe, drill}), shows(name, L"Kim Young"),
          somebodyElseRemoves(workshop, drill), offers(list, Names{anna, tom, kim, lathe}),
          clickItem(list, lathe), opensBox(question), picture(L"resource-question"),
          answer(question, IDNO, L"No"), shows(name, L"Kim Young"), picture(L"resource-edit"), saves(),
          hasResources(workshop, Names{anna, tom, L"Kim Young", lathe}),
          showsRows(Names{anna, tom, L"Kim Young", lathe}),
          clickItem(list, L"Kim Young"), shows(name, L"Kim Young"), fill(name, kim), saves(),
          press(L"Esc"), endsInList(),
          choose(typesMenu, L"&Edit..."), opens(typeTitle), clickItem(list, repair), shows(name, repair),
          picture(L"type-edit"), press(L"Esc"), endsInList()}},
        {L"Another group, to which a resource is added that is there already",
         [&] {
             auto deeds = newGroup(yard);
             for (const Deed& deed : std::vector<Deed>{
                      choose(resourcesMenu, L"&New..."), opens(resourceTitle),
                      offers(list, Names{drill, anna, tom, kim, lathe}), clickItem(list, kim), shows(name, kim),
                      picture(L"resource-existing"), saves(), hasResources(yard, Names{kim}),
                      offers(list, Names{drill, anna, tom, lathe}), press(L"Esc"), endsInList()})
                 deeds.push_back(deed);
             return deeds;
         }()},
        {L"Removal from a group",
         {selects(workshop), choose(resourcesMenu, L"Remo&ve..."), opens(resourceTitle), clickItem(list, kim),
          shows(name, kim), picture(L"resource-remove"), saves(), hasResources(workshop, Names{anna, tom, lathe}),
          hasResources(yard, Names{kim}), press(L"Esc"), endsInList(),
          choose(typesMenu, L"&Remove..."), opens(typeTitle), clickItem(list, L"Nothing"), shows(name, L"Nothing"),
          picture(L"type-remove"), saves(), hasTypes(workshop, Names{activity, repair, inspection}),
          press(L"Esc"), endsInList(),
          choose(typesMenu, L"&New..."), opens(typeTitle), offers(list, Names{L"Nothing"}), picture(L"type-existing"),
          press(L"Esc"), endsInList()}},
        {L"The order of the groups, with keys",
         {choose(arrangeMenu, L"&Groups..."), opens(groupTitle), hasKeyboard(arrangePage::list),
          offers(arrangePage::list, Names{workshop, yard}), press(L"Alt+End"),
          offers(arrangePage::list, Names{yard, workshop}), press(L"Alt+Up"), press(L"Alt+Down"),
          picture(L"arrange-groups"), press(L"Enter"), endsInList(), hasGroups(Names{yard, workshop})}},
        {L"The order of the resources, by mouse, in a larger window",
         {selects(workshop), choose(arrangeMenu, L"&Resources of the group..."), opens(resourceTitle),
          arrangePage::enlarges(80), arrangePage::drags(lathe, anna),
          offers(arrangePage::list, Names{lathe, anna, tom}), picture(L"arrange-resources"),
          click(okButton), endsInList(), hasResources(workshop, Names{lathe, anna, tom}),
          showsRows(Names{lathe, anna, tom})}},
        {L"The order of the activity types, by buttons",
         {choose(arrangeMenu, L"Activity &types of the group..."), opens(typeTitle),
          clickItem(arrangePage::list, inspection), click(arrangePage::toTop),
          offers(arrangePage::list, Names{inspection, activity, repair}), click(arrangePage::toBottom),
          click(arrangePage::up), offers(arrangePage::list, Names{activity, inspection, repair}),
          picture(L"arrange-types"), click(okButton), endsInList(),
          hasTypes(workshop, Names{activity, inspection, repair})}},
        {L"Somebody who may not: the data layer refuses, and the dialog waits",
         {logInAs(L"tom"), picture(L"login-window"), choose(resourcesMenu, L"&New..."), opens(resourceTitle),
          fill(name, L"Nobody"), click(okButton), tellsError(L"You are not authorized", L"resource-forbidden"),
          shows(name, L"Nobody"), press(L"Esc"), endsInList(),
          press(L"Ctrl+N"), opens(groupTitle), enter(Field{L"the name", L"Edit"}, L"Nothing"), press(L"Enter"),
          tellsError(L"You are not authorized to add new groups.", L"group-forbidden"), press(L"Esc"), endsInList(),
          hasResources(workshop, Names{lathe, anna, tom}), logInAs(L"admin")}},
        {L"Booking with what was set up",
         {selects(workshop), goesTo(lathe, tourTime(0, 10)), openSlot(lathe, tourTime(0, 10)),
          opens(activityPage::title), activityPage::chooseType(inspection),
          activityPage::describe(L"Yearly inspection"), picture(L"department-booking"), click(okButton),
          endsInSchedule(),
          sees(L"a bar in the colour of its type", [](Visitor& visitor) {
              return colorOfBar(visitor, lathe, tourTime(0, 10)) == rust; }),
          picture(L"department-booked")}},
        {L"Exit by the menu", {leave()}},
    }, &shownRoster};
    // clang-format on
}

} // namespace korvane::host
