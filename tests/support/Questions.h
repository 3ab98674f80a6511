// Answers the message boxes of the calling thread, as the user would, and notes what they asked.
#pragma once

#include "framework/com/Platform.h"

#include <functional>
#include <string>
#include <vector>

namespace korvane::test
{

class Questions
{
public:
    struct Asked
    {
        std::wstring title;
        std::wstring text;
        std::vector<int> buttons; ///< ids of the buttons, in tab order
        int defaultButton = 0;
        HICON icon = nullptr; ///< one of the system's; null for none
        HWND owner = nullptr;
    };

    Questions();
    Questions(const Questions&) = delete;
    Questions& operator=(const Questions&) = delete;
    ~Questions();

    /// The key that the next boxes are answered with: an access key of a button, or VK_RETURN or VK_ESCAPE.
    WORD answerKey = VK_RETURN;

    std::vector<Asked> asked;
    /// Called while a box is open, before it is answered.
    std::function<void()> onAsked = [] {};

private:
    static LRESULT CALLBACK hook(int code, WPARAM first, LPARAM second);
    void note(HWND box);
    void noteFocus(HWND button);

    HHOOK hook_;
    HWND noted_ = nullptr; ///< the box that was asked last
    struct
    {
        HWND box = nullptr;
        int button = 0;
    } focused_; ///< the button that had the focus first in a box
};

} // namespace korvane::test
