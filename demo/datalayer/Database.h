// What a host creates to open databases.
#pragma once

#include "demo/datalayer/Trace.h"
#include "framework/com/Object.h"

#include <KorvaneStore.h>

#include <memory>

namespace korvane::store
{

class Database final : public Object<Database, Inherits<IDatabase>, IDatabase>
{
public:
    STDMETHODIMP Open(BSTR path, BSTR account, IRoot** root) override;
    STDMETHODIMP get_LockTimeout(long* milliseconds) override;
    STDMETHODIMP put_LockTimeout(long milliseconds) override;
    STDMETHODIMP get_Trace(BSTR* text) override;
    STDMETHODIMP ClearTrace() override;
    STDMETHODIMP AddSample(IRoot* root) override;

private:
    // Long enough for what other users write, short enough for somebody who waits in front of a dialog.
    long lockTimeout_ = 2000;
    std::shared_ptr<store::Trace> trace_ = std::make_shared<store::Trace>();
};

} // namespace korvane::store
