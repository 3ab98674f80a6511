#include "demo/host/tour/BookingSteps.h"

#include "demo/host/tour/ActivityPage.h"
#include "demo/host/tour/ScheduleSights.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

using BookingList = std::vector<Booking>;
using Names = std::vector<std::wstring>;

// Resources of the sample.
constexpr const wchar_t* ben = L"Ben Carter";
constexpr const wchar_t* emily = L"Emily Stone";
constexpr const wchar_t* jonas = L"Jonas Weber";
constexpr const wchar_t* maria = L"Maria Costa";
constexpr const wchar_t* paul = L"Paul Martin";

// What is booked, one after the other.
constexpr const wchar_t* meeting = L"Team meeting";
constexpr const wchar_t* training = L"First aid, part one";
constexpr const wchar_t* online = L"First aid, online";

constexpr BookedRule fourTimesWeekly{2, 0, 4};

constexpr const wchar_t* moveTitle = L"Move activity";
constexpr const wchar_t* deleteTitle = L"Delete activity";

// --- what stands in the database

const Booking* find(const BookingList& all, const std::wstring& resource, OleDate start)
{
    const auto found = std::find_if(all.begin(), all.end(), [&](const Booking& each) {
        return each.resource == resource && minutesBetween(each.start, start) == 0;
    });
    return found == all.end() ? nullptr : &*found;
}

/// The occurrence of a resource at a time, with any text.
Booking at(const BookingList& all, const std::wstring& resource, OleDate start)
{
    const Booking* found = find(all, resource, start);
    expect(found != nullptr,
           resource + L" booked on " + shownDay(start, L"ddd d MMM") + L", " + shownTime(start));
    return *found;
}

BookingList withText(const Visitor& visitor, const std::wstring& text)
{
    auto bookings = visitor.bookings().all();
    std::erase_if(bookings, [&](const Booking& each) { return each.text != text; });
    return bookings;
}

/// Sooner or later, resources are booked at a time.
constexpr Word booked{[](Visitor& visitor, const Names& resources, OleDate start) {
    for (const auto& each : resources)
        waitFor(each + L" is booked at " + shownTime(start),
                [&] { return find(visitor.bookings().all(), each, start) != nullptr; });
}};
constexpr Word isFree{[](Visitor& visitor, const Names& resources, OleDate start) {
    for (const auto& each : resources)
        expect(!find(visitor.bookings().all(), each, start), each + L" free at " + shownTime(start));
}};
/// Sooner or later, so many occurrences have a text, and each is as it should be.
constexpr Word bookedAs{[](Visitor& visitor, Text text, std::size_t count, Text what, const auto& isRight) {
    BookingList all;
    waitFor(std::to_wstring(count) + L" occurrences are booked as " + quoted(text),
            [&] { return (all = withText(visitor, text)).size() == count; });
    expect(
        std::all_of(all.begin(), all.end(), [&](const Booking& each) { return isRight(visitor, all, each); }),
        what);
}};
/// Sooner or later, something holds for all that is booked.
constexpr Word booking{[](Visitor& visitor, Text what, const auto& isTheCase) {
    waitFor(what, [&] { return isTheCase(visitor.bookings().all()); });
}};
/// An occurrence compares with one that was there when the step began.
constexpr Word compares{[](Visitor& visitor, Text resource, OleDate start, Text formerResource,
                           OleDate formerStart, Text what, const auto& isRight) {
    expect(isRight(at(visitor.bookings().all(), resource, start),
                   at(visitor.bookedBefore(), formerResource, formerStart)),
           what);
}};

std::vector<std::wstring> shownBookings(const Visitor& visitor)
{
    std::vector<std::wstring> texts;
    for (const Booking& each : visitor.bookings().all())
        texts.push_back(std::to_wstring(each.id.event) + L"." + std::to_wstring(each.id.instance) + L"  " +
                        shown(each) + (each.link != 0 ? L" | link " + std::to_wstring(each.link) : L""));
    return texts;
}

// --- what is done in the schedule

constexpr Word openBar{[](Visitor& visitor, Text resource, OleDate start) {
    visitor.doubleClickAt(visitor.schedule(), pointOfBar(visitor, resource, start),
                          std::wstring(L"the bar of ") + resource);
}};
constexpr Word clickBar{[](Visitor& visitor, Text resource, OleDate start) {
    visitor.clickAt(visitor.schedule(), pointOfBar(visitor, resource, start),
                    std::wstring(L"the bar of ") + resource);
}};
constexpr Word drag{[](Visitor& visitor, Text resource, OleDate from, Text toResource, OleDate to) {
    const POINT taken = pointOfBar(visitor, resource, from);
    const POINT start = pointOfTime(visitor, resource, from);
    const POINT landing = pointOfTime(visitor, toResource, to);
    visitor.dragTo(visitor.schedule(), taken, {landing.x + taken.x - start.x, landing.y},
                   std::wstring(L"the bar of ") + resource + L" to " + toResource + L", " + shownTime(to));
}};

} // namespace

