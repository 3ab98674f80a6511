#include "demo/host/Language.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

namespace korvane::host
{

namespace
{

Failure invalid(std::wstring_view name, std::size_t line, std::wstring_view what)
{
    return Failure(E_INVALIDARG, L"KorvaneHost",
                   std::wstring(name) + L", line " + std::to_wstring(line) + L": " + std::wstring(what));
}

std::optional<std::wstring> fromUtf8(std::string_view text)
{
    if (text.empty())
        return L"";
    const int length = static_cast<int>(text.size());
    const int needed = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), length, nullptr, 0);
    if (needed <= 0)
        return std::nullopt;
    std::wstring wide(static_cast<std::size_t>(needed), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), needed);
    return wide;
}

/// What stands between quotation marks; none where they are not in order.
std::optional<std::wstring> unquoted(std::wstring_view quoted)
{
    if (quoted.size() < 2 || quoted.front() != L'"' || quoted.back() != L'"')
        return std::nullopt;
    quoted = quoted.substr(1, quoted.size() - 2);
    std::wstring text;
    for (std::size_t at = 0; at < quoted.size(); ++at)
    {
        const wchar_t next = at + 1 < quoted.size() ? quoted[at + 1] : L'\0';
        if (quoted[at] != L'"' && quoted[at] != L'\\')
        {
            text += quoted[at];
            continue;
        }
        if (next != (quoted[at] == L'"' ? L'"' : L'n'))
            return std::nullopt;
        text += next == L'n' ? L'\n' : next;
        ++at;
    }
    return text;
}

std::string_view trimmed(std::string_view line)
{
    constexpr const char* blanks = " \t\r";
    const auto first = line.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : line.substr(first, line.find_last_not_of(blanks) - first + 1);
}

} // namespace

Texts readTexts(std::string_view lines, std::wstring_view name)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF"; // with which some editors begin UTF-8
    if (lines.starts_with(mark))
        lines.remove_prefix(mark.size());
    Texts texts;
    for (std::size_t number = 1; !lines.empty(); ++number)
    {
        const auto end = lines.find('\n');
        const std::string_view line = trimmed(lines.substr(0, end));
        lines = end == std::string_view::npos ? std::string_view() : lines.substr(end + 1);
        if (line.empty() || line.front() == ';')
            continue;
        const auto utf16 = fromUtf8(line);
        if (!utf16)
            throw invalid(name, number, L"this is not UTF-8.");
        long id = -1;
        const auto parsed = std::from_chars(line.data(), line.data() + line.size(), id);
        // The digits of the id are as long in either encoding.
        const auto quote =
            utf16->find_first_not_of(L" \t", static_cast<std::size_t>(parsed.ptr - line.data()));
        const auto text = parsed.ec == std::errc() && quote != std::wstring::npos
                              ? unquoted(std::wstring_view(*utf16).substr(quote))
                              : std::nullopt;
        if (!text || id < 0)
            throw invalid(name, number, L"an id and a text in quotation marks are expected.");
        if (!texts.emplace(id, *text).second)
            throw invalid(name, number, L"the id " + std::to_wstring(id) + L" comes up twice.");
    }
    return texts;
}

Texts readTextFile(const std::wstring& path)
{
    const std::filesystem::path file(path);
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw Failure(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), L"KorvaneHost",
                      L"The file " + path + L" cannot be read.");
    const std::string lines{std::istreambuf_iterator<char>(stream), {}};
    return readTexts(lines, file.filename().wstring());
}

std::wstring languageFolder()
{
    wchar_t program[MAX_PATH];
    module::path(program);
    return (std::filesystem::path(program).parent_path() / L"languages").wstring();
}

Language::Language(Texts texts, ComPtr<IResources> library)
    : texts_(std::move(texts)), library_(std::move(library)), locale_(toLong(texts_[0]))
{
}

STDMETHODIMP Language::GetString(long id, BSTR* text)
{
    const auto found = texts_.find(id);
    if (found == texts_.end())
        return library_->GetString(id, text);
    return returns(text, [&] { return Bstr(found->second); });
}

STDMETHODIMP Language::get_LocaleID(long* locale)
{
    return returns(locale, [&] { return locale_; });
}

} // namespace korvane::host
