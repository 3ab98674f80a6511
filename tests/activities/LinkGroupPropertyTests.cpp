// Whatever is edited, moved, copied and deleted, and wherever the data layer fails on the way: link groups are what an
// independent model says.
#include "activities/EditEvents.h"
#include "activities/MoveEvents.h"
#include "tests/activities/LinkGroupModel.h"
#include "tests/support/ComRules.h"
#include "tests/support/Soak.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <regex>

namespace korvane::test
{

namespace
{

/// By default; six times as many make the long run.
constexpr unsigned usualSequences = 2000;
constexpr int operationsOfSequence = 8;
constexpr long resources = 6;

const ErrorInfo unknownActivity{E_INVALIDARG, L"KorvaneData.Events", L"There is no such activity."};

using Events = std::vector<Event>;

/// The activities of a link group.
Events linkedBy(const RecordingData& data, long link)
{
    Events result;
    std::copy_if(data.events.begin(), data.events.end(), std::back_inserter(result),
                 [&](const Event& event) { return event.link == link; });
    return result;
}

bool isFor(const Events& group, long name)
{
    return std::any_of(group.begin(), group.end(), [&](const Event& event) { return event.nameId == name; });
}

/// The group that an activity is in, or the activity alone.
std::string groupAround(const RecordingData& data, const Event& event)
{
    return shownGroup(event.link.has_value(), event.link ? linkedBy(data, *event.link) : Events{event});
}

/// Each single activity and each link group.
std::vector<std::string> groupsIn(const RecordingData& data)
{
    std::vector<std::string> result;
    std::set<long> told;
    for (const Event& event : data.events)
        if (!event.link || told.insert(*event.link).second)
            result.push_back(groupAround(data, event));
    std::sort(result.begin(), result.end());
    return result;
}

/// What is wrong with what the data layer holds; empty when all is well.
std::string faultsIn(const RecordingData& data)
{
    std::string result;
    std::set<std::pair<long, long>> booked;
    for (const Event& event : data.events)
    {
        if (event.t0 > event.t1)
            result += "an activity ends before it starts\n";
        if (!event.link)
            continue;
        const auto group = linkedBy(data, *event.link);
        if (std::none_of(group.begin(), group.end(),
                         [&](const Event& each) { return each.id == event.link; }))
            result += "a group has the id of an activity that is not in it\n";
        if (!booked.emplace(*event.link, event.nameId).second)
            result += "a group has a resource twice\n";
    }
    return result;
}

/// What is wrong with what the data layer is being asked; empty when all is well.
std::string faultOf(RecordingData& data, const std::string& name)
{
    const std::string& call = data.calls.back();
    const std::regex number("-?\\d+");
    std::vector<long> numbers;
    for (std::sregex_iterator found(call.begin(), call.end(), number); found != std::sregex_iterator();
         ++found)
        numbers.push_back(std::stol(found->str()));
    if (call.find("(Empty") != std::string::npos)
        return {};
    const Event* const activity = data.event(numbers.at(0));
    const bool whole = name == "Events.SetRecurrence" || (numbers.size() > 1 && numbers[1] == 0);
    if (name.starts_with("Events."))
    {
        if (name == "Events.Add" || !activity || !activity->link || !whole)
            return {};
        return name == "Events.Update" && numbers.at(2) == activity->nameId
                   ? ""
                   : "by itself a linked activity was given something else: " + call + '\n';
    }
    if (name == "EventLinks.Create")
        return activity && activity->link && linkedBy(data, *activity->link).size() > 1
                   ? "a member of a group was made the first of another one\n"
                   : "";
    const auto group = linkedBy(data, numbers.at(0));
    const bool adds = name == "EventLinks.AddNames";
    if (group.empty() || !(adds || name == "EventLinks.RemoveNames" || name == "EventLinks.Detach"))
        return {};
    for (std::size_t index = 1; index < numbers.size(); ++index)
        if (isFor(group, numbers[index]) == adds)
            return "a resource was added that is in the group, or taken out that is not: " + call + '\n';
    return {};
}

bool writes(const std::string& call)
{
    static const std::set<std::string> reads{"Events.Fetch", "Events.GetRecurrence", "Events.IsException",
                                             "EventLinks.Load", "EventLinks.HasAccess"};
    return call.starts_with("Event") && !reads.contains(call);
}

/// One random sequence on a data layer and on a model of it.
class Sequence
{
public:
    explicit Sequence(unsigned seed) : random_(seed) { data_.exactGroups = true; }

