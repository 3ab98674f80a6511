// What a tour consists of.
#pragma once

#include "demo/host/tour/Visitor.h"

namespace korvane::host
{

/// Something that the visitor does, or then sees. What is not as expected is thrown as a Failure with the reason.
using Deed = std::function<void(Visitor& visitor)>;

/// A word that deeds are written with: what it does, waiting for what it does it with.
template <class Act> struct Word
{
    Act act;

    template <class... Arguments> Deed operator()(Arguments... arguments) const
    {
        return [deed = act, ... given = std::move(arguments)](Visitor& visitor) {
            std::invoke(deed, visitor, given...);
        };
    }
};
template <class Act> Word(Act) -> Word<Act>;

struct Step
{
    const wchar_t* title;
    std::vector<Deed> deeds;
};

/// Steps that build on each other, in a database of their own.
struct Chapter
{
    const wchar_t* title;
    std::vector<Step> steps;
    /// What stands in the database, to be told after each step.
    std::vector<std::wstring> (*rows)(const Visitor& visitor);
};

} // namespace korvane::host
