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
    OpenDatabase(const std::wstring& path, const std::wstring& account);

    /// Goes on as somebody else. Throws the data layer's failure; then all is as it was.
    void logIn(const std::wstring& account);

    /// What commands and their dialogs work on.
    const ComPtr<IRoot>& root() const noexcept { return root_; }
    /// What the host shows is read here: an open dialog listens to the other root, and hears nothing of this one.
    const ComPtr<IRoot>& view() const noexcept { return view_; }
    const std::wstring& path() const noexcept { return path_; }
    const std::wstring& account() const noexcept { return account_; }

    /// The login name of the account that works here.
    std::wstring login() const;
    /// The resource of that account; 0 for none.
    long reader() const;
    /// How many messages it has not read.
    long unreadMessages() const;
    /// Whether anything was written since the last call, here or elsewhere.
    bool hasChanged() const;
    /// Whether somebody else has written since the last call. All who listen to the root are told then.
    bool tellOfOthers() const;

    /// Fills a database that has no resources yet with something to play with, where the user may. False
    /// when nothing was added.
    bool addSample();

    /// The data layer's trace since it was last taken, one line per call.
    std::wstring takeTrace();

private:
    ComPtr<IRoot> opened(const std::wstring& account) const;

    std::wstring path_;
    std::wstring account_;
    ComPtr<IDatabase> database_;
    ComPtr<IRoot> root_;
    ComPtr<IRoot> view_;
};

} // namespace korvane::host
