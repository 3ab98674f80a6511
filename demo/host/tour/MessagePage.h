// The dialog for messages and information, and the viewer of messages, as the tour's visitor fills and reads them.
#pragma once

#include "demo/host/tour/Deeds.h"

namespace korvane::host
{

namespace messagePage
{

inline constexpr Text title = L"Message";

inline constexpr Field wantsCall{L"Wants to be phoned back", L"Button", L"&Wants to be phoned back"};
inline constexpr Field contact = labelled(L"who phoned", L"Edit", L"&From");
inline constexpr Field phone = labelled(L"the phone number", L"Edit", L"Phone &No.");
inline constexpr Field subject = labelled(L"what it is about", L"Edit", L"&Concerning");
inline constexpr Field rows{L"the rows", L"KorvaneGrid"};
inline constexpr Field moveUp{L"Move up", L"Button", L"Move up (Alt+Up)"};
inline constexpr Field moveToTop{L"Move to the top", L"Button", L"Move to the top (Alt+Home)"};

} // namespace messagePage

namespace viewerPage
{

inline constexpr Text title = L"Message";

inline constexpr Field contact = labelled(L"who phoned", L"Edit", L"From");
inline constexpr Field subject = labelled(L"what it is about", L"Edit", L"Concerning");
inline constexpr Field writer = labelled(L"who wrote it down", L"Edit", L"Written by");
inline constexpr Field place = labelled(L"its place", L"Static", L"Message no.");
inline constexpr Field all = labelled(L"the number of all", L"Static", L"All");
inline constexpr Field unread = labelled(L"the number of the unread", L"Static", L"Unread");
inline constexpr Field deleteButton{L"Delete", L"Button", L"Dele&te"};

/// Sooner or later, this one is shown, so many are there, and so many of them have not been read.
inline constexpr Word showsMessage{[](Visitor& visitor, Text about, Text itsPlace, Text ofAll, Text notRead) {
    visitor.waitForText(subject, about);
    visitor.waitForText(place, itsPlace);
    visitor.waitForText(all, ofAll);
    visitor.waitForText(unread, notRead);
}};

} // namespace viewerPage

} // namespace korvane::host
