#include "tests/activities/ActivityDialog.h"

#include "framework/com/Boundary.h"

namespace korvane::test
{

void ActivityDialog::SetUp()
{
    data.groups = {{1, L"System", 1}, {4, L"Drivers", 3}, {5, L"Vans", 3}};
    data.names = {{10, L"Anna", 4}, {11, L"Ben", 4}, {12, L"Carla", 4}, {20, L"Van 1", 5}, {11, L"Ben", 5}};
    data.types = {{0, L"Activity", 0x808080}, {7, L"Service", 0x0000FF}, {8, L"Tour", 0x00FF00}};
    data.events = {{50, 10, 7, monday + 9 * hour, monday + 10 * hour, L"Oil change"}};
}

void ActivityDialog::TearDown()
{
    container.close();
    command.reset();
}

void ActivityDialog::arrange(long operation, long instance)
{
    call(command, &IAppCommand::put_Operation, operation);
    letRoot();
    let(L"GroupID", 4L);
    if (operation == 1)
    {
        let(L"N0", 10L);
        let(L"T0", monday + 9 * hour);
        let(L"T1", monday + 10 * hour);
    }
    else
    {
        let(L"EventID", 50L);
        let(L"Instance", instance);
    }
}

bool ActivityDialog::show(long operation, long instance)
{
    arrange(operation, instance);
    return container.show(__uuidof(::ctlEditEvents), command.get());
}

std::optional<ErrorInfo> ActivityDialog::failureOfShowing(long operation)
{
    const auto failure = attempt([&] { show(operation); });
    if (!failure)
        return std::nullopt;
    return ErrorInfo{failure->number(), std::wstring(failure->source().view()),
                     std::wstring(failure->description().view())};
}

void ActivityDialog::showed(long operation, long instance)
{
    ASSERT_TRUE(show(operation, instance));
    container.site->activateUi();
    container.pump();
    data.takeCalls();
}

void RecurrencePanel::SetUp()
{
    ActivityDialog::SetUp();
    data.newRule = Rule{0, 0, 10, 0};
}

void RecurrencePanel::showedWith(const Rule& rule)
{
    data.events[0].rule = rule;
    showed(3);
}

std::string RecurrencePanel::storedRule()
{
    data.takeCalls();
    Container::click(ok());
    EXPECT_THAT(container.done, testing::ElementsAre(false));
    for (const auto& call : data.takeCalls())
        if (call.starts_with("Events.SetRecurrence"))
            return call;
    return "";
}

void RecurrencePanel::clickArrow(int index, bool up)
{
    RECT place{};
    GetClientRect(arrows(index), &place);
    Container::clickAt(arrows(index), place.right / 2, up ? 2 : place.bottom - 2);
    container.pump();
}

void RecurrencePanel::closeAndForget()
{
    container.close();
    container.errors.clear();
    container.done.clear();
}

} // namespace korvane::test
