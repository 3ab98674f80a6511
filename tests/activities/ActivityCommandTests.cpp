// What both activity commands have in common beyond what every command has.
#include "activities/EditEvents.h"
#include "activities/MoveEvents.h"
#include "tests/activities/ActivityFixture.h"
#include "tests/support/ComRules.h"

namespace korvane::test
{

template <class Command> class ActivityCommandTests : public ActivityTests<Command>
{
};

using Commands = testing::Types<EditEvents, MoveEvents>;
TYPED_TEST_SUITE(ActivityCommandTests, Commands);

TYPED_TEST(ActivityCommandTests, TheTimesAreExchangedBeforeAnUnknownOperationFails)
{
    this->let(L"T0", ten);
    this->let(L"T1", nine);
    call(this->command, &IAppCommand::put_Operation, 17L);
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_TRUE(FAILED(this->command->Execute(&result)));
    EXPECT_EQ(this->time(L"T0"), nine);
    EXPECT_EQ(this->time(L"T1"), ten);
}

TYPED_TEST(ActivityCommandTests, OnlyThePreparedCommandHearsOfTheLinks)
{
    EXPECT_FALSE(this->data.hasSubscribers());
    this->open(20, 3);
    EXPECT_TRUE(this->data.hasSubscribers(EventsOf::links));
    this->open(20, 3); // again, in place of the former subscription
    this->object.reset();
    this->command.reset();
    EXPECT_FALSE(this->data.hasSubscribers());
    EXPECT_EQ(references(this->data.root.get()), 1U);
    EXPECT_EQ(this->data.rulesAlive, 0);
}

TYPED_TEST(ActivityCommandTests, TheDialogsOperationsAreHiddenFromHosts)
{
    const auto dispatch = this->command.template as<IDispatch>();
    const auto idOf = [&](const wchar_t* name, DISPID& id) {
        auto* text = const_cast<LPOLESTR>(name);
        return dispatch->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    };
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(idOf(L"Command", id), S_OK);
    for (const wchar_t* name : {L"SetName", L"HasName", L"NameCount", L"MayBookOthers", L"Rule",
                                L"ExceptionFlag", L"LinkID", L"BookedNames", L"ChosenNames", L"Links"})
        EXPECT_EQ(idOf(name, id), DISP_E_UNKNOWNNAME) << narrow(name);

    DISPPARAMS none{};
    Variant result;
    if (std::is_same_v<TypeParam, MoveEvents>)
    {
        ASSERT_EQ(idOf(L"UpdateAll", id), S_OK);
        EXPECT_EQ(dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                   result.put(), nullptr, nullptr),
                  DISP_E_MEMBERNOTFOUND);
    }
    else
    {
        EXPECT_EQ(idOf(L"UpdateAll", id), DISP_E_UNKNOWNNAME);
    }
}

} // namespace korvane::test
