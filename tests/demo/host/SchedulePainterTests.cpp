#include "demo/host/schedule/SchedulePainter.h"

#include "demo/host/Display.h"
#include "demo/host/schedule/Colors.h"
#include "tests/demo/host/TestSchedule.h"

#include <gtest/gtest.h>

#include <memory>

namespace korvane::host
{

namespace
{

using test::at;
using test::booked;
using test::scheduleOf;

constexpr COLORREF green = RGB(0x70, 0xAD, 0x47);

/// A picture of the schedule at a resolution.
class SchedulePainterTest : public testing::TestWithParam<int>
{
public:
    SchedulePainterTest()
    {
        schedule.setColors({{1, static_cast<long>(green)}});
        SelectObject(context, bitmap);
    }
    SchedulePainterTest(const SchedulePainterTest&) = delete;
    SchedulePainterTest& operator=(const SchedulePainterTest&) = delete;
    ~SchedulePainterTest() override
    {
        DeleteDC(context);
        DeleteObject(bitmap);
        ReleaseDC(nullptr, screen);
    }

protected:
    void draw() { SchedulePainter(context, view, area).draw(font.get()); }

    COLORREF colorAt(OleDate time, int y) const { return GetPixel(context, view.layout.pixelOf(time), y); }
    int lowerEdge(std::size_t row) const { return view.layout.rowTop(row) + view.layout.rowHeight(row) - 3; }

