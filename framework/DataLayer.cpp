#include "framework/DataLayer.h"

namespace korvane
{

DataScope::DataScope(const ComPtr<IRoot>& root, std::wstring_view source, long flags)
    : scope_(fetch(root, &IRoot::OpenScope, flags, Bstr(source).get())), flags_(flags)
{
}

DataScope::~DataScope()
{
    if (const auto open = std::move(scope_))
        open->Close(flags_, 0);
}

void DataScope::end()
{
    const auto open = std::move(scope_);
    call(open, &IScope::Close, flags_, 0L);
}

} // namespace korvane
