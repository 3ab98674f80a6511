#include "demo/host/SharedActivity.h"

#include "framework/com/EventConnection.h"

namespace korvane::host
{

bool isShared(const ComPtr<IRoot>& root, long event)
{
    ComPtr<IEventLinks> links;
    call(root, &IRoot::get_EventLinks, links.put());
    int members = 0;
    EventConnection announcements;
    announcements.connect(links.get(), __uuidof(IEventLinksEvents),
                          {.add = [&](const EventArguments&) { ++members; }});
    announcements.during([&] {
        Variant ignored;
        call(links, &IEventLinks::Load, event, ignored.put());
    });
    return members > 1;
}

} // namespace korvane::host
