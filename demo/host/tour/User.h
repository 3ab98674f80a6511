// The hands of the tour: keystrokes and mouse moves as they come from real devices.
#pragma once

#include "framework/com/Platform.h"

#include <functional>
#include <string_view>
#include <vector>

namespace korvane::host
{

/// The keys that a name tells, such as "Ctrl+Shift+M" or "Page Down". Throws a Failure for one that is unknown.
std::vector<WORD> keysNamed(std::wstring_view names);

/// The keystrokes that give a text on the current keyboard layout; characters that no key gives are sent as
/// such.
std::vector<INPUT> keystrokesFor(std::wstring_view text);

class User
{
public:
    /// @param untilTaken waits until the program has taken its input. A user goes on only then: a Shift that
    /// is released too early can leave a small letter where a capital was meant.
    /// @param untilAtRest waits until pointer and windows are where they are going to be. A user holds a key down
    /// only then: what is still to arrive can take it as released.
    User(std::function<void()> untilTaken, std::function<void()> untilAtRest)
        : untilTaken_(std::move(untilTaken)), untilAtRest_(std::move(untilAtRest))
    {
    }

    User(const User&) = delete;
    User& operator=(const User&) = delete;
    ~User() { letGo(); }

    /// Releases every key and button that is still down: a program that does not take its input ends a deed half
    /// way, and what follows would be done with Ctrl.
    void letGo() const noexcept;

    /// Presses keys together, for example "Alt+G", and releases them.
    void press(std::wstring_view names) const;
    void hold(std::wstring_view key) const;
    void release(std::wstring_view key) const;
    void type(std::wstring_view text) const;

    // At a place on the screen, in pixels.
    void moveTo(POINT place) const;
    void click(POINT place) const;
    void doubleClick(POINT place) const;
    void rightClick(POINT place) const;
    void pressButton(POINT place) const;
    void releaseButton(POINT place) const;

private:
    void send(const INPUT& input) const;
    void note(const INPUT& input) const;

    std::function<void()> untilTaken_;
    std::function<void()> untilAtRest_;
    mutable std::vector<INPUT> releases_; ///< what ends that which is down
};

} // namespace korvane::host
