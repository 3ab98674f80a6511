#include "demo/host/AccountMenu.h"

#include "demo/host/CommandMenu.h"
#include "framework/DataLayer.h"

namespace korvane::host
{

namespace
{

/// The first nine are chosen by their number.
std::wstring itemText(std::size_t index, const std::wstring& login)
{
    std::wstring text = index < 9 ? L"&" + std::to_wstring(index + 1) + L" " : L"";
    for (const wchar_t each : login)
        text += each == L'&' ? L"&&" : std::wstring(1, each);
    return text;
}

} // namespace

void AccountMenu::fill(HMENU menu, const ComPtr<IRoot>& root, const std::wstring& current)
{
    std::vector<std::wstring> logins;
    Subscription<IAccounts> accounts;
    accounts.connect(
        root, {.add = [&](const EventArguments& account) { logins.emplace_back(account.text(1).view()); }});
    accounts.load(&IAccounts::Load);
    logins_ = std::move(logins);

    while (DeleteMenu(menu, 0, MF_BYPOSITION))
    {
    }
    for (std::size_t index = 0; index < logins_.size(); ++index)
    {
        const auto id = static_cast<UINT>(menuFirstAccount + index);
        AppendMenuW(menu, MF_STRING, id, itemText(index, logins_[index]).c_str());
        if (logins_[index] == current)
            CheckMenuItem(menu, id, MF_CHECKED);
    }
}

const std::wstring* AccountMenu::loginOf(int id) const noexcept
{
    const int index = id - menuFirstAccount;
    return index >= 0 && index < static_cast<int>(logins_.size()) ? &logins_[static_cast<std::size_t>(index)]
                                                                  : nullptr;
}

} // namespace korvane::host
