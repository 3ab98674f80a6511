// A schedule on a database with the sample, within a window that nobody sees.
#pragma once

#include "demo/datalayer/Database.h"
#include "demo/host/schedule/ScheduleWindow.h"
#include "tests/demo/host/TestSchedule.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace korvane::host
{

class ScheduleWindowTest : public testing::Test
{
public:
    ScheduleWindowTest()
    {
        std::filesystem::remove(file);
        database->put_LockTimeout(50);
        call(database, &IDatabase::Open, Bstr(file).get(), nullptr, root.put());
        call(database, &IDatabase::AddSample, root.get());
        call(root, &IRoot::get_Events, events.put());
        call(database, &IDatabase::Open, Bstr(file).get(), nullptr, view.put());
        window = std::make_unique<ScheduleWindow>(parent, view);
        window->onOpen = [this] { ++opened; };
        window->onDrop = [this](const Bar& bar, const Slot& landing, bool copies) {
            dropped.push_back({bar, landing, copies});
        };
        window->place({0, 0, 900, 400});
        window->scrollTo(at(7));
        window->showGroup(staff);
        work();
    }
    ScheduleWindowTest(const ScheduleWindowTest&) = delete;
    ScheduleWindowTest& operator=(const ScheduleWindowTest&) = delete;
    ~ScheduleWindowTest() override
    {
        window.reset();
        DestroyWindow(parent);
        events.reset();
        root.reset();
        view.reset();
        std::filesystem::remove(file);
    }

protected:
    static constexpr long staff = 4; // in a new database with the sample
    static constexpr long meeting = 1;

    struct Dropped
    {
        Bar bar;
        Slot landing;
        bool copies;
    };

    static OleDate at(double hour) { return test::at(hour, 0); }

    /// What is posted is done.
    static void work()
    {
        MSG message;
        for (int count = 0; PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE); ++count)
        {
            ASSERT_LT(count, 100) << "one load leads to the next without end";
            DispatchMessageW(&message);
        }
    }

    long book(std::size_t row, double from, double to) const
    {
        const long event = fetch(events, &IEvents::Add, window->content().rows().at(row).resource.id, meeting,
                                 at(from).days, at(to).days, Bstr(L"Work").get());
        window->refresh(true);
        work();
        return event;
    }

    std::wstring trace() const
    {
        const auto text = fetch(database, &IDatabase::get_Trace);
        call(database, &IDatabase::ClearTrace);
        return std::wstring(text.view());
    }

    int loads() const
    {
        const std::wstring text = trace();
        int count = 0;
        for (auto found = text.find(L"Schedule.Load"); found != std::wstring::npos;
             found = text.find(L"Schedule.Load", found + 1))
            ++count;
        return count;
    }

    LPARAM pointAt(std::size_t row, double hour) const
    {
        const RECT place = window->layout().placeOf(Slot{row, at(hour), at(hour + 1)});
        return MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    }

    void send(UINT message, WPARAM first, LPARAM second = 0) const
    {
        SendMessageW(window->handle(), message, first, second);
    }
    void key(WPARAM virtualKey) const { send(WM_KEYDOWN, virtualKey); }

    std::wstring file = (std::filesystem::temp_directory_path() /
                         (L"korvane schedule " + std::to_wstring(GetCurrentProcessId()) + L".sqlite"))
                            .wstring();
    HWND parent =
        CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 900, 400, nullptr, nullptr, nullptr, nullptr);
    ComPtr<IDatabase> database{make<store::Database>().get()};
    ComPtr<IRoot> root; ///< somebody else's, who writes
    ComPtr<IRoot> view;
    ComPtr<IEvents> events;
    std::unique_ptr<ScheduleWindow> window;
    int opened = 0;
    std::vector<Dropped> dropped;
};

} // namespace korvane::host
