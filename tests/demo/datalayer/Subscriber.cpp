#include "tests/demo/datalayer/Subscriber.h"

namespace korvane::store::test
{

Subscriber::Subscription Subscriber::subscribedTo(const ComPtr<IGroups>& groups)
{
    return {eventsOf(groups), ComPtr<Subscriber>(new Subscriber)};
}

HRESULT Subscriber::hear(DISPID event, const DISPPARAMS& arguments)
{
    if (event == 1 && arguments.cArgs == 0)
    {
        events_.emplace_back(L"OnClear");
        list_.clear();
        return onEvent();
    }
    if (event != 2 || arguments.cArgs != 3)
    {
        ADD_FAILURE() << "unknown event " << event << " with " << arguments.cArgs << " arguments";
        return DISP_E_MEMBERNOTFOUND;
    }
    const VARIANT* last = arguments.rgvarg;
    EXPECT_EQ(VT_I4, last[2].vt);
    EXPECT_EQ(VT_BSTR, last[1].vt);
    EXPECT_EQ(VT_I4, last[0].vt);
    const Listed group{last[2].lVal, std::wstring(view(last[1].bstrVal)), last[0].lVal};
    events_.push_back(L"OnAdd " + std::to_wstring(group.id) + L' ' + group.name + L' ' +
                      std::to_wstring(group.flags));
    list_.push_back(group);
    return onEvent();
}

Subscriber::Subscription::Subscription(ComPtr<IConnectionPoint> point, ComPtr<Subscriber> subscriber)
    : point_(std::move(point)), subscriber_(std::move(subscriber))
{
    require(point_->Advise(subscriber_.get(), &cookie_));
}

ComPtr<IConnectionPoint> eventsOf(const ComPtr<IGroups>& groups)
{
    ComPtr<IConnectionPoint> point;
    require(groups.as<IConnectionPointContainer>()->FindConnectionPoint(DIID_IGroupsEvents, point.put()));
    return point;
}

} // namespace korvane::store::test
