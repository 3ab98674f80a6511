#include "demo/datalayer/Trace.h"

#include <cwchar>

namespace korvane::store
{

std::size_t Trace::add(std::wstring text)
{
    lines_.push_back(std::wstring(2 * depth_, L' ') + std::move(text));
    if (lines_.size() > limit)
    {
        lines_.pop_front();
        ++dropped_;
    }
    return dropped_ + lines_.size() - 1;
}

void Trace::complete(std::size_t number, std::wstring_view outcome)
{
    if (number < dropped_ || outcome.empty())
        return;
    std::wstring& line = lines_.at(number - dropped_);
    line += L' ';
    line += outcome;
}

void Trace::clear() noexcept
{
    dropped_ += lines_.size();
    lines_.clear();
}

std::wstring Trace::text() const
{
    std::wstring result;
    for (const std::wstring& line : lines_)
        result += line + L"\r\n";
    return result;
}

std::wstring shown(OleDate date)
{
    SYSTEMTIME time{};
    if (!VariantTimeToSystemTime(date.days, &time))
        return L"no date";
    wchar_t text[40];
    std::swprintf(text, ARRAYSIZE(text), L"%04u-%02u-%02u %02u:%02u:%02u", time.wYear, time.wMonth, time.wDay,
                  time.wHour, time.wMinute, time.wSecond);
    return text;
}

std::wstring shown(const Failure& failure)
{
    wchar_t number[16];
    std::swprintf(number, ARRAYSIZE(number), L"0x%08lX", static_cast<unsigned long>(failure.number()));
    return L"! " + std::wstring(number) + L' ' + failure.description().c_str();
}

} // namespace korvane::store
