// Single calls: operands by the vtable and by late binding, and one event to a dialog.
#include "bench/Benchmarks.h"
#include "bench/Deaf.h"
#include "bench/Library.h"
#include "bench/MemoryData.h"

#include "framework/com/Variant.h"

namespace korvane::bench
{

namespace
{

constexpr int rounds = 2000;

constexpr DISPID idOfOperand = 4;

ComPtr<IDispatch> dispatchOf(const ComPtr<IUnknown>& object)
{
    return object.as<IDispatch>();
}

void put(IDispatch& object, DISPID id, const Bstr& key, long value)
{
    VARIANT arguments[2]; // last first
    arguments[0].vt = VT_I4;
    arguments[0].lVal = value;
    arguments[1].vt = VT_BSTR;
    arguments[1].bstrVal = key.get();
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{arguments, &named, 2, 1};
    require(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters, nullptr,
                          nullptr, nullptr));
}

void get(IDispatch& object, DISPID id, const Bstr& key)
{
    VARIANT argument;
    argument.vt = VT_BSTR;
    argument.bstrVal = key.get();
    DISPPARAMS parameters{&argument, nullptr, 1, 0};
    Variant value;
    require(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &parameters, value.put(),
                          nullptr, nullptr));
}

void findName(IDispatch& object, const wchar_t* name)
{
    std::wstring text(name);
    LPOLESTR names[] = {text.data()};
    DISPID id = DISPID_UNKNOWN;
    require(object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id));
}

template <class Body> Sample repeated(Body&& body)
{
    return [body] { return perRun(rounds, body); };
}

void measureOperands(Report& report, const Effort& effort)
{
    constexpr const char* group = "Operands";
    const auto command = create<IAppCommand>(commandProgId);
    const auto late = dispatchOf(command.as<IUnknown>());
    const auto dictionary = create<IDispatch>(platformProgId);
    const Bstr key(L"GroupID");
    const int samples = effort.samples(201);

    VARIANT number;
    number.vt = VT_I4;
    number.lVal = 7;
    const Sample letOperand = repeated([&] { command->put_Operand(key.get(), number); });
    const Sample getOperand = repeated([&] {
        VARIANT value;
        command->get_Operand(key.get(), &value);
    });
    report.add(group, "let by the vtable", "a conversion by VariantChangeType",
               compare(samples, letOperand, repeated([&] {
                           Variant value;
                           VariantChangeType(value.put(), &number, 0, VT_I4);
                       })));
    report.add(group, "get by the vtable", "a copy by VariantCopy",
               compare(samples, getOperand, repeated([&] {
                           Variant value;
                           VariantCopy(value.put(), &number);
                       })));
    report.add(group, "let by late binding", "Scripting.Dictionary, Item",
               compare(samples, repeated([&] { put(*late, idOfOperand, key, 7); }),
                       repeated([&] { put(*dictionary, DISPID_VALUE, key, 7); })));
    report.add(group, "get by late binding", "Scripting.Dictionary, Item",
               compare(samples, repeated([&] { get(*late, idOfOperand, key); }),
                       repeated([&] { get(*dictionary, DISPID_VALUE, key); })));
    report.add(group, "finding the name", "Scripting.Dictionary, Item",
               compare(samples, repeated([&] { findName(*late, L"Operand"); }),
                       repeated([&] { findName(*dictionary, L"Item"); })),
               1.5);
}

void measureEvents(Report& report, const Effort& effort)
{
    test::Container container;
    MemoryData data;
    open(container, dialogProgId, commandFor(data).get());
    demand(data.hasSubscriber(), "the dialog does not listen");

    MemoryData other;
    ComPtr<IGroups> groups;
    require(other.root()->get_Groups(groups.put()));
    const DeafSubscription<IGroupsEvents> deaf(groups);

    // A built-in group: the dialog takes the event, looks at the id, and leaves the group out.
    const Bstr name(L"Built in");
    report.add("Events", "one event to the dialog", "a subscriber that does nothing",
               compare(effort.samples(201), repeated([&] { data.announce(1, name.get()); }),
                       repeated([&] { other.announce(1, name.get()); })),
               1.25);
}

} // namespace

void measureCalls(Report& report, const Effort& effort)
{
    measureOperands(report, effort);
    measureEvents(report, effort);
}

} // namespace korvane::bench
