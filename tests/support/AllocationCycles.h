// What holds for classes and dialogs of the library, whichever of their allocations fails.
#pragma once

#include "tests/support/Allocation.h"
#include "tests/support/Container.h"
#include "tests/support/RecordingData.h"

namespace korvane::test
{

/// A dialog that is to get ready while memory is short.
struct ScarceDialog
{
    const CLSID& dialogClass;
    RecordingData& data;
    Container& container;
    /// A new command with the operands that a host sets, and the data layer as it is to find it.
    std::function<ComPtr<IAppCommand>()> renew;
    std::function<std::string(const ComPtr<IAppCommand>& command)> operands;
    /// What the user sees of the data in the dialog.
    std::function<std::vector<std::wstring>()> look;
    /// Ends the ready dialog as the user does who confirms it.
    std::function<void()> confirm;
};

/// The n-th allocation of Ready fails, for every n: the caller is told, or only something optional is missing. Nothing
/// is written, the command is as it was or as it was read, no scope stays open, and the next Ready succeeds.
void expectReadyFailsAndSucceedsTheNextTime(const ScarceDialog& dialog, FailingAllocation::Extent extent);

/// Nothing is left of a dialog that is closed after such a Ready.
void expectFailedReadyLeavesNothingBehind(const ScarceDialog& dialog, FailingAllocation::Extent extent);

/// The n-th allocation of its creation fails, for every n: an object is refused as a whole.
void expectMadeOrRefused(const CLSID& classId, FailingAllocation::Extent extent);

/// The calls so far, without the closing of scopes, which follows a failure too.
std::vector<std::string> stepsOf(RecordingData& data);

bool isStartOf(const std::vector<std::string>& part, const std::vector<std::string>& whole);

} // namespace korvane::test
