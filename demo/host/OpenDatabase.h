// The database that the host works on, opened through the data layer.
#pragma once

#include "framework/com/ComPtr.h"

#include <KorvaneStore.h>

#include <string>

namespace korvane::host
{

/// The file in the user's local application data, in a folder that is made when it is not there.
std::wstring defaultDatabase();

class OpenDatabase
{
public:
    /// Opens the file, which is made on first use. Throws the data layer's failure.
    /// @param account login name; empty for the built-in administrator.
    OpenDatabase(const std::wstring& path, std::wstring account);

    const ComPtr<IRoot>& root() const noexcept { return root_; }
    const std::wstring& path() const noexcept { return path_; }
    const std::wstring& account() const noexcept { return account_; }

    /// Fills a database that has no resources yet with something to play with, where the user may. False
    /// when nothing was added.
    bool addSample();

    /// The data layer's trace since it was last taken, one line per call.
    std::wstring takeTrace();

private:
    std::wstring path_;
    std::wstring account_;
    ComPtr<IDatabase> database_;
    ComPtr<IRoot> root_;
};

} // namespace korvane::host
