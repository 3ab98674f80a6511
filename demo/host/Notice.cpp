#include "demo/host/Notice.h"

#include "framework/com/Call.h"

namespace korvane::host
{

namespace
{

// In the library's string table.
constexpr long textSeveral = 40103; // with the number sign for the number
constexpr long textOne = 40104;
constexpr long textNone = 40105;

} // namespace

std::wstring messageNotice(const ComPtr<IResources>& resources, long unread)
{
    const long id = unread == 0 ? textNone : unread == 1 ? textOne : textSeveral;
    std::wstring text(fetch(resources, &IResources::GetString, id).view());
    if (const auto sign = text.find(L'#'); id == textSeveral && sign != std::wstring::npos)
        text.replace(sign, 1, std::to_wstring(unread));
    return text;
}

std::wstring withoutAccessKey(std::wstring_view text)
{
    std::wstring shown(text);
    std::erase(shown, L'&');
    return shown;
}

std::wstring titleFor(const std::wstring& login, long unread, const std::wstring& notice)
{
    return L"Korvane - " + login + (unread > 0 ? L" - " + notice : L"");
}

} // namespace korvane::host
