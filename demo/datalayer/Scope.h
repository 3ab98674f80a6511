// A step of reading.
#pragma once

#include "demo/datalayer/Store.h"
#include "framework/com/Object.h"

#include <KorvaneData.h>

#include <optional>
#include <string>

namespace korvane::store
{

/// What is read within a scope comes from one state of the database, until something is written.
class Scope final : public Object<Scope, Inherits<IScope>, IScope>
{
public:
    Scope(std::shared_ptr<Store> store, long flags, std::wstring_view source);
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope();

    STDMETHODIMP Close(long flags, long reason) override;

private:
    std::shared_ptr<Store> store_;
    std::wstring source_;
    std::optional<Reading> reading_; ///< empty once the scope is closed
};

} // namespace korvane::store
