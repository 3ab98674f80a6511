// A language that the host brings: the texts of a file in place of the library's own.
//
// A line of the file has an id and its text in quotation marks, as in the library's string table: \n is a line break,
// and "" a quotation mark. A line that begins with a semicolon is passed over. The file is UTF-8, and its text 0 the
// number of a locale.
#pragma once

#include "framework/com/Object.h"

#include <KorvaneInterfaces.h>

#include <map>
#include <string>
#include <string_view>

namespace korvane::host
{

using Texts = std::map<long, std::wstring>;

/// Reads the lines of a language. Throws E_INVALIDARG with the number of the first line that is none.
/// @param name what the description calls the file.
Texts readTexts(std::string_view lines, std::wstring_view name);
Texts readTextFile(const std::wstring& path);

/// The folder of the languages beside the program.
std::wstring languageFolder();

class Language final : public Object<Language, Inherits<IResources>, IResources>
{
public:
    /// @param library the library's own resources: they give the pictures, and the texts that are not there. Throws
    /// when text 0 is no number.
    Language(Texts texts, ComPtr<IResources> library);

    STDMETHODIMP GetIcon(long id, IPictureDisp** picture) override { return library_->GetIcon(id, picture); }
    STDMETHODIMP GetBitmap(long id, IPictureDisp** picture) override
    {
        return library_->GetBitmap(id, picture);
    }
    STDMETHODIMP GetCursor(long id, IPictureDisp** picture) override
    {
        return library_->GetCursor(id, picture);
    }
    STDMETHODIMP GetString(long id, BSTR* text) override;
    STDMETHODIMP get_LocaleID(long* locale) override;

private:
    Texts texts_;
    ComPtr<IResources> library_;
    long locale_;
};

} // namespace korvane::host
