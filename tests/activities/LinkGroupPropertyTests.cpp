// Whatever is edited, moved, copied and deleted, and wherever the data layer fails on the way: link groups are what an
// independent model says.
#include "activities/EditEvents.h"
#include "activities/MoveEvents.h"
#include "tests/activities/LinkGroupModel.h"
#include "tests/activities/LinkGroupStore.h"
#include "tests/support/ComRules.h"
#include "tests/support/Soak.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace korvane::test
{

namespace
{

/// By default; six times as many make the long run.
constexpr unsigned usualSequences = 2000;
constexpr int operationsOfSequence = 8;
constexpr long resources = 6;

/// One random sequence on a store and on a model of it.
class Sequence
{
public:
    explicit Sequence(unsigned seed) : random_(seed) {}

    /// Performs a random operation on both. Empty when they agree, else what happened.
    std::string step();

    int endings[3] = {};
    int lostPrimaries = 0;
    int secondAttempts = 0;

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
    void attemptAgain(EditEvents& command, const LinkGroupModel& former, std::ptrdiff_t index, long operation,
                      const LinkGroupModel::Edit& edit);
    Ending apply(LinkGroupModel::Group* group, long operation, const LinkGroupModel::Edit& edit, int failing);
    void move(long operation);

    long anyActivity();
    LinkGroupModel::Group& groupOf(long eventId);
    void execute(IAppCommand& command, int failing, bool expectedResult);
    void compare(Ending ending);
    void complain(const std::string& complaint) { complaint_ += complaint + '\n'; }

    std::mt19937 random_;
    LinkGroupStore store_;
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
    return std::next(store_.activities.begin(), below(static_cast<int>(store_.activities.size())))->first;
}

/// Groups that look the same are as good as one another.
LinkGroupModel::Group& Sequence::groupOf(long eventId)
{
    const std::string wanted = store_.groupOf(eventId);
    return *std::find_if(model_.groups.begin(), model_.groups.end(), [&](const LinkGroupModel::Group& group) {
        std::vector<const Booking*> members;
        for (const Booking& member : group.members)
            members.push_back(&member);
        return shownGroup(group.linked, members) == wanted;
    });
}

template <class Command> ComPtr<Command> Sequence::open(long eventId, long operation, long instance)
{
    auto command = make<Command>();
    let(*command, L"Root", Variant(queryFor<IDispatch>(store_.root())));
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
        require(store_.root()->NewRecurrence(1 + below(5), command.Rule.put()));
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
    store_.failWrite(failing);
    VARIANT_BOOL result = VARIANT_FALSE;
    const HRESULT outcome = command.Execute(&result);
    store_.failWrite(-1);
    error_ = errorOf(outcome);
    if ((result != VARIANT_FALSE) != (expectedResult && outcome == S_OK))
        complain("the result of Execute");
}

void Sequence::compare(Ending ending)
{
    ++endings[static_cast<int>(ending)];
    const ErrorInfo expected = ending == Ending::failed    ? LinkGroupStore::injected
                               : ending == Ending::refused ? LinkGroupStore::refusal
                                                           : ErrorInfo{S_OK, {}, {}};
    if (error_ != expected)
        complain("the outcome: expected " + shown(expected.number) + ", was " + shown(error_.number));
    if (store_.groups() != model_.shown())
        complain("expected:\n  " + testing::PrintToString(model_.shown()) + "\nstored:\n  " +
                 testing::PrintToString(store_.groups()));
    complaint_ += store_.complaints();
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
        edit.primary = store_.activities.at(eventId).booking.nameId;
        told_ += "edit " + store_.groupOf(eventId) + " of " + shown(edit.primary);
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
        store_.renameGroup();
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
    const bool adds = operation == operationAdd;
    const Ending ending = apply(group, operation, edit, failing);
    compare(ending);
    // A lost primary resource keeps the first attempt from booking those that were added, and not the second.
    if (ending == Ending::failed && primaryIsChosen)
        return attemptAgain(command, former, index, operation, edit);
    if (operation == operationDelete)
        return;

    // The outcome as the user sees it: whoever was chosen is booked.
    if (ending == Ending::done && primaryIsChosen)
    {
        const auto& written = adds ? model_.groups.back() : *group;
        // Except that a single activity's occurrence goes to another resource by itself.
        const bool byItself =
            !adds && edit.instance != 0 && edit.booked.size() == 1 && edit.chosen.size() == 1;
        if (!byItself && written.names() != std::set<long>(edit.chosen.begin(), edit.chosen.end()))
            complain("the chosen resources are not those booked");
        const auto stored = store_.activities.find(number(command, L"EventID"));
        const bool single = edit.chosen.size() == 1 && (edit.booked.size() > 1 || adds);
        if (adds && stored == store_.activities.end())
            complain("the id of the new activity");
        if (single && (stored == store_.activities.end() || stored->second.link ||
                       stored->second.booking.nameId != edit.chosen.front()))
            complain("the id of the activity that is left");
        if (adds && number(command, L"Instance") != 0)
            complain("the instance of the new activity");
    }
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

void Sequence::move(long operation)
{
    const long eventId = anyActivity();
    auto& group = groupOf(eventId);
    const Booking& booking = store_.activities.at(eventId).booking;
    LinkGroupModel::Move move{
        anyInstance(), booking.nameId, oneIn(3) ? booking.nameId : anyName(), oneIn(2), {}};
    const auto occurrence = booking.edited.find(move.instance);
    move.values = occurrence == booking.edited.end() ? booking.values : occurrence->second.values;
    told_ += "move " + store_.groupOf(eventId) + " of " + shown(move.source) + " to " + shown(move.target) +
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
    const int kind = store_.activities.empty() ? 0 : below(9);
    if (kind < 2)
        edit(operationAdd);
    else if (kind < 5)
        edit(operationChange);
    else if (kind < 6)
        edit(operationDelete);
    else
        move(kind < 8 ? MoveEvents::operationMove : MoveEvents::operationCopy);
    if (references(store_.root()) != 1)
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
    }
    // What is compared is worth something only where it happens.
    EXPECT_GT(endings[static_cast<int>(Ending::done)], 8000 * soak());
    EXPECT_GT(endings[static_cast<int>(Ending::failed)], 800 * soak());
    EXPECT_GT(endings[static_cast<int>(Ending::refused)], 15 * soak());
    EXPECT_GT(lostPrimaries, 160 * soak());
    EXPECT_GT(secondAttempts, 500 * soak());
    RecordProperty("done", endings[0]);
    RecordProperty("failed", endings[1]);
    RecordProperty("refused", endings[2]);
}

} // namespace korvane::test
