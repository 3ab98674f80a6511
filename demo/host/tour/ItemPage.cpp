#include "demo/host/tour/ItemPage.h"

namespace korvane::host::itemPage
{

void mixColor(Visitor& visitor, COLORREF color, Text pictureName)
{
    visitor.click(moreColors);
    visitor.waitForBox(colorDialog);
    const auto enterPart = [&](Text key, BYTE value) {
        visitor.press(key); // the part's text is selected then
        visitor.type(std::to_wstring(value));
    };
    enterPart(L"Alt+R", GetRValue(color));
    enterPart(L"Alt+G", GetGValue(color));
    enterPart(L"Alt+B", GetBValue(color));
    visitor.picture(visitor.front(), pictureName);
    visitor.press(L"Enter");
    visitor.waitForBoxToGo(colorDialog);
}

} // namespace korvane::host::itemPage
