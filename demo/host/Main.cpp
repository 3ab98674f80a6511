// KorvaneHost: a sample host that uses the dialog library as its users would.

#include "demo/host/CommandLine.h"
#include "demo/host/ErrorBox.h"
#include "demo/host/MainWindow.h"
#include "demo/host/tour/BookingSteps.h"
#include "demo/host/tour/DepartmentSteps.h"
#include "demo/host/tour/GroupSteps.h"
#include "demo/host/tour/LanguageSteps.h"
#include "demo/host/tour/MessageSteps.h"
#include "demo/host/tour/Report.h"
#include "demo/host/tour/Tour.h"
#include "framework/com/Boundary.h"

#include <cstdlib>
#include <optional>
#include <vector>

namespace korvane::host
{

namespace
{

class Ole
{
public:
    Ole() { require(OleInitialize(nullptr)); }
    Ole(const Ole&) = delete;
    Ole& operator=(const Ole&) = delete;
    ~Ole() { OleUninitialize(); }
};

void runMessageLoop(MainWindow& window)
{
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
    {
        if (window.translate(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

/// A file in the tour's folder, new each time.
std::wstring freshDatabase(const std::wstring& folder, const wchar_t* name)
{
    std::wstring file = folder + L"\\" + name;
    if (!DeleteFileW(file.c_str()) && GetLastError() != ERROR_FILE_NOT_FOUND)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
    return file;
}

void work(const Options& options)
{
    OpenDatabase database(options.database.empty() ? defaultDatabase() : options.database, options.account);
    if (!options.empty)
        database.addSample();
    MainWindow window(database);
    window.show();
    runMessageLoop(window);
}

bool take(const Chapter& chapter, OpenDatabase& database, const std::wstring& folder, Report& report)
{
    MainWindow window(database);
    window.show();
    Tour tour(chapter, window, folder, report);
    runMessageLoop(window);
    return tour.succeeded();
}

/// A chapter in a database of its own.
struct ChapterOfTour
{
    Chapter (*chapter)();
    const wchar_t* file;
    bool withSample;
};

// The activities, messages and languages need resources, groups and departments are told from an almost empty database.
constexpr ChapterOfTour chapters[] = {
    {&bookingChapter, L"booking.sqlite", true},
    {&departmentChapter, L"department.sqlite", false},
    {&messageChapter, L"messages.sqlite", true},
    {&languageChapter, L"languages.sqlite", true},
};

bool takeTour(const Options& options)
{
    const std::wstring& folder = options.tourFolder;
    Report report(folder + L"\\tour.txt", options.verbose);
    for (const ChapterOfTour& part : chapters)
    {
        OpenDatabase database(freshDatabase(folder, part.file), {});
        if (part.withSample)
            database.addSample();
        if (!take(part.chapter(), database, folder, report))
            return false;
    }
    OpenDatabase database(options.database.empty() ? freshDatabase(folder, L"tour.sqlite") : options.database,
                          options.account);
    return take(groupChapter(), database, folder, report);
}

int run(const Options& options)
{
    const Ole ole;
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    if (options.tour())
        return takeTour(options) ? EXIT_SUCCESS : EXIT_FAILURE;
    work(options);
    return EXIT_SUCCESS;
}

} // namespace

} // namespace korvane::host

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    using namespace korvane;
    host::Options options;
    int exitCode = EXIT_FAILURE;
    const auto failure = attempt([&] {
        options = host::readOptions(std::vector<std::wstring>(__wargv + 1, __wargv + __argc));
        exitCode = host::run(options);
    });
    // Nobody reads a box of a tour that runs without a user.
    if (failure && options.tour())
        host::print(L"FAIL: " + std::wstring(failure->description().view()));
    else if (failure)
        host::showFailure(nullptr, *failure);
    return exitCode;
}
