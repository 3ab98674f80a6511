#include "activities/LinkGroup.h"

#include "framework/com/SafeArray.h"

namespace korvane
{

void LinkGroup::connect(const ComPtr<IRoot>& root)
{
    mLinks.connect(root, {.clear =
                              [this] {
                                  if (mLinks.isLoading())
                                      clear();
                              },
                          .add =
                              [this](const EventArguments& member) {
                                  if (mLinks.isLoading())
                                      addMember(member.number(1));
                              }});
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

void LinkGroup::book(long nameId)
{
    NameSet single;
    single.add(nameId);
    booked = std::move(single);
}

void LinkGroup::addMember(long nameId)
{
    booked.add(nameId);
    chosen.add(nameId);
}

void LinkGroup::load(long eventId)
{
    id = mLinks.load(&IEventLinks::Load, eventId);
}

bool LinkGroup::hasAccess(LinkAccess level, long eventId) const
{
    return fetch(mLinks.get(), &IEventLinks::HasAccess, static_cast<long>(level), eventId);
}

void LinkGroup::create(long eventId)
{
    id = fetch(mLinks.get(), &IEventLinks::Create, eventId);
}

void LinkGroup::addNames(const std::vector<long>& names) const
{
    call(mLinks.get(), &IEventLinks::AddNames, id.get(), arrayOf(names).get());
}

void LinkGroup::removeNames(const std::vector<long>& names)
{
    id = fetch(mLinks.get(), &IEventLinks::RemoveNames, id.get(), arrayOf(names).get());
}

void LinkGroup::detach(long nameId) const
{
    call(mLinks.get(), &IEventLinks::Detach, id.get(), nameId);
}

void LinkGroup::updateLinked(long instance, long typeId, OleDate T0, OleDate T1, const Bstr& text)
{
    id = fetch(mLinks.get(), &IEventLinks::UpdateLinked, id.get(), instance, typeId, T0.days, T1.days,
               text.get());
}

void LinkGroup::removeOccurrence(long instance) const
{
    call(mLinks.get(), &IEventLinks::RemoveOccurrence, id.get(), instance);
}

void LinkGroup::removeAll() const
{
    call(mLinks.get(), &IEventLinks::RemoveAll, id.get());
}

void LinkGroup::setRecurrence(const ComPtr<IRecurrence>& rule) const
{
    call(mLinks.get(), &IEventLinks::SetRecurrence, id.get(), rule.get());
}

} // namespace korvane
