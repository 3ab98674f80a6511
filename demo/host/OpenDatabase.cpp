#include "demo/host/OpenDatabase.h"

#include "demo/host/InfoFile.h"
#include "demo/host/Language.h"
#include "framework/com/EventConnection.h"
#include "framework/com/LateBound.h"

#include <shlobj.h>

namespace korvane::host
{

std::wstring defaultDatabase()
{
    wchar_t folder[MAX_PATH];
    require(SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT,
                             folder));
    const std::wstring own = std::wstring(folder) + L"\\Korvane";
    if (!CreateDirectoryW(own.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
    return own + L"\\demo.sqlite";
}

namespace
{

std::wstring fullPath(const std::wstring& path)
{
    wchar_t buffer[MAX_PATH];
    const DWORD length = GetFullPathNameW(path.c_str(), ARRAYSIZE(buffer), buffer, nullptr);
    // What cannot be completed is for the data layer to refuse.
    return length == 0 || length >= ARRAYSIZE(buffer) ? path : std::wstring(buffer, length);
}

/// That of the database that this thread has opened last.
std::wstring sharedFolder()
{
    const auto settings = createByProgId<IRegistry>(L"KorvaneData.Registry");
    const Variant folder =
        fetch(settings, &IRegistry::GetValue, Bstr(L"SharedFolder").get(), Variant(Bstr()).get());
    return std::wstring(toText(folder.get()).view());
}

ComPtr<ISession> session(const ComPtr<IRoot>& root)
{
    return root.as<ISession>();
}

} // namespace

OpenDatabase::OpenDatabase(const std::wstring& path, const std::wstring& account)
    : path_(fullPath(path)), database_(createByProgId<IDatabase>(L"KorvaneData.Database"))
{
    logIn(account);
}

void OpenDatabase::logIn(const std::wstring& account)
{
    auto root = opened(account);
    view_ = opened(account);
    root_ = std::move(root);
    account_ = account;
}

ComPtr<IRoot> OpenDatabase::opened(const std::wstring& account) const
{
    return fetch(database_, &IDatabase::Open, Bstr(path_).get(), Bstr(account).get());
}

std::wstring OpenDatabase::login() const
{
    return std::wstring(fetch(session(view_), &ISession::get_Login).view());
}

long OpenDatabase::reader() const
{
    return fetch(session(view_), &ISession::get_NameID);
}

long OpenDatabase::unreadMessages() const
{
    return fetch(session(view_), &ISession::get_UnreadMessages);
}

bool OpenDatabase::hasChanged() const
{
    return fetch(session(view_), &ISession::HasChanged); // nothing is written through the view
}

bool OpenDatabase::tellOfOthers() const
{
    const auto own = session(root_);
    if (!fetch(own, &ISession::HasChanged))
        return false;
    call(own, &ISession::AnnounceAll);
    return true;
}

bool OpenDatabase::addSample()
{
    constexpr long allGroups = 0;
    constexpr long addition = 1;
    ComPtr<INames> names;
    ComPtr<IGroups> groups;
    call(root_, &IRoot::get_Names, names.put());
    call(root_, &IRoot::get_Groups, groups.put());

    bool isEmpty = true;
    EventConnection announced;
    announced.connect(names.get(), __uuidof(INamesEvents),
                      {.add = [&](const EventArguments&) { isEmpty = false; }});
    VARIANT_BOOL allowed = VARIANT_FALSE;
    announced.during([&] { call(names, &INames::Load, allGroups, &allowed); });
    call(groups, &IGroups::HasAccess, addition, 0L, &allowed);
    if (!isEmpty || allowed == VARIANT_FALSE)
        return false;
    call(database_, &IDatabase::AddSample, root_.get());
    addInfoFile(sharedFolder());
    addInfoFilesOf(languageFolder(), sharedFolder());
    return true;
}

std::wstring OpenDatabase::takeTrace()
{
    Bstr trace;
    call(database_, &IDatabase::get_Trace, trace.put());
    call(database_, &IDatabase::ClearTrace);
    return std::wstring(trace.view());
}

} // namespace korvane::host
