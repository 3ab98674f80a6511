#include "tests/demo/datalayer/DataLayer.h"

#include "tests/demo/datalayer/Listener.h"

#include <filesystem>
#include <map>

namespace korvane::store::test
{

namespace
{

std::string narrow(std::wstring_view text)
{
    const std::u8string utf8 = std::filesystem::path(text).u8string();
    return std::string(utf8.begin(), utf8.end());
}

/// What users read; "#" gives way to the detail.
const std::map<Code, std::wstring_view> texts = {
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
    {Code::otherDatabaseError, L"The database reports an error: #"},
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
    {Code::hasNamesAlready, L"The database has resources already."},
    {Code::foreignRoot, L"The root is not one of this data layer."},
    {Code::nobodyLeft, L"An activity needs a resource. Delete it to take it from all of them."},
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
};

} // namespace

void DataLayer::load()
{
    module_ = LoadLibraryW((folder() + L"\\KorvaneData.dll").c_str());
    if (!module_)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
}

ComPtr<IClassFactory> DataLayer::factory(REFCLSID classId) const
{
    ComPtr<IClassFactory> result;
    require(entry<decltype(DllGetClassObject)>("DllGetClassObject")(classId, IID_IClassFactory,
                                                                    result.putVoid()));
    return result;
}

bool DataLayer::isIdle() const
{
    return entry<decltype(DllCanUnloadNow)>("DllCanUnloadNow")() == S_OK;
}

std::wstring DataLayer::folder()
{
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).parent_path().wstring();
}

void PrintTo(const Listed& group, std::ostream* stream)
{
    *stream << group.id << " \"" << narrow(group.name) << "\" " << group.flags;
}

void DataLayerTest::TearDown()
{
    database.reset();
    EXPECT_TRUE(layer.isIdle());
}

ComPtr<IRoot> DataLayerTest::openFile(const std::wstring& path, const wchar_t* account) const
{
    return korvane::fetch(database, &IDatabase::Open, Bstr(path).get(), Bstr(account).get());
}

ComPtr<IConnectionPoint> DataLayerTest::eventsOf(const ComPtr<IGroups>& groups)
{
    return korvane::fetch(groups.as<IConnectionPointContainer>(),
                          &IConnectionPointContainer::FindConnectionPoint, DIID_IGroupsEvents);
}

long DataLayerTest::add(const ComPtr<IGroups>& groups, std::wstring_view name, long flags)
{
    return korvane::fetch(groups, &IGroups::Add, Bstr(name).get(), flags);
}

long DataLayerTest::remove(const ComPtr<IGroups>& groups, long id)
{
    return korvane::fetch(groups, &IGroups::Remove, id);
}

long DataLayerTest::update(const ComPtr<IGroups>& groups, long id, std::wstring_view name, long flags)
{
    return korvane::fetch(groups, &IGroups::Update, id, Bstr(name).get(), flags);
}

bool DataLayerTest::hasAccess(const ComPtr<IGroups>& groups, long operation, long id)
{
    return korvane::fetch(groups, &IGroups::HasAccess, operation, id);
}

std::optional<Listed> DataLayerTest::fetch(const ComPtr<IGroups>& groups, long id)
{
    Bstr name;
    long flags = 0;
    VARIANT_BOOL result = VARIANT_FALSE;
    call(groups, &IGroups::Fetch, id, name.inOut(), &flags, &result);
    return result ? std::optional(Listed{id, name.c_str(), flags}) : std::nullopt;
}

std::vector<Listed> DataLayerTest::load(const ComPtr<IGroups>& groups)
{
    const Listener::Subscription listener(groups, DIID_IGroupsEvents);
    std::vector<Listed> result;
    listener->onEvent = [&] {
        if (listener->events().back() == L"OnClear")
            return result.clear();
        const VARIANT* const last = listener->arguments();
        EXPECT_EQ(VT_I4, last[2].vt);
        EXPECT_EQ(VT_BSTR, last[1].vt);
        EXPECT_EQ(VT_I4, last[0].vt);
        result.push_back({last[2].lVal, std::wstring(view(last[1].bstrVal)), last[0].lVal});
    };
    korvane::fetch(groups, &IGroups::Load);
    return result;
}

std::vector<std::wstring> DataLayerTest::names(const ComPtr<IGroups>& groups)
{
    std::vector<std::wstring> result;
    for (const Listed& group : load(groups))
        if (group.id > 3)
            result.push_back(group.name);
    return result;
}

std::wstring DataLayerTest::sqlText(const char* query) const
{
    const Connection connection(file, 0);
    Statement statement(connection, query);
    return statement.next() ? statement.text(0) : L"(no row)";
}

std::wstring DataLayerTest::trace() const
{
    return korvane::fetch(database, &IDatabase::get_Trace).c_str();
}

testing::AssertionResult failsWith(const std::optional<Failure>& failure, Code code,
                                   std::wstring_view className, std::wstring_view detail)
{
    if (!failure)
        return testing::AssertionFailure() << "the call succeeded";
    const auto number = static_cast<HRESULT>(0x80040000u + static_cast<unsigned long>(code));
    std::wstring description(texts.at(code));
    if (const auto place = description.find(L'#'); place != std::wstring::npos)
        description.replace(place, 1, detail);
    if (failure->number() == number && failure->source() == L"KorvaneData." + std::wstring(className) &&
        failure->description() == description)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << std::hex << "0x" << static_cast<unsigned long>(failure->number()) << ", "
           << narrow(failure->source().view()) << ": " << narrow(failure->description().view());
}

} // namespace korvane::store::test