    /// Performs a random operation on both. Empty when they agree, else what happened.
    std::string step();

    int endings[3] = {};
    int lostPrimaries = 0;
    int secondAttempts = 0;
    int changedAttempts = 0;

private:
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    bool oneIn(int number) { return below(number) == 0; }
    long anyName() { return 1 + below(resources); }
    long anyInstance() { return oneIn(3) ? 1 + below(3) : 0; }
    int anyFailure() { return oneIn(4) ? below(6) : -1; }
    std::wstring anyText()
    {
        return oneIn(3) ? L"" : std::wstring(1, static_cast<wchar_t>(L'a' + below(26)));
    }

    template <class Command> ComPtr<Command> open(long eventId, long operation, long instance);
    void giveTimes(IAppCommand& command, ActivityValues& values);
    std::optional<Rule> chooseRule(EditEvents& command);
    void choose(EditEvents& command, LinkGroupModel::Edit& edit);

    void edit(long operation);
    void editUnderWay(EditEvents& command, LinkGroupModel::Group* group, long operation,
                      LinkGroupModel::Edit& edit);
    void checkBooked(EditEvents& command, const LinkGroupModel::Group& written, bool adds,
                     const LinkGroupModel::Edit& edit);
    void attemptAgain(EditEvents& command, const LinkGroupModel& former, std::ptrdiff_t index, long operation,
                      const LinkGroupModel::Edit& edit);
    void attemptAnotherChoice(EditEvents& command, long operation, LinkGroupModel::Edit& edit);
    Ending apply(LinkGroupModel::Group* group, long operation, const LinkGroupModel::Edit& edit, int failing);
    void move(long operation);

    long anyActivity();
    LinkGroupModel::Group& groupOf(long eventId);
    void execute(IAppCommand& command, int failing, bool expectedResult);
    void watch(const std::string& call, int& failing);
    void compare(Ending ending);
    void complain(const std::string& complaint) { complaint_ += complaint + '\n'; }

