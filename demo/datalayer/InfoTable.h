// The information rows of resources, as the database holds them.
#pragma once

#include "demo/datalayer/Errors.h"
#include "demo/datalayer/Rights.h"

#include <string>
#include <vector>

namespace korvane::store
{

struct InfoRow
{
    std::wstring label;
    std::wstring value;
};

class InfoTable
{
public:
    explicit InfoTable(Store& store) : connection_(store.connection()), rights_(store) {}

    /// The rows of a resource in their order.
    std::vector<InfoRow> rows(long name) const;

    /// Stores the row with a label, or removes it. An empty row, as it stands at the end of a list for whoever wants
    /// to add one, changes nothing.
    /// @param position below 0 to remove.
    void set(long name, std::wstring_view label, long position, std::wstring_view value);

private:
    void requireName(long name) const;

    Connection& connection_;
    Rights rights_;
};

} // namespace korvane::store
