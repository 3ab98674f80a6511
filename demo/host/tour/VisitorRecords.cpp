// The tour's visitor: what stands in the database after what he did, and what the host was asked for.
#include "demo/host/tour/Screen.h"
#include "demo/host/tour/Visitor.h"

#include <utility>

namespace korvane::host
{

// --- what then stands in the database and in the window

std::vector<GroupRow> Visitor::rows() const
{
    return readGroups(window_.database().path());
}

void Visitor::expectRows(const std::vector<GroupRow>& expected)
{
    expect(rows() == expected, L"other rows in the database");
    waitFor(L"the window's list shows what is in the database", [&] {
        for (std::size_t row = 0; row < expected.size(); ++row)
            if (itemOf(list_, static_cast<int>(row), 0) != expected[row].name ||
                itemOf(list_, static_cast<int>(row), 1) != std::to_wstring(expected[row].id))
                return false;
        return itemOf(list_, static_cast<int>(expected.size()), 0).empty();
    });
}

void Visitor::expectCall(const std::wstring& line)
{
    expect(trace().find(line) != std::wstring::npos, L"a call " + line + L" in the data layer");
}

void Visitor::expectNoCall(const std::wstring& line)
{
    expect(trace().find(line) == std::wstring::npos, L"no call " + line + L" in the data layer");
}

std::wstring Visitor::takeOrders()
{
    std::wstring orders;
    if (IsWindow(main_))
        window_.invoke([&] { orders = std::exchange(orders_, {}); });
    return orders;
}

void Visitor::clearTrace()
{
    trace();
    trace_.clear();
}

const std::wstring& Visitor::trace()
{
    if (IsWindow(main_))
        window_.invoke([this] { trace_ += window_.database().takeTrace(); });
    return trace_;
}

} // namespace korvane::host
