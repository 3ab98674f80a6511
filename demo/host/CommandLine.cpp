#include "demo/host/CommandLine.h"

#include "framework/com/Failure.h"

namespace korvane::host
{

const wchar_t* const usage =
    L"KorvaneHost [--db FILE] [--user ACCOUNT] [--empty] [--tour FOLDER [--verbose]]";

namespace
{

Failure misuse(const std::wstring& problem)
{
    return {E_INVALIDARG, L"KorvaneHost", problem + L"\n\n" + usage};
}

} // namespace

Options readOptions(std::span<const std::wstring> arguments)
{
    Options options;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument)
    {
        const std::wstring& name = *argument;
        if (name == L"--empty" || name == L"--verbose")
        {
            (name == L"--empty" ? options.empty : options.verbose) = true;
            continue;
        }
        std::wstring* value = name == L"--db"     ? &options.database
                              : name == L"--user" ? &options.account
                              : name == L"--tour" ? &options.tourFolder
                                                  : nullptr;
        if (!value)
            throw misuse(L"The option " + name + L" is unknown.");
        if (++argument == arguments.end() || argument->empty())
            throw misuse(L"The option " + name + L" needs a value.");
        *value = *argument;
    }
    return options;
}

} // namespace korvane::host
