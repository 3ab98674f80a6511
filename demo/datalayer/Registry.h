// The installation's settings.
#pragma once

#include "framework/com/Object.h"

#include <KorvaneStore.h>

namespace korvane::store
{

/// Answers from the database that was opened last and is still open.
class Registry final : public Object<Registry, Inherits<ISettings>, ISettings, IRegistry>
{
public:
    STDMETHODIMP GetValue(BSTR key, VARIANT defaultValue, VARIANT* value) override;
};

} // namespace korvane::store
