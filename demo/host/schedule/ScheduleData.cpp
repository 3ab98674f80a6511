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

    namesEvents_.connect(
        names_.get(), __uuidof(INamesEvents),
        whileLoading([this] { resources_.clear(); },
                     [this](const EventArguments& name) {
                         resources_.push_back({name.number(0), std::wstring(name.text(1).view())});
                     },
                     [this] { groupOfResources_.reset(); }));
    typesEvents_.connect(types_.get(), __uuidof(ITypesEvents),
                         whileLoading([this] { colors_.clear(); },
                                      [this](const EventArguments& type) {
                                          colors_.insert_or_assign(type.number(0), type.number(2));
                                      },
                                      [this] { colorsAreKnown_ = false; }));
    occurrenceEvents_.connect(events.get(), __uuidof(IEventsEvents),
                              whileLoading([this] { occurrences_.clear(); },
                                           [this](const EventArguments& occurrence) {
                                               occurrences_.push_back(occurrenceIn(occurrence));
                                           },
                                           [] {}));
}

/// What is announced outside of loading tells that what was loaded no longer holds.
EventHandlers ScheduleData::whileLoading(std::function<void()> clear,
                                         std::function<void(const EventArguments&)> add,
                                         const std::function<void()>& outdate)
{
    const auto outdated = [this, outdate] {
        outdate();
        changed();
    };
    return {.clear = [this, clear = std::move(clear), outdated] { loading_ ? clear() : outdated(); },
            .add = [this, add = std::move(add),
                    outdated](const EventArguments& item) { loading_ ? add(item) : outdated(); }};
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
