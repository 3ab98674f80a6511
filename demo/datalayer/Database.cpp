#include "demo/datalayer/Database.h"

#include "demo/datalayer/Errors.h"
#include "demo/datalayer/Root.h"
#include "demo/datalayer/Store.h"

namespace korvane::store
{

STDMETHODIMP Database::Open(BSTR path, BSTR account, IRoot** root)
{
    return returns(root, [&] {
        const auto store = traced(
            *trace_, line(L"Database.Open", view(path), view(account)),
            [&] { return Store::open(std::wstring(view(path)), view(account), lockTimeout_, trace_); },
            [](const auto&) { return L""; });
        return ComPtr<IRoot>(make<Root>(store).get());
    });
}

STDMETHODIMP Database::get_LockTimeout(long* milliseconds)
{
    return returns(milliseconds, [&] { return long(lockTimeout_); });
}

STDMETHODIMP Database::put_LockTimeout(long milliseconds)
{
    return guard([&] {
        if (milliseconds < 0)
            throw Failure(E_INVALIDARG);
        lockTimeout_ = milliseconds;
    });
}

STDMETHODIMP Database::get_Trace(BSTR* text)
{
    return returns(text, [&] { return Bstr(trace_->text()); });
}

STDMETHODIMP Database::ClearTrace()
{
    trace_->clear();
    return S_OK;
}

STDMETHODIMP Database::AddSample(IRoot* root)
{
    return guard([&] {
        notNull(root);
        ComPtr<Root> ours;
        if (FAILED(root->QueryInterface(*Root::privateId(), ours.putVoid())))
            throw error(Code::foreignRoot, L"Database");
        ours->addSample();
    });
}

} // namespace korvane::store
