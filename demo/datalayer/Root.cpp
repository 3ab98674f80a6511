#include "demo/datalayer/Root.h"

#include "demo/datalayer/Scope.h"

namespace korvane::store
{

STDMETHODIMP Root::get_Groups(IGroups** collection)
{
    return returns(collection, [&] {
        store_->trace().add(L"Root.Groups");
        return ComPtr<IGroups>(groups_.get());
    });
}

STDMETHODIMP Root::OpenScope(long flags, BSTR source, IScope** scope)
{
    return returns(scope, [&] { return ComPtr<IScope>(make<Scope>(store_, flags, view(source)).get()); });
}

} // namespace korvane::store
