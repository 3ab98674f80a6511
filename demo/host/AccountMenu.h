// The menu of the accounts that the user may go on as.
#pragma once

#include "framework/com/ComPtr.h"

#include <KorvaneData.h>

#include <string>
#include <vector>

namespace korvane::host
{

class AccountMenu
{
public:
    /// Fills a menu with the accounts of a database, and marks the one that is logged in.
    void fill(HMENU menu, const ComPtr<IRoot>& root, const std::wstring& current);

    /// The login of an item of that menu; null for other items.
    const std::wstring* loginOf(int id) const noexcept;

private:
    std::vector<std::wstring> logins_;
};

} // namespace korvane::host
