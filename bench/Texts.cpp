// Texts of the string table as BSTRs, which the caller frees.
#include "bench/Benchmarks.h"
#include "bench/Library.h"

namespace korvane::bench
{

namespace
{

constexpr const char* group = "Texts";
constexpr int rounds = 200;

// A title and captions of the group dialog, and its buttons.
constexpr UINT ids[] = {21000, 21001, 21002, 21003, 21004, 1002, 1003};

template <class Body> Sample forEachText(Body&& body)
{
    return [body] {
        return perRun(rounds,
                      [&] {
                          for (const UINT id : ids)
                              body(id);
                      }) /
               static_cast<double>(std::size(ids));
    };
}

} // namespace

void measureTexts(Report& report, const Effort& effort)
{
    const auto resources = create<IResources>(resourcesProgId);
    const HMODULE module = test::library();
    for (const UINT id : ids)
    {
        BSTR text = nullptr;
        require(resources->GetString(static_cast<long>(id), &text));
        demand(SysStringLen(Bstr::adopt(text).get()) > 0, "a text is missing");
    }

    const Sample ofLibrary = forEachText([&](UINT id) {
        BSTR text = nullptr;
        resources->GetString(static_cast<long>(id), &text);
        SysFreeString(text);
    });
    const Sample throughBuffer = forEachText([&](UINT id) {
        wchar_t buffer[256];
        LoadStringW(module, id, buffer, 256);
        const BSTR text = SysAllocString(buffer);
        SysFreeString(text);
    });
    const Sample inPlace = forEachText([&](UINT id) {
        const wchar_t* stored = nullptr;
        const int length = LoadStringW(module, id, reinterpret_cast<wchar_t*>(&stored), 0);
        const BSTR text = SysAllocStringLen(stored, static_cast<UINT>(length));
        SysFreeString(text);
    });

    const int samples = effort.samples(301);
    report.add(group, "GetString", "LoadStringW into a buffer, SysAllocString",
               compare(samples, ofLibrary, throughBuffer), 1.2);
    report.add(group, "GetString, against no copy between", "LoadStringW by pointer, SysAllocStringLen",
               compare(samples, ofLibrary, inPlace));
}

} // namespace korvane::bench
