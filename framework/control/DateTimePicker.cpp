#include "framework/control/DateTimePicker.h"

#include "framework/com/Failure.h"

#include <commctrl.h>

namespace korvane
{

namespace
{

std::wstring localeText(LCTYPE type)
{
    wchar_t text[80]{}; // the longest of these formats
    GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, static_cast<int>(std::size(text)));
    return text;
}

/// The user's short date and time without seconds, which the picker keeps unseen.
std::wstring userFormat()
{
    std::wstring time = localeText(LOCALE_SSHORTTIME);
    if (time.empty())
        time = localeText(LOCALE_STIMEFORMAT);
    return localeText(LOCALE_SSHORTDATE) + L"  " + time;
}

} // namespace

HWND DateTimePicker::createWindow(HWND parent, int id)
{
    const std::wstring format = userFormat(); // before the window, which a failure would leave behind
    const HWND picker = makeWindow(parent, id, DATETIMEPICK_CLASSW, WS_TABSTOP, 0);
    SendMessageW(picker, DTM_SETFORMATW, 0, reinterpret_cast<LPARAM>(format.c_str()));
    return picker;
}

OleDate DateTimePicker::Value() const
{
    SYSTEMTIME time{};
    OleDate value;
    if (send(DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time)) != GDT_VALID ||
        !SystemTimeToVariantTime(&time, &value.days))
        throw Failure(DISP_E_OVERFLOW);
    return value;
}

void DateTimePicker::setValue(OleDate value) const
{
    SYSTEMTIME time{};
    if (!VariantTimeToSystemTime(value.days, &time) ||
        !send(DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time)))
        throw Failure(DISP_E_OVERFLOW);
}

LRESULT DateTimePicker::notified(const NMHDR& notification)
{
    if (notification.code != DTN_DATETIMECHANGE)
        return Control::notified(notification);
    raise(onChange);
    return 0;
}

/// A field that is half typed counts when the picker is left, which the default key does not do.
void DateTimePicker::completeEdit()
{
    if (!hasFocus())
        return;
    send(WM_KILLFOCUS);
    send(WM_SETFOCUS);
}

} // namespace korvane
