#include "bench/Library.h"

#include "bench/Measurement.h"

namespace korvane::bench
{

CLSID classIdOf(const wchar_t* progId)
{
    CLSID classId{};
    require(CLSIDFromProgID(progId, &classId));
    return classId;
}

void open(test::Container& container, const wchar_t* dialogClass, IUnknown* command)
{
    container.place(create<IAppDialog>(dialogClass), command);
    readReady(container);
}

void readReady(test::Container& container)
{
    demand(container.ready(), "the dialog is not ready");
}

std::wstring libraryPath()
{
    return test::folderOfTests() + L"\\KorvaneDlg.dll";
}

} // namespace korvane::bench
