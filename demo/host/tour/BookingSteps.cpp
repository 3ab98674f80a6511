#include "demo/host/tour/BookingSteps.h"

#include "demo/host/tour/BookingDialog.h"
#include "demo/host/tour/Screen.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

constexpr const wchar_t* meeting = L"Team meeting";
constexpr const wchar_t* training = L"First aid, part one";
constexpr const wchar_t* online = L"First aid, online";

constexpr long byWeek = 2;

void openBar(Visitor& visitor, const std::wstring& resource, OleDate start)
{
    visitor.doubleClickAt(visitor.schedule(), pointOfBar(visitor, resource, start),
                          L"the bar of " + resource);
}

/// Opens an occurrence of the series; the library asks what is meant.
void openOccurrence(Visitor& visitor, const std::wstring& resource, OleDate start, bool all)
{
    openBar(visitor, resource, start);
    const HWND question = visitor.messageBox(L"Activity");
    if (all)
        visitor.picture(question, L"booking-question");
    visitor.answer(question, all ? IDYES : IDNO, all ? L"Yes: all occurrences" : L"No: this occurrence only");
}

void zoom(Visitor& visitor, bool out)
{
    for (int steps = 0; steps < 2; ++steps)
        visitor.press({VK_CONTROL, static_cast<WORD>(out ? VK_OEM_MINUS : VK_OEM_PLUS)},
                      out ? L"Ctrl+-" : L"Ctrl++");
}

void book(Visitor& visitor)
{
    waitFor(L"the window is there", [&] { return IsWindowVisible(visitor.mainWindow()) != FALSE; });
    goTo(visitor, ben, tourTime(0, 10));
    visitor.doubleClickAt(visitor.schedule(), pointOfTime(visitor, ben, tourTime(0, 10)),
                          L"the empty slot at ten o'clock");
    BookingDialog dialog(visitor);
    visitor.picture(dialog.handle(), L"booking-empty");
    dialog.stopLater(2);
    dialog.enterText(meeting);
    dialog.chooseType(L"Meeting");
    dialog.toggle(emily);
    dialog.toggle(jonas);
    dialog.repeatWeekly(4);
    expect(dialog.checked() == std::vector<std::wstring>{ben, emily, jonas}, L"three checked resources");
    visitor.picture(dialog.handle(), L"booking-new");
    dialog.ok();

    const auto booked = waitForBookings(visitor, meeting, 12);
    for (const Booking& each : booked)
    {
        expect(each.type == L"Meeting" && each.link != 0 && each.link == booked.front().link,
               L"meetings in one link group");
        const auto rule = visitor.bookings().ruleOf(each.id.event);
        expect(rule && rule->kind == byWeek && rule->interval == 0 && rule->count == 4,
               L"each week, four times");
        expect(minutesBetween(each.start, each.end) == 180, L"three hours each");
    }
    for (const wchar_t* name : {ben, emily, jonas})
        for (long week = 0; week < 4; ++week)
            expect(isBooked(visitor, name, tourTime(7 * week, 10)),
                   std::wstring(name) + L" booked in week " + std::to_wstring(week + 1));
    visitor.picture(visitor.mainWindow(), L"booking-schedule");
}

void changeAll(Visitor& visitor)
{
    openOccurrence(visitor, ben, tourTime(0, 10), true);
    BookingDialog dialog(visitor);
    visitor.waitForText(dialog.text(), meeting, L"the description");
    expect(textOf(dialog.types()) == L"Meeting", L"the type as it was booked");
    expect(dialog.checked() == std::vector<std::wstring>{ben, emily, jonas}, L"the three resources");
    dialog.enterText(training);
    dialog.chooseType(L"Training");
    visitor.picture(dialog.handle(), L"booking-change");
    dialog.ok();
    for (const Booking& each : waitForBookings(visitor, training, 12))
        expect(each.type == L"Training" && each.link != 0, L"trainings in a link group");
    expect(bookingsOf(visitor, meeting).empty(), L"no occurrence with the former text");
}

void changeOne(Visitor& visitor)
{
    zoom(visitor, true);
    goTo(visitor, maria, tourTime(7, 10));
    visitor.picture(visitor.mainWindow(), L"booking-weeks");
    openOccurrence(visitor, emily, tourTime(7, 10), false);
    BookingDialog dialog(visitor);
    visitor.waitForText(dialog.text(), training, L"the description");
    expect(!IsWindowEnabled(dialog.tree()), L"resources that one occurrence cannot change");
    dialog.enterText(online);
    visitor.picture(dialog.handle(), L"booking-occurrence");
    dialog.ok();
    for (const Booking& each : waitForBookings(visitor, online, 3))
        expect(each.id.instance == 2 && minutesBetween(each.start, tourTime(7, 10)) == 0,
               L"the second occurrence");
    expect(bookingsOf(visitor, training).size() == 9, L"the other occurrences as they were");
    goTo(visitor, ben, tourTime(0, 10));
    zoom(visitor, false);
    goTo(visitor, ben, tourTime(0, 10));
}

void releaseResources(Visitor& visitor)
{
    openOccurrence(visitor, ben, tourTime(0, 12), true);
    BookingDialog dialog(visitor);
    dialog.toggle(emily);
    dialog.toggle(jonas);
    expect(dialog.checked() == std::vector<std::wstring>{ben}, L"one checked resource");
    visitor.picture(dialog.handle(), L"booking-resources");
    dialog.ok();
    waitFor(L"the series is booked for one resource only",
            [&] { return bookingsOf(visitor, training).size() + bookingsOf(visitor, online).size() == 6; });
    for (const Booking& each : visitor.bookings().all())
        expect(each.link == 0, L"no link group any more");
    for (long week = 1; week < 4; ++week)
    {
        expect(isBooked(visitor, ben, tourTime(7 * week, 10)), L"Ben's series");
        expect(!isBooked(visitor, emily, tourTime(7 * week, 10)), L"nothing for Emily");
        expect(!isBooked(visitor, jonas, tourTime(7 * week, 10)), L"nothing for Jonas");
    }
}

