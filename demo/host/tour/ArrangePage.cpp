#include "demo/host/tour/ArrangePage.h"

namespace korvane::host::arrangePage
{

namespace
{

SIZE sizeOf(HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    return {place.right - place.left, place.bottom - place.top};
}

} // namespace

void dragItem(Visitor& visitor, Text item, Text to)
{
    const HWND listBox = visitor.find(list);
    const auto placeOf = [&](Text text) { return middleOf(listBox, placeOfItem(listBox, text)); };
    visitor.dragTo(listBox, placeOf(item), placeOf(to), item + std::wstring(L" to ") + to);
    visitor.drop();
}

void enlargeWindow(Visitor& visitor, int pixels)
{
    const SIZE before = sizeOf(visitor.find(list));
    RECT place{};
    GetWindowRect(visitor.dialog(), &place);
    const POINT corner{place.right - 2, place.bottom - 2};
    visitor.dragTo(visitor.dialog(), corner, {corner.x + pixels, corner.y + pixels}, L"the window's corner");
    visitor.drop();
    waitFor(L"the list has grown along", [&] {
        const SIZE now = sizeOf(visitor.find(list));
        return now.cx - before.cx == pixels && now.cy - before.cy == pixels;
    });
}

} // namespace korvane::host::arrangePage