    int dpi = GetParam();
    RECT area{0, 0, 700 * dpi / 96, 200 * dpi / 96};
    HDC screen = GetDC(nullptr);
    HDC context = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, area.right, area.bottom);
    Font font = createMessageFont(dpi);
    Schedule schedule = scheduleOf({booked(1, 10, 9, 10)});
    TimeScale scale{dpi, at(7)};
    ScheduleMetrics metrics = ScheduleMetrics::forDpi(dpi, textHeight(font.get()));
    ScheduleView view{.schedule = schedule,
                      .scale = scale,
                      .metrics = metrics,
                      .layout = {schedule, scale, metrics, 0},
                      .now = at(7, 100),
                      .selected = nullptr,
                      .slot = std::nullopt,
                      .outline = std::nullopt,
                      .copies = false,
                      .focused = false};
};

TEST_P(SchedulePainterTest, ShowsBarsInTheColourOfTheirType)
{
    draw();
    const RECT place = view.layout.placeOf(schedule.bars().front());
    EXPECT_EQ(GetPixel(context, place.left + 2, place.bottom - 3), green);
    EXPECT_EQ(GetPixel(context, place.right - 3, place.top + 2), green);
    EXPECT_EQ(colorAt(at(10.5), (place.top + place.bottom) / 2), paper());
}

TEST_P(SchedulePainterTest, MarksAResourceWithItsColour)
{
    schedule.setResources({{10, L"Ann", static_cast<long>(green)}, {20, L"Bob"}});
    draw();
    EXPECT_EQ(GetPixel(context, 1, lowerEdge(0)), green);
    EXPECT_EQ(GetPixel(context, 1, lowerEdge(1)), headerColor()) << "none is chosen";
}

TEST_P(SchedulePainterTest, ShadesWeekends)
{
    draw();
    EXPECT_EQ(colorAt(at(13.5), lowerEdge(2)), paper());
    scale.scrollTo(at(7, 5));
    draw();
    EXPECT_NE(colorAt(at(13.5, 5), lowerEdge(2)), paper());
}

TEST_P(SchedulePainterTest, MarksThePresent)
{
    view.now = at(13.5);
    draw();
    EXPECT_NE(colorAt(at(13.5), lowerEdge(2)), paper());
}

TEST_P(SchedulePainterTest, OutlinesWhereSomethingWouldLand)
{
    const Slot landing{1, at(12), at(13)};
    const RECT place = view.layout.placeOf(landing);
    draw();
    EXPECT_NE(GetPixel(context, place.right - 1, place.top), accent());
    view.outline = landing;
    draw();
    EXPECT_EQ(GetPixel(context, place.right - 1, place.top), accent());
    EXPECT_EQ(colorAt(at(12.5), (place.top + place.bottom) / 2), paper()) << "an outline only";
}

TEST_P(SchedulePainterTest, MarksACopyWithAPlus)
{
    view.outline = Slot{1, at(12), at(13)};
    const RECT place = view.layout.placeOf(*view.outline);
    const auto marked = [&] {
        int pixels = 0;
        for (int x = place.left + 4; x < place.right - 4; ++x)
            for (int y = place.top + 4; y < place.bottom - 4; ++y)
                pixels += GetPixel(context, x, y) == accent() ? 1 : 0;
        return pixels;
    };
    draw();
    const int moved = marked();
    view.copies = true;
    draw();
    EXPECT_GT(marked(), moved + 8);
}

TEST_P(SchedulePainterTest, FramesTheSelectedBar)
{
    const RECT place = view.layout.placeOf(schedule.bars().front());
    draw();
    EXPECT_NE(GetPixel(context, place.left - 1, place.top - 1), accent());
    view.selected = &schedule.bars().front();
    draw();
    EXPECT_EQ(GetPixel(context, place.left - 1, place.top - 1), accent());
}

TEST_P(SchedulePainterTest, DrawsWhatIsScrolledInto)
{
    std::vector<Resource> resources;
    for (long id = 1; id <= 40; ++id)
        resources.push_back({id, L"Somebody"});
    schedule.setResources(resources);
    schedule.setOccurrences({booked(1, 1, 9, 10), booked(2, 31, 9, 10), booked(3, 40, 9, 10)});
    const auto shows = [&](std::size_t bar, int scrolled) {
        std::destroy_at(&view.layout);
        std::construct_at(&view.layout, schedule, scale, metrics, scrolled);
        draw();
        const RECT place = view.layout.placeOf(schedule.bars()[bar]);
        return GetPixel(context, place.left + 2, place.bottom - 3) == green;
    };
    const int row = view.layout.rowHeight(0);
    EXPECT_TRUE(shows(0, 0));
    EXPECT_FALSE(shows(1, 0));
    EXPECT_TRUE(shows(1, 30 * row)) << "the first row that is seen";
    EXPECT_FALSE(shows(0, 30 * row));
    EXPECT_TRUE(shows(2, view.layout.heightOfRows() - 2 * row)) << "the last one";
}

TEST_P(SchedulePainterTest, KeepsBarsOutOfTheNames)
{
    scale.scrollTo(at(9.5)); // the bar has begun at the left
    draw();
    const RECT place = view.layout.placeOf(schedule.bars().front());
    EXPECT_LT(place.left, metrics.nameWidth);
    EXPECT_EQ(GetPixel(context, metrics.nameWidth - 3, place.top + 2), headerColor());
    EXPECT_EQ(GetPixel(context, metrics.nameWidth + 2, place.top + 2), green);
}

INSTANTIATE_TEST_SUITE_P(AtResolutions, SchedulePainterTest, testing::Values(96, 144, 192));

TEST(ScheduleColors, LetTextsBeRead)
{
    EXPECT_EQ(textColorOn(RGB(255, 255, 255)), RGB(0, 0, 0));
    EXPECT_EQ(textColorOn(RGB(255, 255, 0)), RGB(0, 0, 0));
    EXPECT_EQ(textColorOn(RGB(0, 0, 0)), RGB(255, 255, 255));
    EXPECT_EQ(textColorOn(RGB(0, 0, 255)), RGB(255, 255, 255));
    EXPECT_EQ(textColorOn(RGB(128, 0, 0)), RGB(255, 255, 255));
    // Where the contrasts with black and white meet.
    EXPECT_EQ(textColorOn(RGB(0x75, 0x75, 0x75)), RGB(255, 255, 255));
    EXPECT_EQ(textColorOn(RGB(0x76, 0x76, 0x76)), RGB(0, 0, 0));
    EXPECT_EQ(textColorOn(RGB(130, 130, 130)), RGB(0, 0, 0));
}

} // namespace

} // namespace korvane::host
