#include "demo/host/schedule/ScheduleData.h"

#include "demo/host/schedule/AnnouncedOccurrence.h"

namespace korvane::host
{

namespace
{

constexpr long allTypes = 0;

} // namespace

/// Tells the announcements that were asked for here from all others: an open dialog has the same ones made.
class ScheduleData::Loading
{
public:
    explicit Loading(ScheduleData& data) : data_(data) { data_.loading_ = true; }
    Loading(const Loading&) = delete;
    Loading& operator=(const Loading&) = delete;
    ~Loading() { data_.loading_ = false; }

private:
    ScheduleData& data_;
};

ScheduleData::ScheduleData(const ComPtr<IRoot>& root)
{
    ComPtr<IEvents> events;
    call(root, &IRoot::get_Names, names_.put());
    call(root, &IRoot::get_Types, types_.put());
    call(root, &IRoot::get_Events, events.put());
    schedule_ = events.as<ISchedule>();
    if (!schedule_)
        throw Failure(E_NOINTERFACE);

    namesEvents_.connect(names_.get(), __uuidof(INamesEvents),
                         [this](DISPID event, const EventArguments& name) {
                             if (!loading_)
                             {
                                 groupOfResources_.reset();
                                 changed();
                             }
                             else if (event == eventClear)
                                 resources_.clear();
                             else if (event == eventAdd)
                                 resources_.push_back({name.number(0), std::wstring(name.text(1).view())});
                         });
    typesEvents_.connect(types_.get(), __uuidof(ITypesEvents),
                         [this](DISPID event, const EventArguments& type) {
                             if (!loading_)
                             {
                                 colorsAreKnown_ = false;
                                 changed();
                             }
                             else if (event == eventClear)
                                 colors_.clear();
                             else if (event == eventAdd)
                                 colors_.insert_or_assign(type.number(0), type.number(2));
                         });
    occurrenceEvents_.connect(events.get(), __uuidof(IEventsEvents),
                              [this](DISPID event, const EventArguments& occurrence) {
                                  if (!loading_)
                                      changed();
                                  else if (event == eventClear)
                                      occurrences_.clear();
                                  else if (event == eventAdd)
                                      occurrences_.push_back(occurrenceIn(occurrence));
                              });
}

void ScheduleData::load(Schedule& schedule, long group, OleDate from, OleDate to)
{
    const Loading loading(*this);
    if (groupOfResources_ != group)
        loadResources(group);
    if (!colorsAreKnown_)
        loadColors();
    occurrenceEvents_.during([&] { call(schedule_, &ISchedule::Load, from.days, to.days); });
    schedule.setColors(colors_);
    schedule.setResources(resources_);
    schedule.setOccurrences(occurrences_);
}

void ScheduleData::loadResources(long group)
{
    groupOfResources_.reset(); // a failure on the way leaves a part of them
    namesEvents_.during([&] {
        VARIANT_BOOL ignored = VARIANT_FALSE;
        call(names_, &INames::Load, group, &ignored);
    });
    groupOfResources_ = group;
}

void ScheduleData::loadColors()
{
    typesEvents_.during([&] {
        VARIANT_BOOL ignored = VARIANT_FALSE;
        call(types_, &ITypes::Load, allTypes, &ignored);
    });
    colorsAreKnown_ = true;
}

void ScheduleData::changed() const
{
    if (onChange)
        onChange();
}

} // namespace korvane::host
