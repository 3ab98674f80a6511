#include "demo/host/tour/User.h"

#include "framework/com/Boundary.h"

#include <algorithm>
#include <iterator>

namespace korvane::host
{

namespace
{

struct KeyName
{
    std::wstring_view name;
    WORD key;
    bool isExtended = false; ///< of the block that shares its scan codes with the number block
};

constexpr KeyName keyNames[] = {
    {L"Alt", VK_MENU},
    {L"Ctrl", VK_CONTROL},
    {L"Shift", VK_SHIFT},
    {L"Enter", VK_RETURN},
    {L"Esc", VK_ESCAPE},
    {L"Tab", VK_TAB},
    {L"Space", VK_SPACE},
    {L"Backspace", VK_BACK},
    {L"Plus", VK_OEM_PLUS},
    {L"Minus", VK_OEM_MINUS},
    {L"F2", VK_F2},
    {L"F20", VK_F20},
    {L"Ins", VK_INSERT, true},
    {L"Del", VK_DELETE, true},
    {L"Home", VK_HOME, true},
    {L"End", VK_END, true},
    {L"Page Up", VK_PRIOR, true},
    {L"Page Down", VK_NEXT, true},
    {L"Left", VK_LEFT, true},
    {L"Right", VK_RIGHT, true},
    {L"Up", VK_UP, true},
    {L"Down", VK_DOWN, true},
};

bool isExtended(WORD key) noexcept
{
    return std::any_of(std::begin(keyNames), std::end(keyNames),
                       [&](const KeyName& each) { return each.key == key && each.isExtended; });
}

WORD keyNamed(std::wstring_view name)
{
    const auto* const found = std::find_if(std::begin(keyNames), std::end(keyNames),
                                           [&](const KeyName& each) { return each.name == name; });
    if (found != std::end(keyNames))
        return found->key;
    const bool isOwnKey =
        name.size() == 1 && ((name[0] >= L'A' && name[0] <= L'Z') || (name[0] >= L'0' && name[0] <= L'9'));
    if (!isOwnKey)
        throw Failure(E_INVALIDARG, L"Tour", L"There is no key " + std::wstring(name) + L".");
    return static_cast<WORD>(name[0]);
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

std::vector<WORD> keysNamed(std::wstring_view names)
{
    std::vector<WORD> keys;
    for (auto plus = names.find(L'+'); plus != std::wstring_view::npos; plus = names.find(L'+'))
    {
        keys.push_back(keyNamed(names.substr(0, plus)));
        names.remove_prefix(plus + 1);
    }
    keys.push_back(keyNamed(names));
    return keys;
}

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

void User::press(std::wstring_view names) const
{
    const auto keys = keysNamed(names);
    if (keys.size() > 1)
        untilAtRest_();
    for (const WORD key : keys)
        send(keyInput(key, false));
    std::for_each(keys.rbegin(), keys.rend(), [this](WORD key) { send(keyInput(key, true)); });
}

void User::hold(std::wstring_view key) const
{
    untilAtRest_();
    send(keyInput(keyNamed(key), false));
}

void User::release(std::wstring_view key) const
{
    send(keyInput(keyNamed(key), true));
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
    std::vector<INPUT> inputs{mouseInput(place, MOUSEEVENTF_LEFTDOWN), mouseInput(place, MOUSEEVENTF_LEFTUP),
                              mouseInput(place, MOUSEEVENTF_LEFTDOWN), mouseInput(place, MOUSEEVENTF_LEFTUP)};
    // At once, however long a busy machine takes to send them: only so much time may pass between the clicks.
    const DWORD now = GetTickCount();
    for (INPUT& input : inputs)
        input.mi.time = now;
    sendAll(std::move(inputs));
    untilTaken_();
}

void User::rightClick(POINT place) const
{
    send(mouseInput(place, MOUSEEVENTF_RIGHTDOWN));
    send(mouseInput(place, MOUSEEVENTF_RIGHTUP));
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
