#include "demo/host/OpenDatabase.h"

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

} // namespace

OpenDatabase::OpenDatabase(const std::wstring& path, std::wstring account)
    : path_(fullPath(path)), account_(std::move(account)),
      database_(createByProgId<IDatabase>(L"KorvaneData.Database"))
{
    call(database_, &IDatabase::Open, Bstr(path_).get(), Bstr(account_).get(), root_.put());
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
