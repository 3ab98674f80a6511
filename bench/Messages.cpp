// The start of the message viewer against the announcements alone.
//
// Ready is read a second time on a dialog that stands: the messages are announced, and the first unread one, the last of
// all, is fetched and shown. The bare side has the same messages announced to a subscriber that does nothing. On both
// sides each announcement has texts of its own, as those of a data layer that reads them from its rows.
#include "tests/support/Messages.h"
#include "bench/Announcer.h"
#include "bench/Benchmarks.h"
#include "bench/Deaf.h"
#include "bench/Library.h"
#include "bench/SmallRoot.h"
#include "framework/com/Variant.h"

namespace korvane::bench
{

namespace
{

constexpr const wchar_t* writer = L"Administrator";
constexpr const wchar_t* number = L"+45 555 0100";
constexpr const wchar_t* caller = L"Mrs Jensen, Jensen & Sons";
constexpr const wchar_t* concern = L"Wants to know when the second van is back from the workshop";
constexpr DATE time = 46349.5;

/// Messages in memory: all of them read but the last.
class Messages final : public Announcer<Messages, IMessages, IMessagesEvents, test::EmptyMessages>
{
public:
    long count = 0;

    STDMETHODIMP LoadFor(long, long, VARIANT_BOOL* result) override
    {
        raise(eventClear);
        for (long id = 1; id <= count; ++id)
        {
            const Bstr texts[] = {Bstr(concern), Bstr(caller), Bstr(number), Bstr(writer)};
            const Variant read(id < count);
            const Variant dtg(OleDate{time});
            VARIANT arguments[] = {read.get(),
                                   of(texts[0].get()),
                                   of(texts[1].get()),
                                   of(texts[2].get()),
                                   dtg.get(),
                                   of(texts[3].get()),
                                   of(id)};
            raise(eventAdd, arguments, 7);
        }
        *result = VARIANT_TRUE;
        return S_OK;
    }

    STDMETHODIMP Fetch(long, BSTR* fromName, DATE* dtg, BSTR* tlf, BSTR* contact, BSTR* about, long* kind,
                       VARIANT_BOOL* wasRead) override
    {
        SysReAllocString(fromName, writer);
        SysReAllocString(tlf, number);
        SysReAllocString(contact, caller);
        SysReAllocString(about, concern);
        *dtg = time;
        *kind = 2;
        *wasRead = VARIANT_FALSE;
        return S_OK;
    }
};

} // namespace

void measureMessages(Report& report, const Effort& effort)
{
    constexpr const char* group = "The message viewer, Ready";
    struct Size
    {
        long messages = 0;
        int samples = 0;
        const char* name = "";
        std::optional<double> aim;
    };
    constexpr Size sizes[] = {{1000, 101, "1,000 messages", {}},
                              {10000, 51, "10,000 messages", 2.0},
                              {100000, 15, "100,000 messages", {}}};
    std::vector<double> counts;
    std::vector<double> times;
    for (const Size& size : sizes)
    {
        const auto messages = make<Messages>();
        messages->count = size.messages;
        const auto root = make<SmallRoot>();
        root->messages = messages.as<IMessages>();
        const auto command = create<IAppCommand>(L"KorvaneDlg.ShowMessage");
        call(command, &IAppCommand::put_Operand, Bstr(L"Root").get(), Variant(root.as<IDispatch>()).get());
        test::Container container;
        open(container, L"KorvaneDlg.ctlShowMessage", command.get());
        const Sample ready = [&] {
            test::pumpMessages();
            const double seconds = perRun(1, [&] { readReady(container); });
            demand(test::Container::text(container.control(L"Static", 1)) == std::to_wstring(size.messages),
                   "the viewer does not show the unread message");
            return seconds;
        };

        const auto bare = make<Messages>();
        bare->count = size.messages;
        const DeafSubscription<IMessagesEvents> deaf(bare);
        const Sample announcements = [&] {
            VARIANT_BOOL result = VARIANT_FALSE;
            return perRun(1, [&] { bare->LoadFor(0, -1, &result); });
        };
        const Comparison comparison = compare(effort.samples(size.samples), ready, announcements);
        report.add(group, size.name, "the announcements alone", comparison, size.aim);
        counts.push_back(static_cast<double>(size.messages));
        times.push_back(comparison.library.median);
    }
    report.add(group, "growth with the number of messages", growthExponent(counts, times), "exponent", 1.1);
}

} // namespace korvane::bench
