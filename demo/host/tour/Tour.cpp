#include "demo/host/tour/Tour.h"

#include "demo/host/tour/Picture.h"
#include "framework/com/Boundary.h"

#include <cstdlib>

namespace korvane::host
{

namespace
{

class Com
{
public:
    Com() { require(CoInitialize(nullptr)); }
    Com(const Com&) = delete;
    Com& operator=(const Com&) = delete;
    ~Com() { CoUninitialize(); }
};

} // namespace

Tour::Tour(const Chapter& chapter, MainWindow& window, std::wstring folder, Report& report)
    : chapter_(chapter), window_(window), folder_(std::move(folder)), report_(report),
      visitor_(window, folder_, report), thread_([this] { succeeded_ = go(); })
{
}

bool Tour::succeeded()
{
    if (thread_.joinable())
        thread_.join();
    return succeeded_;
}

bool Tour::go()
{
    bool passed = false;
    const auto failure = attempt([&] {
        const Com com; // the visitor looks into the database by himself
        const Bookings bookings(window_.database());
        visitor_.reads(bookings);
        passed = takeAll();
    });
    if (!failure)
        return passed;
    report_.both(L"FAIL: " + std::wstring(failure->description().view()));
    window_.invoke([] { PostQuitMessage(EXIT_FAILURE); });
    return false;
}

bool Tour::takeAll()
{
    const std::wstring failedPicture = folder_ + L"\\failed.png";
    DeleteFileW(failedPicture.c_str()); // of an earlier tour
    report_.both(std::wstring(L"=== ") + chapter_.title);
    int number = 0;
    for (const Step& step : chapter_.steps)
        if (!take(step, ++number))
        {
            attempt([&] { savePicture(GetDesktopWindow(), failedPicture); });
            visitor_.letGo();
            report_.both(L"The tour ends here: later steps build on this one.");
            window_.invoke([] { PostQuitMessage(EXIT_FAILURE); });
            return false;
        }
    report_.both(L"All " + std::to_wstring(number) + L" steps passed. The pictures are in " + folder_ + L".");
    return true;
}

bool Tour::take(const Step& step, int number)
{
    constexpr int deeper = 5;
    const std::wstring title = std::to_wstring(number) + L". " + step.title;
    report_.detail(title, 0);
    auto failure = attempt([&] {
        visitor_.beginStep();
        for (const Deed& deed : step.deeds)
            deed(visitor_);
    });

    report_.detail(L"operands:");
    report_.detail(visitor_.takeOrders(), deeper);
    report_.detail(L"data layer:");
    report_.detail(visitor_.trace(), deeper);
    report_.detail(L"in the database:");
    const auto unreadable = attempt([&] {
        for (const std::wstring& row : chapter_.rows(visitor_))
            report_.detail(row, deeper);
    });
    if (!failure)
        failure = unreadable;
    const std::wstring outcome = failure ? L"FAIL: " + std::wstring(failure->description().view()) : L"PASS";
    report_.detail(outcome);
    report_.summary(title + L": " + outcome);
    return !failure;
}

} // namespace korvane::host
