#include "demo/datalayer/Messages.h"

#include "demo/datalayer/Results.h"

namespace korvane::store
{

namespace
{

std::wstring shownResult(const Message& found)
{
    return line(L"=", found.writer, found.time, found.phone, found.contact, found.about, found.kind,
                found.wasRead);
}

} // namespace

STDMETHODIMP Messages::LoadFor(long nameId, long flags, VARIANT_BOOL* result)
{
    const auto load = [&] {
        const auto messages = table_.list(nameId);
        loaded_ = nameId;
        last_ = 0;
        announceClear(trace());
        announce(messages);
        return true;
    };
    return answered(result, trace(), load, L"Messages.LoadFor", nameId, flags);
}

STDMETHODIMP Messages::Fetch(long msgId, BSTR* fromName, DATE* dtg, BSTR* tlf, BSTR* contact, BSTR* about,
                             long* kind, VARIANT_BOOL* wasRead)
{
    return guard([&] {
        requireAll(fromName, dtg, tlf, contact, about, kind, wasRead);
        const Message found =
            traced(trace(), line(L"Messages.Fetch", msgId), [&] { return table_.fetch(msgId); }, shownResult);
        Bstr writer(found.writer);
        Bstr phone(found.phone);
        Bstr caller(found.contact);
        Bstr subject(found.about);
        give(fromName, std::move(writer));
        give(tlf, std::move(phone));
        give(contact, std::move(caller));
        give(about, std::move(subject));
        *dtg = found.time.days;
        *kind = found.kind;
        *wasRead = found.wasRead ? VARIANT_TRUE : VARIANT_FALSE;
    });
}

STDMETHODIMP Messages::Add(long nameId, DATE dtg, BSTR about, BSTR tlf, BSTR contact, long kind, long* newId)
{
    return returns(newId, [&] {
        const Message message{
            {},   {dtg}, std::wstring(view(tlf)), std::wstring(view(contact)), std::wstring(view(about)),
            kind, false};
        return traced(
            trace(),
            line(L"Messages.Add", nameId, message.time, message.about, message.phone, message.contact, kind),
            [&] {
                const long id = table_.add(nameId, message);
                attempt([&] { announceNew(); });
                return id;
            });
    });
}

STDMETHODIMP Messages::Remove(long msgId)
{
    // Nothing is announced, here and when a message is read: whoever shows messages knows what he did, and goes on
    // with those that he has.
    return performed(trace(), [&] { table_.remove(msgId); }, L"Messages.Remove", msgId);
}

void Messages::announceNew()
{
    if (loaded_ != 0)
        announce(table_.list(loaded_, last_));
}

void Messages::announce(const std::vector<ListedMessage>& messages)
{
    for (const ListedMessage& message : messages)
    {
        last_ = message.id;
        std::apply([&](const auto&... values) { announceItem(trace(), values...); }, message.announced());
    }
}

} // namespace korvane::store
