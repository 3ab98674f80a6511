// KorvaneHost: a sample host that uses the dialog library as its users would.

#include "demo/host/CommandLine.h"
#include "demo/host/ErrorBox.h"
#include "demo/host/MainWindow.h"
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
std::wstring freshDatabase(const std::wstring& folder)
{
    std::wstring file = folder + L"\\tour.sqlite";
    if (!DeleteFileW(file.c_str()) && GetLastError() != ERROR_FILE_NOT_FOUND)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
    return file;
}

std::wstring databaseOf(const Options& options)
{
    if (!options.database.empty())
        return options.database;
    return options.tour() ? freshDatabase(options.tourFolder) : defaultDatabase();
}

int run(const Options& options)
{
    const Ole ole;
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);

    OpenDatabase database(databaseOf(options), options.account);
    if (!options.empty && !options.tour())
        database.addSample();
    MainWindow window(database);
    window.show();
    if (!options.tour())
    {
        runMessageLoop(window);
        return EXIT_SUCCESS;
    }
    Tour tour(window, options.tourFolder);
    runMessageLoop(window);
    return tour.succeeded() ? EXIT_SUCCESS : EXIT_FAILURE;
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
        host::print("", L"FAIL: " + std::wstring(failure->description().view()));
    else if (failure)
        host::showFailure(nullptr, *failure);
    return exitCode;
}
