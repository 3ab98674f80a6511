// Answers the message boxes of the calling thread, as the user would, and notes what they asked.
#pragma once

#include "framework/com/Platform.h"

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
        HWND owner = nullptr;
    };

    Questions();
    Questions(const Questions&) = delete;
    Questions& operator=(const Questions&) = delete;
    ~Questions();

    /// The key that the next boxes are answered with: an access key of a button, or VK_RETURN or VK_ESCAPE.
    WORD answerKey = VK_RETURN;

    std::vector<Asked> asked;

private:
    static LRESULT CALLBACK hook(int code, WPARAM first, LPARAM second);
    void note(HWND box);

    HHOOK hook_;
};

} // namespace korvane::test
