#include "tests/support/RecordedMessages.h"

#include <algorithm>
#include <cmath>

namespace korvane::test
{

namespace
{

/// A message is stamped when it is left. The present time is recorded as `now` and kept as 0, so that what is recorded
/// does not depend on when a test runs.
bool isNow(DATE time)
{
    constexpr double minute = 1.0 / (24 * 60);
    SYSTEMTIME local{};
    GetLocalTime(&local);
    DATE present = 0;
    return SystemTimeToVariantTime(&local, &present) && std::abs(present - time) < minute;
}

} // namespace

void RecordedMessages::announce(const Message& message)
{
    raise(2, {Variant(message.id), Variant(Bstr(message.from)), Variant(OleDate{message.dtg}),
              Variant(Bstr(message.tlf)), Variant(Bstr(message.contact)), Variant(Bstr(message.about)),
              Variant(message.read)});
}

void RecordedMessages::announceFor(long nameId)
{
    raise(1);
    for (const Message& message : std::vector(data_.messages))
        if (message.nameId == nameId)
            announce(message);
}

void RecordedMessages::changed()
{
    if (data_.announcesWrites)
        announceFor(reader_);
}

STDMETHODIMP RecordedMessages::LoadFor(long nameId, long flags, VARIANT_BOOL* result)
{
    const auto load = [&] {
        reader_ = nameId;
        announceFor(nameId);
        *result = VARIANT_TRUE;
    };
    return data_.answer("Messages.LoadFor", load, nameId, flags);
}

STDMETHODIMP RecordedMessages::Fetch(long msgId, BSTR* fromName, DATE* dtg, BSTR* tlf, BSTR* contact,
                                     BSTR* about, long* kind, VARIANT_BOOL* wasRead)
{
    const HRESULT outcome = data_.record("Messages.Fetch", shown(msgId));
    if (FAILED(outcome))
        return outcome;
    const auto found = std::find_if(data_.messages.begin(), data_.messages.end(),
                                    [&](const Message& each) { return each.id == msgId; });
    if (found == data_.messages.end())
        return Failure(E_INVALIDARG, L"KorvaneData.Messages", L"There is no such message.").report();
    put(fromName, found->from);
    *dtg = found->dtg;
    put(tlf, found->tlf);
    put(contact, found->contact);
    put(about, found->about);
    *kind = found->kind;
    *wasRead = std::exchange(found->read, true) ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

STDMETHODIMP RecordedMessages::Add(long nameId, DATE dtg, BSTR about, BSTR tlf, BSTR contact, long kind,
                                   long* newId)
{
    const bool now = isNow(dtg);
    const HRESULT outcome = data_.record("Messages.Add", shown(nameId) + ", " + (now ? "now" : stamp(dtg)) +
                                                             ", " + listed(about, tlf, contact, kind));
    if (FAILED(outcome))
        return outcome;
    *newId = data_.nextId++;
    data_.messages.push_back({*newId, nameId, L"Administrator", now ? 0 : dtg, std::wstring(view(tlf)),
                              std::wstring(view(contact)), std::wstring(view(about)), kind});
    changed();
    return S_OK;
}

STDMETHODIMP RecordedMessages::Remove(long msgId)
{
    const auto remove = [&] {
        std::erase_if(data_.messages, [&](const Message& message) { return message.id == msgId; });
        changed();
    };
    return data_.answer("Messages.Remove", remove, msgId);
}

} // namespace korvane::test
