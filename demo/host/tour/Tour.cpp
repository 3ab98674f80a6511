#include "demo/host/tour/Tour.h"

#include "demo/host/tour/Picture.h"
#include "demo/host/tour/Report.h"
#include "framework/com/Boundary.h"

#include <cstdlib>

namespace korvane::host
{

Tour::Tour(MainWindow& window, std::wstring folder)
    : window_(window), folder_(std::move(folder)), visitor_(window, folder_),
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
    const std::wstring failedPicture = folder_ + L"\\failed.png";
    DeleteFileW(failedPicture.c_str()); // of an earlier tour
    int number = 0;
    for (const Step& step : groupSteps())
        if (!take(step, ++number))
        {
            attempt([&] { savePicture(GetDesktopWindow(), failedPicture); });
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

    print(indentation, L"data layer:");
    printLines(deeper, visitor_.trace());
    print(indentation, L"in the database:");
    const auto unreadable = attempt([&] {
        for (const GroupRow& row : visitor_.rows())
            print(deeper, std::to_wstring(row.id) + L"  " + row.name + L"  (flags " +
                              std::to_wstring(row.flags) + L")");
    });
    if (unreadable)
        print(deeper, unreadable->description().view());
    print(indentation, failure ? L"FAIL: " + std::wstring(failure->description().view()) : L"PASS");
    print("", L"");
    return !failure && !unreadable;
}

} // namespace korvane::host
