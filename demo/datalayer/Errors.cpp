#include "demo/datalayer/Errors.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace korvane::store
{

namespace
{

/// What users read; "#" gives way to the detail.
constexpr std::pair<Code, std::wstring_view> texts[] = {
    {Code::unknownAccount, L"Unknown username - cannot login."},
    {Code::mayNotAddGroups, L"You are not authorized to add new groups."},
    {Code::mayNotChangeGroup, L"You are not authorized to edit this group."},
    {Code::mayNotDeleteGroup, L"You are not authorized to delete this group."},
    {Code::lastGroup, L"You must not delete the last group."},
    {Code::mayNotArrangeGroups, L"You are not authorized to arrange the groups."},
    {Code::builtInGroup, L"You must not delete a built-in group."},
    {Code::mayNotAddNames, L"You are not authorized to add new ressources."},
    {Code::mayNotEditName, L"You are not authorized to edit this ressource."},
    {Code::mayNotRemoveName, L"You are not authorized to delete this ressource."},
    {Code::mayNotArrangeNames, L"You are not authorized to arrange the ressources of this group."},
    {Code::mayNotAddTypes, L"You are not authorized to add new activity types."},
    {Code::mayNotEditType, L"You are not authorized to edit this activity type."},
    {Code::mayNotRemoveType, L"You are not authorized to delete this activity type."},
    {Code::mayNotArrangeTypes, L"You are not authorized to arrange the activity types of this group."},
    {Code::mayNotCreateForOthers, L"You are not authorized to create activity-bars for other ressources."},
    {Code::mayNotEditForOthers, L"You are not authorized to edit activity-bars for other ressources."},
    {Code::mayNotReadMessages, L"You are not authorized to read messages for other ressources."},
    {Code::loginNeedsName, L"Internal error: missing ressource name/id for new login."},
    {Code::loginNeedsText, L"Internal error: missing login name for new login."},
    {Code::superUserInGroup, L"The 'SuperUser' account cannot be mapped to user groups."},
    {Code::nobodyReads, L"This ressource has no login name attached and cannot receive messages."},
    {Code::unknownGroup, L"There is no such group. Another user may have deleted it."},
    {Code::groupNeedsName, L"The group needs a name."},
    {Code::groupNameTaken, L"There is a group named \"#\" already."},
    {Code::scopeClosed, L"The scope \"#\" is closed already."},
    {Code::locked, L"The database is locked by another user. Try again in a moment."},
    {Code::readOnly, L"The database is read-only."},
    {Code::diskFull, L"The disk of the database is full."},
    {Code::cannotOpen, L"The database file cannot be opened: #"},
    {Code::damaged, L"The database file is damaged, or is no database."},
    {Code::cannotAccess, L"The database file cannot be read or written."},
    {Code::ruleBroken, L"The database refuses the change: #"},
    {Code::foreignDatabase, L"The file is a database of another program."},
    {Code::newerDatabase, L"The database was made by a newer version of this program."},
    {Code::unknownEvent, L"There is no such activity. Another user may have deleted it."},
    {Code::unknownOccurrence, L"The activity has no occurrence #. Another user may have deleted it."},
    {Code::unknownName, L"There is no such resource. Another user may have deleted it."},
    {Code::unknownType, L"There is no such activity type. Another user may have deleted it."},
    {Code::unknownLink, L"There is no such group of linked activities. Another user may have deleted it."},
    {Code::notBookedForName,
     L"The activity is not booked for this resource. Another user may have changed it."},
    {Code::endBeforeBegin, L"The activity must not end before it begins."},
    {Code::impossibleTime, L"The activity must lie between the years 1900 and 9999."},
    {Code::unknownRecurrence, L"There is no kind of recurrence with the number #."},
    {Code::intervalTooSmall, L"The interval of a recurrence must not be less than 0."},
    {Code::countTooSmall, L"A recurrence needs at least one occurrence."},
    {Code::namesExpected, L"The resources must be given as an array of numbers."},
    {Code::nobodyLeft, L"An activity needs a resource. Delete it to take it from all of them."},
    {Code::hasNamesAlready, L"The database has resources already."},
    {Code::foreignRoot, L"The root is not one of this data layer."},
    {Code::nameNeedsText, L"The resource needs a name."},
    {Code::typeNeedsText, L"The activity type needs a name."},
    {Code::typeTextTaken, L"There is an activity type named \"#\" already."},
    {Code::loginTaken, L"There is a login \"#\" already."},
    {Code::unknownLogin, L"There is no login \"#\". Another user may have deleted it."},
    {Code::mayNotChangeLogin, L"You are not authorized to change the login \"#\"."},
    {Code::unknownRole, L"There is no role with the number #."},
    {Code::mayNotGiveRole, L"You are not authorized to give or take this role."},
    {Code::unknownMessage, L"There is no such message. Another user may have deleted it."},
    {Code::unknownMessageKind, L"There is no kind of message with the number #."},
    {Code::mayNotLeaveMessages, L"You are not authorized to leave messages."},
    {Code::otherDatabaseError,
     L"The database reports an error: #"}, // the last one, for what has no text of its own
};

} // namespace

Failure error(Code code, std::wstring_view className, std::wstring_view detail)
{
    const auto* const found = std::find_if(std::begin(texts), std::prev(std::end(texts)),
                                           [&](const auto& each) { return each.first == code; });
    std::wstring description(found->second);
    if (const auto place = description.find(L'#'); place != std::wstring::npos)
        description.replace(place, 1, detail);
    const auto number = static_cast<HRESULT>(0x80040000u + static_cast<unsigned long>(code));
    return Failure(number, L"KorvaneData." + std::wstring(className), description);
}

} // namespace korvane::store
