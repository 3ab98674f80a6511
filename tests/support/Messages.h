// The message loop of a program that waits for nothing.
#pragma once

#include "framework/com/Platform.h"

namespace korvane::test
{

/// Deals with what is in the message queue.
/// @param consumes takes a message as its own; the others go to their windows.
template <class Consumes> void pumpMessages(Consumes&& consumes)
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    {
        if (consumes(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

inline void pumpMessages()
{
    pumpMessages([](const MSG&) { return false; });
}

} // namespace korvane::test
