#include "demo/datalayer/Sqlite.h"
#include "framework/com/Boundary.h"
#include "tests/demo/host/ScheduleWindowTest.h"
#include "tests/support/Questions.h"

namespace korvane::host
{

namespace
{

class ScheduleReading : public ScheduleWindowTest
{
protected:
    /// Books while another user keeps everybody from reading.
    long bookBehindALock()
    {
        const long event = fetch(events, &IEvents::Add, window->content().rows().at(1).resource.id, meeting,
                                 at(9).days, at(10).days, Bstr(L"Work").get());
        lock = std::make_unique<store::Connection>(file, 50);
        lock->execute("BEGIN EXCLUSIVE");
        window->refresh(true);
        return event;
    }

    std::unique_ptr<store::Connection> lock;
    korvane::test::Questions boxes; ///< closes the boxes that tell a failure
};

TEST_F(ScheduleReading, ShowsWhatIsBookedAsSoonAsItIs)
{
    const long event = book(1, 9, 10);
    ASSERT_EQ(window->content().bars().size(), 1U);
    const Bar& bar = window->content().bars().front();
    EXPECT_EQ(bar.id, (BarId{event, 0}));
    EXPECT_EQ(bar.row, 1U);
    EXPECT_EQ(bar.start, at(9));
    EXPECT_EQ(bar.text, L"Work");
    EXPECT_TRUE(window->content().colorOf(bar.type));
    call(events, &IEvents::Remove, event, 0L);
    window->refresh(true);
    work();
    EXPECT_TRUE(window->content().bars().empty());
}

TEST_F(ScheduleReading, LoadsOnceForManyChanges)
{
    trace();
    for (int count = 0; count < 5; ++count)
    {
        fetch(events, &IEvents::Add, 3L, meeting, at(9).days, at(10).days, Bstr(L"").get());
        window->refresh(true);
    }
    EXPECT_EQ(loads(), 0) << "not within the calls that change";
    work();
    EXPECT_EQ(loads(), 1);
    work();
    EXPECT_EQ(loads(), 0);
    EXPECT_EQ(window->content().bars().size(), 5U);
}

TEST_F(ScheduleReading, ShowsAnotherDatabase)
{
    book(1, 9, 10);
    const std::wstring otherFile = file + L".other";
    std::filesystem::remove(otherFile);
    window->follow(fetch(database, &IDatabase::Open, Bstr(otherFile).get(), nullptr));
    work();
    EXPECT_TRUE(window->content().rows().empty());
    window->follow(view);
    work();
    EXPECT_EQ(window->content().bars().size(), 1U);
    EXPECT_TRUE(std::filesystem::remove(otherFile)) << "nobody holds it any more";
}

TEST_F(ScheduleReading, TellsNothingOfWhatOthersWriteBehindALock)
{
    lock = std::make_unique<store::Connection>(file, 50);
    lock->execute("BEGIN EXCLUSIVE");
    window->refresh(false);
    work();
    EXPECT_TRUE(boxes.asked.empty());
    trace();
    lock.reset();
    send(WM_TIMER, ScheduleWindow::timerMinute);
    work();
    EXPECT_EQ(loads(), 1) << "it is read as soon as it can be";
}

TEST_F(ScheduleReading, LoadsWhatIsScrolledInto)
{
    fetch(events, &IEvents::Add, 3L, meeting, test::at(9, 60).days, test::at(10, 60).days, Bstr(L"").get());
    work();
    EXPECT_TRUE(window->content().bars().empty());
    window->scrollTo(test::at(7, 60));
    work();
    EXPECT_EQ(window->content().bars().size(), 1U);
}

TEST_F(ScheduleReading, TellsOnceThatItIsRefusedAndReadsAgainWhenScrolled)
{
    bookBehindALock();
    work();
    EXPECT_EQ(boxes.asked.size(), 1U);
    EXPECT_TRUE(window->content().bars().empty());
    EXPECT_EQ(window->content().rows().size(), 6U) << "what was read before is still shown";
    window->scrollTo(at(9));
    work();
    EXPECT_EQ(boxes.asked.size(), 1U) << "this much was known before";
    lock.reset();
    window->scrollTo(at(8));
    work();
    EXPECT_EQ(boxes.asked.size(), 1U);
    EXPECT_EQ(window->content().bars().size(), 1U);
}

TEST_F(ScheduleReading, TellsAgainWhenTheUserAsksForSomethingElse)
{
    bookBehindALock();
    work();
    window->scrollTo(test::at(9, 60));
    work();
    EXPECT_EQ(boxes.asked.size(), 2U);
    window->showGroup(0);
    work();
    EXPECT_EQ(boxes.asked.size(), 3U);
}

TEST_F(ScheduleReading, TriesAgainByItselfWithoutASecondBox)
{
    bookBehindALock();
    work();
    send(WM_TIMER, ScheduleWindow::timerMinute);
    work();
    EXPECT_EQ(boxes.asked.size(), 1U);
    lock.reset();
    send(WM_TIMER, ScheduleWindow::timerMinute);
    work();
    EXPECT_EQ(window->content().bars().size(), 1U);
}

TEST_F(ScheduleReading, SelectsWhatIsWantedAsSoonAsItCanBeRead)
{
    const long event = bookBehindALock();
    window->select({event, 0});
    work();
    EXPECT_EQ(window->selectedBar(), nullptr);
    lock.reset();
    window->scrollTo(at(8));
    work();
    ASSERT_NE(window->selectedBar(), nullptr) << "what was to be selected is, once it is there";
    EXPECT_EQ(window->selectedBar()->id.event, event);
}

TEST_F(ScheduleReading, SelectsWhatADialogEndedWith)
{
    book(0, 9, 10);
    const long event = bookBehindALock();
    lock.reset();
    window->select({event, 0});
    EXPECT_EQ(window->selectedBar(), nullptr) << "it is not read yet";
    work();
    ASSERT_NE(window->selectedBar(), nullptr);
    EXPECT_EQ(window->selectedBar()->id.event, event);
}

TEST_F(ScheduleReading, KeepsWhatTheUserSelectsMeanwhile)
{
    const long event = bookBehindALock();
    window->select({event, 0});
    work();
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(3, 11));
    lock.reset();
    window->scrollTo(at(8));
    work();
    EXPECT_EQ(window->content().bars().size(), 1U);
    EXPECT_EQ(window->selectedBar(), nullptr);
    EXPECT_EQ(window->selectedSlot()->row, 3U);
}

} // namespace

} // namespace korvane::host
