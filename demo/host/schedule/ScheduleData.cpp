#include "demo/host/schedule/ScheduleData.h"

#include "demo/host/schedule/AnnouncedOccurrence.h"

namespace korvane::host
{

namespace
{

constexpr long allTypes = 0;

} // namespace

void ScheduleData::follow(const ComPtr<IRoot>& root)
{
    const auto events = collection<IEvents>(root);
    const auto schedule = events.as<ISchedule>();
    if (!schedule)
        throw Failure(E_NOINTERFACE);
    outdate();
    schedule_ = schedule;
    names_.connect(root, {.clear = [this] { resources_.clear(); },
                          .add =
                              [this](const EventArguments& name) {
                                  resources_.push_back(
                                      {name.number(0), std::wstring(name.text(1).view()), name.number(3)});
                              }});
    types_.connect(root, {.clear = [this] { colors_.clear(); },
                          .add =
                              [this](const EventArguments& type) {
                                  colors_.insert_or_assign(type.number(0), type.number(2));
                              }});
    occurrenceEvents_.connect(
        events.get(), __uuidof(IEventsEvents),
        {.clear = [this] { occurrences_.clear(); },
         .add =
             [this](const EventArguments& occurrence) { occurrences_.push_back(occurrenceIn(occurrence)); }});
}

void ScheduleData::outdate() noexcept
{
    groupOfResources_.reset();
    colorsAreKnown_ = false;
}

void ScheduleData::load(Schedule& schedule, long group, OleDate from, OleDate to)
{
    if (groupOfResources_ != group)
    {
        groupOfResources_.reset(); // a failure on the way leaves a part of them
        names_.load(&INames::Load, group);
        groupOfResources_ = group;
    }
    if (!colorsAreKnown_)
        types_.load(&ITypes::Load, allTypes);
    colorsAreKnown_ = true;
    occurrenceEvents_.during([&] { call(schedule_, &ISchedule::Load, from.days, to.days); });
    schedule.setColors(colors_);
    schedule.setResources(resources_);
    schedule.setOccurrences(occurrences_);
}

} // namespace korvane::host
