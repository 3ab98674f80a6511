#include "demo/host/schedule/OccurrenceEvents.h"

namespace korvane::host
{

namespace
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

} // namespace

void OccurrenceEvents::connect(const ComPtr<IEvents>& events)
{
    connection_.connect(events.get(), __uuidof(IEventsEvents),
                        [this](DISPID event, const EventArguments& arguments) {
                            if (event == eventClear && onClear)
                                onClear();
                            else if (event == eventAdd && onAdd)
                                onAdd(occurrenceIn(arguments));
                        });
}

} // namespace korvane::host
