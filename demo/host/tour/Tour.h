// A tour through the host by keyboard and mouse, which checks each step and tells about it.
#pragma once

#include "demo/host/tour/Step.h"

#include <thread>

namespace korvane::host
{

class Tour
{
public:
    /// Starts a chapter of the tour on a thread of its own; the window's thread goes on with its messages. At its end the
    /// window is closed.
    /// @param folder where the pictures go.
    Tour(const Chapter& chapter, MainWindow& window, std::wstring folder, Report& report);
    Tour(const Tour&) = delete;
    Tour& operator=(const Tour&) = delete;
    ~Tour() { succeeded(); }

    /// Waits for the end. True when every step did what it said.
    bool succeeded();

private:
    bool go();
    bool takeAll();
    bool take(const Step& step, int number);

    const Chapter& chapter_;
    MainWindow& window_;
    std::wstring folder_;
    Report& report_;
    Visitor visitor_;
    bool succeeded_ = false;
    std::thread thread_;
};

} // namespace korvane::host
