// The steps that move and copy activities. The week's meeting stands at ten on Monday when they begin.
#include "demo/host/tour/BookingSteps.h"

#include "demo/host/tour/Screen.h"

namespace korvane::host
{

namespace
{

constexpr const wchar_t* moveTitle = L"Move activity";

void drag(Visitor& visitor, const std::wstring& resource, OleDate from, const std::wstring& toResource,
          OleDate to)
{
    const POINT taken = pointOfBar(visitor, resource, from);
    const POINT start = pointOfTime(visitor, resource, from);
    const POINT landing = pointOfTime(visitor, toResource, to);
    visitor.dragTo(visitor.schedule(), taken, {landing.x + taken.x - start.x, landing.y},
                   L"the bar of " + resource + L" to " + toResource + L", " + shownTime(to));
}

POINT pointer()
{
    POINT place{};
    GetCursorPos(&place);
    return place;
}

void drop(Visitor& visitor)
{
    visitor.dropAt(pointer(), L"it");
}

void expectTime(Visitor& visitor, const std::wstring& resource, OleDate time)
{
    waitFor(resource + L" is booked at " + shownTime(time),
            [&] { return isBooked(visitor, resource, time); });
}

void expectFree(Visitor& visitor, const std::wstring& resource, OleDate time)
{
    expect(!isBooked(visitor, resource, time), resource + L" free at " + shownTime(time));
}

} // namespace

void moveAll(Visitor& visitor)
{
    drag(visitor, ben, tourTime(0, 10), ben, tourTime(0, 12));
    visitor.picture(visitor.mainWindow(), L"booking-drag");
    drop(visitor);
    const HWND question = visitor.messageBox(moveTitle);
    visitor.picture(question, L"booking-move-question");
    visitor.answer(question, IDYES, L"Yes: all resources");
    visitor.waitForEndIn(visitor.schedule());
    for (const wchar_t* name : {ben, emily, jonas})
    {
        expectTime(visitor, name, tourTime(0, 12));
        expectFree(visitor, name, tourTime(0, 10));
        expectTime(visitor, name, tourTime(7, 10)); // other occurrences stay
        expect(bookingAt(visitor, name, tourTime(0, 12)).id.instance == 1,
               L"the first occurrence, still of the series");
    }
    visitor.expectCall(L"EventLinks.UpdateLinked");
}

void moveOne(Visitor& visitor)
{
    drag(visitor, emily, tourTime(0, 12), emily, tourTime(0, 14));
    drop(visitor);
    visitor.answer(visitor.messageBox(moveTitle), IDNO, L"No: this one only");
    visitor.waitForEndIn(visitor.schedule());
    expectTime(visitor, emily, tourTime(0, 14));
    expectFree(visitor, emily, tourTime(0, 12));
    expectTime(visitor, ben, tourTime(0, 12));
    expectTime(visitor, jonas, tourTime(0, 12));
    visitor.expectCall(L"Events.Update");
    visitor.expectNoCall(L"EventLinks.UpdateLinked");
}

void moveNone(Visitor& visitor)
{
    drag(visitor, jonas, tourTime(0, 12), jonas, tourTime(0, 16));
    visitor.press({VK_ESCAPE}, L"Esc, with the button down");
    drop(visitor);
    visitor.waitForEndIn(visitor.schedule());
    expectTime(visitor, jonas, tourTime(0, 12));

    drag(visitor, ben, tourTime(0, 12), ben, tourTime(0, 16));
    drop(visitor);
    visitor.answer(visitor.messageBox(moveTitle), IDCANCEL, L"Cancel");
    visitor.waitForEndIn(visitor.schedule());
    expectTime(visitor, ben, tourTime(0, 12));
    expectFree(visitor, ben, tourTime(0, 16));
    visitor.expectNoCall(L"Events.Update");
    visitor.expectNoCall(L"EventLinks.UpdateLinked");
}

void moveToOtherResource(Visitor& visitor)
{
    const Booking before = bookingAt(visitor, jonas, tourTime(0, 12));
    drag(visitor, jonas, tourTime(0, 12), maria, tourTime(0, 12));
    drop(visitor);
    waitFor(L"the dialog has come and gone", [&] { return isBooked(visitor, maria, tourTime(0, 12)); });
    visitor.waitForEndIn(visitor.schedule());
    const Booking after = bookingAt(visitor, maria, tourTime(0, 12));
    expect(after.id == before.id && after.text == before.text, L"the same occurrence, with another resource");
    expectFree(visitor, jonas, tourTime(0, 12));
    expectTime(visitor, jonas, tourTime(7, 10));
}

void copyByMouse(Visitor& visitor)
{
    const Booking original = bookingAt(visitor, ben, tourTime(0, 12));
    drag(visitor, ben, tourTime(0, 12), paul, tourTime(0, 15));
    visitor.hold(VK_CONTROL, L"Ctrl");
    visitor.picture(visitor.mainWindow(), L"booking-copy");
    drop(visitor);
    visitor.release(VK_CONTROL, L"Ctrl");
    expectTime(visitor, paul, tourTime(0, 15));
    visitor.waitForEndIn(visitor.schedule());
    const Booking copy = bookingAt(visitor, paul, tourTime(0, 15));
    expect(copy.id.event != original.id.event && copy.id.instance == 0 && copy.link == 0,
           L"an activity of its own, without repetition and without link");
    expect(copy.text == original.text && copy.type == original.type, L"the text and type of the original");
    expectTime(visitor, ben, tourTime(0, 12));
    visitor.expectCall(L"Events.Add");
}

void moveByKeyboard(Visitor& visitor)
{
    visitor.clickAt(visitor.schedule(), pointOfBar(visitor, paul, tourTime(0, 15)), L"the copy");
    visitor.press({VK_CONTROL, 'M'}, L"Ctrl+M");
    visitor.press({VK_RIGHT}, L"Right");
    visitor.press({VK_UP}, L"Up");
    visitor.picture(visitor.mainWindow(), L"booking-keyboard-move");
    visitor.press({VK_RETURN}, L"Enter");
    expectTime(visitor, maria, tourTime(0, 16));
    visitor.waitForEndIn(visitor.schedule());
    expectFree(visitor, paul, tourTime(0, 15));

    visitor.press({VK_CONTROL, 'M'}, L"Ctrl+M");
    visitor.press({VK_DOWN}, L"Down");
    visitor.press({VK_ESCAPE}, L"Esc");
    expectTime(visitor, maria, tourTime(0, 16));
}

void copyByKeyboard(Visitor& visitor)
{
    visitor.clickAt(visitor.schedule(), pointOfBar(visitor, maria, tourTime(0, 16)), L"the copy");
    visitor.press({VK_CONTROL, VK_SHIFT, 'M'}, L"Ctrl+Shift+M");
    visitor.press({VK_DOWN}, L"Down");
    visitor.press({VK_RETURN}, L"Enter");
    expectTime(visitor, paul, tourTime(0, 16));
    visitor.waitForEndIn(visitor.schedule());
    expectTime(visitor, maria, tourTime(0, 16));
    expect(bookingAt(visitor, maria, tourTime(0, 16)).id.event !=
               bookingAt(visitor, paul, tourTime(0, 16)).id.event,
           L"two activities");
}

} // namespace korvane::host
