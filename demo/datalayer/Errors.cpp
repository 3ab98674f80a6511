#include "demo/datalayer/Errors.h"

#include <string>

namespace korvane::store
{

namespace
{

const wchar_t* text(Code code) noexcept
{
    switch (code)
    {
    case Code::unknownAccount:
        return L"Unknown username - cannot login.";
    case Code::mayNotAddGroups:
        return L"You are not authorized to add new groups.";
    case Code::mayNotChangeGroup:
        return L"You are not authorized to edit this group.";
    case Code::mayNotDeleteGroup:
        return L"You are not authorized to delete this group.";
    case Code::lastGroup:
        return L"You must not delete the last group.";
    case Code::mayNotArrangeGroups:
        return L"You are not authorized to arrange the groups.";
    case Code::builtInGroup:
        return L"You must not delete a built-in group.";
    case Code::mayNotAddNames:
        return L"You are not authorized to add new ressources.";
    case Code::mayNotEditName:
        return L"You are not authorized to edit this ressource.";
    case Code::mayNotRemoveName:
        return L"You are not authorized to delete this ressource.";
    case Code::mayNotArrangeNames:
        return L"You are not authorized to arrange the ressources of this group.";
    case Code::mayNotAddTypes:
        return L"You are not authorized to add new activity types.";
    case Code::mayNotEditType:
        return L"You are not authorized to edit this activity type.";
    case Code::mayNotRemoveType:
        return L"You are not authorized to delete this activity type.";
    case Code::mayNotArrangeTypes:
        return L"You are not authorized to arrange the activity types of this group.";
    case Code::mayNotCreateForOthers:
        return L"You are not authorized to create activity-bars for other ressources.";
    case Code::mayNotEditForOthers:
        return L"You are not authorized to edit activity-bars for other ressources.";
    case Code::mayNotReadMessages:
        return L"You are not authorized to read messages for other ressources.";
    case Code::loginNeedsName:
        return L"Internal error: missing ressource name/id for new login.";
    case Code::loginNeedsText:
        return L"Internal error: missing login name for new login.";
    case Code::superUserInGroup:
        return L"The 'SuperUser' account cannot be mapped to user groups.";
    case Code::nobodyReads:
        return L"This ressource has no login name attached and cannot receive messages.";
    case Code::unknownGroup:
        return L"There is no such group. Another user may have deleted it.";
    case Code::groupNeedsName:
        return L"The group needs a name.";
    case Code::groupNameTaken:
        return L"There is a group named \"#\" already.";
    case Code::scopeClosed:
        return L"The scope \"#\" is closed already.";
    case Code::locked:
        return L"The database is locked by another user. Try again in a moment.";
    case Code::readOnly:
        return L"The database is read-only.";
    case Code::diskFull:
        return L"The disk of the database is full.";
    case Code::cannotOpen:
        return L"The database file cannot be opened: #";
    case Code::damaged:
        return L"The database file is damaged, or is no database.";
    case Code::cannotAccess:
        return L"The database file cannot be read or written.";
    case Code::ruleBroken:
        return L"The database refuses the change: #";
    case Code::foreignDatabase:
        return L"The file is a database of another program.";
    case Code::newerDatabase:
        return L"The database was made by a newer version of this program.";
    case Code::unknownEvent:
        return L"There is no such activity. Another user may have deleted it.";
    case Code::unknownOccurrence:
        return L"The activity has no occurrence #. Another user may have deleted it.";
    case Code::unknownName:
        return L"There is no such resource. Another user may have deleted it.";
    case Code::unknownType:
        return L"There is no such activity type. Another user may have deleted it.";
    case Code::unknownLink:
        return L"There is no such group of linked activities. Another user may have deleted it.";
    case Code::notBookedForName:
        return L"The activity is not booked for this resource. Another user may have changed it.";
    case Code::endBeforeBegin:
        return L"The activity must not end before it begins.";
    case Code::impossibleTime:
        return L"The activity must lie between the years 1900 and 9999.";
    case Code::unknownRecurrence:
        return L"There is no kind of recurrence with the number #.";
    case Code::intervalTooSmall:
        return L"The interval of a recurrence must not be less than 0.";
    case Code::countTooSmall:
        return L"A recurrence needs at least one occurrence.";
    case Code::namesExpected:
        return L"The resources must be given as an array of numbers.";
    case Code::nobodyLeft:
        return L"An activity needs a resource. Delete it to take it from all of them.";
    case Code::hasNamesAlready:
        return L"The database has resources already.";
    case Code::foreignRoot:
        return L"The root is not one of this data layer.";
    case Code::nameNeedsText:
        return L"The resource needs a name.";
    case Code::typeNeedsText:
        return L"The activity type needs a name.";
    case Code::typeTextTaken:
        return L"There is an activity type named \"#\" already.";
    case Code::loginTaken:
        return L"There is a login \"#\" already.";
    case Code::unknownLogin:
        return L"There is no login \"#\". Another user may have deleted it.";
    case Code::mayNotChangeLogin:
        return L"You are not authorized to change the login \"#\".";
    case Code::unknownRole:
        return L"There is no role with the number #.";
    case Code::mayNotGiveRole:
        return L"You are not authorized to give or take this role.";
    case Code::unknownMessage:
        return L"There is no such message. Another user may have deleted it.";
    case Code::unknownMessageKind:
        return L"There is no kind of message with the number #.";
    case Code::mayNotLeaveMessages:
        return L"You are not authorized to leave messages.";
    case Code::otherDatabaseError:
        break;
    }
    return L"The database reports an error: #";
}

} // namespace

Failure error(Code code, std::wstring_view className, std::wstring_view detail)
{
    std::wstring description = text(code);
    if (const auto place = description.find(L'#'); place != std::wstring::npos)
        description.replace(place, 1, detail);
    const auto number = static_cast<HRESULT>(0x80040000u + static_cast<unsigned long>(code));
    return Failure(number, L"KorvaneData." + std::wstring(className), description);
}

} // namespace korvane::store
