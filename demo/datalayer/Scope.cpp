#include "demo/datalayer/Scope.h"

#include "demo/datalayer/Errors.h"

namespace korvane::store
{

Scope::Scope(std::shared_ptr<Session> session, long flags, std::wstring_view source)
    : session_(std::move(session)), source_(source)
{
    session_->trace().add(line(L"Root.OpenScope", flags, source_));
    reading_.emplace(session_->connection());
    session_->trace().indent();
}

Scope::~Scope()
{
    if (!reading_)
        return;
    session_->trace().outdent();
    attempt([&] { session_->trace().add(L"The scope " + shown(source_) + L" was left without Close"); });
}

STDMETHODIMP Scope::Close(long flags, long reason)
{
    return guard([&] {
        if (!reading_)
            throw error(Code::scopeClosed, L"Scope", source_);
        reading_.reset();
        session_->trace().outdent();
        session_->trace().add(line(L"Scope.Close", flags, reason));
    });
}

} // namespace korvane::store
