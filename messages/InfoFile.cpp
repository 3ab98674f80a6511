#include "messages/InfoFile.h"

#include "framework/com/LateBound.h"
#include "framework/modKorvaneDlg.h"

#include <algorithm>
#include <string>

namespace korvane
{

namespace
{

/// Without a folder: it is looked for in the current directory, where installations without a shared folder keep it,
/// and under this name whatever the language.
constexpr const wchar_t* fileOfLastResort = L"Info1033.txt";

constexpr long textLocale = 0;

// The modes of the file system object.
constexpr long forReading = 1;
constexpr long asAnsi = 0;

Variant value(std::wstring_view text)
{
    return Variant(Bstr(text));
}

Bstr sharedFolder()
{
    const auto registry = createByProgId<IDispatch>(L"KorvaneData.Registry");
    return toText(invoke(registry, L"GetValue", {value(L"SharedFolder"), value(L"")}).get());
}

/// A table of texts may be the host's: what it calls a language is not to lead out of the folder, nor to a device.
bool isPlainNumber(std::wstring_view text)
{
    return !text.empty() &&
           std::ranges::all_of(text, [](wchar_t digit) { return digit >= L'0' && digit <= L'9'; });
}

bool exists(const ComPtr<IDispatch>& files, const Bstr& path)
{
    return toBool(invoke(files, L"FileExists", {Variant(path)}).get());
}

/// The path of the file; empty where there is none.
Bstr findFile(const ComPtr<IDispatch>& files, const Bstr& folder)
{
    if (const Bstr language = resourceText(textLocale); isPlainNumber(language.view()))
    {
        const std::wstring name = L"Info" + std::wstring(language.view()) + L".txt";
        Bstr path = toText(invoke(files, L"BuildPath", {Variant(folder), value(name)}).get());
        if (exists(files, path))
            return path;
    }
    Bstr path(fileOfLastResort);
    return exists(files, path) ? path : Bstr();
}

/// What the file system object of Wine does not implement is False. A file that cannot be read fails when a line is.
bool isTrue(const ComPtr<IDispatch>& stream, std::wstring_view property)
{
    return toBool(getIfAny(stream, property).get());
}

std::vector<Bstr> readLabels(const ComPtr<IDispatch>& stream)
{
    std::vector<Bstr> labels;
    while (!isTrue(stream, L"AtEndOfLine") && !isTrue(stream, L"AtEndOfStream"))
    {
        Bstr line = toText(invoke(stream, L"ReadLine").get());
        if (line.empty())
            break; // where AtEndOfLine does not tell it before
        labels.push_back(std::move(line));
    }
    invoke(stream, L"Close");
    return labels;
}

} // namespace

std::vector<Bstr> readInfoFile()
{
    const Bstr folder = sharedFolder();
    const auto files = createByProgId<IDispatch>(L"SCRIPTING.FileSystemObject");
    const Bstr path = findFile(files, folder);
    if (path.empty())
        return {};
    const auto stream =
        objectIn(invoke(files, L"OpenTextFile",
                        {Variant(path), Variant(forReading), Variant(false), Variant(asAnsi)}))
            .as<IDispatch>();
    return readLabels(stream);
}

} // namespace korvane
