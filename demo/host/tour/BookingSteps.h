// The steps of the tour through the schedule.
#pragma once

#include "demo/host/tour/ScheduleSights.h"
#include "demo/host/tour/Step.h"

namespace korvane::host
{

Chapter bookingChapter() noexcept;

// --- what all steps use

// Resources of the sample.
inline constexpr const wchar_t* ben = L"Ben Carter";
inline constexpr const wchar_t* emily = L"Emily Stone";
inline constexpr const wchar_t* jonas = L"Jonas Weber";
inline constexpr const wchar_t* maria = L"Maria Costa";
inline constexpr const wchar_t* paul = L"Paul Martin";

/// Everything that is booked with a text.
std::vector<Booking> bookingsOf(Visitor& visitor, const std::wstring& text);
/// Waits until as many occurrences have a text, and returns them.
std::vector<Booking> waitForBookings(Visitor& visitor, const std::wstring& text, std::size_t count);
/// The occurrence of a resource at a time, with any text.
Booking bookingAt(Visitor& visitor, const std::wstring& resource, OleDate start);
bool isBooked(Visitor& visitor, const std::wstring& resource, OleDate start);

// --- the steps by mouse and keyboard that have no dialog to fill

void moveAll(Visitor& visitor);
void moveOne(Visitor& visitor);
void moveNone(Visitor& visitor);
void moveToOtherResource(Visitor& visitor);
void copyByMouse(Visitor& visitor);
void moveByKeyboard(Visitor& visitor);
void copyByKeyboard(Visitor& visitor);

} // namespace korvane::host
