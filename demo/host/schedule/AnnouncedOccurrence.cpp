#include "demo/host/schedule/AnnouncedOccurrence.h"

namespace korvane::host
{

Occurrence occurrenceIn(const EventArguments& arguments)
{
    return {{arguments.number(0), arguments.number(1)},
            arguments.number(2),
            arguments.number(3),
            arguments.date(4),
            arguments.date(5),
            std::wstring(arguments.text(6).view())};
}

} // namespace korvane::host
