#include "activities/LinkGroup.h"

#include "framework/com/SafeArray.h"

namespace korvane
{

void LinkGroup::connect(const ComPtr<IRoot>& root)
{
    call(root, &IRoot::get_EventLinks, links_.put());
    mLinks.connect(links_.get(), __uuidof(IEventLinksEvents),
                   [this](DISPID event, const EventArguments& arguments) {
                       if (event == eventClear)
                           clear();
                       else if (event == eventAdd)
                           addMember(arguments.number(1));
                   });
}

void LinkGroup::clear()
{
    NameSet first;
    NameSet second;
    first.add(primary_);
    second.add(primary_);
    booked = std::move(first);
    chosen = std::move(second);
}

void LinkGroup::addMember(long nameId)
{
    booked.add(nameId);
    chosen.add(nameId);
}

void LinkGroup::load(long eventId)
{
    Variant loaded;
    mLinks.during([&] { call(links_, &IEventLinks::Load, eventId, loaded.put()); });
    id = std::move(loaded);
}

bool LinkGroup::hasAccess(LinkAccess level, long eventId) const
{
    VARIANT_BOOL granted = VARIANT_FALSE;
    call(links_, &IEventLinks::HasAccess, static_cast<long>(level), eventId, &granted);
    return granted != VARIANT_FALSE;
}

void LinkGroup::create(long eventId)
{
    Variant created;
    call(links_, &IEventLinks::Create, eventId, created.put());
    id = std::move(created);
}

void LinkGroup::addNames(const std::vector<long>& names) const
{
    call(links_, &IEventLinks::AddNames, id.get(), arrayOf(names).get());
}

void LinkGroup::removeNames(const std::vector<long>& names)
{
    Variant remaining;
    call(links_, &IEventLinks::RemoveNames, id.get(), arrayOf(names).get(), remaining.put());
    id = std::move(remaining);
}

void LinkGroup::detach(long nameId) const
{
    call(links_, &IEventLinks::Detach, id.get(), nameId);
}

void LinkGroup::updateLinked(long instance, long typeId, OleDate T0, OleDate T1, const Bstr& text)
{
    Variant updated;
    call(links_, &IEventLinks::UpdateLinked, id.get(), instance, typeId, T0.days, T1.days, text.get(),
         updated.put());
    id = std::move(updated);
}

void LinkGroup::removeOccurrence(long instance) const
{
    call(links_, &IEventLinks::RemoveOccurrence, id.get(), instance);
}

void LinkGroup::removeAll() const
{
    call(links_, &IEventLinks::RemoveAll, id.get());
}

void LinkGroup::setRecurrence(const ComPtr<IRecurrence>& rule) const
{
    call(links_, &IEventLinks::SetRecurrence, id.get(), rule.get());
}

} // namespace korvane
