// The message loop of a program that waits for nothing.
#pragma once

#include "framework/com/Platform.h"

namespace korvane::test
{

/// Deals with what is in the message queue.
inline void pumpMessages()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

} // namespace korvane::test
