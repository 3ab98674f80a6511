#include "demo/host/tour/User.h"

#include "framework/com/Boundary.h"

#include <algorithm>
#include <iterator>

namespace korvane::host
{

namespace
{

/// The keys of the block between letters and digits share their scan codes with those of the number block.
bool isExtended(WORD key) noexcept
{
    switch (key)
    {
    case VK_INSERT:
    case VK_DELETE:
    case VK_HOME:
    case VK_END:
    case VK_PRIOR:
    case VK_NEXT:
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
        return true;
    default:
        return false;
    }
}

INPUT keyInput(WORD key, bool up) noexcept
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = (up ? KEYEVENTF_KEYUP : 0u) | (isExtended(key) ? KEYEVENTF_EXTENDEDKEY : 0u);
    return input;
}

INPUT characterInput(wchar_t character, bool up) noexcept
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = character;
    input.ki.dwFlags = KEYEVENTF_UNICODE | (up ? KEYEVENTF_KEYUP : 0u);
    return input;
}

bool isSame(const INPUT& one, const INPUT& other) noexcept
{
    return one.type == other.type &&
           (one.type == INPUT_MOUSE || (one.ki.wVk == other.ki.wVk && one.ki.wScan == other.ki.wScan));
}

/// Each event brings its place along: a pointer that is on its way still cannot lead it elsewhere.
INPUT mouseInput(POINT place, DWORD flags) noexcept
{
    // Devices count the screen in 65536 steps: the middle of the pixel is what rounding cannot miss.
    const auto steps = [](LONG pixel, int extent) {
        return static_cast<LONG>((2LL * pixel + 1) * 65536 / (2LL * extent));
    };
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = steps(place.x, GetSystemMetrics(SM_CXSCREEN));
    input.mi.dy = steps(place.y, GetSystemMetrics(SM_CYSCREEN));
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | flags;
    return input;
}

void sendAll(std::vector<INPUT> inputs)
{
    if (SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)) != inputs.size())
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
}

} // namespace

std::vector<INPUT> keystrokesFor(std::wstring_view text)
{
    std::vector<INPUT> inputs;
    for (const wchar_t character : text)
    {
        const SHORT found = VkKeyScanW(character);
        const int modifiers = HIBYTE(found);
        if (found == -1 || modifiers > 1)
        {
            inputs.push_back(characterInput(character, false));
            inputs.push_back(characterInput(character, true));
            continue;
        }
        const WORD key = LOBYTE(found);
        if (modifiers == 1)
            inputs.push_back(keyInput(VK_SHIFT, false));
        inputs.push_back(keyInput(key, false));
        inputs.push_back(keyInput(key, true));
        if (modifiers == 1)
            inputs.push_back(keyInput(VK_SHIFT, true));
    }
    return inputs;
}

void User::press(std::initializer_list<WORD> keys) const
{
    if (keys.size() > 1)
        untilAtRest_();
    for (const WORD key : keys)
        send(keyInput(key, false));
    for (auto key = std::rbegin(keys); key != std::rend(keys); ++key)
        send(keyInput(*key, true));
}

void User::hold(WORD key) const
{
    untilAtRest_();
    send(keyInput(key, false));
}

void User::release(WORD key) const
{
    send(keyInput(key, true));
}

void User::type(std::wstring_view text) const
{
    const auto inputs = keystrokesFor(text);
    if (std::any_of(inputs.begin(), inputs.end(),
                    [](const INPUT& input) { return input.ki.wVk == VK_SHIFT; }))
        untilAtRest_();
    for (const INPUT& input : inputs)
        send(input);
}

void User::moveTo(POINT place) const
{
    send(mouseInput(place, 0));
}

void User::click(POINT place) const
{
    pressButton(place);
    releaseButton(place);
}

void User::pressButton(POINT place) const
{
    send(mouseInput(place, MOUSEEVENTF_LEFTDOWN));
}

void User::releaseButton(POINT place) const
{
    send(mouseInput(place, MOUSEEVENTF_LEFTUP));
}

void User::doubleClick(POINT place) const
{
    // At once: only so much time may pass between the clicks.
    sendAll({mouseInput(place, MOUSEEVENTF_LEFTDOWN), mouseInput(place, MOUSEEVENTF_LEFTUP),
             mouseInput(place, MOUSEEVENTF_LEFTDOWN), mouseInput(place, MOUSEEVENTF_LEFTUP)});
    untilTaken_();
}

void User::send(const INPUT& input) const
{
    sendAll({input});
    note(input);
    untilTaken_();
}

void User::note(const INPUT& input) const
{
    INPUT release = input;
    if (input.type == INPUT_KEYBOARD)
        release.ki.dwFlags |= KEYEVENTF_KEYUP;
    else if ((input.mi.dwFlags & (MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_LEFTUP)) != 0)
        release.mi.dwFlags = MOUSEEVENTF_LEFTUP; // wherever the pointer is by then
    else
        return;
    std::erase_if(releases_, [&](const INPUT& each) { return isSame(each, release); });
    const bool isDown = input.type == INPUT_KEYBOARD ? (input.ki.dwFlags & KEYEVENTF_KEYUP) == 0
                                                     : (input.mi.dwFlags & MOUSEEVENTF_LEFTDOWN) != 0;
    if (isDown)
        releases_.push_back(release);
}

void User::letGo() const noexcept
{
    attempt([&] { sendAll(releases_); });
    releases_.clear();
}

} // namespace korvane::host