void confirmDeletion(Visitor& visitor, bool confirmed)
{
    visitor.press({VK_DELETE}, L"Del");
    const HWND question = visitor.messageBox(L"Delete activity");
    visitor.answer(question, confirmed ? IDYES : IDNO, confirmed ? L"Yes" : L"No");
    visitor.waitForEndIn(visitor.schedule());
}

void removeOccurrence(Visitor& visitor)
{
    zoom(visitor, true);
    goTo(visitor, emily, tourTime(7, 10));
    visitor.clickAt(visitor.schedule(), pointOfBar(visitor, ben, tourTime(7, 10)),
                    L"the bar of the second week");
    confirmDeletion(visitor, false);
    expect(isBooked(visitor, ben, tourTime(7, 10)), L"the occurrence, as it was not to be deleted");
    visitor.press({VK_DELETE}, L"Del");
    visitor.picture(visitor.messageBox(L"Delete activity"), L"booking-delete");
    visitor.answer(visitor.messageBox(L"Delete activity"), IDYES, L"Yes");
    visitor.waitForEndIn(visitor.schedule());
    waitFor(L"the occurrence is gone", [&] { return !isBooked(visitor, ben, tourTime(7, 10)); });
    for (const OleDate time : {tourTime(0, 12), tourTime(14, 10), tourTime(21, 10)})
        expect(isBooked(visitor, ben, time), L"the other occurrences");
    goTo(visitor, ben, tourTime(0, 10));
    zoom(visitor, false);
    goTo(visitor, ben, tourTime(0, 10));
}

void removeAll(Visitor& visitor)
{
    openOccurrence(visitor, ben, tourTime(0, 12), true);
    const BookingDialog dialog(visitor);
    visitor.clickButton(dialog.handle(), L"De&lete");
    visitor.waitForEndIn(visitor.schedule());
    waitFor(L"the series is gone", [&] { return visitor.bookings().all().size() == 2; });

    for (const wchar_t* name : {maria, paul})
    {
        visitor.clickAt(visitor.schedule(), pointOfBar(visitor, name, tourTime(0, 16)),
                        std::wstring(L"the copy of ") + name);
        confirmDeletion(visitor, true);
    }
    waitFor(L"nothing is booked", [&] { return visitor.bookings().all().empty(); });
}

std::vector<std::wstring> shownBookings(Visitor& visitor)
{
    std::vector<std::wstring> texts;
    for (const Booking& each : visitor.bookings().all())
        texts.push_back(std::to_wstring(each.id.event) + L"." + std::to_wstring(each.id.instance) + L"  " +
                        shown(each) + (each.link != 0 ? L" | link " + std::to_wstring(each.link) : L""));
    return texts;
}

} // namespace

std::vector<Booking> bookingsOf(Visitor& visitor, const std::wstring& text)
{
    auto bookings = visitor.bookings().all();
    std::erase_if(bookings, [&](const Booking& each) { return each.text != text; });
    return bookings;
}

std::vector<Booking> waitForBookings(Visitor& visitor, const std::wstring& text, std::size_t count)
{
    std::vector<Booking> bookings;
    waitFor(std::to_wstring(count) + L" occurrences are booked as " + quoted(text), [&] {
        bookings = bookingsOf(visitor, text);
        return bookings.size() == count;
    });
    return bookings;
}

Booking bookingAt(Visitor& visitor, const std::wstring& resource, OleDate start)
{
    for (Booking& each : visitor.bookings().all())
        if (each.resource == resource && minutesBetween(each.start, start) == 0)
            return std::move(each);
    throw tourFailure(resource + L" is not booked on " + shownDay(start, L"ddd d MMM") + L", " +
                      shownTime(start));
}

bool isBooked(Visitor& visitor, const std::wstring& resource, OleDate start)
{
    const auto bookings = visitor.bookings().all();
    return std::any_of(bookings.begin(), bookings.end(), [&](const Booking& each) {
        return each.resource == resource && minutesBetween(each.start, start) == 0;
    });
}

Chapter bookingChapter() noexcept
{
    static constexpr Step steps[] = {
        {L"Book: double click in an empty slot; stop, text, type, two more resources, each week four times",
         &book},
        {L"Change all occurrences, for all resources", &changeAll},
        {L"Change one occurrence", &changeOne},
        {L"Drag in time, with all resources", &moveAll},
        {L"Drag in time, this resource only", &moveOne},
        {L"Drag, but not after all: Esc on the way, Cancel when asked", &moveNone},
        {L"Drag to another resource", &moveToOtherResource},
        {L"Copy: drag with Ctrl", &copyByMouse},
        {L"Move by keyboard", &moveByKeyboard},
        {L"Copy by keyboard", &copyByKeyboard},
        {L"Uncheck all resources but one", &releaseResources},
        {L"Delete one occurrence", &removeOccurrence},
        {L"Delete everything", &removeAll},
        {L"Exit by the menu", [](Visitor& visitor) { visitor.leave(); }},
    };
    return {L"Activities", steps, &shownBookings};
}

} // namespace korvane::host