    std::mt19937 random_;
    RecordingData data_;
    bool renamesGroup_ = false; ///< at the next change of a link group
    LinkGroupModel model_;
    ErrorInfo error_;
    std::string told_;
    std::string complaint_;
};

void let(IAppCommand& command, const wchar_t* name, const Variant& value)
{
    require(command.put_Operand(Bstr(name).get(), value.get()));
}

long number(IAppCommand& command, const wchar_t* name)
{
    Variant value;
    require(command.get_Operand(Bstr(name).get(), value.put()));
    return toLong(value.get());
}

long Sequence::anyActivity()
{
    return data_.events[static_cast<std::size_t>(below(static_cast<int>(data_.events.size())))].id;
}

/// Groups that look the same are as good as one another.
LinkGroupModel::Group& Sequence::groupOf(long eventId)
{
    const std::string wanted = groupAround(data_, *data_.event(eventId));
    return *std::find_if(model_.groups.begin(), model_.groups.end(), [&](const LinkGroupModel::Group& group) {
        return shownGroup(group.linked, group.members) == wanted;
    });
}

template <class Command> ComPtr<Command> Sequence::open(long eventId, long operation, long instance)
{
    auto command = make<Command>();
    let(*command, L"Root", Variant(data_.root.as<IDispatch>()));
    let(*command, L"EventID", Variant(eventId));
    let(*command, L"Instance", Variant(instance));
    require(command->put_Operation(operation));
    return command;
}

/// Times in any order; the command exchanges them where it has to.
void Sequence::giveTimes(IAppCommand& command, ActivityValues& values)
{
    const DATE first = 46000 + below(24) / 24.0;
    const DATE second = 46000 + below(24) / 24.0;
    let(command, L"T0", Variant(OleDate{first}));
    let(command, L"T1", Variant(OleDate{second}));
    values.t0 = std::min(first, second);
    values.t1 = std::max(first, second);
}

std::optional<Rule> Sequence::chooseRule(EditEvents& command)
{
    switch (below(4))
    {
    case 0:
        command.Rule.reset();
        break;
    case 1:
        command.Rule = fetch(data_.root, &IRoot::NewRecurrence, 1L + below(5));
        require(command.Rule->put_Anchor(below(9)));
        require(command.Rule->put_Interval(below(3)));
        break;
    case 2:
        if (command.Rule)
            require(command.Rule->put_Count(below(20)));
        break;
    default:
        break; // as it is stored
    }
    return ruleIn(command.Rule.get());
}

void Sequence::choose(EditEvents& command, LinkGroupModel::Edit& edit)
{
    for (int clicks = below(7); clicks > 0; --clicks)
    {
        // Unchecking mostly hits what is checked.
        const bool checked = oneIn(2);
        const long name =
            checked || edit.chosen.empty() || oneIn(5)
                ? anyName()
                : edit.chosen[static_cast<std::size_t>(below(static_cast<int>(edit.chosen.size())))];
        command.SetName(name, checked);
        const auto place = std::find(edit.chosen.begin(), edit.chosen.end(), name);
        if (checked && place == edit.chosen.end())
            edit.chosen.push_back(name);
        if (!checked && place != edit.chosen.end())
            edit.chosen.erase(place);
        if (checked)
            edit.primary = name;
        told_ += (checked ? " +" : " -") + shown(name);
    }
    for (long name = 1; name <= resources; ++name)
        if (command.HasName(name) !=
            (std::find(edit.chosen.begin(), edit.chosen.end(), name) != edit.chosen.end()))
            complain("the choice of " + shown(name));
    if (command.NameCount() != static_cast<long>(edit.chosen.size()))
        complain("the number of chosen resources");
}

void Sequence::execute(IAppCommand& command, int failing, bool expectedResult)
{
    data_.during = [&](const std::string& call) { watch(call, failing); };
    VARIANT_BOOL result = VARIANT_FALSE;
    const HRESULT outcome = command.Execute(&result);
    data_.during = nullptr;
    error_ = errorOf(outcome);
    if ((result != VARIANT_FALSE) != (expectedResult && outcome == S_OK))
        complain("the result of Execute");
}

/// Notes what a caller must not do, and lets the write fail whose turn it is.
void Sequence::watch(const std::string& call, int& failing)
{
    if (!writes(call))
        return;
    complaint_ += faultOf(data_, call);
    if (failing >= 0 && failing-- == 0)
        return data_.fail(call, locked);
    if (call != "EventLinks.UpdateLinked" || !renamesGroup_)
        return;
    if (const auto group = linkedBy(data_, std::stol(data_.calls.back().substr(call.size() + 1)));
        !group.empty())
    {
        data_.nextLink = group.back().id;
        renamesGroup_ = false;
    }
}

void Sequence::compare(Ending ending)
{
    ++endings[static_cast<int>(ending)];
    const ErrorInfo expected = ending == Ending::failed    ? locked
                               : ending == Ending::refused ? unknownActivity
                                                           : ErrorInfo{S_OK, {}, {}};
    if (error_ != expected)
        complain("the outcome: expected " + shown(expected.number) + ", was " + shown(error_.number));
    if (const auto stored = groupsIn(data_); stored != model_.shown())
        complain("expected:\n  " + testing::PrintToString(model_.shown()) + "\nstored:\n  " +
                 testing::PrintToString(stored));
    complaint_ += faultsIn(data_);
}

void Sequence::edit(long operation)
{
    const bool adds = operation == operationAdd;
    LinkGroupModel::Edit edit{};
    LinkGroupModel::Group* group = nullptr;
    long eventId = 0;
    edit.instance = anyInstance();
    if (adds)
        edit.primary = anyName();
    else
    {
        eventId = anyActivity();
        group = &groupOf(eventId);
        edit.primary = data_.event(eventId)->nameId;
        told_ += "edit " + groupAround(data_, *data_.event(eventId)) + " of " + shown(edit.primary);
    }
    const auto command = open<EditEvents>(eventId, operation, edit.instance);
    if (adds)
        let(*command, L"N0", Variant(edit.primary));
    told_ += " operation " + shown(operation) + " on " + shown(edit.instance);
    VARIANT_BOOL prepared = VARIANT_FALSE;
    require(command->Prepare(&prepared));

    edit.booked = {edit.primary};
    if (group)
        for (const long name : group->names())
            if (name != edit.primary)
                edit.booked.push_back(name);
    edit.chosen = edit.booked;
    choose(*command, edit);
    editUnderWay(*command, group, operation, edit);
}

void Sequence::editUnderWay(EditEvents& command, LinkGroupModel::Group* group, long operation,
                            LinkGroupModel::Edit& edit)
{
    edit.values = {1 + below(4), 0, 0, anyText()};
    giveTimes(command, edit.values);
    let(command, L"TypeID", Variant(edit.values.typeId));
    let(command, L"Text", Variant(Bstr(edit.values.text)));
    edit.rule = chooseRule(command);
    const int failing = anyFailure();
    if (oneIn(8))
        renamesGroup_ = true;
    told_ += " failing " + shown(failing);
    const LinkGroupModel former = model_;
    const auto place = std::find_if(model_.groups.begin(), model_.groups.end(),
                                    [group](const LinkGroupModel::Group& each) { return &each == group; });
    const auto index = std::distance(model_.groups.begin(), place);
    execute(command, failing, false);

    const bool primaryIsChosen =
        operation == operationDelete ||
        std::find(edit.chosen.begin(), edit.chosen.end(), edit.primary) != edit.chosen.end();
    lostPrimaries += !primaryIsChosen;
    const Ending ending = apply(group, operation, edit, failing);
    compare(ending);
    // A lost primary resource keeps the first attempt from booking those that were added, and not the second.
    if (ending == Ending::failed && primaryIsChosen)
        return operation != operationDelete && oneIn(2)
                   ? attemptAnotherChoice(command, operation, edit)
                   : attemptAgain(command, former, index, operation, edit);
    const bool adds = operation == operationAdd;
    if (operation != operationDelete && ending == Ending::done && primaryIsChosen)
        checkBooked(command, adds ? model_.groups.back() : *group, adds, edit);
}

/// The outcome as the user sees it: whoever was chosen is booked.
void Sequence::checkBooked(EditEvents& command, const LinkGroupModel::Group& written, bool adds,
                           const LinkGroupModel::Edit& edit)
{
    // Except that a single activity's occurrence goes to another resource by itself.
    const bool byItself = !adds && edit.instance != 0 && edit.booked.size() == 1 && edit.chosen.size() == 1;
    if (!byItself && written.names() != std::set<long>(edit.chosen.begin(), edit.chosen.end()))
        complain("the chosen resources are not those booked");
    const Event* const stored = data_.event(number(command, L"EventID"));
    const bool single = edit.chosen.size() == 1 && (edit.booked.size() > 1 || adds);
    if (adds && !stored)
        complain("the id of the new activity");
    if (single && (!stored || stored->link || stored->nameId != edit.chosen.front()))
        complain("the id of the activity that is left");
    if (adds && number(command, L"Instance") != 0)
        complain("the instance of the new activity");
}

Ending Sequence::apply(LinkGroupModel::Group* group, long operation, const LinkGroupModel::Edit& edit,
                       int failing)
{
    switch (operation)
    {
    case operationAdd:
        return model_.add(edit, failing);
    case operationDelete:
        return model_.remove(*group, edit.instance, failing);
    default:
        return model_.change(*group, edit, failing);
    }
}

/// The user presses OK again, and what made the first attempt fail half-way is gone: everything is as if that attempt
/// had succeeded.
void Sequence::attemptAgain(EditEvents& command, const LinkGroupModel& former, std::ptrdiff_t index,
                            long operation, const LinkGroupModel::Edit& edit)
{
    ++secondAttempts;
    told_ += " and again";
    model_ = former;
    const auto group = std::next(model_.groups.begin(), index);
    execute(command, -1, false);
    compare(apply(group == model_.groups.end() ? nullptr : &*group, operation, edit, -1));
}

/// The user chooses others before he presses OK again: whoever is then chosen is booked.
void Sequence::attemptAnotherChoice(EditEvents& command, long operation, LinkGroupModel::Edit& edit)
{
    ++changedAttempts;
    told_ += " and, chosen anew,";
    choose(command, edit);
    const bool someone = !edit.chosen.empty();
    if (someone) // as the dialog does it
        command.SetName(edit.chosen.front(), true);
    execute(command, -1, false);

    const Event* const stored = data_.event(number(command, L"EventID"));
    const Events booked = command.links.isLinked() ? linkedBy(data_, toLong(command.links.id.get()))
                          : stored                 ? Events{*stored}
                                                   : Events{};
    const bool byItself = operation == operationChange && edit.instance != 0 && !command.links.isLinked();
    const std::set<long> chosen(edit.chosen.begin(), edit.chosen.end());
    if (someone &&
        (error_.number != S_OK || (!byItself && LinkGroupModel::Group{true, booked}.names() != chosen)))
        complain("the resources chosen anew are not those booked");
    complaint_ += faultsIn(data_);

    model_.groups.clear();
    std::set<long> told;
    for (const Event& event : data_.events)
        if (!event.link || told.insert(*event.link).second)
            model_.groups.push_back(
                {event.link.has_value(), event.link ? linkedBy(data_, *event.link) : Events{event}});
}

void Sequence::move(long operation)
{
    const long eventId = anyActivity();
    auto& group = groupOf(eventId);
    const Event& event = *data_.event(eventId);
    LinkGroupModel::Move move{anyInstance(), event.nameId, oneIn(3) ? event.nameId : anyName(), oneIn(2), {}};
    const auto occurrence = event.edited.find(move.instance);
    move.values = occurrence == event.edited.end() ? event.values() : occurrence->second.values;
    told_ += "move " + groupAround(data_, event) + " of " + shown(move.source) + " to " + shown(move.target) +
             " operation " + shown(operation) + " on " + shown(move.instance) + (move.all ? " all" : "");

    const auto command = open<MoveEvents>(eventId, operation, move.instance);
    giveTimes(*command, move.values);
    if (oneIn(2))
        let(*command, L"N0", Variant(move.source));
    if (move.target != move.source || oneIn(2))
        let(*command, L"N1", Variant(move.target));
    VARIANT_BOOL prepared = VARIANT_FALSE;
    require(command->Prepare(&prepared));
    require(command->put_UpdateAll(move.all ? VARIANT_TRUE : VARIANT_FALSE));
    const int failing = anyFailure();
    told_ += " failing " + shown(failing);
    execute(*command, failing, true);
    compare(operation == MoveEvents::operationCopy ? model_.copy(move, failing)
                                                   : model_.move(group, move, failing));
}

std::string Sequence::step()
{
    const int kind = data_.events.empty() ? 0 : below(9);
    data_.takeCalls();
    if (kind < 2)
        edit(operationAdd);
    else if (kind < 5)
        edit(operationChange);
    else if (kind < 6)
        edit(operationDelete);
    else
        move(kind < 8 ? MoveEvents::operationMove : MoveEvents::operationCopy);
    if (references(data_.root.get()) != 1)
        complain("the command is gone, but not its hold on the database");
    told_ += '\n';
    return complaint_.empty() ? "" : told_ + complaint_;
}

} // namespace

TEST(LinkGroupPropertyTests, LinkGroupsAreWhatTheModelSays)
{
    int endings[3] = {};
    int lostPrimaries = 0;
    int secondAttempts = 0;
    int changedAttempts = 0;
    const auto sequences = usualSequences * static_cast<unsigned>(soak());
    for (unsigned seed = 1; seed <= sequences; ++seed)
    {
        Sequence sequence(seed);
        for (int step = 0; step < operationsOfSequence; ++step)
            if (const std::string disagreement = sequence.step(); !disagreement.empty())
                FAIL() << "seed " << seed << ", operation " << step << '\n' << disagreement;
        for (int index = 0; index < 3; ++index)
            endings[index] += sequence.endings[index];
        lostPrimaries += sequence.lostPrimaries;
        secondAttempts += sequence.secondAttempts;
        changedAttempts += sequence.changedAttempts;
    }
    // What is compared is worth something only where it happens.
    EXPECT_GT(endings[static_cast<int>(Ending::done)], 8000 * soak());
    EXPECT_GT(endings[static_cast<int>(Ending::failed)], 800 * soak());
    EXPECT_GT(endings[static_cast<int>(Ending::refused)], 15 * soak());
    EXPECT_GT(lostPrimaries, 160 * soak());
    EXPECT_GT(secondAttempts, 250 * soak());
    EXPECT_GT(changedAttempts, 250 * soak());
    RecordProperty("done", endings[0]);
    RecordProperty("failed", endings[1]);
    RecordProperty("refused", endings[2]);
}

} // namespace korvane::test
