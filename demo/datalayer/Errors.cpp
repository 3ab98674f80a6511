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
    case Code::builtInGroup:
        return L"You must not delete a built-in group.";
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
