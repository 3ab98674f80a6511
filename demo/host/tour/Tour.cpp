#include "demo/host/tour/Tour.h"

#include "demo/host/tour/Picture.h"
#include "demo/host/tour/Report.h"
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

Tour::Tour(const Chapter& chapter, MainWindow& window, std::wstring folder)
    : chapter_(chapter), window_(window), folder_(std::move(folder)), visitor_(window, folder_),
      thread_([this] { succeeded_ = go(); })
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
    print("", L"FAIL: " + std::wstring(failure->description().view()));
    window_.invoke([] { PostQuitMessage(EXIT_FAILURE); });
    return false;
}

bool Tour::takeAll()
{
    const std::wstring failedPicture = folder_ + L"\\failed.png";
    DeleteFileW(failedPicture.c_str()); // of an earlier tour
    print("", std::wstring(L"=== ") + chapter_.title);
    print("", L"");
    int number = 0;
    for (const Step& step : chapter_.steps)
        if (!take(step, ++number))
        {
            attempt([&] { savePicture(GetDesktopWindow(), failedPicture); });
            visitor_.letGo();
            print("", L"The tour ends here: later steps build on this one.");
            window_.invoke([] { PostQuitMessage(EXIT_FAILURE); });
            return false;
        }
    print("", L"All " + std::to_wstring(number) + L" steps passed. The pictures are in " + folder_ + L".");
    return true;
}

bool Tour::take(const Step& step, int number)
{
    constexpr const char* indentation = "   ";
    constexpr const char* deeper = "     ";

    print("", std::to_wstring(number) + L". " + step.title);
    visitor_.clearTrace();
    const auto failure = attempt([&] { step.run(visitor_); });

    print(indentation, L"operands:");
    printLines(deeper, visitor_.takeOrders());
    print(indentation, L"data layer:");
    printLines(deeper, visitor_.trace());
    print(indentation, L"in the database:");
    const auto unreadable = attempt([&] {
        for (const std::wstring& row : chapter_.rows(visitor_))
            print(deeper, row);
    });
    if (unreadable)
        print(deeper, unreadable->description().view());
    print(indentation, failure ? L"FAIL: " + std::wstring(failure->description().view()) : L"PASS");
    print("", L"");
    return !failure && !unreadable;
}

} // namespace korvane::host
