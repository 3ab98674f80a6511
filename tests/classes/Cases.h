// The commands and dialogs of the library, each described once: what holds for all of them is tested for all of them.
//
// A further class brings its entry (see tests/groups/GroupCases.cpp) and is known to the suites by it.
#pragma once

#include "tests/support/CommandUser.h"
#include "tests/support/Container.h"
#include "tests/support/Look.h"
#include "tests/support/Questions.h"

#include <KorvaneDlg.h>

#include <iosfwd>

namespace korvane::test
{

/// What a host gives to a command besides the data layer: names and values.
using Operands = std::vector<std::pair<std::wstring, Variant>>;

/// An operand of a command, in the order of the contract.
struct OperandRow
{
    std::wstring name;
    VARTYPE type;
    /// The property of the command's own interface that stands for it; empty for none.
    std::wstring property;
};

/// One way in which a host uses a command.
struct CommandUse
{
    std::string name;
    long operation;
    Operands operands = {};
    Operands entered = {}; ///< set once it is prepared
};

struct CommandCase
{
    std::string name;
    CLSID classId;
    std::wstring dialogClass;
    std::vector<OperandRow> operands;
    std::vector<long> unknownOperations;
    /// Whether executing an unknown operation is refused as a bad command number; else it does nothing.
    bool refusesUnknown;
    void (*fill)(RecordingData& data);
    std::vector<CommandUse> uses;
    /// The calls of executing an unknown operation that is not refused: they write nothing.
    std::vector<std::string> unknownCalls = {};
    bool prepareReads = true;
};

struct DialogCase
{
    std::string name;
    CLSID dialogClass;
    CLSID commandClass;
    std::wstring title;
    long operation;
    Operands operands;
    void (*fill)(RecordingData& data);
    /// What a user does before he confirms; nothing for a dialog that runs by itself once it has the focus.
    std::function<void(Container& container)> use = {};
    /// Access keys that take turns between several controls.
    std::wstring sharedKeys = {};
    /// The key that answers the dialog's questions.
    WORD answer = VK_RETURN;
    /// The access key of the button that confirms; 0 where Enter does.
    WORD confirmKey = 0;
    /// Whether it goes on with a further item after OK.
    bool staysOpen = false;
    /// Whether a failure while it loads is told to the container, and Ready succeeds in saying that it is not ready.
    bool relaysFailureOfLoading = false;

    bool runsByItself() const noexcept { return !use; }
    /// What the container is told after OK.
    std::vector<bool> doneAfterOk() const { return staysOpen ? std::vector<bool>{} : std::vector{false}; }
};

const std::vector<CommandCase>& commandCases();
const std::vector<DialogCase>& dialogCases();
const CommandCase& commandCase(const CLSID& classId);

// For the messages of tests.
void PrintTo(const CommandCase& tested, std::ostream* stream);
void PrintTo(const DialogCase& tested, std::ostream* stream);

/// A new command with the operands that a host sets.
ComPtr<IAppCommand> makeCommand(const CLSID& classId, const RecordingData& data, long operation,
                                const Operands& operands);

/// The operands of a command as one text, as far as they are not objects.
std::string operandsOf(const CommandCase& of, const ComPtr<IAppCommand>& command);

/// The calls so far, without the closing of scopes, which follows a failure too.
std::vector<std::string> stepsOf(RecordingData& data);
bool isStartOf(const std::vector<std::string>& part, const std::vector<std::string>& whole);

/// A call of the data layer that is to fail.
struct FailingCall
{
    std::string name;
    int passed;                              ///< calls of that name that still succeed
    std::vector<std::string> upToTheFailure; ///< all calls that are made until then
};

/// Each of these calls, one after the other.
std::vector<FailingCall> eachOf(const std::vector<std::string>& calls);

/// A dialog with its data, its command and its user.
class DialogOnCase
{
public:
    explicit DialogOnCase(const DialogCase& described, Container::Offer offer = {});

    /// Begins anew: the data as they were, and a new command.
    void renew();
    void place() { container.place(tested.dialogClass, command.get()); }
    /// Places the dialog and reads Ready, which is to succeed.
    void show();
    /// The failure of a Ready that had this outcome, from where the dialog is to tell it; S_OK for none.
    ErrorInfo failureOfReady(HRESULT outcome, bool ready);
    /// As show, and gives it the focus.
    void activate();
    /// As activate, and does what the user does before he confirms.
    void fillIn();
    /// Confirms with the keyboard. A dialog that runs by itself does so when it gets the focus.
    void confirm();
    /// Closes the dialog and lets go of it.
    void end();

    std::vector<std::string> look() const { return lookOf(container.dialogWindow()); }
    std::string operands() const { return operandsOf(commandCase(tested.commandClass), command); }
    HWND okButton() const;
    /// The controls that a user can work with now, in tab order.
    std::vector<HWND> usable() const;

    const DialogCase& tested;
    RecordingData data;
    Questions questions;
    Container container;
    ComPtr<IAppCommand> command;
};

} // namespace korvane::test
