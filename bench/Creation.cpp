// Creation of a command, with the library loaded, against that of an object of the platform's own.
#include "bench/Benchmarks.h"
#include "bench/Library.h"

namespace korvane::bench
{

namespace
{

constexpr const char* group = "Creation of a command";
constexpr int rounds = 5;

Sample byName(const wchar_t* progId)
{
    return [progId] { return perRun(rounds, [&] { create<IDispatch>(progId); }); };
}

Sample lookUp(const wchar_t* progId)
{
    return [progId] { return perRun(rounds, [&] { classIdOf(progId); }); };
}

Sample byClass(const wchar_t* progId)
{
    return [classId = classIdOf(progId)] {
        return perRun(rounds, [&] {
            ComPtr<IDispatch> object;
            require(
                CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.putVoid()));
        });
    };
}

Sample byFactory(const wchar_t* progId)
{
    ComPtr<IClassFactory> factory;
    require(CoGetClassObject(classIdOf(progId), CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                             factory.putVoid()));
    return [factory] {
        return perRun(rounds * 200, [&] {
            ComPtr<IDispatch> object;
            require(factory->CreateInstance(nullptr, IID_IDispatch, object.putVoid()));
        });
    };
}

} // namespace

void measureCreation(Report& report, const Effort& effort)
{
    // Held, so that neither module comes and goes.
    const auto ours = create<IDispatch>(commandProgId);
    const auto theirs = create<IDispatch>(platformProgId);

    const char* platform = "Scripting.Dictionary";
    const int samples = effort.samples(301);
    report.add(group, "by ProgID", platform, compare(samples, byName(commandProgId), byName(platformProgId)),
               1.1);
    report.add(group, "looking up the ProgID alone", platform,
               compare(samples, lookUp(commandProgId), lookUp(platformProgId)));
    report.add(group, "by class id", platform,
               compare(samples, byClass(commandProgId), byClass(platformProgId)));
    report.add(group, "by a class factory that is held", platform,
               compare(samples, byFactory(commandProgId), byFactory(platformProgId)));
}

} // namespace korvane::bench
