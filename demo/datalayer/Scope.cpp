#include "demo/datalayer/Scope.h"

#include "demo/datalayer/Errors.h"

namespace korvane::store
{

Scope::Scope(std::shared_ptr<Store> store, long flags, std::wstring_view source)
    : store_(std::move(store)), source_(source)
{
    store_->trace().add(line(L"Root.OpenScope", flags, source_));
    reading_.emplace(store_->connection());
    store_->trace().indent();
}

Scope::~Scope()
{
    if (!reading_)
        return;
    store_->trace().outdent();
    attempt([&] { store_->trace().add(L"The scope " + shown(source_) + L" was left without Close"); });
}

STDMETHODIMP Scope::Close(long flags, long reason)
{
    return guard([&] {
        if (!reading_)
            throw error(Code::scopeClosed, L"Scope", source_);
        reading_.reset();
        store_->trace().outdent();
        store_->trace().add(line(L"Scope.Close", flags, reason));
    });
}

} // namespace korvane::store