Chapter bookingChapter()
{
    using namespace activityPage;
    const Names all{ben, emily, jonas};
    const auto on = [](long day, long hour) { return tourTime(day, hour); };
    const Deed zoomOut = press(L"Ctrl+Minus", 2);
    const Deed zoomIn = press(L"Ctrl+Plus", 2);
    // The library asks what is meant by an occurrence of the series.
    const Deed meansAll = answer(title, IDYES, L"Yes: all occurrences");
    const Deed meansOne = answer(title, IDNO, L"No: this occurrence only");
    const Deed treeIsLocked = sees(L"resources that one occurrence cannot change",
                                   [](Visitor& visitor) { return !IsWindowEnabled(visitor.find(tree)); });
    const auto isLinked = [](Text wanted) {
        return [=](const Visitor&, const BookingList& group, const Booking& each) {
            return each.type == wanted && each.link != 0 && each.link == group.front().link;
        };
    };
    const auto isWeekly = [](const Visitor& visitor, const BookingList&, const Booking& each) {
        return visitor.bookings().ruleOf(each.id.event) == fourTimesWeekly;
    };
    const auto isLong = [](const Visitor&, const BookingList&, const Booking& each) {
        return minutesBetween(each.start, each.end) == 180;
    };
    const auto isSecond = [=](const Visitor&, const BookingList&, const Booking& each) {
        return each.id.instance == 2 && minutesBetween(each.start, on(7, 10)) == 0;
    };
    const auto anything = [](const Visitor&, const BookingList&, const Booking&) { return true; };
    // clang-format off
    return {L"Activities", {
        {L"Book: double click in an empty slot; stop, text, type, two more resources, each week four times",
         {startsUp(), goesTo(ben, on(0, 10)), openSlot(ben, on(0, 10)), opens(title), picture(L"booking-empty"),
          stopLater(2), describe(meeting), chooseType(L"Meeting"), toggle(emily), toggle(jonas), repeatWeekly(L"4"),
          hasChecked(all), picture(L"booking-new"), click(okButton), endsInSchedule(),
          bookedAs(meeting, 12U, L"meetings in one link group", isLinked(L"Meeting")),
          bookedAs(meeting, 12U, L"each week, four times", isWeekly),
          bookedAs(meeting, 12U, L"three hours each", isLong),
          booked(all, on(0, 10)), booked(all, on(7, 10)), booked(all, on(14, 10)), booked(all, on(21, 10)),
          picture(L"booking-schedule")}},
        {L"Change all occurrences, for all resources",
         {openBar(ben, on(0, 10)), opensBox(title), picture(L"booking-question"), meansAll,
          opens(title), shows(description, meeting), shows(types, L"Meeting"), hasChecked(all),
          describe(training), chooseType(L"Training"), picture(L"booking-change"),
          pictureOfWindow(L"booking-window"), click(okButton), endsInSchedule(),
          bookedAs(training, 12U, L"trainings in a link group", isLinked(L"Training")),
          bookedAs(meeting, 0U, L"no occurrence with the former text", anything)}},
        {L"Change one occurrence",
         {zoomOut, goesTo(maria, on(7, 10)), picture(L"booking-weeks"), openBar(emily, on(7, 10)), meansOne,
          opens(title), shows(description, training), treeIsLocked, describe(online),
          picture(L"booking-occurrence"), click(okButton), endsInSchedule(),
          bookedAs(online, 3U, L"the second occurrence", isSecond),
          bookedAs(training, 9U, L"the other occurrences as they were", anything),
          goesTo(ben, on(0, 10)), zoomIn, goesTo(ben, on(0, 10))}},
        {L"Drag in time, with all resources",
         {drag(ben, on(0, 10), ben, on(0, 12)), picture(L"booking-drag"), drop(),
          opensBox(moveTitle), picture(L"booking-move-question"), answer(moveTitle, IDYES, L"Yes: all resources"),
          endsInSchedule(), booked(all, on(0, 12)), isFree(all, on(0, 10)), booked(all, on(7, 10)),
          booking(L"the first occurrences are still of their series", [=](const BookingList& now) {
              return std::all_of(all.begin(), all.end(), [&](const auto& each) {
                  return at(now, each, on(0, 12)).id.instance == 1; });
          }),
          calls(L"EventLinks.UpdateLinked")}},
        {L"Drag in time, this resource only",
         {drag(emily, on(0, 12), emily, on(0, 14)), drop(), answer(moveTitle, IDNO, L"No: this one only"),
          endsInSchedule(), booked(Names{emily}, on(0, 14)), isFree(Names{emily}, on(0, 12)),
          booked(Names{ben, jonas}, on(0, 12)),
          calls(L"Events.Update"), callsNot(L"EventLinks.UpdateLinked")}},
        {L"Drag, but not after all: Esc on the way, Cancel when asked",
         {drag(jonas, on(0, 12), jonas, on(0, 16)), press(L"Esc"), drop(), endsInSchedule(),
          booked(Names{jonas}, on(0, 12)),
          drag(ben, on(0, 12), ben, on(0, 16)), drop(), answer(moveTitle, IDCANCEL, L"Cancel"), endsInSchedule(),
          booked(Names{ben}, on(0, 12)), isFree(Names{ben}, on(0, 16)),
          callsNot(L"Events.Update"), callsNot(L"EventLinks.UpdateLinked")}},
        {L"Drag to another resource",
         {drag(jonas, on(0, 12), maria, on(0, 12)), drop(), booked(Names{maria}, on(0, 12)), endsInSchedule(),
          compares(maria, on(0, 12), jonas, on(0, 12), L"the same occurrence, with another resource",
                   [](const Booking& now, const Booking& before) {
                       return now.id == before.id && now.text == before.text; }),
          isFree(Names{jonas}, on(0, 12)), booked(Names{jonas}, on(7, 10))}},
        {L"Copy: drag with Ctrl",
         {drag(ben, on(0, 12), paul, on(0, 15)), hold(L"Ctrl"), picture(L"booking-copy"), drop(), release(L"Ctrl"),
          booked(Names{paul}, on(0, 15)), endsInSchedule(),
          compares(paul, on(0, 15), ben, on(0, 12), L"an activity of its own, without repetition and without link",
                   [](const Booking& copy, const Booking& original) {
                       return copy.id.event != original.id.event && copy.id.instance == 0 && copy.link == 0; }),
          compares(paul, on(0, 15), ben, on(0, 12), L"the text and type of the original",
                   [](const Booking& copy, const Booking& original) {
                       return copy.text == original.text && copy.type == original.type; }),
          booked(Names{ben}, on(0, 12)), calls(L"Events.Add")}},
        {L"Move by keyboard",
         {clickBar(paul, on(0, 15)), press(L"Ctrl+M"), press(L"Right"), press(L"Up"),
          picture(L"booking-keyboard-move"), press(L"Enter"),
          booked(Names{maria}, on(0, 16)), endsInSchedule(), isFree(Names{paul}, on(0, 15)),
          press(L"Ctrl+M"), press(L"Down"), press(L"Esc"), booked(Names{maria}, on(0, 16))}},
        {L"Copy by keyboard",
         {clickBar(maria, on(0, 16)), press(L"Ctrl+Shift+M"), press(L"Down"), press(L"Enter"),
          booked(Names{paul}, on(0, 16)), endsInSchedule(), booked(Names{maria}, on(0, 16)),
          compares(paul, on(0, 16), maria, on(0, 16), L"two activities",
                   [](const Booking& copy, const Booking& original) { return copy.id.event != original.id.event; })}},
        {L"Uncheck all resources but one",
         {openBar(ben, on(0, 12)), meansAll, opens(title), toggle(emily), toggle(jonas), hasChecked(Names{ben}),
          picture(L"booking-resources"), click(okButton), endsInSchedule(),
          booking(L"the series is booked for one resource only", [](const BookingList& now) {
              return std::count_if(now.begin(), now.end(), [](const Booking& each) {
                  return each.text == training || each.text == online; }) == 6;
          }),
          booking(L"no link group is there any more", [](const BookingList& now) {
              return std::all_of(now.begin(), now.end(), [](const Booking& each) { return each.link == 0; });
          }),
          booked(Names{ben}, on(7, 10)), booked(Names{ben}, on(14, 10)), booked(Names{ben}, on(21, 10)),
          isFree(Names{emily, jonas}, on(7, 10)), isFree(Names{emily, jonas}, on(14, 10)),
          isFree(Names{emily, jonas}, on(21, 10))}},
        {L"Delete one occurrence",
         {zoomOut, goesTo(emily, on(7, 10)), clickBar(ben, on(7, 10)),
          press(L"Del"), answer(deleteTitle, IDNO, L"No"), endsInSchedule(), booked(Names{ben}, on(7, 10)),
          press(L"Del"), opensBox(deleteTitle), picture(L"booking-delete"), answer(deleteTitle, IDYES, L"Yes"),
          endsInSchedule(),
          booking(L"the occurrence is gone", [=](const BookingList& now) { return !find(now, ben, on(7, 10)); }),
          booked(Names{ben}, on(0, 12)), booked(Names{ben}, on(14, 10)), booked(Names{ben}, on(21, 10)),
          goesTo(ben, on(0, 10)), zoomIn, goesTo(ben, on(0, 10))}},
        {L"Delete everything",
         {openBar(ben, on(0, 12)), meansAll, opens(title), click(deleteButton), endsInSchedule(),
          booking(L"the series is gone", [](const BookingList& now) { return now.size() == 2; }),
          clickBar(maria, on(0, 16)), press(L"Del"), answer(deleteTitle, IDYES, L"Yes"), endsInSchedule(),
          clickBar(paul, on(0, 16)), press(L"Del"), answer(deleteTitle, IDYES, L"Yes"), endsInSchedule(),
          booking(L"nothing is booked", [](const BookingList& now) { return now.empty(); })}},
        {L"Exit by the menu", {leave()}},
    }, &shownBookings};
    // clang-format on
}

} // namespace korvane::host
